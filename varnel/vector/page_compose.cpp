// PageSink: what shows, put onto a canvas.
#include <algorithm>
#include <cmath>
#include <map>
#include <set>
#include <utility>

#include "varnel/foundation/detail/characters.h"
#include "varnel/foundation/detail/progress.h"
#include "varnel/vector/detail/areas.h"
#include "varnel/vector/detail/line_chains.h"
#include "varnel/vector/detail/page_sink.h"
#include "varnel/vector/detail/shades.h"

namespace varnel::detail {
namespace {

/// Texts of which less than this share is hidden are drawn whole.
constexpr double kHardlyHidden = 0.005;
/// Up to so many triangles of a page, of some 100 bytes each, are told as they are, however slight
/// their gradients.
constexpr std::size_t kMostMeshes = 1500;
/// Colours that run through no more steps are told by pieces of one colour.
constexpr double kFewSteps = 3.0;

double SizeOf(const Area& area) {
    double sum = 0.0;
    for (const Ring& ring : area)
        for (std::size_t i = 0; i < ring.size(); ++i) {
            const GridPoint& a = ring[i];
            const GridPoint& b = ring[(i + 1) % ring.size()];
            sum += static_cast<double>(a.x) * b.y - static_cast<double>(b.x) * a.y;
        }
    return std::fabs(sum) / 2.0 / (kGridPerPixel * kGridPerPixel);
}

double SizeOf(const std::array<Vec3, 4>& p) {
    double sum = 0.0;
    for (std::size_t i = 0; i < 4; ++i) {
        const Vec3& a = p[i];
        const Vec3& b = p[(i + 1) % 4];
        sum += a.x * b.y - b.x * a.y;
    }
    return std::fabs(sum) / 2.0;
}

}  // namespace

bool PageSink::IsLarge(std::uint32_t object) const {
    return m_Options.pictureLimit > 0 && object > 0 &&
           m_PolygonCounts[object] >= static_cast<std::size_t>(m_Options.pictureLimit);
}

std::vector<std::size_t> PageSink::LargeObjects() const {
    std::vector<std::size_t> counts;
    for (std::uint32_t object = 1; object < m_PolygonCounts.size(); ++object)
        if (IsLarge(object)) counts.push_back(m_PolygonCounts[object]);
    return counts;
}

/// The picture of an object, without what all others hide of it.
ObjectPicture PageSink::DrawLarge(std::uint32_t object) const {
    ObjectPicture picture(m_Width, m_Height, m_Options.dotsPerPixel);
    for (const Fill& fill : m_Fills) {
        ProgressStep();
        const std::span<const Vec3> corners(m_Places.data() + fill.first, fill.count);
        if (fill.object != object)
            picture.AddHider(corners);
        else if (fill.smooth >= 0 && fill.count == 3)
            picture.AddTriangle(corners, m_Smooth[static_cast<std::size_t>(fill.smooth)].colors);
        else
            picture.AddPolygon(corners, fill.color);
    }
    for (const Segment& s : m_Segments) {
        ProgressStep();
        if (s.object == object) picture.AddLine(s.a, s.b, s.width, s.color);
    }
    picture.Draw();
    return picture;
}

double PageSink::Visibility::HiddenShare(const Text& text) const {
    constexpr int kAlong = 16;
    constexpr int kUp = 4;
    int hidden = 0;
    for (int i = 0; i < kAlong * kUp; ++i) {
        const double u = (i % kAlong + 0.5) / kAlong;
        const int row = i / kAlong;
        const double v = (row + 0.5) / kUp;
        const auto& [a, right, across, up] = text.outline;
        const Vec3 place{a.x + u * (right.x - a.x) + v * (up.x - a.x),
                         a.y + u * (right.y - a.y) + v * (up.y - a.y),
                         a.z + u * (right.z - a.z) + v * (up.z - a.z)};
        if (std::any_of(pictures.begin(), pictures.end(),
                        [&place](const ObjectPicture& p) { return p.Hides(place); }))
            ++hidden;
    }
    return static_cast<double>(hidden) / (kAlong * kUp);
}

/// Draws the pictures of large objects and takes what is hidden from all others.
void PageSink::FindVisible(Visibility& visibility) const {
    const ProgressPart part(0.0, 0.6);
    Hiding& hiding = visibility.hiding;
    for (std::uint32_t object = 1; object < m_PolygonCounts.size(); ++object)
        if (IsLarge(object)) visibility.pictures.push_back(DrawLarge(object));
    const auto hidesAll = [](const ObjectPicture& p, std::span<const Vec3> corners) {
        return p.HidesAll(corners);
    };
    for (const Fill& fill : m_Fills) {
        ProgressStep();
        const std::span<const Vec3> corners(m_Places.data() + fill.first, fill.count);
        const bool left = IsLarge(fill.object) ||
                          std::any_of(visibility.pictures.begin(), visibility.pictures.end(),
                                      [&](const ObjectPicture& p) { return hidesAll(p, corners); });
        hiding.AddFacet(left ? std::span<const Vec3>() : corners, fill.beneathLines);
    }
    hiding.Resolve();
}

void PageSink::Compose(PageCanvas& canvas) const {
    Visibility visibility{Hiding(m_Width, m_Height), {}};
    FindVisible(visibility);
    Hiding& hiding = visibility.hiding;
    std::vector<OrderedLine> lines;
    std::vector<Layer> layers;
    {
        const ProgressPart part(0.6, 0.8);
        lines = VisibleLines(visibility);
        layers = FindLayers(hiding, lines);
    }
    const ProgressPart part(0.8, 1.0);
    // Pictures of large objects cover what is behind them, and are cut where something is before
    // them: they come between the polygons and the lines, which are cut by both.
    const bool large = !visibility.pictures.empty();
    for (const Layer& layer : layers) {
        ComposeFills(canvas, hiding, layer.fills);
        ComposeSmooth(canvas, hiding, layer.fills);
        ComposePictures(canvas, hiding, layer.fills);
        if (large) continue;
        ComposeVeils(canvas, hiding, layer.veils);
        ComposeLines(canvas, lines, layer.lines);
    }
    // And so do texts: of one that is cut, the larger part counts.
    std::vector<OrderedLine> drawn;
    const auto composeTexts = [&](double from, double to) {
        for (const Text& text : m_Texts) {
            const double share = large ? visibility.HiddenShare(text) : 0.0;
            if (share < from || share >= to) continue;
            ComposeText(canvas, hiding, text);
            ComposeBefore(canvas, text, drawn);
        }
    };
    if (large) {
        composeTexts(0.5, 1.0);
        for (const ObjectPicture& picture : visibility.pictures)
            if (picture.Picture().width > 0) canvas.Picture(picture.Picture());
        for (const Layer& layer : layers) {
            ComposeVeils(canvas, hiding, layer.veils);
            ComposeLines(canvas, lines, layer.lines);
        }
    }
    for (const Layer& layer : layers)
        for (const std::uint32_t i : layer.lines)
            drawn.push_back(lines[i]);
    composeTexts(0.0, 0.5);
}

/// What can be seen through, from the back to the front. Layers of depth are drawn one after the
/// other, and so are their veils.
std::vector<Veil> PageSink::OrderedVeils() const {
    std::vector<Veil> all, layer;
    const auto depthOf = [this](const Fill& veil) {
        return std::round(m_Places[veil.first].z / kLayerDepth) * kLayerDepth;
    };
    for (std::uint32_t i = 0; i < m_Veils.size(); ++i) {
        const auto first = m_Places.begin() + m_Veils[i].first;
        layer.push_back({{first, first + m_Veils[i].count}, i});
        const double depth = depthOf(m_Veils[i]);
        if (i + 1 < m_Veils.size() && depthOf(m_Veils[i + 1]) == depth) continue;
        for (Veil& veil : OrderVeils(std::exchange(layer, {}), m_Width, m_Height, depth))
            all.push_back(std::move(veil));
    }
    return all;
}

/// What can be seen through comes in layers of its own over all others, since polygons that hide
/// parts of it are already cut out of it. Lines are cut where they leave or pass through it, and
/// each piece is drawn after the last of what it lies before.
std::vector<PageSink::Layer> PageSink::FindLayers(Hiding& hiding,
                                                  std::vector<OrderedLine>& lines) const {
    std::vector<Veil> veils = OrderedVeils();
    PlaceAmongVeils(lines, veils);
    const std::vector<long> starts = LayerStarts(hiding, lines);
    const auto layerOf = [&starts](long slice) {
        return std::upper_bound(starts.begin(), starts.end(), slice) - starts.begin();
    };
    std::vector<Layer> layers(starts.size() + 1);
    for (std::uint32_t i = 0; i < m_Fills.size(); ++i)
        if (!hiding.Visible(i).empty())
            layers[static_cast<std::size_t>(layerOf(SliceOf(m_Fills[i])))].fills.push_back(i);

    std::set<int> ends;  // the last veils of the layers
    for (const OrderedLine& line : lines)
        if (line.layer >= 0) ends.insert(line.layer);
    const auto layerOfVeil = [&, first = layers.size()](int veil) {
        return first +
               static_cast<std::size_t>(std::distance(ends.begin(), ends.lower_bound(veil)));
    };
    for (OrderedLine& line : lines)
        line.layer = line.layer >= 0 ? static_cast<int>(layerOfVeil(line.layer))
                                     : static_cast<int>(layerOf(SliceOf(line)));
    layers.resize(layers.size() + ends.size() + 1);
    for (std::size_t i = 0; i < veils.size(); ++i)
        layers[layerOfVeil(static_cast<int>(i))].veils.push_back(std::move(veils[i]));
    for (const std::uint32_t i : OrderLines(lines))
        layers[static_cast<std::size_t>(lines[i].layer)].lines.push_back(i);
    return layers;
}

/// What can be seen through, over what stands behind it. Pieces of one polygon that follow each
/// other go together.
void PageSink::ComposeVeils(PageCanvas& canvas, Hiding& hiding,
                            const std::vector<Veil>& veils) const {
    std::vector<Area> pieces;
    for (std::size_t i = 0; i < veils.size(); ++i) {
        const std::uint32_t number = veils[i].number;
        pieces.push_back(hiding.VisibleOf(veils[i].corners));
        if (i + 1 < veils.size() && veils[i + 1].number == number) continue;
        const Area visible = pieces.size() == 1 ? pieces[0] : Union(pieces);
        pieces.clear();
        if (IsPicture(number, true))
            PutPictures(canvas, number, true, visible);
        else
            canvas.Fill(visible, m_Veils[number].color, false);
    }
}

bool PageSink::IsPicture(std::uint32_t fill, bool veil) const {
    return std::any_of(m_Pictures.begin(), m_Pictures.end(), [&](const Picture& picture) {
        return picture.fill == fill && picture.veil == veil;
    });
}

/// The pictures on a polygon, cut to what shows of it.
void PageSink::PutPictures(PageCanvas& canvas, std::uint32_t fill, bool veil,
                           const Area& visible) const {
    if (visible.empty()) return;
    canvas.BeginClip(visible);
    for (const Picture& picture : m_Pictures)
        if (picture.fill == fill && picture.veil == veil) canvas.Picture(picture.picture);
    canvas.EndClip();
}

void PageSink::ComposeFills(PageCanvas& canvas, const Hiding& hiding,
                            const std::vector<std::uint32_t>& fills) const {
    std::map<std::uint32_t, std::vector<Area>> byColor;
    std::vector<std::pair<std::uint32_t, RGBDType>> order;
    for (const std::uint32_t i : fills) {
        ProgressStep();
        if (IsPicture(i, false) || m_Fills[i].smooth >= 0) continue;
        const std::uint32_t key = ColorKey(m_Fills[i].color);
        std::vector<Area>& areas = byColor[key];
        if (areas.empty()) order.emplace_back(key, m_Fills[i].color);
        areas.push_back(hiding.Visible(i));
    }
    for (const auto& [key, color] : order)
        canvas.Fill(Union(byColor[key]), color, true);
}

/// All go together: of those that show in part, the triangles that their parts consist of. Only
/// parts in several pieces are cut out by themselves.
void PageSink::ComposeSmooth(PageCanvas& canvas, const Hiding& hiding,
                             const std::vector<std::uint32_t>& fills) const {
    std::vector<SmoothTriangle> shown;
    for (const std::uint32_t i : fills) {
        if (m_Fills[i].smooth < 0) continue;
        ProgressStep();
        const SmoothTriangle& triangle = m_Smooth[static_cast<std::size_t>(m_Fills[i].smooth)];
        const Area& visible = hiding.Visible(i);
        const Area all = {{triangle.corners.begin(), triangle.corners.end()}};
        if (SizeOf(visible) >= (1.0 - kHardlyHidden) * SizeOf(all)) {
            shown.push_back(triangle);
        } else if (visible.size() > 1 || !CutTriangles(triangle, visible.front(), shown)) {
            canvas.BeginClip(visible);
            canvas.FillSmooth({triangle});
            canvas.EndClip();
        }
    }
    // What hardly has a gradient is in few pieces, where gradients are long to tell.
    const bool meshes = canvas.HasMeshes() && m_Smooth.size() <= kMostMeshes;
    ShadePieces pieces;
    std::erase_if(shown, [&](const SmoothTriangle& triangle) {
        if (meshes) return false;
        const auto gradient = FindGradient(triangle);
        return gradient && CutShades(triangle, *gradient, kFewSteps, pieces);
    });
    for (const auto& [key, shade] : pieces.shades)
        canvas.Fill(Union(shade.areas), shade.color, true);
    canvas.FillSmooth(shown);
}

void PageSink::ComposePictures(PageCanvas& canvas, const Hiding& hiding,
                               const std::vector<std::uint32_t>& fills) const {
    for (const std::uint32_t i : fills)
        if (IsPicture(i, false)) PutPictures(canvas, i, false, hiding.Visible(i));
}

void PageSink::ComposeText(PageCanvas& canvas, Hiding& hiding, const Text& text) const {
    const Area visible = hiding.VisibleOf(text.outline);
    if (visible.empty()) return;
    const bool cut = SizeOf(visible) < (1.0 - kHardlyHidden) * SizeOf(text.outline);
    if (cut) canvas.BeginClip(visible);
    if (m_Options.textAsPaths) {
        const Area letters = LetterAreas(text);
        if (text.text.halo > 0.0) {
            const double em = std::hypot(text.text.placement[0], text.text.placement[1]);
            std::vector<Ring> edges = letters;
            for (Ring& edge : edges)
                if (!edge.empty()) edge.push_back(GridPoint(edge.front()));
            canvas.Stroke(edges, {text.text.haloColor, 2.0 * text.text.halo * em, {}});
        }
        canvas.Fill(letters, text.text.color, false);
    } else {
        canvas.Text(text.text);
        if (text.underlined) canvas.Fill({Bar(text)}, text.text.color, false);
    }
    if (cut) canvas.EndClip();
}

GridPoint PageSink::OnPage(const Text& text, double x, double y) {
    const std::array<double, 6>& m = text.text.placement;
    return ToGrid({m[0] * x + m[2] * y + m[4], m[1] * x + m[3] * y + m[5], 0.0});
}

/// The bar under a text.
Ring PageSink::Bar(const Text& text) {
    const auto [low, high] = text.face->UnderlineEdges();
    return {OnPage(text, 0.0, low), OnPage(text, text.width, low), OnPage(text, text.width, high),
            OnPage(text, 0.0, high)};
}

/// The letters, with their underlines.
Area PageSink::LetterAreas(const Text& text) {
    std::vector<Area> letters;
    std::size_t character = 0;
    ForEachCharacter(text.text.text, [&](char32_t c) {
        const double x = text.text.places[character++];
        Area& letter = letters.emplace_back();
        for (const auto& contour : text.face->Outline(c).contours) {
            Ring& ring = letter.emplace_back();
            for (const POINTFLOAT& p : contour)
                ring.push_back(
                    OnPage(text, x + static_cast<double>(p.x), static_cast<double>(p.y)));
        }
    });
    return Union(letters);
}

}  // namespace varnel::detail
