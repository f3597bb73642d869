// Contexts that views have given up, for the views to come.
//
// A new context costs milliseconds, and its first drawing ten times what a later one costs, because
// every context compiles its shaders anew. What is kept here is in OpenGL's initial state. Any
// thread may give and take.
#pragma once

#include <optional>

#include "varnel/platform/detail/egl_display.h"
#include "varnel/platform/detail/framebuffer.h"

namespace varnel::detail {

/// A context and the framebuffers in it: the one in use, and the one used before.
struct PooledContext {
    EglContext egl;
    std::optional<Framebuffer> used;
    std::optional<Framebuffer> spare;

    /// Keeps the framebuffer in use as the spare one, unless it is large.
    void SetAside();
    /// The spare framebuffer, bound and cleared, if it is like that.
    std::optional<Framebuffer> TakeSpare(int width, int height, int samples, int scale);
};

/// Remembers the state of the current context, a new one, for KeepContext.
void KeepInitialState();

/// Keeps a context, which is current, and makes it non-current. False, and nothing is done, when
/// enough are kept or the context cannot be brought back to its initial state. Objects that a host
/// has made in it stay in it.
bool KeepContext(PooledContext context);

/// A context that was kept, made current.
std::optional<PooledContext> TakeContext();

}  // namespace varnel::detail
