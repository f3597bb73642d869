// Contour charts: pieces of polygons as CContour3D draws them, or whole lines with labels.
#include <algorithm>
#include <cmath>
#include <numeric>
#include <vector>

#include "varnel/axes/text_object.h"
#include "varnel/chartobj/detail/chart_drawing.h"
#include "varnel/chartobj/detail/common_count.h"
#include "varnel/chartobj/detail/extent.h"
#include "varnel/chartobj/detail/hiding_surfaces.h"
#include "varnel/chartobj/detail/screen.h"
#include "varnel/chartobj/detail/set_up.h"
#include "varnel/foundation/detail/diagnose.h"
#include "varnel/foundation/detail/raise.h"
#include "varnel/render/opengl.h"
#include "varnel/surface/contour.h"
#include "varnel/surface/contour_lines.h"
#include "varnel/surface/detail/contour_labels.h"
#include "varnel/surface/detail/polygon_reader.h"
#include "varnel/surface/polysurface.h"

namespace varnel {
namespace {

using detail::ScreenPoint;

/// The lines of a surface in working coordinates, level after level.
ContourLines TraceWorking(const CPolysurface& surface, const CTransform3D& t,
                          std::vector<double> levels) {
    const bool linear =
        t.GetAxisScaleMode(0) == 0 && t.GetAxisScaleMode(1) == 0 && t.GetAxisScaleMode(2) == 0;
    if (linear) return TraceContourLines(surface, levels);
    // Traced where the surface is drawn, so that the lines lie on it.
    CPolysurface working(surface);
    t.C3DATWS(working.GetPSPoints(), working.GetPSNumPoints());
    for (double& level : levels)
        level = level > 0.0 || t.GetAxisScaleMode(2) == 0
                    ? t.CVTWS(2, level)
                    : -std::numeric_limits<double>::infinity();
    return TraceContourLines(working, levels);
}

/// How many of the levels, in their order, are drawn: a thousand levels across a thousand polygons
/// are a million pieces of lines.
std::size_t LevelsThatFit(const CPolysurface& surface, std::span<const double> levels) {
    const auto numPolygons = static_cast<std::size_t>(surface.GetPSNumPolygons());
    const std::size_t most = 1'000'000 + 64 * numPolygons;
    if (levels.size() * numPolygons <= most) return levels.size();
    std::vector<double> sorted(levels.begin(), levels.end());
    std::erase_if(sorted, [](double level) { return std::isnan(level); });
    std::sort(sorted.begin(), sorted.end());
    // By the place of a level: how many polygons begin there to be crossed, less those that end.
    std::vector<std::ptrdiff_t> crossed(sorted.size() + 1, 0);
    const auto place = [&sorted](double z) {
        return static_cast<std::size_t>(std::lower_bound(sorted.begin(), sorted.end(), z) -
                                        sorted.begin());
    };
    detail::PolygonReader reader(surface);
    for (int i = 0; i < surface.GetPSNumPolygons(); ++i) {
        int n = 0;
        const int* const polygon = reader.Read(i, n);
        if (n == 0) continue;
        const auto z = [&](int k) { return surface.GetPSPoints()[polygon[k]].z; };
        double low = z(0);
        double high = low;
        for (int k = 1; k < n; ++k) {
            low = std::min(low, z(k));
            high = std::max(high, z(k));
        }
        ++crossed[place(low)];
        --crossed[std::min(place(high) + 1, sorted.size())];
    }
    std::partial_sum(crossed.begin(), crossed.end(), crossed.begin());
    std::size_t pieces = 0;
    for (std::size_t i = 0; i < levels.size(); ++i) {
        pieces += static_cast<std::size_t>(crossed[place(levels[i])]);
        if (pieces <= most) continue;
        detail::Diagnose("DrawContourPolysurface3D", "the contours of ", levels.size(),
                         " levels have more than ", most, " pieces: ", i, " levels are drawn");
        return i;
    }
    return levels.size();
}

point3Dtype Between(const point3Dtype& p, const point3Dtype& q, double part) {
    return {p.x + part * (q.x - p.x), p.y + part * (q.y - p.y), p.z + part * (q.z - p.z), 0.0};
}

/// Draws lines with their labels.
class ContourPen {
 public:
    /// `hidden` tells what surfaces hide, null: nothing.
    ContourPen(COpenGL& gl, CTransform3D& transform, const ContourStyle& style,
               const detail::Screen& screen, const detail::NearestDepths* hidden)
        : m_GL(gl), m_Transform(transform), m_Style(style), m_Screen(screen), m_Hidden(hidden) {}

    /// The points of a line, the first again at the end of a closed one.
    void Add(std::vector<point3Dtype> points, double level, const RGBDType& color) {
        m_Lines.push_back({std::move(points), {}, level, color});
    }

    void Draw() {
        const std::vector<detail::LineLabel> labels =
            m_Style.labels != 0 ? PlaceLabels() : std::vector<detail::LineLabel>();
        for (std::size_t i = 0; i < m_Lines.size(); ++i)
            DrawLine(m_Lines[i], i, labels);
        if (m_Text == nullptr) return;
        for (const detail::LineLabel& label : labels)
            DrawLabel(label);
        m_GL.LoadMatrixTransform(m_Transform.GetGraphTransform());
    }

 private:
    struct Line {
        std::vector<point3Dtype> points;
        std::vector<ScreenPoint> pixels;
        double level;
        RGBDType color;
    };

    std::vector<detail::LineLabel> PlaceLabels() {
        m_Text = detail::NewObject<CTextObj3D>({ERR3DCLASS_CHARTOBJ3D, "DrawContourPolysurface3D"},
                                               &m_GL, m_GL.GetFont(), &m_Transform, CString());
        m_Text->SetCharSize(m_Style.labelSize);
        m_Text->SetJustify(1, 1);
        m_Text->SetTextPlane(TEXTPLANE_VIEWER);
        std::vector<detail::ScreenLine> lines;
        for (Line& line : m_Lines) {
            for (const point3Dtype& p : line.points)
                line.pixels.push_back(m_Screen.Pixel(p));
            m_Text->SetString(detail::Say(line.level));
            lines.push_back({line.pixels,
                             m_Text->TextWidth() * m_Style.labelSize * m_Screen.GetWidth() / 2,
                             m_Text->TextHeight() * m_Style.labelSize * m_Screen.GetHeight() / 2});
        }
        detail::LabelRules rules{m_Screen.GetWidth(), m_Screen.GetHeight()};
        if (m_Style.labelSpacing > 0.0) rules.spacing = m_Style.labelSpacing;
        if (m_Hidden != nullptr)
            rules.isSeen = [this](const detail::LineLabel& label) { return IsSeen(label); };
        return detail::PlaceLabels(lines, rules);
    }

    /// The line without the gaps of its labels, which stand along it in any order.
    void DrawLine(const Line& line, std::size_t number,
                  const std::vector<detail::LineLabel>& labels) {
        std::vector<detail::Extent> gaps;
        for (const detail::LineLabel& label : labels)
            if (label.line == number) gaps.push_back({label.from, label.to});
        std::sort(gaps.begin(), gaps.end(),
                  [](const auto& a, const auto& b) { return a.from < b.from; });
        m_GL.SetFillStyle3D(line.color, line.color, line.color);
        m_GL.SetLineStyle3D(m_Style.lineStyle, m_Style.lineWidth, line.color);
        double length = 0.0;  // so far, in pixels
        std::size_t gap = 0;
        m_Run.assign(1, line.points.front());
        for (std::size_t i = 1; i < line.points.size(); ++i) {
            const point3Dtype& p = line.points[i - 1];
            const point3Dtype& q = line.points[i];
            const double step = gaps.empty() ? 0.0
                                             : std::hypot(line.pixels[i].x - line.pixels[i - 1].x,
                                                          line.pixels[i].y - line.pixels[i - 1].y);
            // A gap begins, ends, or does both on this piece.
            while (gap < gaps.size()) {
                if (gaps[gap].from >= length && gaps[gap].from < length + step) {
                    m_Run.push_back(Between(p, q, (gaps[gap].from - length) / step));
                    DrawRun();
                }
                if (gaps[gap].to >= length + step) break;
                if (gaps[gap].to >= length)
                    m_Run.assign(1, Between(p, q, (gaps[gap].to - length) / step));
                ++gap;
            }
            length += step;
            const bool inGap = gap < gaps.size() && gaps[gap].from < length;
            if (!inGap) m_Run.push_back(q);
        }
        DrawRun();
    }

    void DrawRun() {
        if (m_Run.size() > 1) {
            m_GL.StartLineAbs3D(m_Run.front());
            for (std::size_t i = 1; i + 1 < m_Run.size(); ++i)
                m_GL.AppendLineAbs3D(m_Run[i]);
            m_GL.EndLineAbs3D(m_Run.back());
        }
        m_Run.clear();
    }

    /// The middle of a label's gap on the line itself, brought in front of what it lies on.
    point3Dtype PlaceOf(const detail::LineLabel& label) const {
        const Line& line = m_Lines[label.line];
        point3Dtype place = line.points.back();
        double length = 0.0;
        const double middle = (label.from + label.to) / 2;
        for (std::size_t i = 1; i < line.points.size(); ++i) {
            const double step = std::hypot(line.pixels[i].x - line.pixels[i - 1].x,
                                           line.pixels[i].y - line.pixels[i - 1].y);
            if (length + step >= middle && step > 0.0) {
                place = Between(line.points[i - 1], line.points[i], (middle - length) / step);
                break;
            }
            length += step;
        }
        // A label stands upright on what can be a slope: its lower edge is not to sink in.
        const point3Dtype way =
            m_Screen.Towards(kLabelLift + 1.5 * m_Text->TextHeight() * m_Style.labelSize);
        return {place.x + way.x, place.y + way.y, place.z + way.z, 0.0};
    }

    bool IsSeen(const detail::LineLabel& label) const {
        constexpr double kDegrees = 57.29577951308232;
        const double c = std::cos(label.angle / kDegrees);
        const double s = std::sin(label.angle / kDegrees);
        const double along = (label.to - label.from) / 2;
        const double across = label.height / 2;
        return !m_Hidden->IsNearerIn(label.center, {c * along, s * along},
                                     {-s * across, c * across}, m_Screen.Depth(PlaceOf(label)));
    }

    void DrawLabel(const detail::LineLabel& label) {
        const Line& line = m_Lines[label.line];
        point3Dtype data;
        m_Transform.CPFWS(data, PlaceOf(label));
        m_Text->SetString(detail::Say(line.level));
        m_Text->SetColor(line.color);
        m_Text->SetRotation(m_Screen.TextRotation(label.angle));
        m_Text->SetLocation(data);
        m_Text->OutText();
    }

    static constexpr double kLabelLift = 0.005;  // device units

    COpenGL& m_GL;
    CTransform3D& m_Transform;
    const ContourStyle& m_Style;
    const detail::Screen& m_Screen;
    const detail::NearestDepths* m_Hidden;
    std::vector<Line> m_Lines;
    std::vector<point3Dtype> m_Run;
    std::unique_ptr<CTextObj3D> m_Text;
};

}  // namespace

void CChartObj3D::ContourPolysurface3D(CPolysurface* surface, const double* values,
                                       const RGBDType* colors, int numContours, double constValue,
                                       int contourLabelFlag) {
    const detail::SetUp set(*this);
    m_Saved.m_ContourLabelFlag = contourLabelFlag;
    m_Saved.m_ConstValue = constValue;
    m_Saved.m_ChartType = CONTOURPOLYSURFACE3D;
    SetContourStorage(surface, values, colors, numContours);
}

void CChartObj3D::ContourPolysurface3D(CPolysurface* surface, std::span<const double> values,
                                       std::span<const RGBDType> colors, double constValue,
                                       int contourLabelFlag) {
    ContourPolysurface3D(surface, values.data(), detail::DataOf(colors),
                         detail::ContourCount("ContourPolysurface3D", values, colors), constValue,
                         contourLabelFlag);
}

void detail::ChartDrawing::DrawContourPolysurface3D() const {
    const auto levels = m_Saved.m_pIndData.First(m_Saved.m_NumContours);
    const auto colors = m_Saved.m_pSegmentColors.First(m_Saved.m_NumContours);
    if (m_Saved.m_pPolysurface == nullptr) return;
    const std::size_t numLevels = LevelsThatFit(
        *m_Saved.m_pPolysurface, levels.first(std::min(levels.size(), colors.size())));
    if (numLevels == 0) return;
    if (m_Added.m_Contours != 0) return DrawContourLines(levels.first(numLevels), colors);
    // Making the object draws everything.
    const auto contour = detail::NewObject<CContour3D>(
        {ERR3DCLASS_CHARTOBJ3D, "DrawContourPolysurface3D"}, m_pOpenGL, m_pTransform,
        m_Saved.m_pPolysurface.get(), levels.data(), colors.data(), static_cast<int>(numLevels),
        m_Saved.m_ConstValue, m_Saved.m_ContourLabelFlag);
}

void detail::ChartDrawing::DrawContourLines(std::span<const double> levels,
                                            std::span<const RGBDType> colors) const {
    const ContourStyle style = m_Object.GetContourStyle();
    const ContourLines traced = TraceWorking(*m_Saved.m_pPolysurface, *m_pTransform,
                                             std::vector<double>(levels.begin(), levels.end()));
    const detail::Screen screen(*m_pOpenGL, *m_pTransform);
    // Device units, which keep lines clear of the surface: of slopes in their whole width.
    constexpr double kLift = 0.004, kSteep = 3.0;
    const double width = std::max(style.lineWidth, 0.0) * m_pOpenGL->GetLineUnit();
    const point3Dtype lift = screen.Towards(kLift + kSteep * width / screen.GetHeight());
    const double plane = detail::Convert(*m_pTransform, 2, m_Saved.m_ConstValue);
    const detail::NearestDepths* hidden = nullptr;
    if (style.labels != 0 && m_Added.m_HiddenBy != nullptr)
        hidden = &m_Added.m_HiddenBy->On(screen);
    ContourPen pen(*m_pOpenGL, *m_pTransform, style, screen, hidden);
    for (const ContourLine& line : traced.lines) {
        const auto first = traced.points.begin() + static_cast<std::ptrdiff_t>(line.first);
        std::vector<point3Dtype> points(first, first + static_cast<std::ptrdiff_t>(line.count));
        if (line.closed) points.push_back(points.front());
        for (point3Dtype& p : points) {
            if (style.onSurface != 0)
                p = {p.x + lift.x, p.y + lift.y, p.z + lift.z, 0.0};
            else
                p.z = plane;
        }
        const auto level = static_cast<std::size_t>(line.level);
        pen.Add(std::move(points), levels[level], colors[level]);
    }
    pen.Draw();
    m_pOpenGL->SetLineStyle3D(0, 1.0, m_Saved.m_OutlineColor);
}

void CChartObj3D::SetContourStyle(const ContourStyle& style) {
    m_Added.m_Contours = 1;
    m_Added.m_ContourLineWidth = style.lineWidth;
    m_Added.m_ContourLineStyle = style.lineStyle;
    m_Added.m_ContourOnSurface = style.onSurface;
    m_Added.m_ContourLabels = style.labels;
    m_Added.m_ContourLabelSize = style.labelSize;
    m_Added.m_ContourLabelSpacing = style.labelSpacing;
}

ContourStyle CChartObj3D::GetContourStyle() const {
    return {m_Added.m_ContourLineWidth, m_Added.m_ContourLineStyle, m_Added.m_ContourOnSurface,
            m_Added.m_ContourLabels,    m_Added.m_ContourLabelSize, m_Added.m_ContourLabelSpacing};
}

void CChartObj3D::ClearContourStyle() {
    m_Added.m_Contours = 0;
}

}  // namespace varnel
