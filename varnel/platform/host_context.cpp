#include <EGL/egl.h>
#include <dlfcn.h>

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

/// What was current on the thread.
struct GLContext::HostContextGuard::State {
    EGLenum api = EGL_NONE;

    EGLDisplay display = EGL_NO_DISPLAY;
    EGLSurface draw = EGL_NO_SURFACE;
    EGLSurface read = EGL_NO_SURFACE;
    EGLContext context = EGL_NO_CONTEXT;

    Glx glx;
    Glx::Display* glxDisplay = nullptr;
    Glx::Drawable glxDraw = 0;
    Glx::Drawable glxRead = 0;
    void* glxContext = nullptr;

    void KeepEgl();
    void KeepGlx();
    void GiveBack() const;
};

void GLContext::HostContextGuard::State::KeepEgl() {
    api = eglQueryAPI();
    if (Current() != nullptr) return;
    context = eglGetCurrentContext();
    if (context == EGL_NO_CONTEXT) return;
    display = eglGetCurrentDisplay();
    draw = eglGetCurrentSurface(EGL_DRAW);
    read = eglGetCurrentSurface(EGL_READ);
}

void GLContext::HostContextGuard::State::KeepGlx() {
    if (context != EGL_NO_CONTEXT || Current() != nullptr) return;
    glx = FindGlx();
    if (!glx.Complete()) return;
    glxContext = glx.getContext();
    if (glxContext == nullptr) return;
    glxDisplay = glx.getDisplay();
    glxDraw = glx.getDrawable();
    glxRead = glx.getReadDrawable();
    // EGL refuses to make a context current on a thread that has one of GLX.
    glx.makeCurrent(glxDisplay, 0, 0, nullptr);
}

void GLContext::HostContextGuard::State::GiveBack() const {
    if (glxContext != nullptr) {
        // GLX, too, refuses while EGL has a context.
        MakeNonCurrent();
        glx.makeCurrent(glxDisplay, glxDraw, glxRead, glxContext);
    }
    eglBindAPI(api);
    if (context != EGL_NO_CONTEXT) eglMakeCurrent(display, draw, read, context);
}

GLContext::HostContextGuard::HostContextGuard() {
    if (guardDepth == 0) {
        m_State = std::make_unique<State>();
        m_State->KeepEgl();
        m_State->KeepGlx();
    }
    ++guardDepth;
}

GLContext::HostContextGuard::~HostContextGuard() {
    --guardDepth;
    if (m_State) m_State->GiveBack();
}

}  // namespace varnel
