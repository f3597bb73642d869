// Segments as thin areas of the screen where a driver leaves gaps in them.
//
// llvmpipe draws a picture in tiles of 64 x 64 pixels. With several samples a pixel it leaves out
// what the width of a line makes it cover of tiles that its middle does not reach.
#pragma once

#include <cstdint>
#include <vector>

#include "varnel/foundation/viewports.h"
#include "varnel/render/detail/primitive_batch.h"

namespace varnel::detail {

/// The arrays keep their memory between runs.
class LineBands {
 public:
    /// Makes a quadrilateral of each segment of a run that comes near a border of tiles; `width`
    /// (at least 1) and the viewport are in pixels of the framebuffer.
    void Make(const LineRun& run, double width, const GLViewportType& viewport);

    const std::vector<LineVertex>& Vertices() const { return m_Vertices; }
    /// Three a triangle.
    const std::vector<std::uint32_t>& Indices() const { return m_Indices; }
    /// The other segments, two vertices of the run each.
    const std::vector<std::uint32_t>& Lines() const { return m_Lines; }

 private:
    void AddBand(const LineVertex& a, const LineVertex& b, float across, float up);

    std::vector<LineVertex> m_Vertices;
    std::vector<std::uint32_t> m_Indices;
    std::vector<std::uint32_t> m_Lines;
};

}  // namespace varnel::detail
