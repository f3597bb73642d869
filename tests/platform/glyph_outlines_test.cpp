#include "varnel/platform/glyph_outlines.h"

#include <fontconfig/fontconfig.h>
#include <ft2build.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <map>
#include <optional>
#include <string>

#include "tests/support/files.h"
#include "varnel/foundation/detail/characters.h"
#include "varnel/foundation/diagnostics.h"
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

struct Letter {
    GLYPHMETRICSFLOAT metrics;
    GlyphOutline outline;
};

/// The characters of Windows-1252; none when the system has no font.
std::vector<Letter> Build(const LOGFONT& font, double deviation = kDeviation,
                          double extrusion = kExtrusion) {
    std::vector<Letter> letters;
    const auto face = GlyphFace::Find(font, deviation, extrusion);
    for (unsigned c = 0; face != nullptr && c < 256; ++c) {
        const char32_t u = detail::Windows1252ToUnicode(static_cast<unsigned char>(c));
        letters.push_back({face->Metrics(u), face->Outline(u)});
    }
    return letters;
}

const Letter& Glyph(const std::vector<Letter>& glyphs, char c) {
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
            if (c >= 0x7F && detail::Windows1252ToUnicode(byte) == c && c < 0xA0)
                continue;  // no character
            SCOPED_TRACE(c);
            ExpectMetrics(glyphs[c].metrics, face.Metrics(detail::Windows1252ToUnicode(byte)),
                          face.Em());
        }
    }
    // What a reader of Windows-1252 must see.
    EXPECT_EQ(detail::Windows1252ToUnicode(0x80), char32_t{0x20AC});
    EXPECT_EQ(detail::Windows1252ToUnicode(0x99), char32_t{0x2122});
    EXPECT_EQ(detail::Windows1252ToUnicode(0xE9), char32_t{0xE9});
}

TEST(GlyphOutlines, ControlCharactersAreBlank) {
    const auto glyphs = Build(Described("Arial"));
    for (const int c : {0, 9, 10, 31, 127, 0x81}) {
        EXPECT_TRUE(glyphs[static_cast<std::size_t>(c)].outline.triangles.empty()) << c;
        EXPECT_EQ(glyphs[static_cast<std::size_t>(c)].metrics.gmfCellIncX,
                  Glyph(glyphs, ' ').metrics.gmfCellIncX);
    }
}

using Position = std::array<double, 3>;

/// The corners of a letter's triangles, three each.
std::vector<Position> Corners(const GlyphOutline& letter) {
    std::vector<Position> corners;
    for (const std::uint32_t number : letter.triangles) {
        const GlyphPoint& p = letter.points.at(number);
        corners.push_back({p.x, p.y, p.z});
    }
    return corners;
}

Position Cross(const Position& a, const Position& b) {
    return {a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0]};
}

/// Twice the area of a triangle as seen from the front: below 0 when it faces the back.
double Seen2(const Position* t) {
    return (t[1][0] - t[0][0]) * (t[2][1] - t[0][1]) - (t[2][0] - t[0][0]) * (t[1][1] - t[0][1]);
}

/// The area of a letter's front.
double FrontArea(const Letter& letter) {
    const std::vector<Position> corners = Corners(letter.outline);
    double area = 0.0;
    for (std::size_t i = 0; i < letter.outline.frontSize; i += 3)
        area += 0.5 * Seen2(&corners[i]);
    return area;
}

TEST(GlyphOutlines, LettersAreClosedSolids) {
    for (const bool underline : {false, true})
        for (const char* face : {"Arial", "Times New Roman", "Courier New"}) {
            SCOPED_TRACE(face);
            const auto glyphs = Build(Described(face, 700, false, underline));
            for (std::size_t c = 0; c < glyphs.size(); ++c) {
                SCOPED_TRACE(c);
                const std::vector<Position> corners = Corners(glyphs[c].outline);
                ASSERT_EQ(corners.size() % 3, 0U);
                std::map<std::pair<Position, Position>, int> edges;
                double volume = 0.0;
                for (std::size_t i = 0; i < corners.size(); i += 3) {
                    for (std::size_t k = 0; k < 3; ++k) {
                        const Position& a = corners[i + k];
                        const Position& b = corners[i + (k + 1) % 3];
                        a < b ? ++edges[{a, b}] : --edges[{b, a}];
                    }
                    const Position n = Cross(corners[i + 1], corners[i + 2]);
                    for (std::size_t k = 0; k < 3; ++k)
                        volume += corners[i][k] * n[k] / 6.0;
                    // The front faces the front, the back the back, and the sides neither.
                    const bool front = i < glyphs[c].outline.frontSize;
                    const bool back = !front && i < 2 * glyphs[c].outline.frontSize;
                    const double seen = Seen2(&corners[i]);
                    EXPECT_TRUE(front ? seen >= -1e-9 : back ? seen <= 1e-9 : seen == 0.0);
                }
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

/// The distance of a point from the edge of a letter.
double DistanceToEdge(double x, double y, const Letter& letter) {
    double nearest = 1e9;
    for (const auto& contour : letter.outline.contours)
        for (std::size_t i = 0; i < contour.size(); ++i) {
            const POINTFLOAT a = contour[i];
            const POINTFLOAT b = contour[(i + 1) % contour.size()];
            const double dx = b.x - a.x, dy = b.y - a.y;
            const double length = std::max(1e-12, dx * dx + dy * dy);
            const double t = std::clamp(((x - a.x) * dx + (y - a.y) * dy) / length, 0.0, 1.0);
            nearest = std::min(nearest, std::hypot(x - a.x - t * dx, y - a.y - t * dy));
        }
    return nearest;
}

TEST(GlyphOutlines, ChordsKeepTheDeviation) {
    const auto fine = Build(Described("Arial"), 0.0);
    for (const double deviation : {0.1, 1.0}) {
        const auto coarse = Build(Described("Arial"), deviation);
        for (const char c : {'O', 'S', '8', '&'}) {
            const Letter& letter = Glyph(coarse, c);
            EXPECT_LT(letter.outline.points.size(), Glyph(fine, c).outline.points.size());
            double worst = 0.0;
            for (const auto& contour : letter.outline.contours)
                for (std::size_t i = 0; i < contour.size(); ++i) {
                    const POINTFLOAT a = contour[i];
                    const POINTFLOAT b = contour[(i + 1) % contour.size()];
                    worst = std::max(worst, DistanceToEdge((a.x + b.x) / 2.0, (a.y + b.y) / 2.0,
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
        const Letter& glyph = Glyph(underlined, c);
        float left = 9.0F, right = -9.0F, low = 9.0F;
        for (const GlyphPoint& p : glyph.outline.points) {
            if (p.y > -1e-3F) continue;
            left = std::min(left, p.x);
            right = std::max(right, p.x);
            low = std::min(low, p.y);
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
    const GlyphOutline& letter = Glyph(glyphs, 'B').outline;
    EXPECT_EQ(letter.frontSize, letter.triangles.size());
    for (const GlyphPoint& p : letter.points)
        EXPECT_EQ(p.z, 0.0F);
}

TEST(GlyphOutlines, OnlyAnImpossibleDepthGivesNothing) {
    const LOGFONT font = Described("Arial");
    const double nan = std::nan("");
    for (const double depth : {-0.01, nan, HUGE_VAL})
        EXPECT_EQ(GlyphFace::Find(font, 0.1, depth), nullptr);
    for (const double deviation : {-1.0, nan, 1e300})
        EXPECT_FALSE(GlyphFace::Find(font, deviation)->Outline(U'O').triangles.empty());
    EXPECT_EQ(GlyphFace::Find(font), GlyphFace::Find(font)) << "faces are shared";
    // Any name gives the system's closest match.
    EXPECT_NE(GlyphFace::Find(Described("No such \xFC face")), nullptr);
}

TEST(GlyphOutlines, OtherFacesLendWhatOneLacks) {
    const auto face = GlyphFace::Find(Described("Liberation Mono"));
    const LOGFONT wide = Described("Droid Sans Fallback");
    const auto lender = GlyphFace::Find(wide);
    std::vector<std::string> told;
    SetDiagnostics(1);
    const auto before = SetDiagnosticHandler([&told](const CString& s) { told.push_back(s); });
    // No face has a character that Unicode never assigns: it is told once, and looks like others.
    for (int i = 0; i < 2; ++i)
        EXPECT_GT(face->Metrics(0x0378).gmfCellIncX, 0.0F);
    EXPECT_EQ(face->Outline(0x0378).triangles, face->Outline(0x0379).triangles);
    for (const char32_t steering : {0x200D, 0xFE0F, 0xFEFF}) {
        EXPECT_EQ(face->Metrics(steering).gmfCellIncX, 0.0F);
        EXPECT_TRUE(face->Outline(steering).triangles.empty());
    }
    const GLYPHMETRICSFLOAT sun = face->Metrics(U'日');
    SetDiagnosticHandler(before);
    SetDiagnostics(0);
    if (told.size() > 1) GTEST_SKIP() << "no font with Chinese characters is installed";
    EXPECT_EQ(told, std::vector<std::string>{"Text: no font of this system has the character "
                                             "U+0378"});
    EXPECT_EQ(sun.gmfCellIncX, 1.0F);  // as wide as high, twice what the face's letters are
    EXPECT_GT(face->Outline(U'日').contours.size(), 2U);
    EXPECT_EQ(lender->Metrics(U'日').gmfBlackBoxX, sun.gmfBlackBoxX);
}

/// A font configuration of the test's own. The process that the test starts, which runs it from its
/// beginning and ends without destructors, takes the file of the test that started it.
class FontConfiguration {
 public:
    explicit FontConfiguration(const std::string& content) {
        if (std::getenv(kVariable) != nullptr) return;
        m_Folder.emplace();
        const std::string file = m_Folder->File("fonts.conf");
        test::WriteAll(file,
                       "<?xml version=\"1.0\"?>\n<!DOCTYPE fontconfig SYSTEM \"fonts.dtd\">\n"
                       "<fontconfig>" +
                           content + "<cachedir>" + m_Folder->Path() +
                           "</cachedir></fontconfig>\n");
        setenv(kVariable, file.c_str(), 1);
    }
    ~FontConfiguration() { unsetenv(kVariable); }
    static void Use() { setenv("FONTCONFIG_FILE", std::getenv(kVariable), 1); }

 private:
    static constexpr const char* kVariable = "VARNEL_TEST_FONTS";
    std::optional<test::TemporaryFolder> m_Folder;
};

class GlyphOutlinesDeathTest : public testing::Test {
 protected:
    // Fontconfig reads its configuration once a process, so that each test needs a fresh one.
    void SetUp() override { testing::GTEST_FLAG(death_test_style) = "threadsafe"; }
};

TEST_F(GlyphOutlinesDeathTest, NoFontAtAllGivesNothing) {
    const FontConfiguration configuration("");
    EXPECT_EXIT(
        {
            FontConfiguration::Use();
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
    const FontConfiguration configuration(
        "<dir>" + folder +
        "</dir><selectfont><rejectfont><pattern><patelt name=\"slant\"><int>100</int></patelt>"
        "</pattern></rejectfont></selectfont>");
    EXPECT_EXIT(
        {
            FontConfiguration::Use();
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
