// Justification: where a text lies about its location, along one direction of the text.
#pragma once

namespace varnel::detail {

/// What to add to a location so that a text of `width` starts (0), is centred (1) or ends (2)
/// there; 0 for other codes.
inline double JustifyOffset(double width, int justify) {
    if (justify == 1) return -width / 2.0;
    if (justify == 2) return -width;
    return 0.0;
}

}  // namespace varnel::detail
