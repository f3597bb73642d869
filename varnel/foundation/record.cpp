#include "varnel/foundation/detail/record.h"

#include <limits>

namespace varnel::detail {

void RecordWriter::Field(const CString& s) {
    constexpr auto longest = static_cast<std::size_t>(std::numeric_limits<std::int32_t>::max());
    const std::size_t length = s.size() < longest ? s.size() : longest;
    Field(static_cast<std::int32_t>(length));
    if (length != 0) m_File.Write(s.data(), length);
}

bool RecordReader::Has(long long count, std::size_t size) {
    const bool has = count >= 0 && m_File.Has(static_cast<std::uint64_t>(count), size);
    if (!has) m_File.MarkDry();
    return has;
}

void RecordReader::Field(CString& s) {
    std::int32_t length = 0;
    if (m_File.Remaining() < sizeof length) {
        m_File.MarkDry();
        return;
    }
    Field(length);
    if (!Has(length, 1)) return;
    CString text(static_cast<std::size_t>(length), '\0');
    if (m_File.Read(text.data(), text.size()) == text.size()) s = std::move(text);
}

}  // namespace varnel::detail
