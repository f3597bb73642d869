// Work in a process of its own, which cannot take more time or memory than it is given.
#pragma once

#include <cstdint>
#include <functional>

namespace tool {

struct Limits {
    double seconds = 0;        ///< by the clock; 0: none
    std::uint64_t memory = 0;  ///< bytes of address space; 0: none
};

struct Outcome {
    enum class End { Exited, OutOfTime, Killed };
    End end = End::Exited;
    int value = 0;  ///< the exit status or the signal
};

/// Runs `work` in a child process, whose exit status is what it returns. Nothing that the process
/// has started before (a graphics driver) may be used in there: call it before there is any.
Outcome RunLimited(const Limits& limits, const std::function<int()>& work);

}  // namespace tool
