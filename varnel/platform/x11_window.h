// Windows of an X11 display: one of our own, or one that belongs to any toolkit and is known by its
// id. A chart view is attached to the CWnd inside.
//
// No thread is started: the host's loop waits for ConnectionFd() beside its own files and calls
// PumpEvents() when it is readable. Drawing goes over a second connection, so that nothing but
// PumpEvents takes what arrives at the first. A window and the views on it stay on one thread.
// Coordinates are pixels from the window's upper left corner.
#pragma once

#include <functional>
#include <memory>

#include "varnel/foundation/export.h"
#include "varnel/foundation/types.h"
#include "varnel/platform/window.h"

namespace varnel {

/// What happened to a window.
struct X11Event {
    enum class Type {
        Redraw,   ///< the window has to be drawn again, wholly
        Resized,  ///< width, height
        Key,      ///< key was pressed
        Press,    ///< button went down
        Release,  ///< button went up
        Moved,    ///< the pointer is at x, y now
        Wheel,    ///< wheel
        Close,    ///< its user asks to close the window, or it is gone
    };
    Type type = Type::Redraw;
    int x = 0;  ///< of the pointer, as y, for all but Redraw, Resized and Close
    int y = 0;
    int width = 0;
    int height = 0;
    int button = 0;  ///< 1 left, 2 middle, 3 right
    int wheel = 0;   ///< notches, positive away from the user
    CString key;     ///< X11's name of the key as shifted: "a", "A", "Escape", "plus", "F1"
    int held = 0;    ///< buttons held before this, bit n - 1 for button n
    bool shift = false;
    bool control = false;
};

class VARNEL_API X11Window {
 public:
    /// Creates and shows a window of width x height pixels. `title` is UTF-8; `display` names the
    /// server as DISPLAY does, empty for DISPLAY itself. Null when there is no server, or none with
    /// true colours; then `why`, if given, says so, and a diagnostic does.
    static std::unique_ptr<X11Window> Create(int width, int height, const CString& title,
                                             const CString& display = {}, CString* why = nullptr);

    /// A window that somebody else made, in this process or another. Its owner gets the events of
    /// pointer and keyboard and destroys it. Null when there is no such window on the server (a
    /// toolkit may not have sent its request yet: flush its connection first), or its depth has no
    /// true colours; then `why`, if given, says so, and a diagnostic does.
    static std::unique_ptr<X11Window> Attach(unsigned long id, const CString& display = {},
                                             CString* why = nullptr);

    /// Destroys a window that was created here. Views on it must be gone.
    ~X11Window();
    X11Window(const X11Window&) = delete;
    X11Window& operator=(const X11Window&) = delete;

    /// The window that views are attached to; owned by this object. Its device reports the size of
    /// the screen. Once window or server are gone its client area is empty and drawing to it fails.
    CWnd* GetWindow();

    unsigned long GetId() const;

    /// Becomes readable when there may be events.
    int ConnectionFd() const;

    /// Hands all waiting events over, in order. Motions that follow each other become one with the
    /// last position, turns of the wheel are summed up, of resizes and redraws only the last is
    /// kept: a host that draws after the call, not inside the handler, never falls behind. False
    /// once the window or its server is gone. The handler must not destroy this object.
    bool PumpEvents(const std::function<void(const X11Event&)>& handler);

    /// Waits for an event, at most `milliseconds` (negative: forever). For hosts without a loop of
    /// their own. False when none came.
    bool WaitForEvent(int milliseconds);

    /// UTF-8. Only for a window that was created here.
    void SetTitle(const CString& title);

    /// Whether pixels go to the server through shared memory.
    bool UsesSharedMemory() const;

 private:
    struct Impl;
    explicit X11Window(std::unique_ptr<Impl> impl);
    static std::unique_ptr<X11Window> Finish(std::unique_ptr<Impl> impl, const CString& failure,
                                             const char* operation, CString* why);

    std::unique_ptr<Impl> m_Impl;
};

}  // namespace varnel
