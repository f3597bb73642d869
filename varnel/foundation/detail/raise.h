// The one place where failures are raised, and the allocation patterns that end in one.
#pragma once

#include <cstddef>
#include <limits>
#include <memory>
#include <new>
#include <utility>

#include "varnel/foundation/detail/say.h"
#include "varnel/foundation/error.h"
#include "varnel/foundation/file.h"

namespace varnel::detail {

/// Throws the Error of a failed operation. `detail` says what was wrong with which value ("the
/// count is -1"), without a final stop; empty: the description of the type.
[[noreturn]] VARNEL_API void Raise(CErr3DTypes type, CErr3DClass cls, const char* operation,
                                   const CString& detail = {});

/// For an operation that calls others of the interface: while it lives, the sentences of errors
/// (Error::what) start with the operation that the host called, the outermost one, whose arguments
/// were wrong. m_FunctionName stays the operation that found out.
class VARNEL_API CalledOperation {
 public:
    /// `name` outlives this; by default that of the function in which this is made.
    explicit CalledOperation(const char* name = __builtin_FUNCTION());
    ~CalledOperation();
    CalledOperation(const CalledOperation&) = delete;
    CalledOperation& operator=(const CalledOperation&) = delete;

 private:
    const char* m_Outer;
};

/// Where an allocation happens, for the error that its failure raises.
struct Origin {
    CErr3DClass cls;
    const char* operation;
};

/// Runs `allocate` and turns std::bad_alloc (and a size that no array can have) into `type`.
template <class Allocate>
auto AllocateOrRaise(CErr3DTypes type, Origin origin, Allocate&& allocate) {
    try {
        return std::forward<Allocate>(allocate)();
    } catch (const std::bad_alloc&) {
        Raise(type, origin.cls, origin.operation);
    }
}

/// An array of `count` value-initialised elements. A negative or overflowing count and a failing
/// allocation raise "Array New Error". A count of 0 gives an empty array.
template <class T>
std::unique_ptr<T[]> NewArray(long long count, Origin origin) {
    constexpr auto most =
        std::numeric_limits<std::ptrdiff_t>::max() / static_cast<long long>(sizeof(T));
    if (count < 0 || count > most)
        Raise(ERR3D_ARRAY_NEW, origin.cls, origin.operation, Say("the count is ", count));
    return AllocateOrRaise(ERR3D_ARRAY_NEW, origin, [count] {
        return std::make_unique<T[]>(static_cast<std::size_t>(count));
    });
}

/// A new T; a failing allocation, its own or one inside its constructor, raises "Object New Error".
template <class T, class... Args>
std::unique_ptr<T> NewObject(Origin origin, Args&&... args) {
    return AllocateOrRaise(ERR3D_OBJECT_NEW, origin,
                           [&] { return std::make_unique<T>(std::forward<Args>(args)...); });
}

/// Raises `type` unless `object` is a live object of its class: not null and with its signature.
template <class T>
void Require(const T* object, CErr3DTypes type, Origin origin) {
    if (object != nullptr && object->GetSignature() == T::kSignature) return;
    Raise(type, origin.cls, origin.operation,
          Say(CErr3D::GetErrorDescription(type),
              object == nullptr ? ": it is null" : ": it is no live object of its class"));
}

/// Runs `body(file)` of a Save or Load: nothing for a null file; a failing medium becomes "Disk I/O
/// Error" of the class. `operation` is "Save" or "Load".
template <class Body>
void WithFile(HANDLE file, Origin origin, Body&& body) {
    if (file == nullptr) return;
    try {
        std::forward<Body>(body)(*file);
    } catch (const FileException& failure) {
        Raise(ERR3D_DISK_IO, origin.cls, origin.operation, failure.what());
    }
}

}  // namespace varnel::detail
