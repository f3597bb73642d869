#include "varnel/vector/detail/object_picture.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "varnel/foundation/detail/progress.h"
#include "varnel/foundation/detail/whole_within.h"

namespace varnel::detail {
namespace {

/// Samples along the side of a dot.
constexpr int kSamples = 2;
/// Rows of dots that are drawn at a time.
constexpr int kStrip = 32;
/// A picture has no more dots; larger ones are made coarser.
constexpr double kMostDots = 3.2e7;
/// What lies farther from the page's corner, in dots or samples, is not on it.
constexpr int kMostPlaces = 1'000'000;
/// What lies nearer than this before the object lies on it.
constexpr double kSlack = 1e-4;
constexpr float kNothing = std::numeric_limits<float>::infinity();

struct Range {
    double low = std::numeric_limits<double>::infinity();
    double high = -std::numeric_limits<double>::infinity();
    void Add(double v) {
        low = std::min(low, v);
        high = std::max(high, v);
    }
};

}  // namespace

ObjectPicture::ObjectPicture(double width, double height, double dotsPerPixel)
    : m_Width(width),
      m_Height(height),
      m_Dots(std::min(dotsPerPixel, std::sqrt(kMostDots / std::max(1.0, width * height)))) {
}

/// Takes a polygon; `colors` are of its first three corners.
void ObjectPicture::Add(Kind kind, std::span<const Vec3> corners, const RGBDType* colors) {
    // The plane through the corners: by the normal of the whole outline, and by three corners for
    // the colours, which only triangles have.
    const double scale = m_Dots * kSamples;
    const auto first = static_cast<std::uint32_t>(m_Corners.size());
    for (const Vec3& p : corners)
        m_Corners.push_back({p.x * scale, p.y * scale, p.z});
    const std::span<const Vec3> p(m_Corners.data() + first, corners.size());
    Vec3 normal{0.0, 0.0, 0.0};
    for (std::size_t i = 1; i + 1 < p.size(); ++i) {
        const Vec3 part = Cross(p[i] - p[0], p[i + 1] - p[0]);
        normal = {normal.x + part.x, normal.y + part.y, normal.z + part.z};
    }
    constexpr double kLeastArea = 1e-6;
    if (!(std::fabs(normal.z) > kLeastArea)) {
        m_Corners.resize(first);
        return;
    }
    Item item{first, static_cast<std::uint32_t>(corners.size()), kind, {}, {}};
    const auto plane = [&p](double slopeX, double slopeY, double value) {
        return Linear{slopeX, slopeY, value - slopeX * p[0].x - slopeY * p[0].y};
    };
    item.depth = plane(-normal.x / normal.z, -normal.y / normal.z, p[0].z);
    if (colors != nullptr)
        for (std::size_t k = 0; k < 3; ++k) {
            const auto value = [&](std::size_t i) {
                return 255.0 * std::clamp(k == 0   ? colors[i].r
                                          : k == 1 ? colors[i].g
                                                   : colors[i].b,
                                          0.0, 1.0);
            };
            const Vec3 u{p[1].x - p[0].x, p[1].y - p[0].y, value(1) - value(0)};
            const Vec3 v{p[2].x - p[0].x, p[2].y - p[0].y, value(2) - value(0)};
            const Vec3 n = Cross(u, v);
            item.color[k] = std::fabs(n.z) > kLeastArea ? plane(-n.x / n.z, -n.y / n.z, value(0))
                                                        : Linear{0.0, 0.0, value(0)};
        }
    m_Items.push_back(item);
}

void ObjectPicture::AddPolygon(std::span<const Vec3> corners, const RGBDType& color) {
    const std::array<RGBDType, 3> same = {color, color, color};
    Add(Kind::Polygon, corners, same.data());
}

void ObjectPicture::AddTriangle(std::span<const Vec3> corners,
                                const std::array<RGBDType, 3>& colors) {
    Add(Kind::Polygon, corners, colors.data());
}

void ObjectPicture::AddLine(const Vec3& a, const Vec3& b, double width, const RGBDType& color) {
    const double length = std::hypot(b.x - a.x, b.y - a.y);
    if (!(length > 0.0)) return;
    const double x = -(b.y - a.y) / length * width / 2.0;
    const double y = (b.x - a.x) / length * width / 2.0;
    const std::array<Vec3, 4> band = {Vec3{a.x - x, a.y - y, a.z}, Vec3{b.x - x, b.y - y, b.z},
                                      Vec3{b.x + x, b.y + y, b.z}, Vec3{a.x + x, a.y + y, a.z}};
    const std::array<RGBDType, 3> same = {color, color, color};
    Add(Kind::Line, band, same.data());
}

void ObjectPicture::AddHider(std::span<const Vec3> corners) {
    Add(Kind::Hider, corners, nullptr);
}

void ObjectPicture::Draw() {
    Range x, y;
    for (const Item& item : m_Items)
        for (std::uint32_t i = 0; item.kind != Kind::Hider && i < item.count; ++i) {
            x.Add(m_Corners[item.first + i].x / kSamples);
            y.Add(m_Corners[item.first + i].y / kSamples);
        }
    const auto dot = [](double at, double most) {
        return WholeWithin(at, 0, static_cast<int>(std::ceil(most)));
    };
    m_Left = dot(std::floor(x.low), m_Width * m_Dots);
    m_Bottom = dot(std::floor(y.low), m_Height * m_Dots);
    m_Columns = dot(std::ceil(x.high), m_Width * m_Dots) - m_Left;
    m_Rows = dot(std::ceil(y.high), m_Height * m_Dots) - m_Bottom;
    if (m_Columns <= 0 || m_Rows <= 0) {
        m_Columns = m_Rows = 0;
        return;
    }
    const auto dots = static_cast<std::size_t>(m_Columns) * static_cast<std::size_t>(m_Rows);
    m_Depth.assign(dots, kNothing);
    m_Picture.width = m_Columns;
    m_Picture.height = m_Rows;
    m_Picture.pixels.assign(4 * dots, 0);
    m_Picture.placement = {m_Columns / m_Dots, 0.0, 0.0, m_Rows / m_Dots, m_Left / m_Dots,
                           m_Bottom / m_Dots};
    const std::vector<std::vector<std::uint32_t>> strips = SortIntoStrips();
    for (std::size_t strip = 0; strip < strips.size(); ++strip) {
        Progress(static_cast<double>(strip), static_cast<double>(strips.size()));
        DrawStrip(static_cast<int>(strip) * kStrip, strips[strip]);
    }
    m_Items = {};
    m_Corners = {};
    m_Samples = {};
}

/// The items that each strip of rows shows: polygons, then the lines on them, then what hides both.
std::vector<std::vector<std::uint32_t>> ObjectPicture::SortIntoStrips() const {
    std::vector<std::vector<std::uint32_t>> strips(
        static_cast<std::size_t>((m_Rows + kStrip - 1) / kStrip));
    const auto strip = [](double row) {
        return WholeWithin(std::floor(row / kStrip), -1, kMostPlaces);
    };
    for (const Kind kind : {Kind::Polygon, Kind::Line, Kind::Hider})
        for (std::uint32_t i = 0; i < m_Items.size(); ++i) {
            if (m_Items[i].kind != kind) continue;
            ProgressStep();
            Range rows;
            for (std::uint32_t k = 0; k < m_Items[i].count; ++k)
                rows.Add(m_Corners[m_Items[i].first + k].y / kSamples - m_Bottom);
            const int last = std::min(static_cast<int>(strips.size()) - 1, strip(rows.high));
            for (int at = std::max(0, strip(rows.low)); at <= last; ++at)
                strips[static_cast<std::size_t>(at)].push_back(i);
        }
    return strips;
}

void ObjectPicture::DrawStrip(int firstRow, const std::vector<std::uint32_t>& items) {
    const auto width = static_cast<std::size_t>(m_Columns) * kSamples;
    m_Samples.assign(width * kStrip * kSamples, {kNothing, kNothing, {}, false});
    const int first = (m_Bottom + firstRow) * kSamples;
    for (const std::uint32_t i : items) {
        ProgressStep();
        DrawItem(m_Items[i], first, first + kStrip * kSamples - 1);
    }
    Resolve(firstRow);
}

/// Draws the rows of samples from `firstRow` to `lastRow` of the page.
void ObjectPicture::DrawItem(const Item& item, int firstRow, int lastRow) {
    const std::span<const Vec3> p(m_Corners.data() + item.first, item.count);
    Range rows;
    for (const Vec3& corner : p)
        rows.Add(corner.y);
    const auto after = [](double at) {
        return WholeWithin(std::ceil(at - 0.5), -kMostPlaces, kMostPlaces);
    };
    const int left = m_Left * kSamples;
    const double slope = std::fabs(item.depth.x) + std::fabs(item.depth.y);
    const int low = std::max(firstRow, after(rows.low));
    const int high = std::min(lastRow, after(rows.high) - 1);
    for (int row = low; row <= high; ++row) {
        const double y = row + 0.5;
        Range run;
        for (std::size_t i = 0, n = p.size(); i < n; ++i) {
            const Vec3& a = p[i];
            const Vec3& b = p[(i + 1) % n];
            if ((a.y > y) != (b.y > y)) run.Add(a.x + (y - a.y) * (b.x - a.x) / (b.y - a.y));
        }
        if (!(run.low < run.high)) continue;
        const int begin = std::max(left, after(run.low));
        const int end = std::min(left + m_Columns * kSamples, after(run.high));
        Sample* sample = m_Samples.data() +
                         static_cast<std::ptrdiff_t>(row - firstRow) * m_Columns * kSamples +
                         (begin - left);
        for (int column = begin; column < end; ++column, ++sample) {
            const double x = column + 0.5;
            const auto depth = static_cast<float>(item.depth.At(x, y));
            if (item.kind == Kind::Hider) {
                if (depth < sample->depth - static_cast<float>(kSlack)) sample->own = false;
                continue;
            }
            if (!(depth <= (item.kind == Kind::Line ? sample->behind : sample->depth))) continue;
            sample->depth = depth;
            // A line is hidden by what lies before it by more than a pixel's slope.
            sample->behind = item.kind == Kind::Line
                                 ? depth
                                 : depth + static_cast<float>(slope * m_Dots * kSamples + kSlack);
            sample->own = true;
            for (std::size_t k = 0; k < 3; ++k)
                sample->color[k] =
                    static_cast<BYTE>(WholeWithin(item.color[k].At(x, y) + 0.5, 0, 255));
        }
    }
}

/// Makes dots of the samples.
void ObjectPicture::Resolve(int firstRow) {
    constexpr int kAll = kSamples * kSamples;
    const std::ptrdiff_t width = static_cast<std::ptrdiff_t>(m_Columns) * kSamples;
    for (int row = firstRow; row < std::min(firstRow + kStrip, m_Rows); ++row)
        for (int column = 0; column < m_Columns; ++column) {
            std::array<int, 3> sum{};
            int own = 0;
            float farthest = 0.0F;
            for (int k = 0; k < kAll; ++k) {
                const Sample& sample = m_Samples[static_cast<std::size_t>(
                    ((row - firstRow) * kSamples + k / kSamples) * width +
                    std::ptrdiff_t{column} * kSamples + k % kSamples)];
                farthest = k == 0 ? sample.depth : std::max(farthest, sample.depth);
                if (!sample.own) continue;
                ++own;
                for (std::size_t c = 0; c < 3; ++c)
                    sum[c] += sample.color[c];
            }
            m_Depth[static_cast<std::size_t>(row) * static_cast<std::size_t>(m_Columns) +
                    static_cast<std::size_t>(column)] = farthest;
            if (own == 0) continue;
            BYTE* pixel = m_Picture.pixels.data() +
                          4 * (static_cast<std::ptrdiff_t>(m_Rows - 1 - row) * m_Columns + column);
            for (std::size_t c = 0; c < 3; ++c)
                pixel[c] = static_cast<BYTE>((sum[c] + own / 2) / own);
            pixel[3] = static_cast<BYTE>(own * 255 / kAll);
        }
}

/// By the farthest depth of the dots around: what lies on the object is not hidden.
bool ObjectPicture::Hides(const Vec3& place) const {
    const auto dot = [this](double at) {
        return WholeWithin(std::floor(at * m_Dots), -kMostPlaces, kMostPlaces);
    };
    const int column = dot(place.x) - m_Left;
    const int row = dot(place.y) - m_Bottom;
    if (column < 1 || row < 1 || column + 1 >= m_Columns || row + 1 >= m_Rows) return false;
    float farthest = -kNothing;
    for (int k = 0; k < 9; ++k)
        farthest = std::max(farthest, m_Depth[static_cast<std::size_t>(row + k / 3 - 1) *
                                                  static_cast<std::size_t>(m_Columns) +
                                              static_cast<std::size_t>(column + k % 3 - 1)]);
    return farthest < place.z - kSlack;
}

void ObjectPicture::CutHidden(const Vec3& a, const Vec3& b, std::vector<SegmentPart>& parts) const {
    if (m_Columns == 0) return;
    std::vector<SegmentPart> shown;
    for (const SegmentPart& part : parts) {
        const double length = (part.to - part.from) * std::hypot(b.x - a.x, b.y - a.y);
        const int steps = WholeWithin(std::ceil(length * m_Dots), 1, kMostPlaces);
        bool open = false;
        for (int i = 0; i < steps; ++i) {
            const double from = part.from + (part.to - part.from) * i / steps;
            const double to = part.from + (part.to - part.from) * (i + 1) / steps;
            const double t = (from + to) / 2.0;
            const bool hidden =
                Hides({a.x + t * (b.x - a.x), a.y + t * (b.y - a.y), a.z + t * (b.z - a.z)});
            if (!hidden && open)
                shown.back().to = to;
            else if (!hidden)
                shown.push_back({from, to});
            open = !hidden;
        }
    }
    parts = std::move(shown);
}

bool ObjectPicture::HidesAll(std::span<const Vec3> corners) const {
    Range x, y;
    for (const Vec3& p : corners) {
        x.Add(p.x);
        y.Add(p.y);
    }
    const Vec3 normal = Cross(corners[1] - corners[0], corners[2] - corners[0]);
    if (normal.z == 0.0) return false;
    const double step = 1.0 / m_Dots;
    for (double py = y.low; py <= y.high + step; py += step)
        for (double px = x.low; px <= x.high + step; px += step) {
            const double z =
                corners[0].z -
                (normal.x * (px - corners[0].x) + normal.y * (py - corners[0].y)) / normal.z;
            if (!Hides({px, py, z})) return false;
        }
    return true;
}

}  // namespace varnel::detail
