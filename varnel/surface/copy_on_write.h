// A table that the copies of its owner share until one of them writes to it.
#pragma once

#include <algorithm>
#include <atomic>
#include <cstddef>
#include <memory>
#include <utility>

namespace varnel {

template <class T>
class CopyOnWrite {
 public:
    CopyOnWrite() = default;
    /// Takes over a table of `size` elements.
    CopyOnWrite(std::shared_ptr<T[]> elements, std::size_t size)
        : m_Elements(std::move(elements)), m_Size(size) {}
    /// Shares the table, unless its elements can be written to behind its back. Throws
    /// std::bad_alloc.
    CopyOnWrite(const CopyOnWrite& other)
        : m_Elements(other.m_GivenAway ? other.Clone() : other.m_Elements), m_Size(other.m_Size) {}
    CopyOnWrite(CopyOnWrite&&) noexcept = default;
    CopyOnWrite& operator=(CopyOnWrite&&) noexcept = default;
    CopyOnWrite& operator=(const CopyOnWrite&) = delete;
    ~CopyOnWrite() = default;

    explicit operator bool() const { return m_Elements != nullptr; }
    const T* Get() const { return m_Elements.get(); }
    const T& operator[](std::ptrdiff_t i) const { return m_Elements[i]; }

    /// The elements, this owner's alone, to be written before the next copy is made. Throws
    /// std::bad_alloc.
    T* Write() {
        if (m_Elements.use_count() > 1) m_Elements = Clone();
        // What a copy in another thread read before it let go is read before it is written here.
        std::atomic_thread_fence(std::memory_order_acquire);
        return m_Elements.get();
    }
    /// The elements for somebody who may write to them at any time: they are not shared any more.
    T* GiveAway() {
        T* const elements = Write();
        m_GivenAway = true;
        return elements;
    }

 private:
    std::shared_ptr<T[]> Clone() const {
        if (m_Elements == nullptr) return nullptr;
        std::shared_ptr<T[]> copy(new T[m_Size]);
        std::copy_n(m_Elements.get(), m_Size, copy.get());
        return copy;
    }

    std::shared_ptr<T[]> m_Elements;
    std::size_t m_Size = 0;
    bool m_GivenAway = false;
};

}  // namespace varnel
