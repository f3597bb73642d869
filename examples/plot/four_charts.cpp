// Several charts in one picture, with their frames in line.
#include <varnel/plot.h>
using namespace varnel::plot;

int main() {
    const Table weather = ReadCSV("examples/data/seattle_weather.csv");
    const Values day = weather.Dates("date"), month = weather.Column("date:month");
    Figure figure({.title = "Four years in Seattle"});
    figure.At(1, 1, 2, 2).Line(day, weather["temp_max_c"]);
    figure.At(1, 2, 2, 2).Boxes(month, weather["temp_max_c"]);
    figure.At(2, 1, 2, 2).Line(day, weather["wind_m_s"]);
    figure.At(2, 2, 2, 2).Boxes(month, weather["wind_m_s"], {.outliers = false});
    figure.Save("four_charts.png");
}
