// Quartiles, whiskers and outliers of every month.
#include <varnel/plot.h>
using namespace varnel::plot;

int main() {
    const Table weather = ReadCSV("examples/data/seattle_weather.csv");
    Figure figure({.title = "Warmest hour of the day in Seattle, °C"});
    figure.Boxes(weather.Column("date:month"), weather["temp_max_c"]);
    figure.Save("boxes_by_month.png");
}
