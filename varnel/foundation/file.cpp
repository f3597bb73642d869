#include "varnel/foundation/file.h"

#include <algorithm>
#include <utility>

namespace varnel {
namespace {

/// What a stream of unknown length can have: some never end.
constexpr std::uint64_t kMostStreamed = std::uint64_t{1} << 28;
constexpr std::size_t kFirstAhead = 1 << 16;

}  // namespace

FileException::FileException() : FileException("the file's medium failed") {
}

FileException::FileException(CString what) : m_What(std::move(what)) {
}

File::~File() = default;

std::size_t File::Read(void* bytes, std::size_t size) {
    auto* const to = static_cast<BYTE*>(bytes);
    const std::size_t ahead = std::min(size, m_Ahead.size() - m_Taken);
    std::copy_n(m_Ahead.data() + m_Taken, ahead, to);
    m_Taken += ahead;
    const std::size_t got = ahead < size ? ahead + ReadSome(to + ahead, size - ahead) : size;
    if (got < size) m_RanDry = m_AtEnd = true;
    m_Read += got;
    return got;
}

bool File::Has(std::uint64_t count, std::size_t size) {
    const std::uint64_t rest = Remaining();
    if (rest != UINT64_MAX) return !m_AtEnd && count <= rest / size;
    if (m_Read > kMostStreamed || count > (kMostStreamed - m_Read) / size) return false;
    const std::uint64_t wanted = count * size;
    m_Ahead.erase(m_Ahead.begin(), m_Ahead.begin() + static_cast<std::ptrdiff_t>(m_Taken));
    m_Taken = 0;
    while (m_Ahead.size() < wanted && !m_AtEnd) {
        // No more room than what has come so far justifies.
        const std::size_t before = m_Ahead.size();
        const auto asked = static_cast<std::size_t>(
            std::min<std::uint64_t>(wanted - before, std::max(before, kFirstAhead)));
        m_Ahead.resize(before + asked);
        const std::size_t got = ReadSome(m_Ahead.data() + before, asked);
        m_Ahead.resize(before + got);
        m_AtEnd = got < asked;
    }
    return m_Ahead.size() >= wanted;
}

}  // namespace varnel
