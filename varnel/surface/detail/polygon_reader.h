// The polygons of a surface, one after the other, without the surface having to store those that
// its grid says.
#pragma once

#include "varnel/surface/polysurface.h"

namespace varnel::detail {

class PolygonReader {
 public:
    /// The surface must not change meanwhile.
    explicit PolygonReader(const CPolysurface& surface)
        : m_Surface(surface),
          m_Grid(surface.AreCellsImplied() ? surface.m_Saved.m_Cells : Cells()) {}

    /// The n point numbers of polygon i, one of GetPSNumPolygons(); valid until the next call.
    const int* Read(int i, int& n) {
        if (m_Grid.corners == 0) return m_Surface.FindPSPolygon(i, n);
        const int cell = m_Grid.corners == 3 ? i / 2 : i;
        // A division for each polygon would be a tenth of a large surface's frame.
        const int columns = m_Grid.columns - 1;
        if (cell < m_First || cell >= m_First + columns) {
            m_Row = cell / columns;
            m_First = m_Row * columns;
        }
        n = m_Grid.Corners(i, m_Row, m_Numbers);
        return m_Numbers;
    }

 private:
    using Cells = CPolysurface::GridCells;

    const CPolysurface& m_Surface;
    Cells m_Grid;
    int m_Row = 0;
    int m_First = 0;
    int m_Numbers[4] = {};
};

}  // namespace varnel::detail
