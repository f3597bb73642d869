#include "varnel/vector/detail/svg_canvas.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <string_view>

#include "varnel/foundation/detail/characters.h"
#include "varnel/foundation/detail/progress.h"
#include "varnel/foundation/detail/whole_within.h"
#include "varnel/platform/detail/png_file.h"
#include "varnel/vector/detail/areas.h"

namespace varnel::detail {
namespace {

/// Width, in pixels, of the stroke that closes the crack between two fills.
constexpr double kSeal = 0.35;
/// A gradient is shorter to tell than so many steps of colour.
constexpr double kMostSteps = 8.0;

std::string Decimal(double value, int digits = 3) {
    char buffer[64];
    const auto end =
        std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::fixed, digits).ptr;
    std::string text(buffer, end);
    if (text.find('.') != std::string::npos) {
        while (text.back() == '0')
            text.pop_back();
        if (text.back() == '.') text.pop_back();
    }
    return text == "-0" ? "0" : text;
}

int Level(double component) {
    return WholeWithin(component * 255.0 + 0.5, 0, 255);
}

std::string Color(const RGBDType& c) {
    constexpr std::string_view kDigits = "0123456789abcdef";
    std::string text = "#";
    bool brief = true;
    for (const double component : {c.r, c.g, c.b}) {
        const auto level = static_cast<unsigned>(Level(component));
        text += {kDigits[level >> 4U], kDigits[level & 15U]};
        brief = brief && level % 17 == 0;
    }
    return brief ? std::string{'#', text[1], text[3], text[5]} : text;
}

std::string Opacity(const char* name, const RGBDType& c) {
    return c.a < 1.0 ? std::string(" ") + name + "=\"" + Decimal(std::max(c.a, 0.0)) + '"' : "";
}

std::string Escaped(std::string_view text) {
    std::string out;
    for (const char c : text) {
        if (c == '&')
            out += "&amp;";
        else if (c == '<')
            out += "&lt;";
        else if (c == '>')
            out += "&gt;";
        else if (c == '"')
            out += "&quot;";
        else if (static_cast<unsigned char>(c) >= 0x20 || c == '\n' || c == '\t')
            out += c;
    }
    return out;
}

std::string Base64(const std::vector<BYTE>& bytes) {
    constexpr std::string_view kDigits =
        "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    std::string out;
    out.reserve((bytes.size() + 2) / 3 * 4);
    for (std::size_t i = 0; i < bytes.size(); i += 3) {
        const std::size_t n = std::min<std::size_t>(3, bytes.size() - i);
        unsigned word = 0;
        for (std::size_t k = 0; k < 3; ++k)
            word = word << 8U | (k < n ? bytes[i + k] : 0U);
        for (std::size_t k = 0; k < 4; ++k)
            out += k <= n ? kDigits[(word >> (18U - 6U * k)) & 63U] : '=';
    }
    return out;
}

/// The units of the file: a fifth of a dot at 600 dots per inch, so that rounding moves nothing by
/// more than a tenth.
double UnitsPerPixel(double pageWidth, double width) {
    constexpr double kPerMillimetre = 5.0 * 600.0 / 25.4;
    return std::clamp(std::ceil(pageWidth * kPerMillimetre / width), 1.0, kGridPerPixel);
}

}  // namespace

SvgCanvas::SvgCanvas(double pageWidth, double pageHeight, double width, double height,
                     const CString& title)
    : m_UnitsPerPixel(UnitsPerPixel(pageWidth, width)),
      m_Height(height),
      m_Seal(" stroke-width=\"" + Decimal(kSeal * m_UnitsPerPixel, 0) + '"') {
    m_Out =
        "<svg xmlns=\"http://www.w3.org/2000/svg\" xmlns:xlink=\"http://www.w3.org/1999/xlink\" "
        "width=\"" +
        Decimal(pageWidth) + "mm\" height=\"" + Decimal(pageHeight) + "mm\" viewBox=\"0 0 " +
        Decimal(width * m_UnitsPerPixel) + ' ' + Decimal(height * m_UnitsPerPixel) + "\">\n";
    if (!title.empty()) m_Out += "<title>" + Escaped(title) + "</title>\n";
}

void SvgCanvas::Enter(Group group) {
    if (group == m_Group) return;
    if (m_Group != Group::None) m_Out += "</g>\n";
    if (group == Group::Plain) m_Out += "<g fill=\"none\" stroke-linejoin=\"round\">\n";
    if (group == Group::Sealed)
        m_Out += "<g fill=\"currentColor\" stroke=\"currentColor\" stroke-linejoin=\"round\"" +
                 m_Seal + ">\n";
    m_Group = group;
}

/// A number of a path, with a blank before it where its sign does not separate it.
void SvgCanvas::Number(long long value, bool first) {
    char buffer[24];
    if (!first && value >= 0) m_Out += ' ';
    m_Out.append(buffer, std::to_chars(buffer, buffer + sizeof buffer, value).ptr);
}

std::array<long long, 2> SvgCanvas::ToUnits(const GridPoint& p) const {
    const double unit = m_UnitsPerPixel / kGridPerPixel;
    return {std::llround(p.x * unit), std::llround((m_Height * kGridPerPixel - p.y) * unit)};
}

/// All places but the first are told as steps.
void SvgCanvas::Path(const std::vector<Ring>& rings, bool closed) {
    std::array<long long, 2> at{};  // where the pen is
    for (const Ring& ring : rings) {
        ProgressStep();
        if (ring.size() < 2) continue;
        std::array<long long, 2> start = ToUnits(ring[0]);
        m_Out += &ring == &rings.front() ? 'M' : 'm';
        Number(start[0] - at[0], true);
        Number(start[1] - at[1], false);
        at = start;
        bool first = true;
        for (std::size_t i = 1; i < ring.size(); ++i) {
            const std::array<long long, 2> next = ToUnits(ring[i]);
            if (next == at) continue;
            if (first) m_Out += 'l';
            Number(next[0] - at[0], first);
            Number(next[1] - at[1], false);
            first = false;
            at = next;
        }
        if (!closed) continue;
        m_Out += 'z';
        at = start;
    }
}

void SvgCanvas::Fill(const Area& area, const RGBDType& color, bool seal) {
    if (area.empty()) return;
    Enter(seal ? Group::Sealed : Group::Plain);
    const RepeatedShapes::Use use = seal ? RepeatedShapes::Use{} : m_Shapes.Find(area, color);
    if (use.number > 1) {
        const double unit = m_UnitsPerPixel / kGridPerPixel;
        m_Out += "<use xlink:href=\"#s" + std::to_string(use.shape) + "\" x=\"" +
                 std::to_string(std::llround(use.offset.x * unit)) + "\" y=\"" +
                 std::to_string(std::llround(-use.offset.y * unit)) + "\"/>\n";
        return;
    }
    m_Out += seal ? "<path color=\"" : "<path fill=\"";
    m_Out += Color(color) + '"' + Opacity(seal ? "opacity" : "fill-opacity", color);
    if (use.number == 1) m_Out += " id=\"s" + std::to_string(use.shape) + '"';
    if (area.size() > 1) m_Out += " fill-rule=\"evenodd\"";
    m_Out += " d=\"";
    Path(area, true);
    m_Out += "\"/>\n";
}

void SvgCanvas::FillGradient(const SmoothTriangle& t, const StraightGradient& gradient) {
    Enter(Group::Plain);
    const std::string id = "g" + std::to_string(++m_Gradients);
    const auto [x, y] = ToUnits(gradient.from);
    const double unit = m_UnitsPerPixel / kGridPerPixel;
    m_Out += "<linearGradient id=\"" + id + "\" gradientUnits=\"userSpaceOnUse\" x1=\"" +
             std::to_string(x) + "\" y1=\"" + std::to_string(y) + "\" x2=\"" +
             Decimal(gradient.to[0] * unit, 0) + "\" y2=\"" +
             Decimal(m_Height * m_UnitsPerPixel - gradient.to[1] * unit, 0) +
             "\"><stop stop-color=\"" + Color(gradient.low) +
             "\"/><stop offset=\"1\" stop-color=\"" + Color(gradient.high) +
             "\"/></linearGradient><path fill=\"url(#" + id + ")\" stroke=\"url(#" + id + ")\"" +
             m_Seal + " d=\"";
    Path({{t.corners.begin(), t.corners.end()}}, true);
    m_Out += "\"/>\n";
}

void SvgCanvas::FillSmooth(const std::vector<SmoothTriangle>& triangles) {
    ShadePieces pieces;
    for (const SmoothTriangle& triangle : triangles) {
        ProgressStep();
        const std::optional<StraightGradient> gradient = FindGradient(triangle);
        if (!gradient)
            pieces.Subdivide(triangle);
        else if (!CutShades(triangle, *gradient, kMostSteps, pieces))
            FillGradient(triangle, *gradient);
    }
    for (const auto& [key, shade] : pieces.shades)
        Fill(Union(shade.areas), shade.color, true);
}

void SvgCanvas::Stroke(const std::vector<Ring>& lines, const PageStroke& stroke) {
    if (lines.empty()) return;
    Enter(Group::Plain);
    m_Out += "<path stroke=\"" + Color(stroke.color) + '"' +
             Opacity("stroke-opacity", stroke.color) + " stroke-width=\"" +
             Decimal(stroke.width * m_UnitsPerPixel, 1) + '"';
    if (stroke.cutJoins) m_Out += " stroke-linejoin=\"bevel\"";
    if (!stroke.dashes.empty()) {
        m_Out += " stroke-dasharray=\"";
        for (std::size_t i = 0; i < stroke.dashes.size(); ++i)
            m_Out += (i > 0 ? " " : "") + Decimal(stroke.dashes[i] * m_UnitsPerPixel, 1);
        m_Out += '"';
    }
    m_Out += " d=\"";
    Path(lines, false);
    m_Out += "\"/>\n";
}

void SvgCanvas::Text(const PageText& text) {
    Enter(Group::Plain);
    // Viewers round small font sizes: an em is 100 units of the text's own space.
    constexpr double kEm = 100.0;
    const std::array<double, 6>& m = text.placement;
    const double s = m_UnitsPerPixel / kEm;
    m_Out += "<text transform=\"matrix(";
    for (const double v : {m[0] * s, -m[1] * s, -m[2] * s, m[3] * s, m[4] * m_UnitsPerPixel})
        m_Out += Decimal(v, 4) + ' ';
    m_Out += Decimal((m_Height - m[5]) * m_UnitsPerPixel, 4) + ")\" font-family=\"" +
             Escaped(text.family) + ", Liberation Sans, Arial, Helvetica, sans-serif\"" +
             " font-size=\"100\" fill=\"" + Color(text.color) + '"' +
             Opacity("fill-opacity", text.color);
    if (text.halo > 0.0)
        m_Out += " stroke=\"" + Color(text.haloColor) + "\" stroke-width=\"" +
                 Decimal(2.0 * text.halo * kEm, 1) +
                 "\" stroke-linejoin=\"round\" paint-order=\"stroke\"";
    if (text.weight != 400) m_Out += " font-weight=\"" + std::to_string(text.weight) + '"';
    if (text.italic) m_Out += " font-style=\"italic\"";
    m_Out += " style=\"font-kerning:none\" xml:space=\"preserve\">";
    // Each letter has its place, so that no viewer's own spacing counts. There are viewers that
    // know places of runs alone: a run ends where they would set the next letter closer.
    std::string letters;
    std::string places;
    const auto finish = [&] {
        if (!letters.empty())
            m_Out += "<tspan x=\"" + places + "\">" + Escaped(letters) + "</tspan>";
        letters.clear();
        places.clear();
    };
    std::size_t i = 0;
    char32_t before = U' ';
    auto run = text.runs.begin();
    ForEachCharacter(text.text, [&](char32_t character) {
        while (run + 1 < text.runs.end() && (run + 1)->first <= i)
            ++run;
        const FontFace* face = Face(run->source);
        if (before == U' ' || (face != nullptr && face->Kerns(before, character))) finish();
        AppendUtf8(letters, character);
        places += (places.empty() ? "" : " ") + Decimal(text.places[i++] * kEm, 1);
        before = character;
    });
    finish();
    m_Out += "</text>\n";
}

const FontFace* SvgCanvas::Face(const GlyphSource& source) {
    const auto [at, isNew] = m_Faces.try_emplace({source.file, source.index});
    if (isNew) at->second = FontFace::Open({source.file, source.index}, false);
    return at->second.get();
}

void SvgCanvas::Picture(const PagePicture& picture) {
    Enter(Group::Plain);
    const std::array<double, 6>& m = picture.placement;
    m_Out += "<image width=\"1\" height=\"1\" preserveAspectRatio=\"none\" transform=\"matrix(";
    // The image's own y runs down from its upper edge.
    for (const double v : {m[0], -m[1], -m[2], m[3], m[4] + m[2]})
        m_Out += Decimal(v * m_UnitsPerPixel, 4) + ' ';
    // Both of the last two are of the image's upper left corner.
    m_Out += Decimal((m_Height - m[5] - m[3]) * m_UnitsPerPixel, 4) +
             ")\" xlink:href=\"data:image/png;base64,";
    m_Out += Base64(EncodePNG(picture.width, picture.height, picture.pixels)) + "\"/>\n";
}

void SvgCanvas::BeginClip(const Area& area) {
    Enter(Group::None);
    const std::string id = "c" + std::to_string(++m_Clips);
    m_Out += "<clipPath id=\"" + id + "\"><path clip-rule=\"evenodd\" d=\"";
    Path(area, true);
    m_Out += "\"/></clipPath>\n<g clip-path=\"url(#" + id + ")\">\n";
}

void SvgCanvas::EndClip() {
    Enter(Group::None);
    m_Out += "</g>\n";
}

std::string SvgCanvas::Finish() {
    Enter(Group::None);
    m_Out += "</svg>\n";
    return std::move(m_Out);
}

}  // namespace varnel::detail
