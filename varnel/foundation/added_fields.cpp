#include "varnel/foundation/detail/added_fields.h"

#include <array>

#include "varnel/foundation/detail/diagnose.h"
#include "varnel/foundation/detail/progress.h"

namespace varnel::detail {
namespace {

/// Not text and not the beginning of any record: a first byte above 127 and line ends of two kinds,
/// which a transfer as text would change.
constexpr std::array<BYTE, 8> kMagic = {0xD6, 'V', 'R', 'N', '\r', '\n', 0x1A, '\n'};
constexpr std::int32_t kVersion = 1;

#ifdef FUZZING_BUILD_MODE_UNSAFE_FOR_PRODUCTION
constexpr bool kChecked = false;  // a fuzzer would never get past it
#else
constexpr bool kChecked = true;
#endif

/// CRC-32, the remainder by the polynomial of IEEE 802.3 (W. W. Peterson, D. T. Brown: Cyclic Codes
/// for Error Detection, 1961): every error of up to 32 neighbouring bits changes it.
std::uint32_t Checksum(const std::vector<BYTE>& bytes) {
    std::uint32_t crc = 0xFFFFFFFF;
    for (const BYTE byte : bytes) {
        ProgressStep();
        crc ^= byte;
        for (int bit = 0; bit < 8; ++bit)
            crc = (crc >> 1) ^ ((crc & 1) != 0 ? 0xEDB88320U : 0U);
    }
    return ~crc;
}

std::vector<BYTE> ReadBytes(File& file, std::size_t size) {
    std::vector<BYTE> bytes(size);
    bytes.resize(file.Read(bytes.data(), size));
    return bytes;
}

}  // namespace

void AddedFields::WriteBlock(File& file) const {
    if (m_Objects.empty()) return;
    MemoryFile payload;
    RecordWriter record(payload);
    for (const auto& [path, fields] : m_Objects) {
        record(path, static_cast<std::int32_t>(fields.size()));
        for (const auto& [name, value] : fields) {
            record(name, value.kind, static_cast<std::int32_t>(value.bytes.size()));
            record.Array(value.bytes.data(), value.bytes.size());
        }
    }
    const std::vector<BYTE>& bytes = payload.GetBytes();
    MemoryFile block;
    RecordWriter frame(block);
    frame(kVersion, static_cast<std::int32_t>(bytes.size()));
    block.Write(bytes.data(), bytes.size());
    file.Write(kMagic.data(), kMagic.size());
    file.Write(block.GetBytes().data(), block.GetBytes().size());
    RecordWriter sum(file);
    sum(Checksum(block.GetBytes()));
}

AddedFields AddedFields::ReadBlock(File& file, bool& complete) {
    AddedFields added;
    added.m_Loading = true;
    complete = true;
    if (file.RanDry() || file.Remaining() == 0) return added;
    complete = false;
    const auto leftOut = [](const char* why) {
        Diagnose("Load", "the settings behind the charts are left out: ", why);
        AddedFields none;
        none.m_Loading = true;
        return none;
    };
    if (!std::ranges::equal(ReadBytes(file, kMagic.size()), kMagic))
        return leftOut("no block of them begins there");
    constexpr std::size_t kHead = 8;  // version and length
    std::vector<BYTE> block = ReadBytes(file, kHead);
    std::int32_t head[2] = {};
    if (!DecodeField(block, head)) return leftOut("they are cut off");
    if (head[0] != kVersion) return leftOut("they are of another version");
    const auto length = static_cast<std::uint32_t>(head[1]);
    if (file.Remaining() < length + std::uint64_t{4}) return leftOut("they are cut off");
    const std::vector<BYTE> payload = ReadBytes(file, length);
    block.insert(block.end(), payload.begin(), payload.end());
    std::uint32_t checksum = 0;
    RecordReader sum(file);
    sum(checksum);
    MemoryFile fields(payload);
    if ((kChecked && checksum != Checksum(block)) || !added.Parse(fields))
        return leftOut("they are damaged");
    complete = true;
    return added;
}

bool AddedFields::Parse(File& payload) {
    RecordReader record(payload);
    while (payload.Remaining() != 0 && !payload.RanDry()) {
        std::string path;
        std::int32_t count = 0;
        record(path, count);
        Fields& fields = m_Objects[path];
        for (std::int32_t i = 0; i < count && !payload.RanDry(); ++i) {
            std::string name;
            Value value;
            std::int32_t size = 0;
            record(name, value.kind, size);
            if (!record.Has(size, 1)) return false;
            value.bytes = ReadBytes(payload, static_cast<std::size_t>(size));
            fields[name] = std::move(value);
        }
    }
    return !payload.RanDry();
}

AddedFields::Value* AddedFields::Find(const std::string& name, std::int32_t kind) {
    const auto object = m_Objects.find(m_Path);
    if (object == m_Objects.end()) return nullptr;
    const auto field = object->second.find(name);
    if (field == object->second.end() || field->second.kind != kind) return nullptr;
    return &field->second;
}

void AddedFields::TellUnknown() const {
    for (const auto& [path, fields] : m_Objects)
        for (const auto& [name, value] : fields)
            if (!value.taken)
                Diagnose("Load", "the file's setting ", name, " of ",
                         path.empty() ? "the view" : path, " is not known here");
}

}  // namespace varnel::detail
