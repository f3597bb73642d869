#include "varnel/platform/files.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <algorithm>
#include <cerrno>
#include <mutex>
#include <string>
#include <utility>

#include "varnel/platform/detail/descriptor.h"

namespace varnel {
namespace {

using detail::Descriptor;
using detail::Open;
using detail::ReadAll;
using detail::Reason;

constexpr std::size_t kBufferSize = 1 << 16;

/// More than this is not read ahead from an input whose length is unknown: some never end.
constexpr std::size_t kMostReadAhead = std::size_t{1} << 28;

/// A regular file that is being read.
class DiskInput : public File {
 public:
    DiskInput(Descriptor fd, CString name, std::uint64_t size)
        : m_Fd(std::move(fd)), m_Name(std::move(name)), m_Size(size) {}

    void Write(const void*, std::size_t) override { throw FileException(Reason(m_Name, EBADF)); }
    std::uint64_t Remaining() const override { return m_Size > m_Read ? m_Size - m_Read : 0; }
    void Commit() override {}
    CString Name() const override { return m_Name; }

 protected:
    std::size_t ReadSome(void* bytes, std::size_t size) override;

 private:
    std::size_t Take(BYTE* bytes, std::size_t size);

    Descriptor m_Fd;
    CString m_Name;
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
        got += ReadAll(m_Fd.Get(), m_Name, out + got, size - got);
    } else if (got < size) {
        m_Buffer.resize(kBufferSize);
        m_Position = m_Buffer.size();
        m_Buffer.resize(ReadAll(m_Fd.Get(), m_Name, m_Buffer.data(), kBufferSize));
        m_Position = 0;
        got += Take(out + got, size - got);
    }
    m_Read += got;
    return got;
}

/// All bytes of an input whose length is unknown.
std::unique_ptr<File> ReadAhead(int fd, const CString& name) {
    std::vector<BYTE> bytes;
    while (bytes.size() < kMostReadAhead) {
        const std::size_t before = bytes.size();
        const std::size_t asked = std::max(before, kBufferSize);
        bytes.resize(before + asked);
        const std::size_t got = ReadAll(fd, name, bytes.data() + before, asked);
        bytes.resize(before + got);
        if (got < asked) return std::make_unique<MemoryFile>(std::move(bytes), name);
    }
    throw FileException(Reason(name, EFBIG));
}

/// Opens an input; which kinds are taken is decided by `regularOnly`. Throws FileException.
std::unique_ptr<File> OpenInput(const CString& name, bool regularOnly) {
    if (name.find('\0') != CString::npos) throw FileException(Reason(name.c_str(), EINVAL));
    // Opening a pipe waits for its writer, unless told otherwise.
    Descriptor fd = Open(name, regularOnly ? O_RDONLY | O_NONBLOCK | O_NOCTTY : O_RDONLY);
    struct stat status {};
    if (!fd || ::fstat(fd.Get(), &status) != 0) throw FileException(Reason(name, errno));
    if (S_ISDIR(status.st_mode)) throw FileException(Reason(name, EISDIR));
    const bool regular = S_ISREG(status.st_mode);
    if (regularOnly && !regular) throw FileException(name + ": It is no regular file");
    // Files that the kernel makes up as they are read call themselves regular and empty.
    if (regular && (status.st_size > 0 || regularOnly))
        return std::make_unique<DiskInput>(std::move(fd), name,
                                           static_cast<std::uint64_t>(status.st_size));
    return ReadAhead(fd.Get(), name);
}

std::unique_ptr<File> OpenOrSayWhy(const CString& name, bool regularOnly, CString* why) {
    try {
        return OpenInput(name, regularOnly);
    } catch (const FileException& failure) {
        if (why != nullptr) *why = failure.what();
        return nullptr;
    }
}

std::mutex hookMutex;
PictureFileHook pictureHook;

}  // namespace

std::unique_ptr<File> OpenInputFile(const CString& name, CString* why) {
    return OpenOrSayWhy(name, false, why);
}

std::unique_ptr<File> OpenRegularFile(const CString& name, CString* why) {
    return OpenOrSayWhy(name, true, why);
}

PictureFileHook SetPictureFileHook(PictureFileHook hook) {
    const std::lock_guard lock(hookMutex);
    return std::exchange(pictureHook, std::move(hook));
}

CString PictureBeside(const CString& picture, const CString& chartFile) {
    if (picture.starts_with('/')) return picture;
    if (("/" + picture + "/").find("/../") != CString::npos) return {};
    return detail::FolderOf(chartFile) + picture;
}

std::unique_ptr<File> OpenPictureFile(const CString& picture, const CString& chartFile,
                                      CString* why) {
    PictureFileHook hook;
    {
        const std::lock_guard lock(hookMutex);
        hook = pictureHook;
    }
    const CString name = hook ? hook(picture, chartFile) : PictureBeside(picture, chartFile);
    if (!name.empty()) return OpenRegularFile(name, why);
    if (why != nullptr) *why = Reason(picture, EACCES);
    return nullptr;
}

}  // namespace varnel
