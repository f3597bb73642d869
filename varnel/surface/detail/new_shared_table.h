// A surface's tables, made in steps: the first touch of millions of elements takes tens of
// milliseconds, and the host is told on the way.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <memory>
#include <new>
#include <type_traits>

#include "varnel/foundation/detail/progress.h"
#include "varnel/foundation/detail/raise.h"
#include "varnel/surface/copy_on_write.h"

namespace varnel::detail {

/// `count` elements with their defaults. Numbers of elements are 32-bit integers: a count below 0
/// or above theirs and a failing allocation raise "Array New Error". Throws Stopped.
template <class T>
CopyOnWrite<T> NewSharedTable(long long count, Origin origin) {
    static_assert(std::is_trivially_destructible_v<T>);
    constexpr std::size_t kStep = 1U << 16;
    if (count < 0 || count > std::numeric_limits<std::int32_t>::max())
        Raise(ERR3D_ARRAY_NEW, origin.cls, origin.operation, Say("the count is ", count));
    return AllocateOrRaise(ERR3D_ARRAY_NEW, origin, [&] {
        const auto size = static_cast<std::size_t>(count);
        const std::shared_ptr<T[]> elements(static_cast<T*>(::operator new(size * sizeof(T))),
                                            [](T* p) { ::operator delete(p); });
        for (std::size_t i = 0; i < size; i += kStep) {
            std::uninitialized_value_construct_n(elements.get() + i, std::min(kStep, size - i));
            Progress(0, 1);
        }
        return CopyOnWrite<T>(elements, size);
    });
}

}  // namespace varnel::detail
