// Bring-up of EGL: the process's one display, and contexts on it.
//
// The display is chosen once, when the first context is made, and kept to the end of the process:
// terminating it would end every context on it, the host's own included. The environment variable
// VARNEL_EGL chooses it: "surfaceless", "device", "device:n", "software" or "default"; without it
// they are tried in the order surfaceless, every device (software devices last), default.
#pragma once

#include <string>

namespace varnel::detail {

/// EGL's own handles, which are pointers.
struct EglContext {
    void* display = nullptr;
    void* context = nullptr;
    void* surface = nullptr;  ///< null where a context needs none to be current
    /// How often the display had been initialised when the context was made. Contexts end with the
    /// display that another library terminates, and their handles can come back as others'.
    unsigned life = 0;
};

/// Whether this process was forked from one that used OpenGL, whose driver then waits for threads
/// that are not there: no call of EGL is made any more.
bool IsForked();

/// Makes a context and makes it current on the thread. False when no driver gives a desktop
/// compatibility context with a complete framebuffer; then `why` names what was tried, in one line.
bool NewEglContext(EglContext& out, std::string& why);

/// Makes the context current; false, with the reason, when EGL refuses.
bool MakeEglCurrent(const EglContext& context, std::string& why);

/// The largest width and height of a framebuffer; 0, with the reason, when no driver gives one.
int LargestFramebuffer(std::string& why);

/// Makes the context non-current, if it is current on this thread, and destroys it.
void DestroyEglContext(const EglContext& context);

/// Whether the context is current on this thread.
bool IsEglCurrent(const EglContext& context);

/// Makes no context current on the thread.
void MakeEglNonCurrent(const EglContext& context);

/// How the process's display was found, such as "surfaceless"; empty before it was.
std::string EglPlatformName();

}  // namespace varnel::detail
