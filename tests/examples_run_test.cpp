// Runs every example at a small size and compares its pictures with those stored in
// references/EXAMPLE/. Drivers differ in the pixels along edges, so a picture may differ a little.
//
// With VARNEL_UPDATE_REFERENCES set in the environment the references are replaced by the new
// pictures instead; look at them before they are committed.
#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <cctype>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include "tests/support/png.h"

namespace {

namespace fs = std::filesystem;
using namespace varnel::test;

const fs::path kPrograms = VARNEL_EXAMPLE_PROGRAMS;
const fs::path kData = VARNEL_EXAMPLE_DATA;
const fs::path kReferences = VARNEL_EXAMPLE_REFERENCES;
const char* const kNames[] = {VARNEL_EXAMPLE_NAMES};

constexpr const char* kSize = "320x240";
constexpr const char* kSamples = "0";

/// Mean of the absolute differences of all components, of 255.
constexpr double kLargestMean = 1.5;
/// Pixels of which a component differs by more than kFar, of 255, in per cent of all.
constexpr int kFar = 40;
constexpr double kLargestFarPercent = 1.0;

void ExpectSimilar(const Pixels& drawn, const Pixels& reference) {
    ASSERT_LE(MeanDifference(drawn, reference), kLargestMean);
    double far = 0;
    for (std::size_t i = 0; i < drawn.rgb.size(); i += 3) {
        int largest = 0;
        for (std::size_t c = i; c < i + 3; ++c)
            largest = std::max(largest, std::abs(drawn.rgb[c] - reference.rgb[c]));
        if (largest > kFar) ++far;
    }
    EXPECT_LE(100 * 3 * far / static_cast<double>(drawn.rgb.size()), kLargestFarPercent);
}

std::set<std::string> PicturesIn(const fs::path& folder) {
    std::set<std::string> names;
    if (!fs::is_directory(folder)) return names;
    for (const fs::directory_entry& entry : fs::directory_iterator(folder))
        if (entry.path().extension() == ".png") names.insert(entry.path().filename());
    return names;
}

class Example : public testing::TestWithParam<const char*> {
 protected:
    void SetUp() override {
        fs::remove_all(m_Drawn);
        fs::create_directories(m_Drawn);
    }
    /// Pictures of a failed example stay, to be looked at.
    void TearDown() override {
        if (!HasFailure()) fs::remove_all(m_Drawn);
    }

    const std::string m_Name = GetParam();
    const fs::path m_Drawn =
        fs::path(testing::TempDir()) / ("varnel_examples_" + std::to_string(getpid())) / m_Name;
    const fs::path m_Reference = kReferences / m_Name;
};

TEST_P(Example, DrawsItsPictures) {
    const std::string command = "'" + (kPrograms / ("example_" + m_Name)).string() + "' '" +
                                kData.string() + "' '" + m_Drawn.string() + "' " + kSize + " " +
                                kSamples;
    ASSERT_EQ(std::system(command.c_str()), 0) << command;
    const std::set<std::string> pictures = PicturesIn(m_Drawn);
    ASSERT_FALSE(pictures.empty());
    if (std::getenv("VARNEL_UPDATE_REFERENCES") != nullptr) {
        fs::remove_all(m_Reference);
        fs::create_directories(m_Reference);
        for (const std::string& picture : pictures)
            fs::copy_file(m_Drawn / picture, m_Reference / picture);
    }
    ASSERT_EQ(pictures, PicturesIn(m_Reference)) << "drawn in " << m_Drawn;
    for (const std::string& picture : pictures) {
        SCOPED_TRACE((m_Drawn / picture).string());
        ExpectSimilar(ReadPng(m_Drawn / picture), ReadPng(m_Reference / picture));
    }
}

/// The picture at half its size, each pixel the mean of four: texts whose letters a viewer moves to
/// whole pixels stay where they are.
Pixels Halved(const Pixels& large) {
    Pixels small{large.width / 2, large.height / 2, {}};
    const std::size_t row = std::size_t{large.width} * 3;
    for (std::size_t y = 0; y < small.height; ++y)
        for (std::size_t x = 0; x < small.width; ++x)
            for (std::size_t c = 0; c < 3; ++c) {
                const png_byte* at = large.rgb.data() + 2 * y * row + 6 * x + c;
                small.rgb.push_back(
                    static_cast<png_byte>((at[0] + at[3] + at[row] + at[row + 3]) / 4));
            }
    return small;
}

/// Pixels of a difference that is not an edge: all nine around them differ by more than a quarter.
int SolidDifference(const Pixels& a, const Pixels& b) {
    constexpr int kQuarter = 64;
    const auto width = static_cast<std::size_t>(a.width);
    std::vector<char> far(a.rgb.size() / 3);
    for (std::size_t i = 0; i < a.rgb.size(); ++i)
        if (std::abs(a.rgb[i] - b.rgb[i]) > kQuarter) far[i / 3] = 1;
    int solid = 0;
    for (std::size_t y = 1; y + 1 < a.height; ++y)
        for (std::size_t x = 1; x + 1 < width; ++x) {
            bool all = true;
            for (std::size_t k = 0; k < 9 && all; ++k)
                all = far[(y + k / 3 - 1) * width + x + k % 3 - 1] != 0;
            solid += all ? 1 : 0;
        }
    return solid;
}

std::string Output(const std::string& command) {
    std::string text;
    FILE* const pipe = popen(command.c_str(), "r");
    for (int c = 0; pipe != nullptr && (c = std::fgetc(pipe)) != EOF;)
        if (std::isspace(c) == 0) text += static_cast<char>(c);
    if (pipe != nullptr) pclose(pipe);
    return text;
}

/// The PDF and SVG files, drawn and read by programs that are not ours, beside the picture.
TEST_P(Example, VectorFilesShowThePicture) {
    const auto run = [](const std::string& command) {
        ASSERT_EQ(std::system(command.c_str()), 0) << command;
    };
    run("'" + (kPrograms / ("example_" + m_Name)).string() + "' '" + kData.string() + "' '" +
        m_Drawn.string() + "' 480x360 4 vectors");
    for (const std::string& picture : PicturesIn(m_Drawn)) {
        const std::string base = (m_Drawn / picture).replace_extension().string();
        const std::string svg = "'" + base + ".svg'";
        const std::string pdf = "'" + base + ".pdf'";
        run("xmllint --noout " + svg);
        run("rsvg-convert -w 960 -h 720 " + svg + " -o '" + base + ".svg.png'");
        run("pdftoppm -png -scale-to-x 960 -scale-to-y 720 -singlefile " + pdf + ' ' + pdf);
        const Pixels drawn = ReadPng(m_Drawn / picture);
        for (const char* kind : {".svg", ".pdf"}) {
            SCOPED_TRACE(base + kind);
            const Pixels shown = Halved(ReadPng(base + kind + ".png"));
            ASSERT_LE(MeanDifference(drawn, shown), 0.015 * 255);
            EXPECT_LE(SolidDifference(drawn, shown), 12);
            EXPECT_LT(fs::file_size(base + kind), 400'000U);
        }
        // What the one holds as text is found in the other, whose fonts are all embedded.
        const std::string found = Output("pdftotext -raw " + pdf + " -");
        std::istringstream texts(Output("grep '<text' " + svg + " | sed 's/<[^>]*>//g;s/$/;/'"));
        for (std::string text; std::getline(texts, text, ';');)
            EXPECT_NE(found.find(text), found.npos) << text << " in " << pdf;
        EXPECT_EQ(Output("pdffonts " + pdf + " | tail -n +3 | grep -cv 'yes yes yes'"), "0");
    }
}

INSTANTIATE_TEST_SUITE_P(Gallery, Example, testing::ValuesIn(kNames),
                         [](const auto& example) { return std::string(example.param); });

TEST(References, BelongToExamples) {
    std::set<std::string> names(std::begin(kNames), std::end(kNames));
    names.insert("plot");  // of the ten charts
    for (const fs::directory_entry& entry : fs::directory_iterator(kReferences))
        EXPECT_TRUE(names.contains(entry.path().filename())) << entry.path();
}

}  // namespace
