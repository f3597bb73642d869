// A line over dates.
#include <varnel/plot.h>
using namespace varnel::plot;

int main() {
    const Table co2 = ReadCSV("examples/data/co2_mauna_loa.csv");
    Figure figure({.title = "Carbon dioxide at Mauna Loa"});
    figure.Line(co2.Dates("date"), co2["co2_ppm"]);
    figure.y({.title = "ppm"});
    figure.Save("co2.png");
}
