#include "varnel/platform/x11_window.h"

#include <X11/Xatom.h>
#include <X11/Xlib.h>
#include <X11/Xutil.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <utility>

#include "varnel/foundation/detail/diagnose.h"
#include "varnel/foundation/strings.h"
#include "varnel/platform/detail/x11_connection.h"
#include "varnel/platform/detail/x11_events.h"
#include "varnel/platform/detail/x11_painter.h"

namespace varnel {
namespace {

using detail::X11Connection;
using detail::X11Painter;

constexpr int kUsualPixelsPerInch = 96;
/// What coordinates of the server can hold.
constexpr int kLargestExtent = 32767;

int PixelsPerInch(int pixels, int millimetres) {
    return millimetres > 0 ? static_cast<int>(std::lround(pixels * 25.4 / millimetres))
                           : kUsualPixelsPerInch;
}

/// The screen of a window, as a device that draws into the window.
class X11Device : public DeviceContext {
 public:
    X11Device(std::unique_ptr<X11Painter> painter, const Screen* screen)
        : m_Painter(std::move(painter)),
          m_Width(WidthOfScreen(screen)),
          m_Height(HeightOfScreen(screen)),
          m_PerInchX(PixelsPerInch(m_Width, WidthMMOfScreen(screen))),
          m_PerInchY(PixelsPerInch(m_Height, HeightMMOfScreen(screen))),
          m_BitsPerPixel(m_Painter->BitsPerPixel()) {}

    int Caps(int code) const override {
        switch (code) {
            case HORZRES:
                return m_Width;
            case VERTRES:
                return m_Height;
            case BITSPIXEL:
                return m_BitsPerPixel;
            case PLANES:
                return 1;
            case LOGPIXELSX:
                return m_PerInchX;
            case LOGPIXELSY:
                return m_PerInchY;
            default:
                return 0;
        }
    }

    bool Put(int x, int y, int width, int height, const Bitmap& source, int sourceX,
             int sourceY) override {
        return m_Painter && m_Painter->Put(x, y, width, height, source, sourceX, sourceY);
    }

    /// Device contexts outlive windows; those of a window that is gone cannot be drawn to.
    void Detach() { m_Painter.reset(); }

    void WindowSize(int& width, int& height) const {
        width = height = 0;
        if (m_Painter) m_Painter->Size(width, height);
    }
    bool UsesSharedMemory() const { return m_Painter && m_Painter->UsesSharedMemory(); }

 private:
    std::unique_ptr<X11Painter> m_Painter;
    int m_Width;
    int m_Height;
    int m_PerInchX;
    int m_PerInchY;
    int m_BitsPerPixel;
};

class X11Backend : public WindowBackend {
 public:
    X11Backend(std::shared_ptr<X11Connection> connection, unsigned long window,
               std::shared_ptr<X11Device> device)
        : m_Connection(std::move(connection)),
          m_Window(window),
          m_Device(std::move(device)),
          m_DisplayName(m_Connection->Name()) {}
    ~X11Backend() override { m_Device->Detach(); }

    std::shared_ptr<DeviceContext> Device() override { return m_Device; }
    void ClientSize(int& width, int& height) const override { m_Device->WindowSize(width, height); }
    void Invalidate() override {
        m_Connection->Do([this](Display* d) { XClearArea(d, m_Window, 0, 0, 0, 0, True); });
    }
    const char* DisplayName() const override { return m_DisplayName.c_str(); }

 private:
    std::shared_ptr<X11Connection> m_Connection;
    unsigned long m_Window;
    std::shared_ptr<X11Device> m_Device;
    std::string m_DisplayName;
};

/// A visual with true colours: the screen's own where it has them, else the deepest.
bool FindVisual(Display* display, int screen, XVisualInfo& found) {
    found.visual = DefaultVisual(display, screen);
    found.depth = DefaultDepth(display, screen);
    if (found.visual->c_class == TrueColor) return true;
    return std::ranges::any_of(std::initializer_list<int>{24, 30, 32, 16, 15, 8}, [&](int depth) {
        return XMatchVisualInfo(display, screen, depth, TrueColor, &found) != 0;
    });
}

constexpr long kOwnEvents = ExposureMask | StructureNotifyMask | KeyPressMask | ButtonPressMask |
                            ButtonReleaseMask | PointerMotionMask;

Window NewWindow(Display* display, const XVisualInfo& visual, int width, int height) {
    const Window root = DefaultRootWindow(display);
    XSetWindowAttributes a{};
    // Nothing is painted by the server: what was drawn stays until it is drawn over, so that
    // neither resizing nor invalidating flickers.
    a.background_pixmap = None;
    a.bit_gravity = NorthWestGravity;
    a.border_pixel = 0;
    a.colormap = XCreateColormap(display, root, visual.visual, AllocNone);
    a.event_mask = kOwnEvents;
    return XCreateWindow(display, root, 0, 0, static_cast<unsigned>(width),
                         static_cast<unsigned>(height), 0, visual.depth, InputOutput, visual.visual,
                         CWBackPixmap | CWBitGravity | CWBorderPixel | CWColormap | CWEventMask,
                         &a);
}

}  // namespace

struct X11Window::Impl {
    std::shared_ptr<X11Connection> events;
    std::shared_ptr<X11Connection> drawing;
    unsigned long window = 0;
    unsigned long closeMessage = 0;
    bool created = false;
    std::shared_ptr<X11Device> device;
    std::unique_ptr<detail::X11EventQueue> queue;
    std::unique_ptr<CWnd> wnd;

    /// Connects to a server; empty, or why it could not.
    CString Open(const CString& display);
    /// Opens the drawing side for the window; empty, or why the window cannot be drawn to.
    CString Connect();
    CString Create(int width, int height, const CString& title, const CString& display);
    CString Attach(unsigned long id, const CString& display);
    void Title(const CString& title);
};

CString X11Window::Impl::Open(const CString& display) {
    events = X11Connection::Open(display);
    if (events) return {};
    const char* named = std::getenv("DISPLAY");
    if (!display.empty()) return "no display server answers as " + display;
    return named != nullptr ? CString("no display server answers as ") + named
                            : CString("there is no display server: DISPLAY is not set");
}

CString X11Window::Impl::Connect() {
    drawing = X11Connection::Open(events->Name());
    if (!drawing) return "the display server takes no second connection";
    XWindowAttributes a{};
    if (!drawing->Do([&](Display* d) { XGetWindowAttributes(d, window, &a); }))
        return detail::Say(
            "there is no window ", window, " on ", events->Name(),
            "; if it was made a moment ago, its owner's connection has to be flushed");
    auto painter = X11Painter::Make(drawing, window);
    if (!painter) return "the window's pixels are not red, green and blue components";
    device = std::make_shared<X11Device>(std::move(painter), a.screen);
    wnd = std::make_unique<CWnd>(std::make_unique<X11Backend>(drawing, window, device));
    queue = std::make_unique<detail::X11EventQueue>(window, closeMessage);
    return {};
}

CString X11Window::Impl::Create(int width, int height, const CString& title,
                                const CString& display) {
    if (width < 1 || height < 1 || width > kLargestExtent || height > kLargestExtent)
        return detail::Say("a window of ", width, " x ", height, " pixels cannot be had");
    if (CString why = Open(display); !why.empty()) return why;
    XVisualInfo visual{};
    if (!FindVisual(events->Get(), DefaultScreen(events->Get()), visual))
        return "the display has no true colours";
    created = events->Do([&](Display* d) {
        window = NewWindow(d, visual, width, height);
        Atom close = XInternAtom(d, "WM_DELETE_WINDOW", False);
        closeMessage = close;
        XSetWMProtocols(d, window, &close, 1);
        XMapWindow(d, window);
    });
    if (!created) return "the display server refuses the window";
    if (CString why = Connect(); !why.empty()) return why;
    Title(title);
    return {};
}

CString X11Window::Impl::Attach(unsigned long id, const CString& display) {
    if (CString why = Open(display); !why.empty()) return why;
    window = id;
    // Events of the pointer can be given to one program only, the window's own. A window that is
    // not there fails again, and is told, when the drawing side asks for its properties.
    events->Do([&](Display* d) { XSelectInput(d, id, ExposureMask | StructureNotifyMask); });
    return Connect();
}

void X11Window::Impl::Title(const CString& given) {
    const CString title = ToUtf8(given);
    drawing->Do([&](Display* d) {
        const auto* bytes = reinterpret_cast<const unsigned char*>(title.data());
        const auto size = static_cast<int>(title.size());
        const Atom utf8 = XInternAtom(d, "UTF8_STRING", False);
        XChangeProperty(d, window, XInternAtom(d, "_NET_WM_NAME", False), utf8, 8, PropModeReplace,
                        bytes, size);
        XChangeProperty(d, window, XA_WM_NAME, utf8, 8, PropModeReplace, bytes, size);
    });
}

X11Window::X11Window(std::unique_ptr<Impl> impl) : m_Impl(std::move(impl)) {
}

X11Window::~X11Window() {
    m_Impl->wnd.reset();
    if (!m_Impl->created) return;
    m_Impl->events->Do([this](Display* d) { XDestroyWindow(d, m_Impl->window); });
}

std::unique_ptr<X11Window> X11Window::Finish(std::unique_ptr<Impl> impl, const CString& failure,
                                             const char* operation, CString* why) {
    if (failure.empty()) return std::unique_ptr<X11Window>(new X11Window(std::move(impl)));
    if (why != nullptr) *why = failure;
    detail::Diagnose(operation, failure);
    return nullptr;
}

std::unique_ptr<X11Window> X11Window::Create(int width, int height, const CString& title,
                                             const CString& display, CString* why) {
    auto impl = std::make_unique<Impl>();
    const CString failure = impl->Create(width, height, title, display);
    return Finish(std::move(impl), failure, "Create", why);
}

std::unique_ptr<X11Window> X11Window::Attach(unsigned long id, const CString& display,
                                             CString* why) {
    auto impl = std::make_unique<Impl>();
    const CString failure = impl->Attach(id, display);
    return Finish(std::move(impl), failure, "Attach", why);
}

CWnd* X11Window::GetWindow() {
    return m_Impl->wnd.get();
}

unsigned long X11Window::GetId() const {
    return m_Impl->window;
}

int X11Window::ConnectionFd() const {
    return m_Impl->events->Fd();
}

bool X11Window::PumpEvents(const std::function<void(const X11Event&)>& handler) {
    const bool connected = m_Impl->events->Read([this](Display* d) {
        while (XPending(d) > 0) {
            XEvent event;
            XNextEvent(d, &event);
            if (event.type == MappingNotify)
                XRefreshKeyboardMapping(&event.xmapping);
            else
                m_Impl->queue->Add(event);
        }
    });
    if (m_Impl->queue->IsDestroyed()) m_Impl->device->Detach();
    for (const X11Event& event : m_Impl->queue->Take())
        handler(event);
    return connected && !m_Impl->queue->IsDestroyed();
}

bool X11Window::WaitForEvent(int milliseconds) {
    return m_Impl->events->Wait(milliseconds);
}

void X11Window::SetTitle(const CString& title) {
    if (m_Impl->created) m_Impl->Title(title);
}

bool X11Window::UsesSharedMemory() const {
    return m_Impl->device->UsesSharedMemory();
}

}  // namespace varnel
