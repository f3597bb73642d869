// A table of many megabytes that is filled before it is read and visited at random: it asks for
// large memory pages, which are handed out faster than small ones and found faster afterwards.
#pragma once

#include <cstddef>
#include <cstdlib>
#include <memory>

namespace varnel::detail {

struct FreeMemory {
    void operator()(void* memory) const { std::free(memory); }
};

template <class T>
using LargeTable = std::unique_ptr<T[], FreeMemory>;

/// `size` bytes, aligned for any type up to a cache line. Throws std::bad_alloc.
void* AllocateLargePages(std::size_t size);

/// Room for `count` elements of a type without constructor and destructor. Throws std::bad_alloc.
template <class T>
LargeTable<T> NewLargeTable(std::size_t count) {
    return LargeTable<T>(static_cast<T*>(AllocateLargePages(count * sizeof(T))));
}

}  // namespace varnel::detail
