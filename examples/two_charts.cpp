// Two charts in one view, with a title of the view above them.
#include "examples/support/example.h"

using namespace varnel;

namespace {

void AddMonths(example::Picture& picture, const std::string& title, const std::string& unit,
               const std::vector<double>& values, double max, const RGBDType& color,
               const GLViewRType& position) {
    CChart3D* chart = picture.NewChart(title, "", "");
    chart->SetChartPosition(position);
    chart->SetFontSize(0.12);
    std::vector<double> month;
    for (int m = 1; m <= 12; ++m)
        month.push_back(m);
    CTransform3D* transform = chart->NewTransform({0.4, 0, 0, 0}, {12.6, 1, max, 0});
    transform->SetRotate({-18, 0, 22, 0});
    transform->SetChartRect({0.7, 0.14, 0.56, 0});
    transform->SetOffset({0.08, 0, -0.05, 0});
    CAxes3D* axes = chart->AutoAxes(transform);
    axes->EnableAxis(1, 0);
    axes->EnableAxisLabels(1, 0);
    axes->SetAxisTics(0, 1, 1, 1, 0.02, 0.03, 2);
    axes->SetAxisLabelsStrings(0, example::kMonthInitials.data(), 12);
    axes->SetAxisLabelsSize(2, 0.65);
    axes->SetAxisTitleString(2, unit);
    example::AddWalls(*axes, 0, 0, axes->GetAxisNthTicMajor(2));
    CChartObj3D* bars = chart->NewChartObj(transform);
    bars->BarChart25D(month.data(), values.data(), 0.0, 0.5, 12, 0.65, 0.65, color, example::kGrey,
                      1, 1, 0);
}

void Draw(example::Picture& picture) {
    const example::Table table = picture.Read("seattle_weather.csv");
    const std::vector<example::Date> dates = table.Dates("date");
    const std::vector<double> rain =
        example::MonthlyMeans(dates, table.Numbers("precipitation_mm"));
    const std::vector<double> wind = example::MonthlyMeans(dates, table.Numbers("wind_m_s"));
    // The charts leave room for the view's title above them and its footer below them.
    picture.View().GetHeader()->SetRelSize(0.45);
    picture.View().GetHeader()->SetTitle1("Weather in Seattle");
    picture.View().GetHeader()->SetFooter("2012 to 2015");
    AddMonths(picture, "rain a day", "mm", rain, 7, example::Color(0), {0, 0.1, 0.5, 0.78});
    AddMonths(picture, "wind", "m/s", wind, 5, example::Color(2), {0.5, 0.1, 0.5, 0.78});
    picture.Save("two_charts");
}

}  // namespace

int main(int argc, char** argv) {
    return example::Run(argc, argv, Draw);
}
