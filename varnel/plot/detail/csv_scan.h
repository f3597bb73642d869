// Cells of a comma-separated text: where each one starts and ends, before anybody asks what it
// says. Quoting is that of RFC 4180, with spaces allowed around quotes; rows end with LF, CR LF or
// CR.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace varnel::plot::detail {

/// The bytes of a file. One more can be read than there are: a line feed, which ends every scan.
struct CsvBytes {
    std::unique_ptr<char[]> bytes;
    std::size_t size = 0;

    std::string_view View() const { return {bytes.get(), size}; }
};

struct CsvDialect {
    char delimiter = ',';
    char decimal = '.';
    bool header = false;
    /// Lines that start so are no rows; empty: none.
    std::string comment;
};

/// Rows in file order; each has `columns` cells.
struct CellIndex {
    std::size_t columns = 0;
    std::vector<std::uint64_t> rowStart;  ///< place of each row's first byte
    std::vector<std::uint32_t> cellEnd;   ///< row by row, counted from the row's start

    /// The bytes of a cell, quotes included; empty for one that its row does not have.
    std::string_view Cell(const char* bytes, std::size_t row, std::size_t column) const {
        const std::uint32_t* const ends = &cellEnd[row * columns];
        const std::uint32_t start = column == 0 ? 0 : ends[column - 1] + 1;
        const std::uint32_t end = ends[column];
        if (start >= end) return {};
        return {bytes + rowStart[row] + start, end - start};
    }
};

/// Why a text is no table.
struct CsvProblem {
    std::size_t place = 0;   ///< byte
    std::size_t column = 0;  ///< from 1; 0: the whole row
    std::string text;        ///< empty: none
};

/// Finds all cells from byte `begin` on. The first row says how many columns there are; shorter
/// rows lack the last ones, longer ones are a problem unless what is too much is empty. Lines with
/// nothing at all are skipped.
CellIndex ScanCells(const CsvBytes& text, std::size_t begin, const CsvDialect& dialect,
                    CsvProblem& problem);

/// The cells of the first rows, as they stand in the text. Stops without a word at a problem.
std::vector<std::vector<std::string_view>> SampleRows(const CsvBytes& text, std::size_t begin,
                                                      char delimiter, const std::string& comment,
                                                      std::size_t rows);

/// What a cell says: without outer spaces, quotes taken off. `isQuoted` tells whether it had them.
std::string_view CellText(std::string_view cell, std::string& buffer, bool* isQuoted = nullptr);

/// What the sample's delimiter, decimal sign and header are; zero where they are not asked for.
/// `delimiter` and `decimal` are those that are known, 0 where they are to be found.
CsvDialect DetectDialect(const CsvBytes& text, std::size_t begin, char delimiter, char decimal,
                         const std::string& comment);

}  // namespace varnel::plot::detail
