// What legends take from the view that they lie over and from its charts.
#include <memory>
#include <vector>

#include "varnel/axes/text_object.h"
#include "varnel/chart/chart.h"
#include "varnel/chart/chart_view.h"
#include "varnel/foundation/detail/raise.h"
#include "varnel/legend/detail/legend_view.h"
#include "varnel/legend/legend.h"
#include "varnel/transform/transform.h"

namespace varnel {
namespace {

class LegendInView final : public detail::LegendView {
 public:
    explicit LegendInView(CChartView3D& view) : m_View(view) {}
    void GetSize(int& width, int& height) const override { m_View.GetViewSize(&width, &height); }
    void PrepareFont() const override { m_View.UseFont(); }
    void LendLight(const CChartObj3D* object, CLegendObj3D& entry) const override {
        for (int i = 0; i < m_View.GetNumCharts(); ++i)
            for (int k = 0; k < m_View.GetChart(i)->GetNumChartObjs(); ++k)
                if (m_View.GetChart(i)->GetChartObj(k) == object)
                    return entry.SetLight(m_View.GetChart(i));
    }

 private:
    CChartView3D& m_View;
};

}  // namespace

CLegend3D::CLegend3D(CChartView3D* view) : CLegend3D() {
    InitLegend3D(view);
}

void CLegend3D::InitLegend3D(CChartView3D* view) {
    constexpr detail::Origin at{ERR3DCLASS_LEGEND3D, "InitLegend3D"};
    detail::Require(view, ERR3D_CHARTVIEW_PARAMETER, at);
    detail::Require(view->GetOpenGLPntr(), ERR3D_OPENGL_PARAMETER, at);
    Bind(*view->GetOpenGLPntr(), detail::NewObject<LegendInView>(at, *view));
}

void CLegend3D::SetColorBar(const CChart3D* chart) {
    detail::Require(chart, ERR3D_PARAMETER, {ERR3DCLASS_LEGEND3D, "SetColorBar"});
    std::vector<RGBDType> colors(CChart3D::kTextureColors);
    double min = 0.0;
    double max = 0.0;
    chart->GetTextureColorArray(colors.data(), &min, &max);
    SetColorBar(colors.data(), chart->GetNumTextureColors(), min, max);
}

void CLegendObj3D::SetLight(const CChart3D* chart) {
    if (chart == nullptr) return;
    m_Saved.m_LightPosition = chart->GetLightPosition();
    m_Saved.m_DiffuseLight = chart->GetLightComponent(LIGHT_DIFFUSE);
    m_Saved.m_AmbientLight = chart->GetLightComponent(LIGHT_MODEL_AMBIENT);
}

}  // namespace varnel
