#include "varnel/platform/glyph_outlines.h"

#include <GL/glu.h>
#include <fontconfig/fontconfig.h>
#include <ft2build.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>
#include <deque>
#include <memory>
#include <new>
#include <optional>
#include <utility>
#include FT_FREETYPE_H
#include FT_BBOX_H
#include FT_OUTLINE_H

namespace varnel {

namespace {

/// In design units of the font.
struct Point {
    double x;
    double y;
    bool operator==(const Point&) const = default;
};
using Contour = std::vector<Point>;

// --- Finding and opening a face --------------------------------------------------------------

struct Deleter {
    void operator()(FcPattern* pattern) const { FcPatternDestroy(pattern); }
    void operator()(FT_Library library) const { FT_Done_FreeType(library); }
    void operator()(FT_Face face) const { FT_Done_Face(face); }
    void operator()(GLUtesselator* tess) const { gluDeleteTess(tess); }
};
template <class Handle>
using Owned = std::unique_ptr<std::remove_pointer_t<Handle>, Deleter>;

struct FaceFile {
    std::string name;
    int index;
};

std::string ToUtf8(const CString& text) {
    std::string utf8;
    for (const char c : text) {
        std::array<char, 4> bytes{};
        const char32_t u = Windows1252ToUnicode(static_cast<unsigned char>(c));
        if (u < 0x80) {
            utf8 += static_cast<char>(u);
        } else if (u < 0x800) {
            bytes = {static_cast<char>(0xC0 | (u >> 6)), static_cast<char>(0x80 | (u & 0x3F))};
            utf8.append(bytes.data(), 2);
        } else {
            bytes = {static_cast<char>(0xE0 | (u >> 12)),
                     static_cast<char>(0x80 | ((u >> 6) & 0x3F)),
                     static_cast<char>(0x80 | (u & 0x3F))};
            utf8.append(bytes.data(), 3);
        }
    }
    return utf8;
}

/// The system's closest match. It never fails for a family that is not installed, only on a system
/// without fonts.
std::optional<FaceFile> FindFace(const LOGFONT& font) {
    static const bool ready = FcInit() != FcFalse;
    if (!ready) return std::nullopt;

    const Owned<FcPattern*> wanted(FcPatternCreate());
    if (!wanted) throw std::bad_alloc();
    const std::string family = ToUtf8(font.lfFaceName);
    const int weight = font.lfWeight == 0 ? 400 : std::clamp(font.lfWeight, 1, 1000);
    FcPatternAddString(wanted.get(), FC_FAMILY, reinterpret_cast<const FcChar8*>(family.c_str()));
    FcPatternAddDouble(wanted.get(), FC_WEIGHT, FcWeightFromOpenTypeDouble(weight));
    FcPatternAddInteger(wanted.get(), FC_SLANT, font.lfItalic ? FC_SLANT_ITALIC : FC_SLANT_ROMAN);
    FcPatternAddBool(wanted.get(), FC_SCALABLE, FcTrue);
    FcConfigSubstitute(nullptr, wanted.get(), FcMatchPattern);
    FcDefaultSubstitute(wanted.get());

    FcResult result = FcResultNoMatch;
    const Owned<FcPattern*> match(FcFontMatch(nullptr, wanted.get(), &result));
    FcChar8* file = nullptr;
    int index = 0;
    if (!match || FcPatternGetString(match.get(), FC_FILE, 0, &file) != FcResultMatch)
        return std::nullopt;
    FcPatternGetInteger(match.get(), FC_INDEX, 0, &index);
    return FaceFile{reinterpret_cast<const char*>(file), index};
}

/// An opened face. FreeType's library object is not shared: it may be used by one thread only.
class Face {
 public:
    explicit Face(const LOGFONT& font) {
        const std::optional<FaceFile> found = FindFace(font);
        FT_Library library = nullptr;
        if (!found || FT_Init_FreeType(&library) != 0) return;
        m_Library.reset(library);
        FT_Face face = nullptr;
        if (FT_New_Face(library, found->name.c_str(), found->index, &face) != 0) return;
        m_Face.reset(face);
        if (!FT_IS_SCALABLE(face) || face->units_per_EM == 0) {
            m_Face.reset();
            return;
        }
        // Symbol faces have no Unicode map; their characters start at U+F000.
        if (FT_Select_Charmap(face, FT_ENCODING_UNICODE) != 0 &&
            FT_Select_Charmap(face, FT_ENCODING_MS_SYMBOL) == 0)
            m_Symbols = true;
        m_Shear = font.lfItalic != 0 && (face->style_flags & FT_STYLE_FLAG_ITALIC) == 0;
    }

    bool IsOpen() const { return m_Face != nullptr; }
    double UnitsPerEm() const { return m_Face->units_per_EM; }

    /// Loads a character, unscaled. Null when the face has no outline for it, not even the one that
    /// stands for missing characters. Control characters are as wide as a space.
    FT_GlyphSlot Load(unsigned char byte) const {
        char32_t character = Windows1252ToUnicode(byte);
        if (character < 0x20 || (character >= 0x7F && character < 0xA0))
            character = U' ';
        else if (m_Symbols)
            character = 0xF000U + byte;
        const FT_UInt glyph = FT_Get_Char_Index(m_Face.get(), character);
        if (FT_Load_Glyph(m_Face.get(), glyph, FT_LOAD_NO_SCALE) != 0 ||
            m_Face->glyph->format != FT_GLYPH_FORMAT_OUTLINE)
            return nullptr;
        if (m_Shear) {
            const FT_Matrix slant = {0x10000, 0x10000 / 5, 0, 0x10000};
            FT_Outline_Transform(&m_Face->glyph->outline, &slant);
        }
        return m_Face->glyph;
    }

    /// The underline of a character, counter-clockwise.
    Contour Underline(double advance) const {
        double middle = m_Face->underline_position;
        double thickness = m_Face->underline_thickness;
        if (thickness <= 0.0) {
            middle = -0.1 * UnitsPerEm();
            thickness = 0.05 * UnitsPerEm();
        }
        const double low = middle - thickness / 2.0;
        const double high = middle + thickness / 2.0;
        return {{0.0, low}, {advance, low}, {advance, high}, {0.0, high}};
    }

 private:
    Owned<FT_Library> m_Library;
    Owned<FT_Face> m_Face;
    bool m_Symbols = false;
    bool m_Shear = false;
};

// --- Curves to chords ------------------------------------------------------------------------

/// Receives an outline piece by piece. The callbacks are called from C, so that nothing may be
/// thrown through them.
class Flattener {
 public:
    explicit Flattener(double deviation) : m_Deviation(deviation) {}

    std::vector<Contour> Flatten(FT_Outline& outline) {
        const FT_Outline_Funcs callbacks = {MoveTo, LineTo, ConicTo, CubicTo, 0, 0};
        if (FT_Outline_Decompose(&outline, &callbacks, this) == kOutOfMemory)
            throw std::bad_alloc();
        for (Contour& contour : m_Contours)
            if (contour.size() > 1 && contour.front() == contour.back()) contour.pop_back();
        return std::move(m_Contours);
    }

 private:
    static constexpr int kOutOfMemory = 0x40;
    static constexpr double kMostChords = 128.0;

    static Point At(const FT_Vector* v) {
        return {static_cast<double>(v->x), static_cast<double>(v->y)};
    }
    static int MoveTo(const FT_Vector* to, void* self) {
        return Guarded(self, [&](Flattener& f) { f.m_Contours.push_back({At(to)}); });
    }
    static int LineTo(const FT_Vector* to, void* self) {
        return Guarded(self, [&](Flattener& f) { f.Append(At(to)); });
    }
    static int ConicTo(const FT_Vector* control, const FT_Vector* to, void* self) {
        return Guarded(self, [&](Flattener& f) { f.Conic(At(control), At(to)); });
    }
    static int CubicTo(const FT_Vector* c1, const FT_Vector* c2, const FT_Vector* to, void* self) {
        return Guarded(self, [&](Flattener& f) { f.Cubic(At(c1), At(c2), At(to)); });
    }
    template <class Body>
    static int Guarded(void* self, Body&& body) noexcept {
        try {
            body(*static_cast<Flattener*>(self));
            return 0;
        } catch (const std::bad_alloc&) {
            return kOutOfMemory;
        }
    }

    void Append(const Point& p) {
        if (p != m_Contours.back().back()) m_Contours.back().push_back(p);
    }

    /// A chord over the parameter range h lies at most h * h / 8 * |second derivative| off its
    /// curve.
    int Chords(double secondDerivative) const {
        const double n = std::ceil(std::sqrt(secondDerivative / (8.0 * m_Deviation)));
        return static_cast<int>(std::clamp(n, 1.0, kMostChords));
    }
    static double Bend(const Point& a, const Point& b, const Point& c) {
        return std::hypot(a.x - 2.0 * b.x + c.x, a.y - 2.0 * b.y + c.y);
    }

    void Conic(const Point& c, const Point& b) {
        const Point a = m_Contours.back().back();
        const int n = Chords(2.0 * Bend(a, c, b));
        for (int i = 1; i < n; ++i) {
            const double t = static_cast<double>(i) / n;
            const double s = 1.0 - t;
            Append({s * s * a.x + 2.0 * s * t * c.x + t * t * b.x,
                    s * s * a.y + 2.0 * s * t * c.y + t * t * b.y});
        }
        Append(b);
    }

    void Cubic(const Point& c, const Point& d, const Point& b) {
        const Point a = m_Contours.back().back();
        const int n = Chords(6.0 * std::max(Bend(a, c, d), Bend(c, d, b)));
        for (int i = 1; i < n; ++i) {
            const double t = static_cast<double>(i) / n;
            const double s = 1.0 - t;
            const double k[4] = {s * s * s, 3.0 * s * s * t, 3.0 * s * t * t, t * t * t};
            Append({k[0] * a.x + k[1] * c.x + k[2] * d.x + k[3] * b.x,
                    k[0] * a.y + k[1] * c.y + k[2] * d.y + k[3] * b.y});
        }
        Append(b);
    }

    double m_Deviation;
    std::vector<Contour> m_Contours;
};

// --- Contours to triangles -------------------------------------------------------------------

/// The tessellator, set to the nonzero winding rule in the plane of the letters.
class Tessellator {
 public:
    Tessellator() : m_Tess(gluNewTess()) {
        if (!m_Tess) throw std::bad_alloc();
        Set(GLU_TESS_BEGIN_DATA, &Begin);
        Set(GLU_TESS_VERTEX_DATA, &Vertex);
        Set(GLU_TESS_COMBINE_DATA, &Combine);
        Set(GLU_TESS_ERROR_DATA, &Error);
        gluTessProperty(m_Tess.get(), GLU_TESS_WINDING_RULE, GLU_TESS_WINDING_NONZERO);
        gluTessNormal(m_Tess.get(), 0.0, 0.0, 1.0);
    }

    /// The boundary of what the contours enclose, without overlaps: the inside lies to the left.
    std::vector<Contour> Boundary(const std::vector<Contour>& contours) {
        gluTessProperty(m_Tess.get(), GLU_TESS_BOUNDARY_ONLY, GL_TRUE);
        Set(GLU_TESS_EDGE_FLAG_DATA, static_cast<void (*)(GLboolean, void*)>(nullptr));
        return Run(contours);
    }

    /// Counter-clockwise triangles, three points each.
    Contour Triangles(const std::vector<Contour>& contours) {
        gluTessProperty(m_Tess.get(), GLU_TESS_BOUNDARY_ONLY, GL_FALSE);
        // With this callback there are only separate triangles, no fans and strips.
        Set(GLU_TESS_EDGE_FLAG_DATA, &EdgeFlag);
        std::vector<Contour> runs = Run(contours);
        return runs.empty() ? Contour() : std::move(runs.front());
    }

 private:
    struct Vertex3 {
        GLdouble at[3];
    };

    template <class Callback>
    void Set(GLenum which, Callback callback) {
        gluTessCallback(m_Tess.get(), which, reinterpret_cast<_GLUfuncptr>(callback));
    }

    std::vector<Contour> Run(const std::vector<Contour>& contours) {
        m_Vertices.clear();
        m_Runs.clear();
        m_Failed = false;
        for (const Contour& contour : contours)
            for (const Point& p : contour)
                m_Vertices.push_back({{p.x, p.y, 0.0}});
        auto vertex = m_Vertices.begin();
        gluTessBeginPolygon(m_Tess.get(), this);
        for (const Contour& contour : contours) {
            gluTessBeginContour(m_Tess.get());
            for (std::size_t i = 0; i < contour.size(); ++i, ++vertex)
                gluTessVertex(m_Tess.get(), vertex->at, &*vertex);
            gluTessEndContour(m_Tess.get());
        }
        gluTessEndPolygon(m_Tess.get());
        if (m_Failed) throw std::bad_alloc();
        return std::move(m_Runs);
    }

    // The callbacks are called from C: nothing may be thrown through them.
    static void Begin(GLenum, void* self) noexcept {
        auto& t = *static_cast<Tessellator*>(self);
        try {
            t.m_Runs.emplace_back();
        } catch (const std::bad_alloc&) {
            t.m_Failed = true;
        }
    }
    static void Vertex(void* vertex, void* self) noexcept {
        auto& t = *static_cast<Tessellator*>(self);
        if (t.m_Failed) return;
        try {
            const auto& at = static_cast<const Vertex3*>(vertex)->at;
            t.m_Runs.back().push_back({at[0], at[1]});
        } catch (const std::bad_alloc&) {
            t.m_Failed = true;
        }
    }
    /// Two edges cross: the new vertex lies on both.
    static void Combine(const GLdouble at[3], void* const[4], const GLfloat[4], void** vertex,
                        void* self) noexcept {
        auto& t = *static_cast<Tessellator*>(self);
        try {
            t.m_Vertices.push_back({{at[0], at[1], 0.0}});
            *vertex = &t.m_Vertices.back();
        } catch (const std::bad_alloc&) {
            t.m_Failed = true;
            *vertex = &t.m_Spare;
        }
    }
    static void Error(GLenum error, void* self) noexcept {
        if (error == GLU_OUT_OF_MEMORY) static_cast<Tessellator*>(self)->m_Failed = true;
    }
    static void EdgeFlag(GLboolean, void*) noexcept {}

    Owned<GLUtesselator*> m_Tess;
    std::deque<Vertex3> m_Vertices;  // never moved: the tessellator keeps pointers to them
    std::vector<Contour> m_Runs;
    Vertex3 m_Spare{};
    bool m_Failed = false;
};

// --- Letters ---------------------------------------------------------------------------------

/// Turns design units into the triangles of a solid.
class SolidBuilder {
 public:
    SolidBuilder(double unitsPerEm, double extrusion)
        : m_UnitsPerEm(unitsPerEm), m_Back(static_cast<float>(-extrusion)) {}

    std::vector<GlyphVertex> Build(const std::vector<Contour>& boundary, const Contour& front) {
        const bool flat = m_Back == 0.0F;
        std::size_t edges = 0;
        for (const Contour& contour : boundary)
            edges += contour.size();
        m_Out.clear();
        m_Out.reserve(flat ? front.size() : 2 * front.size() + 6 * edges);
        for (const Point& p : front)
            Add({0.0F, 0.0F, 1.0F}, p, 0.0F);
        if (flat) return std::move(m_Out);

        for (std::size_t i = 0; i + 2 < front.size(); i += 3)
            for (const std::size_t k : {i, i + 2, i + 1})
                Add({0.0F, 0.0F, -1.0F}, front[k], m_Back);
        for (const Contour& contour : boundary)
            for (std::size_t i = 0; i < contour.size(); ++i)
                AddSide(contour[i], contour[(i + 1) % contour.size()]);
        return std::move(m_Out);
    }

 private:
    using Normal = std::array<float, 3>;

    void Add(const Normal& n, const Point& p, float z) {
        m_Out.push_back(
            {{n[0], n[1], n[2]},
             {static_cast<float>(p.x / m_UnitsPerEm), static_cast<float>(p.y / m_UnitsPerEm), z}});
    }

    /// The inside of the letter lies to the left of a -> b, so the wall faces right.
    void AddSide(const Point& a, const Point& b) {
        const double length = std::hypot(b.x - a.x, b.y - a.y);
        const Normal n = {static_cast<float>((b.y - a.y) / length),
                          static_cast<float>((a.x - b.x) / length), 0.0F};
        Add(n, a, m_Back);
        Add(n, b, m_Back);
        Add(n, b, 0.0F);
        Add(n, a, m_Back);
        Add(n, b, 0.0F);
        Add(n, a, 0.0F);
    }

    double m_UnitsPerEm;
    float m_Back;
    std::vector<GlyphVertex> m_Out;
};

GLYPHMETRICSFLOAT Measure(FT_GlyphSlot glyph, double unitsPerEm) {
    const auto ems = [unitsPerEm](FT_Pos units) {
        return static_cast<float>(static_cast<double>(units) / unitsPerEm);
    };
    FT_BBox box = {0, 0, 0, 0};
    if (glyph->outline.n_points > 0) FT_Outline_Get_BBox(&glyph->outline, &box);
    GLYPHMETRICSFLOAT metrics;
    metrics.gmfBlackBoxX = ems(box.xMax - box.xMin);
    metrics.gmfBlackBoxY = ems(box.yMax - box.yMin);
    metrics.gmfptGlyphOrigin = {ems(box.xMin), ems(box.yMax)};
    metrics.gmfCellIncX = ems(glyph->metrics.horiAdvance);
    return metrics;
}

}  // namespace

char32_t Windows1252ToUnicode(unsigned char byte) {
    static constexpr char32_t k80To9F[32] = {
        0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
        0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
        0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};
    return byte >= 0x80 && byte < 0xA0 ? k80To9F[byte - 0x80] : byte;
}

std::vector<GlyphOutline> BuildGlyphOutlines(const LOGFONT& font, int numChars, double deviation,
                                             double extrusion) {
    if (numChars < 1 || numChars > 256 || !(extrusion >= 0.0) || !std::isfinite(extrusion))
        return {};
    const Face face(font);
    if (!face.IsOpen()) return {};

    const double height = std::max(1.0, std::abs(static_cast<double>(font.lfHeight)));
    const double units = face.UnitsPerEm();
    Tessellator tessellator;
    SolidBuilder solid(units, extrusion);
    std::vector<GlyphOutline> glyphs(static_cast<std::size_t>(numChars));
    for (std::size_t i = 0; i < glyphs.size(); ++i) {
        const FT_GlyphSlot glyph = face.Load(static_cast<unsigned char>(i));
        if (glyph == nullptr) continue;
        glyphs[i].metrics = Measure(glyph, units);
        // Chords closer to the curve than a design unit would show nothing but rounding.
        Flattener flattener(std::max(1.0, deviation / height * units));
        std::vector<Contour> boundary = tessellator.Boundary(flattener.Flatten(glyph->outline));
        if (font.lfUnderline) {
            boundary.push_back(face.Underline(static_cast<double>(glyph->metrics.horiAdvance)));
            boundary = tessellator.Boundary(boundary);
        }
        glyphs[i].triangles = solid.Build(boundary, tessellator.Triangles(boundary));
    }
    return glyphs;
}

}  // namespace varnel
