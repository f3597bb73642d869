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

bool Stroker::IsDrawn(double along) const {
    const double bit = std::fmod(std::floor(along / m_Style.bit), 16.0);
    return (static_cast<unsigned>(m_Style.pattern) >> static_cast<unsigned>(bit) & 1U) != 0;
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
