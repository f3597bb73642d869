// The planes of CAxes3D: grids, flat coloured planes and walls.
#include <cmath>

#include "varnel/axes/axes.h"
#include "varnel/axes/detail/axes_extents.h"
#include "varnel/axes/detail/axis_walk.h"
#include "varnel/axes/detail/wall_depths.h"
#include "varnel/foundation/detail/named_colors.h"
#include "varnel/foundation/planes.h"
#include "varnel/render/opengl.h"
#include "varnel/transform/transform.h"

namespace varnel {
namespace {

using detail::kBlack;

bool LiesAtMaximum(int plane) {
    return plane >= 3;
}

}  // namespace

/// The grid lines of a plane that step along one of its two axes.
struct CAxes3D::GridDirection {
    int plane = 0;
    bool alongFirst = true;  ///< the values belong to the first axis
    double from = 0.0;       ///< where each line runs on the other axis
    double to = 0.0;
    double normal = 0.0;     ///< the coordinate of the plane
    double ticLength = 0.0;  ///< in working coordinates, 0 without tics
};

void CAxes3D::SetPlaneGrid(int plane, int nthTic1, int nthTic2, const RGBDType& color,
                           double thickness, int style, int wallFlag) {
    Assign(m_Saved.m_PlaneGrid, plane, {nthTic1, nthTic2, wallFlag, thickness, style, color, 1});
}

void CAxes3D::SetPlaneGridAttrib(int plane, const RGBDType& color, double thickness,
                                 int /*style*/) {
    SetPlaneGridColor(plane, color);
    SetPlaneGridThickness(plane, thickness);
}

void CAxes3D::SetPlaneColor(int plane, const RGBDType& fill, const RGBDType& outline) {
    ShowPlane(plane, fill, outline, kFlatPlane);
}

void CAxes3D::SetWallPlane(int plane, const RGBDType& fill, const RGBDType& outline) {
    ShowPlane(plane, fill, outline, kWall);
}

void CAxes3D::ShowPlane(int plane, const RGBDType& fill, const RGBDType& outline, int mode) {
    Assign(plane, &Wall::m_WallColor, fill);
    Assign(plane, &Wall::m_OutlineColor, outline);
    Assign(plane, &Wall::m_WallMode, mode);
    EnableWall(plane, 1);
}

void CAxes3D::SetWallThickness(int plane, double fraction) {
    Assign(plane, &Wall::m_WallThickness, fraction);
    constexpr int kAxes[6] = {0b001, 0, 0b110, 0b001, 0, 0b110};  // bits 0 x, 1 y, 2 z
    for (int axis = 0; axis < 3; ++axis)
        if ((Value(kAxes, plane) >> axis & 1) != 0)
            Tell(axis, &CAxis3D::SetAxisWallThickness, fraction);
}

void CAxes3D::DrawAxesPlanes() {
    for (const auto& axis : m_pAxis)
        if (axis == nullptr) return;
    const bool back = m_pOpenGL->GetLineAreas() != 0;
    const auto putBack = [&](double depth) {
        if (!back) return;
        detail::Matrix4 matrix = detail::MatrixOf(m_pTransform->GetGraphTransform());
        matrix.m[14] += depth;
        m_pOpenGL->LoadMatrixTransform(matrix.m.data());
    };
    for (int plane = 0; plane < 6; ++plane) {
        putBack(detail::kGridDepth);
        DrawPlaneGrid(plane);
        putBack(detail::kWallDepth);
        DrawPlaneColor(plane);
        DrawWallPlane(plane);
    }
    putBack(0.0);
}

double CAxes3D::NormalCoordinate(int plane) const {
    const CAxis3D& normal = *m_pAxis[m_Saved.m_PlaneTable[plane][2]];
    return LiesAtMaximum(plane) ? normal.GetAxisMax() : normal.GetAxisMin();
}

double CAxes3D::OutwardDistance(int plane, double fraction) const {
    const double distance =
        std::abs(m_pTransform->GetAxisWorkingRange(m_Saved.m_PlaneTable[plane][2])) * fraction;
    return LiesAtMaximum(plane) ? -distance : distance;
}

point3Dtype CAxes3D::CalcPlanePoint(int plane, const point3Dtype& a, double distance) const {
    point3Dtype p = m_pTransform->CPTWS(swapcoords(plane, a));
    const int normal = m_Saved.m_PlaneTable[plane][2];
    coordassign(p, normal, GetCoord3D(p, normal) - distance);
    return p;
}

void CAxes3D::DrawPlaneGrid(int plane) {
    if (m_Saved.m_PlaneGrid[plane].m_bGridEnable == 0) return;
    for (int dir = 0; dir < 2; ++dir) {
        if (m_pAxis[m_Saved.m_PlaneTable[plane][dir]]->HasTicValues()) {
            DrawPlaneGridAtTics(plane, dir);
        } else if (m_pTransform->GetAxisScaleMode(m_Saved.m_PlaneTable[plane][dir]) != 0) {
            DrawLogPlaneGrid(plane, dir);
        } else {
            DrawLinPlaneGrid(plane, dir);
        }
    }
}

CAxes3D::GridDirection CAxes3D::StartGrid(int plane, int dir) {
    const PlaneGrid& style = m_Saved.m_PlaneGrid[plane];
    m_pOpenGL->SetLineStyle3D(style.m_GridStyle, style.m_GridThickness, style.m_GridColor);
    const CAxis3D& other = *m_pAxis[m_Saved.m_PlaneTable[plane][1 - dir]];
    GridDirection grid;
    grid.plane = plane;
    grid.alongFirst = dir == 0;
    grid.from = other.GetAxisMin();
    grid.to = other.GetAxisMax();
    grid.normal = NormalCoordinate(plane);
    if (style.m_GridWallFlag != 0)
        grid.ticLength = OutwardDistance(plane, m_Saved.m_Wall[plane].m_WallThickness);
    return grid;
}

void CAxes3D::DrawLinPlaneGrid(int plane, int dir) {
    const PlaneGrid& style = m_Saved.m_PlaneGrid[plane];
    const int nthTic = dir == 0 ? style.m_GridNthTic1 : style.m_GridNthTic2;
    if (nthTic == 0) return;
    const GridDirection grid = StartGrid(plane, dir);
    const CAxis3D& stepped = *m_pAxis[m_Saved.m_PlaneTable[plane][dir]];
    detail::WalkLinear(stepped.GetAxisCenterPoint(), stepped.GetAxisTicSpace() * nthTic,
                       stepped.GetAxisMin(), stepped.GetAxisMax(),
                       [&](double value, int) { DrawGridLine(grid, value); });
}

/// Lines at the major tics that a host gave.
void CAxes3D::DrawPlaneGridAtTics(int plane, int dir) {
    const PlaneGrid& style = m_Saved.m_PlaneGrid[plane];
    if ((dir == 0 ? style.m_GridNthTic1 : style.m_GridNthTic2) == 0) return;
    const GridDirection grid = StartGrid(plane, dir);
    const CAxis3D& stepped = *m_pAxis[m_Saved.m_PlaneTable[plane][dir]];
    for (const double value : stepped.GetMajorTicValues())
        if (stepped.GetAxisMin() <= value && value <= stepped.GetAxisMax())
            DrawGridLine(grid, value);
}

void CAxes3D::DrawLogPlaneGrid(int plane, int dir) {
    const PlaneGrid& style = m_Saved.m_PlaneGrid[plane];
    if ((dir == 0 ? style.m_GridNthTic1 : style.m_GridNthTic2) == 0) return;
    const GridDirection grid = StartGrid(plane, dir);
    const int axis = m_Saved.m_PlaneTable[plane][dir];
    const CAxis3D& stepped = *m_pAxis[axis];
    detail::WalkDecades(m_pTransform->LogLimits(axis, stepped.GetAxisCenterPoint()),
                        m_pTransform->LogLimits(axis, stepped.GetAxisMin()),
                        m_pTransform->LogLimits(axis, stepped.GetAxisMax()),
                        [&](double value, bool) { DrawGridLine(grid, value); });
}

void CAxes3D::DrawGridLine(const GridDirection& grid, double value) {
    if (!m_pOpenGL->TakeAxisLine()) return;
    point3Dtype from;
    point3Dtype to;
    if (grid.alongFirst) {
        AssignPoint3D(from, value, grid.from, grid.normal);
        AssignPoint3D(to, value, grid.to, grid.normal);
    } else {
        AssignPoint3D(from, grid.from, value, grid.normal);
        AssignPoint3D(to, grid.to, value, grid.normal);
    }
    if (grid.ticLength != 0.0) PlaneGridTic(grid.plane, from, grid.ticLength);
    PlaneGridLine(grid.plane, from, to);
    if (grid.ticLength != 0.0) PlaneGridTic(grid.plane, to, grid.ticLength);
}

void CAxes3D::PlaneGridLine(int plane, const point3Dtype& a, const point3Dtype& b) {
    m_pOpenGL->StartLineAbs3D(CalcPlanePoint(plane, a, 0.0));
    m_pOpenGL->EndLineAbs3D(CalcPlanePoint(plane, b, 0.0));
}

void CAxes3D::PlaneGridTic(int plane, const point3Dtype& a, double length) {
    m_pOpenGL->StartLineAbs3D(CalcPlanePoint(plane, a, 0.0));
    m_pOpenGL->EndLineAbs3D(CalcPlanePoint(plane, a, length));
}

void CAxes3D::StartPlane(int plane) {
    m_pOpenGL->SetColorMode(m_Saved.m_PlaneColorMode[plane]);
    m_pOpenGL->EnableTexture(m_Saved.m_PlaneColorMode[plane] == 2);
    m_pOpenGL->SetLineWidth3D(m_Saved.m_Wall[plane].m_OutlineWidth);
    m_pOpenGL->SetFrameFilled(m_Saved.m_OutlineMode);
}

void CAxes3D::EndPlane() {
    m_pOpenGL->SetFrameFilled(0);
    m_pOpenGL->SetLineWidth3D(1.0);
    m_pOpenGL->EnableTexture(0);
}

void CAxes3D::DrawPlaneColor(int plane) {
    const Wall& wall = m_Saved.m_Wall[plane];
    if (wall.m_bWallEnable == 0 || wall.m_WallMode != kFlatPlane) return;
    const CAxis3D& first = *m_pAxis[m_Saved.m_PlaneTable[plane][0]];
    const CAxis3D& second = *m_pAxis[m_Saved.m_PlaneTable[plane][1]];
    const double u[2] = {first.GetAxisMin(), first.GetAxisMax()};
    const double v[2] = {second.GetAxisMin(), second.GetAxisMax()};
    const double distance = OutwardDistance(plane, wall.m_WallOffset);
    constexpr int kCorners[5][2] = {{0, 0}, {1, 0}, {1, 1}, {0, 1}, {0, 0}};
    point3Dtype corners[5];
    for (int i = 0; i < 5; ++i) {
        AssignPoint3D(corners[i], u[kCorners[i][0]], v[kCorners[i][1]], NormalCoordinate(plane));
        corners[i] = CalcPlanePoint(plane, corners[i], distance);
    }
    StartPlane(plane);
    m_pOpenGL->SetFillStyle3D(wall.m_WallColor, kBlack, wall.m_OutlineColor);
    m_pOpenGL->PolyFillAbs3D(corners, 5);
    EndPlane();
}

void CAxes3D::DrawWallPlane(int plane) {
    const Wall& wall = m_Saved.m_Wall[plane];
    if (wall.m_bWallEnable == 0 || wall.m_WallMode != kWall) return;
    const int normal = m_Saved.m_PlaneTable[plane][2];
    double size[3];
    for (int axis = 0; axis < 3; ++axis)
        size[axis] = m_pTransform->CVTWS(axis, m_pAxis[axis]->GetAxisMax()) -
                     m_pTransform->CVTWS(axis, m_pAxis[axis]->GetAxisMin());
    size[normal] *= wall.m_WallThickness;
    point3Dtype corner;
    AssignPoint3D(corner, m_pAxis[m_Saved.m_PlaneTable[plane][0]]->GetAxisMin(),
                  m_pAxis[m_Saved.m_PlaneTable[plane][1]]->GetAxisMin(), NormalCoordinate(plane));
    corner = CalcPlanePoint(plane, corner, 0.0);
    // In its plane the wall is a little smaller than the box; across it lies outside of the box.
    const double offset = wall.m_WallOffset;
    for (int axis = 0; axis < 3; ++axis) {
        double shift = size[axis] * offset;
        if (axis == normal) {
            shift *= kWallGaps;
            if (!LiesAtMaximum(plane)) shift = -(shift + size[axis]);
        }
        coordassign(corner, axis, GetCoord3D(corner, axis) + shift);
    }
    for (double& extent : size)
        extent *= 1.0 - 2.0 * offset;
    StartPlane(plane);
    m_pOpenGL->DrawPrism3D(corner.x, corner.y, corner.z, size[0], size[1], size[2],
                           wall.m_WallColor, wall.m_OutlineColor);
    EndPlane();
}

}  // namespace varnel
