#include "varnel/foundation/memory_file.h"

#include <algorithm>

#include "varnel/foundation/detail/progress.h"

namespace varnel {

void MemoryFile::Write(const void* bytes, std::size_t size) {
    detail::ProgressStep();
    const auto* from = static_cast<const BYTE*>(bytes);
    m_Bytes.insert(m_Bytes.end(), from, from + size);
}

std::size_t MemoryFile::ReadSome(void* bytes, std::size_t size) {
    detail::ProgressStep();
    const std::size_t n = std::min(size, m_Bytes.size() - m_Position);
    std::copy_n(m_Bytes.begin() + static_cast<std::ptrdiff_t>(m_Position), n,
                static_cast<BYTE*>(bytes));
    m_Position += n;
    return n;
}

}  // namespace varnel
