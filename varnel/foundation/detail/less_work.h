// What a fuzzer is spared: it sees nothing more in the ten thousandth label than in the first few,
// and budgets of usual size would cost it most of its runs.
#pragma once

namespace varnel::detail {

/// Budgets of a picture's work are divided by this.
#ifdef FUZZING_BUILD_MODE_UNSAFE_FOR_PRODUCTION
inline constexpr int kLessWork = 200;
#else
inline constexpr int kLessWork = 1;
#endif

}  // namespace varnel::detail
