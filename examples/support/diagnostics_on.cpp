// Linked to programs that have no line for it: what is probably not meant is told on standard
// error.
#include "varnel/foundation/diagnostics.h"

[[maybe_unused]] static const bool kOn = (varnel::SetDiagnostics(1), true);
