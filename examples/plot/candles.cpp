// Prices of days.
#include <varnel/plot.h>
using namespace varnel::plot;

int main() {
    const Table vix = ReadCSV("examples/data/vix_ohlc.csv");
    Figure figure({.title = "VIX"});
    figure.Candles(vix.Dates("date"), vix["open"], vix["high"], vix["low"], vix["close"]);
    figure.Save("candles.png");
}
