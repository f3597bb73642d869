// Strings: which characters their bytes are, and how chart files hold them.
//
// All text is UTF-8; a string that is not valid UTF-8 as a whole is read as Windows-1252. In a
// chart file a string is a 32-bit little-endian length in bytes, then the bytes as they were given,
// no terminator.
#pragma once

#include "varnel/foundation/export.h"
#include "varnel/foundation/file.h"
#include "varnel/foundation/types.h"

namespace varnel {

/// The text in UTF-8: a string that is valid UTF-8 as it is, another one converted from
/// Windows-1252.
VARNEL_API CString ToUtf8(const CString& text);

/// Writes the length and the bytes of s. A null file does nothing.
VARNEL_API void WriteCString(HANDLE file, const CString& s);

/// Reads a length and that many bytes into s. When the file has fewer bytes than the length
/// promises, or the length is negative, s stays as it was. A null file does nothing.
VARNEL_API void ReadCString(HANDLE file, CString& s);

}  // namespace varnel
