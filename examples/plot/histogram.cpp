// How often each temperature occurs.
#include <varnel/plot.h>
using namespace varnel::plot;

int main() {
    const Table weather = ReadCSV("examples/data/seattle_weather.csv");
    Figure figure({.title = "Warmest hour of the day in Seattle, °C"});
    figure.Histogram(weather["temp_max_c"]);
    figure.Save("histogram.png");
}
