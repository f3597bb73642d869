#include "varnel/platform/glyph_outlines.h"

#include <fontconfig/fontconfig.h>
#include <ft2build.h>
#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <future>
#include <map>
#include <memory>
#include <string>
#include FT_FREETYPE_H

namespace varnel {
namespace {

constexpr double kDeviation = 0.1;
constexpr double kExtrusion = 0.05;

LOGFONT Described(const char* face, int weight = 400, bool italic = false, bool underline = false) {
    LOGFONT font;
    font.lfFaceName = face;
    font.lfWeight = weight;
    font.lfItalic = italic;
    font.lfUnderline = underline;
    return font;
}

std::vector<GlyphOutline> Build(const LOGFONT& font, double deviation = kDeviation,
                                double extrusion = kExtrusion) {
    return BuildGlyphOutlines(font, 256, deviation, extrusion);
}

const GlyphOutline& Glyph(const std::vector<GlyphOutline>& glyphs, char c) {
    return glyphs.at(static_cast<unsigned char>(c));
}

/// The face that fontconfig gives for a name such as "Arial:bold", opened by FreeType alone.
class ReferenceFace {
 public:
    explicit ReferenceFace(const char* name) {
        FcInit();
        FcPattern* const pattern = FcNameParse(reinterpret_cast<const FcChar8*>(name));
        FcConfigSubstitute(nullptr, pattern, FcMatchPattern);
        FcDefaultSubstitute(pattern);
        FcResult result;
        FcPattern* const match = FcFontMatch(nullptr, pattern, &result);
        FcChar8* file = nullptr;
        if (match != nullptr && FcPatternGetString(match, FC_FILE, 0, &file) == FcResultMatch)
            m_File = reinterpret_cast<const char*>(file);
        FcPatternDestroy(match);
        FcPatternDestroy(pattern);
        FT_Init_FreeType(&m_Library);
        FT_New_Face(m_Library, m_File.c_str(), 0, &m_Face);
    }
    ~ReferenceFace() {
        FT_Done_Face(m_Face);
        FT_Done_FreeType(m_Library);
    }

    const std::string& File() const { return m_File; }
    double Em() const { return m_Face->units_per_EM; }
    FT_Glyph_Metrics Metrics(char32_t character) const {
        const FT_UInt glyph = FT_Get_Char_Index(m_Face, character);
        EXPECT_EQ(FT_Load_Glyph(m_Face, glyph, FT_LOAD_NO_SCALE), 0);
        return m_Face->glyph->metrics;
    }
    FT_Face Get() const { return m_Face; }

 private:
    std::string m_File;
    FT_Library m_Library = nullptr;
    FT_Face m_Face = nullptr;
};

void ExpectMetrics(const GLYPHMETRICSFLOAT& m, const FT_Glyph_Metrics& expected, double em) {
    constexpr double tolerance = 1e-6;
    EXPECT_NEAR(m.gmfBlackBoxX, static_cast<double>(expected.width) / em, tolerance);
    EXPECT_NEAR(m.gmfBlackBoxY, static_cast<double>(expected.height) / em, tolerance);
    EXPECT_NEAR(m.gmfptGlyphOrigin.x, static_cast<double>(expected.horiBearingX) / em, tolerance);
    EXPECT_NEAR(m.gmfptGlyphOrigin.y, static_cast<double>(expected.horiBearingY) / em, tolerance);
    EXPECT_NEAR(m.gmfCellIncX, static_cast<double>(expected.horiAdvance) / em, tolerance);
    EXPECT_EQ(m.gmfCellIncY, 0.0F);
}

TEST(GlyphOutlines, MetricsAreThoseOfTheFace) {
    const struct {
        LOGFONT font;
        const char* reference;
    } faces[] = {{Described("Arial"), "Arial"},
                 {Described("Arial", 700), "Arial:bold"},
                 {Described("Times New Roman", 400, true), "Times New Roman:italic"}};
    for (const auto& [font, name] : faces) {
        SCOPED_TRACE(name);
        const ReferenceFace face(name);
        const auto glyphs = Build(font);
        ASSERT_EQ(glyphs.size(), 256U);
        for (unsigned c = 0x20; c < 256; ++c) {
            const auto byte = static_cast<unsigned char>(c);
            if (c >= 0x7F && Windows1252ToUnicode(byte) == c && c < 0xA0) continue;  // no character
            SCOPED_TRACE(c);
            ExpectMetrics(glyphs[c].metrics, face.Metrics(Windows1252ToUnicode(byte)), face.Em());
        }
    }
    // What a reader of Windows-1252 must see.
    EXPECT_EQ(Windows1252ToUnicode(0x80), char32_t{0x20AC});
    EXPECT_EQ(Windows1252ToUnicode(0x99), char32_t{0x2122});
    EXPECT_EQ(Windows1252ToUnicode(0xE9), char32_t{0xE9});
}

TEST(GlyphOutlines, ControlCharactersAreBlank) {
    const auto glyphs = Build(Described("Arial"));
    for (const int c : {0, 9, 10, 31, 127, 0x81}) {
        EXPECT_TRUE(glyphs[static_cast<std::size_t>(c)].triangles.empty()) << c;
        EXPECT_EQ(glyphs[static_cast<std::size_t>(c)].metrics.gmfCellIncX,
                  Glyph(glyphs, ' ').metrics.gmfCellIncX);
    }
}

using Position = std::array<float, 3>;

Position At(const GlyphVertex& v) {
    return {v.position[0], v.position[1], v.position[2]};
}

/// Six times the volume of the tetrahedron of a triangle and the origin.
double Volume6(const GlyphVertex* t) {
    const float *a = t[0].position, *b = t[1].position, *c = t[2].position;
    return a[0] * (b[1] * c[2] - b[2] * c[1]) + a[1] * (b[2] * c[0] - b[0] * c[2]) +
           a[2] * (b[0] * c[1] - b[1] * c[0]);
}

/// The area of the triangles that lie in front.
double FrontArea(const GlyphOutline& glyph) {
    double area = 0.0;
    for (std::size_t i = 0; i < glyph.triangles.size(); i += 3) {
        const GlyphVertex* t = &glyph.triangles[i];
        if (t->normal[2] <= 0.0F) continue;
        area +=
            0.5 * ((t[1].position[0] - t[0].position[0]) * (t[2].position[1] - t[0].position[1]) -
                   (t[2].position[0] - t[0].position[0]) * (t[1].position[1] - t[0].position[1]));
    }
    return area;
}

/// Whether the normals of a triangle agree with the side from which it runs counter-clockwise.
bool FacesItsNormal(const GlyphVertex* t) {
    const float *a = t[0].position, *b = t[1].position, *c = t[2].position;
    const double u[3] = {b[0] - a[0], b[1] - a[1], b[2] - a[2]};
    const double v[3] = {c[0] - a[0], c[1] - a[1], c[2] - a[2]};
    const double* const p = u;
    const double* const q = v;
    const double cross[3] = {p[1] * q[2] - p[2] * q[1], p[2] * q[0] - p[0] * q[2],
                             p[0] * q[1] - p[1] * q[0]};
    const float* n = t->normal;
    const double along = cross[0] * n[0] + cross[1] * n[1] + cross[2] * n[2];
    return along >= -1e-9;  // slivers may have no area
}

TEST(GlyphOutlines, LettersAreClosedSolids) {
    for (const bool underline : {false, true})
        for (const char* face : {"Arial", "Times New Roman", "Courier New"}) {
            SCOPED_TRACE(face);
            const auto glyphs = Build(Described(face, 700, false, underline));
            for (std::size_t c = 0; c < glyphs.size(); ++c) {
                SCOPED_TRACE(c);
                const auto& triangles = glyphs[c].triangles;
                ASSERT_EQ(triangles.size() % 3, 0U);
                std::map<std::pair<Position, Position>, int> edges;
                double volume = 0.0;
                bool outward = true;
                for (std::size_t i = 0; i < triangles.size(); i += 3) {
                    for (std::size_t k = 0; k < 3; ++k) {
                        const Position a = At(triangles[i + k]);
                        const Position b = At(triangles[i + (k + 1) % 3]);
                        a < b ? ++edges[{a, b}] : --edges[{b, a}];
                    }
                    volume += Volume6(&triangles[i]) / 6.0;
                    outward = outward && FacesItsNormal(&triangles[i]);
                }
                EXPECT_TRUE(outward);
                for (const auto& [edge, balance] : edges)
                    ASSERT_EQ(balance, 0);
                EXPECT_NEAR(volume, FrontArea(glyphs[c]) * kExtrusion, 1e-5);
                EXPECT_TRUE(c <= ' ' || c >= 0x7F || volume > 1e-4);
            }
        }
}

TEST(GlyphOutlines, HolesStayOpenAndOverlapsCountOnce) {
    const auto glyphs = Build(Described("Arial"));
    const auto& o = Glyph(glyphs, 'O');
    const double box = o.metrics.gmfBlackBoxX * o.metrics.gmfBlackBoxY;
    EXPECT_LT(FrontArea(o), 0.5 * box);
    EXPECT_GT(FrontArea(o), 0.2 * box);
    const auto& i = Glyph(glyphs, 'I');
    EXPECT_NEAR(FrontArea(i), i.metrics.gmfBlackBoxX * i.metrics.gmfBlackBoxY, 1e-6);

    // The underline crosses the tail of a g: what both cover counts once.
    const auto underlined = Build(Described("Arial", 400, false, true));
    const double bar = FrontArea(Glyph(underlined, ' '));
    EXPECT_GT(bar, 0.0);
    EXPECT_LT(FrontArea(Glyph(underlined, 'g')), FrontArea(Glyph(glyphs, 'g')) + bar * 2.0);
    EXPECT_GT(FrontArea(Glyph(underlined, 'g')), FrontArea(Glyph(glyphs, 'g')) + bar * 0.2);
}

/// The distance of a point from the walls of a letter, seen from the front.
double DistanceToOutline(double x, double y, const GlyphOutline& glyph) {
    double nearest = 1e9;
    for (std::size_t i = 0; i < glyph.triangles.size(); i += 3) {
        const GlyphVertex* t = &glyph.triangles[i];
        if (t->normal[2] != 0.0F) continue;
        const double ax = t[0].position[0], ay = t[0].position[1];
        const double dx = t[1].position[0] - ax, dy = t[1].position[1] - ay;
        const double length2 = dx * dx + dy * dy;
        if (length2 == 0.0) continue;
        const double along = ((x - ax) * dx + (y - ay) * dy) / length2;
        const double s = along < 0.0 ? 0.0 : along > 1.0 ? 1.0 : along;
        nearest = std::min(nearest, std::hypot(x - ax - s * dx, y - ay - s * dy));
    }
    return nearest;
}

TEST(GlyphOutlines, ChordsKeepTheDeviation) {
    const auto fine = Build(Described("Arial"), 0.0);
    for (const double deviation : {0.1, 1.0}) {
        const auto coarse = Build(Described("Arial"), deviation);
        for (const char c : {'O', 'S', '8', '&'}) {
            const GlyphOutline& glyph = Glyph(coarse, c);
            EXPECT_LT(glyph.triangles.size(), Glyph(fine, c).triangles.size());
            double worst = 0.0;
            for (std::size_t i = 0; i < glyph.triangles.size(); i += 3) {
                const GlyphVertex* t = &glyph.triangles[i];
                if (t->normal[2] != 0.0F) continue;
                worst =
                    std::max(worst, DistanceToOutline((t[0].position[0] + t[1].position[0]) / 2.0,
                                                      (t[0].position[1] + t[1].position[1]) / 2.0,
                                                      Glyph(fine, c)));
            }
            EXPECT_LE(worst, deviation / 28.0 + 1.0 / 2048.0) << c;
            EXPECT_GT(worst, deviation / 28.0 / 8.0) << c;
        }
    }
}

TEST(GlyphOutlines, UnderlineJoinsOverTheAdvance) {
    const auto plain = Build(Described("Arial"));
    const auto underlined = Build(Described("Arial", 400, false, true));
    const ReferenceFace face("Arial");
    const double middle = face.Get()->underline_position / face.Em();
    const double thickness = face.Get()->underline_thickness / face.Em();
    for (const char c : {' ', 'A', 'x', 'i'}) {
        const GlyphOutline& glyph = Glyph(underlined, c);
        float left = 9.0F, right = -9.0F, low = 9.0F;
        for (const GlyphVertex& v : glyph.triangles) {
            if (v.position[1] > -1e-3F) continue;
            left = std::min(left, v.position[0]);
            right = std::max(right, v.position[0]);
            low = std::min(low, v.position[1]);
        }
        EXPECT_FLOAT_EQ(left, 0.0F);
        EXPECT_FLOAT_EQ(right, glyph.metrics.gmfCellIncX);
        EXPECT_NEAR(low, middle - thickness / 2.0, 1e-6);
        EXPECT_EQ(glyph.metrics.gmfBlackBoxY, Glyph(plain, c).metrics.gmfBlackBoxY);
    }
}

TEST(GlyphOutlines, FlatLettersHaveTheirFrontOnly) {
    const auto glyphs = Build(Described("Arial"), kDeviation, 0.0);
    ASSERT_EQ(glyphs.size(), 256U);
    for (const GlyphVertex& v : Glyph(glyphs, 'B').triangles) {
        EXPECT_EQ(v.position[2], 0.0F);
        EXPECT_EQ(v.normal[2], 1.0F);
    }
}

TEST(GlyphOutlines, ArgumentsOutOfRangeGiveNothing) {
    const LOGFONT font = Described("Arial");
    const double nan = std::nan("");
    EXPECT_TRUE(BuildGlyphOutlines(font, 0, 0.1, 0.01).empty());
    EXPECT_TRUE(BuildGlyphOutlines(font, -1, 0.1, 0.01).empty());
    EXPECT_TRUE(BuildGlyphOutlines(font, 257, 0.1, 0.01).empty());
    EXPECT_TRUE(BuildGlyphOutlines(font, 128, 0.1, -0.01).empty());
    EXPECT_TRUE(BuildGlyphOutlines(font, 128, 0.1, nan).empty());
    // Any deviation gives letters.
    for (const double deviation : {-1.0, nan, 1e300})
        EXPECT_EQ(BuildGlyphOutlines(font, 66, deviation, 0.01).size(), 66U);
    // So does any name: the system's closest match.
    EXPECT_EQ(BuildGlyphOutlines(Described("No such \xFC face"), 66, 0.1, 0.01).size(), 66U);
}

TEST(GlyphOutlines, ThreadsBuildTheSame) {
    const auto build = [] { return Build(Described("Arial", 700)); };
    auto first = std::async(std::launch::async, build);
    auto second = std::async(std::launch::async, build);
    const auto a = first.get();
    const auto b = second.get();
    for (std::size_t c = 0; c < 256; ++c)
        EXPECT_EQ(a[c].triangles.size(), b[c].triangles.size());
}

/// A font configuration of the test's own, which only processes started by it see.
std::string WriteConfiguration(const std::string& content) {
    const auto folder = std::filesystem::path(testing::TempDir());
    const auto file = folder / ("varnel_fonts_" + std::to_string(content.size()) + ".conf");
    std::ofstream(file) << "<?xml version=\"1.0\"?>\n<!DOCTYPE fontconfig SYSTEM \"fonts.dtd\">\n"
                        << "<fontconfig>" << content << "<cachedir>" << folder.string()
                        << "</cachedir></fontconfig>\n";
    return file.string();
}

class GlyphOutlinesDeathTest : public testing::Test {
 protected:
    // Fontconfig reads its configuration once a process, so that each test needs a fresh one.
    void SetUp() override { testing::GTEST_FLAG(death_test_style) = "threadsafe"; }
};

TEST_F(GlyphOutlinesDeathTest, NoFontAtAllGivesNothing) {
    const std::string configuration = WriteConfiguration("");
    EXPECT_EXIT(
        {
            setenv("FONTCONFIG_FILE", configuration.c_str(), 1);
            std::_Exit(Build(Described("Arial")).empty() ? 0 : 1);
        },
        testing::ExitedWithCode(0), "");
}

TEST_F(GlyphOutlinesDeathTest, AFaceWithoutItalicIsSheared) {
    // The process that the test starts runs this test from its beginning; it must not ask
    // fontconfig before its configuration is set, and is told the folder instead.
    constexpr const char* kFolder = "VARNEL_TEST_FONT_FOLDER";
    if (std::getenv(kFolder) == nullptr) {
        const std::filesystem::path face = ReferenceFace("Arial").File();
        setenv(kFolder, face.parent_path().c_str(), 1);
    }
    const std::string folder = std::getenv(kFolder);
    const std::string configuration = WriteConfiguration(
        "<dir>" + folder +
        "</dir><selectfont><rejectfont><pattern><patelt name=\"slant\"><int>100</int></patelt>"
        "</pattern></rejectfont></selectfont>");
    EXPECT_EXIT(
        {
            setenv("FONTCONFIG_FILE", configuration.c_str(), 1);
            const auto upright = Build(Described("Liberation Sans"));
            const auto italic = Build(Described("Liberation Sans", 400, true));
            const GLYPHMETRICSFLOAT& u = Glyph(upright, 'I').metrics;
            const GLYPHMETRICSFLOAT& i = Glyph(italic, 'I').metrics;
            const bool wider =
                std::abs(i.gmfBlackBoxX - u.gmfBlackBoxX - 0.2F * u.gmfBlackBoxY) < 2e-3F;
            std::_Exit(wider && i.gmfCellIncX == u.gmfCellIncX ? 0 : 1);
        },
        testing::ExitedWithCode(0), "");
}

}  // namespace
}  // namespace varnel
