// A panel of text over the chart: the help, or a notice.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "varnel/chart/chart_view.h"
#include "varnel/platform/window.h"

namespace varnel::detail {

class Panel {
 public:
    /// A line in one or two columns.
    struct Line {
        std::string left;
        std::string right = {};
    };

    /// Draws the panel in memory; lines that are too long are cut at its edge.
    Panel(const std::vector<Line>& lines, int width);

    int Width() const { return m_Width; }
    int Height() const { return m_Height; }

    /// Copies the panel to (x, y) of a device context, in pixels from its upper left corner.
    void CopyTo(CDC& dc, int x, int y) const;

 private:
    int m_Width;
    int m_Height;
    std::unique_ptr<CWnd> m_Memory;
};

/// `text` in lines of at most `columns` characters, broken at spaces where there are some.
std::vector<Panel::Line> Wrapped(const std::string& text, std::size_t columns);

}  // namespace varnel::detail
