#include "varnel/render/detail/mesh_normals.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "varnel/foundation/detail/progress.h"

namespace varnel::detail {
namespace {

double CosineOf(double degrees) {
    return std::cos(std::clamp(degrees, 0.0, 180.0) * std::numbers::pi / 180.0);
}

double LengthOf(const Vec3& v) {
    return std::sqrt(Dot(v, v));
}

Vec3 operator+(const Vec3& a, const Vec3& b) {
    return {a.x + b.x, a.y + b.y, a.z + b.z};
}

/// The area vector of a polygon about its first corner; 0 with a corner that is no data. It points
/// where the normal of PolyFillAbs3D does.
Vec3 AreaOf(const std::vector<Vec3>& places, const int* numbers, int n) {
    Vec3 sum{0.0, 0.0, 0.0};
    const auto place = [&](int i) { return places[static_cast<std::size_t>(numbers[i])]; };
    for (int i = 1; i + 1 < n; ++i)
        sum = sum + Cross(place(i) - place(0), place(i + 1) - place(0));
    return (sum.x + sum.y + sum.z) * 0.0 == 0.0 ? sum : Vec3{0.0, 0.0, 0.0};
}

template <class Visit>
void ForEachPolygon(const MeshSource& mesh, Visit&& visit) {
    for (int k = 0; k < mesh.NumPolygons(); ++k) {
        ProgressStep();
        int n = 0;
        const int* const numbers = mesh.Polygon(k, n);
        visit(k, numbers, n);
    }
}

}  // namespace

MeshNormals::MeshNormals(const MeshSource& mesh, const Vec3& scale, double crease) {
    AddAreas(mesh, scale);
    if (FindSharpPoints(mesh, crease)) SplitSharpPoints(mesh, crease);
    m_Areas = {};
    // A normal is scaled the other way than the places.
    const auto toMesh = [&scale](Direction& d) {
        ProgressStep();
        d = ToDirection(Normalized({d.x * scale.x, d.y * scale.y, d.z * scale.z}));
    };
    std::for_each(m_Points.begin(), m_Points.end(), toMesh);
    for (Corner& corner : m_Corners)
        toMesh(corner.normal);
}

/// The area vectors of all polygons, and at the points the directions of their sums.
void MeshNormals::AddAreas(const MeshSource& mesh, const Vec3& scale) {
    std::vector<Vec3> places;
    places.reserve(static_cast<std::size_t>(mesh.NumPoints()));
    for (int i = 0; i < mesh.NumPoints(); ++i) {
        ProgressStep();
        point3Dtype scratch;
        const point3Dtype& p = *mesh.Points(i, 1, &scratch);
        places.push_back({p.x * scale.x, p.y * scale.y, p.z * scale.z});
    }
    Progress(0.0, 1.0);
    std::vector<Vec3> sums(places.size(), Vec3{0.0, 0.0, 0.0});
    m_Areas.reserve(static_cast<std::size_t>(mesh.NumPolygons()));
    ForEachPolygon(mesh, [&](int, const int* numbers, int n) {
        const Vec3 area = AreaOf(places, numbers, n);
        m_Areas.push_back(ToDirection(area));
        for (int i = 0; i < n; ++i) {
            Vec3& sum = sums[static_cast<std::size_t>(numbers[i])];
            sum = sum + area;
        }
    });
    m_Points.reserve(sums.size());
    for (const Vec3& sum : sums) {
        ProgressStep();
        m_Points.push_back(ToDirection(Normalized(sum)));
    }
}

/// Where all polygons are within half the crease angle of the mean, they are within the whole of
/// each other: at such points, nearly all of most meshes, the mean holds for all.
bool MeshNormals::FindSharpPoints(const MeshSource& mesh, double crease) {
    const double half = CosineOf(crease / 2);
    ForEachPolygon(mesh, [&](int k, const int* numbers, int n) {
        const Vec3 area = ToVec3(m_Areas[static_cast<std::size_t>(k)]);
        const double least = half * LengthOf(area);
        for (int i = 0; i < n; ++i) {
            const auto point = static_cast<std::size_t>(numbers[i]);
            if (Dot(area, ToVec3(m_Points[point])) >= least) continue;
            m_Sharp.resize(m_Points.size());
            m_Sharp[point] = 1;
        }
    });
    return !m_Sharp.empty();
}

void MeshNormals::SplitSharpPoints(const MeshSource& mesh, double crease) {
    // The polygons at each sharp point, one list behind the other.
    std::vector<std::uint32_t> ends(m_Points.size() + 1, 0);
    const auto forEachSharp = [&](auto&& visit) {
        ForEachPolygon(mesh, [&](int k, const int* numbers, int n) {
            for (int i = 0; i < n; ++i)
                if (m_Sharp[static_cast<std::size_t>(numbers[i])] != 0) visit(k, numbers[i]);
        });
    };
    forEachSharp([&](int, int point) { ++ends[static_cast<std::size_t>(point) + 1]; });
    for (std::size_t i = 1; i < ends.size(); ++i)
        ends[i] += ends[i - 1];
    std::vector<int> sharing(ends.back());
    std::vector<std::uint32_t> next(ends.begin(), ends.end() - 1);
    forEachSharp([&](int k, int point) { sharing[next[static_cast<std::size_t>(point)]++] = k; });

    const double least = CosineOf(crease);
    m_Corners.reserve(sharing.size());
    forEachSharp([&](int k, int point) {
        const auto at = static_cast<std::size_t>(point);
        const Vec3 own = ToVec3(m_Areas[static_cast<std::size_t>(k)]);
        Vec3 sum{0.0, 0.0, 0.0};
        for (std::uint32_t i = ends[at]; i < ends[at + 1]; ++i) {
            const Vec3 other = ToVec3(m_Areas[static_cast<std::size_t>(sharing[i])]);
            if (Dot(own, other) >= least * LengthOf(own) * LengthOf(other)) sum = sum + other;
        }
        m_Corners.push_back({k, point, ToDirection(Normalized(sum))});
    });
}

Vec3 MeshNormals::AtCorner(int polygon, int point) const {
    auto corner = std::lower_bound(m_Corners.begin(), m_Corners.end(), polygon,
                                   [](const Corner& c, int k) { return c.polygon < k; });
    while (corner != m_Corners.end() && corner->polygon == polygon && corner->point != point)
        ++corner;
    return corner != m_Corners.end() ? ToVec3(corner->normal) : Vec3{0.0, 0.0, 0.0};
}

}  // namespace varnel::detail
