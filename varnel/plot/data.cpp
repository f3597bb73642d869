#include "varnel/plot/data.h"

#include <charconv>
#include <limits>
#include <unordered_map>

#include "varnel/foundation/detail/raise.h"
#include "varnel/plot/dates.h"
#include "varnel/plot/detail/cell_text.h"

namespace varnel::plot {

namespace {

/// Whether all texts are dates that nobody takes for numbers or names: a year alone is none.
bool ReadDates(const std::vector<std::string>& texts, std::vector<double>& days) {
    bool any = false;
    for (const std::string& text : texts) {
        double day = std::numeric_limits<double>::quiet_NaN();
        const std::string_view trimmed = detail::Trim(text);
        if (!detail::IsMissing(trimmed)) {
            if (trimmed.size() < 6 || !ParseDate(trimmed, day)) return false;
            any = true;
        }
        days.push_back(day);
    }
    return any;
}

}  // namespace

Values Values::Dates(std::vector<double> days) {
    Values values(std::move(days));
    values.m_Kind = DataKind::Dates;
    return values;
}

Values Values::Names(const std::vector<std::string>& names) {
    Values values;
    values.TakeNames(names);
    return values;
}

Values& Values::SetName(std::string name) {
    m_Name = std::move(name);
    return *this;
}

std::string Values::Text(std::size_t i) const {
    const double number = m_Numbers.at(i);
    if (m_Kind == DataKind::Dates) return FormatDate(number);
    if (m_Kind == DataKind::Names) return m_Categories.at(static_cast<std::size_t>(number) - 1);
    char text[32];
    return {text, std::to_chars(text, text + sizeof text, number).ptr};
}

void Values::TakeNames(const std::vector<std::string>& names) {
    std::vector<double> days;
    if (ReadDates(names, days)) {
        m_Numbers = std::move(days);
        m_Kind = DataKind::Dates;
        return;
    }
    m_Kind = DataKind::Names;
    std::unordered_map<std::string_view, double> places;
    m_Numbers.reserve(names.size());
    for (const std::string& name : names) {
        const auto [place, isNew] = places.emplace(name, static_cast<double>(places.size() + 1));
        if (isNew) m_Categories.push_back(name);
        m_Numbers.push_back(place->second);
    }
}

void Values::RequireNumbers(const char* what) const {
    if (m_Kind == DataKind::Names)
        varnel::detail::Raise(
            ERR3D_PARAMETER, ERR3DCLASS_GENERAL, "Values",
            varnel::detail::Say(what, " of names, \"",
                                m_Categories.empty() ? "" : m_Categories.front(), "\" and others"));
}

Values Values::operator*(double factor) const {
    RequireNumbers("a multiple");
    Values out = *this;
    for (double& number : out.m_Numbers)
        number *= factor;
    return out;
}

Values Values::operator/(double divisor) const {
    RequireNumbers("a fraction");
    Values out = *this;
    for (double& number : out.m_Numbers)
        number /= divisor;
    return out;
}

Values Values::operator+(double term) const {
    RequireNumbers("a sum");
    Values out = *this;
    for (double& number : out.m_Numbers)
        number += term;
    return out;
}

}  // namespace varnel::plot
