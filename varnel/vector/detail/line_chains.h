// Segments joined to lines that run on, so that a page holds few long paths instead of many pieces.
#pragma once

#include <cstddef>
#include <cstdint>
#include <unordered_map>
#include <vector>

#include "varnel/platform/detail/page_canvas.h"

namespace varnel::detail {

class LineChains {
 public:
    /// Adds a segment. One that begins where the last one ended runs on from it.
    void Add(const GridPoint& a, const GridPoint& b);

    /// The lines, joined at their ends where `join` is set (in whatever direction: not for lines
    /// with dashes, whose pattern starts with them). Nothing is left afterwards.
    std::vector<Ring> Take(bool join);

    bool IsEmpty() const { return m_Lines.empty(); }

 private:
    std::vector<Ring> m_Lines;
};

}  // namespace varnel::detail
