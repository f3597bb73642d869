#include "varnel/platform/detail/font_face.h"

#include <fontconfig/fontconfig.h>
#include <ft2build.h>

#include <algorithm>
#include <cmath>
#include <new>
#include <utility>

#include "varnel/foundation/detail/characters.h"
#include "varnel/foundation/detail/whole_within.h"
#include "varnel/foundation/strings.h"
#include FT_FREETYPE_H
#include FT_BBOX_H
#include FT_OUTLINE_H

namespace varnel::detail {
namespace {

struct Deleter {
    void operator()(FcPattern* pattern) const { FcPatternDestroy(pattern); }
    void operator()(FcFontSet* set) const { FcFontSetDestroy(set); }
    void operator()(FT_Library library) const { FT_Done_FreeType(library); }
    void operator()(FT_Face face) const { FT_Done_Face(face); }
};
template <class Handle>
using Owned = std::unique_ptr<std::remove_pointer_t<Handle>, Deleter>;

/// What fontconfig is asked for; null when it cannot start.
Owned<FcPattern*> Wanted(const LOGFONT& font) {
    static const bool ready = FcInit() != FcFalse;
    if (!ready) return nullptr;
    Owned<FcPattern*> wanted(FcPatternCreate());
    if (!wanted) throw std::bad_alloc();
    const std::string family = ToUtf8(font.lfFaceName);
    const int weight = font.lfWeight == 0 ? 400 : std::clamp(font.lfWeight, 1, 1000);
    FcPatternAddString(wanted.get(), FC_FAMILY, reinterpret_cast<const FcChar8*>(family.c_str()));
    FcPatternAddDouble(wanted.get(), FC_WEIGHT, FcWeightFromOpenTypeDouble(weight));
    FcPatternAddInteger(wanted.get(), FC_SLANT, font.lfItalic ? FC_SLANT_ITALIC : FC_SLANT_ROMAN);
    FcPatternAddBool(wanted.get(), FC_SCALABLE, FcTrue);
    FcConfigSubstitute(nullptr, wanted.get(), FcMatchPattern);
    FcDefaultSubstitute(wanted.get());
    return wanted;
}

std::optional<FontFile> FileOf(FcPattern* font) {
    FcChar8* file = nullptr;
    if (font == nullptr || FcPatternGetString(font, FC_FILE, 0, &file) != FcResultMatch)
        return std::nullopt;
    int index = 0;
    FcPatternGetInteger(font, FC_INDEX, 0, &index);
    return FontFile{reinterpret_cast<const char*>(file), index};
}

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
    static constexpr int kMostChords = 128;

    static DesignPoint At(const FT_Vector* v) {
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

    void Append(const DesignPoint& p) {
        if (p != m_Contours.back().back()) m_Contours.back().push_back(p);
    }

    /// A chord over the parameter range h lies at most h * h / 8 * |second derivative| off its
    /// curve.
    int Chords(double secondDerivative) const {
        const double n = std::ceil(std::sqrt(secondDerivative / (8.0 * m_Deviation)));
        return detail::WholeWithin(n, 1, kMostChords);
    }
    static double Bend(const DesignPoint& a, const DesignPoint& b, const DesignPoint& c) {
        return std::hypot(a.x - 2.0 * b.x + c.x, a.y - 2.0 * b.y + c.y);
    }

    void Conic(const DesignPoint& c, const DesignPoint& b) {
        const DesignPoint a = m_Contours.back().back();
        const int n = Chords(2.0 * Bend(a, c, b));
        for (int i = 1; i < n; ++i) {
            const double t = static_cast<double>(i) / n;
            const double s = 1.0 - t;
            Append({s * s * a.x + 2.0 * s * t * c.x + t * t * b.x,
                    s * s * a.y + 2.0 * s * t * c.y + t * t * b.y});
        }
        Append(b);
    }

    void Cubic(const DesignPoint& c, const DesignPoint& d, const DesignPoint& b) {
        const DesignPoint a = m_Contours.back().back();
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

}  // namespace

// --- Finding files ---------------------------------------------------------------------------

std::optional<FontFile> FindFontFile(const LOGFONT& font) {
    const Owned<FcPattern*> wanted = Wanted(font);
    if (!wanted) return std::nullopt;
    FcResult result = FcResultNoMatch;
    const Owned<FcPattern*> match(FcFontMatch(nullptr, wanted.get(), &result));
    return FileOf(match.get());
}

struct FallbackFonts::List {
    Owned<FcFontSet*> fonts;
};

FallbackFonts::FallbackFonts(const LOGFONT& font) : m_List(std::make_unique<List>()) {
    const Owned<FcPattern*> wanted = Wanted(font);
    if (!wanted) return;
    // Fonts that add no character to those before them are left out.
    FcResult result = FcResultNoMatch;
    m_List->fonts.reset(FcFontSort(nullptr, wanted.get(), FcTrue, nullptr, &result));
}

FallbackFonts::~FallbackFonts() = default;

std::vector<FontFile> FallbackFonts::FilesWith(char32_t character) const {
    std::vector<FontFile> files;
    if (!m_List->fonts) return files;
    for (int i = 0; i < m_List->fonts->nfont; ++i) {
        FcPattern* const font = m_List->fonts->fonts[i];
        FcCharSet* characters = nullptr;
        FcBool scalable = FcFalse;
        FcPatternGetBool(font, FC_SCALABLE, 0, &scalable);
        if (scalable == FcFalse ||
            FcPatternGetCharSet(font, FC_CHARSET, 0, &characters) != FcResultMatch ||
            FcCharSetHasChar(characters, character) == FcFalse)
            continue;
        if (auto file = FileOf(font)) files.push_back(std::move(*file));
    }
    return files;
}

// --- A face ----------------------------------------------------------------------------------

struct FontFace::Handles {
    // FreeType's library object is not shared: it may be used by one thread at a time.
    Owned<FT_Library> library;
    Owned<FT_Face> face;
    FontFile file;
    bool symbols = false;
    bool shear = false;
};

FontFace::FontFace(std::unique_ptr<Handles> handles) : m_Handles(std::move(handles)) {
}
FontFace::~FontFace() = default;

std::unique_ptr<FontFace> FontFace::Open(const FontFile& file, bool italic) {
    auto handles = std::make_unique<Handles>();
    FT_Library library = nullptr;
    if (FT_Init_FreeType(&library) != 0) return nullptr;
    handles->library.reset(library);
    handles->file = file;
    FT_Face face = nullptr;
    if (FT_New_Face(library, file.name.c_str(), file.index, &face) != 0) return nullptr;
    handles->face.reset(face);
    if (!FT_IS_SCALABLE(face) || face->units_per_EM == 0) return nullptr;
    // Symbol faces have no Unicode map; their characters start at U+F000.
    handles->symbols = FT_Select_Charmap(face, FT_ENCODING_UNICODE) != 0 &&
                       FT_Select_Charmap(face, FT_ENCODING_MS_SYMBOL) == 0;
    handles->shear = italic && (face->style_flags & FT_STYLE_FLAG_ITALIC) == 0;
    return std::unique_ptr<FontFace>(new FontFace(std::move(handles)));
}

GlyphSource FontFace::Source() const {
    return {m_Handles->file.name, m_Handles->file.index, m_Handles->shear};
}

double FontFace::UnitsPerEm() const {
    return m_Handles->face->units_per_EM;
}

unsigned FontFace::GlyphIndex(char32_t character) const {
    const int byte = m_Handles->symbols ? UnicodeToWindows1252(character) : -1;
    if (byte >= 0x20) character = 0xF000U + static_cast<char32_t>(byte);
    return FT_Get_Char_Index(m_Handles->face.get(), character);
}

bool FontFace::Has(char32_t character) const {
    return GlyphIndex(character) != 0;
}

bool FontFace::Kerns(char32_t left, char32_t right) const {
    const FT_Face face = m_Handles->face.get();
    FT_Vector distance{};
    return FT_HAS_KERNING(face) &&
           FT_Get_Kerning(face, GlyphIndex(left), GlyphIndex(right), FT_KERNING_UNSCALED,
                          &distance) == 0 &&
           distance.x != 0;
}

bool FontFace::Load(char32_t character) {
    const FT_Face face = m_Handles->face.get();
    if (FT_Load_Glyph(face, GlyphIndex(character), FT_LOAD_NO_SCALE) != 0 ||
        face->glyph->format != FT_GLYPH_FORMAT_OUTLINE)
        return false;
    if (m_Handles->shear) {
        const FT_Matrix slant = {0x10000, 0x10000 / 5, 0, 0x10000};
        FT_Outline_Transform(&face->glyph->outline, &slant);
    }
    return true;
}

double FontFace::Advance() const {
    return static_cast<double>(m_Handles->face->glyph->metrics.horiAdvance);
}

GLYPHMETRICSFLOAT FontFace::Metrics() const {
    const FT_GlyphSlot glyph = m_Handles->face->glyph;
    const auto ems = [units = UnitsPerEm()](FT_Pos length) {
        return static_cast<float>(static_cast<double>(length) / units);
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

std::vector<Contour> FontFace::Chords(double deviation) const {
    return Flattener(deviation).Flatten(m_Handles->face->glyph->outline);
}

Contour FontFace::Underline(double advance) const {
    double middle = m_Handles->face->underline_position;
    double thickness = m_Handles->face->underline_thickness;
    if (thickness <= 0.0) {
        middle = -0.1 * UnitsPerEm();
        thickness = 0.05 * UnitsPerEm();
    }
    const double low = middle - thickness / 2.0;
    const double high = middle + thickness / 2.0;
    return {{0.0, low}, {advance, low}, {advance, high}, {0.0, high}};
}

}  // namespace varnel::detail
