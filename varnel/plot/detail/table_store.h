// What the copies of a table share: the file's bytes and where its cells are.
#pragma once

#include "varnel/plot/detail/csv_scan.h"
#include "varnel/plot/table.h"

namespace varnel::plot {

/// A column, or a part of the dates in one.
struct Table::Place {
    std::size_t column = 0;
    std::string part;
};

struct Table::Store {
    detail::CsvBytes text;
    detail::CsvDialect dialect;
    detail::CellIndex index;
    std::size_t firstRow = 0;  ///< 1 behind a header
    std::vector<std::string> names;
    std::string name = "the table";
    std::vector<std::string> missing;
    std::string dateFormat;
    bool isUtf8 = true;

    /// Raises what is wrong under the name "ReadCSV".
    static std::shared_ptr<const Store> Read(detail::CsvBytes bytes, const CsvOptions& options);
    void TakeHeader();

    std::string_view Cell(std::size_t row, std::size_t column) const {
        return index.Cell(text.bytes.get(), row, column);
    }
    bool FindColumn(const std::string& column, std::size_t& found) const;
    bool FindPlace(const std::string& column, Place& place) const;
    /// For messages: the file and the line of a byte; with a column the place of a cell.
    std::string Where(std::size_t place) const;
    std::string Where(std::size_t row, std::size_t column) const;
    std::string ToUtf8(std::string_view bytes) const;
    bool SaysNothing(std::string_view cell) const;
    bool ReadDate(std::string_view cell, double& days) const;
};

}  // namespace varnel::plot
