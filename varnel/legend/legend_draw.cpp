// CLegend3D: measuring, placing and drawing.
#include <algorithm>
#include <cmath>

#include "varnel/foundation/detail/pixel_count.h"
#include "varnel/legend/detail/legend_layout.h"
#include "varnel/legend/detail/legend_painter.h"
#include "varnel/legend/detail/legend_scale.h"
#include "varnel/legend/detail/legend_view.h"
#include "varnel/legend/legend.h"
#include "varnel/platform/detail/gl_context.h"
#include "varnel/transform/transform.h"

namespace varnel {
namespace {

// The size of letters: a fraction of the view's height (of three quarters of its width, in a tall
// view), and no smaller than what can still be read.
constexpr double kEm = 0.033;
constexpr double kLeastEm = 9.0;  // pixels
constexpr double kTitleSize = 1.1;

constexpr double kFillSample = 1.5;  // width of rectangles and symbols in ems
constexpr double kLineSample = 2.2;  // of lines,
constexpr double kLeastLine = 34.0;  // and in pixels: a stipple pattern is 16 long, twice is enough

constexpr double kAmpleGap = 0.7;  // ems

double Finite(double value, double otherwise, double least, double most) {
    return std::isfinite(value) ? std::clamp(value, least, most) : otherwise;
}

/// A fraction of a view's side, in pixels; 0 when it says that the contents decide.
double FixedSide(double fraction, int side) {
    if (!std::isfinite(fraction) || fraction <= 0.0) return 0.0;
    return std::clamp(std::round(fraction * side), 1.0, static_cast<double>(side));
}

/// Measures texts in ems while it lives.
class TextMeasure {
 public:
    TextMeasure(COpenGL& gl, CTransform3D& transform, CTextObj3D& text)
        : m_GL(gl), m_Text(text), m_FontScale(gl.GetFontScaleFactor()) {
        m_GL.SetFontScaleFactor(1.0);
        transform.SetFontAspect(1.0);
        transform.SetFontHeightSF(1.0);
    }
    ~TextMeasure() { m_GL.SetFontScaleFactor(m_FontScale); }
    TextMeasure(const TextMeasure&) = delete;
    TextMeasure& operator=(const TextMeasure&) = delete;

    double Width(const CString& text) const {
        m_Text.SetString(text);
        return m_Text.TextWidth();
    }
    double Height(const CString& text) const {
        m_Text.SetString(text);
        return m_Text.TextHeight();
    }

 private:
    COpenGL& m_GL;
    CTextObj3D& m_Text;
    double m_FontScale;
};

}  // namespace

std::vector<const CLegendObj3D*> CLegend3D::EnabledEntries() const {
    std::vector<const CLegendObj3D*> entries;
    for (const auto& entry : m_LegendObjs)
        if (entry->GetLegendObjEnable() != 0) entries.push_back(entry.get());
    // Beside or in a plot, one above the other as the piles in it.
    if (m_Added.place == LEGEND_IN_VIEW || IsAcross()) return entries;
    for (auto from = entries.begin(); from != entries.end();) {
        const auto falls = [](const CLegendObj3D* below, const CLegendObj3D* above) {
            return below->GetPilePlace() == 0 || above->GetPilePlace() <= below->GetPilePlace();
        };
        const auto last = std::adjacent_find(from, entries.end(), falls);
        const auto end = last == entries.end() ? last : last + 1;
        std::reverse(from, end);
        from = end;
    }
    return entries;
}

detail::LegendContent CLegend3D::Measure(const std::vector<const CLegendObj3D*>& entries,
                                         const detail::LegendScale& scale, double em) const {
    const TextMeasure measure(*m_pOpenGL, *m_pTransform, *m_pText);
    detail::LegendContent content;
    const double cap = measure.Height("H");
    if (cap > 0.0) {
        content.capHeight = cap;
        content.descent = std::max(measure.Height("p") - measure.Height("x"), 0.0);
    }
    content.titleSize = kTitleSize;
    content.titleWidth = measure.Width(m_Saved.m_Title) * kTitleSize;
    content.rows = m_Saved.m_Rows;
    content.columns = m_Saved.m_Columns;
    for (const CLegendObj3D* entry : entries) {
        content.entries.push_back(measure.Width(entry->GetString()));
        const int sample = entry->GetSampleType();
        if (sample == LEGEND_LINE)
            content.sampleWidth = std::max({content.sampleWidth, kLineSample, kLeastLine / em});
        else if (sample == LEGEND_RECTANGLE || sample == LEGEND_SYMBOL)
            content.sampleWidth = std::max(content.sampleWidth, kFillSample);
    }
    content.hasScale = !scale.bands.empty();
    content.horizontal = m_Saved.m_ScaleHorizontal != 0 || IsAcross();
    for (const detail::ScaleLabel& label : scale.labels)
        content.labels.push_back({label.at, measure.Width(label.text), label.index});
    content.noData = content.hasScale && m_Added.noData != 0;
    if (content.noData) content.noDataWidth = measure.Width(m_Added.noDataText);
    return content;
}

double CLegend3D::GetEm(int viewWidth, int viewHeight) const {
    if (m_ChartEm > 0.0 && m_Saved.m_FontHeightSF == 1.0) return m_ChartEm;
    const double reference = std::min<double>(viewHeight, 0.75 * viewWidth);
    const double factor = Finite(m_Saved.m_FontHeightSF, 1.0, 0.05, 50.0);
    return factor * std::max(kEm * reference, kLeastEm);
}

detail::LegendLimits CLegend3D::MakeLimits(int viewWidth, int viewHeight) const {
    const double margin = Margin(viewWidth, viewHeight);
    detail::LegendLimits limits;
    limits.em = GetEm(viewWidth, viewHeight);
    limits.width = FixedSide(m_Saved.m_Position.width, viewWidth);
    limits.height = FixedSide(m_Saved.m_Position.height, viewHeight);
    limits.fixedWidth = limits.width > 0.0;
    limits.fixedHeight = limits.height > 0.0;
    if (!limits.fixedWidth) limits.width = std::max(viewWidth - 2 * margin, 1.0);
    if (!limits.fixedHeight) limits.height = std::max(viewHeight - 2 * margin, 1.0);
    return limits;
}

detail::LegendLayout CLegend3D::MakeLayout(const std::vector<const CLegendObj3D*>& entries,
                                           detail::LegendScale& scale, int viewWidth,
                                           int viewHeight) const {
    const detail::LegendLimits limits = MakeLimits(viewWidth, viewHeight);
    const double side = m_Saved.m_ScaleHorizontal != 0 || IsAcross() ? viewWidth : viewHeight;
    const auto layOut = [&](double labelGap) {
        detail::LegendContent content = Measure(entries, scale, limits.em);
        content.scaleLength = Finite(m_Saved.m_ScaleLength, 0.4, 0.0, 1.0) * side;
        content.labelGap = labelGap;
        const bool free = content.rows <= 0 && content.columns <= 0;
        return IsAcross() && free ? detail::LayoutLegendAcross(content, limits)
                                  : detail::LayoutLegend(content, limits);
    };
    if (HasAxis()) {
        // As many labels as an axis of this length has, fewer until all have ample room.
        detail::LegendLayout layout;
        const double length = Finite(m_Saved.m_ScaleLength, 0.4, 0.0, 1.0) * side / limits.em;
        for (const double share : {1.0, 0.7, 0.5, 0.35, 0.25, 0.15}) {
            scale = MakeColorAxis(length * share);
            layout = layOut(kAmpleGap);
            if (layout.labels.size() == scale.labels.size()) break;
        }
        return layout;
    }
    const bool chooses = m_Saved.m_ScaleType == LEGEND_COLOR_BAR &&
                         m_Saved.m_ScaleValues.size() == 2 && !(m_Saved.m_ScaleTicSpace > 0.0);
    if (!chooses) return layOut(0.0);
    // The closest round steps at which every label has ample room.
    detail::LegendLayout layout;
    for (const int intervals : {10, 8, 6, 5, 4, 3, 2}) {
        scale = MakeScale(
            detail::RoundStep(m_Saved.m_ScaleValues[1] - m_Saved.m_ScaleValues[0], intervals));
        layout = layOut(kAmpleGap);
        if (layout.labels.size() == scale.labels.size()) break;
    }
    return layout;
}

bool CLegend3D::IsAcross() const {
    return m_Added.place == LEGEND_OUTSIDE_TOP || m_Added.place == LEGEND_OUTSIDE_BOTTOM;
}

double CLegend3D::Margin(int viewWidth, int viewHeight) const {
    return std::round(Finite(m_Saved.m_Margin, 0.02, 0.0, 0.4) * std::min(viewWidth, viewHeight));
}

GLViewportType CLegend3D::PlotArea(int viewWidth, int viewHeight) const {
    if (m_PlotArea.width > 0 && m_PlotArea.height > 0) return m_PlotArea;
    return {0, 0, viewWidth, viewHeight};
}

void CLegend3D::PlaceBox(int viewWidth, int viewHeight, const detail::LegendLayout& layout) {
    const double margin = Margin(viewWidth, viewHeight);
    const GLViewportType plot = PlotArea(viewWidth, viewHeight);
    // The area inside whose edges the box stands, and where in it, 0 left or below .. 1.
    const int standing = GetPlaceInUse();
    const bool inPlot = standing == LEGEND_IN_CORNER || standing == LEGEND_LEAST_DATA;
    const detail::LegendRect area =
        inPlot
            ? detail::LegendRect{static_cast<double>(plot.x), static_cast<double>(plot.y),
                                 static_cast<double>(plot.width), static_cast<double>(plot.height)}
            : detail::LegendRect{0.0, 0.0, static_cast<double>(viewWidth),
                                 static_cast<double>(viewHeight)};
    const double right = area.x + area.width - layout.width - margin;
    const double top = area.y + area.height - layout.height - margin;
    const int place = m_Saved.m_Place;
    double x = right;
    double y = top;
    if (place == LEGEND_UPPER_LEFT || place == LEGEND_LOWER_LEFT) x = area.x + margin;
    if (place == LEGEND_LOWER_LEFT || place == LEGEND_LOWER_RIGHT) y = area.y + margin;
    if (place == LEGEND_AT_POSITION && m_Added.place == LEGEND_IN_VIEW) {
        x = Finite(m_Saved.m_Position.x, 0.0, -1.0, 1.0) * viewWidth;
        y = Finite(m_Saved.m_Position.y, 0.0, -1.0, 1.0) * viewHeight;
    }
    if (standing == LEGEND_OUTSIDE_RIGHT) {
        x = std::min<double>(right, plot.x + plot.width);
        y = plot.y + (plot.height - layout.height) / 2.0;
    } else if (IsAcross()) {
        x = plot.x + (plot.width - layout.width) / 2.0;
        y = m_Added.place == LEGEND_OUTSIDE_TOP ? plot.y + plot.height
                                                : std::max(margin, plot.y - layout.height);
    } else if (standing == LEGEND_LEAST_DATA) {
        const detail::LegendRect best =
            detail::LeastCovered(DataPlaces(), area, layout.width, layout.height, margin);
        x = best.x;
        y = best.y;
    }
    AssignViewport(m_Viewport,
                   detail::PixelCount(std::round(std::clamp(x, 0.0, viewWidth - layout.width))),
                   detail::PixelCount(std::round(std::clamp(y, 0.0, viewHeight - layout.height))),
                   detail::PixelCount(layout.width), detail::PixelCount(layout.height));
}

void CLegend3D::MeasureLegend(int viewWidth, int viewHeight, int& width, int& height) {
    width = 0;
    height = 0;
    if (m_Saved.m_LegendEnable == 0 || m_pOpenGL == nullptr || viewWidth < 1 || viewHeight < 1)
        return;
    const GLContext::HostContextGuard host;
    m_pView->PrepareFont();
    const std::vector<const CLegendObj3D*> entries = EnabledEntries();
    detail::LegendScale scale = MakeScale(m_Saved.m_ScaleTicSpace);
    if (entries.empty() && scale.bands.empty() && m_Saved.m_Title.empty()) return;
    const detail::LegendLayout layout = MakeLayout(entries, scale, viewWidth, viewHeight);
    width = detail::PixelCount(layout.width);
    height = detail::PixelCount(layout.height);
}

bool CLegend3D::HidesData(int viewWidth, int viewHeight) {
    int width = 0;
    int height = 0;
    MeasureLegend(viewWidth, viewHeight, width, height);
    if (width == 0 || height == 0) return false;
    const double margin = Margin(viewWidth, viewHeight);
    const GLViewportType plot = PlotArea(viewWidth, viewHeight);
    if (width + 2 * margin > plot.width || height + 2 * margin > plot.height) return true;
    std::ptrdiff_t covered = 0;
    detail::LeastCovered(DataPlaces(),
                         {static_cast<double>(plot.x), static_cast<double>(plot.y),
                          static_cast<double>(plot.width), static_cast<double>(plot.height)},
                         width, height, margin, &covered);
    return covered > 0;
}

/// The outline of a bar, with its arrows.
void CLegend3D::DrawOutline(detail::LegendPainter& painter, const detail::LegendScale& scale,
                            const detail::LegendRect& bar, double stroke) const {
    const bool across = m_Saved.m_ScaleHorizontal != 0 || IsAcross();
    const double length = across ? bar.width : bar.height;
    const double low = std::round(scale.arrowBelow * length);
    const double high = std::round(length - scale.arrowAbove * length);
    std::vector<detail::LegendPoint> ring;
    const auto add = [&](double along, double side) {
        ring.push_back(across ? detail::LegendPoint{bar.x + along, bar.y + side * bar.height}
                              : detail::LegendPoint{bar.x + side * bar.width, bar.y + along});
    };
    add(low, 0.0);
    if (low > 0.0) add(0.0, 0.5);
    add(low, 1.0);
    add(high, 1.0);
    if (high < length) add(length, 0.5);
    add(high, 0.0);
    painter.Outline(ring, stroke, m_Saved.m_TextColor);
}

void CLegend3D::DrawScale(detail::LegendPainter& painter, const detail::LegendScale& scale,
                          const detail::LegendLayout& layout) const {
    const detail::LegendRect& bar = layout.bar;
    const bool across = m_Saved.m_ScaleHorizontal != 0 || IsAcross();
    const double stroke = std::max(1.0, std::round(layout.em / 20.0));
    {
        const CollectScope collect(*m_pOpenGL);
        double begin = 0.0;
        for (const detail::ScaleBand& band : scale.bands) {
            // The colours of charts by value are those of a texture, which has bytes.
            RGBDType color = m_Saved.m_ScaleType == LEGEND_COLOR_BAR
                                 ? RGBBtoRGBD(RGBDtoRGBB(band.color))
                                 : band.color;
            color.a = 1.0;
            const double size = band.end - begin;
            const detail::LegendRect rect =
                across ? detail::LegendRect{bar.x + begin * bar.width, bar.y, size * bar.width,
                                            bar.height}
                       : detail::LegendRect{bar.x, bar.y + begin * bar.height, bar.width,
                                            size * bar.height};
            if (scale.arrowBelow > 0.0 && begin == 0.0)
                painter.FillArrow(rect, across, false, color);
            else if (scale.arrowAbove > 0.0 && band.end == 1.0)
                painter.FillArrow(rect, across, true, color);
            else
                painter.FillRect(rect, color);
            begin = band.end;
        }
        if (scale.arrowBelow > 0.0 || scale.arrowAbove > 0.0)
            DrawOutline(painter, scale, bar, stroke);
        else
            painter.FrameRect(bar, stroke, m_Saved.m_TextColor);
        if (m_Added.noData != 0) {
            painter.FillRect(layout.noData, m_Added.noDataColor);
            painter.FrameRect(layout.noData, stroke, m_Saved.m_TextColor);
        }
        for (const auto& label : layout.labels) {
            const double tic = std::floor(label.tic - stroke / 2 + 0.5);
            painter.FillRect(
                across ? detail::LegendRect{tic, bar.y - layout.ticLength, stroke, layout.ticLength}
                       : detail::LegendRect{bar.x + bar.width, tic, layout.ticLength, stroke},
                m_Saved.m_TextColor);
        }
    }
    for (const auto& label : layout.labels)
        painter.Text(scale.labels[static_cast<std::size_t>(label.number)].text, label.text,
                     layout.em, m_Saved.m_TextColor);
    if (m_Added.noData != 0)
        painter.Text(m_Added.noDataText, layout.noDataText, layout.em, m_Saved.m_TextColor);
}

void CLegend3D::DrawLegend() {
    if (m_Saved.m_LegendEnable == 0 || m_pOpenGL == nullptr) return;
    int width = 0;
    int height = 0;
    m_pView->GetSize(width, height);
    const std::vector<const CLegendObj3D*> entries = EnabledEntries();
    detail::LegendScale scale = MakeScale(m_Saved.m_ScaleTicSpace);
    const bool isEmpty = entries.empty() && scale.bands.empty() && m_Saved.m_Title.empty();
    if (width < 1 || height < 1 || isEmpty) return;

    const detail::LegendLayout layout = MakeLayout(entries, scale, width, height);
    PlaceBox(width, height, layout);
    if (m_Viewport.width < 1 || m_Viewport.height < 1) return;

    detail::LegendPainter painter(*m_pOpenGL, *m_pTransform, *m_pText, m_Viewport);
    painter.SetEm(layout.em);
    if (m_Saved.m_BkEnable != 0)
        painter.ClearBox(m_Saved.m_BkColor);
    else
        painter.ClearDepth();
    if (m_Saved.m_BorderEnable != 0 && m_GivesWay == 0)
        painter.FrameRect({0.0, 0.0, layout.width, layout.height}, m_Saved.m_BorderThickness,
                          m_Saved.m_BorderColor);
    painter.Text(m_Saved.m_Title, layout.title, layout.em * kTitleSize, m_Saved.m_TextColor);
    for (std::size_t i = 0; i < entries.size(); ++i) {
        entries[i]->DrawSample(painter, layout.entries[i].sample);
        painter.Text(entries[i]->GetString(), layout.entries[i].text, layout.em,
                     m_Saved.m_TextColor);
    }
    if (!scale.bands.empty()) DrawScale(painter, scale, layout);
}

}  // namespace varnel
