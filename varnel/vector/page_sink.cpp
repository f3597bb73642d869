// PageSink: taking over what is drawn.
#include "varnel/vector/detail/page_sink.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "varnel/foundation/detail/characters.h"
#include "varnel/foundation/detail/progress.h"
#include "varnel/foundation/detail/whole_within.h"
#include "varnel/render/font.h"
#include "varnel/vector/detail/shades.h"

namespace varnel::detail {
namespace {

constexpr double kDeepest = 24.0;
/// Corners this far off the plane of the others, in device units, make a polygon crooked.
constexpr double kCrooked = 1e-5;
/// Polygons of a smooth surface that are smaller than this, in pixels, have one colour.
constexpr double kSmallest = 10.0;
/// Lit polygons that are smaller than this, in pixels, have one colour with their neighbours.
constexpr double kSmall = 16.0;
/// Triangles whose corners differ by no more, in 255ths, have one colour.
constexpr int kLevels = 2;
/// A triangle with more bands of colours by value than this is a blur, and has one colour.
constexpr double kMostBands = 4096.0;
/// Of a page with more pieces of triangles than this, which no viewer likes to open, the triangles
/// that follow have one colour.
constexpr std::size_t kMostPieces = 250'000;
/// Pixels that lines are followed beyond the page, so that their ends are not seen on it.
constexpr double kMargin = 100.0;
/// Pixels from the page's corner up to which places can be written.
constexpr double kFarthest = 1e6;

/// The part of a polygon where `value`, which is linear in its places, is not below 0.
template <class Value>
void ClipAbove(std::vector<Vec3>& polygon, std::vector<Vec3>& spare, Value&& value) {
    spare.clear();
    for (std::size_t i = 0, n = polygon.size(); i < n; ++i) {
        const Vec3& a = polygon[i];
        const Vec3& b = polygon[(i + 1) % n];
        const double va = value(a);
        const double vb = value(b);
        if (va >= 0.0) spare.push_back(a);
        if ((va >= 0.0) == (vb >= 0.0)) continue;
        const double t = va / (va - vb);
        spare.push_back({a.x + t * (b.x - a.x), a.y + t * (b.y - a.y), a.z + t * (b.z - a.z)});
    }
    polygon.swap(spare);
}

double PlaneValue(const std::array<double, 4>& plane, const Vec3& p) {
    return plane[0] * p.x + plane[1] * p.y + plane[2] * p.z + plane[3];
}

Vec3 Along(const Vec3& a, const Vec3& b, double t) {
    return {a.x + t * (b.x - a.x), a.y + t * (b.y - a.y), a.z + t * (b.z - a.z)};
}

/// A line's width, cut off where nobody sees any more of it.
float WidthOf(float width) {
    return width > 0.0F ? std::min(width, static_cast<float>(kFarthest)) : 0.0F;
}

/// Whether a place in pixels can be written.
bool IsNear(const Vec3& p) {
    return std::fabs(p.x) <= kFarthest && std::fabs(p.y) <= kFarthest && std::isfinite(p.z);
}

/// Whether the corners lie in one plane and turn one way, seen from the front.
bool IsFlatAndConvex(const std::vector<Vec3>& p) {
    if (p.size() == 3) return true;
    Vec3 normal{0.0, 0.0, 0.0};
    bool left = false;
    bool right = false;
    const std::size_t n = p.size();
    for (std::size_t i = 0; i < n; ++i) {
        const Vec3 part = Cross(p[i] - p[0], p[(i + 1) % n] - p[0]);
        normal = {normal.x + part.x, normal.y + part.y, normal.z + part.z};
        const double turn = Cross(p[(i + 1) % n] - p[i], p[(i + 2) % n] - p[(i + 1) % n]).z;
        left = left || turn > 1e-12;
        right = right || turn < -1e-12;
    }
    if (left && right) return false;
    normal = Normalized(normal);
    return std::all_of(p.begin(), p.end(), [&](const Vec3& corner) {
        return std::fabs(Dot(corner - p[0], normal)) <= kCrooked;
    });
}

RGBDType ColorOf(PackedColor color) {
    const auto component = [&color](std::size_t i) { return color.bytes[i] / 255.0; };
    return {component(0), component(1), component(2), 1.0};
}

/// A picture many times beside and above itself, in one.
PagePicture Tiled(const PagePicture& tile, int across, int up) {
    constexpr long long kMostPixels = 2048;  // along a side
    PagePicture all;
    all.width = static_cast<int>(std::min(kMostPixels, 1LL * across * tile.width));
    all.height = static_cast<int>(std::min(kMostPixels, 1LL * up * tile.height));
    all.pixels.reserve(std::size_t{4} * static_cast<std::size_t>(all.width) *
                       static_cast<std::size_t>(all.height));
    const auto place = [](int at, int size, int tiles, int tileSize) {
        const double turns = (at + 0.5) / size * tiles;
        return WholeWithin((turns - std::floor(turns)) * tileSize, 0, tileSize - 1);
    };
    for (int y = 0; y < all.height; ++y) {
        const auto row = static_cast<std::size_t>(place(y, all.height, up, tile.height)) *
                         static_cast<std::size_t>(tile.width);
        for (int x = 0; x < all.width; ++x) {
            const BYTE* const pixel =
                tile.pixels.data() +
                4 * (row + static_cast<std::size_t>(place(x, all.width, across, tile.width)));
            all.pixels.insert(all.pixels.end(), pixel, pixel + 4);
        }
    }
    return all;
}

Vec3 PlaceOf(const float position[3]) {
    return {static_cast<double>(position[0]), static_cast<double>(position[1]),
            static_cast<double>(position[2])};
}

}  // namespace

/// From device coordinates of the viewport to pixels of the image, and to the layer.
Vec3 PageSink::Place(const SceneState& state, const Vec3& device) const {
    const GLViewportType& v = state.viewport;
    return {v.x + (device.x + 1.0) / 2.0 * v.width, v.y + (device.y + 1.0) / 2.0 * v.height,
            m_Layer + std::clamp(device.z, -kDeepest, kDeepest)};
}

void PageSink::BeginObject() {
    m_Object = static_cast<std::uint32_t>(m_PolygonCounts.size());
    m_PolygonCounts.push_back(0);
}

void PageSink::Clear(const SceneState& state, bool color, bool depth) {
    if (depth || color) m_Layer -= kLayerDepth;
    if (!color) return;
    m_Polygon = {{-1, -1, kDeepest}, {1, -1, kDeepest}, {1, 1, kDeepest}, {-1, 1, kDeepest}};
    AddFill(state, {state.background.r, state.background.g, state.background.b, 1.0});
}

/// What is seen of the viewport, in its device coordinates: all of it where it lies on the page.
PageSink::Extent PageSink::SeenOf(const GLViewportType& viewport) const {
    const auto limits = [](int start, int length, double page) {
        if (length <= 0) return std::pair(-1.0, 1.0);
        return std::pair(std::max(-1.0, (-kMargin - start) / length * 2.0 - 1.0),
                         std::min(1.0, (page + kMargin - start) / length * 2.0 - 1.0));
    };
    const auto [left, right] = limits(viewport.x, viewport.width, m_Width);
    const auto [bottom, top] = limits(viewport.y, viewport.height, m_Height);
    return {left, right, bottom, top};
}

/// Cuts the polygon at hand by the clip planes; false when nothing is left, or when a corner is at
/// no place.
bool PageSink::Clip(const SceneState& state) {
    if (!std::ranges::all_of(m_Polygon, IsFinite)) return false;
    if (state.clipping)
        for (const auto& plane : state.clipPlanes)
            ClipAbove(m_Polygon, m_Spare, [&](const Vec3& p) { return PlaneValue(plane, p); });
    const Extent seen = SeenOf(state.viewport);
    ClipAbove(m_Polygon, m_Spare, [&](const Vec3& p) { return p.x - seen.left; });
    ClipAbove(m_Polygon, m_Spare, [&](const Vec3& p) { return seen.right - p.x; });
    ClipAbove(m_Polygon, m_Spare, [&](const Vec3& p) { return p.y - seen.bottom; });
    ClipAbove(m_Polygon, m_Spare, [&](const Vec3& p) { return seen.top - p.y; });
    for (Vec3& p : m_Polygon)
        p = seen.Nearest(p);
    return m_Polygon.size() >= 3 && std::ranges::all_of(m_Polygon, IsFinite);
}

void PageSink::AddFill(const SceneState& state, const RGBDType& color) {
    const bool veil = state.transparent && color.a < 1.0;
    if ((veil && !(color.a > 0.0)) || !Clip(state)) return;
    (veil ? m_Veils : m_Fills)
        .push_back({static_cast<std::uint32_t>(m_Places.size()),
                    static_cast<std::uint32_t>(m_Polygon.size()),
                    {color.r, color.g, color.b, veil ? color.a : 1.0},
                    -1,
                    m_Object,
                    m_BeneathLines});
    for (const Vec3& p : m_Polygon)
        m_Places.push_back(Place(state, p));
}

/// Groups the colours by value into bands that look the same, the same ones for all triangles, so
/// that what is cut along them fits together.
void PageSink::FindBands(const SceneState& state) {
    const auto size = static_cast<std::size_t>(state.textureSize);
    const auto same = [](const RGBBType& s, const RGBBType& t) {
        return s.r == t.r && s.g == t.g && s.b == t.b && s.a == t.a;
    };
    if (m_Bands.size() == size &&
        std::equal(m_BandColors.begin(), m_BandColors.end(), state.texture.begin(), same))
        return;
    m_BandColors.assign(state.texture.begin(), state.texture.begin() + state.textureSize);
    m_Bands.resize(size);
    const auto near = [](int x, int y) { return std::abs(x - y) < kShadeStep; };
    for (std::size_t from = 0, to = 0; from < size; from = to) {
        const RGBBType& first = m_BandColors[from];
        for (to = from + 1; to < size; ++to) {
            const RGBBType& next = m_BandColors[to];
            if (!near(first.r, next.r) || !near(first.g, next.g) || !near(first.b, next.b) ||
                first.a != next.a)
                break;
        }
        for (std::size_t i = from; i < to; ++i)
            m_Bands[i] = {static_cast<double>(from), static_cast<double>(to)};
    }
}

/// A triangle coloured by value, in bands of one colour.
void PageSink::AddTextured(const SceneState& state, const PrimitiveBatch& batch,
                           const std::array<std::uint32_t, 3>& vertices, const RGBDType& color) {
    ValuedRing triangle;
    double low = 1e300;
    double high = -1e300;
    bool missing = false;
    for (const std::uint32_t vertex : vertices) {
        const double value = batch.TextureAt(vertex) * state.textureSize;
        triangle.corners[triangle.count++] = {batch.Corner(vertex), value};
        low = std::min(low, value);
        high = std::max(high, value);
        missing = missing || !std::isfinite(value);
    }
    // Steps between values beyond the largest are lost in their digits.
    constexpr double kLargest = 1e9;
    if (missing || !(high - low <= kMostBands) || std::fabs(low) > kLargest) {
        m_Polygon.clear();
        for (std::size_t i = 0; i < triangle.count; ++i)
            m_Polygon.push_back(triangle.corners[i].place);
        // As llvmpipe: a value that is missing is the first.
        AddFill(state, missing ? TexturedColor(state, 0.0, color, batch.State().shaded) : color);
        return;
    }
    if (m_NumPieces > kMostPieces) {
        low += (high - low) / 2.0;
        high = low;
    }
    for (double from = low; from <= high;) {
        ++m_NumPieces;
        // Colours repeat beyond the table.
        const double cycle = std::floor(from / state.textureSize) * state.textureSize;
        const auto& [start, end] =
            m_Bands[std::min(static_cast<std::size_t>(from - cycle), m_Bands.size() - 1)];
        ValuedRing piece = triangle;
        if (cycle + start > low) piece.Cut(1.0, cycle + start);
        if (cycle + end <= high) piece.Cut(-1.0, cycle + end);
        m_Polygon.clear();
        for (std::size_t i = 0; i < piece.count; ++i)
            m_Polygon.push_back(piece.corners[i].place);
        const double middle = (cycle + (start + end) / 2.0) / state.textureSize;
        const RGBDType seen = TexturedColor(state, middle, color, batch.State().shaded);
        if (m_Polygon.size() >= 3) AddFill(state, batch.State().shaded ? Snapped(seen) : seen);
        from = cycle + end;
    }
}

/// Whether the polygon at hand is one of many, such as a surface has.
bool PageSink::IsSmall(const SceneState& state) const {
    const auto [left, right] =
        std::ranges::minmax(m_Polygon, {}, [](const Vec3& p) { return p.x; });
    const auto [low, high] = std::ranges::minmax(m_Polygon, {}, [](const Vec3& p) { return p.y; });
    return (right.x - left.x) * state.viewport.width < 2.0 * kSmall &&
           (high.y - low.y) * state.viewport.height < 2.0 * kSmall;
}

/// A large polygon whose corners have colours of their own, in triangles; false for others.
bool PageSink::AddSmooth(const SceneState& state, const PrimitiveBatch& batch,
                         const PolygonRecord& record) {
    const PackedColor first = batch.Vertices()[record.first].color;
    bool flat = true;
    double extent = 0.0;
    std::vector<ShadedVertex> corners;
    for (std::uint32_t i = 0; i < record.count; ++i) {
        const std::uint32_t vertex = record.first + i;
        corners.push_back({batch.Corner(vertex), ColorOf(batch.Vertices()[vertex].color)});
        flat = flat && batch.Vertices()[vertex].color == first;
        const Vec3 way = Place(state, corners.back().place) - Place(state, corners.front().place);
        extent = std::max({extent, std::fabs(way.x), std::fabs(way.y)});
    }
    const bool veil = state.transparent && record.color.a < 1.0;
    if (veil || flat || extent < kSmallest) return false;
    for (std::uint32_t i = 2; i < record.count; ++i) {
        const ShadedVertex triangle[] = {corners[0], corners[i - 1], corners[i]};
        AddShaded(state, triangle);
    }
    return true;
}

void PageSink::AddRecord(const SceneState& state, const PrimitiveBatch& batch,
                         const PolygonRecord& record) {
    ++m_PolygonCounts[m_Object];
    RGBDType color = record.lit ? batch.MeanColor(record) : record.color;
    if (batch.State().textured && state.textureSize > 0) {
        FindBands(state);
        for (std::uint32_t i = 2; i < record.count; ++i)
            AddTextured(state, batch, {record.first, record.first + i - 1, record.first + i},
                        color);
        return;
    }
    if (AddSmooth(state, batch, record)) return;
    m_Polygon.clear();
    for (std::uint32_t i = 0; i < record.count; ++i)
        m_Polygon.push_back(batch.Corner(record.first + i));
    if (record.lit && IsSmall(state)) color = Snapped(color);
    if (IsFlatAndConvex(m_Polygon)) {
        AddFill(state, color);
        return;
    }
    // As OpenGL draws it: a fan of triangles.
    for (std::uint32_t i = 2; i < record.count; ++i) {
        m_Polygon = {batch.Corner(record.first), batch.Corner(record.first + i - 1),
                     batch.Corner(record.first + i)};
        AddFill(state, color);
    }
}

bool PageSink::ClipSegment(const SceneState& state, Vec3& a, Vec3& b) const {
    if (!IsFinite(a) || !IsFinite(b)) return false;
    double from = 0.0;
    double to = 1.0;
    const auto cut = [&](double va, double vb) {
        if (va < 0.0 && vb < 0.0) to = -1.0;
        if ((va < 0.0) == (vb < 0.0)) return;
        const double t = va / (va - vb);
        if (va < 0.0)
            from = std::max(from, t);
        else
            to = std::min(to, t);
    };
    if (state.clipping)
        for (const auto& plane : state.clipPlanes)
            cut(PlaneValue(plane, a), PlaneValue(plane, b));
    const Extent seen = SeenOf(state.viewport);
    cut(a.x - seen.left, b.x - seen.left);
    cut(seen.right - a.x, seen.right - b.x);
    cut(a.y - seen.bottom, b.y - seen.bottom);
    cut(seen.top - a.y, seen.top - b.y);
    if (!(from <= to)) return false;
    const Vec3 start = seen.Nearest(from > 0.0 ? Along(a, b, from) : a);
    b = seen.Nearest(to < 1.0 ? Along(a, b, to) : b);
    a = start;
    return true;
}

void PageSink::DrawBatch(const SceneState& state, const PrimitiveBatch& batch) {
    // Batches come from destructors, too, which nothing may be thrown from.
    ProgressOnly(0.0, 1.0);
    m_BeneathLines = batch.State().framed && state.frameOffset;
    for (const PolygonRecord& record : batch.Polygons())
        AddRecord(state, batch, record);
    m_BeneathLines = false;
    for (const LineRun& run : batch.Lines())
        for (std::size_t i = 0; i + 1 < run.indices.size(); i += 2) {
            const LineVertex& from = run.vertices[run.indices[i]];
            const LineVertex& to = run.vertices[run.indices[i + 1]];
            Vec3 a = PlaceOf(from.position);
            Vec3 b = PlaceOf(to.position);
            if (!ClipSegment(state, a, b)) continue;
            RGBDType color = ColorOf(from.color);
            if (state.transparent) color.a = from.color.bytes[3] / 255.0;
            m_Segments.push_back({Place(state, a), Place(state, b), color, WidthOf(run.width),
                                  run.cutJoins, m_Object, m_Fills.size()});
        }
}

void PageSink::DrawStrip(const SceneState& state, const LineStrip& strip) {
    if (strip.vertices.size() < 2) return;
    // Cut to what the viewport and the clip planes leave: a piece begins its pattern anew.
    Strip out{{},
              ColorOf(strip.vertices.front().color),
              WidthOf(strip.width),
              strip.repeat,
              strip.pattern,
              m_Fills.size()};
    const auto finish = [this, &out] {
        if (out.places.size() > 1) m_Strips.push_back(out);
        out.places.clear();
    };
    for (std::size_t i = 0; i + 1 < strip.vertices.size(); ++i) {
        const Vec3 from = PlaceOf(strip.vertices[i].position);
        const Vec3 to = PlaceOf(strip.vertices[i + 1].position);
        Vec3 a = from;
        Vec3 b = to;
        if (!ClipSegment(state, a, b)) {
            finish();
            continue;
        }
        const auto same = [](const Vec3& p, const Vec3& q) {
            return p.x == q.x && p.y == q.y && p.z == q.z;
        };
        if (!same(a, from)) finish();
        if (out.places.empty()) out.places.push_back(Place(state, a));
        out.places.push_back(Place(state, b));
        if (!same(b, to)) finish();
    }
    finish();
}

void PageSink::DrawText(const SceneState& state, const TextRun& run) {
    if (run.font.GetFace() == nullptr) return;
    Text out;
    const LOGFONT& font = run.font.GetLogFont();
    out.text.family = font.lfFaceName;
    out.text.weight = font.lfWeight;
    out.text.italic = font.lfItalic != 0;
    out.text.color = {run.color.r, run.color.g, run.color.b, 1.0};
    out.text.halo = run.halo;
    out.text.haloColor = {run.haloColor.r, run.haloColor.g, run.haloColor.b, 1.0};
    const auto place = [&](double x, double y) {
        const Matrix4& m = run.placement;
        return Place(state, {m.At(0, 0) * x + m.At(0, 1) * y + m.At(0, 3),
                             m.At(1, 0) * x + m.At(1, 1) * y + m.At(1, 3),
                             m.At(2, 0) * x + m.At(2, 1) * y + m.At(2, 3)});
    };
    const Vec3 origin = place(0, 0);
    const Vec3 right = place(1, 0);
    const Vec3 up = place(0, 1);
    out.text.placement = {right.x - origin.x, right.y - origin.y, up.x - origin.x,
                          up.y - origin.y,    origin.x,           origin.y};
    out.face = run.font.GetFace();
    const auto isControl = [](char32_t c) { return c < 0x20 || (c >= 0x7F && c < 0xA0); };
    double width = 0.0;
    ForEachCharacter(run.text, [&](char32_t character) {
        const double advance = static_cast<double>(out.face->Metrics(character).gmfCellIncX);
        GlyphSource source = out.face->Source(character);
        width += advance;
        // What only steers has no letter, and what controls is a space.
        if (source.file.empty()) return;
        AppendUtf8(out.text.text, isControl(character) ? U' ' : character);
        if (out.text.runs.empty() || out.text.runs.back().source != source)
            out.text.runs.push_back({out.text.places.size(), std::move(source)});
        out.text.places.push_back(width - advance);
    });
    out.width = width;
    out.underlined = font.lfUnderline != 0;
    constexpr double kDescent = -0.25;
    constexpr double kAscent = 0.95;
    out.outline = {place(0, kDescent), place(width, kDescent), place(width, kAscent),
                   place(0, kAscent)};
    // Seen from the edge, letters have no area; larger ones than that no font program makes.
    constexpr double kLeastArea = 1e-6;  // square pixels of an em
    constexpr double kLargest = 2e4;     // pixels of an em
    const std::array<double, 6>& m = out.text.placement;
    if (!std::ranges::all_of(out.outline, IsNear) ||
        !(std::fabs(m[0] * m[3] - m[1] * m[2]) > kLeastArea) ||
        std::max(std::hypot(m[0], m[1]), std::hypot(m[2], m[3])) > kLargest)
        return;
    m_Texts.push_back(std::move(out));
}

void PageSink::DrawImage(const SceneState& state, const ImageQuad& image) {
    const Vec3 origin = Place(state, image.corners[0]);
    const Vec3 top = Place(state, image.corners[1]);
    const Vec3 right = Place(state, image.corners[3]);
    if (!IsNear(origin) || !IsNear(top) || !IsNear(right)) return;
    Picture out;
    out.picture.width = image.width;
    out.picture.height = image.height;
    const auto row = static_cast<std::size_t>(image.width) * 4;
    for (int y = image.height - 1; y >= 0; --y)
        out.picture.pixels.insert(out.picture.pixels.end(),
                                  image.pixels + static_cast<std::size_t>(y) * row,
                                  image.pixels + static_cast<std::size_t>(y + 1) * row);
    // Without transparency alpha has no effect.
    for (std::size_t i = 3; i < out.picture.pixels.size(); i += 4) {
        if (!state.transparent) out.picture.pixels[i] = 255;
        out.veil = out.veil || out.picture.pixels[i] < 255;
    }
    constexpr double kVeiled = 0.5;
    m_Polygon.assign(image.corners.begin(), image.corners.end());
    const std::vector<Fill>& list = out.veil ? m_Veils : m_Fills;
    out.fill = list.size();
    AddFill(state, {1.0, 1.0, 1.0, out.veil ? kVeiled : 1.0});
    if (list.size() == out.fill) return;
    AddTiles(std::move(out), {origin, right, top}, image.repeatX, image.repeatY);
}

/// Puts a picture on an area, given by its lower left corner and those next to it, beside and above
/// itself. Each tile is a picture of its own, but for so many that they would fill the memory.
void PageSink::AddTiles(Picture tile, const std::array<Vec3, 3>& area, int across, int up) {
    if (across < 1 || up < 1) return;
    constexpr double kMostBytes = 6.4e7;
    constexpr double kOverhead = 1000.0;  // bytes of a picture beside its pixels
    const double tiles = 1.0 * across * up;
    if (tiles > 1.0 &&
        tiles * (kOverhead + static_cast<double>(tile.picture.pixels.size())) > kMostBytes) {
        tile.picture = Tiled(tile.picture, across, up);
        across = up = 1;
    }
    const auto& [origin, right, top] = area;
    const double ax = (right.x - origin.x) / across, ay = (right.y - origin.y) / across;
    const double bx = (top.x - origin.x) / up, by = (top.y - origin.y) / up;
    for (int i = 0; i < across; ++i)
        for (int k = 0; k < up; ++k) {
            tile.picture.placement = {
                ax, ay, bx, by, origin.x + i * ax + k * bx, origin.y + i * ay + k * by};
            m_Pictures.push_back(tile);
        }
}

/// A triangle whose corners have colours of their own.
void PageSink::AddShaded(const SceneState& state, const ShadedVertex* corners) {
    const RGBDType& a = corners[0].color;
    const RGBDType& b = corners[1].color;
    const RGBDType& c = corners[2].color;
    const auto spread = [](double x, double y, double z) {
        return (std::max({x, y, z}) - std::min({x, y, z})) * 255.0;
    };
    const bool flat =
        std::max({spread(a.r, b.r, c.r), spread(a.g, b.g, c.g), spread(a.b, b.b, c.b)}) <= kLevels;
    m_Polygon = {corners[0].place, corners[1].place, corners[2].place};
    const std::size_t fill = m_Fills.size();
    AddFill(state,
            Snapped({(a.r + b.r + c.r) / 3, (a.g + b.g + c.g) / 3, (a.b + b.b + c.b) / 3, 1.0}));
    const auto isNear = [&](const ShadedVertex& v) { return IsNear(Place(state, v.place)); };
    if (flat || m_Fills.size() == fill || !std::all_of(corners, corners + 3, isNear)) return;
    m_Fills.back().smooth = static_cast<int>(m_Smooth.size());
    SmoothTriangle& smooth = m_Smooth.emplace_back();
    for (std::size_t i = 0; i < 3; ++i) {
        smooth.corners[i] = ToGrid(Place(state, corners[i].place));
        smooth.colors[i] = corners[i].color;
    }
}

void PageSink::DrawShape(const SceneState& state, const ShadedShape& shape) {
    m_PolygonCounts[m_Object] += shape.triangles.size() / 3;
    for (std::size_t i = 0; i + 2 < shape.triangles.size(); i += 3)
        AddShaded(state, shape.triangles.data() + i);
    for (std::size_t i = 0; i + 1 < shape.lines.size(); i += 2) {
        Vec3 a = shape.lines[i].place;
        Vec3 b = shape.lines[i + 1].place;
        if (!ClipSegment(state, a, b)) continue;
        const RGBDType& c = shape.lines[i].color;
        m_Segments.push_back({Place(state, a),
                              Place(state, b),
                              {c.r, c.g, c.b, 1.0},
                              WidthOf(shape.width),
                              false,
                              m_Object,
                              m_Fills.size()});
    }
}

}  // namespace varnel::detail
