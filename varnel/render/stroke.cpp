#include "varnel/render/detail/stroke.h"

namespace varnel::detail {

Stroker::Stroker(const StrokeStyle& style)
    : m_Style(style),
      m_Radius(style.width / 2.0),
      m_Step(2.0 * std::numbers::pi / CircleCorners(style.width / 2.0)) {
}

bool Stroker::SeenPart(const StrokePoint& a, const StrokePoint& b, double& from, double& to) const {
    const double reach = m_Radius + 1.0;
    const auto cut = [&](double va, double vb) {  // seen where the value is not below 0
        if (va < 0.0 && vb < 0.0) to = -1.0;
        if ((va < 0.0) == (vb < 0.0)) return;
        const double t = va / (va - vb);
        va < 0.0 ? from = std::max(from, t) : to = std::min(to, t);
    };
    cut(a.x + reach, b.x + reach);
    cut(m_Style.viewWidth + reach - a.x, m_Style.viewWidth + reach - b.x);
    cut(a.y + reach, b.y + reach);
    cut(m_Style.viewHeight + reach - a.y, m_Style.viewHeight + reach - b.y);
    return from <= to;
}

bool Stroker::IsSeen(const StrokePoint& p) const {
    double from = 0.0;
    double to = 1.0;
    return SeenPart(p, p, from, to);
}

std::size_t Stroker::Reduce(std::span<StrokePoint> points) {
    // Points closer to the one before, in pixels and in depth, change nothing that can be seen.
    constexpr double kSame = 0.05;
    constexpr double kSameDepth = 1e-3;
    std::size_t kept = 1;
    for (std::size_t i = 1; i < points.size(); ++i) {
        const StrokePoint& p = points[i];
        const StrokePoint& last = points[kept - 1];
        const double length = std::hypot(p.x - last.x, p.y - last.y);
        const bool isLast = i + 1 == points.size();
        if (length == 0.0 && p.color == last.color && p.z != last.z) {
            if (kept == 1 || IsStep(points, kept - 1))
                points[kept - 1].z = p.z;
            else
                points[kept++] = p;
            continue;
        }
        if (!(length > 0.0) || !std::isfinite(length) ||
            (length < kSame && !isLast && std::fabs(p.z - last.z) < kSameDepth &&
             p.color == last.color))
            continue;
        points[kept++] = p;
    }
    return kept > 1 && IsStep(points, kept - 1) ? kept - 1 : kept;
}

bool Stroker::IsStep(std::span<const StrokePoint> points, std::size_t i) {
    return points[i - 1].x == points[i].x && points[i - 1].y == points[i].y;
}

std::size_t Stroker::GoesOn(std::span<const StrokePoint> points, std::size_t i) {
    return IsStep(points, i + 1) ? i + 1 : i;
}

Stroker::Segment Stroker::Straight(const StrokePoint& a, const StrokePoint& b) {
    const double length = std::hypot(b.x - a.x, b.y - a.y);
    return {&a, &b, length, {(b.x - a.x) / length, (b.y - a.y) / length}};
}

Stroker::Turn Stroker::TurnBetween(const Segment& in, const Segment& out) const {
    const Direction& a = in.d;
    const Direction& b = out.d;
    Turn turn{a, b, std::atan2(a.x * b.y - a.y * b.x, a.x * b.x + a.y * b.y)};
    // Each of a band's ends may take half of it.
    const double trim = m_Radius * std::tan(std::fabs(turn.angle) / 2.0);
    if (m_Style.apart && 2.0 * trim <= std::min(in.length, out.length)) turn.trim = trim;
    return turn;
}

Stroker::Trim Stroker::TrimOf(const Turn& turn) {
    return turn.angle > 0.0 ? Trim{turn.trim, 0.0} : Trim{0.0, turn.trim};
}

bool Stroker::IsDrawn(double along) const {
    const double bit = std::fmod(std::floor(along / m_Style.bit), 16.0);
    return (static_cast<unsigned>(m_Style.pattern) >> static_cast<unsigned>(bit) & 1U) != 0;
}

bool Stroker::ReachesAround(double along, double far) const {
    if (far >= Period()) return false;
    for (double at = -far; at < far; at += m_Style.bit / 2.0)
        if (!IsDrawn(along + at + Period())) return false;
    return IsDrawn(along + far);
}

StrokePoint Between(const StrokePoint& a, const StrokePoint& b, double t) {
    if (t <= 0.0) return a;
    if (t >= 1.0) return b;
    StrokePoint p{a.x + t * (b.x - a.x), a.y + t * (b.y - a.y), a.z + t * (b.z - a.z), a.color};
    if (a.color == b.color) return p;
    for (std::size_t i = 0; i < 4; ++i)
        p.color.bytes[i] = static_cast<std::uint8_t>(
            std::lround(a.color.bytes[i] + t * (b.color.bytes[i] - a.color.bytes[i])));
    return p;
}

}  // namespace varnel::detail
