// The owning list in which every owner of the library keeps what it created.
//
// Items live until the list is emptied; nothing is removed one by one. A list has a current item,
// which appending and stepping move; look-ups by index leave it alone.
#pragma once

#include <cstddef>
#include <memory>
#include <utility>
#include <vector>

namespace varnel {

template <class T>
class ObjectList {
 public:
    /// Appends an item at the tail, takes ownership and makes it the current one. Returns it.
    T* Append(std::unique_ptr<T> item) {
        m_Items.push_back(std::move(item));
        m_Current = static_cast<std::ptrdiff_t>(m_Items.size()) - 1;
        return m_Items.back().get();
    }

    /// Appends all items of another list, which is empty afterwards.
    void AppendAll(ObjectList& other) {
        for (auto& item : other.m_Items)
            Append(std::move(item));
        other.RemoveAll();
    }

    /// The item at a 0-based index, null outside the list.
    T* GetAt(int index) const {
        if (index < 0 || static_cast<std::size_t>(index) >= m_Items.size()) return nullptr;
        return m_Items[static_cast<std::size_t>(index)].get();
    }

    /// The current item, null when the list is empty or a step has left it.
    T* GetCurrent() const { return GetAt(static_cast<int>(m_Current)); }

    /// Returns the current item, null when there is none, and then moves to the one before it
    /// (direction -1), after it (+1) or stays (0).
    T* Step(int direction) {
        T* const item = GetCurrent();
        if (item != nullptr) m_Current += direction;
        return item;
    }

    /// Destroys all items, first to last.
    void RemoveAll() {
        for (auto& item : m_Items)
            item.reset();
        m_Items.clear();
        m_Current = 0;
    }

    int GetCount() const { return static_cast<int>(m_Items.size()); }
    int GetCurrentIndex() const { return static_cast<int>(m_Current); }
    bool IsEmpty() const { return m_Items.empty(); }

    auto begin() const { return m_Items.begin(); }
    auto end() const { return m_Items.end(); }

 private:
    std::vector<std::unique_ptr<T>> m_Items;
    std::ptrdiff_t m_Current = 0;
};

}  // namespace varnel
