#include "varnel/foundation/numbers.h"

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

double GetMinimum(const double* a, int n) {
    if (a == nullptr || n < 0) return 0.0;
    double best = a[0];
    for (int i = 1; i < n; ++i)
        if (a[i] < best) best = a[i];
    return best;
}

double GetMaximum(const double* a, int n) {
    if (a == nullptr || n < 0) return 0.0;
    double best = a[0];
    for (int i = 1; i < n; ++i)
        if (a[i] > best) best = a[i];
    return best;
}

}  // namespace varnel
