// A map of contour lines with their levels.
#include <varnel/plot.h>
using namespace varnel::plot;

int main() {
    Figure figure({.title = "Maunga Whau, m"});
    figure.Contours(ReadCSV("examples/data/volcano.csv"));
    figure.Save("volcano_contours.png");
}
