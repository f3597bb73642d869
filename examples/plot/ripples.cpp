// A function of x and y.
#include <varnel/plot.h>

#include <cmath>
using namespace varnel::plot;

int main() {
    Figure figure({.title = "Ripples"});
    const auto ripple = [](double x, double y) {
        const double r = std::hypot(x, y);
        return std::cos(r) / (1 + 0.1 * r * r);
    };
    figure.Surface(ripple, -12, 12, -12, 12);
    figure.Save("ripples.png");
}
