#include "varnel/platform/detail/x11_connection.h"

#include <X11/Xlib.h>
#include <poll.h>

#include <algorithm>
#include <mutex>
#include <vector>

namespace varnel::detail {

/// The handlers of the process: ours while any connection of ours is at work, else the host's.
struct X11Connection::Handlers {
    static Handlers& Get() {
        // Never destroyed: connections of static objects are closed after it would be.
        static Handlers& handlers = *new Handlers;
        return handlers;
    }

    static int OnError(Display* display, XErrorEvent* event) {
        XErrorHandler host;
        {
            const std::lock_guard lock(Get().mutex);
            if (X11Connection* connection = Get().Find(display)) {
                connection->m_Failed = true;
                return 0;
            }
            host = Get().hostError;
        }
        return host != nullptr ? host(display, event) : 0;
    }

    static int OnLost(Display* display) {
        XIOErrorHandler host;
        {
            const std::lock_guard lock(Get().mutex);
            if (X11Connection* connection = Get().Find(display)) {
                connection->m_Lost = true;
                return 0;
            }
            host = Get().hostLost;
        }
        return host != nullptr ? host(display) : 0;
    }

    /// What Xlib calls after OnLost, in place of ending the process.
    static void OnExit(Display* /*display*/, void* connection) {
        static_cast<X11Connection*>(connection)->m_Lost = true;
    }

    X11Connection* Find(Display* display) const {
        const auto at = std::find_if(ours.begin(), ours.end(),
                                     [=](auto* c) { return c->m_Display == display; });
        return at != ours.end() ? *at : nullptr;
    }

    std::mutex mutex;
    std::vector<X11Connection*> ours;
    int active = 0;
    XErrorHandler hostError = nullptr;
    XIOErrorHandler hostLost = nullptr;
};

X11Connection::Guard::Guard(X11Connection& connection) {
    connection.m_Failed = false;
    Handlers& handlers = Handlers::Get();
    const std::lock_guard lock(handlers.mutex);
    if (handlers.active++ > 0) return;
    handlers.hostError = XSetErrorHandler(Handlers::OnError);
    handlers.hostLost = XSetIOErrorHandler(Handlers::OnLost);
}

X11Connection::Guard::~Guard() {
    Handlers& handlers = Handlers::Get();
    const std::lock_guard lock(handlers.mutex);
    if (--handlers.active > 0) return;
    XSetErrorHandler(handlers.hostError);
    XSetIOErrorHandler(handlers.hostLost);
}

std::shared_ptr<X11Connection> X11Connection::Open(const std::string& name) {
    Display* display = XOpenDisplay(name.empty() ? nullptr : name.c_str());
    if (display == nullptr) return nullptr;
    return std::shared_ptr<X11Connection>(new X11Connection(display));
}

X11Connection::X11Connection(_XDisplay* display) : m_Display(display) {
    XSetIOErrorExitHandler(display, Handlers::OnExit, this);
    const std::lock_guard lock(Handlers::Get().mutex);
    Handlers::Get().ours.push_back(this);
}

X11Connection::~X11Connection() {
    {
        const Guard guard(*this);
        XCloseDisplay(m_Display);
    }
    const std::lock_guard lock(Handlers::Get().mutex);
    std::erase(Handlers::Get().ours, this);
}

std::string X11Connection::Name() const {
    return DisplayString(m_Display);
}

int X11Connection::Fd() const {
    return ConnectionNumber(m_Display);
}

bool X11Connection::Wait(int milliseconds) {
    bool queued = false;
    if (!Read([&](Display* display) { queued = XPending(display) > 0; })) return false;
    if (queued) return true;
    pollfd fd{Fd(), POLLIN, 0};
    return poll(&fd, 1, milliseconds) > 0;
}

void X11Connection::Sync() {
    XSync(m_Display, False);
}

}  // namespace varnel::detail
