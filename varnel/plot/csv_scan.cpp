#include <algorithm>
#include <array>
#include <limits>

#include "varnel/foundation/detail/say.h"
#include "varnel/plot/detail/cell_text.h"
#include "varnel/plot/detail/csv_scan.h"

namespace varnel::plot::detail {

namespace {

using varnel::detail::Say;

constexpr std::size_t kLongestRow = std::numeric_limits<std::int32_t>::max();

/// Walks over cells; every text ends in a line feed that is not counted.
class Walk {
 public:
    Walk(const CsvBytes& text, std::size_t begin, char delimiter, const std::string& comment)
        : m_First(text.bytes.get()),
          m_End(m_First + text.size),
          m_At(m_First + std::min(begin, text.size)),
          m_Delimiter(delimiter),
          m_Comment(comment) {
        for (const char stop : {'\n', '\r', delimiter})
            m_Stops[static_cast<unsigned char>(stop)] = true;
    }

    /// Moves to the next line that has something in it and is no comment; false at the end.
    bool StartRow() {
        while (m_At < m_End) {
            if (*m_At == '\n' || *m_At == '\r') {
                ++m_At;
            } else if (!m_Comment.empty() && Rest().starts_with(m_Comment)) {
                while (*m_At != '\n' && *m_At != '\r')
                    ++m_At;
            } else {
                return true;
            }
        }
        return false;
    }

    /// Moves over one cell to the sign that ends it; false at a quote that is wrong.
    bool PassCell(CsvProblem& problem) {
        const char* p = m_At;
        if (*p == ' ' && m_Delimiter != ' ')
            while (*p == ' ')
                ++p;
        if (*p == '"' && p < m_End && !PassQuotes(p, problem)) return false;
        while (!m_Stops[static_cast<unsigned char>(*p)])
            ++p;
        m_At = p;
        return true;
    }

    bool AtDelimiter() const { return m_At < m_End && *m_At == m_Delimiter; }
    void PassDelimiter() { ++m_At; }

    std::size_t Place() const { return static_cast<std::size_t>(m_At - m_First); }
    std::size_t Size() const { return static_cast<std::size_t>(m_End - m_First); }

 private:
    std::string_view Rest() const { return {m_At, static_cast<std::size_t>(m_End - m_At)}; }

    bool PassQuotes(const char*& p, CsvProblem& problem) {
        const char* const opening = p++;
        for (;;) {
            p = std::find(p, m_End, '"');
            if (p == m_End) {
                problem = {static_cast<std::size_t>(opening - m_First), 0,
                           "a quote opens here that nothing closes"};
                return false;
            }
            if (p + 1 == m_End || p[1] != '"') break;
            p += 2;
        }
        ++p;
        while (*p == ' ' && m_Delimiter != ' ')
            ++p;
        if (m_Stops[static_cast<unsigned char>(*p)]) return true;
        problem = {static_cast<std::size_t>(p - m_First), 0,
                   Say("\"", *p, "\" follows the quote that closes the cell")};
        return false;
    }

    const char* m_First;
    const char* m_End;
    const char* m_At;
    char m_Delimiter;
    const std::string& m_Comment;
    std::array<bool, 256> m_Stops{};
};

/// Room for as many rows as the file has if they go on as they begin.
void Reserve(CellIndex& index, std::size_t bytesSoFar, std::size_t size) {
    const std::size_t rows = index.rowStart.size();
    const double all = 1.02 * static_cast<double>(size) / static_cast<double>(bytesSoFar + 1) *
                       static_cast<double>(rows);
    const auto expected = static_cast<std::size_t>(all) + 16;
    index.rowStart.reserve(expected);
    index.cellEnd.reserve(expected * index.columns);
}

/// Gives the row that was just read the columns of the others.
bool EndRow(const CsvBytes& text, CellIndex& index, std::size_t cells, CsvProblem& problem) {
    if (index.columns == 0) index.columns = cells;
    const std::size_t first = index.rowStart.size() - 1;
    const std::uint64_t start = index.rowStart.back();
    while (cells < index.columns) {
        index.cellEnd.push_back(index.cellEnd.back());
        ++cells;
    }
    for (; cells > index.columns; --cells) {
        const std::uint32_t end = index.cellEnd.back();
        index.cellEnd.pop_back();
        const std::uint32_t begin = index.cellEnd.back() + 1;
        const std::string_view cell(text.bytes.get() + start + begin, end - begin);
        if (Trim(cell).empty()) continue;
        problem = {start, cells,
                   Say("this row has ", cells, " cells, the first one ", index.columns)};
        return false;
    }
    constexpr std::size_t kSample = 1000;
    if (first + 1 == kSample) Reserve(index, start, text.size);
    return true;
}

/// The signs that may divide cells, the likeliest first where several would do.
constexpr std::array<char, 4> kDelimiters = {'\t', ';', '|', ','};

/// How well a delimiter cuts rows into as many cells each: the part of rows that have the most
/// frequent number, 0 when that is one cell.
double Evenness(const std::vector<std::vector<std::string_view>>& rows) {
    std::vector<std::size_t> counts;
    counts.reserve(rows.size());
    for (const auto& row : rows)
        counts.push_back(row.size());
    std::ranges::sort(counts);
    std::size_t most = 0, value = 0;
    for (std::size_t i = 0; i < counts.size();) {
        const auto next = static_cast<std::size_t>(
            std::upper_bound(counts.begin(), counts.end(), counts[i]) - counts.begin());
        if (next - i > most) {
            most = next - i;
            value = counts[i];
        }
        i = next;
    }
    if (value < 2) return 0.0;
    return static_cast<double>(most) / static_cast<double>(counts.size());
}

/// Whether numbers have decimal commas: some number makes sense with a comma only, none with a
/// point only; where all could be thousands as well, semicolons between cells decide.
char DetectDecimal(const std::vector<std::vector<std::string_view>>& rows, char delimiter) {
    int commas = 0, points = 0;
    std::string buffer;
    for (const auto& row : rows)
        for (const std::string_view cell : row) {
            const std::string_view text = CellText(cell, buffer);
            if (text.find_first_of(",.") == std::string_view::npos) continue;
            double number = 0.0;
            const bool point = ParseNumber(text, '.', number);
            const bool comma = ParseNumber(text, ',', number);
            const bool hasComma = text.find(',') != std::string_view::npos;
            points += (point && !comma) || (point && !hasComma && delimiter != ';');
            commas += (comma && !point) || (comma && hasComma && delimiter == ';');
        }
    return commas > points ? ',' : '.';
}

bool IsNumberOrMissing(std::string_view cell, char decimal, bool& missing) {
    std::string buffer;
    const std::string_view text = CellText(cell, buffer);
    double number = 0.0;
    missing = IsMissing(text);
    return missing || ParseNumber(text, decimal, number);
}

bool StartsWithDigit(std::string_view cell) {
    std::string buffer;
    const std::string_view text = CellText(cell, buffer);
    return !text.empty() && text[0] >= '0' && text[0] <= '9';
}

/// Whether the first row names the columns: each column below it that is numbers, or begins with
/// digits as dates do, votes by whether its first cell does so too. Without any such column the row
/// is a header when its cells are all there, differ, and come again in no row.
bool DetectHeader(const std::vector<std::vector<std::string_view>>& rows, char decimal) {
    if (rows.size() < 2) {
        bool missing = false;
        return !rows.empty() && std::ranges::none_of(rows[0], [&](std::string_view cell) {
            return IsNumberOrMissing(cell, decimal, missing) || StartsWithDigit(cell);
        });
    }
    int votes = 0;
    for (std::size_t c = 0; c < rows[0].size(); ++c) {
        std::size_t there = 0, numbers = 0, digits = 0;
        for (std::size_t r = 1; r < rows.size(); ++r) {
            bool missing = true;
            if (c >= rows[r].size()) continue;
            const bool number = IsNumberOrMissing(rows[r][c], decimal, missing);
            if (missing) continue;
            ++there;
            numbers += number;
            digits += StartsWithDigit(rows[r][c]);
        }
        if (there == 0) continue;
        bool missing = false;
        const bool first = IsNumberOrMissing(rows[0][c], decimal, missing);
        if (numbers == there)
            votes += first && !missing ? -1 : !first;
        else if (digits == there)
            votes += StartsWithDigit(rows[0][c]) ? -1 : 1;
    }
    if (votes != 0) return votes > 0;
    std::vector<std::string_view> names = rows[0];
    std::ranges::sort(names);
    if (names.front().empty() || std::ranges::adjacent_find(names) != names.end()) return false;
    for (std::size_t r = 1; r < rows.size(); ++r)
        for (std::size_t c = 0; c < std::min(rows[r].size(), rows[0].size()); ++c)
            if (rows[r][c] == rows[0][c]) return false;
    return true;
}

}  // namespace

CellIndex ScanCells(const CsvBytes& text, std::size_t begin, const CsvDialect& dialect,
                    CsvProblem& problem) {
    CellIndex index;
    Walk walk(text, begin, dialect.delimiter, dialect.comment);
    while (walk.StartRow()) {
        const std::size_t start = walk.Place();
        index.rowStart.push_back(start);
        std::size_t cells = 0;
        for (;;) {
            if (!walk.PassCell(problem)) {
                problem.column = cells + 1;
                return index;
            }
            const std::size_t length = walk.Place() - start;
            if (length >= kLongestRow) {
                problem = {start, cells + 1, "a row is longer than 2 GiB"};
                return index;
            }
            index.cellEnd.push_back(static_cast<std::uint32_t>(length));
            ++cells;
            if (!walk.AtDelimiter()) break;
            walk.PassDelimiter();
        }
        if (!EndRow(text, index, cells, problem)) return index;
    }
    return index;
}

std::vector<std::vector<std::string_view>> SampleRows(const CsvBytes& text, std::size_t begin,
                                                      char delimiter, const std::string& comment,
                                                      std::size_t rows) {
    constexpr std::size_t kMostCells = 100'000;
    std::vector<std::vector<std::string_view>> sample;
    Walk walk(text, begin, delimiter, comment);
    CsvProblem problem;
    std::size_t cells = 0;
    while (sample.size() < rows && cells < kMostCells && walk.StartRow()) {
        std::vector<std::string_view> row;
        for (;;) {
            const std::size_t start = walk.Place();
            if (!walk.PassCell(problem)) return sample;
            row.push_back(text.View().substr(start, walk.Place() - start));
            if (++cells >= kMostCells || !walk.AtDelimiter()) break;
            walk.PassDelimiter();
        }
        sample.push_back(std::move(row));
    }
    return sample;
}

std::string_view CellText(std::string_view cell, std::string& buffer, bool* isQuoted) {
    std::string_view text = Trim(cell);
    const bool quoted = text.size() >= 2 && text.front() == '"' && text.back() == '"';
    if (isQuoted != nullptr) *isQuoted = quoted;
    if (!quoted) return text;
    text = text.substr(1, text.size() - 2);
    std::size_t quote = text.find('"');
    if (quote == std::string_view::npos) return text;
    buffer.clear();
    for (std::size_t from = 0;;) {
        buffer.append(text.substr(from, quote == text.npos ? text.npos : quote + 1 - from));
        if (quote == text.npos) return buffer;
        from = quote + 2;
        quote = from <= text.size() ? text.find('"', from) : text.npos;
        if (from > text.size()) return buffer;
    }
}

CsvDialect DetectDialect(const CsvBytes& text, std::size_t begin, char delimiter, char decimal,
                         const std::string& comment) {
    constexpr std::size_t kRows = 200;
    CsvDialect dialect;
    dialect.comment = comment;
    dialect.delimiter = delimiter;
    if (delimiter == 0) {
        dialect.delimiter = ',';
        double best = 0.0;
        for (const char candidate : kDelimiters) {
            const double evenness = Evenness(SampleRows(text, begin, candidate, comment, kRows));
            if (evenness > best + 1e-9) {
                best = evenness;
                dialect.delimiter = candidate;
            }
        }
    }
    const auto rows = SampleRows(text, begin, dialect.delimiter, comment, kRows);
    dialect.decimal =
        decimal != 0 ? decimal
                     : (dialect.delimiter == ',' ? '.' : DetectDecimal(rows, dialect.delimiter));
    dialect.header = DetectHeader(rows, dialect.decimal);
    return dialect;
}

}  // namespace varnel::plot::detail
