// CChart3D: drawing.
#include <algorithm>
#include <map>
#include <memory>
#include <utility>
#include <vector>

#include "varnel/axes/axes.h"
#include "varnel/axes/text_object.h"
#include "varnel/bitmap/dib_object.h"
#include "varnel/chart/chart.h"
#include "varnel/chart/detail/border.h"
#include "varnel/chart/header.h"
#include "varnel/chartobj/chart_object.h"
#include "varnel/chartobj/detail/hiding_surfaces.h"
#include "varnel/foundation/detail/diagnose.h"
#include "varnel/foundation/detail/progress.h"
#include "varnel/render/opengl.h"
#include "varnel/solids/aux_object.h"
#include "varnel/surface/polysurface.h"
#include "varnel/transform/transform.h"

namespace varnel {
namespace {

bool ShowsSomething(const CAxes3D& axes) {
    bool shows = false;
    for (int axis = 0; axis < 3; ++axis)
        shows = shows || axes.GetAxisEnable(axis) != 0 || axes.GetAxisLabelsEnable(axis) != 0;
    for (int plane = 0; plane < 6; ++plane)
        shows = shows || axes.GetWallEnable(plane) != 0 || axes.GetGridEnable(plane) != 0;
    return shows;
}

/// Widths of lines times a factor; as given again afterwards, also when drawing is broken off.
class WidthScope {
 public:
    WidthScope(COpenGL& gl, double factor) : m_GL(gl) { m_GL.SetWidthFactor(factor); }
    ~WidthScope() { m_GL.SetWidthFactor(1.0); }
    WidthScope(const WidthScope&) = delete;
    WidthScope& operator=(const WidthScope&) = delete;

 private:
    COpenGL& m_GL;
};

/// How the chart's lines and colours by value are drawn, until it is drawn.
class StyleScope {
 public:
    StyleScope(COpenGL& gl, int lineAreas, int noDataGrey) : m_GL(gl) {
        m_GL.SetLineAreas(lineAreas);
        m_GL.SetNoDataGrey(noDataGrey);
    }
    ~StyleScope() {
        m_GL.SetLineAreas(0);
        m_GL.SetNoDataGrey(0);
    }
    StyleScope(const StyleScope&) = delete;
    StyleScope& operator=(const StyleScope&) = delete;

 private:
    COpenGL& m_GL;
};

bool HidesWhatIsBehind(const CChartObj3D& object) {
    const int type = object.GetChartType();
    const CPolysurface* const surface = object.GetPolysurface();
    return (type == POLYSURFACECHART3D || type == POLYSURFACECHART2D) && surface != nullptr &&
           surface->GetWireFrame() == 0 && object.GetChartObjEnable() != 0;
}

/// Labels of contour charts know what hides them, while the chart is drawn.
class HidingScope {
 public:
    explicit HidingScope(const ObjectList<CChartObj3D>& objects) {
        std::map<const CTransform3D*, std::vector<const CChartObj3D*>> surfaces;
        for (const auto& object : objects)
            if (HidesWhatIsBehind(*object))
                surfaces[object->GetTransform()].push_back(object.get());
        std::map<const CTransform3D*, std::shared_ptr<detail::HidingSurfaces>> hiding;
        for (auto& [transform, list] : surfaces)
            hiding[transform] = std::make_shared<detail::HidingSurfaces>(std::move(list));
        for (const auto& object : objects) {
            const auto found = hiding.find(object->GetTransform());
            if (object->GetChartType() != CONTOURPOLYSURFACE3D || found == hiding.end()) continue;
            m_Told.push_back(object.get());
            object->SetHiddenBy(found->second);
        }
    }
    ~HidingScope() {
        for (CChartObj3D* object : m_Told)
            object->SetHiddenBy(nullptr);
    }
    HidingScope(const HidingScope&) = delete;
    HidingScope& operator=(const HidingScope&) = delete;

 private:
    std::vector<CChartObj3D*> m_Told;
};

/// A part of a chart's drawing, as fractions of the whole.
template <class Draw>
void Stage(double from, double to, Draw&& draw) {
    const detail::ProgressPart part(from, to);
    draw();
}

template <class T, class Draw>
void DrawEach(const ObjectList<T>& list, Draw&& draw) {
    const double all = list.GetCount();
    double done = 0.0;
    for (const auto& item : list) {
        detail::Progress(done, all);
        Stage(done / all, (done + 1.0) / all, [&] { draw(*item); });
        ++done;
    }
}

}  // namespace

void CChart3D::TellWhatDoesNotShow() const {
    if (GetDiagnostics() == 0) return;
    const bool objects = !m_Objects.objects.IsEmpty() || !m_Objects.texts.IsEmpty() ||
                         !m_Objects.solids.IsEmpty() || !m_Objects.pictures.IsEmpty();
    if (!objects && std::ranges::none_of(m_Objects.axes,
                                         [](const auto& axes) { return ShowsSomething(*axes); }))
        detail::Diagnose("DrawChart", "the chart has no data, and no axes that are enabled");
}

void CChart3D::DrawChart() {
    if (m_Saved.chartEnable == 0 || m_pOpenGL == nullptr) return;
    TellWhatDoesNotShow();
    SetChartPosition(m_Saved.position);
    SetupOpenGL();
    SetFontFactors();
    const StyleScope style(*m_pOpenGL, m_Added.lineAreas, m_Added.noDataGrey);
    if (m_Added.autoFit != AUTOFIT_OFF) FitToView();
    // Texts and bitmap planes are placed by the working limits, which follow from the transforms.
    for (const auto& transform : m_Objects.transforms)
        transform->ChartTransform();
    PlaceTexts();
    DrawHeader();
    Stage(0.0, 0.1, [this] { DrawAxes(); });
    Stage(0.1, 0.9, [this] { DrawChartObjs(); });
    Stage(0.9, 0.95, [this] { DrawAuxObjects(); });
    Stage(0.95, 1.0, [this] {
        DrawDIBObjects();
        DrawChartText();
        m_pOpenGL->DrawTransparent();
    });
}

void CChart3D::UpdateTransforms() {
    if (m_pOpenGL == nullptr) return;
    SetChartPosition(m_Saved.position);
    m_pOpenGL->SetViewport(m_Saved.viewport);
    for (const auto& transform : m_Objects.transforms)
        transform->ChartTransform();
}

void CChart3D::SetupOpenGL() {
    m_pOpenGL->LoadIdentity();
    m_pOpenGL->SetViewport(m_Saved.viewport);
    m_pOpenGL->SetClearColor(m_Saved.bkColor.r, m_Saved.bkColor.g, m_Saved.bkColor.b, 0.0);
    m_pOpenGL->Clear(CLEAR_COLOR_AND_DEPTH);
    if (m_Saved.borderEnable != 0) DrawBorder();
    SetupLight();
    if (m_Saved.textureMode >= 0) {
        m_pOpenGL->SetTextureMode(m_Saved.textureMode);
        m_pOpenGL->SetTextureColorArray(m_Saved.textureColors.data(), m_Saved.textureMin,
                                        m_Saved.textureMax, m_Saved.numTextureColors);
    }
}

/// Charts of one view share the light: without loading it, each would have the last one's.
void CChart3D::SetupLight() {
    const bool own = m_Added.viewLight != 0;
    const auto grey = [](double v) { return SetRGBD(v, v, v, 1.0); };
    const RGBDType common = m_pOpenGL->GetLightComponent(LIGHT_AMBIENT);
    // A position of the light has y towards the viewer and z up.
    const point3Dtype& d = m_Added.lightDirection;
    m_pOpenGL->SetLightPosition(own ? point3Dtype{d.x, d.z, d.y, 0.0} : m_Saved.lightPosition);
    m_pOpenGL->LoadLight(LIGHT_POSITION);
    m_pOpenGL->SetLightComponent(LIGHT_MODEL_AMBIENT,
                                 own ? grey(m_Added.lightAmbient) : m_Saved.ambientLight);
    m_pOpenGL->SetLightComponent(LIGHT_DIFFUSE,
                                 own ? grey(m_Added.lightDiffuse) : m_Saved.diffuseLight);
    if (own) m_pOpenGL->SetLightComponent(LIGHT_AMBIENT, grey(0.0));
    m_pOpenGL->LoadLight(LIGHT_AMBIENT);
    m_pOpenGL->LoadLight(LIGHT_DIFFUSE);
    m_pOpenGL->SetLightComponent(LIGHT_AMBIENT, common);
    m_pOpenGL->SetLightLimit(m_Added.lightLimit);
    m_pOpenGL->SetGloss(own ? m_Added.lightSpecular : 0.0, m_Added.lightShininess);
}

void CChart3D::DrawBorder() {
    detail::DrawViewportBorder(*m_pOpenGL, m_Saved.viewport.width, m_Saved.viewport.height,
                               m_Saved.borderThickness, m_Saved.borderColor);
}

void CChart3D::DrawHeader() {
    m_pHeader->SetViewAspect(m_Saved.viewportAspect * m_Saved.viewAspect);
    // Where the chart is higher than wide, its text is as large as if it were a square.
    const double size = m_Added.autoText != 0 ? std::min(1.0, 1.0 / m_Saved.viewportAspect) : 1.0;
    m_pHeader->SetFitWidth(m_Added.autoText);
    // Over the plot, which legends beside it push out of the frame's middle.
    const GLViewportType& v = m_Saved.viewport;
    const bool isFitted =
        m_Added.autoText != 0 && m_Added.autoFit != AUTOFIT_OFF && !m_BoxArea.IsEmpty();
    m_pHeader->SetCenter(
        isFitted ? (m_BoxArea.left + m_BoxArea.right - 2.0 * v.x) / std::max(1, v.width) - 1.0
                 : 0.0);
    m_pHeader->SetRelSize(size * m_Saved.fontHeightSF);
    m_pHeader->DrawHeader();
}

void CChart3D::DrawAxes() {
    const WidthScope widths(*m_pOpenGL, m_Added.autoText != 0 ? GetTextSizes().lines : 1.0);
    DrawEach(m_Objects.axes, [](CAxes3D& axes) { axes.DrawAxes(); });
}

void CChart3D::DrawChartObjs() {
    const HidingScope hiding(m_Objects.objects);
    DrawEach(m_Objects.objects, [](CChartObj3D& object) { object.DrawChartObj(); });
}

void CChart3D::DrawAuxObjects() {
    DrawEach(m_Objects.solids, [](CAuxObj3D& object) { object.DrawAuxObj(); });
}

void CChart3D::DrawDIBObjects() {
    DrawEach(m_Objects.pictures, [](CDIBObj3D& object) { object.DrawDIBObj(); });
}

void CChart3D::DrawChartText() {
    DrawEach(m_Objects.texts, [](CTextObj3D& text) { text.OutText(); });
}

}  // namespace varnel
