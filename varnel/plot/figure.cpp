#include "varnel/plot/figure.h"

#include <filesystem>

#include "varnel/chart/chart_view.h"
#include "varnel/chart/header.h"
#include "varnel/platform/window.h"
#include "varnel/plot/detail/chart_impl.h"

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
    /// Charts at places of a grid, by their places.
    std::vector<std::unique_ptr<Chart>> charts;
};

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

Figure::Figure(const FigureOptions& options) {
    constexpr int kLargest = 16384;
    const auto [width, height] = options.size;
    if (width < 1 || height < 1 || width > kLargest || height > kLargest)
        Refuse("Figure", "the size is ", width, " x ", height);
    if (!(options.dpi > 0)) Refuse("Figure", "dpi is ", options.dpi);
    m_State = std::make_unique<State>(options);
    CChartView3D& view = m_State->view;
    view.SetAntialiasing(options.samples);
    view.SetFont("Arial", 400, 256);
    view.EnableBorder(0);
    m_Impl->view = &view;
    m_Impl->pixelsPerPoint = options.dpi / 72;
    m_Impl->height = height;
    Title(options.title, options.subtitle);
}

Figure::~Figure() = default;

Chart& Figure::At(int row, int column, int rows, int columns) {
    if (rows < 1 || columns < 1 || row < 1 || column < 1 || row > rows || column > columns)
        Refuse("At", "row ", row, " of ", rows, ", column ", column, " of ", columns);
    const GLViewRType place{(column - 1.0) / columns, (rows - row) / static_cast<double>(rows),
                            1.0 / columns, 1.0 / rows};
    for (const auto& chart : m_State->charts)
        if (chart->m_Impl->place.x == place.x && chart->m_Impl->place.y == place.y &&
            chart->m_Impl->place.width == place.width &&
            chart->m_Impl->place.height == place.height)
            return *chart;
    m_State->charts.push_back(std::unique_ptr<Chart>(new Chart));
    Impl& impl = *m_State->charts.back()->m_Impl;
    impl.view = &m_State->view;
    impl.place = place;
    impl.pixelsPerPoint = m_Impl->pixelsPerPoint;
    impl.height = std::max(1, m_Impl->height / rows);
    return *m_State->charts.back();
}

CChartView3D& Figure::View() {
    m_Impl->Compose();
    if (m_Impl->chart != nullptr) m_Impl->chart->GetHeader()->SetFooter(m_State->options.footer);
    for (const auto& chart : m_State->charts)
        chart->m_Impl->Compose();
    return m_State->view;
}

void Figure::Save(const std::string& path) {
    std::string extension = std::filesystem::path(path).extension().string();
    for (char& c : extension)
        if (c >= 'A' && c <= 'Z') c = static_cast<char>(c + 32);
    if (extension != ".png" && extension != ".bmp" && extension != ".chart")
        Refuse("Save", path, " has to end in .png, .bmp or .chart");
    CChartView3D& view = View();
    if (extension == ".png")
        view.SaveToPNG(path);
    else if (extension == ".bmp")
        view.SaveToFile(path);
    else
        view.Save(path);
}

}  // namespace varnel::plot
