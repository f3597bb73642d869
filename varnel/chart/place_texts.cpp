// CChart3D: where texts that belong to points stand beside the markers of all data sets.
#include <algorithm>
#include <limits>
#include <vector>

#include "varnel/axes/text_object.h"
#include "varnel/chart/chart.h"
#include "varnel/chart/detail/data_extent.h"
#include "varnel/chartobj/chart_object.h"
#include "varnel/chartobj/detail/screen.h"
#include "varnel/foundation/detail/diagnose.h"
#include "varnel/layout/detail/place_texts.h"
#include "varnel/render/detail/text_measure.h"
#include "varnel/render/font.h"
#include "varnel/render/opengl.h"
#include "varnel/transform/transform.h"

namespace varnel {
namespace {

bool HasTextsToPlace(const CChartObj3D& object) {
    return object.GetChartType() == SCATTERTEXT3D && object.GetTextBeside() != 0 &&
           object.GetTransform() != nullptr && object.GetChartObjEnable() != 0;
}

/// Half the size of an object's markers or symbols, in pixels; 0 for one that has none.
double MarkerRadius(const CChartObj3D& object, double pixelsPerPoint, double pixelsPerUnit) {
    constexpr double kUnitsPerSize = 0.1;  // of the box, for a symbol of size 1
    const int type = object.GetChartType();
    if (object.GetMarker() != MARKER_NONE) return object.GetMarkerSize() * pixelsPerPoint / 2.0;
    if (type != SCATTERCHART3D || object.GetSymbol() == SYMBOL_NONE) return 0.0;
    return object.GetRelSize() * kUnitsPerSize * pixelsPerUnit / 2.0;
}

}  // namespace

/// What the markers and symbols of all data sets cover.
std::vector<PixelRect> CChart3D::MarkerPlaces() const {
    const double side = std::min(m_Saved.viewport.width, m_Saved.viewport.height);
    const double pixelsPerPoint = m_pOpenGL->GetResolution() / 72.0;
    std::vector<PixelRect> places;
    for (const auto& object : m_Objects.objects) {
        if (object->GetTransform() == nullptr || object->GetChartObjEnable() == 0) continue;
        const double radius = MarkerRadius(*object, pixelsPerPoint, side / 2.0);
        if (!(radius > 0.0)) continue;
        const detail::Screen screen(*m_pOpenGL, *object->GetTransform());
        for (const point3Dtype& p : detail::PlacesOf(*object, std::numeric_limits<int>::max())) {
            const auto at = screen.Pixel(object->GetTransform()->CPTWS(p));
            places.push_back({at.x - radius, at.y - radius, at.x + radius, at.y + radius});
        }
    }
    return places;
}

void CChart3D::PlaceTexts() {
    constexpr double kGap = 0.25;  // ems
    std::vector<CChartObj3D*> owners;
    for (const auto& object : m_Objects.objects)
        if (HasTextsToPlace(*object)) owners.push_back(object.get());
    const CFont3D* const font = m_pOpenGL->GetFont();
    if (owners.empty() || font == nullptr) return;
    const GLViewportType& v = m_Saved.viewport;
    const detail::TextMeasurer measurer(font->GetFace());
    std::vector<detail::TextToPlace> texts;
    double em = 0.0;
    const auto emOf = [&](const CChartObj3D& object) {
        const CTransform3D& t = *object.GetTransform();
        return font->GetFontScaleFactor() * t.GetFontHeightSF() * v.height / 2.0 *
               t.GetUnitScale().y * object.GetRelSize();
    };
    for (const CChartObj3D* object : owners) {
        const detail::Screen screen(*m_pOpenGL, *object->GetTransform());
        em = emOf(*object);
        for (int i = 0; i < object->GetNumDataPnts(); ++i) {
            const detail::TextSize size = measurer.Measure(object->GetDataString(i));
            const auto at = screen.Pixel(object->GetTransform()->CPTWS(object->Get3DPoint(i)));
            texts.push_back({{at.x, at.y},
                             size.width * em,
                             (size.height + size.descent) * em,
                             size.descent * em});
        }
    }
    PixelRect room{0.0, 0.0, 1.0 * v.width, 1.0 * v.height};
    if (!m_BoxArea.IsEmpty())
        room = {m_BoxArea.left - v.x, m_BoxArea.bottom - v.y, m_BoxArea.right - v.x,
                m_BoxArea.top - v.y};
    const auto chosen = detail::PlaceTexts(texts, MarkerPlaces(), room, kGap * em);
    std::size_t next = 0;
    int leftOut = 0;
    for (CChartObj3D* object : owners) {
        // From the middle of a text that stands on its point.
        const double unit = emOf(*object);
        std::vector<point3Dtype> shifts;
        for (int i = 0; i < object->GetNumDataPnts(); ++i, ++next) {
            const detail::TextToPlace& text = texts[next];
            const auto& box = chosen[next];
            shifts.push_back({0.0, 0.0, 0.0, box ? 1.0 : 0.0});
            if (box)
                shifts.back() = {((box->left + box->right) / 2 - text.at.x) / unit,
                                 (box->bottom + text.descent - text.at.y) / unit, 0.0, 1.0};
            else if (!object->GetDataString(i).empty())
                ++leftOut;
        }
        object->SetTextShifts(std::move(shifts));
    }
    if (leftOut > 0)
        detail::Diagnose("DrawChart", "no free place beside its point: texts left out: ", leftOut);
}

}  // namespace varnel
