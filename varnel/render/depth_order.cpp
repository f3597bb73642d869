#include "varnel/render/detail/depth_order.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

#include "varnel/foundation/detail/less_work.h"

namespace varnel::detail {
namespace {

/// Vertices; with more of them polygons are no longer split.
constexpr std::size_t kMostVertices = 3'000'000 / kLessWork;
/// What lies so near to a plane lies in it.
constexpr double kThick = 1e-5;
/// Narrower polygons do not say where their planes are at the other side of the picture: their
/// corners are exact to 1e-7.
constexpr double kNarrow = 0.02;

Vec3 PlaceOf(const FillVertex& v) {
    return {static_cast<double>(v.position[0]), static_cast<double>(v.position[1]),
            static_cast<double>(v.position[2])};
}

FillVertex Between(const FillVertex& a, const FillVertex& b, double share) {
    const auto mix = [share](auto from, auto to) {
        return static_cast<double>(from) +
               (static_cast<double>(to) - static_cast<double>(from)) * share;
    };
    FillVertex v{};
    for (std::size_t i = 0; i < 3; ++i)
        v.position[i] = static_cast<float>(mix(a.position[i], b.position[i]));
    for (std::size_t i = 0; i < 4; ++i)
        v.color.bytes[i] =
            static_cast<std::uint8_t>(std::lround(mix(a.color.bytes[i], b.color.bytes[i])));
    v.texture = static_cast<float>(mix(a.texture, b.texture));
    return v;
}

}  // namespace

DepthOrder::Plane DepthOrder::PlaneOf(const FillVertex* corners, std::size_t n) {
    const Vec3 origin = PlaceOf(corners[0]);
    Vec3 sum{0.0, 0.0, 0.0};
    for (std::size_t i = 1; i + 1 < n; ++i) {
        const Vec3 part = Cross(PlaceOf(corners[i]) - origin, PlaceOf(corners[i + 1]) - origin);
        sum = {sum.x + part.x, sum.y + part.y, sum.z + part.z};
    }
    Vec3 normal = Normalized(sum);
    if (normal.z > 0.0) normal = {-normal.x, -normal.y, -normal.z};
    return {normal, Dot(normal, origin)};
}

double DepthOrder::Side(const Plane& plane, const FillVertex& vertex, float nearer) const {
    Vec3 place = PlaceOf(vertex);
    place.z -= static_cast<double>(nearer);
    return Dot(plane.normal, place) - plane.distance;
}

bool DepthOrder::IsFlat(const FillVertex* corners, std::size_t n) {
    const Plane plane = PlaneOf(corners, n);
    return std::all_of(corners, corners + n, [&](const FillVertex& v) {
        const double side = Dot(plane.normal, PlaceOf(v)) - plane.distance;
        return side <= kThick && side >= -kThick;
    });
}

bool DepthOrder::IsNarrow(const FillVertex* corners, std::size_t n) {
    double longest = 0.0;
    Vec3 sum{0.0, 0.0, 0.0};
    for (std::size_t i = 0; i < n; ++i) {
        const Vec3 a = PlaceOf(corners[i]) - PlaceOf(corners[0]);
        const Vec3 b = PlaceOf(corners[(i + 1) % n]) - PlaceOf(corners[0]);
        const Vec3 part = Cross(a, b);
        sum = {sum.x + part.x, sum.y + part.y, sum.z + part.z};
        longest = std::max(longest, Dot(b - a, b - a));
    }
    return Dot(sum, sum) < kNarrow * kNarrow * longest;
}

std::vector<DepthItem> DepthOrder::Order(std::vector<DepthItem> items) {
    m_Ordered.clear();
    for (DepthItem& item : items)
        item.plane = item.plane && !IsNarrow(m_Vertices.data() + item.first, item.count);
    Part(std::move(items));
    return std::move(m_Ordered);
}

void DepthOrder::Split(const Plane& plane, const DepthItem& item, DepthItem& behind,
                       DepthItem& before) {
    std::vector<FillVertex> parts[2];
    const FillVertex* const corners = m_Vertices.data() + item.first;
    for (std::uint32_t i = 0; i < item.count; ++i) {
        const FillVertex& a = corners[i];
        const FillVertex& b = corners[i + 1 < item.count ? i + 1 : 0];
        const double sideA = Side(plane, a, item.nearer);
        const double sideB = Side(plane, b, item.nearer);
        if (sideA <= kThick) parts[0].push_back(a);
        if (sideA >= -kThick) parts[1].push_back(a);
        const bool crosses =
            (sideA > kThick && sideB < -kThick) || (sideA < -kThick && sideB > kThick);
        if (!crosses) continue;
        // From the nearer end, so that neighbours cut the edge that they share alike.
        const FillVertex cut = sideA > sideB ? Between(a, b, sideA / (sideA - sideB))
                                             : Between(b, a, sideB / (sideB - sideA));
        parts[0].push_back(cut);
        parts[1].push_back(cut);
    }
    DepthItem* const out[2] = {&behind, &before};
    for (std::size_t k = 0; k < 2; ++k) {
        *out[k] = item;
        out[k]->first = static_cast<std::uint32_t>(m_Vertices.size());
        out[k]->count = static_cast<std::uint32_t>(parts[k].size());
        m_Vertices.insert(m_Vertices.end(), parts[k].begin(), parts[k].end());
    }
}

void DepthOrder::Part(std::vector<DepthItem> items) {
    if (items.empty()) return;
    // One in the middle of the order of drawing parts more evenly than the first would.
    const auto isPlane = [](const DepthItem& item) { return item.plane; };
    const auto planes = std::count_if(items.begin(), items.end(), isPlane);
    if (planes == 0) {
        std::stable_sort(items.begin(), items.end(),
                         [](const DepthItem& a, const DepthItem& b) { return a.key < b.key; });
        m_Ordered.insert(m_Ordered.end(), items.begin(), items.end());
        return;
    }
    auto chosen = std::find_if(items.begin(), items.end(), isPlane);
    for (std::ptrdiff_t i = 0; i < planes / 2; ++i)
        chosen = std::find_if(chosen + 1, items.end(), isPlane);
    chosen->plane = false;
    const auto number = static_cast<std::size_t>(chosen - items.begin());
    const Plane plane = PlaneOf(m_Vertices.data() + chosen->first, chosen->count);

    const bool splits = m_Vertices.size() < kMostVertices;
    std::vector<DepthItem> behind, in, before;
    for (std::size_t i = 0; i < items.size(); ++i) {
        DepthItem& item = items[i];
        double least = std::numeric_limits<double>::infinity();
        double most = -least;
        double sum = 0.0;
        for (std::uint32_t k = 0; k < item.count; ++k) {
            const double side = Side(plane, m_Vertices[item.first + k], item.nearer);
            least = std::min(least, side);
            most = std::max(most, side);
            sum += side;
        }
        if (i == number || (least >= -kThick && most <= kThick)) {
            in.push_back(item);
        } else if (splits && item.large && least < -kThick && most > kThick) {
            DepthItem parts[2];
            Split(plane, item, parts[0], parts[1]);
            behind.push_back(parts[0]);
            before.push_back(parts[1]);
        } else {
            (sum > 0.0 ? before : behind).push_back(item);
        }
    }
    items = {};
    Part(std::move(behind));
    m_Ordered.insert(m_Ordered.end(), in.begin(), in.end());
    Part(std::move(before));
}

}  // namespace varnel::detail
