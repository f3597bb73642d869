#include <limits>
#include <vector>

#include "varnel/chartobj/detail/chart_drawing.h"
#include "varnel/chartobj/detail/common_count.h"
#include "varnel/chartobj/detail/ribbons_geometry.h"
#include "varnel/chartobj/detail/screen.h"
#include "varnel/chartobj/detail/set_up.h"
#include "varnel/foundation/detail/raise.h"
#include "varnel/render/codes.h"
#include "varnel/render/opengl.h"

namespace varnel {
namespace {

/// The outline around the segments of a ribbon, without lines between them.
class RibbonEdge {
 public:
    RibbonEdge(COpenGL& gl, const CTransform3D& transform)
        : m_GL(gl), m_Lift(detail::Screen(gl, transform).Towards(kLift)) {}

    /// The segment that ends at point i, as its four corners.
    void Add(std::size_t i, const point3Dtype* corners) {
        if (m_Pieces.empty() || i != m_Last + 1) m_Pieces.emplace_back();
        m_Pieces.back().insert(m_Pieces.back().end(), corners, corners + 4);
        m_Last = i;
    }

    void Draw() {
        for (const std::vector<point3Dtype>& corners : m_Pieces) {
            std::vector<point3Dtype> ring;
            const auto add = [&](std::size_t corner) {
                const point3Dtype& p = corners[corner];
                ring.push_back({p.x + m_Lift.x, p.y + m_Lift.y, p.z + m_Lift.z, 0.0});
            };
            for (std::size_t k = 0; k < corners.size(); k += 4) {
                add(k);
                add(k + 1);
            }
            for (std::size_t k = corners.size(); k > 0; k -= 4) {
                add(k - 2);
                add(k - 1);
            }
            m_GL.StartLineAbs3D(ring.front());
            for (std::size_t k = 1; k < ring.size(); ++k)
                m_GL.AppendLineAbs3D(ring[k]);
            m_GL.EndLineAbs3D(ring.front());
        }
    }

 private:
    static constexpr double kLift = 0.004;  // device units, clear of the ribbon

    COpenGL& m_GL;
    point3Dtype m_Lift;
    std::vector<std::vector<point3Dtype>> m_Pieces;  ///< four corners a segment
    std::size_t m_Last = 0;
};

}  // namespace

void CChartObj3D::RibbonChart25D(const double* ind, const double* dep, double constValue, int n,
                                 double depthWidth, const RGBDType& fill, const RGBDType& outline,
                                 int depthJustify, int indAxis) {
    const detail::SetUp set(*this);
    set.Series(ind, n, constValue, indAxis);
    InitDepDataStorage(dep);
    m_Saved.m_DepthWidth = depthWidth;
    m_Saved.m_DepthJustify = depthJustify;
    set.Colors(fill, outline);
    m_Saved.m_ChartType = RIBBONCHART25D;
}

void CChartObj3D::RibbonChart25D(std::span<const double> ind, std::span<const double> dep,
                                 double constValue, double depthWidth, const RGBDType& fill,
                                 const RGBDType& outline, int depthJustify, int indAxis) {
    RibbonChart25D(ind.data(), dep.data(), constValue,
                   detail::CommonCount("RibbonChart25D", ind, dep), depthWidth, fill, outline,
                   depthJustify, indAxis);
}

void CChartObj3D::GroupRibbonChart25D(const double* ind, const double* groupData, double constValue,
                                      int n, int numGroups, double depthWidth,
                                      const RGBDType* groupColors, const RGBDType& outline,
                                      int depthJustify, int indAxis) {
    const detail::SetUp set(*this);
    set.Series(ind, n, constValue, indAxis);
    set.Groups(groupData, numGroups, groupColors);
    m_Saved.m_DepthWidth = depthWidth;
    m_Saved.m_DepthJustify = depthJustify;
    m_Saved.m_OutlineColor = outline;
    m_Saved.m_ChartType = GROUPRIBBONCHART25D;
}

void CChartObj3D::GroupRibbonChart25D(std::span<const double> ind,
                                      std::span<const double> groupData, double constValue,
                                      double depthWidth, std::span<const RGBDType> groupColors,
                                      const RGBDType& outline, int depthJustify, int indAxis) {
    const auto [n, numGroups] =
        detail::GroupCounts("GroupRibbonChart25D", ind, groupData, groupColors);
    GroupRibbonChart25D(ind.data(), groupData.data(), constValue, n, numGroups, depthWidth,
                        detail::DataOf(groupColors), outline, depthJustify, indAxis);
}

void detail::ChartDrawing::DrawRibbonChart25D() const {
    m_pOpenGL->SetFillStyle3D(m_Saved.m_FillColor, m_Saved.m_FillColor, m_Saved.m_OutlineColor);
    m_pOpenGL->SetLineWidth3D(m_Saved.m_OutlineWidth);
    if (m_Saved.m_OutlineMode == 0 || m_Added.m_SegmentOutlines != 0) {
        detail::WalkRibbon(*m_pTransform, GetData25D(), [this](std::size_t i, const auto& points) {
            CheckSetSegmentColor(i);
            m_pOpenGL->PolyFillAbs3D(points.data(), 5);
        });
        return;
    }
    RibbonEdge edge(*m_pOpenGL, *m_pTransform);
    m_pOpenGL->SetFrameFilled(0);
    detail::WalkRibbon(*m_pTransform, GetData25D(), [&](std::size_t i, const auto& points) {
        CheckSetSegmentColor(i);
        m_pOpenGL->PolyFillAbs3D(points.data(), 5);
        edge.Add(i, points.data());
    });
    m_pOpenGL->SetLineStyle3D(LINE_SOLID, m_Saved.m_OutlineWidth, m_Saved.m_OutlineColor);
    edge.Draw();
    m_pOpenGL->SetFrameFilled(m_Saved.m_OutlineMode);
}

void detail::ChartDrawing::DrawGroupRibbonChart25D() const {
    const detail::Origin origin{ERR3DCLASS_CHARTOBJ3D, "DrawGroupRibbonChart25D"};
    const detail::Data25D data = GetData25D();
    const std::size_t n = data.ind.size();
    const std::size_t numGroups = data.groups.StoredGroups();
    if (n == 0 || numGroups == 0) return;

    const auto totals = detail::NewArray<double>(static_cast<long long>(n), origin);
    const auto heights = detail::NewArray<double>(static_cast<long long>(n), origin);
    for (std::size_t g = 0; g < numGroups; ++g) {
        for (std::size_t i = 0; i < n; ++i) {
            const double datum = data.groups.At(g, i);
            if (detail::IsData(datum)) totals[i] += datum;
            heights[i] =
                detail::IsData(datum) ? totals[i] : std::numeric_limits<double>::quiet_NaN();
        }
        // A ribbon of its own: default gap and outline mode whatever this object's are, and one
        // chart object more in the count.
        const auto ribbon = detail::NewObject<CChartObj3D>(origin, m_pOpenGL, m_pTransform);
        ribbon->SetOutlineWidth(m_Saved.m_OutlineWidth);
        ribbon->m_Added = m_Added;
        ribbon->RibbonChart25D(data.ind.data(), heights.get(), m_Saved.m_ConstValue,
                               static_cast<int>(n), m_Saved.m_DepthWidth, m_Object.GroupColor(g),
                               m_Saved.m_OutlineColor, m_Saved.m_DepthJustify, m_Saved.m_IndAxis);
        ChartDrawing(*ribbon).DrawRibbonChart25D();
    }
}

}  // namespace varnel
