// The record of a surface in chart files, and surfaces as files of their own.
#include <algorithm>

#include "varnel/foundation/detail/raise.h"
#include "varnel/foundation/detail/record.h"
#include "varnel/platform/files.h"
#include "varnel/surface/polysurface.h"

namespace varnel {

namespace {

constexpr std::size_t kPolygonRecordSize = 104;

/// Makes room for a table that is read next; false when the file does not have it. A table that is
/// written is there.
template <class Archive, class T>
bool Prepare(Archive& record, std::unique_ptr<T[]>& table, long long count, std::size_t size) {
    if constexpr (Archive::kLoading) {
        if (!record.Has(count, size)) return false;
        table = detail::NewArray<T>(count, {ERR3DCLASS_POLYSURFACE, "Load"});
    }
    return true;
}

template <class Archive, class T>
bool RecordTable(Archive& record, std::unique_ptr<T[]>& table, long long count) {
    if (!Prepare(record, table, count, sizeof(T))) return false;
    record.Array(table.get(), static_cast<std::size_t>(count));
    return true;
}

}  // namespace

template <class Archive>
void CPolysurface::RecordPolygon(Archive& record, int i) {
    Polygon& polygon = m_pPolygons[i];
    PolygonColors colors;
    // What was never set is zero in the file.
    if (!Archive::kLoading && polygon.count > 0) colors = GetColors(i);
    RGBDType unused;
    record(colors.first, unused, colors.second, polygon.count, polygon.start);
    if (Archive::kLoading && polygon.count > 0) SetColors(i, colors, "Load");
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
    for (int i = 0; i < m_Saved.m_MaxPolygons; ++i) {
        Polygon& polygon = m_pPolygons[i];
        const bool fits = polygon.count >= 0 && polygon.start >= 0 &&
                          polygon.count <= m_Saved.m_IndexCount - polygon.start;
        if (!fits && i < m_Saved.m_NumPolygons) return false;
        if (!fits) polygon = {};
        m_Saved.m_LargestPolygon = std::max(m_Saved.m_LargestPolygon, polygon.count);
    }
    const auto isPoint = [this](int index) { return index >= 0 && index < m_Saved.m_NumPoints; };
    if (!std::all_of(m_pIndices.get(), m_pIndices.get() + m_Saved.m_IndexCount, isPoint))
        return false;

    if (m_Saved.m_AdjacentPolyListValid == 0) return true;
    for (long long k = 0; k < 3LL * m_Saved.m_MaxPolygons; ++k) {
        std::int32_t& neighbour = m_pAdjacentPolyList[k];
        const bool fits = neighbour >= -1 && neighbour < m_Saved.m_MaxPolygons;
        if (!fits && k < 3LL * m_Saved.m_NumPolygons) return false;
        if (!fits) neighbour = -1;
    }
    return true;
}

void CPolysurface::Save(HANDLE file) {
    detail::WithFile(file, {ERR3DCLASS_POLYSURFACE, "Save"}, [this](File& f) {
        detail::RecordWriter record(f);
        Record(record);
    });
}

void CPolysurface::Load(HANDLE file) {
    detail::WithFile(file, {ERR3DCLASS_POLYSURFACE, "Load"}, [this](File& f) {
        ClosePolysurface();
        try {
            detail::RecordReader record(f);
            if (!Record(record) || !CheckTables()) ClosePolysurface();
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
