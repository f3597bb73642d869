// A matrix in colours.
#include <varnel/plot.h>
using namespace varnel::plot;

int main() {
    Figure figure({.title = "Maunga Whau, m"});
    figure.HeatMap(ReadCSV("examples/data/volcano.csv"), {.map = "terrain"});
    figure.Save("volcano_heat_map.png");
}
