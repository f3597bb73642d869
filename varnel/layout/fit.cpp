#include "varnel/layout/fit.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <span>

#include "varnel/render/detail/matrix_stack.h"

namespace varnel {
namespace {

using detail::Matrix4;
using detail::Rotation;

constexpr int kSteps = 6;
/// A box is never smaller than this part of the frame, whatever its labels want.
constexpr double kSmallestPart = 0.1;
/// Pixels by which a placement may still change when it counts as settled.
constexpr double kSettled = 0.25;

/// The frame's pixels in a unit of the box before rotation, across and up.
PixelPoint PixelsPerUnit(const BoxPlacement& p) {
    const double across = p.width / 2.0;
    const double up = p.height / 2.0;
    if (!p.trueProportions) return {across, up};
    return {std::min(across, up), std::min(across, up)};
}

/// How far a unit along x, y and z of the box goes across and up the frame, in pixels.
struct Directions {
    double across[3];
    double up[3];
};

Directions DirectionsOf(const BoxPlacement& p) {
    const Matrix4 turn = Rotation(-90.0, 0) * Rotation(p.rotation.x, 0) *
                         Rotation(p.rotation.y, 1) * Rotation(p.rotation.z, 2);
    const PixelPoint unit = PixelsPerUnit(p);
    Directions d{};
    for (int axis = 0; axis < 3; ++axis) {
        d.across[axis] = unit.x * turn.At(0, axis);
        d.up[axis] = unit.y * turn.At(1, axis);
    }
    return d;
}

/// Half of what the box covers, across and up.
PixelPoint HalfExtent(const BoxPlacement& p) {
    const Directions d = DirectionsOf(p);
    PixelPoint half;
    for (int axis = 0; axis < 3; ++axis) {
        const double edge = std::abs(GetCoord3D(p.rect, axis));
        half.x += edge * std::abs(d.across[axis]);
        half.y += edge * std::abs(d.up[axis]);
    }
    return half;
}

/// The offset turned like the box's z: along y it only moves the box away.
PixelPoint Center(const BoxPlacement& p) {
    const PixelPoint unit = PixelsPerUnit(p);
    return {p.width / 2.0 + p.offset.x * unit.x, p.height / 2.0 + p.offset.z * unit.y};
}

void MoveCenter(BoxPlacement& p, const PixelPoint& center) {
    const PixelPoint unit = PixelsPerUnit(p);
    p.offset = {(center.x - p.width / 2.0) / unit.x, 0.0, (center.y - p.height / 2.0) / unit.y,
                0.0};
}

/// What the chart may cover.
PixelRect Available(const BoxPlacement& p, const FitOptions& options) {
    const double margin = options.margin * std::min(p.width, p.height);
    return {margin + options.left, margin + options.bottom, p.width - margin - options.right,
            p.height - margin - options.top};
}

/// What reaches beyond the box.
struct Overhang {
    double left = 0.0;
    double bottom = 0.0;
    double right = 0.0;
    double top = 0.0;

    void Include(const PixelRect& box, const PixelRect& all) {
        if (all.IsEmpty()) return;
        left = std::max(left, box.left - all.left);
        bottom = std::max(bottom, box.bottom - all.bottom);
        right = std::max(right, all.right - box.right);
        top = std::max(top, all.top - box.top);
    }
};

/// Which edges of the box are seen as its width, its height and its depth.
struct SeenEdges {
    int wide = 0;
    int high = 2;
    int deep = 1;
};

SeenEdges EdgesSeen(const Directions& d) {
    SeenEdges seen;
    for (int axis = 1; axis < 3; ++axis) {
        if (std::abs(d.across[axis]) > std::abs(d.across[seen.wide]) + 1e-9) seen.wide = axis;
    }
    const int first = seen.wide == 2 ? 1 : 2;
    const int second = 3 - seen.wide - first;
    const bool upright = std::abs(d.up[first]) >= std::abs(d.up[second]);
    seen.high = upright ? first : second;
    seen.deep = upright ? second : first;
    return seen;
}

/// Gives the box the size that a room allows, the room being given as half extents.
void Resize(BoxPlacement& p, const FitOptions& options, const PixelPoint& half,
            const PixelPoint& room) {
    const Directions d = DirectionsOf(p);
    const SeenEdges seen = EdgesSeen(d);
    const double high = std::abs(d.up[seen.high]);
    if (options.fillDepth > 0.0 && half.x > 0.0 && high > 0.25 * PixelsPerUnit(p).y) {
        const double x = GetCoord3D(p.rect, seen.wide) * room.x / half.x;
        // What width and depth take of the height, at most half of it.
        const double lower =
            x * (std::abs(d.up[seen.wide]) + options.fillDepth * std::abs(d.up[seen.deep]));
        const double shrink = std::min(1.0, 0.5 * room.y / std::max(lower, 1e-9));
        coordassign(p.rect, seen.wide, shrink * x);
        coordassign(p.rect, seen.deep, shrink * options.fillDepth * x);
        coordassign(p.rect, seen.high, (room.y - shrink * lower) / high);
        return;
    }
    const double scale =
        std::min(half.x > 0.0 ? room.x / half.x : 1e9, half.y > 0.0 ? room.y / half.y : 1e9);
    p.rect = {p.rect.x * scale, p.rect.y * scale, p.rect.z * scale, 0.0};
}

/// One step: the size that `over` leaves room for, and the place in the middle of it. Returns how
/// far anything moved.
double Step(BoxPlacement& p, const FitOptions& options, const PixelPoint& half,
            const Overhang& over) {
    const PixelRect room = Available(p, options);
    const double least = kSmallestPart / 2.0;
    const PixelPoint wanted{
        std::max((room.Width() - over.left - over.right) / 2.0, least * p.width),
        std::max((room.Height() - over.bottom - over.top) / 2.0, least * p.height)};
    const PixelPoint before = Center(p);
    Resize(p, options, half, wanted);
    const PixelPoint center{
        room.left + over.left + (room.Width() - over.left - over.right) / 2.0,
        room.bottom + over.bottom + (room.Height() - over.bottom - over.top) / 2.0};
    MoveCenter(p, center);
    return std::max({std::abs(center.x - before.x), std::abs(center.y - before.y),
                     std::abs(HalfExtent(p).x - half.x), std::abs(HalfExtent(p).y - half.y)});
}

void Begin(BoxPlacement& p, const FitOptions& options) {
    const double longest =
        std::max({options.proportions.x, options.proportions.y, options.proportions.z});
    const double size = 0.5 / (longest > 0.0 ? longest : 1.0);
    p.rect = {size * options.proportions.x, size * options.proportions.y,
              size * options.proportions.z, 0.0};
    p.offset = {};
}

/// Repeats `overhang` and steps until nothing moves; `half` is what the box covers at most.
template <class Half, class Measure>
BoxPlacement Settle(BoxPlacement p, const FitOptions& options, Half half, Measure overhang) {
    if (p.width < 1 || p.height < 1) return p;
    Begin(p, options);
    Step(p, options, half(p), Overhang());
    for (int i = 0; i < kSteps; ++i) {
        const Overhang over = overhang(p);
        const double moved = Step(p, options, half(p), over);
        if (moved < kSettled) break;
    }
    return p;
}

/// Labels may change their arrangement with the smallest change of size, so that the iteration does
/// not always end: what is outside then is moved in, or the box is made smaller until it can be.
void BringInside(BoxPlacement& p, const FitOptions& options, const MeasureFunction& measure) {
    constexpr int kTries = 12;
    constexpr double kSmaller = 0.97;
    const PixelRect room = Available(p, options);
    for (int i = 0; i < kTries; ++i) {
        const PixelRect all = measure(p);
        if (all.IsEmpty() || room.Contains(all, kSettled)) return;
        const double scale = std::min(room.Width() / all.Width(), room.Height() / all.Height());
        if (scale < 1.0) {
            const double smaller = std::min(scale, kSmaller);
            p.rect = {smaller * p.rect.x, smaller * p.rect.y, smaller * p.rect.z, 0.0};
        }
        const PixelPoint center = Center(p);
        const auto shift = [](double low, double high, double from, double to) {
            return low < from ? from - low : high > to ? to - high : 0.0;
        };
        MoveCenter(p, {center.x + shift(all.left, all.right, room.left, room.right),
                       center.y + shift(all.bottom, all.top, room.bottom, room.top)});
    }
}

}  // namespace

void PixelRect::Add(const PixelRect& other) {
    if (other.IsEmpty()) return;
    left = std::min(left, other.left);
    bottom = std::min(bottom, other.bottom);
    right = std::max(right, other.right);
    top = std::max(top, other.top);
}

bool PixelRect::Overlaps(const PixelRect& other, double gap) const {
    return left < other.right + gap && other.left < right + gap && bottom < other.top + gap &&
           other.bottom < top + gap;
}

PixelPoint BoxToPixel(const BoxPlacement& p, const point3Dtype& boxPoint) {
    const Directions d = DirectionsOf(p);
    PixelPoint at = Center(p);
    for (int axis = 0; axis < 3; ++axis) {
        at.x += GetCoord3D(boxPoint, axis) * d.across[axis];
        at.y += GetCoord3D(boxPoint, axis) * d.up[axis];
    }
    return at;
}

PixelRect BoxExtent(const BoxPlacement& p) {
    const PixelPoint center = Center(p);
    const PixelPoint half = HalfExtent(p);
    return {center.x - half.x, center.y - half.y, center.x + half.x, center.y + half.y};
}

BoxPlacement FitBox(const BoxPlacement& start, const FitOptions& options,
                    const MeasureFunction& measure) {
    BoxPlacement p = Settle(start, options, HalfExtent, [&](const BoxPlacement& tried) {
        Overhang over;
        over.Include(BoxExtent(tried), measure(tried));
        return over;
    });
    if (p.width > 0 && p.height > 0) BringInside(p, options, measure);
    return p;
}

BoxPlacement FitTurningBox(const BoxPlacement& start, const FitOptions& options,
                           const MeasureFunction& measure) {
    // At the corner that looks at the viewer a box is widest: as wide as its diagonal.
    const auto largest = [](const BoxPlacement& p) {
        const PixelPoint unit = PixelsPerUnit(p);
        const double diagonal = std::hypot(p.rect.x, p.rect.y);
        const Matrix4 tilt = Rotation(-90.0, 0) * Rotation(p.rotation.x, 0);
        return PixelPoint{diagonal * unit.x,
                          unit.y * (diagonal * std::abs(tilt.At(1, 1)) +
                                    std::abs(p.rect.z) * std::abs(tilt.At(1, 2)))};
    };
    FitOptions kept = options;
    kept.fillDepth = 0.0;
    // What reaches beyond the box at some directions, and which of them reaches the farthest at
    // each side.
    struct Reach {
        Overhang over;
        std::array<double, 4> farthest{};
    };
    const auto reachOf = [&](BoxPlacement p, std::span<const double> directions) {
        const PixelPoint center = Center(p);
        const PixelPoint half = largest(p);
        const PixelRect widest{center.x - half.x, center.y - half.y, center.x + half.x,
                               center.y + half.y};
        Reach reach;
        for (const double direction : directions) {
            p.rotation.z = direction;
            const Overhang before = reach.over;
            reach.over.Include(widest, measure(p));
            if (reach.over.left > before.left) reach.farthest[0] = direction;
            if (reach.over.bottom > before.bottom) reach.farthest[1] = direction;
            if (reach.over.right > before.right) reach.farthest[2] = direction;
            if (reach.over.top > before.top) reach.farthest[3] = direction;
        }
        return reach;
    };
    constexpr std::size_t kAll = 24;
    std::array<double, kAll> all{};
    for (std::size_t i = 0; i < kAll; ++i)
        all[i] = static_cast<double>(i) * 360.0 / kAll;
    // The directions that reach the farthest bring the size near, then all are looked at again.
    BoxPlacement p = start;
    if (p.width < 1 || p.height < 1) return p;
    Begin(p, kept);
    Step(p, kept, largest(p), Overhang());
    for (int round = 0; round < 2; ++round) {
        const Reach reach = reachOf(p, all);
        double moved = Step(p, kept, largest(p), reach.over);
        for (int i = 0; round == 0 && i < kSteps / 2 && moved >= kSettled; ++i)
            moved = Step(p, kept, largest(p), reachOf(p, reach.farthest).over);
        if (moved < kSettled) break;
    }
    return p;
}

TextSizes TextSizesFor(int width, int height) {
    constexpr double kUsual = 11.0 * 96.0 / 72.0;
    constexpr double kUsualSide = 480.0;
    constexpr double kGrowth = 0.75;
    const double side = std::max(1, std::min(width, height));
    const double label = std::clamp(kUsual * std::pow(side / kUsualSide, kGrowth), 9.0, 60.0);
    return {label, 1.25 * label, label, std::max(0.8 * label, 9.0), label / kUsual};
}

HeaderStrips StripsFor(const TextSizes& sizes, bool title, bool subtitle, bool footer) {
    // A line and the room to what is below or above it.
    constexpr double kLine = 1.3;
    constexpr double kFooterGap = 0.35;  // half a label's height more
    HeaderStrips strips;
    if (title) strips.top += kLine * sizes.title;
    if (subtitle) strips.top += kLine * sizes.subtitle;
    if (footer) strips.bottom += kLine * sizes.footer + kFooterGap * sizes.label;
    return strips;
}

}  // namespace varnel
