// Seattle's daily maxima, month by month: extremes, quartiles, median and mean.
#include "examples/support/example.h"

using namespace varnel;

namespace {

void Draw(example::Picture& picture) {
    const example::Table table = picture.Read("seattle_weather.csv");
    const std::vector<example::Date> dates = table.Dates("date");
    const std::vector<double> warmest = table.Numbers("temp_max_c");
    constexpr int kMonths = 12;
    std::vector<double> samples[kMonths];
    for (std::size_t i = 0; i < dates.size(); ++i)
        samples[dates[i].month - 1].push_back(warmest[i]);
    double month[kMonths];
    double six[6 * kMonths];  // minimum, lower quartile, median, upper quartile, maximum, mean
    for (int m = 0; m < kMonths; ++m) {
        month[m] = m + 1;
        BoxStatistics(samples[m].data(), static_cast<int>(samples[m].size()), six + m, kMonths);
    }

    CChart3D* chart =
        picture.NewChart("Daily maxima in Seattle", "extremes, quartiles, median, mean",
                         "National Oceanic and Atmospheric Administration");
    CTransform3D* transform = chart->NewTransform({0.4, 0, -5, 0}, {12.6, 1, 40, 0});
    transform->SetRotate({-16, 0, 18, 0});
    transform->SetChartRect({0.76, 0.1, 0.52, 0});
    transform->SetOffset({0.05, 0, -0.05, 0});

    CAxes3D* axes = chart->AutoAxes(transform);
    axes->EnableAxis(1, 0);
    axes->EnableAxisLabels(1, 0);
    axes->SetAxisTics(0, 1, 1, 1, 0.02, 0.03, 2);
    axes->SetAxisLabelsStrings(0, example::kMonths.data(), kMonths);
    axes->SetAxisLabelsSize(0, 0.75);
    axes->SetAxisTitleString(2, "\260C");
    example::AddWalls(*axes, 0, 0, axes->GetAxisNthTicMajor(2));

    const RGBDType lower = example::Color(0);
    const RGBDType upper = example::Color(1);
    const RGBDType colors[] = {lower, lower, example::kBlack, upper, upper, example::Color(3)};
    CChartObj3D* boxes = chart->NewChartObj(transform);
    boxes->BoxAndWhiskerChart25D(month, six, 0.5, kMonths, 0.6, 0.6, 12, 0.25, picture.Pixels(2),
                                 colors, example::kGrey, 1, 1, 0, 1);
    picture.Save("boxes");
}

}  // namespace

int main(int argc, char** argv) {
    return example::Run(argc, argv, Draw);
}
