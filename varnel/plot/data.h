// Values: what the plot layer takes wherever it wants data.
//
// A Values holds numbers, dates (as days since 1970-01-01) or names, and is made from whatever a
// host has: vectors, arrays, spans, any range, braces ({1, 2, 3}, {"Jan", "Feb"}) of arithmetic
// values, of strings, or of std::chrono dates and time points. Texts that are all ISO dates
// ("2024-03-01", "2024-03-01 12:30") are dates, any others names. NaN is no data.
#pragma once

#include <chrono>
#include <concepts>
#include <cstddef>
#include <initializer_list>
#include <ranges>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

#include "varnel/foundation/export.h"

namespace varnel::plot {

/// What values are, and with them the labels of an axis over them.
enum class DataKind { Numbers, Dates, Names };

namespace detail {

template <class T>
concept TextDatum = std::convertible_to<const T&, std::string_view>;

template <class T>
concept NumberDatum =
    std::is_arithmetic_v<T> && !std::same_as<T, char> && !std::same_as<T, wchar_t> &&
    !std::same_as<T, char8_t> && !std::same_as<T, char16_t> && !std::same_as<T, char32_t>;

template <class T>
struct IsTimePoint : std::false_type {};
template <class Clock, class Duration>
struct IsTimePoint<std::chrono::time_point<Clock, Duration>>
    : std::bool_constant<std::same_as<Clock, std::chrono::system_clock> ||
                         std::same_as<Clock, std::chrono::local_t>> {};

template <class T>
concept DateDatum = std::same_as<T, std::chrono::year_month_day> || IsTimePoint<T>::value;

template <class T>
concept Datum = TextDatum<T> || NumberDatum<T> || DateDatum<T>;

inline double ToDays(const std::chrono::year_month_day& date) {
    return static_cast<double>(std::chrono::sys_days(date).time_since_epoch().count());
}
template <class Clock, class Duration>
double ToDays(const std::chrono::time_point<Clock, Duration>& time) {
    using Days = std::chrono::duration<double, std::ratio<86400>>;
    return std::chrono::duration_cast<Days>(time.time_since_epoch()).count();
}

}  // namespace detail

class VARNEL_API Values {
 public:
    /// None.
    Values() = default;

    template <detail::Datum T>
    Values(std::initializer_list<T> values) {
        Take(values);
    }
    /// Numbers or texts of several types.
    Values(std::initializer_list<double> values) { Take(values); }
    Values(std::initializer_list<std::string_view> values) { Take(values); }

    /// Any range of numbers, texts or dates; copied.
    template <std::ranges::input_range R>
    requires detail::Datum<std::remove_cvref_t<std::ranges::range_reference_t<R>>> &&(
        !detail::TextDatum<std::remove_cvref_t<R>>)&&(!std::same_as<std::remove_cvref_t<R>, Values>)
        // Constrained as it is, it hides no copying.
        // NOLINTNEXTLINE(bugprone-forwarding-reference-overload)
        Values(R&& range) {
        Take(range);
    }
    /// Numbers that need not be copied.
    Values(std::vector<double>&& numbers) : m_Numbers(std::move(numbers)) {}

    /// Numbers that are days since 1970-01-01.
    static Values Dates(std::vector<double> days);
    /// Names, ISO dates among them.
    static Values Names(const std::vector<std::string>& names);

    DataKind Kind() const { return m_Kind; }
    std::size_t size() const { return m_Numbers.size(); }
    bool empty() const { return m_Numbers.empty(); }

    /// The numbers or the days; for names the place of each datum's name in Categories(), from 1.
    const std::vector<double>& Numbers() const { return m_Numbers; }
    auto begin() const { return m_Numbers.begin(); }
    auto end() const { return m_Numbers.end(); }
    double operator[](std::size_t i) const { return m_Numbers[i]; }

    /// The different names, in the order in which they first appear; empty for what is no names.
    const std::vector<std::string>& Categories() const { return m_Categories; }
    /// The datum as a text: its name, its date, or its number in the fewest digits.
    std::string Text(std::size_t i) const;

    /// What the values are called: the column of a table that they come from. Titles of axes and
    /// entries of legends that have no text of their own show it.
    const std::string& Name() const { return m_Name; }
    Values& SetName(std::string name);

    /// Units converted: each number times, divided by, plus or minus another. Names raise
    /// "Parameter Error" ("Values").
    Values operator*(double factor) const;
    Values operator/(double divisor) const;
    Values operator+(double term) const;
    Values operator-(double term) const { return *this + -term; }

 private:
    template <class R>
    void Take(const R& range) {
        using T = std::remove_cvref_t<decltype(*std::ranges::begin(range))>;
        if constexpr (detail::TextDatum<T>) {
            std::vector<std::string> names;
            for (const auto& value : range)
                names.emplace_back(std::string_view(value));
            TakeNames(names);
        } else {
            if constexpr (std::ranges::sized_range<const R>)
                m_Numbers.reserve(static_cast<std::size_t>(std::ranges::size(range)));
            for (const auto& value : range)
                if constexpr (detail::DateDatum<T>)
                    m_Numbers.push_back(detail::ToDays(value));
                else
                    m_Numbers.push_back(static_cast<double>(value));
            if constexpr (detail::DateDatum<T>) m_Kind = DataKind::Dates;
        }
    }
    void TakeNames(const std::vector<std::string>& names);
    void RequireNumbers(const char* what) const;

    DataKind m_Kind = DataKind::Numbers;
    std::vector<double> m_Numbers;
    std::vector<std::string> m_Categories;
    std::string m_Name;
};

}  // namespace varnel::plot
