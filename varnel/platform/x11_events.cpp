#include "varnel/platform/detail/x11_events.h"

#include <X11/Xlib.h>
#include <X11/Xutil.h>

#include <utility>

namespace varnel::detail {
namespace {

constexpr unsigned kWheelUp = 4;
constexpr unsigned kWheelDown = 5;
constexpr unsigned kLastButton = 3;

int HeldButtons(unsigned state) {
    return static_cast<int>(state / Button1Mask & 7u);
}

bool SameModifiers(const X11Event& a, const X11Event& b) {
    return a.shift == b.shift && a.control == b.control && a.held == b.held;
}

}  // namespace

void X11EventQueue::Add(XEvent& event) {
    if (event.xany.window != m_Window) return;
    using Type = X11Event::Type;
    switch (event.type) {
        case Expose:
            m_Exposed = true;
            break;
        case ConfigureNotify:
            AddResize(event.xconfigure.width, event.xconfigure.height);
            break;
        case MotionNotify:
            AddPointer(Type::Moved, event.xmotion.x, event.xmotion.y, event.xmotion.state, 0);
            break;
        case ButtonPress:
        case ButtonRelease:
            AddPointer(event.type == ButtonPress ? Type::Press : Type::Release, event.xbutton.x,
                       event.xbutton.y, event.xbutton.state, event.xbutton.button);
            break;
        case KeyPress:
            AddKey(event);
            break;
        case ClientMessage:
            if (static_cast<unsigned long>(event.xclient.data.l[0]) == m_CloseMessage)
                m_Events.push_back({.type = Type::Close, .key = {}});
            break;
        case DestroyNotify:
            m_Destroyed = true;
            m_Events.push_back({.type = Type::Close, .key = {}});
            break;
        default:
            break;
    }
}

void X11EventQueue::AddPointer(X11Event::Type type, int x, int y, unsigned state, unsigned button) {
    X11Event event;
    event.type = type;
    event.x = x;
    event.y = y;
    event.held = HeldButtons(state);
    event.shift = (state & ShiftMask) != 0;
    event.control = (state & ControlMask) != 0;
    event.button = static_cast<int>(button);
    if (button == kWheelUp || button == kWheelDown) {
        if (type == X11Event::Type::Release) return;
        event.type = X11Event::Type::Wheel;
        event.button = 0;
        event.wheel = button == kWheelUp ? 1 : -1;
    } else if (button > kLastButton) {
        return;
    }
    X11Event* last = m_Events.empty() ? nullptr : &m_Events.back();
    if (last != nullptr && last->type == event.type && SameModifiers(*last, event)) {
        if (event.type == X11Event::Type::Moved) {
            *last = event;
            return;
        }
        if (event.type == X11Event::Type::Wheel) {
            event.wheel += last->wheel;
            *last = event;
            return;
        }
    }
    m_Events.push_back(event);
}

void X11EventQueue::AddKey(XEvent& event) {
    XKeyEvent& key = event.xkey;
    char text[8];
    KeySym symbol = NoSymbol;
    XLookupString(&key, text, sizeof text, &symbol, nullptr);
    const char* name = symbol != NoSymbol ? XKeysymToString(symbol) : nullptr;
    if (name == nullptr || IsModifierKey(symbol)) return;
    X11Event out;
    out.type = X11Event::Type::Key;
    out.x = key.x;
    out.y = key.y;
    out.held = HeldButtons(key.state);
    out.shift = (key.state & ShiftMask) != 0;
    out.control = (key.state & ControlMask) != 0;
    out.key = name;
    m_Events.push_back(out);
}

void X11EventQueue::AddResize(int width, int height) {
    // A window that only moved says so in the same way.
    if (width == m_Width && height == m_Height) return;
    m_Width = width;
    m_Height = height;
    std::erase_if(m_Events, [](const X11Event& e) { return e.type == X11Event::Type::Resized; });
    m_Events.push_back(
        {.type = X11Event::Type::Resized, .width = width, .height = height, .key = {}});
}

std::vector<X11Event> X11EventQueue::Take() {
    if (std::exchange(m_Exposed, false))
        m_Events.push_back({.type = X11Event::Type::Redraw, .key = {}});
    return std::exchange(m_Events, {});
}

}  // namespace varnel::detail
