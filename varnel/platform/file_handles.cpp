#include "varnel/platform/file_handles.h"

#include <filesystem>
#include <memory>
#include <system_error>

#include "varnel/foundation/detail/diagnose.h"
#include "varnel/platform/files.h"

namespace varnel {
namespace {

/// Runs `body` on an open file; false when there is none or its medium fails.
template <class Body>
BOOL Attempt(const char* operation, HANDLE file, Body&& body) {
    if (file == INVALID_HANDLE_VALUE) return 0;
    try {
        body(*file);
        return 1;
    } catch (const FileException& failure) {
        detail::Diagnose(operation, failure.what());
        return 0;
    }
}

bool Exists(const CString& name) {
    std::error_code failure;
    return std::filesystem::exists(name, failure);
}

}  // namespace

HANDLE CreateFileA(const char* fileName, DWORD access, DWORD, void*, DWORD disposition, DWORD,
                   HANDLE) {
    const CString name = fileName != nullptr ? fileName : "";
    std::unique_ptr<File> file;
    CString why;
    if (access == GENERIC_READ && disposition == OPEN_EXISTING)
        file = OpenInputFile(name, &why);
    else if (access == GENERIC_WRITE &&
             (disposition == CREATE_ALWAYS || (disposition == CREATE_NEW && !Exists(name))))
        file = OpenOutputFile(name, &why);
    else
        why = name +
              ": files are read with OPEN_EXISTING, and written with CREATE_NEW where there "
              "is none or with CREATE_ALWAYS";
    if (file == nullptr) detail::Diagnose("CreateFileA", why);
    return file.release();
}

BOOL ReadFile(HANDLE file, void* bytes, DWORD size, DWORD* got, void*) {
    std::size_t count = 0;
    const BOOL done = Attempt("ReadFile", file, [&](File& f) { count = f.Read(bytes, size); });
    if (got != nullptr) *got = static_cast<DWORD>(count);
    return done;
}

BOOL WriteFile(HANDLE file, const void* bytes, DWORD size, DWORD* written, void*) {
    const BOOL done = Attempt("WriteFile", file, [&](File& f) { f.Write(bytes, size); });
    if (written != nullptr) *written = done ? size : 0;
    return done;
}

BOOL CloseHandle(HANDLE file) {
    const std::unique_ptr<File> owned(file);
    return Attempt("CloseHandle", file, [](File& f) { f.Commit(); });
}

}  // namespace varnel
