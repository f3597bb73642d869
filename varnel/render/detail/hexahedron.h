// The solid that all bars, areas and symbols are made of: eight corners, six faces, twelve edges.
//
//        7-------6        corners 0..3 are the bottom, 4..7 lie above them;
//       /|      /|        counted like this every face runs so that CalcNormal of its first
//      4-------5 |        three corners points outward
//      | 3-----|-2
//      |/      |/
//      0-------1
#pragma once

#include "varnel/render/detail/renderer.h"

namespace varnel::detail {

struct HexahedronFace {
    int corners[4];
    int flag;        ///< index of its switch among the six face flags
    unsigned edges;  ///< bit k: edge k of kHexahedronEdges bounds it
};

inline constexpr int kHexahedronEdges[12][2] = {{0, 1}, {1, 2}, {2, 3}, {3, 0}, {4, 5}, {5, 6},
                                                {6, 7}, {7, 4}, {0, 4}, {1, 5}, {2, 6}, {3, 7}};

/// In the order in which they are drawn.
inline constexpr HexahedronFace kHexahedronFaces[6] = {
    {{0, 3, 7, 4}, 0, 0b1001'1000'1000U}, {{1, 5, 6, 2}, 5, 0b0110'0010'0010U},
    {{0, 4, 5, 1}, 1, 0b0011'0001'0001U}, {{3, 2, 6, 7}, 2, 0b1100'0100'0100U},
    {{0, 1, 2, 3}, 3, 0b0000'0000'1111U}, {{4, 7, 6, 5}, 4, 0b0000'1111'0000U},
};

/// 1 when the faces' normals point outward at every corner, -1 when they point inward (the solid is
/// given inside out), 0 when the solid is folded through itself or flat.
int Orientation(const Vec3 corners[8]);

/// Adds the faces whose flags are set, turned outward when the solid is given inside out. Faces of
/// a whole, uncut solid that look away from the viewer are left out: its front hides them. Returns
/// the edges of the faces added, without those around a face with a negative flag, and leaves the
/// eight corners in `renderer.corners`.
unsigned AddHexahedron(Renderer& renderer, const SurfaceStyle& style, const point3Dtype corners[8],
                       const int faceFlags[6]);

/// Adds edges of the solid whose corners AddHexahedron has left, each once.
void AddHexahedronEdges(Renderer& renderer, unsigned edges, const RGBDType& color);

}  // namespace varnel::detail
