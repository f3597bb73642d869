// How long loops tell how far they are, and are stopped.
//
// An operation that can be watched opens a Watch on its thread; everything below it calls Progress
// wherever a few milliseconds at most have passed since the last call, in loops by a count:
//
//     for (int i = 0; i < n; ++i) {
//         if (i % 1024 == 0) Progress(i, n);
//         ...
//     }
//
// ProgressStep counts by itself, for what is called again and again without a number at hand. A
// call costs a look at a clock, and nearly nothing when nobody watches. When the host wants to
// stop, Progress throws Stopped, which passes through the loops as any error does: what they have
// changed must be whole or thrown away. The operation that opened the Watch catches it. What must
// not be left half done calls ProgressOnly, and so does what destructors do.
#pragma once

#include <chrono>

#include "varnel/foundation/export.h"
#include "varnel/foundation/progress.h"

namespace varnel::detail {

/// What unwinds an operation that the host has stopped. Not an error: nothing but Watch::Run
/// catches it.
struct Stopped {};

/// Makes the work on this thread one that a host watches, as long as it lives. An operation inside
/// a watched one is part of it.
class VARNEL_API Watch {
 public:
    /// An empty handler watches nothing. `what` says what is being done, for people.
    Watch(const ProgressHandler& handler, CString what);
    ~Watch();
    Watch(const Watch&) = delete;
    Watch& operator=(const Watch&) = delete;

    /// Runs `work`; false when the host stopped it. Stopped goes on to the outermost watch.
    template <class Work>
    bool Run(Work&& work) {
        try {
            work();
            return true;
        } catch (const Stopped&) {
            if (m_Outer != nullptr) throw;
            return false;
        }
    }

 private:
    friend class ProgressPart;
    friend VARNEL_API void Progress(double done, double all);
    friend VARNEL_API void ProgressOnly(double done, double all);

    void Tell(double fraction);

    const ProgressHandler* m_Handler;
    CString m_What;
    Watch* m_Outer;
    double m_From = 0.0;  ///< the part of the whole that is being worked on
    double m_To = 1.0;
    double m_Told = 0.0;
    bool m_StopAsked = false;  ///< the host wants to stop and is asked no more
    std::chrono::steady_clock::time_point m_Last;
};

/// While it lives, what is told as 0..1 is from..to of what is worked on around it.
class VARNEL_API ProgressPart {
 public:
    ProgressPart(double from, double to);
    ~ProgressPart();
    ProgressPart(const ProgressPart&) = delete;
    ProgressPart& operator=(const ProgressPart&) = delete;

 private:
    Watch* m_Watch;
    double m_From = 0.0;
    double m_To = 1.0;
};

/// Tells that `done` of `all` are done; at most every 20 ms it gets to the host. Throws Stopped.
VARNEL_API void Progress(double done, double all);

/// The same for what must be done to its end: the next Progress throws in its place.
VARNEL_API void ProgressOnly(double done, double all);

/// Every 256th call tells that the work goes on. Throws Stopped.
VARNEL_API void ProgressStep();

}  // namespace varnel::detail
