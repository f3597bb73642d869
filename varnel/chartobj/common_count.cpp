#include "varnel/chartobj/detail/common_count.h"

namespace varnel::detail {
namespace {

void CheckColors(const char* operation, std::span<const RGBDType> colors, std::size_t wanted) {
    if (!colors.empty() && colors.size() < wanted)
        Raise(ERR3D_PARAMETER, ERR3DCLASS_CHARTOBJ3D, operation,
              Say("there are ", colors.size(), " colours for ", wanted));
}

}  // namespace

PointsAndGroups GroupCounts(const char* operation, std::span<const double> ind,
                            std::span<const double> groupData, std::span<const RGBDType> colors) {
    const int n = CommonCount(operation, ind);
    const std::size_t numGroups = n == 0 ? 0 : groupData.size() / ind.size();
    if (numGroups * ind.size() != groupData.size())
        Raise(ERR3D_PARAMETER, ERR3DCLASS_CHARTOBJ3D, operation,
              Say(groupData.size(), " values are no groups of ", n));
    CheckColors(operation, colors, numGroups);
    return {n, static_cast<int>(numGroups)};
}

int GroupCount(const char* operation, std::span<const double> ind,
               std::span<const double> groupData, int numGroups, std::span<const RGBDType> colors,
               int numColors) {
    const int n = CommonCount(operation, ind);
    if (groupData.size() != ind.size() * static_cast<std::size_t>(numGroups))
        Raise(ERR3D_PARAMETER, ERR3DCLASS_CHARTOBJ3D, operation,
              Say(groupData.size(), " values are not ", numGroups, " groups of ", n));
    CheckColors(operation, colors, static_cast<std::size_t>(numColors));
    return n;
}

int ContourCount(const char* operation, std::span<const double> values,
                 std::span<const RGBDType> colors) {
    CheckColors(operation, colors, values.size() + 1);
    return CommonCount(operation, values);
}

}  // namespace varnel::detail
