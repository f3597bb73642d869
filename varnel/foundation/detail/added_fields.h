// The extension block: what a view uses beyond the plain chart file, behind the plain file's last
// byte, where readers of the plain format never look.
//
// The block is a magic number, a version, a length, named fields by object, and a checksum. Fields
// that have their default are not in it, and a view whose fields all have their defaults writes no
// block at all. Unknown objects and names are skipped; a damaged block is told and left out as a
// whole. Objects go by their path from the view, such as "chart 0/axes 1/labels 2".
//
// How a class joins. It keeps its added attributes in a private struct whose members have their
// defaults in place, and lists each of them once, with its name in the file:
//
//     class CThing {                                    // thing.h, inside namespace varnel
//      public:
//         /// Hands the attributes that the plain record lacks to the chart file.
//         void VisitAdded(detail::AddedFields& fields);
//      private:
//         struct Added {
//             int followView = 0;
//             std::vector<CString> categories;
//         };
//         Added m_Added;
//     };
//
//     void CThing::VisitAdded(detail::AddedFields& fields) {       // thing.cpp
//         fields.Of(m_Added, [](auto field) {
//             field("followView", &Added::followView);
//             field("categories", &Added::categories);
//         });
//         fields.Object("title", m_pTitle.get());      // what it owns: an object,
//         fields.List("entry", m_Entries);             // or a list of them
//     }
//
// Nothing else is to be done: owners hand on to every object that has a public VisitAdded. The same
// list serves writing, reading and the comparison with the defaults. A field is an int, a double, a
// string, a point, a colour, another record of the chart file, an array of a fixed size of them, or
// a std::vector of them (flags are ints). Names are part of the file format: never give one another
// meaning. What is read can be any value of its type, so clamp where a value is used. After
// loading, fields that the file does not name have their defaults.
#pragma once

#include <algorithm>
#include <map>
#include <string>
#include <type_traits>
#include <vector>

#include "varnel/foundation/detail/record.h"
#include "varnel/foundation/detail/say.h"
#include "varnel/foundation/memory_file.h"
#include "varnel/foundation/object_list.h"

namespace varnel::detail {

template <class T>
inline constexpr bool kIsVector = false;
template <class T>
inline constexpr bool kIsVector<std::vector<T>> = true;

/// What kind of scalars a field consists of, as the block stores it; a field whose kind has changed
/// is skipped.
template <class T>
constexpr std::int32_t FieldKind() {
    constexpr std::int32_t kInts = 1, kDoubles = 2, kText = 3, kBytes = 4, kMany = 16;
    if constexpr (kIsVector<T>)
        return kMany + FieldKind<typename T::value_type>();
    else if constexpr (std::is_same_v<T, CString>)
        return kText;
    else
        return ScalarWidth<T>() == 8 ? kDoubles : ScalarWidth<T>() == 4 ? kInts : kBytes;
}

/// The bytes of a field's value.
template <class T>
std::vector<BYTE> EncodeField(const T& value) {
    MemoryFile file;
    RecordWriter record(file);
    if constexpr (kIsVector<T>) {
        for (const auto& element : value)
            record(element);
    } else {
        record(value);
    }
    return file.GetBytes();
}

/// The value of bytes; false, and nothing is changed, when they are not exactly one.
template <class T>
bool DecodeField(const std::vector<BYTE>& bytes, T& value) {
    MemoryFile file(bytes);
    RecordReader record(file);
    T read{};
    if constexpr (kIsVector<T>) {
        while (file.Remaining() != 0 && !file.RanDry())
            record(read.emplace_back());
    } else {
        record(read);
    }
    if (file.RanDry() || file.Remaining() != 0) return false;
    if constexpr (std::is_array_v<T>)
        std::copy(std::begin(read), std::end(read), std::begin(value));
    else
        value = std::move(read);
    return true;
}

/// The fields of a block, on their way out of the objects or into them.
class VARNEL_API AddedFields {
 public:
    /// For writing: visit the objects, then WriteBlock.
    AddedFields() = default;

    /// What a file's block holds, for visiting the objects with it. `complete` becomes false when
    /// there is a block and it is damaged; it is then told and left out. Reading starts behind the
    /// last plain byte.
    static AddedFields ReadBlock(File& file, bool& complete);
    /// Writes the block; nothing when no field differs from its default.
    void WriteBlock(File& file) const;

    /// The fields of the object at hand, from its VisitAdded: `list` gets a function that takes a
    /// name and a pointer to a member of Added.
    template <class Added, class List>
    void Of(Added& added, List&& list) {
        const Added defaults{};
        list([&](const char* name, auto Added::*member) {
            m_Loading ? Take(name, added.*member, defaults.*member)
                      : Give(name, added.*member, defaults.*member);
        });
    }

    /// An object that the one at hand owns; null, and an object without added fields, is skipped.
    template <class T>
    void Object(const std::string& name, T* object) {
        static_assert(sizeof(T) > 0, "include the header of the class");
        if constexpr (requires { object->VisitAdded(*this); }) {
            if (object == nullptr) return;
            const std::string path = m_Path;
            m_Path += (path.empty() ? "" : "/") + name;
            object->VisitAdded(*this);
            m_Path = path;
        }
    }

    /// The objects of a list, counted from 0.
    template <class T>
    void List(const std::string& kind, const ObjectList<T>& list) {
        int index = 0;
        for (const auto& item : list)
            Object(Say(kind, ' ', index++), item.get());
    }

    /// Tells once which fields of the file no object has asked for.
    void TellUnknown() const;

 private:
    struct Value {
        std::int32_t kind = 0;
        std::vector<BYTE> bytes;
        bool taken = false;
    };
    using Fields = std::map<std::string, Value>;

    template <class T>
    void Give(const char* name, const T& value, const T& standard) {
        std::vector<BYTE> bytes = EncodeField(value);
        if (bytes != EncodeField(standard))
            m_Objects[m_Path][name] = {FieldKind<T>(), std::move(bytes)};
    }
    template <class T>
    void Take(const char* name, T& value, const T& standard) {
        Value* const found = Find(name, FieldKind<T>());
        if (found != nullptr && DecodeField(found->bytes, value))
            found->taken = true;
        else if constexpr (std::is_array_v<T>)
            std::copy(std::begin(standard), std::end(standard), std::begin(value));
        else
            value = standard;
    }
    Value* Find(const std::string& name, std::int32_t kind);
    bool Parse(File& payload);

    bool m_Loading = false;
    std::string m_Path;
    std::map<std::string, Fields> m_Objects;
};

}  // namespace varnel::detail
