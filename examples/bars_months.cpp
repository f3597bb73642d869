// Seattle's rain, a mean month for each name on the axis.
#include "examples/support/example.h"

using namespace varnel;

namespace {

void Draw(example::Picture& picture) {
    const example::Table table = picture.Read("seattle_weather.csv");
    const std::vector<example::Date> dates = table.Dates("date");
    const std::vector<double> rain = table.Numbers("precipitation_mm");
    constexpr int kYears = 4;
    double month[12] = {};
    double millimetres[12] = {};
    for (int m = 0; m < 12; ++m)
        month[m] = m + 1;
    for (std::size_t i = 0; i < rain.size(); ++i)
        millimetres[dates[i].month - 1] += rain[i] / kYears;

    CChart3D* chart = picture.NewChart("Rain in Seattle", "mean of 2012 to 2015",
                                       "National Oceanic and Atmospheric Administration");
    CTransform3D* transform = chart->NewTransform({0.4, 0, 0, 0}, {12.6, 1, 200, 0});
    transform->SetRotate({-18, 0, 20, 0});
    transform->SetChartRect({0.78, 0.12, 0.52, 0});
    transform->SetOffset({0.05, 0, -0.05, 0});

    CAxes3D* axes = chart->AutoAxes(transform);
    axes->EnableAxis(1, 0);
    axes->EnableAxisLabels(1, 0);
    // The first name belongs to the tic at the centre point.
    axes->SetAxisTics(0, 1, 1, 1, 0.02, 0.03, 2);
    axes->SetAxisLabelsStrings(0, example::kMonths.data(), 12);
    axes->SetAxisLabelsSize(0, 0.75);
    axes->SetAxisTitleString(2, "mm");
    example::AddWalls(*axes, 0, 0, axes->GetAxisNthTicMajor(2));

    CChartObj3D* bars = chart->NewChartObj(transform);
    bars->BarChart25D(month, millimetres, 0.0, 0.5, 12, 0.65, 0.65, example::Color(0),
                      example::kGrey, 1, 1, 0);
    picture.Save("bars_months");
}

}  // namespace

int main(int argc, char** argv) {
    return example::Run(argc, argv, Draw);
}
