#include <algorithm>
#include <memory>
#include <utility>

#include "varnel/foundation/detail/progress.h"

namespace varnel::detail {
namespace {

using Clock = std::chrono::steady_clock;

/// Well below the 50 ms that hosts are promised, so that there is room for the work between calls.
constexpr auto kBetween = std::chrono::milliseconds(20);

thread_local Watch* t_Watch = nullptr;
thread_local unsigned t_Steps = 0;

}  // namespace

Watch::Watch(const ProgressHandler& handler, CString what)
    : m_Handler(&handler), m_What(std::move(what)), m_Outer(t_Watch), m_Last(Clock::now()) {
    if (m_Outer != nullptr || handler) t_Watch = this;
    if (m_Outer == nullptr) return;
    m_Handler = m_Outer->m_Handler;
    m_From = m_Outer->m_From;
    m_To = m_Outer->m_To;
    m_Told = m_Outer->m_Told;
    m_StopAsked = m_Outer->m_StopAsked;
    m_Last = m_Outer->m_Last;
}

Watch::~Watch() {
    if (m_Outer != nullptr) {
        m_Outer->m_Told = m_Told;
        m_Outer->m_StopAsked = m_StopAsked;
        m_Outer->m_Last = m_Last;
    }
    t_Watch = m_Outer;
}

void Watch::Tell(double fraction) {
    if (m_StopAsked || Clock::now() - m_Last < kBetween) return;
    m_Told = std::max(m_Told, m_From + std::clamp(fraction, 0.0, 1.0) * (m_To - m_From));
    // What the host does in its handler, such as drawing another view, is not watched.
    t_Watch = nullptr;
    const auto watchAgain = std::unique_ptr<Watch, void (*)(Watch*)>(this, [](Watch* w) {
        t_Watch = w;
        w->m_Last = Clock::now();
    });
    m_StopAsked = !(*m_Handler)(m_Told, m_What);
}

ProgressPart::ProgressPart(double from, double to) : m_Watch(t_Watch) {
    if (m_Watch == nullptr) return;
    m_From = m_Watch->m_From;
    m_To = m_Watch->m_To;
    m_Watch->m_From = m_From + from * (m_To - m_From);
    m_Watch->m_To = m_From + to * (m_To - m_From);
}

ProgressPart::~ProgressPart() {
    if (m_Watch == nullptr) return;
    m_Watch->m_From = m_From;
    m_Watch->m_To = m_To;
}

void Progress(double done, double all) {
    ProgressOnly(done, all);
    if (t_Watch != nullptr && t_Watch->m_StopAsked) throw Stopped();
}

void ProgressOnly(double done, double all) {
    if (t_Watch != nullptr) t_Watch->Tell(all > 0.0 ? done / all : 0.0);
}

void ProgressStep() {
    if (t_Watch != nullptr && ++t_Steps % 256 == 0) Progress(0.0, 1.0);
}

}  // namespace varnel::detail

namespace varnel {

bool RunWatched(const ProgressHandler& handler, const CString& what,
                const std::function<void()>& work) {
    return detail::Watch(handler, what).Run(work);
}

}  // namespace varnel
