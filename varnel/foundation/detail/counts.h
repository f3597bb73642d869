// Counts of spans, for operations that count in ints.
#pragma once

#include <limits>
#include <span>

#include "varnel/foundation/detail/raise.h"

namespace varnel::detail {

/// How many elements there are; more than an int holds raise "Parameter Error".
template <class T>
int CountOf(std::span<T> elements, Origin origin) {
    if (elements.size() > static_cast<std::size_t>(std::numeric_limits<int>::max()))
        Raise(ERR3D_PARAMETER, origin.cls, origin.operation,
              Say("there are ", elements.size(), " elements"));
    return static_cast<int>(elements.size());
}

/// How many elements both have; different counts raise "Parameter Error".
template <class T, class U>
int SameCount(std::span<T> a, std::span<U> b, Origin origin) {
    if (a.size() != b.size())
        Raise(ERR3D_PARAMETER, origin.cls, origin.operation,
              Say("the counts ", a.size(), " and ", b.size(), " differ"));
    return CountOf(a, origin);
}

}  // namespace varnel::detail
