// A line in space.
#include <varnel/plot.h>

#include <cmath>
using namespace varnel::plot;

int main() {
    std::vector<double> x, y, z;
    for (double t = 0; t < 20; t += 0.05)
        x.push_back(std::cos(t)), y.push_back(std::sin(t)), z.push_back(t);
    Figure figure({.title = "A helix"});
    figure.Line3D(x, y, z);
    figure.Save("helix.png");
}
