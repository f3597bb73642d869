#include "varnel/foundation/file.h"

namespace varnel {

const char* FileException::what() const noexcept {
    return "the file's medium failed";
}

File::~File() = default;

std::size_t File::Read(void* bytes, std::size_t size) {
    const std::size_t got = ReadSome(bytes, size);
    if (got < size) m_RanDry = true;
    return got;
}

}  // namespace varnel
