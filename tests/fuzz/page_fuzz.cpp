// Loads a hostile chart file into a view and saves it as SVG or PDF, by its size, and stops that
// after a while: what shows of thousands of areas over each other takes long to find. Errors of the
// library are none; what the fuzzer looks for are crashes, reports of the sanitizers, files that
// take the memory, and work that cannot be stopped.
#include <chrono>

#include "tests/fuzz/chart_file_entry.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    using Clock = std::chrono::steady_clock;
    constexpr double kWidth = 60.0, kHeight = 45.0;  // millimetres
    varnel::test::FuzzedView& drawn = varnel::test::Drawn();
    if (!drawn.Load(bytes, size)) return 0;
    const Clock::time_point end = Clock::now() + std::chrono::milliseconds(500);
    drawn.view.SetProgressHandler(
        [end](double, const varnel::CString&) { return Clock::now() < end; });
    try {
        drawn.view.SetFont("Arial", 400, 128);
        if (size % 2 != 0)
            drawn.view.SaveToSVG("/dev/null", kWidth, kHeight);
        else
            drawn.view.SaveToPDF("/dev/null", kWidth, kHeight);
    } catch (const varnel::CErr3D&) {
    }
    drawn.view.SetProgressHandler({});
    return 0;
}
