// How far behind their places, in device units, charts without gaps in their lines
// (COpenGL::SetLineAreas) draw the walls of their box and what lies on them: data on a wall, and
// the feet of bars, are whole.
#pragma once

namespace varnel::detail {

inline constexpr double kGridDepth = 2e-4;
inline constexpr double kBandDepth = 4e-4;
inline constexpr double kWallDepth = 6e-4;

}  // namespace varnel::detail
