// Files by handle, for saving and loading one object alone: each Save(HANDLE) and Load(HANDLE) of
// the library takes one.
//
//     HANDLE file = CreateFileA("axes.bin", GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS,
//                               FILE_ATTRIBUTE_NORMAL, nullptr);
//     if (file != INVALID_HANDLE_VALUE) {
//         axes->Save(file);
//         if (!CloseHandle(file)) ...            // nothing was saved, the old file is as it was
//     }
#pragma once

#include "varnel/foundation/export.h"
#include "varnel/foundation/file.h"
#include "varnel/foundation/types.h"

namespace varnel {

inline constexpr DWORD GENERIC_READ = 0x80000000;
inline constexpr DWORD GENERIC_WRITE = 0x40000000;
inline constexpr DWORD CREATE_NEW = 1;     ///< for writing; there must be no such file
inline constexpr DWORD CREATE_ALWAYS = 2;  ///< for writing; an existing file is replaced
inline constexpr DWORD OPEN_EXISTING = 3;  ///< for reading
inline constexpr DWORD FILE_ATTRIBUTE_NORMAL = 0x80;

/// What CreateFileA answers when it fails. Saving to it and loading from it do nothing.
inline constexpr HANDLE INVALID_HANDLE_VALUE = nullptr;

/// Opens a file for reading (GENERIC_READ, OPEN_EXISTING) or for writing (GENERIC_WRITE, CREATE_NEW
/// or CREATE_ALWAYS; see SaveMode in platform/files.h). The sharing, the security, the attributes
/// and the template are not read. INVALID_HANDLE_VALUE for other combinations and where the file
/// cannot be opened, with a diagnostic that says why. The caller owns the handle and gives it to
/// CloseHandle.
VARNEL_API HANDLE CreateFileA(const char* fileName, DWORD access, DWORD sharing, void* security,
                              DWORD disposition, DWORD attributes, HANDLE fileTemplate);

/// Reads up to `size` bytes; `got`, if given, becomes their number, less than `size` at the end of
/// the file. 0, with a diagnostic, when the medium fails and for an invalid handle. `overlapped` is
/// not read.
VARNEL_API BOOL ReadFile(HANDLE file, void* bytes, DWORD size, DWORD* got, void* overlapped);

/// Writes `size` bytes; `written`, if given, becomes their number. 0, with a diagnostic, when the
/// medium fails and for an invalid handle. `overlapped` is not read.
VARNEL_API BOOL WriteFile(HANDLE file, const void* bytes, DWORD size, DWORD* written,
                          void* overlapped);

/// Completes a file that was written, which takes the old one's place only here, and frees the
/// handle. 0, with a diagnostic, when that fails, and for an invalid handle.
VARNEL_API BOOL CloseHandle(HANDLE file);

}  // namespace varnel
