// Records written by hand, byte for byte, and what a class makes of them.
#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <initializer_list>
#include <string>
#include <vector>

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
};

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

}  // namespace varnel::test
