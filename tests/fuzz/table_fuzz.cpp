// Reads hostile bytes as a table, with every option that changes how, and asks it for everything.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>

#include "varnel/foundation/error.h"
#include "varnel/plot/table.h"

namespace {

using namespace varnel::plot;

/// Whatever is no error of the table's own ends the run.
template <class Use>
void Try(Use&& use) {
    try {
        use();
    } catch (const varnel::CErr3D& error) {
        if (error.m_ErrorType != varnel::ERR3D_PARAMETER) std::abort();
    }
}

void UseTable(const Table& table) {
    const std::size_t rows = table.NumRows();
    // Each operation passes over all columns: a few of them tell as much as hundreds.
    const std::size_t columns = std::min<std::size_t>(table.NumColumns(), 3);
    for (std::size_t c = 0; c < columns; ++c) {
        const std::string& name = table.Names()[c];
        if (table.Text(name).size() != rows) std::abort();
        Try([&] { table.Column(name); });
        Try([&] { table.Dates(name); });
        Try([&] { table[name + ":month"]; });
        Try([&] {
            if (table.Sort(name, true).Text(name).size() != rows) std::abort();
            const Table groups = table.Group(name, Statistic::Median);
            if (groups.NumRows() > rows) std::abort();
            if (rows > 0 && groups.NumRows() == 0) std::abort();
            // What a group is called survives the way through the small table.
            if (rows > 0 && groups.Text(groups.Names().at(0)).at(0) != table.Text(name).at(0) &&
                groups.Names().at(0) == name)
                std::abort();
        });
    }
    Try([&] {
        if (table.Matrix().size() != rows * table.NumColumns()) std::abort();
    });
}

}  // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
    varnel::CErr3D::SetErrorReportMode(0);
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    if (size < 2) return 0;
    // The first two bytes choose the options.
    CsvOptions options;
    options.delimiter = "\0,;\t| :x"[bytes[0] % 8];
    options.decimal = "\0.,\0"[bytes[0] / 8 % 4];
    options.header = static_cast<Header>(bytes[0] / 32 % 3);
    options.skip = bytes[1] % 3;
    if ((bytes[1] & 8) != 0) options.comment = "#";
    if ((bytes[1] & 16) != 0) options.date_format = "%d.%b %y %I:%M:%S %p";
    if ((bytes[1] & 32) != 0) options.date_format = "%s%j";
    if ((bytes[1] & 64) != 0) options.missing = {"?", ""};
    Try([&] {
        UseTable(ReadCSVText({reinterpret_cast<const char*>(bytes) + 2, size - 2}, options));
    });
    return 0;
}
