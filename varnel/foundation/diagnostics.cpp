#include "varnel/foundation/diagnostics.h"

#include <atomic>
#include <iostream>
#include <mutex>
#include <set>
#include <utility>

#include "varnel/foundation/detail/diagnose.h"

namespace varnel {
namespace {

/// Texts that are remembered; what comes after so many different ones is told each time.
constexpr std::size_t kMostRemembered = 4096;

struct Diagnostics {
    std::atomic<int> on{0};
    std::mutex mutex;
    NoticeHandler handler;
    std::set<std::string> told;
};

/// Never destroyed: static views of the host may tell something at the end of the process.
Diagnostics& diagnostics() {
    static auto* const instance = new Diagnostics;
    return *instance;
}

}  // namespace

void SetDiagnostics(int on) {
    const std::lock_guard lock(diagnostics().mutex);
    diagnostics().told.clear();
    diagnostics().on = on != 0 ? 1 : 0;
}

int GetDiagnostics() {
    return diagnostics().on;
}

NoticeHandler SetDiagnosticHandler(NoticeHandler handler) {
    const std::lock_guard lock(diagnostics().mutex);
    return std::exchange(diagnostics().handler, std::move(handler));
}

void detail::TellDiagnostic(const std::string& text) {
    NoticeHandler handler;
    {
        // A copy, so that a handler that blocks or installs another one holds no lock.
        const std::lock_guard lock(diagnostics().mutex);
        if (diagnostics().told.contains(text)) return;
        if (diagnostics().told.size() < kMostRemembered) diagnostics().told.insert(text);
        handler = diagnostics().handler;
    }
    if (handler)
        handler(text);
    else
        std::cerr << "varnel: " << text << '\n';
}

}  // namespace varnel
