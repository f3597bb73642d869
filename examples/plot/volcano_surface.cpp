// A surface of a matrix, coloured by height.
#include <varnel/plot.h>
using namespace varnel::plot;

int main() {
    Figure figure({.title = "Maunga Whau"});
    figure.Surface(ReadCSV("examples/data/volcano.csv"));
    figure.Save("volcano_surface.png");
}
