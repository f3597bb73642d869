#include "varnel/plot/figure.h"

#include <unistd.h>

#include <algorithm>
#include <filesystem>

#include "varnel/chart/apply_theme.h"
#include "varnel/chart/chart_view.h"
#include "varnel/chart/header.h"
#include "varnel/layout/fit.h"
#include "varnel/platform/system_report.h"
#include "varnel/platform/window.h"
#include "varnel/plot/detail/chart_impl.h"
#include "varnel/viewer/show_chart_file.h"

namespace varnel::plot {

using detail::Refuse;

struct Figure::State {
    State(const FigureOptions& wanted)
        : options(wanted),
          window(wanted.size.width, wanted.size.height),
          view(&window, wanted.size.width, wanted.size.height) {}

    FigureOptions options;
    CWnd window;
    CChartView3D view;
    /// Charts of a grid, and the cells that they stand in.
    struct Cell {
        int row, column, rows, columns;
        std::unique_ptr<Chart> chart;
    };
    std::vector<Cell> cells;

    GLViewRType DressGrid(const Impl& figure);
    void ShareTitles();
    void Write(const std::string& path, const std::string& extension, const std::string& title);
};

/// The titles over a grid of charts, and what they leave of the view.
GLViewRType Figure::State::DressGrid(const Impl& figure) {
    const auto [width, height] = options.size;
    const TextSizes sizes = TextSizesFor(width, height);
    // The view's texts are this share of its smaller side.
    const double em = 0.1 * std::min(width, height);
    CHeader3D& header = *view.GetHeader();
    header.SetTitle1(figure.title);
    header.SetTitle2(figure.subtitle);
    header.SetFooter(figure.footer);
    // The distance between titles is one of heights of the upper one, which is size 1.
    header.SetFontHeightSF(sizes.title / em);
    header.SetTextSizes(1.0, sizes.subtitle / sizes.title, sizes.footer / sizes.title);
    const HeaderStrips strips =
        StripsFor(sizes, !figure.title.empty(), !figure.subtitle.empty(), !figure.footer.empty());
    const double edge = header.GetMargin() / 2.0;
    const double top = strips.top > 0 ? strips.top / height + edge : 0.0;
    const double bottom = strips.bottom > 0 ? strips.bottom / height + edge : 0.0;
    return {0.0, bottom, 1.0, 1.0 - top - bottom};
}

/// A title of an axis that the chart below, or to the left, has as well stands there alone.
void Figure::State::ShareTitles() {
    const auto isFramed = [](const Impl& chart) {
        return chart.layout == Layout::Flat || chart.layout == Layout::Map;
    };
    for (const Cell& cell : cells) {
        Impl& mine = *cell.chart->m_Impl;
        const int up = mine.layout == Layout::Flat ? 2 : 1;
        mine.hideTitle[0] = mine.hideTitle[up] = false;
        for (const Cell& next : cells) {
            const Impl& other = *next.chart->m_Impl;
            if (next.rows != cell.rows || next.columns != cell.columns || !isFramed(mine) ||
                !isFramed(other))
                continue;
            const int otherUp = other.layout == Layout::Flat ? 2 : 1;
            if (next.row == cell.row + 1 && next.column == cell.column)
                mine.hideTitle[0] = mine.TitleOf(0) == other.TitleOf(0);
            if (next.row == cell.row && next.column == cell.column - 1)
                mine.hideTitle[up] = mine.TitleOf(up) == other.TitleOf(otherUp);
        }
    }
}

Chart::Chart() : m_Impl(std::make_unique<Impl>()) {
}
Chart::~Chart() = default;

void Chart::x(const AxisOptions& options) {
    m_Impl->wanted[0] = options;
    m_Impl->ResolveOptions();
}

void Chart::y(const AxisOptions& options) {
    m_Impl->wanted[1] = options;
    m_Impl->ResolveOptions();
}

void Chart::z(const AxisOptions& options) {
    if (m_Impl->layout == Layout::Flat) Refuse("z", "the chart is flat: its axes are x and y");
    m_Impl->wanted[2] = options;
    m_Impl->ResolveOptions();
}

void Chart::Title(const std::string& title, const std::string& subtitle) {
    m_Impl->title = title;
    m_Impl->subtitle = subtitle;
}

void Chart::Rotate(double azimuth, double elevation) {
    m_Impl->azimuth = azimuth;
    m_Impl->elevation = elevation;
}

CChart3D* Chart::GetChart() const {
    return m_Impl->chart;
}

namespace {

double DotsPerInch(const FigureOptions& options) {
    constexpr double kLabelPoints = 11.0;
    if (options.dpi > 0) return options.dpi;
    return 72 * TextSizesFor(options.size.width, options.size.height).label / kLabelPoints;
}

}  // namespace

Figure::Figure(const FigureOptions& options) {
    constexpr int kLargest = 16384;
    const auto [width, height] = options.size;
    if (width < 1 || height < 1 || width > kLargest || height > kLargest)
        Refuse("Figure", "the size is ", width, " x ", height);
    if (!(options.dpi >= 0)) Refuse("Figure", "dpi is ", options.dpi);
    if (!(options.depth >= 0)) Refuse("Figure", "depth is ", options.depth);
    m_State = std::make_unique<State>(options);
    CChartView3D& view = m_State->view;
    ApplyTheme(view, options.theme);
    view.SetAntialiasing(options.samples);
    view.SetDPI(DotsPerInch(options));
    view.SetAlignCharts(1);
    m_Impl->view = &view;
    m_Impl->depth = options.depth;
    m_Impl->theme = options.theme;
    m_Impl->legendPlace = options.legend;
    m_Impl->pixelsPerPoint = DotsPerInch(options) / 72;
    m_Impl->height = height;
    m_Impl->footer = options.footer;
    Title(options.title, options.subtitle);
}

Figure::~Figure() = default;

Chart& Figure::At(int row, int column, int rows, int columns) {
    if (rows < 1 || columns < 1 || row < 1 || column < 1 || row > rows || column > columns)
        Refuse("At", "row ", row, " of ", rows, ", column ", column, " of ", columns);
    for (const State::Cell& cell : m_State->cells)
        if (cell.row == row && cell.column == column && cell.rows == rows &&
            cell.columns == columns)
            return *cell.chart;
    m_State->cells.push_back({row, column, rows, columns, std::unique_ptr<Chart>(new Chart)});
    Chart& chart = *m_State->cells.back().chart;
    Impl& impl = *chart.m_Impl;
    impl.view = &m_State->view;
    // Everything is smaller by as much as the texts of a smaller chart are.
    const auto [width, height] = m_State->options.size;
    impl.scale =
        TextSizesFor(width / columns, height / rows).label / TextSizesFor(width, height).label;
    impl.pixelsPerPoint = m_Impl->pixelsPerPoint * impl.scale;
    impl.height = std::max(1, m_Impl->height / rows);
    impl.depth = m_Impl->depth;
    impl.theme = m_Impl->theme;
    impl.legendPlace = m_Impl->legendPlace;
    return chart;
}

CChartView3D& Figure::View() {
    m_Impl->Compose(m_State->options.size);
    const bool isGrid = m_Impl->chart == nullptr && !m_State->cells.empty();
    m_State->ShareTitles();
    const GLViewRType area = isGrid ? m_State->DressGrid(*m_Impl) : GLViewRType{0, 0, 1, 1};
    for (const auto& [row, column, rows, columns, chart] : m_State->cells) {
        chart->m_Impl->place = {area.x + area.width * (column - 1) / columns,
                                area.y + area.height * (rows - row) / rows, area.width / columns,
                                area.height / rows};
        chart->m_Impl->Compose(m_State->options.size);
    }
    return m_State->view;
}

namespace {

std::string LowerCaseExtension(const std::string& path) {
    std::string extension = std::filesystem::path(path).extension().string();
    for (char& c : extension)
        if (c >= 'A' && c <= 'Z') c = static_cast<char>(c + 32);
    return extension;
}

/// A path with a number in the place of "%d", "%3d" or "%03d"; empty where there is no such place.
std::string NumberedPath(const std::string& path, int number) {
    const std::size_t begin = path.find('%');
    if (begin == std::string::npos) return {};
    std::size_t end = begin + 1;
    const bool zeros = end < path.size() && path[end] == '0';
    std::size_t width = 0;
    for (; end < path.size() && path[end] >= '0' && path[end] <= '9' && width < 20; ++end)
        width = 10 * width + static_cast<std::size_t>(path[end] - '0');
    if (end >= path.size() || path[end] != 'd' || width > 20) return {};
    std::string digits = std::to_string(number);
    if (digits.size() < width) digits.insert(0, width - digits.size(), zeros ? '0' : ' ');
    return path.substr(0, begin) + digits + path.substr(end + 1);
}

}  // namespace

void Figure::State::Write(const std::string& path, const std::string& extension,
                          const std::string& title) {
    const double dpi = DotsPerInch(options);
    const double millimetres = 25.4 / dpi;
    const auto [width, height] = options.size;
    if (extension == ".png")
        view.SaveToPNG(path, {title, "Varnel " VARNEL_VERSION, dpi});
    else if (extension == ".bmp")
        view.SaveToFile(path);
    else if (extension == ".pdf")
        view.SaveToPDF(path, width * millimetres, height * millimetres);
    else if (extension == ".svg")
        view.SaveToSVG(path, width * millimetres, height * millimetres);
    else
        view.Save(path);
}

void Figure::Save(const std::string& path) {
    const std::string extension = LowerCaseExtension(path);
    const char* const known[] = {".png", ".bmp", ".pdf", ".svg", ".chart"};
    if (std::ranges::find(known, extension) == std::end(known))
        Refuse("Save", path, " has to end in .png, .bmp, .pdf, .svg or .chart");
    View();
    m_State->Write(path, extension, m_Impl->title);
}

void Figure::SaveTurn(const std::string& path, int frames) {
    const std::string extension = LowerCaseExtension(path);
    if ((extension != ".png" && extension != ".bmp") || NumberedPath(path, 1).empty())
        Refuse("SaveTurn", path, " has to be like turn-%03d.png");
    if (frames < 1) Refuse("SaveTurn", "frames is ", frames);
    std::vector<Impl*> charts{m_Impl.get()};
    for (const State::Cell& cell : m_State->cells)
        charts.push_back(cell.chart->m_Impl.get());
    const auto turn = [&](std::optional<double> degrees) {
        for (Impl* const chart : charts)
            chart->turn = degrees;
        View();
    };
    for (int frame = 0; frame < frames; ++frame) {
        turn(360.0 * frame / frames);
        m_State->Write(NumberedPath(path, frame + 1), extension, m_Impl->title);
    }
    turn({});
}

void Figure::Show() {
    static int shown = 0;
    const std::filesystem::path file =
        std::filesystem::temp_directory_path() /
        ("varnel-" + std::to_string(getpid()) + "-" + std::to_string(++shown) + ".chart");
    View().Save(file.string());
    const auto [width, height] = m_State->options.size;
    const std::string& title = m_Impl->title;
    std::string problem;
    const bool closed = ShowChartFile(
        file.string(), {width, height, m_State->options.samples, title.empty() ? "Varnel" : title},
        problem);
    std::error_code ignored;
    std::filesystem::remove(file, ignored);
    if (closed) return;
    if (!HasDisplay())
        problem = "there is no display to show the figure on; Save(\"picture.png\") needs none";
    varnel::detail::Raise(ERR3D_CDC_PARAMETER, ERR3DCLASS_GENERAL, "Show", problem);
}

}  // namespace varnel::plot
