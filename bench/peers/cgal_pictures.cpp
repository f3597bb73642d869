// CGAL beside pictures.cpp: triangles N [TIMES], with inexact construction, which is its fastest.
#include <CGAL/Delaunay_triangulation_2.h>
#include <CGAL/Exact_predicates_inexact_constructions_kernel.h>

#include <cstdlib>
#include <string_view>

#include "bench/measure.h"

using Kernel = CGAL::Exact_predicates_inexact_constructions_kernel;

int main(int argc, char** argv) {
    if (argc < 3 || std::string_view(argv[1]) != "triangles") return 1;
    const int n = std::atoi(argv[2]);
    std::vector<Kernel::Point_2> points;
    for (int i = 0; i < n; ++i) {
        double p[2];
        measure::ScatteredPoint(i, p);
        points.emplace_back(p[0], p[1]);
    }
    std::size_t triangles = 0;
    measure::Repeat(argc > 3 ? std::atoi(argv[3]) : 5, [&] {
        const CGAL::Delaunay_triangulation_2<Kernel> triangulation(points.begin(), points.end());
        triangles = triangulation.number_of_faces();
    });
    measure::Print("triangles", static_cast<double>(triangles));
}
