// The viewer: a chart file in a window, turned, enlarged, saved, copied and printed by its user.
#pragma once

#include <chrono>
#include <memory>
#include <optional>
#include <string>

#include "varnel/chart/chart_view.h"
#include "varnel/platform/x11_window.h"
#include "varnel/viewer/detail/panel.h"
#include "varnel/viewer/detail/turning.h"

namespace varnel::detail {

class Viewer {
 public:
    /// On a window, which is not owned; `view` is on that window and loaded from `file`.
    Viewer(X11Window& window, CChartView3D& view, std::string file, int samples);

    /// Serves the window until its user closes it or it is gone. False when the display was lost.
    bool Run();

    /// Shows a text over the chart for some seconds, at most until a key or button is pressed.
    void Tell(const std::string& text);

 private:
    using Clock = std::chrono::steady_clock;

    void Handle(const X11Event& event);
    void HandleKey(const X11Event& event);
    void Drag(const X11Event& event);
    CChart3D* ChartUnder(const X11Event& event) const;
    void TurnUnder(const X11Event& event, double around, double over);
    void EnlargeUnder(const X11Event& event, double factor);
    void Reset();
    void ToggleHelp();
    void ToggleAntialiasing();
    void SavePicture();
    void Copy();
    void Print();
    template <class Action>
    void Try(const std::string& what, Action&& action);
    template <class Action>
    void WithWindowSizedView(Action&& action);

    bool Draw();
    void DrawWithPanels(CDC& dc);
    int MillisecondsToWait() const;
    void ForgetOldNotice();

    X11Window& m_Window;
    CChartView3D& m_View;
    Turning m_Turning;
    std::string m_File;
    int m_SmoothSamples;
    int m_Width = 1;
    int m_Height = 1;
    bool m_Dirty = true;
    bool m_Running = true;
    bool m_HelpShown = false;
    CChart3D* m_Dragged = nullptr;
    int m_DragX = 0;
    int m_DragY = 0;
    std::optional<Panel> m_Help;
    std::optional<Panel> m_Notice;
    Clock::time_point m_NoticeEnd;
};

}  // namespace varnel::detail
