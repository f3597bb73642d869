#include "varnel/platform/detail/cairo_canvas.h"

#include <cairo-ft.h>
#include <cairo.h>
#include <fontconfig/fontconfig.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <new>

#include "varnel/foundation/detail/characters.h"
#include "varnel/foundation/detail/progress.h"
#include "varnel/platform/detail/repeated_shapes.h"

namespace varnel::detail {
namespace {

/// Width, in pixels, of the stroke that closes the crack between two fills.
constexpr double kSeal = 0.35;

struct Deleter {
    void operator()(cairo_t* p) const { cairo_destroy(p); }
    void operator()(cairo_surface_t* p) const { cairo_surface_destroy(p); }
    void operator()(cairo_pattern_t* p) const { cairo_pattern_destroy(p); }
    void operator()(cairo_font_options_t* p) const { cairo_font_options_destroy(p); }
    void operator()(cairo_font_face_t* p) const { cairo_font_face_destroy(p); }
    void operator()(FcPattern* p) const { FcPatternDestroy(p); }
};
template <class T>
using Owned = std::unique_ptr<T, Deleter>;

/// Draws on a page whose unit is a pixel of the view, y down: a page that is upside down would have
/// each stroke turn it.
class CairoCanvas final : public PageCanvas {
 public:
    CairoCanvas(cairo_t* page, double height) : m_Page(page), m_Height(height) {}

    void Fill(const Area& area, const RGBDType& color, bool seal) override {
        if (area.empty()) return;
        const RepeatedShapes::Use use = seal ? RepeatedShapes::Use{} : m_Shapes.Find(area, color);
        if (use.number > 1) {
            FillAgain(use, color);
            return;
        }
        Path(m_Page, area, true);
        cairo_set_source_rgba(m_Page, color.r, color.g, color.b, color.a);
        cairo_set_fill_rule(m_Page, CAIRO_FILL_RULE_EVEN_ODD);
        if (!seal) {
            cairo_fill(m_Page);
            return;
        }
        cairo_fill_preserve(m_Page);
        SetLine(kSeal);
        cairo_stroke(m_Page);
    }

    bool HasMeshes() const override { return true; }

    void FillSmooth(const std::vector<SmoothTriangle>& triangles) override {
        if (triangles.empty()) return;
        const Owned<cairo_pattern_t> mesh(cairo_pattern_create_mesh());
        for (const SmoothTriangle& t : triangles) {
            ProgressStep();
            cairo_mesh_pattern_begin_patch(mesh.get());
            cairo_mesh_pattern_move_to(mesh.get(), X(t.corners[0]), Y(t.corners[0]));
            cairo_mesh_pattern_line_to(mesh.get(), X(t.corners[1]), Y(t.corners[1]));
            cairo_mesh_pattern_line_to(mesh.get(), X(t.corners[2]), Y(t.corners[2]));
            for (unsigned i = 0; i < 3; ++i)
                cairo_mesh_pattern_set_corner_color_rgb(mesh.get(), i, t.colors[i].r, t.colors[i].g,
                                                        t.colors[i].b);
            cairo_mesh_pattern_end_patch(mesh.get());
        }
        cairo_set_source(m_Page, mesh.get());
        cairo_paint(m_Page);
    }

    void Stroke(const std::vector<Ring>& lines, const PageStroke& stroke) override {
        if (lines.empty()) return;
        Path(m_Page, lines, false);
        cairo_set_source_rgba(m_Page, stroke.color.r, stroke.color.g, stroke.color.b,
                              stroke.color.a);
        SetLine(stroke.width);
        if (stroke.cutJoins) cairo_set_line_join(m_Page, CAIRO_LINE_JOIN_BEVEL);
        cairo_set_dash(m_Page, stroke.dashes.data(), static_cast<int>(stroke.dashes.size()), 0.0);
        cairo_stroke(m_Page);
        cairo_set_dash(m_Page, nullptr, 0, 0.0);
    }

    void Text(const PageText& text) override {
        cairo_save(m_Page);
        Enter(text.placement);
        const Owned<cairo_font_options_t> options(cairo_font_options_create());
        cairo_font_options_set_hint_metrics(options.get(), CAIRO_HINT_METRICS_OFF);
        cairo_font_options_set_hint_style(options.get(), CAIRO_HINT_STYLE_NONE);
        cairo_set_font_options(m_Page, options.get());
        // All halos first: none is to cover a letter.
        for (const bool halo : {true, false})
            for (std::size_t i = 0; i < text.runs.size() && (!halo || text.halo > 0.0); ++i)
                ShowRun(text, text.runs[i],
                        i + 1 < text.runs.size() ? text.runs[i + 1].first : text.places.size(),
                        halo);
        cairo_restore(m_Page);
    }

    void Picture(const PagePicture& picture) override {
        const Owned<cairo_surface_t> image(
            cairo_image_surface_create(CAIRO_FORMAT_ARGB32, picture.width, picture.height));
        if (cairo_surface_status(image.get()) != CAIRO_STATUS_SUCCESS) return;
        const int stride = cairo_image_surface_get_stride(image.get());
        unsigned char* const to = cairo_image_surface_get_data(image.get());
        const BYTE* from = picture.pixels.data();
        for (int y = 0; y < picture.height; ++y)
            for (int x = 0; x < picture.width; ++x, from += 4) {
                const unsigned alpha = from[3];
                const auto premultiplied = [alpha](unsigned c) { return (c * alpha + 127) / 255; };
                const std::uint32_t pixel = alpha << 24U | premultiplied(from[0]) << 16U |
                                            premultiplied(from[1]) << 8U | premultiplied(from[2]);
                std::memcpy(to + static_cast<std::ptrdiff_t>(y) * stride + std::ptrdiff_t{4} * x,
                            &pixel, 4);
            }
        cairo_surface_mark_dirty(image.get());
        cairo_save(m_Page);
        Enter(picture.placement);
        cairo_translate(m_Page, 0.0, 1.0);
        cairo_scale(m_Page, 1.0 / picture.width, -1.0 / picture.height);
        cairo_set_source_surface(m_Page, image.get(), 0.0, 0.0);
        cairo_pattern_set_filter(cairo_get_source(m_Page), CAIRO_FILTER_NEAREST);
        cairo_paint(m_Page);
        cairo_restore(m_Page);
    }

    void BeginClip(const Area& area) override {
        cairo_save(m_Page);
        Path(m_Page, area, true);
        cairo_set_fill_rule(m_Page, CAIRO_FILL_RULE_EVEN_ODD);
        cairo_clip(m_Page);
    }

    void EndClip() override { cairo_restore(m_Page); }

 private:
    static double X(const GridPoint& p) { return p.x / kGridPerPixel; }
    double Y(const GridPoint& p) const { return m_Height - p.y / kGridPerPixel; }

    /// Into a space of its own whose y runs up.
    void Enter(const std::array<double, 6>& m) {
        const cairo_matrix_t place = {m[0], -m[1], m[2], -m[3], m[4], m_Height - m[5]};
        cairo_transform(m_Page, &place);
    }

    /// Characters of one face up to `last` at their places, with the text behind them for whoever
    /// selects it, or what surrounds them.
    void ShowRun(const PageText& text, const PageText::Run& run, std::size_t last, bool halo) {
        const Owned<FcPattern> pattern(FcPatternCreate());
        if (!pattern) throw std::bad_alloc();
        FcPatternAddString(pattern.get(), FC_FILE,
                           reinterpret_cast<const FcChar8*>(run.source.file.c_str()));
        FcPatternAddInteger(pattern.get(), FC_INDEX, run.source.index);
        const Owned<cairo_font_face_t> face(cairo_ft_font_face_create_for_pattern(pattern.get()));
        cairo_set_font_face(m_Page, face.get());
        // A font's own y runs down.
        const cairo_matrix_t font = {1.0, 0.0, run.source.sheared ? -0.2 : 0.0, -1.0, 0.0, 0.0};
        cairo_set_font_matrix(m_Page, &font);
        CString characters;
        std::size_t count = 0;
        ForEachCharacter(text.text, [&](char32_t character) {
            if (count >= run.first && count < last) AppendUtf8(characters, character);
            ++count;
        });
        cairo_glyph_t* glyphs = nullptr;
        cairo_text_cluster_t* clusters = nullptr;
        int glyphCount = 0;
        int clusterCount = 0;
        cairo_text_cluster_flags_t flags{};
        const int size = static_cast<int>(characters.size());
        if (cairo_scaled_font_text_to_glyphs(
                cairo_get_scaled_font(m_Page), 0.0, 0.0, characters.c_str(), size, &glyphs,
                &glyphCount, &clusters, &clusterCount, &flags) != CAIRO_STATUS_SUCCESS)
            return;
        if (static_cast<std::size_t>(glyphCount) == last - run.first)
            for (int i = 0; i < glyphCount; ++i)
                glyphs[i].x = text.places[run.first + static_cast<std::size_t>(i)];
        const RGBDType& c = halo ? text.haloColor : text.color;
        cairo_set_source_rgba(m_Page, c.r, c.g, c.b, c.a);
        if (halo) {
            cairo_new_path(m_Page);
            cairo_glyph_path(m_Page, glyphs, glyphCount);
            SetLine(2.0 * text.halo);
            cairo_stroke(m_Page);
        } else {
            cairo_show_text_glyphs(m_Page, characters.c_str(), size, glyphs, glyphCount, clusters,
                                   clusterCount, flags);
        }
        cairo_glyph_free(glyphs);
        cairo_text_cluster_free(clusters);
    }

    void SetLine(double width) {
        cairo_set_line_width(m_Page, width);
        cairo_set_line_join(m_Page, CAIRO_LINE_JOIN_ROUND);
    }

    void Path(cairo_t* page, const std::vector<Ring>& rings, bool closed) const {
        cairo_new_path(page);
        for (const Ring& ring : rings) {
            ProgressStep();
            if (ring.size() < 2) continue;
            cairo_move_to(page, X(ring[0]), Y(ring[0]));
            for (std::size_t i = 1; i < ring.size(); ++i)
                cairo_line_to(page, X(ring[i]), Y(ring[i]));
            if (closed) cairo_close_path(page);
        }
    }

    /// The shape once more, as a drawing that the file holds once.
    void FillAgain(const RepeatedShapes::Use& use, const RGBDType& color) {
        m_Drawings.resize(std::max(m_Drawings.size(), use.shape + 1));
        Owned<cairo_surface_t>& drawing = m_Drawings[use.shape];
        if (!drawing) {
            const Ring& ring = m_Shapes.First(use.shape);
            const auto [left, right] = std::ranges::minmax(ring, {}, &GridPoint::x);
            const auto [low, high] = std::ranges::minmax(ring, {}, &GridPoint::y);
            const cairo_rectangle_t bounds = {X(left) - 1.0, Y(high) - 1.0,
                                              X(right) - X(left) + 2.0, Y(low) - Y(high) + 2.0};
            drawing.reset(cairo_recording_surface_create(CAIRO_CONTENT_COLOR_ALPHA, &bounds));
            const Owned<cairo_t> page(cairo_create(drawing.get()));
            Path(page.get(), {ring}, true);
            cairo_set_source_rgba(page.get(), color.r, color.g, color.b, color.a);
            cairo_fill(page.get());
        }
        cairo_set_source_surface(m_Page, drawing.get(), X(use.offset),
                                 -use.offset.y / kGridPerPixel);
        cairo_paint(m_Page);
    }

    cairo_t* m_Page;
    double m_Height;
    RepeatedShapes m_Shapes;
    std::vector<Owned<cairo_surface_t>> m_Drawings;  ///< of the shapes that came again
};

}  // namespace

std::unique_ptr<PageCanvas> MakeCairoCanvas(cairo_t* page, double height) {
    return std::make_unique<CairoCanvas>(page, height);
}

}  // namespace varnel::detail
