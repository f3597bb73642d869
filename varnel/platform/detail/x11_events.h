// Turns the events of the display server into those of the library, so that a host is told what it
// has to do and not every step that led there.
#pragma once

#include <vector>

#include "varnel/platform/x11_window.h"

union _XEvent;  // NOLINT(bugprone-reserved-identifier): X11's own name

namespace varnel::detail {

class X11EventQueue {
 public:
    /// `closeMessage` is the server's number for the wish to close a window.
    X11EventQueue(unsigned long window, unsigned long closeMessage)
        : m_Window(window), m_CloseMessage(closeMessage) {}

    /// Adds one event of the server; those of other windows are left out.
    void Add(_XEvent& event);

    /// What has to be handed over; the queue is empty afterwards.
    std::vector<X11Event> Take();

    /// Whether the window has been destroyed.
    bool IsDestroyed() const { return m_Destroyed; }

 private:
    void AddPointer(X11Event::Type type, int x, int y, unsigned state, unsigned button);
    void AddKey(_XEvent& event);
    void AddResize(int width, int height);

    unsigned long m_Window;
    unsigned long m_CloseMessage;
    bool m_Exposed = false;
    bool m_Destroyed = false;
    int m_Width = 0;
    int m_Height = 0;
    std::vector<X11Event> m_Events;
};

}  // namespace varnel::detail
