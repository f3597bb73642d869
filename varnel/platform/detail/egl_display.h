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
};

/// Makes a context and makes it current on the thread. False when no driver gives a desktop
/// compatibility context with a complete framebuffer; then `why` names what was tried, in one line.
bool NewEglContext(EglContext& out, std::string& why);

/// Makes the context current; false when EGL refuses.
bool MakeEglCurrent(const EglContext& context);

/// Makes the context non-current, if it is current on this thread, and destroys it.
void DestroyEglContext(const EglContext& context);

/// Whether the context is current on this thread.
bool IsEglCurrent(const EglContext& context);

/// Makes no context current on the thread.
void MakeEglNonCurrent(const EglContext& context);

/// How the process's display was found, such as "surfaceless"; empty before it was.
std::string EglPlatformName();

}  // namespace varnel::detail
