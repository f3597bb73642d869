#include "varnel/foundation/numbers.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace varnel {
namespace {

constexpr double kLogFloor = 1e-30;
constexpr double kLogCeiling = 1e30;

}  // namespace

double log10Ex(double v) {
    if (v <= 0.0) return 0.0;
    if (v <= kLogFloor) return kLogFloor;
    if (v > kLogCeiling) return kLogCeiling;
    return std::log10(v);
}

double Antilog10Ex(double v) {
    return std::pow(10.0, v);
}

double AntilogLog10Ex(double v) {
    return Antilog10Ex(log10Ex(v));
}

int NearTest(double a, double b, double tol) {
    return std::fabs(b - a) <= tol ? 1 : 0;
}

void swapints(int& a, int& b) {
    std::swap(a, b);
}

void swapreals(double& a, double& b) {
    std::swap(a, b);
}

double GetMinimum(std::span<const double> values) {
    return values.empty() ? 0.0 : *std::ranges::min_element(values);
}

double GetMaximum(std::span<const double> values) {
    return values.empty() ? 0.0 : *std::ranges::max_element(values);
}

double GetMinimum(const double* a, int n) {
    return a == nullptr || n < 0 ? 0.0 : GetMinimum({a, static_cast<std::size_t>(std::max(n, 1))});
}

double GetMaximum(const double* a, int n) {
    return a == nullptr || n < 0 ? 0.0 : GetMaximum({a, static_cast<std::size_t>(std::max(n, 1))});
}

}  // namespace varnel
