// What surfaces hide on the screen, roughly: the nearest depth in cells of a few pixels.
#pragma once

#include <span>
#include <vector>

#include "varnel/chartobj/detail/screen.h"
#include "varnel/foundation/points.h"
#include "varnel/render/detail/mesh.h"

namespace varnel::detail {

class NearestDepths {
 public:
    explicit NearestDepths(const Screen& screen);

    /// Adds the polygons of a mesh in working coordinates.
    void Add(const MeshSource& mesh);

    /// Whether something lies nearer than a depth anywhere in a turned box; `along` and `across`
    /// are half its sides.
    bool IsNearerIn(const ScreenPoint& center, const ScreenPoint& along, const ScreenPoint& across,
                    double depth) const;

 private:
    /// A place in cells, and its depth.
    struct Place {
        double x, y, z;
    };

    void AddTriangle(const Place& a, const Place& b, const Place& c);

    Screen m_Screen;
    double m_Cell;  ///< pixels
    int m_Columns;
    int m_Rows;
    std::vector<float> m_Depths;
    std::vector<Place> m_Places;
};

}  // namespace varnel::detail
