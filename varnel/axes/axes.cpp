#include "varnel/axes/axes.h"

#include "varnel/axes/detail/axes_extents.h"
#include "varnel/axes/detail/axis_walk.h"
#include "varnel/axes/detail/known_tics.h"
#include "varnel/foundation/detail/added_fields.h"
#include "varnel/foundation/detail/diagnose.h"
#include "varnel/foundation/detail/record.h"
#include "varnel/foundation/planes.h"
#include "varnel/render/opengl.h"
#include "varnel/transform/transform.h"

namespace varnel {

int CAxes3D::nSelfID = 0;

CAxes3D::CAxes3D() {
    SetAxesDefaults();
}

CAxes3D::CAxes3D(COpenGL* gl, CTransform3D* transform, const point3Dtype& minPoint,
                 const point3Dtype& maxPoint)
    : CAxes3D() {
    m_Saved.m_MinPoint = minPoint;
    m_Saved.m_MaxPoint = maxPoint;
    InitAxes(gl, transform);
}

CAxes3D::~CAxes3D() = default;

void CAxes3D::SetAxesDefaults() {
    m_pOpenGL = nullptr;
    m_pTransform = nullptr;
    m_Saved = {};
    m_Added = {};
    m_pLastChoice.reset();
    SetPlaneTable();
    FreeAxes();
    MakeMissingAxes();
    detail::Count(nSelfID);
}

void CAxes3D::MakeMissingAxes() {
    constexpr detail::Origin origin{ERR3DCLASS_AXES3D, "SetAxesDefaults"};
    for (auto& axis : m_pAxis)
        if (axis == nullptr) axis = detail::NewObject<CAxis3D>(origin);
    for (auto& labels : m_pAxisLabels)
        if (labels == nullptr) labels = detail::NewObject<CAxisLabels3D>(origin);
}

void CAxes3D::SetPlaneTable() {
    for (int plane = 0; plane < 6; ++plane)
        InitPlaneGridTable(plane, GetSwapCoordAxis(plane, 0), GetSwapCoordAxis(plane, 1),
                           GetNormalAxis(plane));
}

void CAxes3D::InitPlaneGridTable(int plane, int first, int second, int normal) {
    m_Saved.m_PlaneTable[plane][0] = first;
    m_Saved.m_PlaneTable[plane][1] = second;
    m_Saved.m_PlaneTable[plane][2] = normal;
}

bool CAxes3D::HasPlaneTable() const {
    for (int plane = 0; plane < 6; ++plane) {
        if (m_Saved.m_PlaneTable[plane][0] != GetSwapCoordAxis(plane, 0)) return false;
        if (m_Saved.m_PlaneTable[plane][1] != GetSwapCoordAxis(plane, 1)) return false;
        if (m_Saved.m_PlaneTable[plane][2] != GetNormalAxis(plane)) return false;
    }
    return true;
}

void CAxes3D::InitAxes(COpenGL* gl, CTransform3D* transform) {
    constexpr detail::Origin origin{ERR3DCLASS_AXES3D, "InitAxes"};
    detail::Require(gl, ERR3D_OPENGL_PARAMETER, origin);
    detail::Require(transform, ERR3D_TRANSFORM_PARAMETER, origin);
    m_pOpenGL = gl;
    m_pTransform = transform;
    m_Saved.m_nTransformID = transform->GetSelfID();
    for (int axis = 0; axis < 3; ++axis) {
        if (m_pAxis[axis] == nullptr || m_pAxisLabels[axis] == nullptr) return;
        m_pAxis[axis]->InitAxis(gl, transform, axis);
        m_pAxis[axis]->SetAxisLimits(GetCoord3D(m_Saved.m_MinPoint, axis),
                                     GetCoord3D(m_Saved.m_MaxPoint, axis));
        m_pAxisLabels[axis]->InitAxisLabels(gl, transform, m_pAxis[axis].get());
    }
}

void CAxes3D::SetAxesLimits(const point3Dtype& minPoint, const point3Dtype& maxPoint) {
    m_Saved.m_MinPoint = minPoint;
    m_Saved.m_MaxPoint = maxPoint;
    for (int axis = 0; axis < 3; ++axis)
        SetAxisLimits(axis, GetCoord3D(minPoint, axis), GetCoord3D(maxPoint, axis));
}

void CAxes3D::FreeAxes() {
    for (auto& labels : m_pAxisLabels)
        labels.reset();
    for (auto& axis : m_pAxis)
        axis.reset();
}

/// Tells limits between which nothing can be seen.
void CAxes3D::TellOddLimits() const {
    constexpr const char* kNames[3] = {"x", "y", "z"};
    for (int axis = 0; axis < 3; ++axis) {
        const CAxis3D* const line = GetAxis(axis);
        if (line == nullptr || line->IsAxisSet() == 0) continue;
        const double min = line->GetAxisMin();
        const double max = line->GetAxisMax();
        if (!detail::HasExtent(min, max))
            detail::Diagnose("DrawAxes", "the ", kNames[axis], " axis goes from ", min, " to ", max,
                             ", so that it has no tics");
        else if (line->GetAxisScaleMode() != 0 && max <= 0.0)
            detail::Diagnose("DrawAxes", "the logarithmic ", kNames[axis], " axis ends at ", max,
                             ", so that nothing on it is positive");
    }
}

void CAxes3D::DrawAxes() {
    if (m_pOpenGL == nullptr || m_pTransform == nullptr) return;
    if (GetDiagnostics() != 0) TellOddLimits();
    m_pTransform->ChartTransform();
    const CollectScope scope(*m_pOpenGL);
    if (IsComplete() && (m_Added.followView != FOLLOW_OFF || HasChosenTics())) {
        GLViewportType viewport;
        m_pOpenGL->GetViewport(viewport);
        const detail::BoxView view = ViewOfBox(viewport.width, viewport.height);
        PrepareTics(view);
        if (m_Added.followView != FOLLOW_OFF) return DrawFollowing(view);
        DrawAxesLines();
        DrawAxesPlanes();
        for (int axis = 0; axis < 3; ++axis)
            DrawFixedLabels(axis, view);
        return;
    }
    DrawAxesLines();
    DrawAxesPlanes();
    DrawAxesLabels();
}

bool CAxes3D::IsComplete() const {
    for (int axis = 0; axis < 3; ++axis)
        if (m_pAxis[axis] == nullptr || m_pAxisLabels[axis] == nullptr) return false;
    return true;
}

void CAxes3D::DrawAxesLines() {
    for (int axis = 0; axis < 3; ++axis)
        DrawAxis(axis);
}

void CAxes3D::DrawAxis(int axis) {
    m_pOpenGL->SetColorMode(m_Saved.m_AxisColorMode[axis]);
    if (m_Saved.m_bAxisEnable[axis] != 0 && m_pAxis[axis] != nullptr) m_pAxis[axis]->DrawAxis();
}

void CAxes3D::DrawAxesLabels() {
    for (int axis = 0; axis < 3; ++axis)
        DrawAxisLabels(axis);
}

void CAxes3D::DrawAxisLabels(int axis) {
    if (m_Saved.m_bAxisLabelsEnable[axis] != 0 && m_pAxisLabels[axis] != nullptr)
        m_pAxisLabels[axis]->DrawAxisLabels();
}

void CAxes3D::SetAxisColorMode(int axis, int mode) {
    Assign(m_Saved.m_AxisColorMode, axis, mode);
    Tell(axis, &CAxis3D::SetColorMode, mode);
}

template <class Archive>
void CAxes3D::RecordPlanes(Archive& record) {
    // The gaps in the records keep their doubles at multiples of 8 bytes.
    for (PlaneGrid& grid : m_Saved.m_PlaneGrid) {
        std::int32_t gaps[3] = {};
        record(grid.m_GridNthTic1, grid.m_GridNthTic2, grid.m_GridWallFlag, gaps[0]);
        record(grid.m_GridThickness, grid.m_GridStyle, gaps[1], grid.m_GridColor);
        record(grid.m_bGridEnable, gaps[2]);
    }
    for (Wall& wall : m_Saved.m_Wall) {
        record(wall.m_WallColor, wall.m_OutlineColor, wall.m_WallThickness, wall.m_WallOffset);
        record(wall.m_OutlineWidth, wall.m_WallMode, wall.m_bWallEnable);
    }
    record.Array(&m_Saved.m_PlaneTable[0][0], sizeof m_Saved.m_PlaneTable / sizeof(int));
    if (Archive::kLoading && !HasPlaneTable()) SetPlaneTable();
}

template <class Archive>
void CAxes3D::Record(Archive& record) {
    // A transform may have got another identifier since the axes were bound to it.
    if (!Archive::kLoading && m_pTransform != nullptr)
        m_Saved.m_nTransformID = m_pTransform->GetSelfID();
    record(detail::CounterField{nSelfID}, m_Saved.m_nTransformID);
    const auto nested = [&record](auto& object) {
        if constexpr (Archive::kLoading) {
            object.Load(&record.GetFile());
        } else {
            object.Save(&record.GetFile());
        }
    };
    for (auto& axis : m_pAxis)
        nested(*axis);
    for (auto& labels : m_pAxisLabels)
        nested(*labels);
    RecordPlanes(record);
    record(m_Saved.m_MinPoint, m_Saved.m_MaxPoint);
    record.Array(m_Saved.m_AxisColorMode, 3);
    record.Array(m_Saved.m_PlaneColorMode, 6);
    record.Array(m_Saved.m_bAxisEnable, 3);
    record.Array(m_Saved.m_bAxisLabelsEnable, 3);
    record(m_Saved.m_OutlineMode);
}

void CAxes3D::VisitAdded(detail::AddedFields& fields) {
    fields.Of(m_Added, [](auto field) {
        field("followView", &Added::followView);
        field("dates", &Added::dates);
        field("dateFormats", &Added::dateFormats);
        field("autoTics", &Added::autoTics);
        field("wholeTics", &Added::wholeTics);
        field("ticHeights", &Added::ticHeights);
    });
    for (int axis = 0; axis < 3; ++axis) {
        fields.Object(detail::Say("axis ", axis), m_pAxis[axis].get());
        fields.Object(detail::Say("labels ", axis), m_pAxisLabels[axis].get());
    }
}

void CAxes3D::Save(HANDLE file) {
    MakeMissingAxes();
    detail::SaveRecord(*this, file, ERR3DCLASS_AXES3D);
}

void CAxes3D::Load(HANDLE file) {
    MakeMissingAxes();
    detail::LoadRecord(*this, file, ERR3DCLASS_AXES3D);
}

}  // namespace varnel
