#include "varnel/viewer/detail/panel.h"

#include <algorithm>

#include "varnel/axes/text_object.h"
#include "varnel/chart/chart.h"
#include "varnel/transform/transform.h"

namespace varnel::detail {

namespace {

constexpr int kMargin = 12;
constexpr int kLineHeight = 20;
constexpr double kEm = 14.0;
constexpr int kBaseLine = 5;  ///< below the middle of a line
constexpr int kSecondColumn = 130;
constexpr RGBDType kBackground{0.13, 0.15, 0.19, 1};
constexpr RGBDType kText{0.95, 0.96, 0.98, 1};
constexpr RGBDType kKeys{0.98, 0.80, 0.42, 1};

void AddText(CChart3D& chart, CTransform3D* transform, const std::string& text, int x, int base,
             int height, const RGBDType& color) {
    if (text.empty()) return;
    CTextObj3D* object = chart.NewChartTextObj(transform, text);
    object->SetLocation({static_cast<double>(x), 0.0, static_cast<double>(height - base), 0.0});
    object->SetTextPlane(3);
    object->SetJustify(0, 0);  // on the base line
    object->SetColor(color);
}

}  // namespace

Panel::Panel(const std::vector<Line>& lines, int width)
    : m_Width(width),
      m_Height(2 * kMargin + kLineHeight * static_cast<int>(lines.size())),
      m_Memory(std::make_unique<CWnd>(width, m_Height)) {
    CChartView3D view(m_Memory.get(), m_Width, m_Height);
    view.SetAntialiasing(4);
    view.SetFont("Arial", 400, 256);
    CChart3D* chart = view.NewChart3D();
    chart->SetChartBkColor(kBackground);
    chart->SetBorderColor(kKeys);
    chart->SetFontSize(2.0 * kEm / m_Height);
    // The chart's box is the panel: a unit is a pixel.
    CTransform3D* transform = chart->NewTransform(
        {0, 0, 0, 0}, {static_cast<double>(m_Width), 1, static_cast<double>(m_Height), 0});
    transform->SetChartRect({1, 0.01, 1, 0});
    const bool columns =
        std::ranges::any_of(lines, [](const Line& line) { return !line.right.empty(); });
    int base = kMargin + kLineHeight / 2 + kBaseLine;
    for (const Line& line : lines) {
        AddText(*chart, transform, line.left, kMargin, base, m_Height, columns ? kKeys : kText);
        AddText(*chart, transform, line.right, kSecondColumn, base, m_Height, kText);
        base += kLineHeight;
    }
    view.DrawViewScreen();
}

void Panel::CopyTo(CDC& dc, int x, int y) const {
    dc.StretchDIBits({x, y, x + m_Width, y + m_Height}, *m_Memory->GetPixels(),
                     {0, 0, m_Width, m_Height});
}

std::vector<Panel::Line> Wrapped(const std::string& text, std::size_t columns) {
    std::vector<Panel::Line> lines;
    std::size_t start = 0;
    while (start < text.size()) {
        std::size_t end = std::min(start + columns, text.size());
        if (end < text.size()) {
            const std::size_t space = text.rfind(' ', end);
            if (space != std::string::npos && space > start) end = space;
        }
        lines.push_back({text.substr(start, end - start)});
        start = text.find_first_not_of(' ', end);
        if (start == std::string::npos) break;
    }
    return lines;
}

}  // namespace varnel::detail
