#include <EGL/egl.h>
#include <dlfcn.h>

#include "varnel/platform/detail/egl_display.h"
#include "varnel/platform/detail/gl_context.h"

namespace varnel {
namespace {

/// The functions of GLX that keeping a context takes. They are looked up in what the host has
/// loaded: a host without GLX has no context of it, and need not have the library.
struct Glx {
    using Display = void;
    using Drawable = unsigned long;

    void* (*getContext)() = nullptr;
    Display* (*getDisplay)() = nullptr;
    Drawable (*getDrawable)() = nullptr;
    Drawable (*getReadDrawable)() = nullptr;
    int (*makeCurrent)(Display*, Drawable, Drawable, void*) = nullptr;

    bool Complete() const {
        return getContext != nullptr && getDisplay != nullptr && getDrawable != nullptr &&
               getReadDrawable != nullptr && makeCurrent != nullptr;
    }
};

void* FindLoaded(const char* name) {
    if (void* symbol = dlsym(RTLD_DEFAULT, name)) return symbol;
    // Toolkits load their OpenGL in plug-ins, whose symbols are not in the global scope.
    for (const char* library : {"libGLX.so.0", "libGL.so.1"}) {
        void* handle = dlopen(library, RTLD_LAZY | RTLD_NOLOAD);
        if (handle == nullptr) continue;
        void* symbol = dlsym(handle, name);
        // The host keeps its library; what was counted here is given back.
        dlclose(handle);
        if (symbol != nullptr) return symbol;
    }
    return nullptr;
}

template <class Function>
void Find(Function& function, const char* name) {
    function = reinterpret_cast<Function>(FindLoaded(name));
}

/// Looked up each time: the host may load GLX after its first chart.
Glx FindGlx() {
    Glx glx;
    Find(glx.getContext, "glXGetCurrentContext");
    if (glx.getContext == nullptr) return glx;
    Find(glx.getDisplay, "glXGetCurrentDisplay");
    Find(glx.getDrawable, "glXGetCurrentDrawable");
    Find(glx.getReadDrawable, "glXGetCurrentReadDrawable");
    Find(glx.makeCurrent, "glXMakeContextCurrent");
    return glx;
}

thread_local int guardDepth = 0;

}  // namespace

/// What the host had current on the thread.
struct GLContext::HostContextGuard::State {
    EGLDisplay display = EGL_NO_DISPLAY;
    EGLSurface draw = EGL_NO_SURFACE;
    EGLSurface read = EGL_NO_SURFACE;
    EGLContext context = EGL_NO_CONTEXT;

    Glx glx;
    Glx::Display* glxDisplay = nullptr;
    Glx::Drawable glxDraw = 0;
    Glx::Drawable glxRead = 0;
    void* glxContext = nullptr;

    /// Whether there was a context.
    bool KeepEgl();
    bool KeepGlx();
    void GiveBack(EGLenum api) const;
};

bool GLContext::HostContextGuard::State::KeepEgl() {
    context = eglGetCurrentContext();
    if (context == EGL_NO_CONTEXT) return false;
    display = eglGetCurrentDisplay();
    draw = eglGetCurrentSurface(EGL_DRAW);
    read = eglGetCurrentSurface(EGL_READ);
    return true;
}

bool GLContext::HostContextGuard::State::KeepGlx() {
    glx = FindGlx();
    if (!glx.Complete()) return false;
    glxContext = glx.getContext();
    if (glxContext == nullptr) return false;
    glxDisplay = glx.getDisplay();
    glxDraw = glx.getDrawable();
    glxRead = glx.getReadDrawable();
    // EGL refuses to make a context current on a thread that has one of GLX.
    glx.makeCurrent(glxDisplay, 0, 0, nullptr);
    return true;
}

void GLContext::HostContextGuard::State::GiveBack(EGLenum api) const {
    if (glxContext != nullptr) {
        // GLX, too, refuses while EGL has a context.
        MakeNonCurrent();
        glx.makeCurrent(glxDisplay, glxDraw, glxRead, glxContext);
    }
    eglBindAPI(api);
    if (context != EGL_NO_CONTEXT) eglMakeCurrent(display, draw, read, context);
}

GLContext::HostContextGuard::HostContextGuard() {
    if (guardDepth == 0 && !detail::IsForked()) {
        m_Api = eglQueryAPI();
        // Where the library's own context is current the host has none. That is so in most calls.
        if (Current() == nullptr) {
            State kept;
            if (kept.KeepEgl() || kept.KeepGlx()) m_State = std::make_unique<State>(kept);
        }
    }
    ++guardDepth;
}

GLContext::HostContextGuard::~HostContextGuard() {
    --guardDepth;
    if (m_State)
        m_State->GiveBack(m_Api);
    else if (m_Api != 0)
        eglBindAPI(m_Api);
}

}  // namespace varnel
