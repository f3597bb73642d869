#include "varnel/platform/detail/gl_context.h"

#define GL_GLEXT_PROTOTYPES
#include <GL/gl.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <utility>

#include "varnel/platform/detail/context_pool.h"
#include "varnel/platform/detail/egl_display.h"
#include "varnel/platform/detail/framebuffer.h"

namespace varnel {
namespace {

/// Framebuffer pixels per bitmap pixel where drawing larger stands in for multisampling.
constexpr int kOversampling = 2;

/// Set to 1, VARNEL_OVERSAMPLE makes drawing larger stand in for multisampling on every driver.
bool OversamplingForced() {
    const char* setting = std::getenv("VARNEL_OVERSAMPLE");
    return setting != nullptr && std::strcmp(setting, "1") == 0;
}

class EglGLContext : public GLContext {
 public:
    /// `pooled` has a framebuffer in use.
    EglGLContext(const detail::PooledContext& pooled, HBITMAP bitmap)
        : m_Pooled(pooled), m_Bitmap(std::move(bitmap)), m_FirstBitmap(m_Bitmap) {
        m_Alive = std::make_shared<bool>(true);
    }
    ~EglGLContext() override;

    bool MakeCurrent(std::string* why) override;
    void ReadBack(int width, int height) override;
    bool SetTarget(const HBITMAP& bitmap) override;
    void SetSamples(int samples) override;
    int GetSamples() const override;
    int PixelScale() const override { return Used().Scale(); }

    bool IsCurrent() const { return detail::IsEglCurrent(m_Pooled.egl); }
    void Release() const { detail::MakeEglNonCurrent(m_Pooled.egl); }
    void BecomeThreadsContext();

 private:
    std::optional<detail::Framebuffer> MakeFramebuffer(int samples);
    bool Replace();

    const detail::Framebuffer& Used() const { return *m_Pooled.used; }

    detail::PooledContext m_Pooled;
    HBITMAP m_Bitmap;
    HBITMAP m_FirstBitmap;
    int m_SamplesWanted = 0;
    std::shared_ptr<bool> m_Alive;
};

/// Set when the thread's variables are destroyed: static views of the host are destroyed later.
thread_local bool threadEnded = false;

/// The context last made current on a thread; another thread may have destroyed it since.
struct ThreadContext {
    EglGLContext* context = nullptr;
    std::weak_ptr<bool> alive;

    EglGLContext* Current() const {
        return !alive.expired() && context->IsCurrent() ? context : nullptr;
    }

    // A context stays bound to a thread that has ended, and no other thread could use it.
    ~ThreadContext() {
        if (const EglGLContext* current = Current()) current->Release();
        threadEnded = true;
    }
};
thread_local ThreadContext threadContext;

EglGLContext* CurrentOnThread() {
    return threadEnded ? nullptr : threadContext.Current();
}

EglGLContext::~EglGLContext() {
    // What outlives the main thread's variables is destroyed as the process ends, when threads that
    // Mesa began at the first drawing have ended already: its queues crash then.
    if (threadEnded && gettid() == getpid()) return;
    const HostContextGuard host;
    GLContext* const before = GLContext::Current();
    if (!EglGLContext::MakeCurrent(nullptr) || !detail::KeepContext(m_Pooled))
        detail::DestroyEglContext(m_Pooled.egl);
    if (before != nullptr && before != this) before->MakeCurrent();
}

void EglGLContext::BecomeThreadsContext() {
    if (threadEnded) return;
    threadContext.context = this;
    threadContext.alive = m_Alive;
}

bool EglGLContext::MakeCurrent(std::string* why) {
    if (IsCurrent()) return true;
    std::string reason;
    if (!detail::MakeEglCurrent(m_Pooled.egl, reason)) {
        if (why != nullptr) *why = reason;
        return false;
    }
    BecomeThreadsContext();
    Used().Bind();
    return true;
}

void EglGLContext::ReadBack(int width, int height) {
    if (MakeCurrent(nullptr)) Used().ReadBack(*m_Bitmap, width, height);
}

std::optional<detail::Framebuffer> EglGLContext::MakeFramebuffer(int samples) {
    const int width = m_Bitmap->Width();
    const int height = m_Bitmap->Height();
    const auto make = [&](int number, int scale) {
        auto made = m_Pooled.TakeSpare(width, height, number, scale);
        return made ? made : detail::Framebuffer::Make(width, height, number, scale);
    };
    if (samples < 2) return make(0, 1);
    GLint most = 0;
    glGetIntegerv(GL_MAX_SAMPLES, &most);
    std::optional<detail::Framebuffer> made;
    if (most >= 2 && !OversamplingForced()) made = make(std::min(samples, most), 1);
    if (!made) made = make(0, kOversampling);
    return made ? made : make(0, 1);
}

bool EglGLContext::Replace() {
    const std::optional<detail::Framebuffer> made = MakeFramebuffer(m_SamplesWanted);
    if (!made) return false;
    m_Pooled.SetAside();
    m_Pooled.used = made;
    return true;
}

void EglGLContext::SetSamples(int samples) {
    const bool same = std::max(samples, 1) == std::max(m_SamplesWanted, 1);
    m_SamplesWanted = samples;
    if (!same && MakeCurrent(nullptr)) Replace();
}

bool EglGLContext::SetTarget(const HBITMAP& bitmap) {
    const HBITMAP before = std::exchange(m_Bitmap, bitmap ? bitmap : m_FirstBitmap);
    if (m_Bitmap == before || (MakeCurrent(nullptr) && Replace())) return true;
    m_Bitmap = before;
    return false;
}

int EglGLContext::GetSamples() const {
    const int scale = Used().Scale();
    return scale > 1 ? scale * scale : Used().Samples();
}

}  // namespace

GLContext::~GLContext() = default;

std::unique_ptr<GLContext> GLContext::Create(const CDC& target, std::string& why) {
    why.clear();
    const HBITMAP bitmap = target.GetBitmap();
    if (!bitmap) {
        why = "no bitmap is selected into the device context";
        return nullptr;
    }
    std::optional<detail::PooledContext> pooled = detail::TakeContext();
    if (!pooled) {
        pooled.emplace();
        if (!detail::NewEglContext(pooled->egl, why)) return nullptr;
        detail::KeepInitialState();
    }
    const int width = bitmap->Width();
    const int height = bitmap->Height();
    if (pooled->used && pooled->used->IsLike(width, height, 0, 1)) {
        pooled->used->BindCleared();
    } else {
        auto framebuffer = pooled->TakeSpare(width, height, 0, 1);
        if (!framebuffer) framebuffer = detail::Framebuffer::Make(width, height, 0, 1);
        pooled->SetAside();
        pooled->used = framebuffer;
    }
    if (!pooled->used) {
        why = "no framebuffer of " + std::to_string(width) + " x " + std::to_string(height);
        detail::DestroyEglContext(pooled->egl);
        return nullptr;
    }
    auto context = std::make_unique<EglGLContext>(*pooled, bitmap);
    context->BecomeThreadsContext();
    // A context that never had a surface starts with an empty viewport.
    glViewport(0, 0, width, height);
    glScissor(0, 0, width, height);
    return context;
}

bool GLContext::CanBeDrawn(int width, int height, std::string& why) {
    // Every driver that is good enough has framebuffers of this size.
    constexpr int kAlways = 4096;
    if (std::max(width, height) <= kAlways) return true;
    const HostContextGuard host;
    const int largest = detail::LargestFramebuffer(why);
    if (largest == 0 || std::max(width, height) <= largest) return largest != 0;
    why = "an image of " + std::to_string(width) + " x " + std::to_string(height) +
          " pixels cannot be drawn: the driver's limit is " + std::to_string(largest) + " x " +
          std::to_string(largest);
    return false;
}

GLContext* GLContext::Current() {
    return CurrentOnThread();
}

void GLContext::MakeNonCurrent() {
    if (const EglGLContext* current = CurrentOnThread()) current->Release();
}

}  // namespace varnel
