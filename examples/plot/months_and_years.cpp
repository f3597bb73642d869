// Bars over months and years, from the means of daily values.
#include <varnel/plot.h>
using namespace varnel::plot;

int main() {
    const Table weather = ReadCSV("examples/data/seattle_weather.csv");
    const Table means = weather.Group({"date:month", "date:year"}, Statistic::Mean);
    Figure figure({.title = "Warmest hour of the day, °C"});
    figure.Bars3D(means.Column("month"), means.Column("year"), means["temp_max_c"]);
    figure.Save("months_and_years.png");
}
