// Which rows of a table, in which order, and what groups of them have in common.
#include <algorithm>
#include <charconv>
#include <cmath>
#include <numeric>
#include <unordered_map>

#include "varnel/foundation/detail/raise.h"
#include "varnel/plot/detail/cell_text.h"
#include "varnel/plot/detail/table_store.h"

namespace varnel::plot {

namespace {

double Median(std::vector<double>& values) {
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::ranges::nth_element(values, middle);
    if (values.size() % 2 == 1) return *middle;
    return (*middle + *std::max_element(values.begin(), middle)) / 2;
}

/// The statistic of values that are all there.
double Summarize(std::vector<double>& values, Statistic statistic) {
    const auto count = static_cast<double>(values.size());
    const double sum = std::accumulate(values.begin(), values.end(), 0.0);
    switch (statistic) {
        case Statistic::Sum:
            return sum;
        case Statistic::Count:
            return count;
        case Statistic::Median:
            return Median(values);
        case Statistic::Min:
            return *std::ranges::min_element(values);
        case Statistic::Max:
            return *std::ranges::max_element(values);
        default:
            return sum / count;
    }
}

void AppendQuoted(std::string& csv, const std::string& text) {
    csv += '"';
    for (const char c : text) {
        csv += c;
        if (c == '"') csv += c;
    }
    csv += '"';
}

/// In the fewest digits that read back as the same number.
void AppendNumber(std::string& csv, double number) {
    char text[32];
    csv.append(text, std::to_chars(text, text + sizeof text, number).ptr);
}

}  // namespace

Table Table::Where(const std::string& column, const std::string& value) const {
    return WhereEqual(column, value, true);
}

Table Table::WhereNot(const std::string& column, const std::string& value) const {
    return WhereEqual(column, value, false);
}

Table Table::WhereEqual(const std::string& column, const std::string& value, bool equal) const {
    Find(column, "Table::Where");
    double wanted = 0.0;
    const bool isNumber = detail::ParseNumber(detail::Trim(value), '.', wanted);
    const std::vector<std::string> texts = Text(column);
    std::vector<std::size_t> rows;
    for (std::size_t i = 0; i < texts.size(); ++i) {
        double number = 0.0;
        const bool isEqual =
            texts[i] == value ||
            (isNumber && detail::ParseNumber(texts[i], m_Store->dialect.decimal, number) &&
             number == wanted);
        if (isEqual == equal) rows.push_back(Row(i));
    }
    return WithRows(std::move(rows));
}

Table Table::Where(const std::string& column, const std::function<bool(double)>& keep) const {
    const Values values = Kind(column) == DataKind::Dates ? Dates(column) : (*this)[column];
    std::vector<std::size_t> rows;
    for (std::size_t i = 0; i < values.size(); ++i)
        if (keep(values[i])) rows.push_back(Row(i));
    return WithRows(std::move(rows));
}

Table Table::Sort(const std::string& column, bool descending) const {
    const Place place = Find(column, "Table::Sort");
    std::vector<std::size_t> order(NumRows());
    std::iota(order.begin(), order.end(), std::size_t{0});
    const auto sortBy = [&](const auto& keys, const auto& isMissing) {
        std::ranges::stable_sort(order, [&](std::size_t a, std::size_t b) {
            if (isMissing(keys[a]) || isMissing(keys[b]))
                return !isMissing(keys[a]) && isMissing(keys[b]);
            return descending ? keys[b] < keys[a] : keys[a] < keys[b];
        });
    };
    if (place.part.empty() && KindOf(place) == DataKind::Names) {
        sortBy(Text(column), [](const std::string& text) { return text.empty(); });
    } else {
        const Values values = place.part.empty() ? Column(column) : (*this)[column];
        sortBy(values.Numbers(), [](double x) { return std::isnan(x); });
    }
    for (std::size_t& row : order)
        row = Row(row);
    return WithRows(std::move(order));
}

Table Table::Limit(std::size_t count) const {
    std::vector<std::size_t> rows(std::min(count, NumRows()));
    for (std::size_t i = 0; i < rows.size(); ++i)
        rows[i] = Row(i);
    return WithRows(std::move(rows));
}

Table Table::Group(const std::string& by, Statistic statistic) const {
    return Group(std::vector<std::string>{by}, statistic);
}

/// Which group each row of a table belongs to, and the quoted texts that name each.
struct Table::Groups {
    std::vector<std::size_t> of;
    std::vector<std::string> names;
};

Table::Groups Table::FindGroups(const std::vector<std::string>& by) const {
    std::vector<std::string> keys(NumRows());
    for (const std::string& column : by) {
        const std::vector<std::string> texts = Text(column);
        for (std::size_t i = 0; i < keys.size(); ++i) {
            AppendQuoted(keys[i], texts[i]);
            keys[i] += ',';
        }
    }
    Groups groups;
    std::unordered_map<std::string_view, std::size_t> numbers;
    for (const std::string& key : keys) {
        const auto [entry, isNew] = numbers.emplace(key, groups.names.size());
        if (isNew) groups.names.push_back(key);
        groups.of.push_back(entry->second);
    }
    return groups;
}

/// Adds a statistic of a column's numbers to the rows of the groups.
void Table::AppendStatistic(std::size_t column, Statistic statistic, const Groups& groups,
                            std::vector<std::string>& rows) const {
    std::vector<std::vector<double>> samples(rows.size());
    const std::vector<double> values = ReadNumbers({column, {}}, "Table::Group");
    for (std::size_t i = 0; i < values.size(); ++i)
        if (!std::isnan(values[i])) samples[groups.of[i]].push_back(values[i]);
    for (std::size_t g = 0; g < rows.size(); ++g) {
        if (!samples[g].empty()) AppendNumber(rows[g], Summarize(samples[g], statistic));
        rows[g] += ',';
    }
}

/// A small table in the one form that tables have, a text: its numbers read back exactly.
Table Table::Group(const std::vector<std::string>& by, Statistic statistic) const {
    std::vector<std::size_t> used;
    std::string head;
    for (const std::string& column : by) {
        const Place place = Find(column, "Table::Group");
        used.push_back(place.column);
        AppendQuoted(head, place.part.empty() ? m_Store->names[place.column] : place.part);
        head += ',';
    }
    const Groups groups = FindGroups(by);
    std::vector<std::string> rows = groups.names;
    if (statistic == Statistic::Count) {
        head += "\"count\",";
        std::vector<double> counts(rows.size());
        for (const std::size_t group : groups.of)
            ++counts[group];
        for (std::size_t g = 0; g < rows.size(); ++g)
            AppendNumber(rows[g], counts[g]);
    }
    for (std::size_t c = 0; statistic != Statistic::Count && c < NumColumns(); ++c) {
        if (std::ranges::find(used, c) != used.end() || KindOf({c, {}}) != DataKind::Numbers)
            continue;
        AppendQuoted(head, m_Store->names[c]);
        head += ',';
        AppendStatistic(c, statistic, groups, rows);
    }
    std::string csv;
    rows.insert(rows.begin(), head);
    for (std::string& row : rows) {
        if (row.ends_with(',')) row.pop_back();
        csv += row + '\n';
    }
    CsvOptions options{.delimiter = ',', .decimal = '.', .header = Header::Yes};
    options.date_format = m_Store->dateFormat;
    options.name = m_Store->name;
    return ReadCSVText(csv, options);
}

}  // namespace varnel::plot
