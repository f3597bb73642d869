#include "varnel/vector/detail/svg_canvas.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <string_view>

#include "varnel/foundation/detail/characters.h"
#include "varnel/platform/detail/png_file.h"

namespace varnel::detail {
namespace {

/// Width, in pixels, of the stroke that closes the crack between two fills.
constexpr double kSeal = 0.35;
/// Colours of one piece of a smooth triangle differ by at most this many of 255 levels.
constexpr int kLevels = 2;
constexpr int kDeepest = 3;

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
    return static_cast<int>(std::clamp(component, 0.0, 1.0) * 255.0 + 0.5);
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

GridPoint Middle(const GridPoint& a, const GridPoint& b) {
    return {(a.x + b.x) / 2, (a.y + b.y) / 2};
}

RGBDType Middle(const RGBDType& a, const RGBDType& b) {
    return {(a.r + b.r) / 2, (a.g + b.g) / 2, (a.b + b.b) / 2, (a.a + b.a) / 2};
}

}  // namespace

SvgCanvas::SvgCanvas(double pageWidth, double pageHeight, double width, double height,
                     const CString& title)
    : m_Height(height * kGridPerPixel) {
    m_Out =
        "<svg xmlns=\"http://www.w3.org/2000/svg\" xmlns:xlink=\"http://www.w3.org/1999/xlink\" "
        "width=\"" +
        Decimal(pageWidth) + "mm\" height=\"" + Decimal(pageHeight) + "mm\" viewBox=\"0 0 " +
        Decimal(width * kGridPerPixel) + ' ' + Decimal(m_Height) + "\">\n";
    if (!title.empty()) m_Out += "<title>" + Escaped(title) + "</title>\n";
}

void SvgCanvas::Enter(Group group) {
    if (group == m_Group) return;
    if (m_Group != Group::None) m_Out += "</g>\n";
    if (group == Group::Plain) m_Out += "<g fill=\"none\" stroke-linejoin=\"round\">\n";
    if (group == Group::Sealed)
        m_Out +=
            "<g fill=\"currentColor\" stroke=\"currentColor\" stroke-linejoin=\"round\" "
            "stroke-width=\"" +
            Decimal(kSeal * kGridPerPixel) + "\">\n";
    m_Group = group;
}

/// A number of a path, with a blank before it where its sign does not separate it.
void SvgCanvas::Number(long long value, bool first) {
    char buffer[24];
    if (!first && value >= 0) m_Out += ' ';
    m_Out.append(buffer, std::to_chars(buffer, buffer + sizeof buffer, value).ptr);
}

void SvgCanvas::Path(const std::vector<Ring>& rings, bool closed) {
    const auto height = static_cast<long long>(m_Height);
    for (const Ring& ring : rings) {
        if (ring.size() < 2) continue;
        m_Out += 'M';
        Number(ring[0].x, true);
        Number(height - ring[0].y, false);
        for (std::size_t i = 1; i < ring.size(); ++i) {
            if (i == 1) m_Out += 'l';
            Number(ring[i].x - ring[i - 1].x, i == 1);
            Number(ring[i - 1].y - ring[i].y, false);
        }
        if (closed) m_Out += 'z';
    }
}

void SvgCanvas::Fill(const Area& area, const RGBDType& color, bool seal) {
    if (area.empty()) return;
    Enter(seal ? Group::Sealed : Group::Plain);
    m_Out += seal ? "<path color=\"" : "<path fill=\"";
    m_Out += Color(color) + '"' + Opacity(seal ? "opacity" : "fill-opacity", color);
    if (area.size() > 1) m_Out += " fill-rule=\"evenodd\"";
    m_Out += " d=\"";
    Path(area, true);
    m_Out += "\"/>\n";
}

/// A triangle along which all components run together, as those of one lit colour do, is a linear
/// gradient; false for others.
bool SvgCanvas::FillGradient(const SmoothTriangle& t) {
    const auto value = [&t](std::size_t corner, std::size_t component) {
        const RGBDType& c = t.colors[corner];
        return component == 0 ? c.r : component == 1 ? c.g : c.b;
    };
    const auto range = [&value](std::size_t k) {
        return std::max({value(0, k), value(1, k), value(2, k)}) -
               std::min({value(0, k), value(1, k), value(2, k)});
    };
    std::size_t leading = 0;
    for (std::size_t k = 1; k < 3; ++k)
        if (range(k) > range(leading)) leading = k;
    std::array<std::size_t, 3> order = {0, 1, 2};
    std::sort(order.begin(), order.end(),
              [&](std::size_t i, std::size_t j) { return value(i, leading) < value(j, leading); });
    const auto [low, middle, high] = order;
    const double share = (value(middle, leading) - value(low, leading)) / range(leading);
    for (std::size_t k = 0; k < 3; ++k) {
        const double even = value(low, k) + share * (value(high, k) - value(low, k));
        if (std::fabs(even - value(middle, k)) * 255.0 > kLevels) return false;
    }
    // The colour's place along the line from low to end is where the foot of a place on it is.
    const double ax = t.corners[middle].x - t.corners[low].x;
    const double ay = t.corners[middle].y - t.corners[low].y;
    const double bx = t.corners[high].x - t.corners[low].x;
    const double by = t.corners[high].y - t.corners[low].y;
    const double area = ax * by - bx * ay;
    if (std::fabs(area) < 1.0) return false;
    const double gx = (share * by - ay) / area;
    const double gy = (ax - share * bx) / area;
    const double square = gx * gx + gy * gy;
    Enter(Group::Plain);
    const std::string id = "g" + std::to_string(++m_Gradients);
    const double x = t.corners[low].x;
    const double y = m_Height - t.corners[low].y;
    m_Out += "<linearGradient id=\"" + id + "\" gradientUnits=\"userSpaceOnUse\" x1=\"" +
             Decimal(x, 0) + "\" y1=\"" + Decimal(y, 0) + "\" x2=\"" + Decimal(x + gx / square, 0) +
             "\" y2=\"" + Decimal(y - gy / square, 0) + "\"><stop stop-color=\"" +
             Color(t.colors[low]) + "\"/><stop offset=\"1\" stop-color=\"" + Color(t.colors[high]) +
             "\"/></linearGradient><path fill=\"url(#" + id + ")\" stroke=\"url(#" + id +
             ")\" stroke-width=\"" + Decimal(kSeal * kGridPerPixel) + "\" d=\"";
    Path({{t.corners.begin(), t.corners.end()}}, true);
    m_Out += "\"/>\n";
    return true;
}

void SvgCanvas::Subdivide(const SmoothTriangle& t, int depth) {
    const auto far = [&](std::size_t a, std::size_t b) {
        const RGBDType& c = t.colors[a];
        const RGBDType& d = t.colors[b];
        return std::max({std::fabs(c.r - d.r), std::fabs(c.g - d.g), std::fabs(c.b - d.b)});
    };
    const bool even = std::max({far(0, 1), far(1, 2), far(2, 0)}) * 255.0 <= kLevels;
    if (!even && FillGradient(t)) return;
    if (even || depth >= kDeepest) {
        const RGBDType& a = t.colors[0];
        const RGBDType& b = t.colors[1];
        const RGBDType& c = t.colors[2];
        Fill({{t.corners.begin(), t.corners.end()}},
             {(a.r + b.r + c.r) / 3, (a.g + b.g + c.g) / 3, (a.b + b.b + c.b) / 3, a.a}, true);
        return;
    }
    const std::array<GridPoint, 3> p = {Middle(t.corners[0], t.corners[1]),
                                        Middle(t.corners[1], t.corners[2]),
                                        Middle(t.corners[2], t.corners[0])};
    const std::array<RGBDType, 3> c = {Middle(t.colors[0], t.colors[1]),
                                       Middle(t.colors[1], t.colors[2]),
                                       Middle(t.colors[2], t.colors[0])};
    Subdivide({{t.corners[0], p[0], p[2]}, {t.colors[0], c[0], c[2]}}, depth + 1);
    Subdivide({{p[0], t.corners[1], p[1]}, {c[0], t.colors[1], c[1]}}, depth + 1);
    Subdivide({{p[2], p[1], t.corners[2]}, {c[2], c[1], t.colors[2]}}, depth + 1);
    Subdivide({{p[0], p[1], p[2]}, {c[0], c[1], c[2]}}, depth + 1);
}

void SvgCanvas::FillSmooth(const std::vector<SmoothTriangle>& triangles) {
    for (const SmoothTriangle& triangle : triangles)
        Subdivide(triangle, 0);
}

void SvgCanvas::Stroke(const std::vector<Ring>& lines, const PageStroke& stroke) {
    if (lines.empty()) return;
    Enter(Group::Plain);
    m_Out += "<path stroke=\"" + Color(stroke.color) + '"' +
             Opacity("stroke-opacity", stroke.color) + " stroke-width=\"" +
             Decimal(stroke.width * kGridPerPixel, 1) + '"';
    if (!stroke.dashes.empty()) {
        m_Out += " stroke-dasharray=\"";
        for (std::size_t i = 0; i < stroke.dashes.size(); ++i)
            m_Out += (i > 0 ? " " : "") + Decimal(stroke.dashes[i] * kGridPerPixel, 1);
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
    const double s = kGridPerPixel / kEm;
    m_Out += "<text transform=\"matrix(";
    for (const double v : {m[0] * s, -m[1] * s, -m[2] * s, m[3] * s, m[4] * kGridPerPixel})
        m_Out += Decimal(v, 4) + ' ';
    m_Out += Decimal(m_Height - m[5] * kGridPerPixel, 4) + ")\" font-family=\"" +
             Escaped(text.family) + ", Liberation Sans, Arial, Helvetica, sans-serif\"" +
             " font-size=\"100\" fill=\"" + Color(text.color) + '"' +
             Opacity("fill-opacity", text.color);
    if (text.weight != 400) m_Out += " font-weight=\"" + std::to_string(text.weight) + '"';
    if (text.italic) m_Out += " font-style=\"italic\"";
    m_Out += " style=\"font-kerning:none\" xml:space=\"preserve\">";
    // Each letter has its place, so that no viewer's own spacing counts; those that know places of
    // words alone are right at each word.
    std::string_view rest = text.text;
    std::size_t character = 0;
    while (!rest.empty()) {
        const std::size_t blank = rest.find(' ');
        const std::string_view word =
            rest.substr(0, blank == std::string_view::npos ? blank : blank + 1);
        m_Out += "<tspan x=\"";
        bool first = true;
        ForEachCharacter(word, [&](char32_t) {
            if (character < text.places.size())
                m_Out += (first ? "" : " ") + Decimal(text.places[character] * kEm, 1);
            ++character;
            first = false;
        });
        m_Out += "\">" + Escaped(word) + "</tspan>";
        rest.remove_prefix(word.size());
    }
    m_Out += "</text>\n";
}

void SvgCanvas::Picture(const PagePicture& picture) {
    Enter(Group::Plain);
    const std::array<double, 6>& m = picture.placement;
    m_Out += "<image width=\"1\" height=\"1\" preserveAspectRatio=\"none\" transform=\"matrix(";
    // The image's own y runs down from its upper edge.
    for (const double v : {m[0], -m[1], -m[2], m[3], m[4] + m[2]})
        m_Out += Decimal(v * kGridPerPixel, 4) + ' ';
    // Both of the last two are of the image's upper left corner.
    m_Out += Decimal(m_Height - (m[5] + m[3]) * kGridPerPixel, 4) +
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
