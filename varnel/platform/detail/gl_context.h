// The OpenGL context: EGL on any driver, with or without a display server, drawing off screen.
//
// A context draws into a framebuffer of the size of the bitmap that is selected into the device
// context it was made for; ReadBack brings the bitmap up to date. Nothing here is called by hosts.
#pragma once

#include <limits>
#include <memory>
#include <string>

#include "varnel/foundation/export.h"
#include "varnel/platform/device_context.h"

namespace varnel {

class VARNEL_API GLContext {
 public:
    /// A context for the selected bitmap of `target`, made current. Null when no driver gives a
    /// desktop compatibility context with a complete framebuffer of that size; then `why` says in
    /// one line what was tried and what each attempt answered. The framebuffer starts cleared, the
    /// viewport covers it. The environment variable VARNEL_EGL names the driver's platform
    /// (surfaceless, device, device:n, software, default); without it each is tried.
    static std::unique_ptr<GLContext> Create(const CDC& target, std::string& why);

    /// Legal on any thread where no other one uses it; when it is current here, none is afterwards.
    virtual ~GLContext();

    /// Makes this the thread's context, with its framebuffer bound. False when that fails (and then
    /// `why`, if given, says it): it is current on another thread, the process was forked, another
    /// library terminated EGL, or the host has a GLX context that no HostContextGuard keeps.
    virtual bool MakeCurrent(std::string* why = nullptr) = 0;

    /// Whether a bitmap of that size can be drawn to; no memory is taken to find out. If not, `why`
    /// names the size and the limit.
    static bool CanBeDrawn(int width, int height, std::string& why);

    /// Makes a context of this library that is current on the thread non-current; another one, the
    /// host's, stays.
    static void MakeNonCurrent();

    /// The context of this library that is current on the thread, null when none is (any more).
    static GLContext* Current();

    /// Waits for drawing to end and writes the framebuffer's lower left `width` x `height` pixels
    /// into the bitmap, in the bitmap's own format and row order; what lies outside of the bitmap
    /// is left out.
    virtual void ReadBack(int width, int height) = 0;

    /// The same for every pixel.
    void ReadBack() { ReadBack(std::numeric_limits<int>::max(), std::numeric_limits<int>::max()); }

    /// Draws into another bitmap from now on, with a framebuffer of its size and the samples asked
    /// for last; null brings the bitmap of Create back. What was drawn is lost, the viewport stays.
    /// False, and nothing changed, when the driver has no such framebuffer.
    virtual bool SetTarget(const HBITMAP& bitmap) = 0;

    /// Asks for multisampling (0 and 1: none). The nearest number that the driver has is used;
    /// where it has none, or the environment variable VARNEL_OVERSAMPLE is 1, everything is drawn
    /// larger and averaged. The framebuffer's content is lost; the viewport stays and has to be set
    /// anew where PixelScale changes.
    virtual void SetSamples(int samples) = 0;
    virtual int GetSamples() const = 0;

    /// Framebuffer pixels per bitmap pixel in each direction: 1, or more where drawing larger
    /// stands in for multisampling. Viewports, line widths and stipple factors are multiplied by
    /// it.
    virtual int PixelScale() const = 0;

    /// Keeps the context that the host had current on this thread (of EGL or GLX) and gives it back
    /// at the end of the scope, with the interface that EGL calls are bound to. Without one, what
    /// is current at the end stays current. Guards inside a guard do nothing.
    class HostContextGuard;
};

/// See GLContext::HostContextGuard.
class VARNEL_API GLContext::HostContextGuard {
 public:
    HostContextGuard();
    ~HostContextGuard();
    HostContextGuard(const HostContextGuard&) = delete;
    HostContextGuard& operator=(const HostContextGuard&) = delete;

 private:
    struct State;
    std::unique_ptr<State> m_State;  ///< what the host had current, null when nothing
    unsigned m_Api = 0;              ///< the interface to bind again, 0 inside another guard
};

}  // namespace varnel
