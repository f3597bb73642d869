// Table: columns of a CSV file, by name.
//
//     const Table weather = ReadCSV("seattle_weather.csv");
//     figure.Line(weather.Dates("date"), weather["temp_max_c"]);
//
// A column is asked for by its name, by its number from 1, by its letter as in a spreadsheet, or as
// a part of a date: "date:year", "date:month" (see FindDatePart), whichever fits first. Nothing is
// read from a cell before its column is asked for, so that columns nobody uses cost next to
// nothing. Copies and the tables that the operations return share the file's bytes.
//
// Whatever is wrong raises "Parameter Error" with a sentence that names the file, the line and the
// column.
#pragma once

#include <cstddef>
#include <functional>
#include <iosfwd>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "varnel/foundation/export.h"
#include "varnel/plot/data.h"

namespace varnel::plot {

enum class Header { Detect, Yes, No };

/// How a file is to be understood; what is left at its default is found out.
struct CsvOptions {
    /// Between cells; 0: tab, semicolon, '|' or comma, whichever cuts the rows evenly.
    char delimiter = 0;
    /// '.' or ','; 0: a comma where the delimiter is another sign and the numbers say so.
    char decimal = 0;
    Header header = Header::Detect;
    /// Lines at the start of the file that are passed over, whatever they say.
    int skip = 0;
    /// Lines that start with this are passed over; where it is empty, lines with '#' before the
    /// first row are.
    std::string comment{};
    /// How dates are written, as in ParseDate; empty: as ISO 8601.
    std::string date_format{};
    /// Texts that mean "no value", besides the empty one, "-", NA, N/A, NaN and null.
    std::vector<std::string> missing{};
    /// What messages call the data; empty: the path, or "the table".
    std::string name{};
};

/// What becomes of the values of a group.
enum class Statistic { Mean, Sum, Count, Median, Min, Max };

class VARNEL_API Table {
 public:
    /// No rows, no columns.
    Table();

    std::size_t NumRows() const;
    std::size_t NumColumns() const;
    /// The names of the columns; those without a header are called "column 1", "column 2", ...
    const std::vector<std::string>& Names() const;
    /// Whether operator[] would find the column.
    bool Has(const std::string& column) const;

    /// The column's numbers, NaN where there is none. A cell that is neither a number nor missing
    /// is an error.
    Values operator[](const std::string& column) const;
    Values operator[](const char* column) const { return (*this)[std::string(column)]; }
    /// By number, from 1.
    Values operator[](int column) const { return (*this)[std::to_string(column)]; }
    /// The column's texts, in UTF-8.
    std::vector<std::string> Text(const std::string& column) const;
    /// The column's dates, NaN where there is none.
    Values Dates(const std::string& column) const;
    /// What the column's first 1000 values are: numbers when all of them are, else dates when more
    /// than half are (what is none is an error when it is read), else names.
    DataKind Kind(const std::string& column) const;
    /// Numbers, dates or names, as Kind says.
    Values Column(const std::string& column) const;
    /// All cells as numbers, row by row.
    std::vector<double> Matrix() const;

    /// The rows whose cell says `value`; numbers are compared as numbers.
    Table Where(const std::string& column, const std::string& value) const;
    /// All others.
    Table WhereNot(const std::string& column, const std::string& value) const;
    /// The rows for whose number (NaN where there is none) `keep` says so.
    Table Where(const std::string& column, const std::function<bool(double)>& keep) const;
    /// Rows in the order of a column, by its kind; rows without a value come last. Stable.
    Table Sort(const std::string& column, bool descending = false) const;
    /// The first rows.
    Table Limit(std::size_t rows) const;
    /// One row for each different text of the columns `by`, in the order of their first appearance:
    /// these columns, then the statistic of each other column of numbers; for Count a column
    /// "count" instead. Missing values count for nothing, a group without any has none.
    Table Group(const std::string& by, Statistic statistic) const;
    Table Group(const std::vector<std::string>& by, Statistic statistic) const;
    Table Group(std::initializer_list<std::string> by, Statistic statistic) const {
        return Group(std::vector<std::string>(by), statistic);
    }

 private:
    friend VARNEL_API Table ReadCSV(std::istream& in, const CsvOptions& options);
    friend VARNEL_API Table ReadCSVText(std::string_view text, const CsvOptions& options);
    struct Store;
    struct Place;
    struct Groups;
    class Reader;

    explicit Table(std::shared_ptr<const Store> store) : m_Store(std::move(store)) {}
    Table WithRows(std::vector<std::size_t> rows) const;
    Groups FindGroups(const std::vector<std::string>& by) const;
    void AppendStatistic(std::size_t column, Statistic statistic, const Groups& groups,
                         std::vector<std::string>& rows) const;
    Table WhereEqual(const std::string& column, const std::string& value, bool equal) const;
    std::size_t Row(std::size_t i) const;
    Place Find(const std::string& column, const char* operation) const;
    std::vector<double> ReadNumbers(const Place& place, const char* operation) const;
    std::vector<double> ReadDates(const Place& place, const char* operation) const;
    DataKind KindOf(const Place& place) const;

    std::shared_ptr<const Store> m_Store;
    /// Rows of the store, in order; null: all of them.
    std::shared_ptr<const std::vector<std::size_t>> m_Rows;
};

/// Reads a file: quoting as in RFC 4180, any line ends, UTF-8 with or without a byte order mark or
/// Windows-1252 (the file as a whole). Rows shorter than the first lack their last cells. Raises
/// "Error Opening File for Input" where there is none.
VARNEL_API Table ReadCSV(const std::string& path, const CsvOptions& options = {});
/// Reads a stream to its end.
VARNEL_API Table ReadCSV(std::istream& in, const CsvOptions& options = {});
/// Reads bytes in memory, which are copied.
VARNEL_API Table ReadCSVText(std::string_view text, const CsvOptions& options = {});

}  // namespace varnel::plot
