// Counters of the whole process, such as how many objects of a class were made.
//
// They are plain ints, so that a host prints, compares and sets them like any other; views may live
// on different threads and each of them counts, so the library itself reaches them through here.
#pragma once

#include <atomic>

namespace varnel::detail {

/// The counter's value.
inline int Counted(const int& counter) {
    // atomic_ref wants a mutable object even for reading (until C++26).
    return std::atomic_ref<int>(const_cast<int&>(counter)).load(std::memory_order_relaxed);
}

inline void SetCounter(int& counter, int value) {
    std::atomic_ref<int>(counter).store(value, std::memory_order_relaxed);
}

/// Counts on and returns the new value; the largest int, which a file can set, is followed by the
/// smallest.
inline int Count(int& counter) {
    const int before = std::atomic_ref<int>(counter).fetch_add(1, std::memory_order_relaxed);
    return static_cast<int>(static_cast<unsigned>(before) + 1U);
}

/// A counter as a field of a record.
struct CounterField {
    int& counter;
};

}  // namespace varnel::detail
