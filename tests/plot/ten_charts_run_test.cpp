// The programs of examples/plot and the commands that say the same: both make the same picture, to
// the byte, and it looks as the stored one does.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "tests/support/png.h"
#include "tests/support/x_server.h"

namespace varnel {
namespace {

namespace fs = std::filesystem;

struct Case {
    const char* name;     ///< of the example
    const char* command;  ///< null where there is none
};

void PrintTo(const Case& c, std::ostream* out) {
    *out << c.name;
}

const Case kCases[] = {
    {"volcano_surface", "surface examples/data/volcano.csv --title \"Maunga Whau\""},
    {"volcano_contours", "contours examples/data/volcano.csv --title \"Maunga Whau, m\""},
    {"months_and_years",
     "bars examples/data/seattle_weather.csv -x date:month -y date:year -z temp_max_c --group mean "
     "--title \"Warmest hour of the day, °C\""},
    {"grouped_bars",
     "bars examples/data/iowa_electricity.csv -x year -y 2,3,4 --names fossil,nuclear,renewable "
     "--title \"Electricity in Iowa, GWh\""},
    {"penguins",
     "scatter examples/data/penguins.csv -x bill_length_mm -y flipper_length_mm --by species "
     "--title Penguins"},
    {"co2",
     "line examples/data/co2_mauna_loa.csv -x date -y co2_ppm --y-title ppm "
     "--title \"Carbon dioxide at Mauna Loa\""},
    {"stacked_area",
     "area examples/data/iowa_electricity.csv -x year -y 2,3,4 --names fossil,nuclear,renewable "
     "--title \"Electricity in Iowa, GWh\""},
    {"candles",
     "candles examples/data/vix_ohlc.csv -x date --ohlc open,high,low,close --title VIX"},
    {"helix", "line3d helix.csv -x 1 -y 2 -z 3 --title \"A helix\""},
    {"boxes_by_month",
     "boxes examples/data/seattle_weather.csv -x date:month -y temp_max_c "
     "--title \"Warmest hour of the day in Seattle, °C\""},
    {"temperature_range",
     "area examples/data/seattle_weather.csv -x date -y temp_max_c --from temp_min_c --limit 366 "
     "--title \"Seattle in 2012, °C\" --y-title \"coldest to warmest hour\""},
    {"ribbons",
     "ribbons examples/data/iowa_electricity.csv -x year -y 2,3,4 --names fossil,nuclear,renewable "
     "--title \"Electricity in Iowa, GWh\""},
    {"penguins_in_space",
     "scatter examples/data/penguins.csv -x bill_length_mm -y flipper_length_mm -z body_mass_g "
     "--by species --title Penguins"},
    {"earthquakes",
     "scatter examples/data/earthquakes_week.csv -x 1 -y 2 --color-by magnitude "
     "--title \"Earthquakes of a week\""},
    {"histogram",
     "histogram examples/data/seattle_weather.csv -x temp_max_c "
     "--title \"Warmest hour of the day in Seattle, °C\""},
    {"volcano_heat_map",
     "heatmap examples/data/volcano.csv --map terrain --title \"Maunga Whau, m\""},
    {"ripples", nullptr},
    {"four_charts", nullptr},
};

class TenCharts : public testing::TestWithParam<Case> {
 protected:
    TenCharts() {
        fs::create_directory(m_Folder.File("examples"));
        fs::create_directory_symlink(VARNEL_EXAMPLE_DATA, m_Folder.File("examples/data"));
    }
    /// A command in the folder; what it says.
    std::string Run(const std::string& command) {
        return test::RunCommand("cd " + m_Folder.File("") + " && " + command + " 2>&1");
    }
    test::TemporaryFolder m_Folder;
};

TEST_P(TenCharts, ProgramAndCommandMakeTheStoredPicture) {
    const auto& [name, command] = GetParam();
    std::ofstream helix(m_Folder.File("helix.csv"));
    helix.precision(17);
    for (double t = 0; t < 20; t += 0.05)
        helix << std::cos(t) << ',' << std::sin(t) << ',' << t << '\n';
    helix.close();
    const std::string picture = std::string(name) + ".png";
    EXPECT_EQ(Run(VARNEL_EXAMPLE_PROGRAMS "/plot_" + std::string(name)), "");
    EXPECT_GT(fs::file_size(m_Folder.File(picture)), 1000U);
    if (command == nullptr) return;
    const std::string plot = VARNEL_PROGRAM " plot " + std::string(command);
    EXPECT_EQ(Run(plot + " -o command.png"), "");
    EXPECT_TRUE(test::ReadAll(m_Folder.File(picture)) ==
                test::ReadAll(m_Folder.File("command.png")));
    EXPECT_EQ(Run(plot + " -o small.png --size 320x240 --samples 0"), "");
    const fs::path reference = fs::path(VARNEL_EXAMPLE_REFERENCES) / "plot" / picture;
    if (std::getenv("VARNEL_UPDATE_REFERENCES") != nullptr)
        fs::copy_file(m_Folder.File("small.png"), reference, fs::copy_options::overwrite_existing);
    EXPECT_LE(
        test::MeanDifference(test::ReadPng(m_Folder.File("small.png")), test::ReadPng(reference)),
        1.5);
}

INSTANTIATE_TEST_SUITE_P(All, TenCharts, testing::ValuesIn(kCases),
                         [](const auto& c) { return std::string(c.param.name); });

}  // namespace
}  // namespace varnel
