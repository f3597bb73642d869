// CChart3D: where texts that belong to points stand beside the markers of all data sets.
#include <algorithm>
#include <cmath>
#include <limits>
#include <optional>
#include <vector>

#include "varnel/axes/text_object.h"
#include "varnel/chart/chart.h"
#include "varnel/chart/detail/data_extent.h"
#include "varnel/chartobj/chart_object.h"
#include "varnel/chartobj/detail/screen.h"
#include "varnel/foundation/detail/diagnose.h"
#include "varnel/foundation/detail/less_work.h"
#include "varnel/layout/detail/place_texts.h"
#include "varnel/render/detail/text_measure.h"
#include "varnel/render/font.h"
#include "varnel/render/opengl.h"
#include "varnel/transform/transform.h"

namespace varnel {
namespace {

/// Of a line with more points than that, some are enough to find out where it runs.
constexpr int kMostLinePlaces = 10'000;

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

/// Rectangles; lines beyond them are in nobody's way. A picture is full of lines before.
constexpr std::size_t kMostRects = 500'000 / detail::kLessWork;

/// A line as rectangles of a few pixels.
void AddLine(const PixelPoint& from, const PixelPoint& to, std::vector<PixelRect>& places) {
    constexpr double kStep = 4.0;
    constexpr double kMostSteps = 1000.0;
    const double length = std::max(std::abs(to.x - from.x), std::abs(to.y - from.y));
    if (!std::isfinite(length) || places.size() >= kMostRects) return;
    const double steps = std::clamp(std::ceil(length / kStep), 1.0, kMostSteps);
    const auto at = [&](double k) {
        return PixelPoint{from.x + (to.x - from.x) * k / steps,
                          from.y + (to.y - from.y) * k / steps};
    };
    for (double k = 0.0; k < steps; ++k) {
        const PixelPoint a = at(k);
        const PixelPoint b = at(k + 1.0);
        places.push_back({std::min(a.x, b.x), std::min(a.y, b.y), std::max(a.x, b.x) + 1.0,
                          std::max(a.y, b.y) + 1.0});
    }
}

bool IsLine(int type) {
    return type == LINECHART25D || type == LINECHART3D;
}

/// How far a text is moved towards the viewer, in device units, so that no wall beside its point
/// cuts it: walls are seen at slopes up to that.
double TowardsViewer(const PixelRect& box, const PixelPoint& at, double depth, double side) {
    constexpr double kSlope = 2.0;
    constexpr double kNearest = -0.97;
    const double reach =
        std::max({at.x - box.left, box.right - at.x, at.y - box.bottom, box.top - at.y});
    return std::clamp(kSlope * reach / (side / 2.0), 0.0, std::max(0.0, depth - kNearest));
}

}  // namespace

/// Where lines run that join points, and those that lead from points to where they are projected.
std::vector<PixelRect> CChart3D::LinePlaces() const {
    std::vector<PixelRect> places;
    for (const auto& object : m_Objects.objects) {
        const int type = object->GetChartType();
        const int plane = object->GetProjectionPlane();
        const bool drops = (type == SCATTERTEXT3D || type == SCATTERCHART3D) && plane >= 0;
        if (object->GetTransform() == nullptr || object->GetChartObjEnable() == 0 ||
            !(IsLine(type) || drops))
            continue;
        const detail::Screen screen(*m_pOpenGL, *object->GetTransform());
        const auto pixel = [&](const point3Dtype& p) {
            const auto at = screen.Pixel(object->GetTransform()->CPTWS(p));
            return PixelPoint{at.x, at.y};
        };
        std::optional<PixelPoint> last;
        for (point3Dtype p : detail::PlacesOf(*object, kMostLinePlaces)) {
            const PixelPoint at = pixel(p);
            if (drops) {
                coordassign(p, 2 - plane % 3, object->GetConstValue());
                AddLine(at, pixel(p), places);
            } else if (last) {
                AddLine(*last, at, places);
            }
            last = at;
        }
    }
    return places;
}

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
    const auto chosen = detail::PlaceTexts(texts, MarkerPlaces(), room, kGap * em, LinePlaces());
    std::size_t next = 0;
    int leftOut = 0;
    for (CChartObj3D* object : owners) {
        // From the middle of a text that stands on its point.
        const double unit = emOf(*object);
        const detail::Screen screen(*m_pOpenGL, *object->GetTransform());
        std::vector<point3Dtype> shifts;
        for (int i = 0; i < object->GetNumDataPnts(); ++i, ++next) {
            const detail::TextToPlace& text = texts[next];
            const auto& box = chosen[next];
            shifts.push_back({0.0, 0.0, 0.0, box ? 1.0 : 0.0});
            if (box)
                shifts.back() = {
                    ((box->left + box->right) / 2 - text.at.x) / unit,
                    (box->bottom + text.descent - text.at.y) / unit,
                    TowardsViewer(
                        *box, text.at,
                        screen.Depth(object->GetTransform()->CPTWS(object->Get3DPoint(i))),
                        std::min(v.width, v.height)),
                    1.0};
            else if (!object->GetDataString(i).empty())
                ++leftOut;
        }
        object->SetTextShifts(std::move(shifts));
    }
    if (leftOut > 0)
        detail::Diagnose("DrawChart", "no free place beside its point: texts left out: ", leftOut);
}

}  // namespace varnel
