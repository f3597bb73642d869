// Texts for people put together from pieces, as in Say("the count is ", count).
#pragma once

#include <sstream>
#include <string>

namespace varnel::detail {

/// The pieces as a stream in the C locale prints them, one behind the other.
template <class... Pieces>
std::string Say(const Pieces&... pieces) {
    std::ostringstream text;
    text.imbue(std::locale::classic());
    (text << ... << pieces);
    return text.str();
}

}  // namespace varnel::detail
