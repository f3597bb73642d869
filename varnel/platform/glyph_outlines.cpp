#include "varnel/platform/glyph_outlines.h"

#include <GL/glu.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <deque>
#include <map>
#include <mutex>
#include <new>
#include <tuple>
#include <unordered_map>
#include <utility>

#include "varnel/foundation/detail/diagnose.h"
#include "varnel/platform/detail/font_face.h"

namespace varnel {
namespace {

using detail::Contour;
using detail::DesignPoint;
using detail::FontFace;
using detail::FontFile;

// --- Contours to triangles -------------------------------------------------------------------

struct TessDeleter {
    void operator()(GLUtesselator* tess) const { gluDeleteTess(tess); }
};

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
            for (const DesignPoint& p : contour)
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

    std::unique_ptr<GLUtesselator, TessDeleter> m_Tess;
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

    GlyphOutline Build(const std::vector<Contour>& boundary, const Contour& front) {
        for (const DesignPoint& p : front)
            m_Out.triangles.push_back(NumberOf(p));
        m_Out.frontSize = m_Out.triangles.size();
        for (const Contour& contour : boundary) {
            auto& edge = m_Out.contours.emplace_back();
            for (const DesignPoint& p : contour)
                edge.push_back({Ems(p.x), Ems(p.y)});
        }
        if (m_Back != 0.0F) AddBackAndSides(boundary);
        return std::move(m_Out);
    }

 private:
    float Ems(double units) const { return static_cast<float>(units / m_UnitsPerEm); }

    std::uint32_t NumberOf(const DesignPoint& p) {
        const auto next = static_cast<std::uint32_t>(m_Out.points.size());
        const auto [at, isNew] = m_Numbers.try_emplace({p.x, p.y}, next);
        if (isNew) m_Out.points.push_back({Ems(p.x), Ems(p.y), 0.0F});
        return at->second;
    }

    void AddBackAndSides(const std::vector<Contour>& boundary) {
        // The inside of the letter lies to the left of a -> b, so the wall faces right.
        std::vector<std::pair<std::uint32_t, std::uint32_t>> edges;
        for (const Contour& contour : boundary)
            for (std::size_t i = 0; i < contour.size(); ++i)
                edges.emplace_back(NumberOf(contour[i]),
                                   NumberOf(contour[(i + 1) % contour.size()]));
        const auto behind = static_cast<std::uint32_t>(m_Out.points.size());
        m_Out.points.reserve(2 * m_Out.points.size());
        for (std::size_t i = 0; i < behind; ++i)
            m_Out.points.push_back({m_Out.points[i].x, m_Out.points[i].y, m_Back});

        auto& triangles = m_Out.triangles;
        triangles.reserve(2 * m_Out.frontSize + 6 * edges.size());
        for (std::size_t i = 0; i + 2 < m_Out.frontSize; i += 3)
            for (const std::size_t k : {i, i + 2, i + 1})
                triangles.push_back(behind + triangles[k]);
        for (const auto& [a, b] : edges)
            triangles.insert(triangles.end(), {behind + a, behind + b, b, behind + a, b, a});
    }

    double m_UnitsPerEm;
    float m_Back;
    GlyphOutline m_Out;
    std::map<std::pair<double, double>, std::uint32_t> m_Numbers;
};

/// Whether a character only steers how others are shown: joiners, direction marks, variants.
bool IsInvisible(char32_t c) {
    return (c >= 0x200B && c <= 0x200F) || (c >= 0x202A && c <= 0x202E) ||
           (c >= 0x2060 && c <= 0x206F) || (c >= 0xFE00 && c <= 0xFE0F) || c == 0xFEFF;
}

bool IsControl(char32_t c) {
    return c < 0x20 || (c >= 0x7F && c < 0xA0);
}

}  // namespace

/// Finds the face that has a character and makes its letter. Used under the lock.
class GlyphFace::Builder {
 public:
    Builder(const LOGFONT& font, double deviation, double extrusion)
        : m_Font(font), m_Deviation(deviation), m_Extrusion(extrusion) {
        if (const auto file = detail::FindFontFile(font))
            m_Main = FontFace::Open(*file, font.lfItalic != 0);
    }

    bool HasFace() const { return m_Main != nullptr; }

    GLYPHMETRICSFLOAT Metrics(char32_t character) {
        const std::lock_guard lock(m_Mutex);
        const Sign& sign = Find(character);
        if (sign.missing) Tell(character);
        return sign.metrics;
    }

    GlyphSource Source(char32_t character) {
        const std::lock_guard lock(m_Mutex);
        const Sign& sign = Find(character);
        return sign.face != nullptr ? sign.face->Source() : GlyphSource();
    }

    std::pair<double, double> UnderlineEdges() const {
        const Contour bar = m_Main->Underline(1.0);
        return {bar[0].y / m_Main->UnitsPerEm(), bar[2].y / m_Main->UnitsPerEm()};
    }

    const GlyphOutline& Outline(char32_t character) {
        const std::lock_guard lock(m_Mutex);
        Sign& sign = Find(character);
        if (!sign.outline) sign.outline = std::make_unique<GlyphOutline>(Build(character, sign));
        return *sign.outline;
    }

 private:
    /// What is known of a character.
    struct Sign {
        FontFace* face = nullptr;  ///< that has it, or its stand-in; null: nothing to draw
        bool missing = false;
        GLYPHMETRICSFLOAT metrics;
        std::unique_ptr<GlyphOutline> outline;  ///< once it was drawn
    };
    struct Fallback {
        FontFile file;
        std::unique_ptr<FontFace> face;  ///< null: cannot be used
    };

    /// The references stay valid.
    Sign& Find(char32_t character) {
        const auto [at, isNew] = m_Signs.try_emplace(character);
        if (isNew) Fill(at->second, character);
        return at->second;
    }

    void Fill(Sign& sign, char32_t character) {
        if (IsInvisible(character)) return;
        sign.face = FaceFor(character);
        sign.missing = !IsControl(character) && !sign.face->Has(character);
        if (sign.face->Load(Shown(character)))
            sign.metrics = sign.face->Metrics();
        else
            sign.face = nullptr;
    }

    static char32_t Shown(char32_t character) { return IsControl(character) ? U' ' : character; }

    FontFace* FaceFor(char32_t character) {
        if (IsControl(character) || m_Main->Has(character)) return m_Main.get();
        if (!m_Others) m_Others = std::make_unique<detail::FallbackFonts>(m_Font);
        for (const FontFile& file : m_Others->FilesWith(character)) {
            FontFace* const face = Opened(file);
            if (face != nullptr && face->Has(character) && face->Load(character)) return face;
        }
        return m_Main.get();
    }

    FontFace* Opened(const FontFile& file) {
        for (const Fallback& known : m_Fallbacks)
            if (known.file == file) return known.face.get();
        m_Fallbacks.push_back({file, FontFace::Open(file, m_Font.lfItalic != 0)});
        return m_Fallbacks.back().face.get();
    }

    GlyphOutline Build(char32_t character, const Sign& sign) {
        if (sign.face == nullptr || !sign.face->Load(Shown(character))) return {};
        FontFace& face = *sign.face;
        const double units = face.UnitsPerEm();
        const double height = std::max(1.0, std::abs(static_cast<double>(m_Font.lfHeight)));
        // Chords closer to the curve than a design unit would show nothing but rounding.
        const double deviation = std::max(1.0, m_Deviation / height * units);
        std::vector<Contour> boundary = m_Tessellator.Boundary(face.Chords(deviation));
        if (m_Font.lfUnderline) {
            boundary.push_back(Underline(face.Advance(), units));
            boundary = m_Tessellator.Boundary(boundary);
        }
        return SolidBuilder(units, m_Extrusion).Build(boundary, m_Tessellator.Triangles(boundary));
    }

    /// In a face's units: the main face's bar, so that it runs through.
    Contour Underline(double advance, double units) const {
        const double scale = units / m_Main->UnitsPerEm();
        Contour bar = m_Main->Underline(advance / scale);
        for (DesignPoint& p : bar)
            p = {p.x * scale, p.y * scale};
        return bar;
    }

    static void Tell(char32_t character) {
        std::array<char, 16> code{};
        std::snprintf(code.data(), code.size(), "U+%04X", static_cast<unsigned>(character));
        detail::Diagnose("Text", "no font of this system has the character ", code.data());
    }

    LOGFONT m_Font;
    double m_Deviation;
    double m_Extrusion;
    std::mutex m_Mutex;
    Tessellator m_Tessellator;
    std::unique_ptr<FontFace> m_Main;
    std::unique_ptr<detail::FallbackFonts> m_Others;  ///< once a character was missing
    std::vector<Fallback> m_Fallbacks;
    std::unordered_map<char32_t, Sign> m_Signs;
};

GlyphFace::GlyphFace(std::unique_ptr<Builder> builder) : m_Builder(std::move(builder)) {
}
GlyphFace::~GlyphFace() = default;

GLYPHMETRICSFLOAT GlyphFace::Metrics(char32_t character) {
    return m_Builder->Metrics(character);
}

const GlyphOutline& GlyphFace::Outline(char32_t character) {
    return m_Builder->Outline(character);
}

GlyphSource GlyphFace::Source(char32_t character) {
    return m_Builder->Source(character);
}

std::pair<double, double> GlyphFace::UnderlineEdges() const {
    return m_Builder->UnderlineEdges();
}

std::shared_ptr<GlyphFace> GlyphFace::Find(const LOGFONT& font, double deviation,
                                           double extrusion) {
    if (!(extrusion >= 0.0) || !std::isfinite(extrusion)) return nullptr;
    if (!(deviation > 0.0)) deviation = 0.0;

    // So many that no program notices; a host that invents names does not fill the memory.
    constexpr std::size_t kMostKept = 64;
    static std::mutex mutex;
    static std::map<std::tuple<LOGFONT, double, double>, std::shared_ptr<GlyphFace>> kept;
    const std::lock_guard lock(mutex);
    const auto key = std::make_tuple(font, deviation, extrusion);
    if (const auto found = kept.find(key); found != kept.end()) return found->second;
    auto builder = std::make_unique<Builder>(font, deviation, extrusion);
    if (!builder->HasFace()) return nullptr;
    if (kept.size() >= kMostKept) kept.clear();
    std::shared_ptr<GlyphFace> face(new GlyphFace(std::move(builder)));
    kept.emplace(key, face);
    return face;
}

}  // namespace varnel
