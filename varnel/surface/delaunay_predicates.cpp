#include "varnel/surface/detail/delaunay_predicates.h"

#include <algorithm>
#include <array>
#include <cstddef>

namespace varnel::detail {

namespace {

/// a + b = sum + error, exactly.
struct Pair {
    double sum;
    double error;
};

Pair TwoSum(double a, double b) {
    const double sum = a + b;
    const double bPart = sum - a;
    const double aPart = sum - bPart;
    return {sum, (a - aPart) + (b - bPart)};
}

/// As TwoSum, for |a| >= |b|.
Pair FastTwoSum(double a, double b) {
    const double sum = a + b;
    return {sum, b - (sum - a)};
}

/// a = high + low with at most 26 bits each, so that products of halves are exact.
Pair Split(double a) {
    const double c = 0x1.0000002p+27 * a;
    const double high = c - (c - a);
    return {high, a - high};
}

Pair TwoProduct(double a, double b) {
    const double product = a * b;
    const auto [aHigh, aLow] = Split(a);
    const auto [bHigh, bLow] = Split(b);
    const double error = aLow * bLow - (((product - aHigh * bHigh) - aLow * bHigh) - aHigh * bLow);
    return {product, error};
}

/// A number as a sum of doubles that do not overlap, smallest first and without zeros: its sign is
/// the last one's.
template <std::size_t kMost>
struct Expansion {
    std::array<double, kMost> parts;
    std::size_t count = 0;

    void Append(double part) {
        if (part != 0.0) parts[count++] = part;
    }
    int GetSign() const { return count == 0 ? 0 : Sign(parts[count - 1]); }
};

Expansion<2> Difference(double a, double b) {
    Expansion<2> d;
    const auto [sum, error] = TwoSum(a, -b);
    d.Append(error);
    d.Append(sum);
    return d;
}

/// The sum of two expansions: their parts merged by size and added up from the smallest.
template <std::size_t kMost, std::size_t kE, std::size_t kF>
void Add(const Expansion<kE>& e, const Expansion<kF>& f, Expansion<kMost>& out) {
    out.count = 0;
    std::size_t i = 0, k = 0;
    const auto next = [&] {
        const bool fromE =
            k == f.count || (i < e.count && std::abs(e.parts[i]) < std::abs(f.parts[k]));
        return fromE ? e.parts[i++] : f.parts[k++];
    };
    if (e.count + f.count == 0) return;
    double q = next();
    for (std::size_t left = e.count + f.count - 1; left > 0; --left) {
        const auto [sum, error] = TwoSum(q, next());
        out.Append(error);
        q = sum;
    }
    out.Append(q);
}

template <std::size_t kE>
Expansion<2 * kE> Scale(const Expansion<kE>& e, double b) {
    Expansion<2 * kE> out;
    if (e.count == 0) return out;
    auto [q, first] = TwoProduct(e.parts[0], b);
    out.Append(first);
    for (std::size_t i = 1; i < e.count; ++i) {
        const auto [product, low] = TwoProduct(e.parts[i], b);
        const auto [sum, error] = TwoSum(q, low);
        out.Append(error);
        const auto [high, rest] = FastTwoSum(product, sum);
        out.Append(rest);
        q = high;
    }
    out.Append(q);
    return out;
}

template <std::size_t kE, std::size_t kF>
Expansion<2 * kE * kF> Product(const Expansion<kE>& e, const Expansion<kF>& f) {
    Expansion<2 * kE * kF> sum, next;
    for (std::size_t k = 0; k < f.count; ++k) {
        Add(sum, Scale(e, f.parts[k]), next);
        std::swap(sum, next);
    }
    return sum;
}

template <std::size_t kE>
Expansion<kE> Negative(Expansion<kE> e) {
    for (std::size_t i = 0; i < e.count; ++i)
        e.parts[i] = -e.parts[i];
    return e;
}

struct Vector {
    Expansion<2> x;
    Expansion<2> y;
};

Vector From(const Site& origin, const Site& to) {
    return {Difference(to.x, origin.x), Difference(to.y, origin.y)};
}

Expansion<16> Cross(const Vector& u, const Vector& v) {
    Expansion<16> out;
    Add(Product(u.x, v.y), Negative(Product(v.x, u.y)), out);
    return out;
}

Expansion<16> Dot(const Vector& u, const Vector& v) {
    Expansion<16> out;
    Add(Product(u.x, v.x), Product(u.y, v.y), out);
    return out;
}

}  // namespace

SiteScale::SiteScale(double largest) {
    const int shift = largest > 0.0 ? 199 - std::ilogb(largest) : 0;
    m_First = std::ldexp(1.0, shift / 2);
    m_Second = std::ldexp(1.0, shift - shift / 2);
}

int ExactOrientation(const Site& a, const Site& b, const Site& p) {
    return Cross(From(p, a), From(p, b)).GetSign();
}

int ExactAngleSum(const Site& v1, const Site& v2, const Site& v3, const Site& p) {
    const Vector a1 = From(v3, v1), a2 = From(v3, v2);
    const Vector b1 = From(p, v1), b2 = From(p, v2);
    Expansion<1024> sum;
    Add(Product(Cross(a1, a2), Dot(b2, b1)), Product(Cross(b2, b1), Dot(a1, a2)), sum);
    return sum.GetSign();
}

int SideSign(double a, double b, const Site& from, const Site& to) {
    const double first = a * (to.x - from.x);
    const double second = b * (to.y - from.y);
    constexpr double kBound = 0x1p-51;
    const double sum = first + second;
    if (std::abs(sum) >= kBound * (std::abs(first) + std::abs(second))) return Sign(sum);
    Expansion<8> exact;
    Add(Scale(Difference(to.x, from.x), a), Scale(Difference(to.y, from.y), b), exact);
    return exact.GetSign();
}

}  // namespace varnel::detail
