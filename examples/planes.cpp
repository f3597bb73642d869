// Seattle's warmth as planes: a slab for each month of one year, and a terrace of tiles for the
// months of four.
#include "examples/support/example.h"

using namespace varnel;

namespace {

constexpr int kFirstYear = 2012, kYears = 4;

/// The mean of the daily maxima of each month, year by year.
std::vector<double> MonthlyMeans(example::Picture& picture) {
    const example::Table table = picture.Read("seattle_weather.csv");
    const std::vector<example::Date> dates = table.Dates("date");
    const std::vector<double> warmest = table.Numbers("temp_max_c");
    std::vector<double> sum(12 * kYears), days(12 * kYears);
    for (std::size_t i = 0; i < dates.size(); ++i) {
        const auto m =
            static_cast<std::size_t>((dates[i].year - kFirstYear) * 12 + dates[i].month - 1);
        sum[m] += warmest[i];
        days[m] += 1;
    }
    for (std::size_t m = 0; m < sum.size(); ++m)
        sum[m] /= days[m];
    return sum;
}

/// A colour for each of the values, over 0 to 30 degrees.
std::vector<RGBDType> Colors(const std::vector<double>& celsius) {
    RGBDType map[31];
    ColorMap("coolwarm", 31, map);
    std::vector<RGBDType> colors;
    for (double c : celsius)
        colors.push_back(map[static_cast<int>(c)]);
    return colors;
}

CAxes3D* NewAxes(CChart3D& chart, CTransform3D& transform) {
    constexpr int diffuse = 4609;
    chart.SetLightComponent(diffuse, {0.5, 0.5, 0.5, 1});
    transform.SetRotate({-24, 0, 24, 0});
    CAxes3D* axes = chart.AutoAxes(&transform);
    axes->SetAxisTics(0, 1.5, 1, 1, 0.02, 0.03, 1);
    axes->SetAxisLabelsStrings(0, example::kMonths.data(), 12);
    axes->SetAxisLabelsSize(0, 0.75);
    axes->SetAxisTitleString(2,
                             "daily maximum, \xB0"
                             "C");
    return axes;
}

void Draw(example::Picture& picture) {
    const std::vector<double> means = MonthlyMeans(picture);
    std::vector<double> month;
    for (int m = 1; m <= 12; ++m)
        month.push_back(m);

    CChart3D* chart = picture.NewChart("Seattle, 2012", "the mean of each month",
                                       "National Oceanic and Atmospheric Administration");
    CTransform3D* transform = chart->NewTransform({1, 0, 0, 0}, {13, 1, 30, 0});
    transform->SetChartRect({0.72, 0.22, 0.46, 0});
    CAxes3D* axes = NewAxes(*chart, *transform);
    axes->EnableAxis(1, 0);
    axes->EnableAxisLabels(1, 0);
    example::AddWalls(*axes, 0, 0, axes->GetAxisNthTicMajor(2));
    CChartObj3D* planes = chart->NewChartObj(transform);
    planes->PlaneChart25D(month.data(), means.data(), 0.5, 12, 0.9, 0.8, example::Color(1),
                          example::kGrey, 0, 1, 0);
    planes->InitSegmentColorsStorage(Colors({means.begin(), means.begin() + 12}).data());
    picture.Save("planes_25d");

    chart = picture.NewChart("Seattle, 2012 to 2015", "the mean of each month",
                             "National Oceanic and Atmospheric Administration");
    transform = chart->NewTransform({1, 0, 0, 0}, {13, 4, 30, 0});
    transform->SetChartRect({0.60, 0.46, 0.40, 0});
    transform->SetOffset({-0.02, 0, -0.06, 0});
    axes = NewAxes(*chart, *transform);
    const std::vector<CString> years = {"2015", "2014", "2013", "2012"};
    axes->SetAxisTics(1, 0.5, 1, 1, 0.02, 0.03, 1);
    axes->SetAxisLabelsStrings(1, years.data(), kYears);
    example::AddWalls(*axes, 0, 0, axes->GetAxisNthTicMajor(2));
    std::vector<point3Dtype> corners;  // the first year in front
    for (int i = 0; i < 12 * kYears; ++i)
        corners.push_back(
            {i % 12 + 1.05, kYears - 1 - i / 12 + 0.05, means[static_cast<std::size_t>(i)], 0});
    planes = chart->NewChartObj(transform);
    planes->PlaneChart3D(corners.data(), 12 * kYears, 0.9, 0.9, example::Color(1), example::kGrey);
    planes->InitSegmentColorsStorage(Colors(means).data());
    planes->SetColorMode(0);  // the very colours of the legend
    RGBDType map[31];
    ColorMap("coolwarm", 31, map);
    CLegend3D* legend = picture.View().NewLegend3D();
    legend->SetLegendTitle(
        "\xB0"
        "C");
    legend->SetScaleLength(0.2);
    legend->EnableBorder(0);
    legend->EnableBackground(0);
    legend->SetColorBar(map, 31, 0, 31);
    picture.Save("planes_3d");
}

}  // namespace

int main(int argc, char** argv) {
    return example::Run(argc, argv, Draw);
}
