// The counts that arrays given as spans have in common, for operations that take one count for all
// of them. Where they contradict each other, "Parameter Error" is raised and nothing is stored.
#pragma once

#include <climits>
#include <span>

#include "varnel/foundation/colors.h"
#include "varnel/foundation/detail/raise.h"

namespace varnel::detail {

/// The length that all arrays have.
template <class First, class... Others>
int CommonCount(const char* operation, std::span<First> first, std::span<Others>... others) {
    [[maybe_unused]] const auto check = [&](std::size_t size) {
        if (size != first.size())
            Raise(ERR3D_PARAMETER, ERR3DCLASS_CHARTOBJ3D, operation,
                  Say("one array has ", first.size(), " elements, another one ", size));
    };
    (check(others.size()), ...);
    if (first.size() > INT_MAX)
        Raise(ERR3D_ARRAY_NEW, ERR3DCLASS_CHARTOBJ3D, operation,
              Say("an array has ", first.size(), " elements"));
    return static_cast<int>(first.size());
}

/// The elements, null when there are none.
template <class T>
T* DataOf(std::span<T> elements) {
    return elements.empty() ? nullptr : elements.data();
}

/// Numbers of points and of groups.
struct PointsAndGroups {
    int numPoints;
    int numGroups;
};

/// Groups of as many values as there are independent ones, each with a colour unless none has one.
PointsAndGroups GroupCounts(const char* operation, std::span<const double> ind,
                            std::span<const double> groupData, std::span<const RGBDType> colors);

/// The number of points of a chart with `numGroups` groups and `numColors` colours, or none.
int GroupCount(const char* operation, std::span<const double> ind,
               std::span<const double> groupData, int numGroups, std::span<const RGBDType> colors,
               int numColors);

/// The number of contour values; there is a colour for each, and one more.
int ContourCount(const char* operation, std::span<const double> values,
                 std::span<const RGBDType> colors);

}  // namespace varnel::detail
