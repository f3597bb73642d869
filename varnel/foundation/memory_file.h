// A file that lives in memory: what it takes to look at a record's bytes, or to read one from bytes
// that came from elsewhere.
#pragma once

#include <utility>
#include <vector>

#include "varnel/foundation/export.h"
#include "varnel/foundation/file.h"
#include "varnel/foundation/types.h"

namespace varnel {

/// A file that lives in memory: written at its end, read from its start.
class VARNEL_API MemoryFile : public File {
 public:
    MemoryFile() = default;
    explicit MemoryFile(std::vector<BYTE> bytes, CString name = {})
        : m_Bytes(std::move(bytes)), m_Name(std::move(name)) {}

    const std::vector<BYTE>& GetBytes() const { return m_Bytes; }

    void Write(const void* bytes, std::size_t size) override;
    std::uint64_t Remaining() const override { return m_Bytes.size() - m_Position; }
    void Commit() override {}
    CString Name() const override { return m_Name; }

 protected:
    std::size_t ReadSome(void* bytes, std::size_t size) override;

 private:
    std::vector<BYTE> m_Bytes;
    CString m_Name;
    std::size_t m_Position = 0;
};

}  // namespace varnel
