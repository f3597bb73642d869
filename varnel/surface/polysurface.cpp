#include "varnel/surface/polysurface.h"

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <limits>
#include <mutex>

#include "varnel/foundation/detail/named_colors.h"
#include "varnel/foundation/detail/progress.h"
#include "varnel/foundation/detail/raise.h"
#include "varnel/surface/detail/delaunay.h"
#include "varnel/surface/detail/new_shared_table.h"
#include "varnel/surface/detail/polygon_reader.h"

namespace varnel {

namespace {

using detail::kBlack;
using detail::kWhite;

constexpr int kSparePoints = 4;
constexpr long long kMostInt = std::numeric_limits<std::int32_t>::max();
constexpr detail::Origin kOpen{ERR3DCLASS_POLYSURFACE, "OpenPolysurface"};
constexpr detail::Origin kNeighbours{ERR3DCLASS_POLYSURFACE, "AllocAdjacentPolygonList"};

constexpr RGBDType kBlue{0.0, 0.0, 1.0, 1.0};

bool IsSame(const RGBDType& a, const RGBDType& b) {
    return a.r == b.r && a.g == b.g && a.b == b.b && a.a == b.a;
}

/// The elements of a table, to be written.
template <class T>
T* Write(CopyOnWrite<T>& table) {
    return detail::AllocateOrRaise(ERR3D_ARRAY_NEW, kOpen, [&] { return table.Write(); });
}

/// Held while tables that are implied are stored, in whichever surface.
std::mutex g_Storing;

}  // namespace

// --- Construction ----------------------------------------------------------------------------

CPolysurface::CPolysurface(const CString& file) {
    Load(file);
}

CPolysurface::CPolysurface(HANDLE file) {
    Load(file);
}

CPolysurface::CPolysurface(const point3Dtype* pts, int start, int n) {
    OpenPolysurface(n, 2LL * n + 2, 3);
    SetPolysurfacePoints(pts, start, n);
}

CPolysurface::CPolysurface(std::span<const point3Dtype> pts) {
    const auto n = static_cast<long long>(pts.size());
    OpenPolysurface(n, 2 * n + 2, 3);
    SetPolysurfacePoints(pts, 0);
}

CPolysurface::CPolysurface(std::span<const point3Dtype> pts, int rows, int cols, int gridType) {
    ConvertRG2PS(pts, rows, cols, gridType);
}

CPolysurface::CPolysurface(int rows, int cols, double x0, double y0, double x1, double y1,
                           std::span<const double> z, int gridType) {
    CreatePolysurfaceEvenGrid(rows, cols, x0, y0, x1, y1, z, gridType);
}

CPolysurface::CPolysurface(std::span<const point3Dtype> pts, std::span<const int> triangles) {
    const std::size_t count = triangles.size() / 3;
    OpenPolysurface(static_cast<long long>(pts.size()), static_cast<long long>(count), 3);
    SetPolysurfacePoints(pts, 0);
    for (std::size_t i = 0; i < count; ++i)
        AddPolysurfacePolygon(m_Saved.m_NumPolygons, triangles.subspan(3 * i, 3), kBlue, kBlack);
}

CPolysurface::CPolysurface(int numPoints, int maxPolygons, int pointsPerPolygon) {
    OpenPolysurface(numPoints, maxPolygons, pointsPerPolygon);
}

CPolysurface::CPolysurface(const point3Dtype* pts, int rows, int cols, int gridType) {
    ConvertRG2PS(pts, rows, cols, gridType);
}

CPolysurface::CPolysurface(int rows, int cols, double x0, double y0, double x1, double y1,
                           double (*f)(double, double)) {
    CreatePolysurfaceFunction(rows, cols, x0, y0, x1, y1, f);
}

CPolysurface::CPolysurface(int rows, int cols, double x0, double y0, double x1, double y1,
                           const double* z, int gridType) {
    CreatePolysurfaceEvenGrid(rows, cols, x0, y0, x1, y1, z, gridType);
}

CPolysurface::CPolysurface(const CPolysurface* src) {
    CopyPolysurface(src);
}

CPolysurface::CPolysurface(const CPolysurface* src, int factor) {
    ReducePolysurface(src, factor, src == nullptr ? 0 : src->GetGridType());
}

CPolysurface::CPolysurface(const CPolysurface& src) {
    CopyPolysurface(&src);
}

CPolysurface& CPolysurface::operator=(const CPolysurface& src) {
    CopyPolysurface(&src);
    return *this;
}

CPolysurface::~CPolysurface() = default;

void CPolysurface::OpenPolysurface(long long numPoints, long long maxPolygons, int pointsPerPolygon,
                                   Tables tables) {
    ClosePolysurface();
    if (numPoints == 0) return;
    if (numPoints < 0)
        detail::Raise(ERR3D_ARRAY_NEW, kOpen.cls, kOpen.operation,
                      detail::Say("the number of points is ", numPoints));
    auto points = detail::NewSharedTable<point3Dtype>(numPoints + kSparePoints, kOpen);
    OpenPolygons(maxPolygons, pointsPerPolygon, tables);
    m_pPoints = std::move(points);
    m_Saved.m_NumPoints = static_cast<std::int32_t>(numPoints) + kSparePoints;
}

/// Replaces the polygon table and the index array by empty ones; those that are made later must be
/// implied or opened before anything else asks for them.
void CPolysurface::OpenPolygons(long long maxPolygons, int pointsPerPolygon, Tables tables) {
    // A tenth more indices than nominal.
    const double capacity = static_cast<double>(maxPolygons) * 1.1 * pointsPerPolygon;
    if (capacity > static_cast<double>(kMostInt) || capacity < 0.0)
        detail::Raise(ERR3D_ARRAY_NEW, kOpen.cls, kOpen.operation,
                      detail::Say(maxPolygons, " polygons of ", pointsPerPolygon, " points"));
    if (maxPolygons > kMostInt)
        detail::Raise(ERR3D_ARRAY_NEW, kOpen.cls, kOpen.operation,
                      detail::Say("the count is ", maxPolygons));
    m_pPolygons = {};
    m_pIndices = {};
    m_Saved.m_MaxPolygons = static_cast<std::int32_t>(maxPolygons);
    m_Saved.m_IndexCapacity = static_cast<std::int32_t>(capacity);
    m_Saved.m_PointsPerPolygon = pointsPerPolygon;
    if (tables == Tables::STORED) OpenTables();
    ResetPolysurfacePolygons();
}

void CPolysurface::OpenTables() {
    auto polygons = detail::NewSharedTable<Polygon>(m_Saved.m_MaxPolygons, kOpen);
    m_pIndices = detail::NewSharedTable<std::int32_t>(m_Saved.m_IndexCapacity, kOpen);
    m_pPolygons = std::move(polygons);
}

void CPolysurface::ClosePolysurface() {
    ++m_Revision;
    m_pPoints = {};
    m_pPolygons = {};
    m_pIndices = {};
    m_pColors = {};
    m_pAdjacentPolyList = {};
    m_CellsImplied = false;
    m_NeighboursImplied = false;
    m_Saved = {};
    m_Added = {};
}

void CPolysurface::CopyPolysurface(const CPolysurface* src) {
    if (src == nullptr || src == this) return;
    const bool cells = src->AreCellsImplied();
    const bool adjacency = src->AreNeighboursImplied();
    detail::AllocateOrRaise(ERR3D_ARRAY_NEW, kOpen, [&] {
        CopyOnWrite points = src->m_pPoints;
        CopyOnWrite colors = src->m_pColors;
        // Tables that are implied may just be made, by another thread.
        auto polygons = cells ? CopyOnWrite<Polygon>() : src->m_pPolygons;
        auto indices = cells ? CopyOnWrite<std::int32_t>() : src->m_pIndices;
        auto neighbours = adjacency ? CopyOnWrite<std::int32_t>() : src->m_pAdjacentPolyList;
        m_pPoints = std::move(points);
        m_pColors = std::move(colors);
        m_pPolygons = std::move(polygons);
        m_pIndices = std::move(indices);
        m_pAdjacentPolyList = std::move(neighbours);
    });
    ++m_Revision;
    m_Saved = src->m_Saved;
    m_Added = src->m_Added;
    m_CellsImplied = cells;
    m_NeighboursImplied = adjacency;
}

// --- Points --------------------------------------------------------------------------------------

void CPolysurface::SetPolysurfacePoints(const point3Dtype* pts, int start, int n) {
    if (pts == nullptr || start < 0 || start >= m_Saved.m_NumPoints || n <= 0) return;
    ++m_Revision;
    std::copy_n(pts, std::min(n, m_Saved.m_NumPoints - start), Write(m_pPoints) + start);
}

void CPolysurface::SetPolysurfacePoints(std::span<const point3Dtype> pts, int start) {
    SetPolysurfacePoints(pts.data(), start,
                         static_cast<int>(std::min<std::size_t>(pts.size(), kMostInt)));
}

void CPolysurface::SetOnePolysurfacePoint(int i, const point3Dtype& p) {
    if (i < 0 || i >= m_Saved.m_NumPoints) return;
    ++m_Revision;
    Write(m_pPoints)[i] = p;
}

point3Dtype* CPolysurface::GetPSPoints() {
    ++m_Revision;
    return detail::AllocateOrRaise(ERR3D_ARRAY_NEW, {ERR3DCLASS_POLYSURFACE, "GetPSPoints"},
                                   [this] { return m_pPoints.GiveAway(); });
}

void CPolysurface::GetOnePolysurfacePoint(int i, point3Dtype& p) const {
    p = i >= 0 && i < m_Saved.m_NumPoints ? m_pPoints[i] : point3Dtype{};
}

void CPolysurface::SetPSValues(std::span<const double> values) {
    const std::size_t n = std::min(values.size(), static_cast<std::size_t>(GetPSNumPoints()));
    point3Dtype* const points = Write(m_pPoints);
    for (std::size_t i = 0; i < n; ++i)
        points[i].w = values[i];
}

void CPolysurface::CopyXYorZtoV(double scale, double offset, int axis) {
    if (axis < 0 || axis > 2) return;
    point3Dtype* const points = Write(m_pPoints);
    for (int i = 0; i < m_Saved.m_NumPoints; ++i) {
        point3Dtype& p = points[i];
        p.w = (GetCoord3D(p, axis) - offset) * scale;
    }
}

// --- Polygons ------------------------------------------------------------------------------------

void CPolysurface::RequirePolygons(const char* operation) const {
    if (!AreCellsImplied() && (!m_pPolygons || !m_pIndices))
        detail::Raise(ERR3D_BAD_POLYSURFACE, ERR3DCLASS_POLYSURFACE, operation,
                      "the surface has points and no table of polygons");
}

void CPolysurface::AddPolysurfacePolygon(int i, const int* indices, int n, const RGBDType& first,
                                         const RGBDType& second) {
    if (m_Saved.m_NumPoints == 0) return;
    RequirePolygons("AddPolysurfacePolygon");
    if (!IsPolygon(i) || m_Saved.m_NumPolygons == m_Saved.m_MaxPolygons) return;
    if (n < 0 || n > m_Saved.m_IndexCapacity - m_Saved.m_IndexCount ||
        (n > 0 && indices == nullptr))
        return;
    for (int j = 0; j < n; ++j)
        if (indices[j] < 0 || indices[j] >= m_Saved.m_NumPoints) return;

    ++m_Revision;
    StoreCells();
    SetColors(i, {first, second}, "AddPolysurfacePolygon");
    Write(m_pPolygons)[i] = {n, m_Saved.m_IndexCount};
    std::copy_n(indices, n, Write(m_pIndices) + m_Saved.m_IndexCount);
    m_Saved.m_IndexCount += n;
    m_Saved.m_NumPolygons += 1;
    m_Saved.m_LargestPolygon = std::max(m_Saved.m_LargestPolygon, n);
}

void CPolysurface::AddPolysurfacePolygon(int i, std::span<const int> indices, const RGBDType& first,
                                         const RGBDType& second) {
    AddPolysurfacePolygon(i, indices.data(),
                          static_cast<int>(std::min<std::size_t>(indices.size(), kMostInt)), first,
                          second);
}

void CPolysurface::SetPolysurfaceColors(int i, const RGBDType& first, const RGBDType& second) {
    if (IsPolygon(i)) SetColors(i, {first, second}, "SetPolysurfaceColors");
}

void CPolysurface::SetColors(int i, const PolygonColors& colors, const char* operation) {
    if (!m_pColors) {
        if (!m_Saved.m_HasCommonColors) m_Saved.m_CommonColors = colors;
        m_Saved.m_HasCommonColors = true;
        if (IsSame(m_Saved.m_CommonColors.first, colors.first) &&
            IsSame(m_Saved.m_CommonColors.second, colors.second))
            return;
        m_pColors = detail::NewSharedTable<PolygonColors>(m_Saved.m_MaxPolygons,
                                                          {ERR3DCLASS_POLYSURFACE, operation});
        std::fill_n(m_pColors.Write(), m_Saved.m_MaxPolygons, m_Saved.m_CommonColors);
    }
    Write(m_pColors)[i] = colors;
}

const CPolysurface::PolygonColors& CPolysurface::GetColors(int i) const {
    return m_pColors ? m_pColors[i] : m_Saved.m_CommonColors;
}

/// The point numbers of polygon i: in the table, or those that the grid says in `scratch`, which
/// has room for four.
const int* CPolysurface::Corners(int i, int* scratch, int& n) const {
    if (!AreCellsImplied()) return FindPSPolygon(i, n);
    n = 0;
    if (i >= 0 && i < m_Saved.m_NumPolygons)
        n = m_Saved.m_Cells.Corners(i, m_Saved.m_Cells.RowOf(i), scratch);
    return scratch;
}

void CPolysurface::GetPolysurfacePolygon(int i, point3Dtype* pts, int& n, RGBDType& first,
                                         RGBDType& second) const {
    n = 0;
    if (m_Saved.m_NumPoints == 0) return;
    RequirePolygons("GetPolysurfacePolygon");
    GPSPolygon(i, pts, n);
    if (!IsPolygon(i)) return;
    first = GetColors(i).first;
    second = GetColors(i).second;
}

void CPolysurface::GPSPolygon(int i, point3Dtype* pts, int& n) const {
    n = 0;
    if (m_Saved.m_NumPoints == 0) return;
    RequirePolygons("GPSPolygon");
    int scratch[4];
    const int* const indices = Corners(i, scratch, n);
    if (n == 0) return;
    for (int j = 0; j < n; ++j)
        pts[j] = m_pPoints[indices[j]];
    pts[n] = pts[0];
}

void CPolysurface::GetPSPolygonIndices(int i, int* indices, int& n, RGBDType& first,
                                       RGBDType& second) const {
    n = 0;
    if (m_Saved.m_NumPoints == 0) return;
    RequirePolygons("GetPSPolygonIndices");
    int scratch[4];
    const int* const own = Corners(i, scratch, n);
    if (!IsPolygon(i)) return;
    std::copy_n(own, n, indices);
    first = GetColors(i).first;
    second = GetColors(i).second;
}

double CPolysurface::GetPSPMean(int i, int axis) const {
    int n = 0;
    int scratch[4];
    const int* const indices = Corners(i, scratch, n);
    if (n == 0) return 0.0;
    double sum = 0.0;
    for (int j = 0; j < n; ++j)
        sum += GetCoord3D(m_pPoints[indices[j]], axis);
    return sum / n;
}

void CPolysurface::ResetPolysurfacePolygons() {
    ++m_Revision;
    StoreCells();
    m_Saved.m_NumPolygons = 0;
    m_Saved.m_IndexCount = 0;
    m_Saved.m_LargestPolygon = 0;
    if (m_pPolygons) std::fill_n(Write(m_pPolygons), m_Saved.m_MaxPolygons, Polygon{});
    m_Saved.m_HasCommonColors = false;
    m_Saved.m_CommonColors = {};
    m_pColors = {};
}

/// Makes the tables that the cells of a grid imply, if they are not there.
void CPolysurface::StoreCells() const {
    if (!AreCellsImplied()) return;
    const std::lock_guard lock(g_Storing);
    if (!AreCellsImplied()) return;
    const GridCells& cells = m_Saved.m_Cells;
    auto polygons = detail::NewSharedTable<Polygon>(m_Saved.m_MaxPolygons, kOpen);
    auto indices = detail::NewSharedTable<std::int32_t>(m_Saved.m_IndexCapacity, kOpen);
    Polygon* const polygon = polygons.Write();
    std::int32_t* const index = indices.Write();
    detail::PolygonReader reader(*this);
    for (int i = 0; i < cells.Count(); ++i) {
        detail::ProgressStep();
        int n = 0;
        const int* const numbers = reader.Read(i, n);
        polygon[i] = {n, i * n};
        std::copy_n(numbers, n, index + std::ptrdiff_t{i} * n);
    }
    m_pPolygons = std::move(polygons);
    m_pIndices = std::move(indices);
    m_CellsImplied.store(false, std::memory_order_release);
}

// --- Neighbours ----------------------------------------------------------------------------------

void CPolysurface::AllocAdjacentPolygonList() {
    FreeAdjacentPolygonList();
    const long long count = 3LL * m_Saved.m_MaxPolygons;
    m_pAdjacentPolyList = detail::NewSharedTable<std::int32_t>(count, kNeighbours);
    std::fill_n(m_pAdjacentPolyList.Write(), count, -1);
    m_Saved.m_AdjacentPolyListValid = 1;
}

void CPolysurface::FreeAdjacentPolygonList() {
    m_NeighboursImplied = false;
    m_pAdjacentPolyList = {};
    m_Saved.m_AdjacentPolyListValid = 0;
}

/// Makes the table that a grid implies, if it is not there.
void CPolysurface::StoreNeighbours() const {
    if (!AreNeighboursImplied()) return;
    const std::lock_guard lock(g_Storing);
    if (!AreNeighboursImplied()) return;
    auto table = detail::NewSharedTable<std::int32_t>(3LL * m_Saved.m_MaxPolygons, kNeighbours);
    std::int32_t* const three = table.Write();
    for (int i = 0; i < m_Saved.m_MaxPolygons; ++i) {
        detail::ProgressStep();
        m_Saved.m_NeighbourCells.Neighbours(i, three + 3LL * i);
    }
    m_pAdjacentPolyList = std::move(table);
    m_NeighboursImplied.store(false, std::memory_order_release);
}

void CPolysurface::GetAdjacentPolyList(int i, int* three) const {
    if (AreNeighboursImplied() && IsPolygon(i))
        m_Saved.m_NeighbourCells.Neighbours(i, three);
    else if (m_pAdjacentPolyList && IsPolygon(i))
        std::copy_n(m_pAdjacentPolyList.Get() + 3LL * i, 3, three);
    else
        std::fill_n(three, 3, -1);
}

int* CPolysurface::GetAdjacentPolygonPntr() {
    StoreNeighbours();
    return detail::AllocateOrRaise(ERR3D_ARRAY_NEW, kNeighbours,
                                   [this] { return m_pAdjacentPolyList.GiveAway(); });
}

const int* CPolysurface::GetAdjacentPolygonPntr() const {
    StoreNeighbours();
    return m_pAdjacentPolyList.Get();
}

// --- Triangulation -------------------------------------------------------------------------------

void CPolysurface::DelaunaySurface(BOOL adjacency) {
    const int n = GetPSNumPoints();
    if (n == 0) return;
    detail::Delaunay triangulation(m_pPoints.Get(), n);
    triangulation.deltri();
    point3Dtype* const spare = Write(m_pPoints) + n;
    for (int k = 0; k < 3; ++k) {
        spare[k].x = detail::kOuterTriangle[k].x;
        spare[k].y = detail::kOuterTriangle[k].y;
    }

    // Surfaces that were opened for other polygons can lack the room.
    FreeAdjacentPolygonList();
    const long long triangles = triangulation.GetNumTriangles();
    if (triangles > m_Saved.m_MaxPolygons || 3 * triangles > m_Saved.m_IndexCapacity)
        OpenPolygons(2LL * n + 2, 3);
    if (adjacency != 0) AllocAdjacentPolygonList();
    ResetPolysurfacePolygons();
    std::int32_t* const table = adjacency != 0 ? Write(m_pAdjacentPolyList) : nullptr;
    triangulation.ForEachTriangle([&](int t, const int* vertices, const int* neighbours) {
        if (t % 1024 == 0) detail::ProgressOnly(t, static_cast<double>(triangles));
        AddPolysurfacePolygon(t, vertices, 3, kBlue, kWhite);
        if (table != nullptr) std::copy_n(neighbours, 3, table + 3LL * t);
    });
}

}  // namespace varnel
