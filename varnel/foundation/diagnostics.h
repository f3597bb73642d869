// Diagnostics: what is no failure and yet probably not what was meant, such as a data set without
// data, is told once, in a sentence like those of Error::what().
//
// Off by default. The programs and examples turn them on.
#pragma once

#include "varnel/foundation/export.h"
#include "varnel/foundation/notice.h"
#include "varnel/foundation/types.h"

namespace varnel {

/// 1: diagnostics are told, each text once a process; 0, the default: they are not. Turning them on
/// forgets what was told before.
VARNEL_API void SetDiagnostics(int on);
VARNEL_API int GetDiagnostics();

/// Installs who is told, for the whole process, and returns the handler before it. An empty handler
/// brings back the default: one line on standard error that starts with "varnel: ".
VARNEL_API NoticeHandler SetDiagnosticHandler(NoticeHandler handler);

}  // namespace varnel
