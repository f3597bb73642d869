// An open file, as everything that saves or loads sees it.
//
// HANDLE is a pointer to one; a null HANDLE makes every Save and Load of the library do nothing.
// Files on disk come from platform/files.h; a host can hand over its own kind.
#pragma once

#include <cstddef>
#include <cstdint>
#include <exception>
#include <vector>

#include "varnel/foundation/export.h"
#include "varnel/foundation/types.h"

namespace varnel {

/// Raised by a File whose medium fails (full disk, broken pipe). Save and Load turn it into a
/// CErr3D of type ERR3D_DISK_IO with the same text.
class VARNEL_API FileException : public std::exception {
 public:
    FileException();
    /// `what` names the file and the system's reason, as in "/a.chart: No space left on device".
    explicit FileException(CString what);
    const char* what() const noexcept override { return m_What.c_str(); }

 private:
    CString m_What;
};

/// A sequence of bytes that is read or written from its start to its end.
class VARNEL_API File {
 public:
    File() = default;
    File(const File&) = delete;
    File& operator=(const File&) = delete;
    virtual ~File();

    /// Reads up to `size` bytes and returns how many came; fewer only at the end of the file, which
    /// is remembered. Throws FileException when the medium fails.
    std::size_t Read(void* bytes, std::size_t size);

    /// Writes all `size` bytes or throws FileException.
    virtual void Write(const void* bytes, std::size_t size) = 0;

    /// Bytes between here and the end; nothing may be allocated for more than that. A stream whose
    /// length is unknown answers UINT64_MAX: then 256 MB at most are taken from it.
    virtual std::uint64_t Remaining() const = 0;

    /// Makes what was written final, throws FileException when that fails. A written file that is
    /// destroyed without it leaves no trace where the medium allows that.
    virtual void Commit() = 0;

    /// The file's name: pictures that a chart names are looked for beside it. Empty without one.
    virtual CString Name() const { return {}; }

    /// Whether a read asked for more than the file had, or MarkDry was told.
    bool RanDry() const { return m_RanDry; }

    /// Whether `count` times `size` bytes are still to come; those of a stream whose length is
    /// unknown are read ahead for that.
    bool Has(std::uint64_t count, std::size_t size);

    /// Records that bytes were missing which a reader, knowing Remaining(), did not ask for.
    void MarkDry() { m_RanDry = true; }

 protected:
    virtual std::size_t ReadSome(void* bytes, std::size_t size) = 0;

 private:
    bool m_RanDry = false;
    bool m_AtEnd = false;  ///< of the medium
    std::vector<BYTE> m_Ahead;
    std::size_t m_Taken = 0;   ///< of m_Ahead
    std::uint64_t m_Read = 0;  ///< bytes handed out
};

using HANDLE = File*;

}  // namespace varnel
