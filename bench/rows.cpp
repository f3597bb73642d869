// The rows of run.sh as a picture: rows CSV PICTURE. A mark below 1 says that Varnel needs less
// than the other.
#include <varnel/plot.h>

#include <cstdio>
#include <exception>

using namespace varnel::plot;

int main(int argc, char** argv) {
    if (argc < 3) return 1;
    try {
        const Table table = ReadCSV(argv[1]);
        Figure figure(
            {.title = "Varnel beside others", .size = {2000, 1000}, .legend = Legend::Top});
        for (const std::string& peer : table.Names())
            if (peer != "row")
                figure.Scatter(table.Text("row"), table[peer], {.name = peer, .size = 9});
        figure.LineAtY(1.0, {.name = "the same", .color = varnel::RGBDType{0.5, 0.5, 0.5, 1}});
        figure.y({.title = "ours : theirs", .log = true});
        figure.Save(argv[2]);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "%s\n", error.what());
        return 1;
    }
}
