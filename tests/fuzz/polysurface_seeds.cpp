// Writes small surface files of each kind into a folder, for the fuzzer to start from.
#include <cmath>
#include <cstdio>
#include <string>
#include <vector>

#include "varnel/surface/polysurface.h"

using namespace varnel;

namespace {

double Wave(double x, double y) {
    return std::sin(x) * std::cos(y);
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fputs("usage: polysurface_seeds FOLDER\n", stderr);
        return 2;
    }
    const std::string folder = std::string(argv[1]) + "/";
    CPolysurface(6, 5, 0, 0, 5, 4, Wave).Save(folder + "function");
    std::vector<point3Dtype> points;
    for (int i = 0; i < 30; ++i)
        points.push_back({i % 6 + 0.01 * i, i / 6 * 1.0, Wave(i, i / 6), 0.1 * i});
    for (const int type : {0, 1})
        CPolysurface(points.data(), 5, 6, type).Save(folder + "grid" + std::to_string(type));
    CPolysurface scattered(points.data(), 0, 30);
    scattered.DelaunaySurface(1);
    scattered.Save(folder + "scattered");
    CPolysurface().Save(folder + "empty");
    return 0;
}
