// The solids of one band, joined where they touch: neither the faces between neighbours nor the
// edges around those are drawn.
#pragma once

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>

#include "varnel/chartobj/detail/bands.h"

namespace varnel::detail {

/// Hands the solids of a band on one behind the other, each with the six face flags of
/// COpenGL::DrawSolidObject3D, once it is known what follows it.
class SeamedBand {
 public:
    /// Ends that lie apart by no more than `nearness` along z, in working units, touch.
    SeamedBand(bool indAlongY, double nearness) : m_IndAlongY(indAlongY), m_Nearness(nearness) {}

    /// Adds a solid with PlaceBand's corners; draw(corners, flags) is called for the one before it.
    template <class Draw>
    void Add(const SolidCorners& corners, Draw&& draw) {
        std::array<int, 6> flags = {1, 1, 1, 1, 1, 1};
        if (m_Pending) {
            for (const int mine : {0, 1})
                for (const int other : {0, 1})
                    if (Touch(EndOf(m_Corners, mine), EndOf(corners, other))) {
                        m_Flags[FlagOf(mine)] = -1;
                        flags[FlagOf(other)] = -1;
                    }
            draw(m_Corners, m_Flags);
        }
        m_Corners = corners;
        m_Flags = flags;
        m_Pending = true;
    }

    /// Draws the last solid.
    template <class Draw>
    void End(Draw&& draw) {
        if (m_Pending) draw(m_Corners, m_Flags);
        m_Pending = false;
    }

 private:
    struct BandEnd {
        double u, low, high;
    };

    /// The flag of the face at the start (0) or the end (1) along the independent axis.
    std::size_t FlagOf(int end) const {
        if (m_IndAlongY) return end == 0 ? 0 : 5;
        return end == 0 ? 1 : 2;
    }
    BandEnd EndOf(const SolidCorners& c, int end) const {
        const std::size_t corner = end == 0 ? 0 : 2;
        const double z0 = c[corner].z;
        const double z1 = c[corner + 4].z;
        return {m_IndAlongY ? c[corner].y : c[corner].x, std::min(z0, z1), std::max(z0, z1)};
    }
    bool Touch(const BandEnd& a, const BandEnd& b) const {
        return a.u == b.u && std::abs(a.low - b.low) <= m_Nearness &&
               std::abs(a.high - b.high) <= m_Nearness;
    }

    bool m_IndAlongY;
    double m_Nearness;
    bool m_Pending = false;
    SolidCorners m_Corners;
    std::array<int, 6> m_Flags{};
};

}  // namespace varnel::detail
