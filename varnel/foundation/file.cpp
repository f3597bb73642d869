#include "varnel/foundation/file.h"

#include <utility>

namespace varnel {

FileException::FileException() : FileException("the file's medium failed") {
}

FileException::FileException(CString what) : m_What(std::move(what)) {
}

File::~File() = default;

std::size_t File::Read(void* bytes, std::size_t size) {
    const std::size_t got = ReadSome(bytes, size);
    if (got < size) m_RanDry = m_AtEnd = true;
    return got;
}

}  // namespace varnel
