// The band between the coldest and the warmest hour of each day.
#include <varnel/plot.h>
using namespace varnel::plot;

int main() {
    const Table weather = ReadCSV("examples/data/seattle_weather.csv").Limit(366);
    Figure figure({.title = "Seattle in 2012, °C"});
    figure.Area(weather.Dates("date"), weather["temp_max_c"], {.from = weather["temp_min_c"]});
    figure.y({.title = "coldest to warmest hour"});
    figure.Save("temperature_range.png");
}
