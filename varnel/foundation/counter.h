// A counter of the whole process, such as how many objects of a class were made.
//
// Views may live on different threads, and each of them counts; the counter reads and behaves like
// an int, and every access to it is atomic.
#pragma once

#include <atomic>
#include <cstdint>

namespace varnel {

class Counter {
 public:
    constexpr Counter(int value = 0) : m_Value(value) {}  // NOLINT: reads like an int
    Counter(const Counter&) = delete;
    Counter& operator=(const Counter&) = delete;

    operator int() const { return m_Value.load(std::memory_order_relaxed); }  // NOLINT
    Counter& operator=(int value) {
        m_Value.store(value, std::memory_order_relaxed);
        return *this;
    }
    /// Counts on and returns the new value.
    int operator++() { return m_Value.fetch_add(1, std::memory_order_relaxed) + 1; }

 private:
    std::atomic<std::int32_t> m_Value;
};

}  // namespace varnel
