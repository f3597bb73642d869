#include "varnel/platform/detail/egl_display.h"

#include <EGL/egl.h>
#include <EGL/eglext.h>
#include <GL/gl.h>
#include <pthread.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <charconv>
#include <cstdlib>
#include <cstring>
#include <mutex>
#include <optional>
#include <string_view>
#include <vector>

#include "varnel/platform/detail/framebuffer.h"

namespace varnel::detail {
namespace {

/// A display that gave a usable context once, and how.
struct Display {
    EGLDisplay display = EGL_NO_DISPLAY;
    EGLConfig config = nullptr;
    bool surfaceless = false;  ///< contexts can be current without a surface
    std::string name;          ///< of the candidate
    unsigned life = 1;         ///< see EglContext
    int largest = 0;           ///< side of the largest framebuffer
};

/// A place where a display may be found.
struct Candidate {
    std::string name;
    EGLenum platform = 0;  ///< 0: the default display
    void* native = nullptr;
};

/// The part of a failed attempt that the diagnostic line tells.
struct Failure {
    std::string text;
};

bool HasExtension(const char* list, std::string_view name) {
    for (std::string_view rest = list != nullptr ? list : ""; !rest.empty();) {
        const std::size_t end = rest.find(' ');
        if (rest.substr(0, end) == name) return true;
        rest = end == std::string_view::npos ? "" : rest.substr(end + 1);
    }
    return false;
}

const char* ErrorName(EGLint error) {
    static constexpr std::array<const char*, 15> kNames = {
        "no error",          "EGL_NOT_INITIALIZED",     "EGL_BAD_ACCESS",
        "EGL_BAD_ALLOC",     "EGL_BAD_ATTRIBUTE",       "EGL_BAD_CONFIG",
        "EGL_BAD_CONTEXT",   "EGL_BAD_CURRENT_SURFACE", "EGL_BAD_DISPLAY",
        "EGL_BAD_MATCH",     "EGL_BAD_NATIVE_PIXMAP",   "EGL_BAD_NATIVE_WINDOW",
        "EGL_BAD_PARAMETER", "EGL_BAD_SURFACE",         "EGL_CONTEXT_LOST"};
    const auto index = static_cast<std::size_t>(error - EGL_SUCCESS);
    return index < kNames.size() ? kNames[index] : "unknown EGL error";
}

/// `call` with what EGL answered.
Failure EglFailure(const char* call) {
    return {std::string(call) + " answered " + ErrorName(eglGetError())};
}

template <class Function>
Function Load(const char* name) {
    return reinterpret_cast<Function>(eglGetProcAddress(name));
}

/// The devices that EGL knows, software devices last; or one of them; or the software ones alone.
std::vector<Candidate> Devices(std::string_view which) {
    const auto queryDevices = Load<PFNEGLQUERYDEVICESEXTPROC>("eglQueryDevicesEXT");
    const auto queryString = Load<PFNEGLQUERYDEVICESTRINGEXTPROC>("eglQueryDeviceStringEXT");
    EGLint count = 0;
    if (queryDevices == nullptr || !queryDevices(0, nullptr, &count) || count <= 0) return {};
    std::vector<EGLDeviceEXT> devices(static_cast<std::size_t>(count));
    if (!queryDevices(count, devices.data(), &count)) return {};

    std::vector<Candidate> hardware;
    std::vector<Candidate> software;
    for (std::size_t i = 0; i < static_cast<std::size_t>(count); ++i) {
        const char* extensions =
            queryString != nullptr ? queryString(devices[i], EGL_EXTENSIONS) : nullptr;
        const Candidate device{"device " + std::to_string(i), EGL_PLATFORM_DEVICE_EXT, devices[i]};
        (HasExtension(extensions, "EGL_MESA_device_software") ? software : hardware)
            .push_back(device);
    }
    if (which == "software") return software;
    hardware.insert(hardware.end(), software.begin(), software.end());
    if (which == "device") return hardware;
    const std::string name = "device " + std::string(which.substr(std::strlen("device:")));
    for (const Candidate& device : hardware)
        if (device.name == name) return {device};
    return {};
}

/// What is to be tried, in this order: the first when nothing was tried yet, and after it the rest,
/// for which devices are asked for, the dearer part. Empty, with the reason, when VARNEL_EGL names
/// nothing.
std::vector<Candidate> Candidates(bool first, std::string& why) {
    const Candidate surfaceless{"surfaceless", EGL_PLATFORM_SURFACELESS_MESA, EGL_DEFAULT_DISPLAY};
    const Candidate fallback{"default display", 0, nullptr};
    const char* setting = std::getenv("VARNEL_EGL");
    if (setting == nullptr || *setting == '\0') {
        if (first) return {surfaceless};
        std::vector<Candidate> rest = Devices("device");
        rest.push_back(fallback);
        return rest;
    }
    if (!first) return {};
    const std::string_view which = setting;
    if (which == "surfaceless") return {surfaceless};
    if (which == "default") return {fallback};
    std::vector<Candidate> devices;
    if (which == "device" || which == "software" || which.substr(0, 7) == "device:")
        devices = Devices(which);
    if (devices.empty()) why = "VARNEL_EGL=" + std::string(which) + " names no EGL display";
    return devices;
}

EGLDisplay GetDisplay(const Candidate& candidate) {
    if (candidate.platform == 0) return eglGetDisplay(EGL_DEFAULT_DISPLAY);
    const auto get = Load<PFNEGLGETPLATFORMDISPLAYEXTPROC>("eglGetPlatformDisplayEXT");
    return get != nullptr ? get(candidate.platform, candidate.native, nullptr) : EGL_NO_DISPLAY;
}

std::optional<EGLConfig> ChooseConfig(EGLDisplay display) {
    // The framebuffer object has the depth; the configuration only has to exist.
    const EGLint attributes[] = {EGL_SURFACE_TYPE, EGL_PBUFFER_BIT, EGL_RENDERABLE_TYPE,
                                 EGL_OPENGL_BIT, EGL_NONE};
    EGLConfig config = nullptr;
    EGLint count = 0;
    if (eglChooseConfig(display, attributes, &config, 1, &count) && count > 0) return config;
    if (HasExtension(eglQueryString(display, EGL_EXTENSIONS), "EGL_KHR_no_config_context"))
        return EGLConfig(nullptr);
    return std::nullopt;
}

/// The surface that a context of the display needs to be current, null when it needs none.
EGLSurface NewSurface(const Display& display) {
    if (display.surfaceless || display.config == nullptr) return EGL_NO_SURFACE;
    const EGLint size[] = {EGL_WIDTH, 1, EGL_HEIGHT, 1, EGL_NONE};
    return eglCreatePbufferSurface(display.display, display.config, size);
}

/// Makes a context on a display, current on the thread.
std::optional<Failure> NewContext(const Display& display, EglContext& out) {
    if (!eglBindAPI(EGL_OPENGL_API)) return EglFailure("eglBindAPI");
    out = {};
    out.display = display.display;
    out.life = display.life;
    out.context = eglCreateContext(display.display, display.config, EGL_NO_CONTEXT, nullptr);
    if (out.context == EGL_NO_CONTEXT) return EglFailure("eglCreateContext");
    out.surface = NewSurface(display);
    Failure failure;
    if (MakeEglCurrent(out, failure.text)) return std::nullopt;
    DestroyEglContext(out);
    return failure;
}

/// What the current context lacks.
std::optional<Failure> Unusable() {
    const auto* version = reinterpret_cast<const char*>(glGetString(GL_VERSION));
    if (version == nullptr || std::strtod(version, nullptr) < 3.0)
        return Failure{std::string("OpenGL ") + (version != nullptr ? version : "") +
                       " is too old"};
    if (std::strtod(version, nullptr) >= 3.2) {
        GLint profile = 0;
        glGetIntegerv(GL_CONTEXT_PROFILE_MASK, &profile);
        if ((profile & GL_CONTEXT_COMPATIBILITY_PROFILE_BIT) == 0)
            return Failure{"no compatibility profile"};
    }
    std::optional<Framebuffer> framebuffer = Framebuffer::Make(16, 16, 0, 1);
    if (!framebuffer) return Failure{"no complete framebuffer with a deep depth buffer"};
    framebuffer->Delete();
    return std::nullopt;
}

/// The side of the largest framebuffer that the current context's driver has.
int LargestSide() {
    GLint renderbuffer = 0;
    GLint viewport[2] = {};
    glGetIntegerv(GL_MAX_RENDERBUFFER_SIZE, &renderbuffer);
    glGetIntegerv(GL_MAX_VIEWPORT_DIMS, viewport);
    return std::min({renderbuffer, viewport[0], viewport[1]});
}

/// Tries one display from its opening to a complete framebuffer.
std::optional<Failure> Try(const Candidate& candidate, Display& display, EglContext& out) {
    display.display = GetDisplay(candidate);
    if (display.display == EGL_NO_DISPLAY) return EglFailure("eglGetDisplay");
    if (!eglInitialize(display.display, nullptr, nullptr)) return EglFailure("eglInitialize");
    const std::optional<EGLConfig> config = ChooseConfig(display.display);
    if (!config) return Failure{"no configuration for OpenGL"};
    display.config = *config;
    display.surfaceless = true;
    std::optional<Failure> failure = NewContext(display, out);
    if (failure && display.config != nullptr) {
        display.surfaceless = false;
        failure = NewContext(display, out);
    }
    if (!failure) {
        failure = Unusable();
        if (failure) DestroyEglContext(out);
    }
    return failure;
}

std::mutex displayMutex;
std::optional<Display> processDisplay;
std::atomic<unsigned> displayLife{0};  ///< that of processDisplay, 0 before there is one
std::atomic<bool> forked{false};

constexpr const char* kForked =
    "this process was forked from one that had used OpenGL; draw in a process of its own";

void WatchForks() {
    static const int watching = pthread_atfork(nullptr, nullptr, [] { forked = displayLife > 0; });
    static_cast<void>(watching);
}

/// Whether the context's display was neither terminated nor inherited.
bool IsAlive(const EglContext& context) {
    return !forked && (displayLife == 0 || context.life == displayLife);
}

/// Initialises the process's display again if somebody terminated it.
void ReviveDisplay() {
    if (eglQueryString(processDisplay->display, EGL_VENDOR) != nullptr) return;
    eglInitialize(processDisplay->display, nullptr, nullptr);
    displayLife = ++processDisplay->life;
}

/// A software driver's lists of primitives live in the heap, and are freed at the end of a frame
/// only to be needed for the next. As it is, the C library hands their memory back to the system
/// each time, at a thousand page faults a frame or more, a tenth of its time. Having freed one
/// large block it lets twice as much stand at the heap's end.
void KeepFreedMemory() {
    constexpr std::size_t kLarge = std::size_t{8} << 20;
    void* volatile block = std::malloc(kLarge);
    std::free(block);
}

}  // namespace

bool IsForked() {
    return forked;
}

bool NewEglContext(EglContext& out, std::string& why) {
    why.clear();
    if (forked) {
        why = kForked;
        return false;
    }
    const std::lock_guard lock(displayMutex);
    if (processDisplay) {
        ReviveDisplay();
        const std::optional<Failure> failure = NewContext(*processDisplay, out);
        if (failure) why = failure->text;
        return !failure;
    }
    WatchForks();
    KeepFreedMemory();
    for (const bool first : {true, false}) {
        for (const Candidate& candidate : Candidates(first, why)) {
            Display display;
            const std::optional<Failure> failure = Try(candidate, display, out);
            if (!failure) {
                display.name = candidate.name;
                display.largest = LargestSide();
                processDisplay = display;
                displayLife = display.life;
                why.clear();
                return true;
            }
            why += (why.empty() ? "" : "; ") + candidate.name + ": " + failure->text;
        }
    }
    return false;
}

std::string EglPlatformName() {
    const std::lock_guard lock(displayMutex);
    return processDisplay ? processDisplay->name : std::string();
}

int LargestFramebuffer(std::string& why) {
    bool known = false;
    {
        const std::lock_guard lock(displayMutex);
        known = processDisplay.has_value();
    }
    EglContext first;
    if (!known && !NewEglContext(first, why)) return 0;
    if (!known) DestroyEglContext(first);
    const std::lock_guard lock(displayMutex);
    return processDisplay->largest;
}

bool MakeEglCurrent(const EglContext& context, std::string& why) {
    if (!IsAlive(context)) {
        why = forked ? kForked : "another library terminated EGL; the view has to be made anew";
        return false;
    }
    // EGL's calls about "the" current context mean the one of the bound interface.
    eglBindAPI(EGL_OPENGL_API);
    if (eglMakeCurrent(context.display, context.surface, context.surface, context.context))
        return true;
    const EGLint error = eglGetError();
    if (error == EGL_BAD_ACCESS)
        why = "its OpenGL context is current on another thread";
    else if (error == EGL_NOT_INITIALIZED || error == EGL_BAD_CONTEXT)
        why = "another library terminated EGL; the view has to be made anew";
    else
        why = std::string("eglMakeCurrent answered ") + ErrorName(error);
    return false;
}

bool IsEglCurrent(const EglContext& context) {
    return IsAlive(context) && eglGetCurrentContext() == context.context;
}

void MakeEglNonCurrent(const EglContext& context) {
    if (!IsAlive(context)) return;
    eglMakeCurrent(context.display, EGL_NO_SURFACE, EGL_NO_SURFACE, EGL_NO_CONTEXT);
}

void DestroyEglContext(const EglContext& context) {
    if (!IsAlive(context)) return;
    if (IsEglCurrent(context)) MakeEglNonCurrent(context);
    eglDestroyContext(context.display, context.context);
    if (context.surface != EGL_NO_SURFACE) eglDestroySurface(context.display, context.surface);
}

}  // namespace varnel::detail
