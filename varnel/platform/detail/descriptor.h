// Open file descriptors, whose failures are FileExceptions with the file's name and the system's
// reason.
#pragma once

#include <sys/types.h>

#include <string>
#include <utility>

#include "varnel/foundation/types.h"

namespace varnel::detail {

/// "name: reason", the reason being that of an errno.
CString Reason(const CString& name, int error);

/// The name up to and with its last slash; empty for a name in the current folder.
std::string FolderOf(const std::string& name);

/// An open file descriptor, closed at the end.
class Descriptor {
 public:
    explicit Descriptor(int fd = -1) : m_Fd(fd) {}
    Descriptor(Descriptor&& other) noexcept : m_Fd(std::exchange(other.m_Fd, -1)) {}
    Descriptor& operator=(Descriptor&& other) noexcept {
        std::swap(m_Fd, other.m_Fd);
        return *this;
    }
    ~Descriptor() { Close(); }

    explicit operator bool() const { return m_Fd >= 0; }
    int Get() const { return m_Fd; }
    void Close();

 private:
    int m_Fd;
};

/// Opens a file, which programs that are started later do not inherit; errno tells a failure.
Descriptor Open(const std::string& name, int flags, mode_t mode = 0);

/// Up to `size` bytes; fewer only at the end of the file. Throws FileException.
std::size_t ReadAll(int fd, const CString& name, void* bytes, std::size_t size);

/// All bytes, or FileException; a broken pipe and a limit on the file's size are such failures and
/// no signals.
void WriteAll(int fd, const CString& name, const BYTE* bytes, std::size_t size);

}  // namespace varnel::detail
