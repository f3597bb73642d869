// Record archives: a class lists its fields once, in file order, and both directions walk the list.
//
//     template <class Archive> void CThing::Record(Archive& record) {
//         record(CounterField{nSelfID}, m_Width, m_Color, m_Name);
//     }
//     void CThing::Save(HANDLE f) { detail::SaveRecord(*this, f, ERR3DCLASS_THING); }
//
// The encoding is little-endian on every machine, without tags, lengths or padding. A reader that
// runs out of bytes leaves the fields that they would have filled as they are, and the file
// remembers it (File::RanDry).
#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <type_traits>

#include "varnel/foundation/colors.h"
#include "varnel/foundation/detail/counter.h"
#include "varnel/foundation/detail/raise.h"
#include "varnel/foundation/file.h"
#include "varnel/foundation/points.h"
#include "varnel/foundation/types.h"
#include "varnel/foundation/viewports.h"

namespace varnel::detail {

/// Records that are a run of doubles or of 32-bit integers in member order.
template <class T>
inline constexpr bool kIsDoubles =
    std::is_same_v<T, point3Dtype> || std::is_same_v<T, RGBDType> || std::is_same_v<T, GLViewRType>;
template <class T>
inline constexpr bool kIsInts = std::is_same_v<T, GLViewportType>;

/// The width of the scalars that a field consists of, 0 when it is no field.
template <class T>
constexpr std::size_t ScalarWidth() {
    if constexpr (std::is_array_v<T>)
        return ScalarWidth<std::remove_extent_t<T>>();
    else if constexpr (kIsDoubles<T> || std::is_same_v<T, double>)
        return 8;
    else if constexpr (kIsInts<T> || std::is_same_v<T, std::int32_t> ||
                       std::is_same_v<T, std::uint32_t> || std::is_enum_v<T>)
        return 4;
    else
        return std::is_same_v<T, BYTE> ? 1 : 0;
}

/// Turns `size` bytes made of scalars of `width` bytes from the machine's order into the file's, or
/// back. Nothing on a little-endian machine.
inline void SwapScalars(void* bytes, std::size_t size, std::size_t width) {
    if constexpr (std::endian::native == std::endian::little) return;
    auto* at = static_cast<BYTE*>(bytes);
    for (std::size_t i = 0; i + width <= size; i += width)
        for (std::size_t k = 0; k < width / 2; ++k)
            std::swap(at[i + k], at[i + width - 1 - k]);
}

/// Writes fields to a file.
class VARNEL_API RecordWriter {
 public:
    static constexpr bool kLoading = false;

    explicit RecordWriter(File& file) : m_File(file) {}

    template <class... Fields>
    void operator()(const Fields&... fields) {
        (Field(fields), ...);
    }

    /// `count` elements of an array.
    template <class T>
    void Array(const T* elements, std::size_t count) {
        for (std::size_t i = 0; i < count; ++i)
            Field(elements[i]);
    }

    File& GetFile() { return m_File; }

 private:
    template <class T>
    void Field(const T& field) {
        static_assert(ScalarWidth<T>() != 0, "not a type of the chart file");
        BYTE bytes[sizeof(T)];
        std::memcpy(bytes, &field, sizeof(T));
        SwapScalars(bytes, sizeof(T), ScalarWidth<T>());
        m_File.Write(bytes, sizeof(T));
    }
    void Field(CounterField field) { Field(std::int32_t{Counted(field.counter)}); }
    void Field(const CString& s);

    File& m_File;
};

/// Reads fields from a file.
class VARNEL_API RecordReader {
 public:
    static constexpr bool kLoading = true;

    explicit RecordReader(File& file) : m_File(file) {}

    template <class... Fields>
    void operator()(Fields&&... fields) {
        (Field(fields), ...);
    }

    /// `count` elements into an array that has room for them.
    template <class T>
    void Array(T* elements, std::size_t count) {
        for (std::size_t i = 0; i < count; ++i)
            Field(elements[i]);
    }

    /// Whether `count` elements of `size` bytes each can still be in the file; when not, the file
    /// is marked as having run dry. Negative counts never can.
    bool Has(long long count, std::size_t size);

    File& GetFile() { return m_File; }

 private:
    template <class T>
    void Field(T& field) {
        static_assert(ScalarWidth<T>() != 0, "not a type of the chart file");
        BYTE bytes[sizeof(T)];
        if (m_File.Read(bytes, sizeof(T)) < sizeof(T)) return;
        SwapScalars(bytes, sizeof(T), ScalarWidth<T>());
        std::memcpy(static_cast<void*>(&field), bytes, sizeof(T));
    }
    void Field(CounterField field) {
        std::int32_t value = Counted(field.counter);
        Field(value);
        SetCounter(field.counter, value);
    }
    void Field(CString& s);

    File& m_File;
};

/// The whole Save of a class whose Record(archive) lists its fields.
template <class T>
void SaveRecord(T& object, HANDLE file, CErr3DClass cls) {
    WithFile(file, {cls, "Save"}, [&](File& f) {
        RecordWriter record(f);
        object.Record(record);
    });
}

/// The whole Load of such a class.
template <class T>
void LoadRecord(T& object, HANDLE file, CErr3DClass cls) {
    WithFile(file, {cls, "Load"}, [&](File& f) {
        RecordReader record(f);
        object.Record(record);
    });
}

}  // namespace varnel::detail
