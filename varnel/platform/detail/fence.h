// Waiting for the driver, while the host hears that the work goes on.
#pragma once

#define GL_GLEXT_PROTOTYPES
#include <GL/gl.h>

namespace varnel::detail {

/// Waits until everything before a fence is drawn. `tell` is Progress, which throws when the host
/// wants to stop, or ProgressOnly.
inline void WaitFor(GLsync fence, void (*tell)(double done, double all)) {
    constexpr GLuint64 kTenMilliseconds = 10'000'000;
    while (glClientWaitSync(fence, GL_SYNC_FLUSH_COMMANDS_BIT, kTenMilliseconds) ==
           GL_TIMEOUT_EXPIRED)
        tell(0.0, 1.0);
}

}  // namespace varnel::detail
