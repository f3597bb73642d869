#include "varnel/platform/files.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <ctime>
#include <limits>
#include <random>
#include <string>
#include <utility>

namespace varnel {
namespace {

constexpr std::size_t kBufferSize = 64 * 1024;

/// More than this is not read ahead from an input whose length is unknown: some never end.
constexpr std::size_t kMostReadAhead = std::size_t{1} << 28;

/// An open file descriptor.
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

    /// False when the medium reports a failure only now.
    bool Close() { return m_Fd < 0 || ::close(std::exchange(m_Fd, -1)) == 0; }

 private:
    int m_Fd;
};

Descriptor Open(const std::string& name, int flags, mode_t mode = 0) {
    int fd = -1;
    do {
        fd = ::open(name.c_str(), flags | O_CLOEXEC, mode);
    } while (fd < 0 && errno == EINTR);
    return Descriptor(fd);
}

/// Up to `size` bytes; fewer only at the end of the file.
std::size_t ReadAll(int fd, void* bytes, std::size_t size) {
    std::size_t got = 0;
    while (got < size) {
        const ssize_t n = ::read(fd, static_cast<BYTE*>(bytes) + got, size - got);
        if (n == 0) break;
        if (n > 0)
            got += static_cast<std::size_t>(n);
        else if (errno != EINTR)
            throw FileException();
    }
    return got;
}

/// Turns the signal of a broken pipe, which would end the process, into a failing write.
class PipeSignalHeld {
 public:
    PipeSignalHeld() {
        sigemptyset(&m_Signal);
        sigaddset(&m_Signal, SIGPIPE);
        sigset_t pending;
        sigpending(&pending);
        m_WasPending = sigismember(&pending, SIGPIPE) == 1;
        pthread_sigmask(SIG_BLOCK, &m_Signal, &m_Before);
    }
    ~PipeSignalHeld() {
        const timespec now{};
        // A signal that was there before belongs to the host.
        while (!m_WasPending && sigtimedwait(&m_Signal, nullptr, &now) < 0 && errno == EINTR) {
        }
        pthread_sigmask(SIG_SETMASK, &m_Before, nullptr);
    }
    PipeSignalHeld(const PipeSignalHeld&) = delete;
    PipeSignalHeld& operator=(const PipeSignalHeld&) = delete;

 private:
    sigset_t m_Signal;
    sigset_t m_Before;
    bool m_WasPending = false;
};

void WriteAll(int fd, const BYTE* bytes, std::size_t size) {
    const PipeSignalHeld held;
    while (size > 0) {
        const ssize_t n = ::write(fd, bytes, size);
        if (n < 0 && errno == EINTR) continue;
        if (n <= 0) throw FileException();
        bytes += n;
        size -= static_cast<std::size_t>(n);
    }
}

/// A regular file that is being read.
class DiskInput : public File {
 public:
    DiskInput(Descriptor fd, std::uint64_t size) : m_Fd(std::move(fd)), m_Size(size) {}

    void Write(const void*, std::size_t) override { throw FileException(); }
    std::uint64_t Remaining() const override { return m_Size > m_Read ? m_Size - m_Read : 0; }
    void Commit() override {}

 protected:
    std::size_t ReadSome(void* bytes, std::size_t size) override;

 private:
    std::size_t Take(BYTE* bytes, std::size_t size);

    Descriptor m_Fd;
    std::uint64_t m_Size;
    std::uint64_t m_Read = 0;
    std::vector<BYTE> m_Buffer;
    std::size_t m_Position = 0;
};

/// What is left in the buffer, up to `size` bytes.
std::size_t DiskInput::Take(BYTE* bytes, std::size_t size) {
    const std::size_t n = std::min(size, m_Buffer.size() - m_Position);
    std::copy_n(m_Buffer.begin() + static_cast<std::ptrdiff_t>(m_Position), n, bytes);
    m_Position += n;
    return n;
}

std::size_t DiskInput::ReadSome(void* bytes, std::size_t size) {
    auto* out = static_cast<BYTE*>(bytes);
    std::size_t got = Take(out, size);
    if (size - got >= kBufferSize) {
        got += ReadAll(m_Fd.Get(), out + got, size - got);
    } else if (got < size) {
        m_Buffer.resize(kBufferSize);
        m_Position = m_Buffer.size();
        m_Buffer.resize(ReadAll(m_Fd.Get(), m_Buffer.data(), kBufferSize));
        m_Position = 0;
        got += Take(out + got, size - got);
    }
    m_Read += got;
    return got;
}

/// A file that is being written: directly, or beside the one that it will replace.
class DiskOutput : public File {
 public:
    /// What Commit does with the file; nothing for one that is written directly.
    struct Replacement {
        std::string temporary;
        std::string target;
        bool keepsMode = false;  ///< `mode` is to be set before the file takes its place
        mode_t mode = 0;
    };

    DiskOutput(Descriptor fd, Replacement replacement)
        : m_Fd(std::move(fd)), m_Replacement(std::move(replacement)) {}
    ~DiskOutput() override { Discard(); }

    void Write(const void* bytes, std::size_t size) override;
    std::uint64_t Remaining() const override { return 0; }
    void Commit() override;

 protected:
    std::size_t ReadSome(void*, std::size_t) override { return 0; }

 private:
    void Flush();
    bool Replace();
    void Discard();

    Descriptor m_Fd;
    Replacement m_Replacement;
    std::vector<BYTE> m_Buffer;
    bool m_Failed = false;
};

void DiskOutput::Write(const void* bytes, std::size_t size) {
    if (m_Failed || !m_Fd) throw FileException();
    const auto* from = static_cast<const BYTE*>(bytes);
    if (m_Buffer.size() + size > kBufferSize) Flush();
    if (size < kBufferSize) {
        m_Buffer.insert(m_Buffer.end(), from, from + size);
        return;
    }
    m_Failed = true;
    WriteAll(m_Fd.Get(), from, size);
    m_Failed = false;
}

void DiskOutput::Flush() {
    // Stays set when the write below throws: a file with a hole must not be committed.
    m_Failed = true;
    WriteAll(m_Fd.Get(), m_Buffer.data(), m_Buffer.size());
    m_Failed = false;
    m_Buffer.clear();
}

void DiskOutput::Commit() {
    if (m_Failed) throw FileException();
    if (!m_Fd) return;
    Flush();
    m_Failed = !Replace();
    if (!m_Failed) return;
    Discard();
    throw FileException();
}

bool DiskOutput::Replace() {
    const Replacement& r = m_Replacement;
    if (r.keepsMode && ::fchmod(m_Fd.Get(), r.mode) != 0) return false;
    if (!m_Fd.Close()) return false;
    if (!r.temporary.empty() && ::rename(r.temporary.c_str(), r.target.c_str()) != 0) return false;
    m_Replacement.temporary.clear();
    return true;
}

void DiskOutput::Discard() {
    m_Fd.Close();
    if (!m_Replacement.temporary.empty()) ::unlink(m_Replacement.temporary.c_str());
    m_Replacement.temporary.clear();
}

std::string FolderOf(const std::string& name) {
    const std::size_t slash = name.rfind('/');
    return slash == std::string::npos ? "" : name.substr(0, slash + 1);
}

/// The name behind symbolic links, also where the last one leads to nothing yet. Empty when the
/// links run in a circle.
std::string Resolve(std::string name) {
    for (int depth = 0; depth < 40; ++depth) {
        std::string target(4096, '\0');
        const ssize_t size = ::readlink(name.c_str(), target.data(), target.size());
        if (size < 0) return name;
        target.resize(static_cast<std::size_t>(size));
        name = target.starts_with('/') ? target : FolderOf(name) + target;
    }
    return {};
}

/// A new file in `folder`, under a name that nobody has.
Descriptor CreateTemporary(const std::string& folder, mode_t mode, std::string& name) {
    std::random_device random;
    for (int attempt = 0; attempt < 100; ++attempt) {
        char suffix[32];
        std::snprintf(suffix, sizeof suffix, "%08x%08x", random(), random());
        name = folder + ".varnel-" + suffix;
        Descriptor fd = Open(name, O_WRONLY | O_CREAT | O_EXCL, mode);
        if (fd || errno != EEXIST) return fd;
    }
    return Descriptor();
}

/// Prepares the replacement of `target`, whose properties are `old` unless it is new. Null when its
/// folder or its owner do not allow that.
std::unique_ptr<File> OpenReplacement(const std::string& target, const struct stat* old) {
    DiskOutput::Replacement replacement;
    replacement.target = target;
    // Nobody else reads a new version of a file before it has the permissions of the old one.
    Descriptor fd =
        CreateTemporary(FolderOf(target), old != nullptr ? 0600 : 0666, replacement.temporary);
    if (!fd) return nullptr;
    if (old != nullptr) {
        replacement.keepsMode = true;
        replacement.mode = old->st_mode & 07777;
        struct stat made {};
        if (::fstat(fd.Get(), &made) != 0 ||
            ((made.st_uid != old->st_uid || made.st_gid != old->st_gid) &&
             ::fchown(fd.Get(), old->st_uid, old->st_gid) != 0)) {
            ::unlink(replacement.temporary.c_str());
            return nullptr;
        }
    }
    return std::make_unique<DiskOutput>(std::move(fd), std::move(replacement));
}

/// Whether a name can be handed to the operating system as it is.
bool IsFileName(const CString& name) {
    return !name.empty() && name.find('\0') == CString::npos;
}

/// All bytes of an input whose length is unknown; null when there is no end of them.
std::unique_ptr<File> ReadAhead(int fd) {
    std::vector<BYTE> bytes;
    while (bytes.size() < kMostReadAhead) {
        const std::size_t before = bytes.size();
        const std::size_t asked = std::max(before, kBufferSize);
        bytes.resize(before + asked);
        const std::size_t got = ReadAll(fd, bytes.data() + before, asked);
        bytes.resize(before + got);
        if (got < asked) return std::make_unique<MemoryFile>(std::move(bytes));
    }
    return nullptr;
}

}  // namespace

std::unique_ptr<File> OpenInputFile(const CString& name) {
    if (!IsFileName(name)) return nullptr;
    Descriptor fd = Open(name, O_RDONLY);
    struct stat status {};
    if (!fd || ::fstat(fd.Get(), &status) != 0 || S_ISDIR(status.st_mode)) return nullptr;
    // Files that the kernel makes up as they are read call themselves regular and empty.
    if (S_ISREG(status.st_mode) && status.st_size > 0)
        return std::make_unique<DiskInput>(std::move(fd),
                                           static_cast<std::uint64_t>(status.st_size));
    try {
        return ReadAhead(fd.Get());
    } catch (const FileException&) {
        return nullptr;
    }
}

std::unique_ptr<File> OpenOutputFile(const CString& name) {
    if (!IsFileName(name)) return nullptr;
    const std::string target = Resolve(name);
    if (target.empty() || target.ends_with('/')) return nullptr;
    struct stat old {};
    const bool exists = ::stat(target.c_str(), &old) == 0;
    if (!exists && errno != ENOENT) return nullptr;
    if (exists && (S_ISDIR(old.st_mode) || ::faccessat(AT_FDCWD, target.c_str(), W_OK, AT_EACCESS)))
        return nullptr;
    if (!exists || S_ISREG(old.st_mode)) {
        if (std::unique_ptr<File> file = OpenReplacement(target, exists ? &old : nullptr))
            return file;
    }
    Descriptor fd = Open(target, O_WRONLY | O_CREAT | O_TRUNC, 0666);
    if (!fd) return nullptr;
    return std::make_unique<DiskOutput>(std::move(fd), DiskOutput::Replacement{});
}

}  // namespace varnel
