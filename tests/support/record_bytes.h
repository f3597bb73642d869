// Records written by hand, byte for byte, and what a class makes of them.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <initializer_list>
#include <string>
#include <vector>

#include "tests/support/expect_error.h"
#include "varnel/foundation/detail/added_fields.h"
#include "varnel/foundation/types.h"
#include "varnel/platform/files.h"

namespace varnel::test {

/// Little-endian bytes, appended field by field.
class RecordBytes {
 public:
    RecordBytes& Ints(std::initializer_list<std::int32_t> values) {
        for (const std::int32_t v : values)
            Append(static_cast<std::uint32_t>(v), 4);
        return *this;
    }
    RecordBytes& Doubles(std::initializer_list<double> values) {
        for (const double v : values) {
            std::uint64_t bits = 0;
            std::memcpy(&bits, &v, sizeof bits);
            Append(bits, 8);
        }
        return *this;
    }
    RecordBytes& String(const std::string& s) {
        Ints({static_cast<std::int32_t>(s.size())});
        m_Bytes.insert(m_Bytes.end(), s.begin(), s.end());
        return *this;
    }
    /// Values that no other field has, by a pattern like "2i 12d s": 1, 2, 3, .. as integers,
    /// doubles or texts.
    RecordBytes& Distinct(const char* pattern) {
        for (const char* at = pattern; *at != '\0'; ++at) {
            char* end = nullptr;
            const long given = std::strtol(at, &end, 10);
            const long count = end == at ? 1 : given;
            at = end;
            while (*at == ' ')
                ++at;
            for (long i = 0; i < count && *at != '\0'; ++i) {
                ++m_Last;
                if (*at == 'i') Ints({m_Last});
                if (*at == 'd') Doubles({static_cast<double>(m_Last)});
                if (*at == 's') String(std::to_string(m_Last));
            }
            if (*at == '\0') break;
        }
        return *this;
    }
    RecordBytes& Record(const RecordBytes& other) {
        m_Bytes.insert(m_Bytes.end(), other.m_Bytes.begin(), other.m_Bytes.end());
        return *this;
    }
    const std::vector<BYTE>& Get() const { return m_Bytes; }

 private:
    void Append(std::uint64_t value, int bytes) {
        for (int i = 0; i < bytes; ++i)
            m_Bytes.push_back(static_cast<BYTE>(value >> (8 * i)));
    }

    std::vector<BYTE> m_Bytes;
    std::int32_t m_Last = 0;
};

/// The numbers first, first + 1, .. of a record made by Distinct.
inline std::vector<double> Numbers(int first, int count) {
    std::vector<double> numbers;
    for (int i = 0; i < count; ++i)
        numbers.push_back(first + i);
    return numbers;
}

/// A file whose medium fails at once.
class FailingFile : public File {
 public:
    void Write(const void*, std::size_t) override { throw FileException(); }
    std::uint64_t Remaining() const override { return 1000000; }
    void Commit() override {}

 protected:
    std::size_t ReadSome(void*, std::size_t) override { throw FileException(); }
};

/// The record that an object saves.
template <class T>
std::vector<BYTE> Saved(T& object) {
    MemoryFile file;
    object.Save(&file);
    return file.GetBytes();
}

/// Loads the record into `object`, expects that all of it was read and that saving gives it back.
template <class T>
void ExpectLoadsAndSaves(T& object, const RecordBytes& record) {
    MemoryFile in(record.Get());
    object.Load(&in);
    EXPECT_EQ(in.Remaining(), 0U);
    EXPECT_FALSE(in.RanDry());
    EXPECT_EQ(Saved(object), record.Get());
}

/// What holds for every record: `record` is read whole and saved again as it was, any beginning of
/// it is read without harm, a failing medium is told, and no file is none of these.
template <class T>
void ExpectRecordRules(const RecordBytes& record, CErr3DClass cls) {
    T object;
    ExpectLoadsAndSaves(object, record);
    const std::vector<BYTE>& bytes = record.Get();
    for (std::size_t size = 0; size < bytes.size(); ++size) {
        MemoryFile cut({bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(size)});
        T other;
        other.Load(&cut);
        EXPECT_TRUE(cut.RanDry()) << size;
        Saved(other);
    }
    FailingFile broken;
    EXPECT_TRUE(Raises(ERR3D_DISK_IO, cls, "Save", [&] { object.Save(&broken); }));
    EXPECT_TRUE(Raises(ERR3D_DISK_IO, cls, "Load", [&] { object.Load(&broken); }));
    object.Save(nullptr);
    object.Load(nullptr);
}

/// Expects that `init` makes of a loaded object with attributes beyond its record one that is like
/// a new one, and counts it.
template <class T>
void ExpectFreshAfter(T& object, void (T::*init)()) {
    T fresh;
    T::nSelfID = 6;
    (object.*init)();
    EXPECT_EQ(T::nSelfID, 7);
    // The second word is often the identifier of the transform, which stays as objects stay bound.
    std::vector<BYTE> now = Saved(object);
    std::vector<BYTE> first = Saved(fresh);
    std::copy_n(first.begin(), 8, now.begin());
    EXPECT_EQ(now, first);
    if constexpr (requires(detail::AddedFields & fields) { object.VisitAdded(fields); }) {
        detail::AddedFields added;
        object.VisitAdded(added);
        MemoryFile block;
        added.WriteBlock(block);
        EXPECT_TRUE(block.GetBytes().empty());
    }
}

}  // namespace varnel::test
