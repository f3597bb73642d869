#include "varnel/plot/table.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <fstream>
#include <istream>
#include <limits>
#include <numeric>

#include "varnel/foundation/detail/raise.h"
#include "varnel/plot/dates.h"
#include "varnel/plot/detail/cell_text.h"
#include "varnel/plot/detail/csv_scan.h"
#include "varnel/plot/detail/table_store.h"

namespace varnel::plot {

using detail::CellText;
using varnel::detail::Raise;
using varnel::detail::Say;

namespace {

constexpr double kNone = std::numeric_limits<double>::quiet_NaN();

[[noreturn]] void Fail(const char* operation, const std::string& text) {
    Raise(ERR3D_PARAMETER, ERR3DCLASS_GENERAL, operation, text);
}

/// A, B, ..., Z, AA, ...: the column from 0; npos for what is no letters.
std::size_t ColumnOfLetters(const std::string& text) {
    if (text.empty() || text.size() > 3) return std::string::npos;
    std::size_t number = 0;
    for (const char c : text) {
        const char upper = c >= 'a' && c <= 'z' ? static_cast<char>(c - 32) : c;
        if (upper < 'A' || upper > 'Z') return std::string::npos;
        number = 26 * number + static_cast<std::size_t>(upper - 'A') + 1;
    }
    return number - 1;
}

std::size_t ColumnOfNumber(const std::string& text) {
    if (text.empty() || text.size() > 9 || text.find_first_not_of("0123456789") != text.npos)
        return std::string::npos;
    return std::stoul(text) - 1;
}

/// What an unknown column could have been.
std::string ListOf(const std::vector<std::string>& names) {
    constexpr std::size_t kMost = 12;
    std::string list;
    for (std::size_t i = 0; i < std::min(names.size(), kMost); ++i)
        list += (i == 0 ? "" : ", ") + names[i];
    return names.size() > kMost ? list + ", ..." : list;
}

}  // namespace

std::string Table::Store::Where(std::size_t place) const {
    const char* const first = text.bytes.get();
    std::size_t line = 1;
    for (std::size_t i = 0; i < place; ++i)
        line += first[i] == '\n' || (first[i] == '\r' && first[i + 1] != '\n');
    return Say(name, ", line ", line);
}

std::string Table::Store::Where(std::size_t row, std::size_t column) const {
    return Say(Where(index.rowStart[row]), ", column ", column + 1, " (", names[column], ")");
}

std::string Table::Store::ToUtf8(std::string_view bytes) const {
    return isUtf8 ? std::string(bytes) : detail::Windows1252ToUtf8(bytes);
}

bool Table::Store::SaysNothing(std::string_view cell) const {
    if (detail::IsMissing(cell)) return true;
    for (const std::string& word : missing)
        if (cell == word) return true;
    return false;
}

bool Table::Store::ReadDate(std::string_view cell, double& days) const {
    return dateFormat.empty() ? ParseDate(cell, days) : ParseDate(cell, dateFormat, days);
}

Table::Table() : m_Store(std::make_shared<Store>()) {
}

std::size_t Table::NumRows() const {
    return m_Rows ? m_Rows->size() : m_Store->index.rowStart.size() - m_Store->firstRow;
}

std::size_t Table::NumColumns() const {
    return m_Store->names.size();
}

const std::vector<std::string>& Table::Names() const {
    return m_Store->names;
}

std::size_t Table::Row(std::size_t i) const {
    return m_Rows ? (*m_Rows)[i] : i + m_Store->firstRow;
}

Table Table::WithRows(std::vector<std::size_t> rows) const {
    Table table = *this;
    table.m_Rows = std::make_shared<const std::vector<std::size_t>>(std::move(rows));
    return table;
}

bool Table::Store::FindColumn(const std::string& column, std::size_t& found) const {
    const auto named = std::ranges::find(names, column);
    if (named != names.end()) {
        found = static_cast<std::size_t>(named - names.begin());
        return true;
    }
    for (const std::size_t number : {ColumnOfNumber(column), ColumnOfLetters(column)})
        if (number < names.size()) {
            found = number;
            return true;
        }
    return false;
}

bool Table::Store::FindPlace(const std::string& column, Place& place) const {
    if (FindColumn(column, place.column)) return true;
    const std::size_t colon = column.rfind(':');
    if (colon == std::string::npos || !IsDatePart(column.substr(colon + 1))) return false;
    place.part = column.substr(colon + 1);
    return FindColumn(column.substr(0, colon), place.column);
}

bool Table::Has(const std::string& column) const {
    Place place;
    return m_Store->FindPlace(column, place);
}

Table::Place Table::Find(const std::string& column, const char* operation) const {
    Place place;
    if (!m_Store->FindPlace(column, place))
        Fail(operation, Say(m_Store->name, " has no column \"", column, "\"; its columns are ",
                            ListOf(m_Store->names)));
    return place;
}

std::vector<double> Table::ReadNumbers(const Place& place, const char* operation) const {
    const Store& store = *m_Store;
    std::vector<double> numbers;
    numbers.reserve(NumRows());
    std::string buffer;
    const std::size_t rows = NumRows();
    for (std::size_t i = 0; i < rows; ++i) {
        const std::size_t row = Row(i);
        const std::string_view cell = CellText(store.Cell(row, place.column), buffer);
        double number = kNone;
        if (!detail::ParseNumber(cell, store.dialect.decimal, number) && !store.SaysNothing(cell))
            Fail(operation, Say(store.Where(row, place.column), ": \"", store.ToUtf8(cell),
                                "\" is no number"));
        numbers.push_back(number);
    }
    return numbers;
}

std::vector<double> Table::ReadDates(const Place& place, const char* operation) const {
    const Store& store = *m_Store;
    std::vector<double> days;
    days.reserve(NumRows());
    std::string buffer;
    for (std::size_t i = 0; i < NumRows(); ++i) {
        const std::size_t row = Row(i);
        const std::string_view cell = CellText(store.Cell(row, place.column), buffer);
        double day = kNone;
        if (!store.ReadDate(cell, day) && !store.SaysNothing(cell))
            Fail(operation,
                 Say(store.Where(row, place.column), ": \"", store.ToUtf8(cell), "\" is no date",
                     store.dateFormat.empty() ? " as YYYY-MM-DD; say how dates are "
                                                "written with a date format"
                                              : " as " + store.dateFormat));
        days.push_back(day);
    }
    return days;
}

Values Table::operator[](const std::string& column) const {
    const Place place = Find(column, "Table::operator[]");
    std::vector<double> numbers;
    if (place.part.empty()) {
        numbers = ReadNumbers(place, "Table::operator[]");
    } else {
        numbers = ReadDates(place, "Table::operator[]");
        for (double& number : numbers)
            number = FindDatePart(number, place.part).number;
    }
    return Values(std::move(numbers))
        .SetName(place.part.empty() ? m_Store->names[place.column] : place.part);
}

std::vector<std::string> Table::Text(const std::string& column) const {
    const Place place = Find(column, "Table::Text");
    std::vector<std::string> texts;
    texts.reserve(NumRows());
    if (!place.part.empty()) {
        for (const double day : ReadDates(place, "Table::Text"))
            texts.push_back(FindDatePart(day, place.part).text);
        return texts;
    }
    std::string buffer;
    for (std::size_t i = 0; i < NumRows(); ++i)
        texts.push_back(m_Store->ToUtf8(CellText(m_Store->Cell(Row(i), place.column), buffer)));
    return texts;
}

Values Table::Dates(const std::string& column) const {
    const Place place = Find(column, "Table::Dates");
    return Values::Dates(ReadDates(place, "Table::Dates")).SetName(m_Store->names[place.column]);
}

DataKind Table::KindOf(const Place& place) const {
    if (!place.part.empty())
        return place.part == "month" || place.part == "weekday" ? DataKind::Names
                                                                : DataKind::Numbers;
    constexpr std::size_t kSample = 1000;
    const Store& store = *m_Store;
    constexpr std::size_t kLeastDate = 8;  // characters: a year or a number is no date among texts
    bool numbers = true, dates = true;
    std::string buffer;
    std::size_t seen = 0, sureDates = 0;
    for (std::size_t i = 0; i < NumRows() && seen < kSample; ++i) {
        const std::string_view cell = CellText(store.Cell(Row(i), place.column), buffer);
        if (store.SaysNothing(cell)) continue;
        ++seen;
        double value = 0.0;
        numbers = numbers && detail::ParseNumber(cell, store.dialect.decimal, value);
        const bool isDate = store.ReadDate(cell, value);
        dates = dates && isDate;
        sureDates += isDate && cell.size() >= kLeastDate ? 1 : 0;
    }
    // Under a format that was given, 20240131 is a date.
    if (seen > 0 && dates && !store.dateFormat.empty()) return DataKind::Dates;
    if (numbers) return DataKind::Numbers;
    return dates || 2 * sureDates > seen ? DataKind::Dates : DataKind::Names;
}

DataKind Table::Kind(const std::string& column) const {
    return KindOf(Find(column, "Table::Kind"));
}

Values Table::Column(const std::string& column) const {
    const Place place = Find(column, "Table::Column");
    switch (KindOf(place)) {
        case DataKind::Numbers:
            return (*this)[column];
        case DataKind::Dates:
            return Dates(column);
        default:
            return Values::Names(Text(column))
                .SetName(place.part.empty() ? m_Store->names[place.column] : place.part);
    }
}

std::vector<double> Table::Matrix() const {
    std::vector<double> cells(NumRows() * NumColumns());
    for (std::size_t c = 0; c < NumColumns(); ++c) {
        std::size_t at = c;
        for (const double number : ReadNumbers({c, {}}, "Table::Matrix")) {
            cells[at] = number;
            at += NumColumns();
        }
    }
    return cells;
}

// --- Reading -----------------------------------------------------------------------------------

namespace {

detail::CsvBytes NewBytes(std::size_t size) {
    detail::CsvBytes text;
    // Raw memory: the file is read over it.
    text.bytes = std::make_unique_for_overwrite<char[]>(size + 1);
    text.bytes[size] = '\n';
    text.size = size;
    return text;
}

/// Where the rows begin: behind the byte order mark, the lines to skip and, unless the option names
/// another sign, the lines with '#'.
std::size_t FindBegin(const detail::CsvBytes& text, const CsvOptions& options) {
    const std::string_view view = text.View();
    std::size_t begin = view.starts_with("\xEF\xBB\xBF") ? 3 : 0;
    const auto skipLine = [&] {
        const std::size_t end = view.find_first_of("\r\n", begin);
        begin = end == view.npos ? view.size() : end + 1;
        if (end != view.npos && view.substr(end).starts_with("\r\n")) ++begin;
    };
    for (int i = 0; i < options.skip && begin < view.size(); ++i)
        skipLine();
    while (options.comment.empty() && view.substr(begin).starts_with('#'))
        skipLine();
    return begin;
}

void CheckOptions(const CsvOptions& options) {
    const std::string_view forbidden("\"\r\n", 3);
    if (options.delimiter != 0 && forbidden.find(options.delimiter) != forbidden.npos)
        Fail("ReadCSV", "the delimiter is a quote or a line end");
    if (options.decimal != 0 && options.decimal != '.' && options.decimal != ',')
        Fail("ReadCSV", Say("the decimal sign is '", options.decimal, "', neither . nor ,"));
    if (options.delimiter != 0 && options.delimiter == options.decimal)
        Fail("ReadCSV", Say("'", options.decimal, "' is the delimiter and the decimal sign"));
    if (options.skip < 0) Fail("ReadCSV", Say("the lines to skip are ", options.skip));
}

}  // namespace

std::shared_ptr<const Table::Store> Table::Store::Read(detail::CsvBytes bytes,
                                                       const CsvOptions& options) {
    CheckOptions(options);
    auto store = std::make_shared<Store>();
    store->text = std::move(bytes);
    store->name = options.name.empty() ? "the table" : options.name;
    store->missing = options.missing;
    store->dateFormat = options.date_format;
    const std::string_view view = store->text.View();
    if (view.starts_with("\xFF\xFE") || view.starts_with("\xFE\xFF"))
        Fail("ReadCSV", Say(store->name, " is UTF-16; save it as UTF-8"));
    store->isUtf8 = detail::IsUtf8(view);
    const std::size_t begin = FindBegin(store->text, options);
    store->dialect = detail::DetectDialect(store->text, begin, options.delimiter, options.decimal,
                                           options.comment);
    if (options.header != Header::Detect) store->dialect.header = options.header == Header::Yes;
    detail::CsvProblem problem;
    store->index = detail::ScanCells(store->text, begin, store->dialect, problem);
    if (!problem.text.empty())
        Fail("ReadCSV",
             Say(store->Where(problem.place), ", column ", problem.column, ": ", problem.text));
    store->TakeHeader();
    return store;
}

void Table::Store::TakeHeader() {
    firstRow = dialect.header && !index.rowStart.empty();
    std::string buffer;
    for (std::size_t c = 0; c < index.columns; ++c) {
        std::string title;
        if (firstRow == 1) title = ToUtf8(CellText(Cell(0, c), buffer));
        names.push_back(title.empty() ? Say("column ", c + 1) : title);
    }
}

Table ReadCSVText(std::string_view text, const CsvOptions& options) {
    detail::CsvBytes bytes = NewBytes(text.size());
    std::memcpy(bytes.bytes.get(), text.data(), text.size());
    return Table(Table::Store::Read(std::move(bytes), options));
}

Table ReadCSV(std::istream& in, const CsvOptions& options) {
    constexpr std::streamoff kUnknown = -1;
    in.seekg(0, std::ios::end);
    const std::streamoff end = in ? static_cast<std::streamoff>(in.tellg()) : kUnknown;
    in.clear();
    if (end != kUnknown) in.seekg(0);
    in.clear();
    detail::CsvBytes bytes = NewBytes(end > 0 ? static_cast<std::size_t>(end) : 1 << 16);
    std::size_t size = 0;
    // One byte more is asked for than are expected, so that the end is seen.
    while (in.read(bytes.bytes.get() + size, static_cast<std::streamsize>(bytes.size + 1 - size)) ||
           in.gcount() > 0) {
        size += static_cast<std::size_t>(in.gcount());
        if (size <= bytes.size) continue;
        detail::CsvBytes larger = NewBytes(2 * size);
        std::memcpy(larger.bytes.get(), bytes.bytes.get(), size);
        bytes = std::move(larger);
    }
    if (in.bad())
        Raise(ERR3D_DISK_IO, ERR3DCLASS_GENERAL, "ReadCSV",
              Say(options.name.empty() ? "the table" : options.name, " cannot be read"));
    bytes.size = size;
    bytes.bytes[size] = '\n';
    return Table(Table::Store::Read(std::move(bytes), options));
}

Table ReadCSV(const std::string& path, const CsvOptions& options) {
    errno = 0;
    std::ifstream in(path, std::ios::binary);
    in.peek();  // a folder opens, but cannot be read
    if (!in.is_open() || in.bad())
        Raise(ERR3D_FILE_OPEN_INPUT, ERR3DCLASS_GENERAL, "ReadCSV",
              Say(path, " cannot be read: ", std::strerror(errno != 0 ? errno : EIO)));
    CsvOptions named = options;
    if (named.name.empty()) named.name = path;
    in.clear();
    return ReadCSV(in, named);
}

}  // namespace varnel::plot
