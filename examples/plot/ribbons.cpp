// Series one behind the other.
#include <varnel/plot.h>
using namespace varnel::plot;

int main() {
    const Table iowa = ReadCSV("examples/data/iowa_electricity.csv");
    Figure figure({.title = "Electricity in Iowa, GWh"});
    figure.Ribbons(iowa["year"], {iowa[2], iowa[3], iowa[4]},
                   {.names = {"fossil", "nuclear", "renewable"}});
    figure.Save("ribbons.png");
}
