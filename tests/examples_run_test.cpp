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
        std::error_code stays;  // what others failed
        fs::remove(m_Drawn.parent_path(), stays);
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

/// The largest connected patch of pixels that differ by more than a quarter, of those in squares of
/// `side` pixels that do: thinner ones are where two programs draw an edge or a hinted letter.
int LargestPatch(const Pixels& a, const Pixels& b, std::size_t side) {
    constexpr int kQuarter = 64;
    const std::size_t width = a.width;
    std::vector<char> far(a.rgb.size() / 3), thick(far.size());
    for (std::size_t i = 0; i < a.rgb.size(); ++i)
        if (std::abs(a.rgb[i] - b.rgb[i]) > kQuarter) far[i / 3] = 1;
    const auto square = [&](std::size_t at, const auto& visit) {
        for (std::size_t k = 0; k < side * side; ++k)
            visit(at + k / side * width + k % side);
    };
    for (std::size_t y = 0; y + side <= a.height; ++y)
        for (std::size_t x = 0; x + side <= width; ++x) {
            bool all = true;
            square(y * width + x, [&](std::size_t i) { all = all && far[i] != 0; });
            if (all) square(y * width + x, [&](std::size_t i) { thick[i] = 1; });
        }
    int largest = 0;
    for (std::size_t start = 0; start < thick.size(); ++start) {
        int size = 0;
        for (std::vector<std::size_t> open{start}; !open.empty();) {
            const std::size_t at = open.back();
            open.pop_back();
            if (at >= thick.size() || thick[at] == 0) continue;
            thick[at] = 0;
            ++size;
            open.insert(open.end(), {at - 1, at + 1, at - width, at + width});
        }
        largest = std::max(largest, size);
    }
    return largest;
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
        m_Drawn.string() + "' 1024x768 16 vectors");
    for (const std::string& picture : PicturesIn(m_Drawn)) {
        const std::string base = (m_Drawn / picture).replace_extension().string();
        const std::string svg = "'" + base + ".svg'";
        const std::string pdf = "'" + base + ".pdf'";
        run("xmllint --noout " + svg);
        run("rsvg-convert -w 2048 -h 1536 " + svg + " -o '" + base + ".svg.png'");
        run("pdftoppm -png -scale-to-x 2048 -scale-to-y 1536 -singlefile " + pdf + ' ' + pdf);
        const Pixels drawn = ReadPng(m_Drawn / picture);
        for (const std::string kind : {".svg", ".pdf"}) {
            SCOPED_TRACE(base + kind);
            const Pixels shown = Halved(ReadPng(base + kind + ".png"));
            ASSERT_LE(MeanDifference(drawn, shown), 0.015 * 255);
            // Letters are hinted in the one and lie in the plane of a line in the other.
            const int most = m_Name == "text_planes" ? 30 : kind == ".pdf" ? 16 : 12;
            EXPECT_LE(LargestPatch(drawn, shown, kind == ".pdf" ? 3 : 2), most);
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
