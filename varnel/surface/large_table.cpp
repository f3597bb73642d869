#include "varnel/surface/detail/large_table.h"

#include <sys/mman.h>

#include <new>

namespace varnel::detail {

void* AllocateLargePages(std::size_t size) {
    constexpr std::size_t kPage = std::size_t{1} << 21;
    constexpr std::size_t kCacheLine = 64;
    const bool large = size >= 2 * kPage;
    const std::size_t unit = large ? kPage : kCacheLine;
    const std::size_t rounded = (size + unit - 1) / unit * unit;
    void* const memory = std::aligned_alloc(unit, rounded);
    if (memory == nullptr) throw std::bad_alloc();
    // Only a hint: without large pages the table is as good.
    if (large) static_cast<void>(madvise(memory, rounded, MADV_HUGEPAGE));
    return memory;
}

}  // namespace varnel::detail
