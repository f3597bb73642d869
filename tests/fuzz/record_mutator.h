// Changes several fields of a record at once, whole, to values that programs trip over. A record is
// written field by field, so a file that notes each write knows where they lie.
#pragma once

#include <algorithm>
#include <cfloat>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <iterator>
#include <random>
#include <vector>

#include "varnel/foundation/memory_file.h"

extern "C" std::size_t LLVMFuzzerMutate(std::uint8_t* bytes, std::size_t size, std::size_t most);

namespace varnel::test {

/// A file that knows which bytes were written as one field.
class FieldLog : public MemoryFile {
 public:
    struct Field {
        std::size_t at;
        std::size_t size;
    };

    void Write(const void* bytes, std::size_t size) override {
        if (size == 0) return;
        m_Fields.push_back({GetBytes().size(), size});
        MemoryFile::Write(bytes, size);
    }
    const std::vector<Field>& Fields() const { return m_Fields; }

 private:
    std::vector<Field> m_Fields;
};

template <class Random>
std::int32_t OddInt(Random& random) {
    constexpr std::int32_t values[] = {0,   1,   2,   -1,   3,     5,  10,        30,
                                       100, 255, 256, 1000, 65536, -7, INT32_MAX, INT32_MIN};
    return values[random() % std::size(values)];
}

template <class Random>
double OddDouble(Random& random) {
    constexpr double values[] = {
        0,    -0.0,  1,    -1,    0.5,   2,      10,           1e-3,    100,      1e6,       -1e6,
        1e15, 1e-15, 1e30, 1e-30, 1e300, -1e300, DBL_TRUE_MIN, DBL_MAX, HUGE_VAL, -HUGE_VAL, NAN};
    return values[random() % std::size(values)];
}

/// Replaces one scalar of a field: records have integers, doubles and runs of either.
template <class Random>
void MutateField(std::vector<BYTE>& bytes, FieldLog::Field field, Random& random) {
    if (field.size % 8 == 0) {
        const double value = OddDouble(random);
        const std::size_t which = random() % (field.size / 8);
        std::memcpy(bytes.data() + field.at + 8 * which, &value, 8);
    } else if (field.size % 4 == 0) {
        const std::int32_t value = OddInt(random);
        const std::size_t which = random() % (field.size / 4);
        std::memcpy(bytes.data() + field.at + 4 * which, &value, 4);
    } else {
        bytes[field.at + random() % field.size] = static_cast<BYTE>(random());
    }
}

/// Writes the logged record with one to eight fields changed, near each other, into `out`. Returns
/// its size; what is longer than `most` is cut. The log has fields.
inline std::size_t MutateFields(const FieldLog& log, std::uint8_t* out, std::size_t most,
                                unsigned int seed) {
    std::minstd_rand random(seed);
    std::vector<BYTE> bytes = log.GetBytes();
    const auto& fields = log.Fields();
    const std::size_t first = random() % fields.size();
    const std::size_t reach = std::min<std::size_t>(fields.size() - first, 40);
    for (auto n = 1 + random() % 8; n > 0; --n)
        MutateField(bytes, fields[first + random() % reach], random);
    const std::size_t size = std::min(most, bytes.size());
    std::memcpy(out, bytes.data(), size);
    return size;
}

}  // namespace varnel::test
