// The colours behind the named colour maps.
#pragma once

#include <cstdint>
#include <span>

namespace varnel::detail {

/// A map's colours at even distances, from the lowest value to the highest, as 0xRRGGBB.
struct NamedMap {
    const char* name;
    std::span<const std::uint32_t> colors;
};

/// All maps; none of them is reversed.
std::span<const NamedMap> NamedMaps();

}  // namespace varnel::detail
