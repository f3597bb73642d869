// A colour given in bytes is the commonest mistake with colours: everything turns white.
#pragma once

#include <algorithm>

#include "varnel/foundation/colors.h"
#include "varnel/foundation/detail/diagnose.h"

namespace varnel::detail {

/// Tells when a component is above 1; what is drawn stays the same.
inline void CheckColor(const char* operation, const RGBDType& c) {
    const double most = std::max({c.r, c.g, c.b});
    if (most > 1.0)
        Diagnose(operation, "a colour has the component ", most, "; components run from 0 to 1");
}

}  // namespace varnel::detail
