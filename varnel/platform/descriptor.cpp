#include "varnel/platform/detail/descriptor.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <ctime>
#include <system_error>

#include "varnel/foundation/detail/progress.h"
#include "varnel/foundation/file.h"

namespace varnel::detail {
namespace {

/// Bytes that are written or read between two looks at the clock.
constexpr std::size_t kAtOnce = std::size_t{4} << 20;

/// Turns the signals of a broken pipe and of a file that grows too large, which would end the
/// process, into failing writes.
class WriteSignalsHeld {
 public:
    WriteSignalsHeld() {
        sigset_t pending;
        sigpending(&pending);
        sigemptyset(&m_Ours);
        // A signal that was there before belongs to the host.
        for (const int signal : {SIGPIPE, SIGXFSZ})
            if (sigismember(&pending, signal) == 0) sigaddset(&m_Ours, signal);
        pthread_sigmask(SIG_BLOCK, &m_Ours, &m_Before);
    }
    ~WriteSignalsHeld() {
        const timespec now{};
        while (sigtimedwait(&m_Ours, nullptr, &now) > 0 || errno == EINTR) {
        }
        pthread_sigmask(SIG_SETMASK, &m_Before, nullptr);
    }
    WriteSignalsHeld(const WriteSignalsHeld&) = delete;
    WriteSignalsHeld& operator=(const WriteSignalsHeld&) = delete;

 private:
    sigset_t m_Ours;
    sigset_t m_Before;
};

}  // namespace

CString Reason(const CString& name, int error) {
    return (name.empty() ? "\"\"" : name) + ": " + std::generic_category().message(error);
}

std::string FolderOf(const std::string& name) {
    const std::size_t slash = name.rfind('/');
    return slash == std::string::npos ? "" : name.substr(0, slash + 1);
}

void Descriptor::Close() {
    if (m_Fd >= 0) ::close(std::exchange(m_Fd, -1));
}

Descriptor Open(const std::string& name, int flags, mode_t mode) {
    int fd = -1;
    do {
        fd = ::open(name.c_str(), flags | O_CLOEXEC, mode);
    } while (fd < 0 && errno == EINTR);
    return Descriptor(fd);
}

std::size_t ReadAll(int fd, const CString& name, void* bytes, std::size_t size) {
    std::size_t got = 0;
    while (got < size) {
        ProgressOnly(0.0, 1.0);
        const ssize_t n =
            ::read(fd, static_cast<BYTE*>(bytes) + got, std::min(size - got, kAtOnce));
        if (n == 0) break;
        if (n > 0)
            got += static_cast<std::size_t>(n);
        else if (errno != EINTR)
            throw FileException(Reason(name, errno));
    }
    return got;
}

void WriteAll(int fd, const CString& name, const BYTE* bytes, std::size_t size) {
    int error = 0;
    while (size > 0 && error == 0) {
        ProgressOnly(0.0, 1.0);
        const WriteSignalsHeld held;
        const ssize_t n = ::write(fd, bytes, std::min(size, kAtOnce));
        if (n > 0) {
            bytes += n;
            size -= static_cast<std::size_t>(n);
        } else if (n == 0 || errno != EINTR) {
            error = n == 0 ? EIO : errno;
        }
    }
    if (error != 0) throw FileException(Reason(name, error));
}

}  // namespace varnel::detail
