#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <optional>
#include <set>

#include "varnel/axes/detail/label_text.h"
#include "varnel/chart/detail/label_format.h"

namespace varnel::detail {
namespace {

// Formats of labels, in the order of preference.
constexpr int kFixed = 0, kEngineering = 2, kGeneral = 3, kExponential = 1;
constexpr int kFormats[] = {kFixed, kEngineering, kGeneral, kExponential};

constexpr int kMostDecimals = 16;       // a double has no more digits
constexpr double kLeastSuffixed = 1e4;  // where a suffix reads better than zeros
constexpr double kTolerance = 1e-6;

/// The number that a text shows.
double ReadBack(const CString& text, const CString& suffixes) {
    char* end = nullptr;
    const double number = std::strtod(text.c_str(), &end);
    if (*end == '\0') return number;
    const std::size_t thousands = suffixes.find(*end, 1);
    return thousands == CString::npos ? std::nan("")
                                      : number * std::pow(1000.0, static_cast<double>(thousands));
}

/// The length of the longest text; nothing when a text is not exact or two are alike.
std::optional<std::size_t> LongestText(std::span<const double> values, double step,
                                       const LabelFormat& format, const CString& suffixes) {
    std::set<CString> texts;
    std::size_t longest = 0;
    for (const double value : values) {
        const CString text = LabelText(value, format.format, format.decimals, suffixes);
        const double error = std::abs(ReadBack(text, suffixes) - value);
        if (!(error <= kTolerance * step) || !texts.insert(text).second) return {};
        longest = std::max(longest, text.size());
    }
    return longest;
}

}  // namespace

LabelFormat ShortestFormat(std::span<const double> values, double step, const CString& suffixes,
                           const LabelFormat& otherwise) {
    if (values.empty() || !(step > 0.0)) return otherwise;
    LabelFormat best = otherwise;
    std::optional<std::size_t> shortest;
    for (const int format : kFormats) {
        if (format == kEngineering && std::ranges::max(values) < kLeastSuffixed) continue;
        // More decimals than it takes only make a text longer.
        for (int decimals = format == kGeneral ? 1 : 0; decimals <= kMostDecimals; ++decimals) {
            const LabelFormat candidate{format, decimals};
            const auto length = LongestText(values, step, candidate, suffixes);
            if (!length) continue;
            if (!shortest || *length < *shortest) {
                shortest = length;
                best = candidate;
            }
            break;
        }
    }
    return best;
}

}  // namespace varnel::detail
