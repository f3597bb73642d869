// Places of earthquakes, their magnitudes as colours.
#include <varnel/plot.h>
using namespace varnel::plot;

int main() {
    const Table quakes = ReadCSV("examples/data/earthquakes_week.csv");
    Figure figure({.title = "Earthquakes of a week"});
    figure.Scatter(quakes["longitude_deg"], quakes["latitude_deg"],
                   {.color_by = quakes["magnitude"]});
    figure.Save("earthquakes.png");
}
