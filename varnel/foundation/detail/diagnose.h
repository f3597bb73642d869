// How the library tells a diagnostic.
#pragma once

#include "varnel/foundation/detail/say.h"
#include "varnel/foundation/diagnostics.h"

namespace varnel::detail {

/// Tells `text`, unless it was told before. Call it through Diagnose.
VARNEL_API void TellDiagnostic(const std::string& text);

/// Tells "operation: pieces", put together only while diagnostics are on.
template <class... Pieces>
void Diagnose(const char* operation, const Pieces&... pieces) {
    if (GetDiagnostics() != 0) TellDiagnostic(Say(operation, ": ", pieces...));
}

}  // namespace varnel::detail
