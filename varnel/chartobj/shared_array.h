// An array that knows its length and is shared by the copies of the object that holds it.
//
// Copying shares the elements; they are freed with the last copy. Views never reach beyond what is
// stored, whatever count they are asked for.
#pragma once

#include <cstddef>
#include <memory>
#include <span>
#include <utility>

namespace varnel {

template <class T>
class SharedArray {
 public:
    SharedArray() = default;

    /// Takes over an array of `size` elements.
    SharedArray(std::shared_ptr<T[]> elements, std::size_t size)
        : m_Elements(std::move(elements)), m_Size(size) {}

    /// Whether an array is there, be it of length 0.
    explicit operator bool() const { return m_Elements != nullptr; }

    std::size_t GetSize() const { return m_Size; }

    /// The element at an index below both `bound` and the stored length, null for any other.
    T* At(long long index, long long bound) const {
        const bool inside =
            index >= 0 && index < bound && static_cast<unsigned long long>(index) < m_Size;
        return inside ? &m_Elements[static_cast<std::size_t>(index)] : nullptr;
    }

    /// The first `count` elements, or as many as there are; none for a negative count.
    std::span<T> First(long long count) const {
        if (count <= 0) return {};
        const auto wanted = static_cast<unsigned long long>(count);
        return {m_Elements.get(), wanted < m_Size ? static_cast<std::size_t>(wanted) : m_Size};
    }

    std::span<T> All() const { return {m_Elements.get(), m_Size}; }

 private:
    std::shared_ptr<T[]> m_Elements;
    std::size_t m_Size = 0;
};

}  // namespace varnel
