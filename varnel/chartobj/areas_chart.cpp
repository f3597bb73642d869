#include <cmath>
#include <vector>

#include "varnel/chartobj/detail/areas_geometry.h"
#include "varnel/chartobj/detail/chart_drawing.h"
#include "varnel/chartobj/detail/common_count.h"
#include "varnel/chartobj/detail/seams.h"
#include "varnel/chartobj/detail/set_up.h"
#include "varnel/foundation/detail/named_colors.h"
#include "varnel/render/opengl.h"

namespace varnel {
namespace {

constexpr int kAllFaces[6] = {1, 1, 1, 1, 1, 1};

// Draws the solids of one or more bands, each by itself or joined to its neighbours.
class BandPen {
    struct Band {
        detail::SeamedBand solids;
        RGBDType fill, outline;  // of the solid that waits
    };

    auto Drawing(const Band& band) {
        return [&](const detail::SolidCorners& corners, const std::array<int, 6>& flags) {
            m_GL.DrawSolidObject3D(corners.data(), band.fill, band.outline, flags.data());
        };
    }

 public:
    BandPen(COpenGL& gl, const CTransform3D& transform, int indAxis, bool joined)
        : m_GL(gl),
          m_IndAlongY(indAxis == 1),
          // Where an area touches its base, edges are lowered by a fifth of a percent.
          m_Nearness(std::abs(transform.GetWorkingRange().z) / 250.0),
          m_Joined(joined) {}

    void Add(std::size_t band, const detail::SolidCorners& corners, const RGBDType& fill,
             const RGBDType& outline) {
        if (!m_Joined) return m_GL.DrawSolidObject3D(corners.data(), fill, outline, kAllFaces);
        while (m_Bands.size() <= band)
            m_Bands.push_back({detail::SeamedBand(m_IndAlongY, m_Nearness), {}, {}});
        Band& to = m_Bands[band];
        to.solids.Add(corners, Drawing(to));
        to.fill = fill;
        to.outline = outline;
    }
    void End() {
        for (Band& band : m_Bands)
            band.solids.End(Drawing(band));
    }

 private:
    COpenGL& m_GL;
    bool m_IndAlongY;
    double m_Nearness;
    bool m_Joined;
    std::vector<Band> m_Bands;
};

}  // namespace

void CChartObj3D::AreaFillChart25D(const double* ind, const double* dep, double baseValue,
                                   double constValue, int n, double depthWidth,
                                   const RGBDType& fill, const RGBDType& outline, int depthJustify,
                                   int indAxis) {
    const detail::SetUp set(*this);
    set.Series(ind, n, constValue, indAxis);
    InitDepDataStorage(dep);
    m_Saved.m_BaseValue = baseValue;
    m_Saved.m_DepthWidth = depthWidth;
    m_Saved.m_DepthJustify = depthJustify;
    set.Colors(fill, outline);
    m_Saved.m_ChartType = AREAFILLCHART25D;
}

void CChartObj3D::AreaFillChart25D(std::span<const double> ind, std::span<const double> dep,
                                   double baseValue, double constValue, double depthWidth,
                                   const RGBDType& fill, const RGBDType& outline, int depthJustify,
                                   int indAxis) {
    AreaFillChart25D(ind.data(), dep.data(), baseValue, constValue,
                     detail::CommonCount("AreaFillChart25D", ind, dep), depthWidth, fill, outline,
                     depthJustify, indAxis);
}

void CChartObj3D::AreaRangeChart25D(const double* ind, const double* dep, const double* dep2,
                                    double constValue, int n, double depthWidth,
                                    const RGBDType& fill, const RGBDType& outline, int depthJustify,
                                    int indAxis) {
    const detail::SetUp set(*this);
    set.Series(ind, n, constValue, indAxis);
    InitDepDataStorage(dep);
    InitDepData2Storage(dep2);
    m_Saved.m_DepthWidth = depthWidth;
    m_Saved.m_DepthJustify = depthJustify;
    set.Colors(fill, outline);
    m_Saved.m_ChartType = AREARANGECHART25D;
}

void CChartObj3D::AreaRangeChart25D(std::span<const double> ind, std::span<const double> dep,
                                    std::span<const double> dep2, double constValue,
                                    double depthWidth, const RGBDType& fill,
                                    const RGBDType& outline, int depthJustify, int indAxis) {
    AreaRangeChart25D(ind.data(), dep.data(), dep2.data(), constValue,
                      detail::CommonCount("AreaRangeChart25D", ind, dep, dep2), depthWidth, fill,
                      outline, depthJustify, indAxis);
}

void CChartObj3D::GroupAreaFillChart25D(const double* ind, const double* groupData,
                                        double constValue, int n, int numGroups, double depthWidth,
                                        const RGBDType* groupColors, const RGBDType& outline,
                                        int depthJustify, int indAxis) {
    const detail::SetUp set(*this);
    set.Series(ind, n, constValue, indAxis);
    set.Groups(groupData, numGroups, groupColors);
    m_Saved.m_DepthWidth = depthWidth;
    m_Saved.m_DepthJustify = depthJustify;
    m_Saved.m_OutlineColor = outline;
    m_Saved.m_ChartType = GROUPAREAFILLCHART25D;
}

void CChartObj3D::GroupAreaFillChart25D(std::span<const double> ind,
                                        std::span<const double> groupData, double constValue,
                                        double depthWidth, std::span<const RGBDType> groupColors,
                                        const RGBDType& outline, int depthJustify, int indAxis) {
    const auto [n, numGroups] =
        detail::GroupCounts("GroupAreaFillChart25D", ind, groupData, groupColors);
    GroupAreaFillChart25D(ind.data(), groupData.data(), constValue, n, numGroups, depthWidth,
                          detail::DataOf(groupColors), outline, depthJustify, indAxis);
}

void detail::ChartDrawing::DrawAreaFillChart25D() const {
    const detail::SegmentColors colors = GetSegmentColors();
    m_pOpenGL->SetFillStyle3D(m_Saved.m_FillColor, kBlack, m_Saved.m_FillColor);
    m_pOpenGL->SetLineWidth3D(m_Saved.m_OutlineWidth);
    BandPen pen(*m_pOpenGL, *m_pTransform, m_Saved.m_IndAxis, m_Added.m_SegmentOutlines == 0);
    detail::WalkAreaFill(*m_pTransform, GetData25D(), [&](std::size_t piece, const auto& corners) {
        // Numbered by pieces, so that colours move on by one at each cut.
        pen.Add(0, corners, colors.At(piece, m_Saved.m_FillColor), m_Saved.m_OutlineColor);
    });
    pen.End();
}

void detail::ChartDrawing::DrawAreaRangeChart25D() const {
    const RGBDType color =
        m_Saved.m_SegmentColorMode != 0 ? m_Object.GetAreaRangeColor() : m_Saved.m_FillColor;
    m_pOpenGL->SetFillStyle3D(m_Saved.m_FillColor, kBlack, m_Saved.m_FillColor);
    m_pOpenGL->SetLineWidth3D(m_Saved.m_OutlineWidth);
    BandPen pen(*m_pOpenGL, *m_pTransform, m_Saved.m_IndAxis, m_Added.m_SegmentOutlines == 0);
    detail::WalkAreaRange(*m_pTransform, GetData25D(), [&](std::size_t, const auto& corners) {
        pen.Add(0, corners, color, m_Saved.m_OutlineColor);
    });
    pen.End();
}

void detail::ChartDrawing::DrawGroupAreaFillChart25D() const {
    m_pOpenGL->SetLineWidth3D(m_Saved.m_OutlineWidth);
    BandPen pen(*m_pOpenGL, *m_pTransform, m_Saved.m_IndAxis, m_Added.m_SegmentOutlines == 0);
    detail::WalkGroupAreas(
        *m_pTransform, GetData25D(), [&](std::size_t, std::size_t group, const auto& corners) {
            pen.Add(group, corners, m_Object.GroupColor(group), m_Saved.m_OutlineColor);
        });
    pen.End();
}

}  // namespace varnel
