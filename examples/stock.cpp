// An index: open, high, low and close of each day, as open-high-low-close lines and as
// candlesticks.
#include "examples/support/example.h"

using namespace varnel;

namespace {

void DrawPrices(example::Picture& picture, bool candles, const std::string& subtitle,
                const std::string& name) {
    const example::Table table = picture.Read("vix_ohlc.csv");
    std::vector<double> prices;  // open, high, low, close
    for (const char* column : {"open", "high", "low", "close"})
        for (double price : table.Numbers(column))
            prices.push_back(price);
    const int n = static_cast<int>(table.rows.size());
    std::vector<double> day;
    for (int i = 0; i < n; ++i)
        day.push_back(i + 1);

    CChart3D* chart =
        picture.NewChart("Volatility index, summer 2009", subtitle, "June and July 2009");
    CTransform3D* transform = chart->NewTransform({0, 0, 22, 0}, {45, 1, 34, 0});
    transform->SetRotate({-16, 0, 18, 0});
    transform->SetChartRect({0.76, 0.08, 0.52, 0});
    transform->SetOffset({0.04, 0, -0.04, 0});

    CAxes3D* axes = chart->AutoAxes(transform);
    axes->EnableAxis(1, 0);
    axes->EnableAxisLabels(1, 0);
    axes->SetAxisTitleString(0, "trading day");
    axes->SetAxisTitleString(2, "points");
    example::AddWalls(*axes, 0, 0, axes->GetAxisNthTicMajor(2));

    const RGBDType line = candles ? example::kBlack : example::Color(0);
    const RGBDType colors[] = {line, example::Color(2), example::Color(3), line, line};
    CChartObj3D* stock = chart->NewChartObj(transform);
    stock->SetIndWidth(0.7);
    stock->OHLCChart25D(day.data(), prices.data(), 0.5, n, 0, 0, 0.2, picture.Pixels(2), colors,
                        example::kGrey, 1, 1, 0, nullptr);
    if (candles) {
        const int parts[6] = {1, 0, 0, 0, 0, 1};  // the line from low to high, and the body
        stock->SetComboChartFlags(parts);
        example::AddKey(*chart, {"rose", "fell"}, {example::Color(2), example::Color(3)});
    }
    picture.Save(name);
}

void Draw(example::Picture& picture) {
    DrawPrices(picture, false, "open, high, low and close", "stock_ohlc");
    DrawPrices(picture, true, "candlesticks", "stock_candles");
}

}  // namespace

int main(int argc, char** argv) {
    return example::Run(argc, argv, Draw);
}
