// Surfaces over grids of points: conversion, even grids, functions, neighbours, reduction.
#include <algorithm>
#include <cmath>
#include <limits>

#include "varnel/foundation/detail/raise.h"
#include "varnel/surface/polysurface.h"

namespace varnel {

namespace {

constexpr detail::Origin kConvert{ERR3DCLASS_POLYSURFACE, "ConvertRG2PS"};

constexpr RGBDType kBlue{0.0, 0.0, 1.0, 1.0};
constexpr RGBDType kBlack{0.0, 0.0, 0.0, 1.0};

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
        OpenPolysurface(count, triangles ? 2 * cells : cells, triangles ? 3 : 4);
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

//     q3 ---- q2
//      | \    |      one quadrilateral q0 q1 q2 q3, or the triangles q0 q1 q3 and q1 q2 q3
//      |    \ |
//     q0 ---- q1
void CPolysurface::AddGridPolygons(bool triangles) {
    int k = 0;
    for (int r = 0; r < m_Saved.m_RGRows - 1; ++r) {
        for (int c = 0; c < m_Saved.m_RGColumns - 1; ++c) {
            const int q0 = r * m_Saved.m_RGColumns + c;
            const int q1 = q0 + 1;
            const int q3 = q0 + m_Saved.m_RGColumns;
            const int q2 = q3 + 1;
            const int corners[4] = {q0, q1, q2, q3};
            const int lower[3] = {q0, q1, q3};
            if (triangles) {
                AddPolysurfacePolygon(k++, lower, 3, kBlue, kBlack);
                AddPolysurfacePolygon(k++, corners + 1, 3, kBlue, kBlack);
            } else {
                AddPolysurfacePolygon(k++, corners, 4, kBlue, kBlack);
            }
        }
    }
}

/// Opens a grid and fills it: value(k, x, y) is the z of point k. Coordinates add up step by step.
template <class Value>
void CPolysurface::CreateEvenGrid(int rows, int cols, double x0, double y0, double x1, double y1,
                                  Value&& value, const char* operation) {
    if (rows < 2 || cols < 2)
        detail::Raise(ERR3D_PARAMETER, ERR3DCLASS_POLYSURFACE, operation,
                      detail::Say("a grid of ", rows, " x ", cols, " points has no cells"));
    const long long count = static_cast<long long>(rows) * cols;
    OpenPolysurface(count, 2 * count + 2, 3);
    m_Saved.m_RGRows = rows;
    m_Saved.m_RGColumns = cols;
    const double stepx = (x1 - x0) / (cols - 1);
    const double stepy = (y1 - y0) / (rows - 1);
    int k = 0;
    double y = y0;
    for (int r = 0; r < rows; ++r, y += stepy) {
        double x = x0;
        for (int c = 0; c < cols; ++c, ++k, x += stepx) {
            const double z = value(k, x, y);
            m_pPoints[k] = {x, y, z, z};
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
        rows, cols, x0, y0, x1, y1, [z](int k, double, double) { return z[k]; }, kOperation);
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
        rows, cols, x0, y0, x1, y1, [f](int, double x, double y) { return f(x, y); }, kOperation);
    SetGridLimits();
    SetGridZLimits();
    DelaunaySurface(1);
}

void CPolysurface::CreateRGAdjacentPolygonList() {
    if (m_Saved.m_EvenGridFlag == 0) return;
    AllocAdjacentPolygonList();
    const int cellRows = m_Saved.m_RGRows - 1;
    const int cellColumns = m_Saved.m_RGColumns - 1;
    int k = 0;
    for (int r = 0; r < cellRows; ++r) {
        for (int c = 0; c < cellColumns; ++c, k += 2) {
            const int lower[3] = {r > 0 ? k - 2 * cellColumns + 1 : -1, k + 1, c > 0 ? k - 1 : -1};
            const int upper[3] = {c < cellColumns - 1 ? k + 2 : -1,
                                  r < cellRows - 1 ? k + 2 * cellColumns : -1, k};
            AddAdjacentPolyList(k, lower);
            AddAdjacentPolyList(k + 1, upper);
        }
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
            const point3Dtype* block = src->m_pPoints.get() + r * f * cols + c * f;
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
