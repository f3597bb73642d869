#include "varnel/surface/filled_contours.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>
#include <unordered_map>
#include <vector>

#include "varnel/foundation/detail/progress.h"
#include "varnel/foundation/detail/raise.h"
#include "varnel/surface/detail/polygon_reader.h"
#include "varnel/transform/transform.h"

namespace varnel {
namespace {

constexpr detail::Origin kOrigin{ERR3DCLASS_CONTOUR3D, "FilledContours"};

/// The points of the bands: those of the surface, and those where levels cross its edges, each once
/// however many polygons have it. In the coordinates in which the surface is drawn.
class BandPoints {
 public:
    BandPoints(const CPolysurface& surface, std::span<const double> levels,
               const CTransform3D* transform) {
        const auto count = static_cast<std::size_t>(surface.GetPSNumPoints());
        CopyInSteps(surface.GetPSPoints(), count);
        m_Levels.assign(levels.begin(), levels.end());
        if (transform != nullptr) {
            transform->C3DATWS(m_Points.data(), static_cast<int>(count));
            for (double& level : m_Levels)
                level = transform->CVTWS(2, level);
        }
        m_Bands.reserve(m_Points.capacity());
        m_Cuts.reserve(count / 4);
        for (const point3Dtype& p : m_Points) {
            detail::ProgressStep();
            m_Bands.push_back(BandOf(p));
        }
    }

    /// The number of levels that are not above a point, -1 for one that is no data.
    int Band(int point) const { return m_Bands[static_cast<std::size_t>(point)]; }
    const point3Dtype& At(int point) const { return m_Points[static_cast<std::size_t>(point)]; }
    int GetCount() const { return static_cast<int>(m_Points.size()); }

    int Add(const point3Dtype& p) {
        m_Points.push_back(p);
        m_Bands.push_back(BandOf(p));
        return GetCount() - 1;
    }

    /// Where a level crosses an edge; the end of the edge that lies on it, where one does.
    int Cross(int a, int b, int level) {
        const double z = m_Levels[static_cast<std::size_t>(level)];
        if (At(a).z == z) return a;
        if (At(b).z == z) return b;
        if (a > b) std::swap(a, b);
        const Key key{static_cast<std::uint64_t>(a) << 32 | static_cast<std::uint32_t>(b), level};
        const auto [found, isNew] = m_Cuts.try_emplace(key, GetCount());
        if (!isNew) return found->second;
        const point3Dtype p = At(a);
        const point3Dtype q = At(b);
        // Halves, because the difference of two finite numbers can be infinite.
        const double t = (z / 2 - p.z / 2) / (q.z / 2 - p.z / 2);
        const double s = 1.0 - t;
        m_Points.push_back({p.x * s + q.x * t, p.y * s + q.y * t, z, p.w * s + q.w * t});
        m_Bands.push_back(level + 1);
        return found->second;
    }

    /// Forgets where edges were cut. In steps: there can be millions, and the host is told on the
    /// way.
    void EndCutting() {
        while (!m_Cuts.empty()) {
            m_Cuts.erase(m_Cuts.begin());
            detail::ProgressStep();
        }
    }

    /// All points in data coordinates; those of the surface are the very ones that it has.
    void CopyTo(CPolysurface& bands, const CPolysurface& surface, const CTransform3D* transform,
                std::span<const double> levels) const {
        const int own = surface.GetPSNumPoints();
        bands.SetPolysurfacePoints(surface.GetPSPoints(), 0, own);
        detail::Progress(0, 1);
        for (int i = own; i < GetCount(); ++i) {
            detail::ProgressStep();
            point3Dtype p = At(i);
            if (transform != nullptr) {
                transform->CPFWS(p, At(i));
                const auto level = std::find(m_Levels.begin(), m_Levels.end(), At(i).z);
                if (level != m_Levels.end())
                    p.z = levels[static_cast<std::size_t>(level - m_Levels.begin())];
            }
            bands.SetOnePolysurfacePoint(i, p);
        }
    }

 private:
    struct Key {
        std::uint64_t edge;
        int level;
        bool operator==(const Key&) const = default;
    };
    struct Hash {
        // Multiplicative hashing: the upper bits of the product depend on all bits of the key.
        std::size_t operator()(const Key& key) const {
            const auto level = static_cast<std::uint64_t>(key.level);
            return static_cast<std::size_t>(
                (key.edge + level * 0x632BE59BD9B4E019U) * 0x9E3779B97F4A7C15U >> 16);
        }
    };

    int BandOf(const point3Dtype& p) const {
        if (!std::isfinite(p.x) || !std::isfinite(p.y) || !std::isfinite(p.z)) return -1;
        return static_cast<int>(std::upper_bound(m_Levels.begin(), m_Levels.end(), p.z) -
                                m_Levels.begin());
    }

    void CopyInSteps(const point3Dtype* points, std::size_t count) {
        constexpr std::size_t kStep = 1U << 16;
        m_Points.reserve(count + count / 4);  // usual for some twenty levels
        for (std::size_t i = 0; i < count; i += kStep) {
            m_Points.insert(m_Points.end(), points + i, points + std::min(i + kStep, count));
            detail::Progress(0, 1);
        }
    }

    std::vector<point3Dtype> m_Points;
    std::vector<int> m_Bands;
    std::vector<double> m_Levels;
    std::unordered_map<Key, int, Hash> m_Cuts;
};

/// Cuts polygons into bands.
class BandCutter {
 public:
    /// Room for `polygons` and some that are cut: growing would copy what there is in one step.
    BandCutter(BandPoints& points, int polygons) : m_Points(points) {
        const auto pieces = static_cast<std::size_t>(polygons) * 5 / 4;
        m_Pieces.reserve(pieces);
        m_Indices.reserve(pieces * 5);
    }

    struct Piece {
        std::size_t first;
        int count;
        int band;
    };

    const std::vector<Piece>& GetPieces() const { return m_Pieces; }
    const int* GetIndices(const Piece& piece) const { return m_Indices.data() + piece.first; }

    void Cut(std::span<const int> polygon) {
        int low = std::numeric_limits<int>::max();
        int high = -1;
        for (const int point : polygon) {
            const int band = m_Points.Band(point);
            if (band < 0) return;
            low = std::min(low, band);
            high = std::max(high, band);
        }
        if (low == high) return AddPiece(polygon, low);
        if (RisesOnce(polygon)) {
            for (int band = low; band <= high; ++band)
                AddBand(polygon, band);
            return;
        }
        // Where z rises more than once around a polygon a band can be in several parts: it is cut
        // into triangles about its middle.
        const int middle = m_Points.Add(Middle(polygon));
        for (std::size_t k = 0; k < polygon.size(); ++k) {
            const int triangle[3] = {polygon[k], polygon[(k + 1) % polygon.size()], middle};
            Cut(triangle);
        }
    }

 private:
    bool RisesOnce(std::span<const int> polygon) const {
        int turns = 0;
        int last = 0;
        for (std::size_t k = 0; k < 2 * polygon.size(); ++k) {
            const double here = m_Points.At(polygon[k % polygon.size()]).z;
            const double next = m_Points.At(polygon[(k + 1) % polygon.size()]).z;
            const int way = (next > here) - (next < here);
            if (way == 0) continue;
            // Only the second time around is counted: the first finds the way that it starts on.
            if (k >= polygon.size() && way != last) ++turns;
            last = way;
        }
        return turns <= 2;
    }

    /// The mean of the points; of quadrilaterals the saddle of the bilinear surface through them
    /// gives z (G. M. Nielson and B. Hamann, "The asymptotic decider", 1991), so that contour lines
    /// and bands agree on what hangs together.
    point3Dtype Middle(std::span<const int> polygon) const {
        point3Dtype mean;
        for (const int point : polygon) {
            const point3Dtype& p = m_Points.At(point);
            const auto n = static_cast<double>(polygon.size());
            mean = {mean.x + p.x / n, mean.y + p.y / n, mean.z + p.z / n, mean.w + p.w / n};
        }
        if (polygon.size() != 4) return mean;
        const auto z = [&](std::size_t k) { return m_Points.At(polygon[k]).z - mean.z; };
        const double curve = z(0) + z(2) - z(1) - z(3);
        const double saddle = mean.z + (z(0) * z(2) - z(1) * z(3)) / curve;
        if (std::isfinite(saddle)) mean.z = saddle;
        return mean;
    }

    void AddBand(std::span<const int> polygon, int band) {
        m_Ring.clear();
        for (std::size_t k = 0; k < polygon.size(); ++k) {
            const int a = polygon[k];
            const int b = polygon[(k + 1) % polygon.size()];
            const int from = m_Points.Band(a);
            const int to = m_Points.Band(b);
            if (from == band) Append(a);
            if (from < band && to >= band) Append(m_Points.Cross(a, b, band - 1));
            if (from <= band && to > band) Append(m_Points.Cross(a, b, band));
            if (from > band && to <= band) Append(m_Points.Cross(a, b, band));
            if (from >= band && to < band) Append(m_Points.Cross(a, b, band - 1));
        }
        while (m_Ring.size() > 1 && m_Ring.front() == m_Ring.back())
            m_Ring.pop_back();
        AddPiece(m_Ring, band);
    }

    void Append(int point) {
        if (m_Ring.empty() || m_Ring.back() != point) m_Ring.push_back(point);
    }

    void AddPiece(std::span<const int> ring, int band) {
        if (ring.size() < 3) return;
        m_Pieces.push_back({m_Indices.size(), static_cast<int>(ring.size()), band});
        m_Indices.insert(m_Indices.end(), ring.begin(), ring.end());
    }

    BandPoints& m_Points;
    std::vector<int> m_Ring;
    std::vector<int> m_Indices;
    std::vector<Piece> m_Pieces;
};

void Check(std::span<const double> levels, std::size_t numColors) {
    const auto refuse = [](const CString& why) {
        detail::Raise(ERR3D_PARAMETER, kOrigin.cls, kOrigin.operation, why);
    };
    if (levels.empty()) refuse("there is no level");
    for (std::size_t i = 0; i < levels.size(); ++i)
        if (!std::isfinite(levels[i]) || (i > 0 && !(levels[i - 1] < levels[i])))
            refuse(
                detail::Say("level ", i, ", ", levels[i], ", does not lie above the one before"));
    if (numColors + 1 != levels.size() && numColors != levels.size() + 1)
        refuse(detail::Say(numColors, " colours for ", levels.size(), " levels"));
}

CPolysurface Fill(const CPolysurface& surface, std::span<const double> levels,
                  std::span<const RGBDType> colors, const CTransform3D* transform) {
    BandPoints points(surface, levels, transform);
    BandCutter cutter(points, surface.GetPSNumPolygons());
    detail::PolygonReader reader(surface);
    for (int i = 0; i < surface.GetPSNumPolygons(); ++i) {
        if (i % 256 == 0) detail::Progress(0.5 * i, surface.GetPSNumPolygons());
        int n = 0;
        const int* const polygon = reader.Read(i, n);
        const int count = surface.GetPSNumPoints();
        const bool own = std::all_of(polygon, polygon + n, [&](int p) { return p < count; });
        if (n >= 3 && own) cutter.Cut({polygon, static_cast<std::size_t>(n)});
    }
    points.EndCutting();

    // Without colours for what lies outside, the bands count from the first level on.
    const bool open = colors.size() < levels.size();
    const int lowest = open ? 1 : 0;
    const auto highest = static_cast<int>(levels.size()) - (open ? 1 : 0);
    int largest = 3;
    for (const BandCutter::Piece& piece : cutter.GetPieces())
        largest = std::max(largest, piece.count);
    CPolysurface bands(points.GetCount(), static_cast<int>(cutter.GetPieces().size()), largest);
    points.CopyTo(bands, surface, transform, levels);
    for (const BandCutter::Piece& piece : cutter.GetPieces()) {
        detail::ProgressStep();
        if (piece.band < lowest || piece.band > highest) continue;
        const RGBDType& color = colors[static_cast<std::size_t>(piece.band - lowest)];
        bands.AddPolysurfacePolygon(bands.GetPSNumPolygons(), cutter.GetIndices(piece), piece.count,
                                    color, color);
    }
    return bands;
}

}  // namespace

CPolysurface FilledContours(const CPolysurface& surface, std::span<const double> levels,
                            std::span<const RGBDType> colors, const CTransform3D* transform) {
    Check(levels, colors.size());
    return detail::AllocateOrRaise(ERR3D_ARRAY_NEW, kOrigin,
                                   [&] { return Fill(surface, levels, colors, transform); });
}

}  // namespace varnel
