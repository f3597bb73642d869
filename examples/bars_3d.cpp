// Seattle's monthly mean of the daily maximum temperature, month by year, as three-dimensional bars
// coloured by temperature.
#include <algorithm>

#include "examples/support/example.h"

using namespace varnel;

namespace {

constexpr int kMonths = 12;
constexpr int kFirstYear = 2012;
constexpr int kYears = 4;

/// From blue at 5 degrees to red at 28.
RGBDType Warmth(double celsius) {
    const double t = std::clamp((celsius - 5) / 23, 0.0, 1.0);
    return SetRGBD(0.20 + 0.70 * t, 0.45 - 0.20 * t + 0.6 * t * (1 - t), 0.80 - 0.65 * t, 1);
}

void Draw(example::Picture& picture) {
    const example::Table table = picture.Read("seattle_weather.csv");
    const std::vector<std::string> date = table.Text("date");
    const std::vector<double> warmest = table.Numbers("temp_max_c");
    double sum[kYears][kMonths] = {};
    double days[kYears][kMonths] = {};
    for (std::size_t i = 0; i < date.size(); ++i) {
        const int year = std::stoi(date[i].substr(0, 4)) - kFirstYear;
        const int month = std::stoi(date[i].substr(5, 2)) - 1;
        sum[year][month] += warmest[i];
        days[year][month] += 1;
    }
    std::vector<point3Dtype> corners;
    std::vector<RGBDType> colors;
    for (int year = 0; year < kYears; ++year)
        for (int month = 0; month < kMonths; ++month) {
            const double mean = sum[year][month] / days[year][month];
            corners.push_back({month + 0.6, kFirstYear + year - 0.3, mean, 0});
            colors.push_back(Warmth(mean));
        }
    const std::vector<double> base(corners.size(), 0.0);

    CChart3D* chart = picture.View().NewChart3D();
    CTransform3D* transform = chart->NewTransform({0, 2011.4, 0, 0}, {13, 2015.6, 30, 0});
    transform->SetRotate({-24, 0, 32, 0});
    transform->SetChartRect({0.68, 0.46, 0.42, 0});

    CAxes3D* axes = chart->AutoAxes(transform);
    CString months[] = {"J", "F", "M", "A", "M", "J", "J", "A", "S", "O", "N", "D"};
    axes->SetAxisTics(0, 1, 1, 1, 0.02, 0.04, 4);
    axes->SetAxisLabelsStrings(0, months, kMonths);
    axes->SetAxisTics(1, 2012, 1, 1, 0.02, 0.04, 3);
    axes->SetAxisTitleString(2, "deg C");
    example::AddWalls(*axes);

    CChartObj3D* bars = chart->NewChartObj(transform);
    bars->BarChart3D(corners.data(), base.data(), static_cast<int>(corners.size()), 0.8, 0.6,
                     colors[0], example::kBlack);
    bars->InitSegmentColorsStorage(colors.data());

    chart->EnableBorder(0);
    chart->SetFontSize(0.09);
    chart->GetHeader()->SetTitle1("Seattle: mean daily maximum");
    picture.Save("bars_3d");
}

}  // namespace

int main(int argc, char** argv) { return example::Run(argc, argv, Draw); }
