// Decimal steps: whole multiples of 1, 2, 2.5 and 5 times powers of ten, without the rounding that
// adding a step again and again collects.
#pragma once

#include <cmath>

namespace varnel::detail {

/// 10 to a whole power.
inline double PowerOfTen(int exponent) {
    return std::pow(10.0, exponent);
}

/// mantissa * 10^exponent.
struct DecimalStep {
    double mantissa = 1.0;  // a whole number
    int exponent = 0;

    /// The k-th multiple. k * mantissa is exact, and negative powers of ten divide: 3 * 0.1 is 0.3.
    double Multiple(double k) const {
        const double whole = k * mantissa;
        return exponent < 0 ? whole / PowerOfTen(-exponent) : whole * PowerOfTen(exponent);
    }
    double Size() const { return Multiple(1.0); }
    /// The number of the last multiple at or below v, and of the first at or above it.
    double Below(double v) const {
        double k = std::floor(v / Size());
        while (Multiple(k) > v)
            --k;
        while (Multiple(k + 1.0) <= v)
            ++k;
        return k;
    }
    double Above(double v) const { return -Below(-v); }
};

}  // namespace varnel::detail
