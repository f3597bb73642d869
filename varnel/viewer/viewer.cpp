#include "varnel/viewer/detail/viewer.h"

#include <poll.h>

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <utility>

#include "varnel/chart/chart.h"
#include "varnel/platform/clipboard.h"
#include "varnel/platform/dib_section.h"
#include "varnel/platform/printer.h"
#include "varnel/transform/transform.h"
#include "varnel/viewer/chart_files.h"

namespace varnel::detail {

namespace {

constexpr double kDegreesPerPixel = 0.4;
constexpr double kDegreesPerKey = 5.0;
constexpr double kZoomPerNotch = 1.1;
constexpr std::chrono::seconds kNoticeTime{6};
constexpr int kPanelWidth = 350;
constexpr std::size_t kNoticeColumns = 44;
constexpr int kPanelDistance = 14;

const std::vector<Panel::Line> kHelp = {
    {"drag", "turn the chart under the mouse"},
    {"wheel, + -", "enlarge, reduce"},
    {"arrows", "turn by 5 degrees"},
    {"r", "back to how the file has it"},
    {"a", "smooth or exact edges"},
    {"s", "save a picture (.png)"},
    {"c", "copy the picture"},
    {"p", "print to a file (.pdf)"},
    {"h, F1", "show or hide this help"},
    {"q, Escape", "close"},
};

/// A name beside the others in the current folder that no file has yet.
std::string FreeName(const std::string& chartFile, const std::string& extension) {
    const std::string stem = std::filesystem::path(chartFile).stem().string();
    std::string name = stem + extension;
    std::error_code ignored;
    for (int i = 2; std::filesystem::exists(name, ignored); ++i)
        name = stem + "-" + std::to_string(i) + extension;
    return name;
}

/// The largest area of a page in the proportions of a picture, in the middle, in fractions of the
/// page. The library keeps a third of an inch free on each side of it.
REALRECT AreaOnPage(const CDC& page, double width, double height) {
    const double pageWidth = page.GetDeviceCaps(HORZRES);
    const double pageHeight = page.GetDeviceCaps(VERTRES);
    const double freeX = 2.0 * (page.GetDeviceCaps(LOGPIXELSX) / 3);
    const double freeY = 2.0 * (page.GetDeviceCaps(LOGPIXELSY) / 3);
    const double scale = std::min((pageWidth - freeX) / width, (pageHeight - freeY) / height);
    const double w = (width * scale + freeX) / pageWidth;
    const double h = (height * scale + freeY) / pageHeight;
    return {(1.0 - w) / 2.0, (1.0 - h) / 2.0, w, h};
}

/// Gives a view's charts the positions that those of another view of the same file have.
void CopyTurning(const CChartView3D& from, CChartView3D& to) {
    for (int i = 0; i < std::min(from.GetNumCharts(), to.GetNumCharts()); ++i) {
        const CChart3D* chart = from.GetChart(i);
        const int count = std::min(chart->GetNumTransforms(), to.GetChart(i)->GetNumTransforms());
        for (int j = 0; j < count; ++j) {
            to.GetChart(i)->GetTransform(j)->SetRotate(chart->GetTransform(j)->GetRotation());
            to.GetChart(i)->GetTransform(j)->SetChartRect(chart->GetTransform(j)->GetChartRect());
        }
    }
}

}  // namespace

Viewer::Viewer(X11Window& window, CChartView3D& view, std::string file, int samples)
    : m_Window(window),
      m_View(view),
      m_Turning(view),
      m_File(std::move(file)),
      m_SmoothSamples(std::max(samples, 4)) {
    RECT client;
    window.GetWindow()->GetClientRect(&client);
    m_Width = std::max(client.right, 1);
    m_Height = std::max(client.bottom, 1);
}

bool Viewer::Run() {
    while (m_Running) {
        if (!m_Window.PumpEvents([this](const X11Event& event) { Handle(event); }))
            return !m_Running;
        Clipboard::Get().Pump();
        ForgetOldNotice();
        if (m_Running && std::exchange(m_Dirty, false) && !Draw()) return false;
        pollfd files[] = {{m_Window.ConnectionFd(), POLLIN, 0},
                          {Clipboard::Get().ConnectionFd(), POLLIN, 0}};
        if (m_Running && !m_Dirty) poll(files, 2, MillisecondsToWait());
    }
    return true;
}

void Viewer::Tell(const std::string& text) {
    m_Notice.emplace(Wrapped(text, kNoticeColumns), kPanelWidth);
    m_NoticeEnd = Clock::now() + kNoticeTime;
    m_Dirty = true;
}

void Viewer::ForgetOldNotice() {
    if (!m_Notice || Clock::now() < m_NoticeEnd) return;
    m_Notice.reset();
    m_Dirty = true;
}

int Viewer::MillisecondsToWait() const {
    if (!m_Notice) return -1;
    const auto left =
        std::chrono::duration_cast<std::chrono::milliseconds>(m_NoticeEnd - Clock::now());
    return std::max(static_cast<int>(left.count()), 0) + 1;
}

void Viewer::Handle(const X11Event& event) {
    using Type = X11Event::Type;
    if (m_Notice && (event.type == Type::Press || event.type == Type::Key)) {
        m_Notice.reset();
        m_Dirty = true;
    }
    switch (event.type) {
        case Type::Redraw:
            m_Dirty = true;
            break;
        case Type::Resized:
            m_Width = std::max(event.width, 1);
            m_Height = std::max(event.height, 1);
            m_Dirty = true;
            break;
        case Type::Press:
            if (event.button != 1) break;
            m_Dragged = ChartUnder(event);
            m_DragX = event.x;
            m_DragY = event.y;
            break;
        case Type::Release:
            if (event.button == 1) m_Dragged = nullptr;
            break;
        case Type::Moved:
            Drag(event);
            break;
        case Type::Wheel:
            EnlargeUnder(event, std::pow(kZoomPerNotch, event.wheel));
            break;
        case Type::Key:
            HandleKey(event);
            break;
        case Type::Close:
            m_Running = false;
            break;
    }
}

void Viewer::HandleKey(const X11Event& event) {
    const std::string& key = event.key;
    if (key == "q" || key == "Escape")
        m_Running = false;
    else if (key == "r" || key == "Home")
        Reset();
    else if (key == "a")
        ToggleAntialiasing();
    else if (key == "s")
        SavePicture();
    else if (key == "c")
        Copy();
    else if (key == "p")
        Print();
    else if (key == "h" || key == "F1" || key == "question")
        ToggleHelp();
    else if (key == "Left" || key == "Right")
        TurnUnder(event, key == "Right" ? kDegreesPerKey : -kDegreesPerKey, 0);
    else if (key == "Up" || key == "Down")
        TurnUnder(event, 0, key == "Down" ? kDegreesPerKey : -kDegreesPerKey);
    else if (key == "plus" || key == "KP_Add" || key == "equal")
        EnlargeUnder(event, kZoomPerNotch);
    else if (key == "minus" || key == "KP_Subtract")
        EnlargeUnder(event, 1 / kZoomPerNotch);
}

CChart3D* Viewer::ChartUnder(const X11Event& event) const {
    return m_Turning.ChartAt((event.x + 0.5) / m_Width, (event.y + 0.5) / m_Height);
}

void Viewer::Drag(const X11Event& event) {
    if (m_Dragged == nullptr) return;
    m_Turning.Turn(*m_Dragged, (event.x - m_DragX) * kDegreesPerPixel,
                   (event.y - m_DragY) * kDegreesPerPixel);
    m_DragX = event.x;
    m_DragY = event.y;
    m_Dirty = true;
}

void Viewer::TurnUnder(const X11Event& event, double around, double over) {
    CChart3D* chart = ChartUnder(event);
    if (chart == nullptr) return;
    m_Turning.Turn(*chart, around, over);
    m_Dirty = true;
}

void Viewer::EnlargeUnder(const X11Event& event, double factor) {
    CChart3D* chart = ChartUnder(event);
    if (chart == nullptr) return;
    m_Turning.Enlarge(*chart, factor);
    m_Dirty = true;
}

void Viewer::Reset() {
    m_Turning.Reset();
    m_Dirty = true;
}

void Viewer::ToggleHelp() {
    m_HelpShown = !m_HelpShown;
    if (m_HelpShown && !m_Help) m_Help.emplace(kHelp, kPanelWidth);
    m_Dirty = true;
}

void Viewer::ToggleAntialiasing() {
    m_View.SetAntialiasing(m_View.GetAntialiasing() == 0 ? m_SmoothSamples : 0);
    Tell(m_View.GetAntialiasing() == 0 ? "Edges are exact." : "Edges are smooth.");
}

template <class Action>
void Viewer::Try(const std::string& what, Action&& action) {
    try {
        action();
    } catch (const Error& e) {
        Tell(Describe(what, e));
    }
}

/// Runs `action(view)` on a view with an image of the window's size: that of the viewer's own is as
/// large as the screen.
template <class Action>
void Viewer::WithWindowSizedView(Action&& action) {
    CChartView3D view(m_Window.GetWindow(), m_Width, m_Height);
    view.SetAntialiasing(m_View.GetAntialiasing());
    const Loaded loaded = LoadChartFile(view, m_File);
    if (!loaded.usable) {
        Tell(loaded.sentence);
        return;
    }
    CopyTurning(m_View, view);
    action(view);
}

void Viewer::SavePicture() {
    const std::string name = FreeName(m_File, ".png");
    Try("The picture cannot be saved", [&] {
        WithWindowSizedView([&](CChartView3D& view) {
            view.SaveToPNG(name);
            Tell("Saved as " + name + ".");
        });
    });
}

void Viewer::Copy() {
    Try("The picture cannot be copied", [&] {
        WithWindowSizedView([&](CChartView3D& view) {
            view.CopyToClipboard();
            Tell(Clipboard::Get().IsOffered()
                     ? "Copied. The picture can be pasted as long as this window is open."
                     : "The picture cannot be given to other programs.");
        });
    });
}

void Viewer::Print() {
    const std::string name = FreeName(m_File, ".pdf");
    Try("The page cannot be printed", [&] {
        WithWindowSizedView([&](CChartView3D& view) {
            PageSetup page;
            page.landscape = m_Width > m_Height;
            Printer printer(name, page);
            if (printer.GetDC()->GetSafeHdc() != nullptr) {
                view.SetPrintScaleMode(3);
                view.SetNormPrintRect(AreaOnPage(*printer.GetDC(), m_Width, m_Height));
            }
            view.SetPrintResolution(2);
            view.OnPrint(printer.GetDC(), nullptr);
            Tell(printer.Finish() ? "Printed to " + name + "." : name + " cannot be written.");
        });
    });
}

bool Viewer::Draw() {
    try {
        CDC* dc = m_Window.GetWindow()->GetDC();
        if (!m_Notice && !m_HelpShown)
            m_View.DrawViewScreen(dc, 0, 0, m_Width, m_Height);
        else
            DrawWithPanels(*dc);
        return true;
    } catch (const CErr3D&) {
        // The window is gone; its end arrives as an event too, unless the server went with it.
        return false;
    }
}

/// Puts everything together in memory first, so that the window never shows the chart alone.
void Viewer::DrawWithPanels(CDC& dc) {
    CDC frame;
    frame.CreateCompatibleDC(&dc);
    frame.SelectObject(std::make_shared<Bitmap>(m_Width, m_Height, dc.GetDeviceCaps(BITSPIXEL)));
    m_View.DrawViewScreen(&frame, 0, 0, m_Width, m_Height);
    if (m_HelpShown) m_Help->CopyTo(frame, kPanelDistance, kPanelDistance);
    if (m_Notice)
        m_Notice->CopyTo(frame, kPanelDistance, m_Height - kPanelDistance - m_Notice->Height());
    dc.BitBlt(0, 0, m_Width, m_Height, frame, 0, 0);
}

}  // namespace varnel::detail
