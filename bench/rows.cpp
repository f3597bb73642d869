// The rows of run.sh as a picture: rows CSV PICTURE. A bar below 1 says that Varnel needs less than
// the other.
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
        std::vector<Values> peers;
        std::vector<std::string> names;
        for (const std::string& name : table.Names())
            if (name != "row") {
                peers.push_back(table[name]);
                names.push_back(name);
            }
        figure.Bars(table["row"], peers, {.names = names, .base = 1.0});
        figure.y({.title = "ours : theirs", .log = true});
        figure.Save(argv[2]);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "%s\n", error.what());
        return 1;
    }
}
