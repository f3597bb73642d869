// A connection to a display server whose failures end in a false result and never in the end of the
// process.
//
// Xlib reports failures through handlers of the whole process, and the handlers that it starts with
// exit. While requests run here, handlers of our own stand in front of them: they keep what
// concerns our connections and hand everything else to the handlers of the host.
#pragma once

#include <memory>
#include <string>

struct _XDisplay;  // NOLINT(bugprone-reserved-identifier): X11's own name

namespace varnel::detail {

class X11Connection {
 public:
    /// Connects to a server by its name ("" means the environment's DISPLAY). Null when there is
    /// none.
    static std::shared_ptr<X11Connection> Open(const std::string& name);

    ~X11Connection();
    X11Connection(const X11Connection&) = delete;
    X11Connection& operator=(const X11Connection&) = delete;

    _XDisplay* Get() const { return m_Display; }

    /// The server's name, which a second connection can be opened with.
    std::string Name() const;

    /// Whether the server has gone away. Nothing brings such a connection back.
    bool IsLost() const { return m_Lost; }

    /// The file that becomes readable when the server sends something.
    int Fd() const;

    /// Waits until the server has sent something, at most `milliseconds` (negative: forever). False
    /// when that time has passed or the connection is lost.
    bool Wait(int milliseconds);

    /// Runs `requests(display)`, waits until the server has answered them all, and says whether
    /// none failed.
    template <class Requests>
    bool Do(Requests&& requests) {
        if (m_Lost) return false;
        const Guard guard(*this);
        requests(m_Display);
        Sync();
        return !m_Failed && !m_Lost;
    }

    /// Runs `calls(display)` without waiting: for what only reads what has arrived. Answers that
    /// the server owes are not waited for, so `calls` must not make requests that can fail.
    template <class Calls>
    bool Read(Calls&& calls) {
        if (m_Lost) return false;
        const Guard guard(*this);
        calls(m_Display);
        return !m_Lost;
    }

 private:
    struct Handlers;

    /// Keeps our handlers installed, and forgets the failures before it.
    class Guard {
     public:
        explicit Guard(X11Connection& connection);
        ~Guard();
        Guard(const Guard&) = delete;
        Guard& operator=(const Guard&) = delete;
    };

    explicit X11Connection(_XDisplay* display);
    void Sync();

    _XDisplay* m_Display;
    bool m_Failed = false;
    bool m_Lost = false;
};

}  // namespace varnel::detail
