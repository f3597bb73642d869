// Three series side by side over the same years.
#include <varnel/plot.h>
using namespace varnel::plot;

int main() {
    const Table iowa = ReadCSV("examples/data/iowa_electricity.csv");
    Figure figure({.title = "Electricity in Iowa, GWh"});
    figure.Bars(iowa.Text("year"), {iowa[2], iowa[3], iowa[4]},
                {.names = {"fossil", "nuclear", "renewable"}});
    figure.Save("grouped_bars.png");
}
