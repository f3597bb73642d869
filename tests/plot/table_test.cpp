// Tables as people have them: every sign, quote, gap and date form, and what is said about those
// that are wrong.
#include "varnel/plot/table.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cmath>
#include <list>
#include <sstream>

#include "varnel/foundation/error.h"
#include "varnel/plot/dates.h"
#include "varnel/plot/detail/cell_text.h"

namespace varnel::plot {
namespace {

using namespace std::chrono_literals;

/// All cells of a table in brackets, row by row, behind the names.
std::string Show(const Table& table) {
    std::string out;
    for (const std::string& name : table.Names())
        out += "[" + name + "]";
    std::vector<std::vector<std::string>> columns;
    for (const std::string& name : table.Names())
        columns.push_back(table.Text(name));
    for (std::size_t r = 0; r < table.NumRows(); ++r) {
        out += " ";
        for (const auto& column : columns)
            out += "[" + column[r] + "]";
    }
    return out;
}

TEST(Table, EveryFormOfTextIsTheSameTable) {
    const std::string expected = "[a][b] [1][x] [2][y]";
    for (const std::string text :
         {"a,b\n1,x\n2,y\n", "a,b\n1,x\n2,y", "a;b\n1;x\n2;y\n", "a\tb\n1\tx\n2\ty\n",
          "a|b\r\n1|x\r\n2|y\r\n", "a,b\r1,x\r2,y\r",
          "\xEF\xBB\xBF"
          "a,b\n1,x\n2,y\n",
          "# made by hand\n# twice\na,b\n\n1,x\n2,y\n\n", "\"a\",\"b\"\n\"1\", \"x\" \n2 , y\n",
          "a,b\n1,x,\n2,y,,\n", "a,b\r\n1,\"x\"\r\n2,\"y\""})
        EXPECT_EQ(Show(ReadCSVText(text)), expected) << text;
    EXPECT_EQ(Show(ReadCSVText("junk\na:b\n%1:x\n2:y\n1:x\n",
                               {.delimiter = ':', .skip = 1, .comment = "%"})),
              "[a][b] [2][y] [1][x]");
    std::istringstream stream("a,b\n1,x\n2,y\n");
    EXPECT_EQ(Show(ReadCSV(stream)), expected);
    EXPECT_EQ(Show(ReadCSVText("a,b\n\"1\n, \"\"q\"\"\",x\n,\"\"\"\"\n3\n")),
              "[a][b] [1\n, \"q\"][x] [][\"] [3][]");
    // The file as a whole is UTF-8 or Windows-1252.
    EXPECT_EQ(Show(ReadCSVText("\xB5m,\x80\n1,caf\xE9\n")), "[µm][€] [1][café]");
    EXPECT_EQ(Show(ReadCSVText("µm,x\n1,caf\xC3\xA9\n")), "[µm][x] [1][café]");
    for (const char* text : {"", "\n\n", "\xEF\xBB\xBF", "# only\n"})
        EXPECT_EQ(ReadCSVText(text).NumRows(), 0U);
}

TEST(Table, AHeaderIsFoundByWhatStandsBelowIt) {
    const std::pair<const char*, bool> cases[] = {
        {"1,2\n3,4\n", false},           {"x,y\n3,4\n", true},
        {"name,size\nIowa,2\n", true},   {"Iowa,1\nOhio,2\nUtah,3\n", false},
        {"when\n2024-01-02\n", true},    {"2024-01-01\n2024-01-02\n", false},
        {"species\nAdelie\n", true},     {"Adelie\nGentoo\nAdelie\n", false},
        {"id,2001\nx,5\ny,NA\n", false}, {"a,b\n,1\n-,2\n", true}};
    for (const auto& [text, header] : cases) {
        EXPECT_EQ(ReadCSVText(text).Names()[0] != "column 1", header) << text;
        EXPECT_EQ(ReadCSVText(text, {.header = Header::Yes}).NumRows() + 1,
                  ReadCSVText(text, {.header = Header::No}).NumRows());
    }
}

TEST(Table, NumbersAsTheyAreWritten) {
    const double inf = INFINITY;
    struct Case {
        const char* text;
        double point, comma;  ///< what it is with decimal points and commas; 9999: nothing
    };
    const double bad = 9999;
    const Case cases[] = {{"12", 12, 12},
                          {"-1.5", -1.5, bad},
                          {"1,5", bad, 1.5},
                          {"1,234", 1234, 1.234},
                          {"1.234", 1.234, 1234},
                          {"1,234,567.5", 1234567.5, bad},
                          {"1.234.567,5", bad, 1234567.5},
                          {"1 234 567", 1234567, 1234567},
                          {"1\u202F234,5", bad, 1234.5},
                          {"1'234.5", 1234.5, bad},
                          {"12,34", bad, 12.34},
                          {"12 %", 12, 12},
                          {"+3e2", 300, 300},
                          {"\u22125", -5, -5},
                          {".5", 0.5, bad},
                          {"5.", 5, bad},
                          {"0.1000000000000000055511151231257827", 0.1, bad},
                          {"123456789012345678", 123456789012345678.0, 123456789012345678.0},
                          {"1e400", inf, inf},
                          {"-1e-400", 0, 0},
                          {"inf", inf, inf},
                          {"0x10", bad, bad},
                          {"nan(1)", bad, bad},
                          {"1-2", bad, bad},
                          {"-", bad, bad},
                          {"%", bad, bad},
                          {"1.2.3", bad, bad}};
    for (const Case& c : cases)
        for (const char decimal : {'.', ','}) {
            double number = bad;
            const bool read = detail::ParseNumber(c.text, decimal, number);
            EXPECT_EQ(read, number != bad) << c.text;
            EXPECT_EQ(number, decimal == '.' ? c.point : c.comma) << c.text << " " << decimal;
        }
    const Table table =
        ReadCSVText("v;w\n1,5;1\n;2\nNA;3\nn/a;4\nNaN;5\nnull;6\n-;7\n?;8\n", {.missing = {"?"}});
    const Values v = table["v"];
    EXPECT_EQ(v[0], 1.5);
    for (std::size_t i = 1; i < v.size(); ++i)
        EXPECT_TRUE(std::isnan(v[i])) << i;
    EXPECT_EQ(ReadCSVText("a\t b\n1,234\t2\n")["a"][0], 1234) << "thousands";
}

TEST(Table, DatesAsTheyAreWritten) {
    struct Case {
        const char* text;
        const char* format;  ///< empty: ISO
        const char* back;    ///< empty: no date
    };
    const Case cases[] = {
        {"1970-01-01", "", "1970-01-01"},
        {"2024-02-29", "", "2024-02-29"},
        {"2023-02-29", "", ""},
        {"1969/07/20 20:17:40", "", "1969-07-20 20:17:40"},
        {"2024-03-01T12:30Z", "", "2024-03-01 12:30"},
        {"2024-03-01T00:30:00.25+01:00", "", "2024-02-29 23:30"},
        {"2024-03", "", "2024-03-01"},
        {"2024", "", "2024-01-01"},
        {"2024-03-01x", "", ""},
        {"2024-03-01 25:00", "", ""},
        {"20240301", "", ""},
        {"31.12.1999", "%d.%m.%Y", "1999-12-31"},
        {"12/31/99 11:05 PM", "%m/%d/%y %I:%M %p", "1999-12-31 23:05"},
        {"3 march 2024", "%d %B %Y", "2024-03-03"},
        {"Mar  7, 2024", "%b %d, %Y", "2024-03-07"},
        {"2024060", "%Y%j", "2024-02-29"},
        {"2024 060", "%Y %j", "2024-02-29"},
        {"86400", "%s", "1970-01-02"},
        {"31.12.1999", "%d.%m", ""},
        {"99", "%Q", ""},
    };
    for (const Case& c : cases) {
        double days = NAN;
        const bool read =
            *c.format == '\0' ? ParseDate(c.text, days) : ParseDate(c.text, c.format, days);
        EXPECT_EQ(read, *c.back != '\0') << c.text;
        EXPECT_EQ(FormatDate(days).substr(0, std::string(c.back).size()), c.back) << c.text;
    }
    const Table table = ReadCSVText("date,x\n2024-12-30 06:30,1\nNA,2\n");
    const std::pair<const char*, const char*> parts[] = {
        {"year", "2024"}, {"quarter", "4"},   {"month", "Dec"}, {"week", "1"},   {"weekday", "Mon"},
        {"day", "30"},    {"yearday", "365"}, {"hour", "6"},    {"minute", "30"}};
    for (const auto& [part, text] : parts)
        EXPECT_EQ(table.Text(std::string("date:") + part), (std::vector<std::string>{text, ""}));
    EXPECT_EQ(table["date:month"][0], 12);
    EXPECT_TRUE(std::isnan(table["date:month"][1]));
}

TEST(Table, ColumnsRowsAndGroups) {
    const Table table = ReadCSVText(
        "kind,when,2,b\nlow,2024-03-02,4,10\nhigh,2024-01-05,1,20\nlow,2023-01-05,NA,30\n"
        "\"a \"\"q\"\"\",,7,\n");
    EXPECT_EQ(table["2"].Numbers()[0], 4) << "names come first";
    EXPECT_EQ(table["D"].Numbers()[1], 20);
    EXPECT_EQ(table[4].Numbers()[1], 20);
    EXPECT_EQ(table["b"].Name(), "b");
    EXPECT_EQ(table.Kind("kind"), DataKind::Names);
    EXPECT_EQ(table.Kind("when"), DataKind::Dates);
    EXPECT_EQ(table.Kind("b"), DataKind::Numbers);
    EXPECT_EQ(Show(table.Where("kind", "low").Sort("b", true).Limit(1)),
              "[kind][when][2][b] [low][2023-01-05][NA][30]");
    EXPECT_EQ(table.Where("b", "20.0").NumRows(), 1U);
    EXPECT_EQ(table.Where("2", [](double x) { return x > 2; }).NumRows(), 2U);
    EXPECT_EQ(table.Sort("when").Text("when"),
              (std::vector<std::string>{"2023-01-05", "2024-01-05", "2024-03-02", ""}));
    EXPECT_EQ(table.Sort("kind").Text("kind")[0], "a \"q\"");
    EXPECT_EQ(Show(table.Group("kind", Statistic::Mean)),
              "[kind][2][b] [low][4][20] [high][1][20] [a \"q\"][7][]");
    EXPECT_EQ(Show(table.Group({"when:year", "kind"}, Statistic::Count)),
              "[year][kind][count] [2024][low][1] [2024][high][1] [2023][low][1] [][a \"q\"][1]");
    const std::pair<Statistic, double> statistics[] = {
        {Statistic::Sum, 10}, {Statistic::Median, 2.5}, {Statistic::Min, 1}, {Statistic::Max, 4}};
    const Table four = ReadCSVText("g,x\na,1\na,2\na,3\na,4\n");
    for (const auto& [statistic, value] : statistics)
        EXPECT_EQ(four.Group("g", statistic)["x"][0], value);
    EXPECT_EQ(ReadCSVText("1,2\n3,4\n").Matrix(), (std::vector<double>{1, 2, 3, 4}));
}

TEST(Table, WhatIsWrongNamesFileLineAndColumn) {
    const auto message = [](auto&& action) -> std::string {
        CErr3D::SetErrorReportMode(0);
        try {
            action();
        } catch (const Error& e) {
            return e.what();
        }
        return "nothing";
    };
    const CsvOptions named{.name = "t.csv"};
    const auto read = [&](const char* text) { return message([&] { ReadCSVText(text, named); }); };
    EXPECT_EQ(read("a,b\n1,2\n\n1,2,3\n"),
              "ReadCSV: t.csv, line 4, column 3: this row has 3 cells, the first one 2");
    EXPECT_EQ(read("a,b\r\n1,\"2\r\n3,4"),
              "ReadCSV: t.csv, line 2, column 2: a quote opens here that nothing closes");
    EXPECT_EQ(read("a,b\n\"1\"x,2\n"),
              "ReadCSV: t.csv, line 2, column 1: \"x\" follows the quote that closes the cell");
    EXPECT_EQ(read("\xFF\xFE"
                   "a"),
              "ReadCSV: t.csv is UTF-16; save it as UTF-8");
    const Table table = ReadCSVText("a,b\n1,\"x\ny\"\n2,z\n", named);
    EXPECT_EQ(message([&] { table["b"]; }),
              "Table::operator[]: t.csv, line 2, column 2 (b): \"x\ny\" is no number");
    EXPECT_EQ(message([&] { table.Sort("a").Limit(2).Where("b", "z")["b"]; }),
              "Table::operator[]: t.csv, line 4, column 2 (b): \"z\" is no number");
    EXPECT_EQ(message([&] { table.Dates("b"); }).substr(0, 50),
              "Table::Dates: t.csv, line 2, column 2 (b): \"x\ny\" i");
    EXPECT_EQ(message([&] { table["c"]; }),
              "Table::operator[]: t.csv has no column \"c\"; its columns are a, b");
    EXPECT_EQ(message([] { ReadCSV("/no/such/file"); }),
              "ReadCSV: /no/such/file cannot be read: No such file or directory");
    EXPECT_EQ(message([] { ReadCSV("/tmp"); }), "ReadCSV: /tmp cannot be read: Is a directory");
    EXPECT_EQ(message([] { ReadCSVText("", {.decimal = ';'}); }),
              "ReadCSV: the decimal sign is ';', neither . nor ,");
}

TEST(Values, AreMadeFromWhateverThereIs) {
    using namespace std::chrono;
    const int array[] = {1, 2, 3};
    const float one = 1, two = 2, three = 3;
    const std::list<unsigned char> list = {1, 2, 3};
#if defined(__clang__) && __clang_major__ < 16
    const std::vector<int> view = {1, 2, 3};  // libstdc++'s views need a newer clang
#else
    const auto view = std::views::iota(1, 4);
#endif
    for (const Values& values :
         {Values{1, 2, 3}, Values{1, 2.0, 3}, Values(array), Values{one, two, three}, Values(list),
          Values(std::vector<double>{1, 2, 3}), Values(view),
          Values(std::span<const int>(array))}) {
        EXPECT_EQ(values.Numbers(), (std::vector<double>{1, 2, 3}));
        EXPECT_EQ(values.Kind(), DataKind::Numbers);
    }
    const std::vector<std::string> texts = {"Jan", "Feb", "Jan"};
    for (const Values& values :
         {Values{"Jan", "Feb", "Jan"}, Values(texts), Values{std::string("Jan"), "Feb", "Jan"}}) {
        EXPECT_EQ(values.Kind(), DataKind::Names);
        EXPECT_EQ(values.Numbers(), (std::vector<double>{1, 2, 1}));
        EXPECT_EQ(values.Categories(), (std::vector<std::string>{"Jan", "Feb"}));
    }
    for (const Values& values : {Values{"1970-01-03"}, Values{1970y / January / 3},
                                 Values{sys_days(1970y / January / 3)}, Values{sys_seconds(48h)}}) {
        EXPECT_EQ(values.Kind(), DataKind::Dates);
        EXPECT_EQ(values[0], 2);
        EXPECT_EQ(values.Text(0), "1970-01-03");
    }
    EXPECT_EQ((Values{"2001", "2002"}).Kind(), DataKind::Names) << "years alone are no dates";
    EXPECT_EQ(((Values{1, 2} * 6 + 1) / 2 - 0.5).Numbers(), (std::vector<double>{3, 6}));
    EXPECT_THROW((Values{"a"} / 2), Error);
}

}  // namespace
}  // namespace varnel::plot
