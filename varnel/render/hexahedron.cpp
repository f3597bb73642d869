#include <algorithm>
#include <array>

#include "varnel/render/detail/hexahedron.h"

namespace varnel::detail {
namespace {

// Each corner with its three neighbours, in an order that makes their triple product positive where
// normals point outward.
constexpr int kNeighbours[8][3] = {{3, 1, 4}, {0, 2, 5}, {1, 3, 6}, {2, 0, 7},
                                   {5, 7, 0}, {6, 4, 1}, {7, 5, 2}, {4, 6, 3}};

/// Twice the area of the triangle a b c on the screen, counter-clockwise positive.
double ScreenArea(const Vec3& a, const Vec3& b, const Vec3& c) {
    return (b.x - a.x) * (c.y - a.y) - (b.y - a.y) * (c.x - a.x);
}

/// Whether a face that runs counter-clockwise around its outward normal looks away from the viewer,
/// who stands on the side of negative z. A mirroring matrix turns the corners round.
bool LooksAway(const Vec3 corner[4], int handedness) {
    const double first = ScreenArea(corner[0], corner[1], corner[2]) * handedness;
    const double second = ScreenArea(corner[0], corner[2], corner[3]) * handedness;
    return first >= 0.0 && second >= 0.0 && first + second > 0.0;
}

double VolumeAt(const Vec3 corners[8], int i) {
    const Vec3& c = corners[i];
    return Dot(Cross(corners[kNeighbours[i][0]] - c, corners[kNeighbours[i][1]] - c),
               corners[kNeighbours[i][2]] - c);
}

bool IsFlat(const Vec3 corners[8]) {
    for (int i = 0; i < 8; ++i)
        if (VolumeAt(corners, i) != 0.0) return false;
    return true;
}

bool SamePlace(const Vec3& a, const Vec3& b) {
    return a.x == b.x && a.y == b.y && a.z == b.z;
}

}  // namespace

int Orientation(const Vec3 corners[8]) {
    bool outward = false;
    bool inward = false;
    for (int i = 0; i < 8; ++i) {
        const double volume = VolumeAt(corners, i);
        outward = outward || volume > 0.0;
        inward = inward || volume < 0.0;
    }
    if (outward == inward) return 0;
    return outward ? 1 : -1;
}

unsigned AddHexahedron(Renderer& renderer, const SurfaceStyle& style, const point3Dtype corners[8],
                       const int faceFlags[6]) {
    if (!renderer.ToDevice(corners, 8)) return 0;
    std::array<Vec3, 8> device{};
    std::copy_n(renderer.corners.begin(), 8, device.begin());
    const int handedness = renderer.matrix.Handedness();
    const int orientation = Orientation(device.data()) * handedness;
    const bool whole = std::all_of(faceFlags, faceFlags + 6, [](int flag) { return flag != 0; });
    // What has no depth can be seen through once, not at its back as well.
    const bool flat =
        orientation == 0 && renderer.IsSeeThrough(style.color) && IsFlat(device.data());
    const bool hideBack = flat || (orientation != 0 && whole && !renderer.scene.clipping);
    unsigned edges = 0;
    unsigned seams = 0;
    for (const HexahedronFace& face : kHexahedronFaces) {
        if (faceFlags[face.flag] < 0) seams |= face.edges;
        if (faceFlags[face.flag] <= 0) continue;
        point3Dtype pts[4];
        renderer.corners.resize(4);
        for (std::size_t i = 0; i < 4; ++i) {
            const int corner = face.corners[orientation < 0 ? (4 - i) % 4 : i];
            pts[i] = corners[corner];
            renderer.corners[i] = device[static_cast<std::size_t>(corner)];
        }
        if (hideBack && LooksAway(renderer.corners.data(), handedness)) continue;
        renderer.AddFill(style, pts, 4);
        edges |= face.edges;
    }
    renderer.corners.assign(device.begin(), device.end());
    return edges & ~seams;
}

void AddHexahedronEdges(Renderer& renderer, unsigned edges, const RGBDType& color) {
    std::array<Vec3, 8> solid{};
    std::copy_n(renderer.corners.begin(), solid.size(), solid.begin());
    renderer.corners.resize(2);
    for (unsigned k = 0; k < 12; ++k) {
        if ((edges >> k & 1U) == 0) continue;
        for (std::size_t end = 0; end < 2; ++end)
            renderer.corners[end] = solid[static_cast<std::size_t>(kHexahedronEdges[k][end])];
        if (!SamePlace(renderer.corners[0], renderer.corners[1]))
            renderer.AddOutline(2, false, color);
    }
}

}  // namespace varnel::detail
