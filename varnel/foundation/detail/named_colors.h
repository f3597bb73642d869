// Colours that many files draw in.
#pragma once

#include "varnel/foundation/colors.h"

namespace varnel::detail {

inline constexpr RGBDType kBlack{0.0, 0.0, 0.0, 1.0};
inline constexpr RGBDType kWhite{1.0, 1.0, 1.0, 1.0};

}  // namespace varnel::detail
