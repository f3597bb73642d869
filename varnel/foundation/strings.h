// Strings in chart files: a 32-bit little-endian length, then the characters, no terminator.
#pragma once

#include "varnel/foundation/export.h"
#include "varnel/foundation/file.h"
#include "varnel/foundation/types.h"

namespace varnel {

/// Writes the length and the characters of s. A null file does nothing.
VARNEL_API void WriteCString(HANDLE file, const CString& s);

/// Reads a length and that many characters into s. When the file has fewer bytes than the length
/// promises, or the length is negative, s stays as it was. A null file does nothing.
VARNEL_API void ReadCString(HANDLE file, CString& s);

}  // namespace varnel
