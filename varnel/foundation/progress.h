// Watching long work, and stopping it.
#pragma once

#include <functional>

#include "varnel/foundation/export.h"
#include "varnel/foundation/types.h"

namespace varnel {

/// Is told how far an operation is, as a fraction 0..1 that never falls, and what is being done
/// ("drawing", "loading", ...). Its answer is whether to go on. It is called on the thread that
/// works, and must not call back into the view.
using ProgressHandler = std::function<bool(double fraction, const CString& what)>;

/// Runs `work`, such as the triangulation of a large surface, and tells `handler` how far it is, at
/// least every 50 ms. False when the handler stopped it: what was being computed is as it was. What
/// `work` throws passes through. A view watches its own operations (SetProgressHandler).
VARNEL_API bool RunWatched(const ProgressHandler& handler, const CString& what,
                           const std::function<void()>& work);

}  // namespace varnel
