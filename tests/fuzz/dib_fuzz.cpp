#include <cstddef>
#include <cstdint>
#include <cstdlib>

#include "tests/fuzz/dib_entry.h"
#include "varnel/foundation/notice.h"

extern "C" int LLVMFuzzerInitialize(int*, char***) {
    varnel::CErr3D::SetErrorReportMode(0);
    varnel::SetNoticeHandler([](const std::string&) {});
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    if (!varnel::test::UseDib(bytes, size)) std::abort();
    return 0;
}
