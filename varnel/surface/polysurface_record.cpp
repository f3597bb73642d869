// The record of a surface in chart files, and surfaces as files of their own.
#include <algorithm>

#include "varnel/foundation/detail/added_fields.h"
#include "varnel/foundation/detail/raise.h"
#include "varnel/foundation/detail/record.h"
#include "varnel/platform/files.h"
#include "varnel/surface/detail/new_shared_table.h"
#include "varnel/surface/polysurface.h"

namespace varnel {

namespace {

constexpr std::size_t kPolygonRecordSize = 104;

/// Makes room for a table that is read next; false when the file does not have it. A table that is
/// written is there.
template <class Archive, class T>
bool Prepare(Archive& record, CopyOnWrite<T>& table, long long count, std::size_t size) {
    if constexpr (Archive::kLoading) {
        if (!record.Has(count, size)) return false;
        table = detail::NewSharedTable<T>(count, {ERR3DCLASS_POLYSURFACE, "Load"});
    }
    return true;
}

template <class Archive, class T>
bool RecordTable(Archive& record, CopyOnWrite<T>& table, long long count) {
    if (!Prepare(record, table, count, sizeof(T))) return false;
    if constexpr (Archive::kLoading)
        record.Array(table.Write(), static_cast<std::size_t>(count));
    else
        record.Array(table.Get(), static_cast<std::size_t>(count));
    return true;
}

}  // namespace

template <class Archive>
void CPolysurface::RecordPolygon(Archive& record, int i) {
    Polygon polygon = m_pPolygons[i];
    PolygonColors colors;
    // What was never set is zero in the file.
    if (!Archive::kLoading && polygon.count > 0) colors = GetColors(i);
    RGBDType unused;
    record(colors.first, unused, colors.second, polygon.count, polygon.start);
    if constexpr (Archive::kLoading) {
        m_pPolygons.Write()[i] = polygon;
        if (polygon.count > 0) SetColors(i, colors, "Load");
    }
}

/// False when a table is not wholly in the file.
template <class Archive>
bool CPolysurface::Record(Archive& record) {
    record(m_Saved.m_RGRows, m_Saved.m_RGColumns, m_Saved.m_RGMinX, m_Saved.m_RGMaxX,
           m_Saved.m_RGRangeX, m_Saved.m_RGMinY, m_Saved.m_RGMaxY, m_Saved.m_RGRangeY,
           m_Saved.m_RGMinZ, m_Saved.m_RGMaxZ, m_Saved.m_RGRangeZ, m_Saved.m_RGStepX,
           m_Saved.m_RGStepY, m_Saved.m_AdjacentPolyListValid, m_Saved.m_EvenGridFlag,
           m_Saved.m_GridType, m_Saved.m_NumPoints);
    if (!RecordTable(record, m_pPoints, m_Saved.m_NumPoints)) return false;
    if constexpr (Archive::kLoading) {
        if (!record.Has(5, sizeof m_Saved.m_MaxPolygons)) return false;
    }
    record(m_Saved.m_MaxPolygons, m_Saved.m_NumPolygons, m_Saved.m_IndexCapacity,
           m_Saved.m_PointsPerPolygon, m_Saved.m_IndexCount);
    if (!Prepare(record, m_pPolygons, m_Saved.m_MaxPolygons, kPolygonRecordSize)) return false;
    for (int i = 0; i < m_Saved.m_MaxPolygons; ++i)
        RecordPolygon(record, i);
    if (!RecordTable(record, m_pIndices, m_Saved.m_IndexCapacity)) return false;
    return m_Saved.m_AdjacentPolyListValid == 0 ||
           RecordTable(record, m_pAdjacentPolyList, 3LL * m_Saved.m_MaxPolygons);
}

/// Whether what was read is a surface. Records and neighbours beyond the polygons in use, which say
/// nothing, are cleared.
bool CPolysurface::CheckTables() {
    constexpr int kFewestPoints = 5;
    if (m_Saved.m_NumPoints < kFewestPoints || m_Saved.m_NumPolygons < 0 ||
        m_Saved.m_NumPolygons > m_Saved.m_MaxPolygons || m_Saved.m_PointsPerPolygon < 0 ||
        m_Saved.m_IndexCount < 0 || m_Saved.m_IndexCount > m_Saved.m_IndexCapacity)
        return false;
    const bool grid = m_Saved.m_EvenGridFlag != 0;
    if (grid && (m_Saved.m_RGRows < 1 || m_Saved.m_RGColumns < 1 ||
                 static_cast<long long>(m_Saved.m_RGRows) * m_Saved.m_RGColumns > GetPSNumPoints()))
        return false;

    m_Saved.m_LargestPolygon = 0;
    Polygon* const polygons = m_pPolygons.Write();
    for (int i = 0; i < m_Saved.m_MaxPolygons; ++i) {
        Polygon& polygon = polygons[i];
        const bool fits = polygon.count >= 0 && polygon.start >= 0 &&
                          polygon.count <= m_Saved.m_IndexCount - polygon.start;
        if (!fits && i < m_Saved.m_NumPolygons) return false;
        if (!fits) polygon = {};
        m_Saved.m_LargestPolygon = std::max(m_Saved.m_LargestPolygon, polygon.count);
    }
    const auto isPoint = [this](int index) { return index >= 0 && index < m_Saved.m_NumPoints; };
    if (!std::all_of(m_pIndices.Get(), m_pIndices.Get() + m_Saved.m_IndexCount, isPoint))
        return false;

    if (m_Saved.m_AdjacentPolyListValid == 0) return true;
    std::int32_t* const neighbours = m_pAdjacentPolyList.Write();
    for (long long k = 0; k < 3LL * m_Saved.m_MaxPolygons; ++k) {
        std::int32_t& neighbour = neighbours[k];
        const bool fits = neighbour >= -1 && neighbour < m_Saved.m_MaxPolygons;
        if (!fits && k < 3LL * m_Saved.m_NumPolygons) return false;
        if (!fits) neighbour = -1;
    }
    return true;
}

/// Lets go of tables that say what the grid implies, so that a surface that is loaded takes no more
/// memory than the one that was saved.
void CPolysurface::ForgetImpliedTables() {
    if (m_Saved.m_EvenGridFlag == 0) return;
    const auto isSame = [](const auto& a, const auto& b, long long count) {
        return std::equal(a.Get(), a.Get() + count, b.Get());
    };
    CPolysurface implied;
    implied.m_Saved = m_Saved;
    GridCells& cells = implied.m_Saved.m_Cells;
    cells = {m_Saved.m_RGRows, m_Saved.m_RGColumns, m_Saved.m_LargestPolygon};
    implied.m_Saved.m_NeighbourCells = {cells.rows, cells.columns, 3};
    const bool grid = (cells.corners == 3 || cells.corners == 4) &&
                      cells.Count() == m_Saved.m_NumPolygons &&
                      cells.Count() * cells.corners == m_Saved.m_IndexCount;
    implied.m_CellsImplied = grid;
    implied.m_NeighboursImplied = m_Saved.m_AdjacentPolyListValid != 0;
    implied.StoreCells();
    implied.StoreNeighbours();
    if (grid && isSame(m_pPolygons, implied.m_pPolygons, m_Saved.m_MaxPolygons) &&
        isSame(m_pIndices, implied.m_pIndices, m_Saved.m_IndexCapacity)) {
        m_Saved.m_Cells = cells;
        m_pPolygons = {};
        m_pIndices = {};
        m_CellsImplied = true;
    }
    if (implied.m_pAdjacentPolyList &&
        isSame(m_pAdjacentPolyList, implied.m_pAdjacentPolyList, 3LL * m_Saved.m_MaxPolygons)) {
        m_Saved.m_NeighbourCells = implied.m_Saved.m_NeighbourCells;
        m_pAdjacentPolyList = {};
        m_NeighboursImplied = true;
    }
}

void CPolysurface::VisitAdded(detail::AddedFields& fields) {
    fields.Of(m_Added, [](auto field) { field("wireFrame", &Added::m_WireFrame); });
}

void CPolysurface::Save(HANDLE file) {
    detail::WithFile(file, {ERR3DCLASS_POLYSURFACE, "Save"}, [this](File& f) {
        detail::RecordWriter record(f);
        if (!AreCellsImplied() && !AreNeighboursImplied()) {
            Record(record);
            return;
        }
        // The tables are made for the file alone.
        CPolysurface stored(*this);
        stored.StoreCells();
        stored.StoreNeighbours();
        stored.Record(record);
    });
}

void CPolysurface::Load(HANDLE file) {
    detail::WithFile(file, {ERR3DCLASS_POLYSURFACE, "Load"}, [this](File& f) {
        ClosePolysurface();
        try {
            detail::RecordReader record(f);
            if (!Record(record) || !CheckTables())
                ClosePolysurface();
            else
                ForgetImpliedTables();
        } catch (...) {
            ClosePolysurface();
            throw;
        }
    });
}

void CPolysurface::Save(const CString& fileName) {
    constexpr detail::Origin kOrigin{ERR3DCLASS_POLYSURFACE, "Save"};
    CString why;
    const auto file = OpenOutputFile(fileName, &why);
    if (file == nullptr) detail::Raise(ERR3D_FILE_OPEN_OUTPUT, kOrigin.cls, kOrigin.operation, why);
    Save(file.get());
    detail::WithFile(file.get(), kOrigin, [](File& f) { f.Commit(); });
}

void CPolysurface::Load(const CString& fileName) {
    CString why;
    const auto file = OpenInputFile(fileName, &why);
    if (file == nullptr) detail::Raise(ERR3D_FILE_OPEN_INPUT, ERR3DCLASS_POLYSURFACE, "Load", why);
    Load(file.get());
}

}  // namespace varnel
