// The surfaces that hide labels of contour charts with the same transform. Charts make it for each
// drawing; what the surfaces cover is found once, when a label first asks.
#pragma once

#include <optional>
#include <utility>
#include <vector>

#include "varnel/chartobj/detail/nearest_depths.h"

namespace varnel {

class CChartObj3D;

namespace detail {

class HidingSurfaces {
 public:
    /// They must exist as long as this is asked.
    explicit HidingSurfaces(std::vector<const CChartObj3D*> surfaces)
        : m_Surfaces(std::move(surfaces)) {}

    const NearestDepths& On(const Screen& screen);

 private:
    std::vector<const CChartObj3D*> m_Surfaces;
    std::optional<NearestDepths> m_Depths;
};

}  // namespace detail
}  // namespace varnel
