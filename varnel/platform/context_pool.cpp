#include "varnel/platform/detail/context_pool.h"

#define GL_GLEXT_PROTOTYPES
#include <GL/gl.h>
#include <unistd.h>

#include <mutex>
#include <string>
#include <utility>
#include <vector>

namespace varnel::detail {
namespace {

/// As many as a few threads that make pictures use in turn.
constexpr std::size_t kMostKept = 4;
/// Samples of a framebuffer that is kept while nothing is drawn in it, at 8 bytes each.
constexpr long long kLargestKept = 4LL << 20;

/// Never destroyed: at the end of the process the driver may have ended before.
struct Pool {
    std::mutex mutex;
    std::vector<PooledContext> contexts;
    pid_t process = getpid();
};

Pool& ThePool() {
    static auto* const pool = new Pool;
    return *pool;
}

int StackDepth(GLenum which) {
    GLint depth = 0;
    glGetIntegerv(which, &depth);
    return depth;
}

void ResetMatrix(GLenum mode, GLenum stack) {
    glMatrixMode(mode);
    for (int depth = StackDepth(stack); depth > 1; --depth)
        glPopMatrix();
    glLoadIdentity();
}

/// Brings the current context back to the state of KeepInitialState.
bool Reset() {
    while (glGetError() != GL_NO_ERROR) {
    }
    const int depth = StackDepth(GL_ATTRIB_STACK_DEPTH);
    const int clientDepth = StackDepth(GL_CLIENT_ATTRIB_STACK_DEPTH);
    if (depth < 1 || clientDepth < 1) return false;
    glRenderMode(GL_RENDER);
    glUseProgram(0);
    glBindVertexArray(0);
    for (const GLenum target :
         {GL_ARRAY_BUFFER, GL_ELEMENT_ARRAY_BUFFER, GL_PIXEL_PACK_BUFFER, GL_PIXEL_UNPACK_BUFFER})
        glBindBuffer(target, 0);
    for (int i = 0; i < clientDepth; ++i)
        glPopClientAttrib();
    for (int i = 0; i < depth; ++i)
        glPopAttrib();
    // Mesa 22 gives some of the current values back only with the next vertex.
    glColor4f(1.0F, 1.0F, 1.0F, 1.0F);
    glNormal3f(0.0F, 0.0F, 1.0F);
    glTexCoord4f(0.0F, 0.0F, 0.0F, 1.0F);
    ResetMatrix(GL_TEXTURE, GL_TEXTURE_STACK_DEPTH);
    ResetMatrix(GL_PROJECTION, GL_PROJECTION_STACK_DEPTH);
    ResetMatrix(GL_MODELVIEW, GL_MODELVIEW_STACK_DEPTH);
    // The tables and pictures that were drawn with are no one's any more.
    glTexImage1D(GL_TEXTURE_1D, 0, GL_RGBA, 0, 0, GL_RGBA, GL_UNSIGNED_BYTE, nullptr);
    glTexImage2D(GL_TEXTURE_2D, 0, GL_RGBA, 0, 0, 0, GL_RGBA, GL_UNSIGNED_BYTE, nullptr);
    KeepInitialState();
    return glGetError() == GL_NO_ERROR;
}

}  // namespace

void PooledContext::SetAside() {
    if (!used) return;
    if (spare) spare->Delete();
    spare.reset();
    if (used->Size() > kLargestKept)
        used->Delete();
    else
        spare = used;
    used.reset();
}

std::optional<Framebuffer> PooledContext::TakeSpare(int width, int height, int samples, int scale) {
    if (!spare || !spare->IsLike(width, height, samples, scale)) return std::nullopt;
    spare->BindCleared();
    return std::exchange(spare, std::nullopt);
}

void KeepInitialState() {
    glPushAttrib(GL_ALL_ATTRIB_BITS);
    glPushClientAttrib(GL_CLIENT_ALL_ATTRIB_BITS);
}

bool KeepContext(PooledContext context) {
    Pool& pool = ThePool();
    if (pool.process != getpid() || !Reset()) return false;
    if (context.used && context.used->Size() > kLargestKept) {
        context.used->Delete();
        context.used.reset();
    }
    const std::lock_guard lock(pool.mutex);
    if (pool.contexts.size() >= kMostKept) return false;
    MakeEglNonCurrent(context.egl);
    pool.contexts.push_back(context);
    return true;
}

std::optional<PooledContext> TakeContext() {
    Pool& pool = ThePool();
    if (pool.process != getpid()) return std::nullopt;
    const std::lock_guard lock(pool.mutex);
    std::string why;
    while (!pool.contexts.empty()) {
        PooledContext context = pool.contexts.back();
        pool.contexts.pop_back();
        if (MakeEglCurrent(context.egl, why)) return context;
        // Another library has ended the display, and the context with it.
    }
    return std::nullopt;
}

}  // namespace varnel::detail
