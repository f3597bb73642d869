// The daily range of an index, from its low to its high, as floating bars.
#include "examples/support/example.h"

using namespace varnel;

namespace {

void Draw(example::Picture& picture) {
    const example::Table table = picture.Read("vix_ohlc.csv");
    const std::vector<double> high = table.Numbers("high");
    const std::vector<double> low = table.Numbers("low");
    const std::vector<double> open = table.Numbers("open");
    const std::vector<double> close = table.Numbers("close");
    std::vector<double> day, range;
    std::vector<RGBDType> colors;
    for (std::size_t i = 0; i < high.size(); ++i) {
        day.push_back(static_cast<double>(i) + 1);
        range.push_back(high[i] - low[i]);
        colors.push_back(close[i] >= open[i] ? example::Color(2) : example::Color(3));
    }

    CChart3D* chart = picture.NewChart("Volatility index, summer 2009", "daily low to high",
                                       "June and July 2009");
    CTransform3D* transform = chart->NewTransform({0, 0, 22, 0}, {45, 1, 34, 0});
    transform->SetRotate({-16, 0, 20, 0});
    transform->SetChartRect({0.76, 0.08, 0.52, 0});
    transform->SetOffset({0.04, 0, -0.04, 0});

    CAxes3D* axes = chart->AutoAxes(transform);
    axes->EnableAxis(1, 0);
    axes->EnableAxisLabels(1, 0);
    axes->SetAxisTitleString(0, "trading day");
    axes->SetAxisTitleString(2, "points");
    example::AddWalls(*axes, 0, 0, axes->GetAxisNthTicMajor(2));

    CChartObj3D* bars = chart->NewChartObj(transform);
    bars->FloatingBarChart25D(day.data(), high.data(), range.data(), 0.5,
                              static_cast<int>(day.size()), 0.7, 0.6, colors[0], example::kGrey, 1,
                              1, 0);
    bars->InitSegmentColorsStorage(colors.data());
    example::AddKey(*chart, {"rose", "fell"}, {example::Color(2), example::Color(3)});
    picture.Save("bars_floating");
}

}  // namespace

int main(int argc, char** argv) {
    return example::Run(argc, argv, Draw);
}
