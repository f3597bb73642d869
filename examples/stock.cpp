// An index: open, high, low and close of each day, as open-high-low-close lines and as
// candlesticks.
#include "examples/support/example.h"

using namespace varnel;

void example::Draw(Picture& picture) {
    const Theme theme;
    const Table table = picture.Read("vix_ohlc.csv");
    const std::vector<double> prices = table.Numbers({"open", "high", "low", "close"});
    const RGBDType line = theme.outline;
    const RGBDType colors[] = {line, theme.SeriesColor(0), theme.SeriesColor(2), line, line};

    for (const bool candles : {false, true}) {
        CChart3D& chart = *picture.View().NewChart3D();
        CTransform3D* transform = chart.NewTransform();
        CChartObj3D* stock = chart.NewChartObj(transform);
        stock->SetIndWidth(0.7);
        stock->OHLCChart25D(table.Days("date"), prices, 0, SYMBOL_NONE, SYMBOL_NONE, 0.2,
                            picture.Pixels(2), colors, theme.outline, WIDTH_CENTERED,
                            WIDTH_CENTERED, INDAXIS_X, nullptr);
        const int parts[6] = {1, 0, 0, 0, 0, 1};  // the line from low to high, and the body
        if (candles) stock->SetComboChartFlags(parts);
        stock->SetCandleStyle(candles);
        chart.AutoFrame(transform, {.axes = {AxisFrame{.dates = true}, AxisFrame{},
                                             AxisFrame{.title = "points"}},
                                    .title = "Volatility index, summer 2009",
                                    .subtitle = candles ? "candlesticks: blue rose, red fell"
                                                        : "open, high, low and close"});
        picture.Save(candles ? "stock_candles" : "stock_ohlc");
    }
}
