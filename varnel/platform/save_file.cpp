// Files that are being saved: beside the one that they replace, or into it.
#include <dirent.h>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <cstdio>
#include <memory>
#include <new>
#include <random>
#include <string>
#include <string_view>
#include <utility>

#include "varnel/foundation/detail/progress.h"
#include "varnel/platform/detail/descriptor.h"
#include "varnel/platform/files.h"

namespace varnel {
namespace {

using detail::Descriptor;
using detail::Open;
using detail::Reason;

constexpr std::size_t kBufferSize = 1 << 16;
constexpr std::string_view kTemporaryPrefix = ".varnel-";
constexpr std::size_t kTemporaryDigits = 16;

std::atomic<SaveMode> saveMode{SaveMode::Replace};
std::atomic<int> saveSync{1};

[[noreturn]] void Fail(const CString& name, int error = errno) {
    throw FileException(Reason(name, error));
}

/// Waits until a file's bytes are on the disk. What cannot be synchronised (a pipe) is no failure.
void SyncData(int fd, const CString& name) {
    if (GetSaveSync() == 0) return;
    // Piece by piece, so that a slow disk is told of; what is left for the last call is little.
    constexpr off_t kPiece = off_t{2} << 20;
    struct stat status {};
    const off_t size = ::fstat(fd, &status) == 0 ? status.st_size : 0;
    for (off_t at = 0; at < size; at += kPiece) {
        detail::ProgressOnly(static_cast<double>(at), static_cast<double>(size));
        constexpr unsigned kWait =
            SYNC_FILE_RANGE_WAIT_BEFORE | SYNC_FILE_RANGE_WRITE | SYNC_FILE_RANGE_WAIT_AFTER;
        if (::sync_file_range(fd, at, kPiece, kWait) != 0) break;
    }
    if (::fdatasync(fd) == 0) return;
    if (errno != EINVAL && errno != EROFS && errno != ENOTSUP) Fail(name);
}

/// The same for the entry of a name in its folder.
void SyncFolder(const std::string& folder) {
    if (GetSaveSync() == 0) return;
    const Descriptor fd = Open(folder.empty() ? "." : folder, O_RDONLY | O_DIRECTORY);
    // A folder may be written and yet not opened; then there is no way to wait for it.
    if (!fd || ::fsync(fd.Get()) == 0) return;
    if (errno != EINVAL && errno != EROFS && errno != ENOTSUP) Fail(folder);
}

// --- Temporary files -----------------------------------------------------------------------------

bool IsTemporaryName(std::string_view name) {
    return name.size() == kTemporaryPrefix.size() + kTemporaryDigits &&
           name.starts_with(kTemporaryPrefix) &&
           name.find_first_not_of("0123456789abcdef", kTemporaryPrefix.size()) == name.npos;
}

/// Locks a temporary file for as long as it is open, which marks its writer as alive. False when
/// another one holds the lock.
bool LockTemporary(int fd) {
    return ::flock(fd, LOCK_EX | LOCK_NB) == 0;
}

/// Removes the temporary files of writers that were killed: their locks ended with them.
void RemoveAbandoned(const std::string& folder) {
    const std::unique_ptr<DIR, int (*)(DIR*)> entries(
        ::opendir(folder.empty() ? "." : folder.c_str()), ::closedir);
    if (entries == nullptr) return;
    while (const dirent* entry = ::readdir(entries.get())) {
        if (!IsTemporaryName(entry->d_name)) continue;
        const std::string name = folder + entry->d_name;
        const Descriptor fd = Open(name, O_RDONLY | O_NOFOLLOW | O_NONBLOCK);
        struct stat status {};
        if (fd && ::fstat(fd.Get(), &status) == 0 && S_ISREG(status.st_mode) &&
            LockTemporary(fd.Get()))
            ::unlink(name.c_str());
    }
}

/// A new file in `folder`, under a name that nobody has, locked.
Descriptor CreateTemporary(const std::string& folder, mode_t mode, std::string& name) {
    std::random_device random;
    for (int attempt = 0; attempt < 100; ++attempt) {
        char digits[kTemporaryDigits + 1];
        std::snprintf(digits, sizeof digits, "%08x%08x", random(), random());
        name = folder + std::string(kTemporaryPrefix) + digits;
        Descriptor fd = Open(name, O_WRONLY | O_CREAT | O_EXCL, mode);
        if (!fd && errno != EEXIST) return fd;
        // Another save may take a file that is not locked yet for an abandoned one.
        struct stat status {};
        if (fd && (LockTemporary(fd.Get()) || errno != EWOULDBLOCK) &&
            ::fstat(fd.Get(), &status) == 0 && status.st_nlink > 0)
            return fd;
    }
    errno = EEXIST;
    return Descriptor();
}

// --- Saving beside the old file ------------------------------------------------------------------

/// A file that takes the place of another one when it is complete.
class Replacement : public File {
 public:
    /// Creates the temporary file. `old` has the properties to keep, null for a new file. Throws
    /// FileException.
    Replacement(CString target, const struct stat* old);
    ~Replacement() override { Discard(); }

    void Write(const void* bytes, std::size_t size) override;
    std::uint64_t Remaining() const override { return 0; }
    void Commit() override;
    CString Name() const override { return m_Target; }

 protected:
    std::size_t ReadSome(void*, std::size_t) override { return 0; }

 private:
    void KeepOwner(const struct stat& old);
    void Flush();
    void WriteOrRemember(const BYTE* bytes, std::size_t size);
    void Rename();
    void Discard();

    CString m_Target;
    std::string m_Temporary;
    Descriptor m_Fd;
    bool m_KeepsMode = false;
    mode_t m_Mode = 0;
    std::vector<BYTE> m_Buffer;
    CString m_Failure;  ///< the first one; a file with a hole must not be committed
};

Replacement::Replacement(CString target, const struct stat* old) : m_Target(std::move(target)) {
    const std::string folder = detail::FolderOf(m_Target);
    RemoveAbandoned(folder);
    // Nobody else reads a new version of a file before it has the permissions of the old one.
    m_Fd = CreateTemporary(folder, old != nullptr ? 0600 : 0666, m_Temporary);
    if (!m_Fd) {
        m_Temporary.clear();
        Fail(old != nullptr ? m_Target + ": no file can be made beside it" : m_Target);
    }
    if (old == nullptr) return;
    m_KeepsMode = true;
    m_Mode = old->st_mode & 07777;
    try {
        KeepOwner(*old);
    } catch (const FileException&) {
        Discard();
        throw;
    }
}

void Replacement::KeepOwner(const struct stat& old) {
    struct stat made {};
    if (::fstat(m_Fd.Get(), &made) != 0) Fail(m_Target);
    const bool same = made.st_uid == old.st_uid && made.st_gid == old.st_gid;
    if (!same && ::fchown(m_Fd.Get(), old.st_uid, old.st_gid) != 0)
        throw FileException(Reason(m_Target + ": its owner cannot be kept", errno));
}

void Replacement::Write(const void* bytes, std::size_t size) {
    if (!m_Failure.empty()) throw FileException(m_Failure);
    if (!m_Fd) Fail(m_Target, EBADF);
    const auto* from = static_cast<const BYTE*>(bytes);
    if (m_Buffer.size() + size > kBufferSize) Flush();
    if (size < kBufferSize)
        m_Buffer.insert(m_Buffer.end(), from, from + size);
    else
        WriteOrRemember(from, size);
}

void Replacement::Flush() {
    WriteOrRemember(m_Buffer.data(), m_Buffer.size());
    m_Buffer.clear();
}

void Replacement::WriteOrRemember(const BYTE* bytes, std::size_t size) {
    try {
        detail::WriteAll(m_Fd.Get(), m_Target, bytes, size);
    } catch (const FileException& failure) {
        m_Failure = failure.what();
        throw;
    }
}

void Replacement::Commit() {
    if (!m_Failure.empty()) throw FileException(m_Failure);
    if (!m_Fd) return;
    Flush();
    try {
        Rename();
    } catch (const FileException& failure) {
        m_Failure = failure.what();
        Discard();
        throw;
    }
}

void Replacement::Rename() {
    if (m_KeepsMode && ::fchmod(m_Fd.Get(), m_Mode) != 0) Fail(m_Target);
    SyncData(m_Fd.Get(), m_Target);
    detail::Progress(1.0, 1.0);
    // Some file systems report a full disk only when a file is closed. The lock outlives this.
    const int copy = ::fcntl(m_Fd.Get(), F_DUPFD_CLOEXEC, 0);
    if (copy >= 0 && ::close(copy) != 0 && errno != EINTR) Fail(m_Target);
    if (::rename(m_Temporary.c_str(), m_Target.c_str()) != 0)
        throw FileException(Reason(m_Target + ": cannot be replaced", errno));
    m_Temporary.clear();
    m_Fd.Close();
    SyncFolder(detail::FolderOf(m_Target));
}

void Replacement::Discard() {
    if (!m_Temporary.empty()) ::unlink(m_Temporary.c_str());
    m_Temporary.clear();
    m_Fd.Close();
}

// --- Saving into what is there -------------------------------------------------------------------

/// An existing file, device or pipe that is written when all bytes are known.
class DirectOutput : public File {
 public:
    DirectOutput(Descriptor fd, CString name, bool regular)
        : m_Fd(std::move(fd)), m_Name(std::move(name)), m_Regular(regular) {}

    void Write(const void* bytes, std::size_t size) override;
    std::uint64_t Remaining() const override { return 0; }
    void Commit() override;
    CString Name() const override { return m_Name; }

 protected:
    std::size_t ReadSome(void*, std::size_t) override { return 0; }

 private:
    std::vector<BYTE> OldContent() const;
    void Reserve() const;
    void Overwrite(const std::vector<BYTE>& bytes) const;
    void OverwriteOrPutBack() const;

    Descriptor m_Fd;
    CString m_Name;
    bool m_Regular;
    std::vector<BYTE> m_Bytes;
    CString m_Failure;
};

void DirectOutput::Write(const void* bytes, std::size_t size) {
    if (!m_Failure.empty()) throw FileException(m_Failure);
    if (!m_Fd) Fail(m_Name, EBADF);
    const auto* from = static_cast<const BYTE*>(bytes);
    try {
        m_Bytes.insert(m_Bytes.end(), from, from + size);
    } catch (const std::bad_alloc&) {
        m_Failure = Reason(m_Name, ENOMEM);
        throw FileException(m_Failure);
    }
}

void DirectOutput::Commit() {
    if (!m_Failure.empty()) throw FileException(m_Failure);
    if (!m_Fd) return;
    detail::Progress(0.0, 1.0);  // what has begun is done to its end
    try {
        if (m_Regular)
            OverwriteOrPutBack();
        else
            detail::WriteAll(m_Fd.Get(), m_Name, m_Bytes.data(), m_Bytes.size());
        SyncData(m_Fd.Get(), m_Name);
    } catch (const FileException& failure) {
        m_Failure = failure.what();
        throw;
    }
    m_Fd.Close();
}

std::vector<BYTE> DirectOutput::OldContent() const {
    struct stat status {};
    if (::fstat(m_Fd.Get(), &status) != 0 || ::lseek(m_Fd.Get(), 0, SEEK_SET) != 0) Fail(m_Name);
    try {
        std::vector<BYTE> bytes(static_cast<std::size_t>(status.st_size));
        bytes.resize(detail::ReadAll(m_Fd.Get(), m_Name, bytes.data(), bytes.size()));
        return bytes;
    } catch (const std::bad_alloc&) {
        Fail(m_Name, ENOMEM);
    }
}

/// Fails while nothing has been written yet when there is no room for all of it.
void DirectOutput::Reserve() const {
    rlimit limit{};
    if (::getrlimit(RLIMIT_FSIZE, &limit) == 0 && limit.rlim_cur < m_Bytes.size())
        Fail(m_Name, EFBIG);
    if (m_Bytes.empty()) return;
    const auto size = static_cast<off_t>(m_Bytes.size());
    if (::fallocate(m_Fd.Get(), FALLOC_FL_KEEP_SIZE, 0, size) != 0 && errno != EOPNOTSUPP &&
        errno != ENOSYS)
        Fail(m_Name);
}

void DirectOutput::Overwrite(const std::vector<BYTE>& bytes) const {
    if (::lseek(m_Fd.Get(), 0, SEEK_SET) != 0) Fail(m_Name);
    detail::WriteAll(m_Fd.Get(), m_Name, bytes.data(), bytes.size());
    if (::ftruncate(m_Fd.Get(), static_cast<off_t>(bytes.size())) != 0) Fail(m_Name);
}

void DirectOutput::OverwriteOrPutBack() const {
    const std::vector<BYTE> old = OldContent();
    Reserve();
    try {
        Overwrite(m_Bytes);
    } catch (const FileException& failure) {
        try {
            Overwrite(old);
        } catch (const FileException&) {
            throw FileException(CString(failure.what()) + "; its old content is damaged");
        }
        throw;
    }
}

/// The name behind symbolic links, also where the last one leads to nothing yet. Throws
/// FileException when the links run in a circle.
std::string Resolve(const CString& name) {
    std::string resolved = name;
    for (int depth = 0; depth < 40; ++depth) {
        std::string target(4096, '\0');
        const ssize_t size = ::readlink(resolved.c_str(), target.data(), target.size());
        if (size < 0) return resolved;
        target.resize(static_cast<std::size_t>(size));
        resolved = target.starts_with('/') ? target : detail::FolderOf(resolved) + target;
    }
    Fail(name, ELOOP);
}

std::unique_ptr<File> OpenOutput(const CString& name) {
    if (name.empty()) Fail(name, ENOENT);
    if (name.find('\0') != CString::npos) Fail(name.c_str(), EINVAL);
    const std::string target = Resolve(name);
    struct stat old {};
    const bool exists = ::stat(target.c_str(), &old) == 0;
    if (!exists && errno != ENOENT) Fail(name);
    if (target.ends_with('/') || (exists && S_ISDIR(old.st_mode))) Fail(name, EISDIR);
    if (exists && ::faccessat(AT_FDCWD, target.c_str(), W_OK, AT_EACCESS) != 0) Fail(name);
    const bool regular = exists && S_ISREG(old.st_mode);
    if (!exists || (regular && GetSaveMode() == SaveMode::Replace))
        return std::make_unique<Replacement>(target, exists ? &old : nullptr);
    Descriptor fd = Open(target, regular ? O_RDWR : O_WRONLY | O_NOCTTY);
    if (!fd) Fail(name);
    return std::make_unique<DirectOutput>(std::move(fd), target, regular);
}

}  // namespace

void SetSaveMode(SaveMode mode) {
    saveMode = mode;
}

SaveMode GetSaveMode() {
    return saveMode;
}

void SetSaveSync(int on) {
    saveSync = on != 0 ? 1 : 0;
}

int GetSaveSync() {
    return saveSync;
}

std::unique_ptr<File> OpenOutputFile(const CString& name, CString* why) {
    try {
        return OpenOutput(name);
    } catch (const FileException& failure) {
        if (why != nullptr) *why = failure.what();
        return nullptr;
    }
}

}  // namespace varnel
