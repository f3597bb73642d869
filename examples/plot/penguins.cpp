// A colour and a symbol for each species.
#include <varnel/plot.h>
using namespace varnel::plot;

int main() {
    const Table penguins = ReadCSV("examples/data/penguins.csv");
    Figure figure({.title = "Penguins"});
    figure.Scatter(penguins["bill_length_mm"], penguins["flipper_length_mm"],
                   {.by = penguins.Text("species")});
    figure.Save("penguins.png");
}
