#include "varnel/scale/tic_labels.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdlib>
#include <optional>
#include <utility>

#include "varnel/scale/detail/decimal.h"
#include "varnel/scale/detail/number_text.h"

namespace varnel {
namespace {

using detail::Exponential;
using detail::FixedText;
using detail::PowerOfTen;
using detail::ToExponential;
using detail::WithoutTrailingZeros;

/// Plain numbers up to so many characters are what readers expect, however short 3K is.
constexpr std::size_t kPlainLength = 5;
constexpr int kMostDecimals = 17;
/// Decimals at which 0.99999999999999989 is 1, as which it is written.
constexpr int kSignificant = 12;

/// Letters for 10^-12 .. 10^12, by powers of 1000 ("µ" is U+00B5).
constexpr int kSmallestGroup = -4;
constexpr int kLargestGroup = 4;
constexpr std::array<const char*, 9> kLetters = {"p", "n", "µ", "m", "", "K", "M", "B", "T"};

using Texts = std::vector<std::string>;

/// The values with what decides whether a text is exact.
struct Values {
    std::span<const double> all;
    double largest = 0.0;    // magnitude
    double tolerance = 0.0;  // a text that is closer shows its value

    explicit Values(std::span<const double> values) : all(values) {
        std::vector<double> sorted;
        for (const double v : values) {
            if (!std::isfinite(v)) continue;
            sorted.push_back(v);
            largest = std::max(largest, std::abs(v));
        }
        std::sort(sorted.begin(), sorted.end());
        sorted.erase(std::unique(sorted.begin(), sorted.end()), sorted.end());
        double distance = largest;
        for (std::size_t i = 1; i < sorted.size(); ++i)
            distance = std::min(distance, sorted[i] - sorted[i - 1]);
        // On a logarithmic axis the smallest values are the closest: they rule. A value by itself
        // is shown to the digits that are meant.
        tolerance = sorted.size() > 1 ? 1e-6 * distance : 1e-12 * largest;
    }
};

double ToNumber(const std::string& text) {
    double value = 0.0;
    std::from_chars(text.data(), text.data() + text.size(), value);
    return value;
}

/// The smallest number of decimals, from `least` on, with which `write` shows every value.
template <class Write>
std::optional<Texts> WithFewestDecimals(const Values& values, int given, const Write& write) {
    const int first = given >= 0 ? given : 0;
    const int last = given >= 0 ? given : kMostDecimals;
    for (int decimals = first; decimals <= last; ++decimals) {
        Texts texts;
        bool exact = true;
        for (const double v : values.all) {
            if (!std::isfinite(v)) {
                texts.emplace_back();
                continue;
            }
            auto [text, shown] = write(v, decimals);
            exact = exact && std::abs(shown - v) <= values.tolerance;
            texts.push_back(std::move(text));
        }
        if (exact || given >= 0) return texts;
    }
    return std::nullopt;
}

using Written = std::pair<std::string, double>;  // a text, and the value that it shows

std::optional<Texts> Fixed(const Values& values, int decimals, double factor = 1.0,
                           double offset = 0.0) {
    return WithFewestDecimals(values, decimals, [&](double v, int digits) {
        std::string text = FixedText((v - offset) / factor, digits);
        const double shown = ToNumber(text) * factor + offset;
        return Written{std::move(text), shown};
    });
}

int GroupOf(double magnitude) {
    if (magnitude == 0.0) return 0;
    const int group =
        static_cast<int>(std::floor(ToExponential(magnitude, kSignificant).exponent / 3.0));
    return std::clamp(group, kSmallestGroup, kLargestGroup);
}

/// One letter for all values of a linear axis; each value of a logarithmic one has its own.
std::optional<Texts> Engineering(const Values& values, int decimals, bool logarithmic) {
    const int common = GroupOf(values.largest);
    return WithFewestDecimals(values, decimals, [&](double v, int digits) {
        const int group = logarithmic ? GroupOf(std::abs(v)) : common;
        const double factor = PowerOfTen(3 * std::abs(group));
        std::string text = FixedText(group < 0 ? v * factor : v / factor, digits);
        const double number = ToNumber(text);
        if (number == 0.0 && v == 0.0) return Written{"0", 0.0};
        if (logarithmic) text = WithoutTrailingZeros(text);
        text += kLetters[static_cast<std::size_t>(group - kSmallestGroup)];
        return Written{std::move(text), group < 0 ? number / factor : number * factor};
    });
}

/// "5×10⁶" with the number before the factor left out where it is 1.
std::string PowerText(const std::string& mantissa, int exponent, bool dropOne) {
    std::string power = "10" + Superscript(exponent);
    if (dropOne && mantissa == "1") return power;
    if (dropOne && mantissa == "-1") return "-" + power;
    return mantissa + "×" + power;
}

/// On a linear axis all values have the exponent of the largest, so that they can be compared;
/// values of a logarithmic axis, and those of the scientific style, have their own.
std::optional<Texts> Powers(const Values& values, int decimals, bool ownExponents, bool dropOne) {
    const int common =
        values.largest == 0.0 ? 0 : ToExponential(values.largest, kSignificant).exponent;
    return WithFewestDecimals(values, decimals, [&](double v, int digits) {
        if (v == 0.0) return Written{"0", 0.0};
        Exponential e{"", common};
        if (ownExponents) {
            e = ToExponential(v, digits);
        } else {
            const double factor = PowerOfTen(std::abs(common));
            e.mantissa = FixedText(common < 0 ? v * factor : v / factor, digits);
        }
        const double shown = ToNumber(e.mantissa + "e" + std::to_string(e.exponent));
        return Written{PowerText(e.mantissa, e.exponent, dropOne), shown};
    });
}

std::optional<Texts> General(const Values& values, int decimals) {
    return WithFewestDecimals(values, decimals, [&](double v, int digits) {
        const Exponential e = ToExponential(v, digits);
        std::string text;
        if (v == 0.0) {
            text = "0";
        } else if (e.exponent < -4 || e.exponent > 5) {
            text = WithoutTrailingZeros(e.mantissa) + "e" + std::to_string(e.exponent);
        } else {
            text = WithoutTrailingZeros(FixedText(v, std::max(0, digits - e.exponent)));
        }
        const double shown = ToNumber(text);
        return Written{std::move(text), shown};
    });
}

/// A text's length without its sign.
std::size_t Length(const std::string& text) {
    return detail::CharacterCount(text) - (text.starts_with('-') ? 1 : 0);
}

/// The length that rules the layout: that of the longest text; then that of all.
std::pair<std::size_t, std::size_t> Lengths(const Texts& texts) {
    std::pair<std::size_t, std::size_t> lengths{0, 0};
    for (const std::string& text : texts) {
        lengths.first = std::max(lengths.first, Length(text));
        lengths.second += Length(text);
    }
    return lengths;
}

/// Whether different values have different texts.
bool AreDistinct(const Values& values, const Texts& texts) {
    std::vector<std::pair<std::string, double>> seen;
    for (std::size_t i = 0; i < texts.size(); ++i)
        seen.emplace_back(texts[i], values.all[i]);
    std::sort(seen.begin(), seen.end());
    for (std::size_t i = 1; i < seen.size(); ++i) {
        if (seen[i].first == seen[i - 1].first && seen[i].second != seen[i - 1].second &&
            std::isfinite(seen[i].second))
            return false;
    }
    return true;
}

std::optional<Texts> InStyle(const Values& values, LabelStyle style, const LabelOptions& options) {
    switch (style) {
        case LabelStyle::kEngineering:
            return Engineering(values, options.decimals, options.logarithmic);
        case LabelStyle::kGeneral:
            return General(values, options.decimals);
        case LabelStyle::kScientific:
            return Powers(values, options.decimals, true, false);
        case LabelStyle::kPowerOfTen:
            return Powers(values, options.decimals, options.logarithmic, true);
        default:
            return Fixed(values, options.decimals);
    }
}

/// The shortest of the styles that can show the values, the earlier one among equals.
TicLabels Shortest(const Values& values, const LabelOptions& options) {
    constexpr LabelStyle kLinear[] = {LabelStyle::kFixed, LabelStyle::kEngineering,
                                      LabelStyle::kPowerOfTen};
    constexpr LabelStyle kLogarithmic[] = {LabelStyle::kFixed, LabelStyle::kPowerOfTen};
    TicLabels best;
    const auto styles = options.logarithmic ? std::span<const LabelStyle>(kLogarithmic)
                                            : std::span<const LabelStyle>(kLinear);
    for (const LabelStyle style : styles) {
        std::optional<Texts> texts = InStyle(values, style, options);
        if (!texts || !AreDistinct(values, *texts)) continue;
        const auto lengths = Lengths(*texts);
        if (!best.texts.empty()) {
            // Powers of ten are the logarithmic axis' own notation.
            const bool own = options.logarithmic && style == LabelStyle::kPowerOfTen;
            if (!own && lengths >= Lengths(best.texts)) continue;
        }
        best.texts = std::move(*texts);
        best.style = style;
        if (style == LabelStyle::kFixed && lengths.first <= kPlainLength) break;
    }
    return best;
}

// --- Factors and offsets that move into the title ---------------------------------------------

/// What all values have in common above their differences: 0 where that is nothing.
double CommonOffset(const Values& values) {
    const auto [lo, hi] = std::minmax_element(values.all.begin(), values.all.end());
    const double range = *hi - *lo;
    if (!(range > 0.0) || values.largest < 100.0 * range) return 0.0;
    const double unit = PowerOfTen(static_cast<int>(std::floor(std::log10(range))) + 1);
    const double nearZero = *lo >= 0.0 ? *lo : *hi;
    return std::trunc(nearZero / unit) * unit;
}

/// Replaces texts that are long by shorter ones with a note.
void MoveIntoNote(TicLabels& labels, const Values& values) {
    for (const double v : values.all) {
        if (!std::isfinite(v)) return;
    }
    const auto tryNote = [&](double factor, double offset, const std::string& note) {
        std::optional<Texts> texts = Fixed(values, -1, factor, offset);
        if (!texts || !AreDistinct(values, *texts)) return;
        if (!labels.texts.empty() && Lengths(*texts) >= Lengths(labels.texts)) return;
        labels = {std::move(*texts), LabelStyle::kFixed, factor, offset, note};
    };
    if (const double offset = CommonOffset(values); offset != 0.0) {
        const std::string size = NumberText(std::abs(offset), 17, LabelStyle::kAutomatic);
        tryNote(1.0, offset, (offset < 0.0 ? "− " : "+ ") + size);
    }
    const int exponent = ToExponential(values.largest, kSignificant).exponent;
    const int group = static_cast<int>(std::floor(exponent / 3.0)) * 3;
    if (group != 0 && group > -300)
        tryNote(PowerOfTen(group), 0.0, "×" + PowerText("1", group, true));
}

void UseMinusSign(std::string& text) {
    for (std::size_t at = text.find('-'); at != std::string::npos; at = text.find('-', at))
        text.replace(at, 1, "−");
}

}  // namespace

std::string Superscript(int exponent) {
    constexpr std::array<const char*, 10> kDigits = {"⁰", "¹", "²", "³", "⁴",
                                                     "⁵", "⁶", "⁷", "⁸", "⁹"};
    std::string text;
    for (const char c : std::to_string(exponent))
        text += c == '-' ? "⁻" : kDigits[static_cast<std::size_t>(c - '0')];
    return text;
}

TicLabels ChooseLabels(std::span<const double> given, const LabelOptions& options) {
    TicLabels labels;
    if (given.empty()) return labels;
    const Values values(given);
    if (options.style == LabelStyle::kAutomatic) {
        labels = Shortest(values, options);
        if (options.allowNote && (labels.texts.empty() || Lengths(labels.texts).first > 5))
            MoveIntoNote(labels, values);
    } else {
        labels.style = options.style;
        labels.texts = InStyle(values, options.style, options).value_or(Texts());
    }
    if (labels.texts.empty()) {
        // Differences below what doubles of this size can write: each value by itself.
        labels.style = LabelStyle::kGeneral;
        for (const double v : given)
            labels.texts.push_back(std::isfinite(v) ? NumberText(v, 17) : std::string());
    }
    if (!options.asciiMinus) {
        for (std::string& text : labels.texts)
            UseMinusSign(text);
    }
    return labels;
}

std::string NumberText(double value, int digits, LabelStyle style) {
    if (!std::isfinite(value)) return {};
    if (value == 0.0) return "0";
    const Exponential e = ToExponential(value, std::clamp(digits, 1, 17) - 1);
    const std::string mantissa = WithoutTrailingZeros(e.mantissa);
    const std::size_t point = std::min(mantissa.find('.'), mantissa.size() - 1);
    const int decimals = static_cast<int>(mantissa.size() - point) - 1;
    // The value as it is shown, whatever is beyond its digits.
    const double shown = ToNumber(mantissa + "e" + std::to_string(e.exponent));
    LabelOptions options;
    options.style = style;
    if (style == LabelStyle::kAutomatic) {
        const bool isPlain = e.exponent >= -4 && e.exponent < std::max(7, decimals + 1);
        options.style = isPlain ? LabelStyle::kFixed : LabelStyle::kPowerOfTen;
        options.logarithmic = true;
    }
    return ChooseLabels(std::span(&shown, 1), options).texts.front();
}

}  // namespace varnel
