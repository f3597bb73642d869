// Areas of a page that are one shape at many places, such as markers: told once, then referred to.
#pragma once

#include <array>
#include <cstddef>
#include <map>
#include <utility>
#include <vector>

#include "varnel/platform/detail/page_canvas.h"

namespace varnel::detail {

class RepeatedShapes {
 public:
    struct Use {
        int number = 0;         ///< which use this is, 1 for the first; 0: it has no shape
        std::size_t shape = 0;  ///< counted from 0
        GridPoint offset{};     ///< from the place of the first
    };

    /// The shape that an area of a colour is, within a fiftieth of a pixel. What is not likely to
    /// come again has none.
    Use Find(const Area& area, const RGBDType& color);

    /// Where the shape was used first.
    const Ring& First(std::size_t shape) const { return m_Shapes[shape].ring; }

 private:
    struct Shape {
        Ring ring;
        int uses;
    };
    std::vector<Shape> m_Shapes;
    /// By colour and number of corners.
    std::map<std::pair<std::array<double, 4>, std::size_t>, std::vector<std::size_t>> m_Groups;
};

}  // namespace varnel::detail
