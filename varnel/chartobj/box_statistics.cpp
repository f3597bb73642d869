#include "varnel/chartobj/box_statistics.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numeric>
#include <span>

#include "varnel/chartobj/detail/common_count.h"
#include "varnel/foundation/detail/raise.h"

namespace varnel {
namespace {

double Quantile(std::span<const double> sorted, double p) {
    const double place = static_cast<double>(sorted.size() - 1) * p;
    const auto below = static_cast<std::size_t>(place);
    if (below + 1 >= sorted.size()) return sorted.back();
    return std::lerp(sorted[below], sorted[below + 1], place - static_cast<double>(below));
}

double Mean(std::span<const double> samples) {
    return std::accumulate(samples.begin(), samples.end(), 0.0) /
           static_cast<double>(samples.size());
}

}  // namespace

void BoxStatistics(const double* samples, int count, double* six, int stride) {
    const detail::Origin origin{ERR3DCLASS_CHARTOBJ3D, "BoxStatistics"};
    if (six == nullptr || (samples == nullptr && count > 0))
        detail::Raise(
            ERR3D_NULL_POINTER, origin.cls, origin.operation,
            six == nullptr ? "there is no place for the results" : "the samples are null");
    const auto sorted = detail::NewArray<double>(std::max(count, 0), origin);
    const auto end = std::copy_if(samples, samples + std::max(count, 0), sorted.get(),
                                  [](double v) { return std::isfinite(v); });
    std::sort(sorted.get(), end);
    const std::span<const double> data(sorted.get(), end);

    constexpr double kNone = std::numeric_limits<double>::quiet_NaN();
    double values[6] = {kNone, kNone, kNone, kNone, kNone, kNone};
    if (!data.empty()) {
        for (int k = 0; k < 5; ++k)
            values[k] = Quantile(data, k / 4.0);
        values[5] = Mean(data);
    }
    for (int k = 0; k < 6; ++k)
        six[static_cast<std::ptrdiff_t>(k) * stride] = values[k];
}

void BoxStatistics(std::span<const double> samples, double* six, int stride) {
    BoxStatistics(samples.data(), detail::CommonCount("BoxStatistics", samples), six, stride);
}

}  // namespace varnel
