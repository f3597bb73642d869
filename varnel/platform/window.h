// Windows: what a chart view is attached to.
//
// An in-memory window needs no display server; what is drawn to it is kept as pixels that the host
// can read. Real windows come from the same class through another backend.
#pragma once

#include <memory>

#include "varnel/foundation/export.h"
#include "varnel/foundation/types.h"
#include "varnel/platform/device_context.h"

namespace varnel {

class WindowBackend;
using HWND = WindowBackend*;

/// What a kind of window provides.
class VARNEL_API WindowBackend {
 public:
    WindowBackend() = default;
    WindowBackend(const WindowBackend&) = delete;
    WindowBackend& operator=(const WindowBackend&) = delete;
    virtual ~WindowBackend();

    virtual std::shared_ptr<DeviceContext> Device() = 0;
    virtual void ClientSize(int& width, int& height) const = 0;
    virtual void Invalidate() = 0;

    /// The pixels that were drawn to the window, null where the window does not keep them.
    virtual const Bitmap* Pixels() const;

    /// The name of the display server that shows the window, null where there is none.
    virtual const char* DisplayName() const;
};

/// A window of the host.
class VARNEL_API CWnd {
 public:
    /// A window object without a window; views on it initialise later.
    CWnd();

    /// An in-memory window of the given size in pixels. Its device reports this size as its
    /// resolution and bitsPerPixel (8, 16, 24 or 32) as its depth.
    CWnd(int width, int height, int bitsPerPixel = 32);

    /// A window of another kind.
    explicit CWnd(std::unique_ptr<WindowBackend> backend);
    ~CWnd();

    CWnd(const CWnd&) = delete;
    CWnd& operator=(const CWnd&) = delete;

    /// Makes this an in-memory window; false when it already is a window or the arguments describe
    /// none.
    BOOL CreateInMemory(int width, int height, int bitsPerPixel = 32);

    /// Null while there is no window.
    HWND GetSafeHwnd() const { return m_Backend.get(); }

    /// The window's device context, null when there is no window. The window owns it.
    CDC* GetDC();
    /// Gives a device context back.
    void ReleaseDC(CDC* dc);

    /// The client area: (0, 0) to its size in pixels; all 0 when there is no window.
    void GetClientRect(RECT* rect) const;

    /// Asks for a redraw of the whole window. An in-memory window has nobody to ask.
    void InvalidateRect(const RECT* rect, BOOL erase);

    /// What was drawn to an in-memory window, valid as long as the window; null for other kinds and
    /// when there is no window.
    const Bitmap* GetPixels() const;

    /// The name of the display server that shows the window, valid as long as the window; null for
    /// an in-memory window and when there is no window.
    const char* GetDisplayName() const;

    /// Expires when this object is destroyed: views keep it to tell that their window is gone.
    std::weak_ptr<const void> GetLife() const { return m_Life; }

 private:
    std::shared_ptr<const void> m_Life = std::make_shared<char>();
    std::unique_ptr<WindowBackend> m_Backend;
    CDC m_DC;
};

}  // namespace varnel
