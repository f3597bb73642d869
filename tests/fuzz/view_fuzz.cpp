// Loads a hostile chart file into a view and draws one small frame. Errors of the library are none;
// what the fuzzer looks for are crashes, reports of the sanitizers, and files that take long.
#include "tests/fuzz/chart_file_entry.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    varnel::test::FuzzedView& drawn = varnel::test::Drawn();
    if (!drawn.Load(bytes, size)) return 0;
    try {
        // A new face would be built each time, which takes longer than everything else.
        drawn.view.SetFont("Arial", 400, 128);
        drawn.view.SetViewSizePrinter();
        drawn.view.DrawView();
    } catch (const varnel::CErr3D&) {
    }
    return 0;
}
