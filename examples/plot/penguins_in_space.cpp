// Three measures of each penguin, a colour and a solid for each species.
#include <varnel/plot.h>
using namespace varnel::plot;

int main() {
    const Table penguins = ReadCSV("examples/data/penguins.csv");
    Figure figure({.title = "Penguins"});
    figure.Scatter3D(penguins["bill_length_mm"], penguins["flipper_length_mm"],
                     penguins["body_mass_g"], {.by = penguins.Text("species")});
    figure.Save("penguins_in_space.png");
}
