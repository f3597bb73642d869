// Loads a hostile surface file and does with it what a chart does: triangles, contour lines,
// limits.
#include <cstddef>
#include <cstdint>

#include "tests/fuzz/record_mutator.h"
#include "varnel/varnel.h"

using namespace varnel;

extern "C" int LLVMFuzzerInitialize(int*, char***) {
    CErr3D::SetErrorReportMode(0);
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    MemoryFile file({bytes, bytes + size});
    try {
        CPolysurface surface(&file);
        const CPolysurface copy(&surface);
        const CPolysurface coarse(&copy, 2);
        const int points = surface.GetPSNumPoints();
        if (points > 0) {
            CPolysurface scattered(surface.GetPSPoints(), 0, points);
            scattered.DelaunaySurface(1);
        }
        const double levels[] = {-1, 0, 1, 10};
        TraceContourLines(surface, levels, 4);
    } catch (const CErr3D&) {
    }
    return 0;
}

extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t* bytes, std::size_t size,
                                               std::size_t most, unsigned int seed) {
    if (seed % 2 == 0) return LLVMFuzzerMutate(bytes, size, most);
    MemoryFile file({bytes, bytes + size});
    test::FieldLog log;
    try {
        CPolysurface(&file).Save(&log);
    } catch (const CErr3D&) {
    }
    return test::MutateFields(log, bytes, most, seed);
}
