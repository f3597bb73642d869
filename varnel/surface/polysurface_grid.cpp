// Surfaces over grids of points: conversion, even grids, functions, neighbours, reduction.
#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>

#include "varnel/foundation/detail/named_colors.h"
#include "varnel/foundation/detail/progress.h"
#include "varnel/foundation/detail/raise.h"
#include "varnel/surface/polysurface.h"

namespace varnel {

namespace {

using detail::kBlack;

constexpr detail::Origin kConvert{ERR3DCLASS_POLYSURFACE, "ConvertRG2PS"};

constexpr RGBDType kBlue{0.0, 0.0, 1.0, 1.0};

/// Raises unless there are as many values as a grid of that size has points.
void RequireGrid(std::size_t count, int rows, int cols, const char* operation) {
    const bool fits = rows > 0 && cols > 0 &&
                      count == static_cast<std::size_t>(rows) * static_cast<std::size_t>(cols);
    if (!fits)
        detail::Raise(ERR3D_PARAMETER, ERR3DCLASS_POLYSURFACE, operation,
                      detail::Say(count, " values for a grid of ", rows, " x ", cols));
}

}  // namespace

void CPolysurface::ConvertRG2PS(const point3Dtype* pts, int rows, int cols, int type) {
    const bool triangles = type == 1 || type == 3;
    const long long count = rows < 1 || cols < 1 ? 0 : static_cast<long long>(rows) * cols;
    if (type == 0 || type == 1) {
        const long long cells = count == 0 ? 0 : (rows - 1LL) * (cols - 1);
        OpenPolysurface(count, triangles ? 2 * cells : cells, triangles ? 3 : 4, Tables::LATER);
        SetPolysurfacePoints(pts, 0, static_cast<int>(count));
    }
    if (m_Saved.m_NumPoints == 0)
        detail::Raise(ERR3D_OBJECT_NEW, kConvert.cls, kConvert.operation,
                      detail::Say("no points for a grid of ", rows, " x ", cols));
    if (count == 0 || count > GetPSNumPoints())
        detail::Raise(
            ERR3D_PARAMETER, kConvert.cls, kConvert.operation,
            detail::Say("a grid of ", rows, " x ", cols, " over ", GetPSNumPoints(), " points"));

    m_Saved.m_RGRows = rows;
    m_Saved.m_RGColumns = cols;
    m_Saved.m_GridType = type;
    SetGridLimits();
    ResetPolysurfacePolygons();
    if (triangles || type == 0 || type == 2) AddGridPolygons(triangles);
    if (!m_pPolygons && !AreCellsImplied()) OpenTables();
    m_Saved.m_EvenGridFlag = 1;
}

void CPolysurface::ConvertRG2PS(std::span<const point3Dtype> pts, int rows, int cols, int type) {
    RequireGrid(pts.size(), rows, cols, kConvert.operation);
    ConvertRG2PS(pts.data(), rows, cols, type);
}

/// The limits of the grid from its first and last point.
void CPolysurface::SetGridLimits() {
    const point3Dtype& first = m_pPoints[0];
    const point3Dtype& last = m_pPoints[m_Saved.m_RGRows * m_Saved.m_RGColumns - 1];
    m_Saved.m_RGMinX = first.x;
    m_Saved.m_RGMaxX = last.x;
    m_Saved.m_RGMinY = first.y;
    m_Saved.m_RGMaxY = last.y;
    m_Saved.m_RGRangeX = m_Saved.m_RGMaxX - m_Saved.m_RGMinX;
    m_Saved.m_RGRangeY = m_Saved.m_RGMaxY - m_Saved.m_RGMinY;
    m_Saved.m_RGStepX = m_Saved.m_RGRangeX / (m_Saved.m_RGColumns - 1);
    m_Saved.m_RGStepY = m_Saved.m_RGRangeY / (m_Saved.m_RGRows - 1);
}

/// Polygons over the cells of the grid, as far as there is room. Where there are no tables yet they
/// are implied.
void CPolysurface::AddGridPolygons(bool triangles) {
    const GridCells cells{m_Saved.m_RGRows, m_Saved.m_RGColumns, triangles ? 3 : 4};
    const int count = cells.Count();
    if (count == 0) return;
    if (m_pPolygons) {
        for (int k = 0; k < count; ++k) {
            int numbers[4];
            const int n = cells.Corners(k, cells.RowOf(k), numbers);
            AddPolysurfacePolygon(k, numbers, n, kBlue, kBlack);
        }
        return;
    }
    SetColors(0, {kBlue, kBlack}, kConvert.operation);
    m_Saved.m_Cells = cells;
    m_Saved.m_NumPolygons = count;
    m_Saved.m_IndexCount = count * cells.corners;
    m_Saved.m_LargestPolygon = cells.corners;
    m_CellsImplied = true;
}

/// Opens a grid and fills it: value(k, x, y) is the z of point k. Coordinates add up step by step.
template <class Value>
void CPolysurface::CreateEvenGrid(int rows, int cols, double x0, double y0, double x1, double y1,
                                  Value&& value, const char* operation, Tables tables) {
    if (rows < 2 || cols < 2)
        detail::Raise(ERR3D_PARAMETER, ERR3DCLASS_POLYSURFACE, operation,
                      detail::Say("a grid of ", rows, " x ", cols, " points has no cells"));
    const long long count = static_cast<long long>(rows) * cols;
    OpenPolysurface(count, 2 * count + 2, 3, tables);
    m_Saved.m_RGRows = rows;
    m_Saved.m_RGColumns = cols;
    const double stepx = (x1 - x0) / (cols - 1);
    const double stepy = (y1 - y0) / (rows - 1);
    point3Dtype* const points = m_pPoints.Write();
    int k = 0;
    double y = y0;
    for (int r = 0; r < rows; ++r, y += stepy) {
        detail::ProgressOnly(r, rows);
        double x = x0;
        for (int c = 0; c < cols; ++c, ++k, x += stepx) {
            const double z = value(k, x, y);
            points[k] = {x, y, z, z};
        }
    }
}

/// From the values that are data; 0 when none is.
void CPolysurface::SetGridZLimits() {
    double lowest = std::numeric_limits<double>::infinity();
    double highest = -lowest;
    for (int k = 0; k < m_Saved.m_RGRows * m_Saved.m_RGColumns; ++k) {
        const double z = m_pPoints[k].z;
        if (!std::isfinite(z)) continue;
        lowest = std::min(lowest, z);
        highest = std::max(highest, z);
    }
    m_Saved.m_RGMinZ = lowest <= highest ? lowest : 0.0;
    m_Saved.m_RGMaxZ = lowest <= highest ? highest : 0.0;
    m_Saved.m_RGRangeZ = std::abs(m_Saved.m_RGMaxZ - m_Saved.m_RGMinZ);
    m_Saved.m_EvenGridFlag = 1;
}

void CPolysurface::CreatePolysurfaceEvenGrid(int rows, int cols, double x0, double y0, double x1,
                                             double y1, const double* z, int type) {
    constexpr const char* kOperation = "CreatePolysurfaceEvenGrid";
    if (z == nullptr)
        detail::Raise(ERR3D_PARAMETER, ERR3DCLASS_POLYSURFACE, kOperation, "there are no values");
    CreateEvenGrid(
        rows, cols, x0, y0, x1, y1, [z](int k, double, double) { return z[k]; }, kOperation,
        Tables::LATER);
    // Types that are none must not be taken for those that bring their own points.
    constexpr int kNoPolygons = 4;
    ConvertRG2PS(nullptr, rows, cols, type == 0 || type == 1 ? type + 2 : kNoPolygons);
    CreateRGAdjacentPolygonList();
    SetGridZLimits();
}

void CPolysurface::CreatePolysurfaceEvenGrid(int rows, int cols, double x0, double y0, double x1,
                                             double y1, std::span<const double> z, int type) {
    RequireGrid(z.size(), rows, cols, "CreatePolysurfaceEvenGrid");
    CreatePolysurfaceEvenGrid(rows, cols, x0, y0, x1, y1, z.data(), type);
}

void CPolysurface::CreatePolysurfaceFunction(int rows, int cols, double x0, double y0, double x1,
                                             double y1, double (*f)(double, double)) {
    constexpr const char* kOperation = "CreatePolysurfaceFunction";
    if (f == nullptr)
        detail::Raise(ERR3D_PARAMETER, ERR3DCLASS_POLYSURFACE, kOperation, "there is no function");
    CreateEvenGrid(
        rows, cols, x0, y0, x1, y1, [f](int, double x, double y) { return f(x, y); }, kOperation,
        Tables::STORED);
    SetGridLimits();
    SetGridZLimits();
    DelaunaySurface(1);
}

void CPolysurface::CreateRGAdjacentPolygonList() {
    if (m_Saved.m_EvenGridFlag == 0) return;
    FreeAdjacentPolygonList();
    m_Saved.m_NeighbourCells = {m_Saved.m_RGRows, m_Saved.m_RGColumns, 3};
    m_Saved.m_AdjacentPolyListValid = 1;
    m_NeighboursImplied = true;
}

void CPolysurface::GridCells::Neighbours(int i, int* three) const {
    std::fill_n(three, 3, -1);
    if (i >= Count()) return;
    const int cellColumns = columns - 1;
    const int row = RowOf(i);
    const int column = i / 2 - row * cellColumns;
    if (i % 2 == 0) {
        if (row > 0) three[0] = i - 2 * cellColumns + 1;
        three[1] = i + 1;
        if (column > 0) three[2] = i - 1;
    } else {
        if (column < cellColumns - 1) three[0] = i + 1;
        if (row < rows - 2) three[1] = i - 1 + 2 * cellColumns;
        three[2] = i - 1;
    }
}

void CPolysurface::ReducePolysurface(const CPolysurface* src, int f, int /*type*/) {
    constexpr detail::Origin kOrigin{ERR3DCLASS_POLYSURFACE, "ReducePolysurface"};
    if (src == nullptr) return;
    const int rows = std::max(0, src->m_Saved.m_RGRows);
    const int cols = std::max(0, src->m_Saved.m_RGColumns);
    if (f < 1)
        detail::Raise(ERR3D_PARAMETER, kOrigin.cls, kOrigin.operation,
                      detail::Say("the factor is ", f));
    if (static_cast<long long>(rows) * cols > src->GetPSNumPoints())
        detail::Raise(ERR3D_PARAMETER, kOrigin.cls, kOrigin.operation,
                      "the surface does not have the points of its grid");
    const int newRows = rows / f;
    const int newCols = cols / f;
    const auto scratch =
        detail::NewArray<point3Dtype>(static_cast<long long>(newRows) * newCols, kOrigin);
    const double stepx = f * src->m_Saved.m_RGStepX;
    const double stepy = f * src->m_Saved.m_RGStepY;
    for (int r = 0; r < newRows; ++r) {
        for (int c = 0; c < newCols; ++c) {
            const point3Dtype* block =
                src->m_pPoints.Get() + std::ptrdiff_t{r} * f * cols + std::ptrdiff_t{c} * f;
            double sum = 0.0;
            for (int i = 0; i < f; ++i)
                for (int j = 0; j < f; ++j)
                    sum += block[i * cols + j].z;
            scratch[r * newCols + c] = {
                src->m_Saved.m_RGMinX + c * stepx, src->m_Saved.m_RGMinY + r * stepy,
                sum / (static_cast<double>(f) * f), block[(f - 1) * cols + f - 1].w};
        }
    }
    ConvertRG2PS(scratch.get(), newRows, newCols, 1);
}

}  // namespace varnel
