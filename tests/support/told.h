// What the library tells while something is done.
#pragma once

#include <string>
#include <utility>

#include "varnel/foundation/diagnostics.h"

namespace varnel::test {

/// The diagnostics of `work`, one a line.
template <class Work>
std::string Told(Work&& work) {
    struct Listening {
        std::string told;
        NoticeHandler before =
            SetDiagnosticHandler([this](const std::string& text) { told += text + "\n"; });
        Listening() { SetDiagnostics(1); }
        ~Listening() {
            SetDiagnostics(0);
            SetDiagnosticHandler(std::move(before));
        }
    } listening;
    work();
    return listening.told;
}

}  // namespace varnel::test
