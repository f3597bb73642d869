#include "varnel/render/aux_shapes.h"

#include <GL/glu.h>

#include <array>
#include <cmath>
#include <memory>
#include <numbers>

#include "varnel/foundation/points.h"

namespace varnel {

namespace {

enum class Style { kWire, kSolid };

// --- Quadrics --------------------------------------------------------------------------------

struct QuadricDeleter {
    void operator()(GLUquadric* quadric) const { gluDeleteQuadric(quadric); }
};

/// Hands `draw` a quadric with smooth normals; draws nothing without memory for one.
template <class Draw>
void WithQuadric(Style style, Draw&& draw) {
    const std::unique_ptr<GLUquadric, QuadricDeleter> quadric(gluNewQuadric());
    if (!quadric) return;
    gluQuadricDrawStyle(quadric.get(), style == Style::kWire ? GLU_LINE : GLU_FILL);
    draw(quadric.get());
}

void Sphere(Style style, double radius) {
    WithQuadric(style, [&](GLUquadric* q) { gluSphere(q, std::abs(radius), 16, 16); });
}

void Cylinder(Style style, double radius, double height) {
    glPushMatrix();
    glRotated(90.0, 1.0, 0.0, 0.0);
    glTranslated(0.0, 0.0, -1.0);
    const double r = std::abs(radius);
    WithQuadric(style, [&](GLUquadric* q) { gluCylinder(q, r, r, std::abs(height), 12, 2); });
    glPopMatrix();
}

void Cone(Style style, double base, double height) {
    WithQuadric(style, [&](GLUquadric* q) {
        gluCylinder(q, std::abs(base), 0.0, std::abs(height), 15, 10);
    });
}

// --- Polyhedra -------------------------------------------------------------------------------

using Corner = std::array<double, 3>;

/// Draws faces of N corners each, given as indices counter-clockwise seen from outside. The normal
/// comes from the corners before they are scaled, so that no size is too small for it.
template <std::size_t N, std::size_t Corners, std::size_t Faces>
void Polyhedron(Style style, const std::array<Corner, Corners>& corners,
                const std::array<std::array<int, N>, Faces>& faces, const Corner& scale) {
    const auto point = [&](int index) {
        const Corner& c = corners[static_cast<std::size_t>(index)];
        point3Dtype p;
        AssignPoint3D(p, c[0], c[1], c[2]);
        return p;
    };
    const GLenum solid = N == 3 ? GL_TRIANGLES : N == 4 ? GL_QUADS : GL_TRIANGLE_FAN;
    for (const auto& face : faces) {
        point3Dtype normal;
        CalcNormal(point(face[0]), point(face[1]), point(face[2]), normal);
        const double length = std::hypot(normal.x, normal.y, normal.z);
        glBegin(style == Style::kWire ? GL_LINE_LOOP : solid);
        glNormal3d(normal.x / length, normal.y / length, normal.z / length);
        for (const int index : face) {
            const point3Dtype p = point(index);
            glVertex3d(p.x * scale[0], p.y * scale[1], p.z * scale[2]);
        }
        glEnd();
    }
}

Corner Uniform(double size) {
    const double s = std::abs(size);
    return {s, s, s};
}

void Box(Style style, double width, double height, double depth) {
    static constexpr std::array<Corner, 8> kCorners = {{{-1, -1, -1},
                                                        {1, -1, -1},
                                                        {1, 1, -1},
                                                        {-1, 1, -1},
                                                        {-1, -1, 1},
                                                        {1, -1, 1},
                                                        {1, 1, 1},
                                                        {-1, 1, 1}}};
    static constexpr std::array<std::array<int, 4>, 6> kFaces = {
        {{0, 3, 2, 1}, {4, 5, 6, 7}, {0, 1, 5, 4}, {2, 3, 7, 6}, {0, 4, 7, 3}, {1, 2, 6, 5}}};
    Polyhedron(style, kCorners, kFaces,
               {std::abs(width) / 2.0, std::abs(height) / 2.0, std::abs(depth) / 2.0});
}

void Icosahedron(Style style, double radius) {
    constexpr double X = 0.5257311121191336;
    constexpr double Z = 0.8506508083520399;
    static constexpr std::array<Corner, 12> kCorners = {{{-X, 0, Z},
                                                         {X, 0, Z},
                                                         {-X, 0, -Z},
                                                         {X, 0, -Z},
                                                         {0, Z, X},
                                                         {0, Z, -X},
                                                         {0, -Z, X},
                                                         {0, -Z, -X},
                                                         {Z, X, 0},
                                                         {-Z, X, 0},
                                                         {Z, -X, 0},
                                                         {-Z, -X, 0}}};
    static constexpr std::array<std::array<int, 3>, 20> kFaces = {
        {{0, 1, 4}, {0, 4, 9},  {9, 4, 5},  {4, 8, 5},  {4, 1, 8},  {8, 1, 10}, {8, 10, 3},
         {5, 8, 3}, {5, 3, 2},  {2, 3, 7},  {7, 3, 10}, {7, 10, 6}, {7, 6, 11}, {11, 6, 0},
         {0, 6, 1}, {6, 10, 1}, {9, 11, 0}, {9, 2, 11}, {9, 5, 2},  {7, 11, 2}}};
    Polyhedron(style, kCorners, kFaces, Uniform(radius));
}

void Octahedron(Style style, double radius) {
    static constexpr std::array<Corner, 6> kCorners = {
        {{1, 0, 0}, {-1, 0, 0}, {0, 1, 0}, {0, -1, 0}, {0, 0, 1}, {0, 0, -1}}};
    static constexpr std::array<std::array<int, 3>, 8> kFaces = {
        {{0, 2, 4}, {2, 1, 4}, {1, 3, 4}, {3, 0, 4}, {2, 0, 5}, {1, 2, 5}, {3, 1, 5}, {0, 3, 5}}};
    Polyhedron(style, kCorners, kFaces, Uniform(radius));
}

void Tetrahedron(Style style, double radius) {
    // Corners of a cube with half edges of sqrt(3): three radii from the centre.
    constexpr double T = 1.7320508075688772;
    static constexpr std::array<Corner, 4> kCorners = {
        {{T, T, T}, {T, -T, -T}, {-T, T, -T}, {-T, -T, T}}};
    static constexpr std::array<std::array<int, 3>, 4> kFaces = {
        {{0, 1, 2}, {0, 2, 3}, {0, 3, 1}, {1, 3, 2}}};
    Polyhedron(style, kCorners, kFaces, Uniform(radius));
}

void Dodecahedron(Style style, double radius) {
    // A cube's eight corners and three golden rectangles of edges 2 * phi by 2 / phi.
    constexpr double P = std::numbers::phi;
    constexpr double Q = 1.0 / P;
    static constexpr std::array<Corner, 20> kCorners = {
        {{-1, -1, -1}, {-1, -1, 1}, {-1, 1, -1}, {-1, 1, 1}, {1, -1, -1}, {1, -1, 1},  {1, 1, -1},
         {1, 1, 1},    {0, -Q, -P}, {0, -Q, P},  {0, Q, -P}, {0, Q, P},   {-Q, -P, 0}, {-Q, P, 0},
         {Q, -P, 0},   {Q, P, 0},   {-P, 0, -Q}, {-P, 0, Q}, {P, 0, -Q},  {P, 0, Q}}};
    static constexpr std::array<std::array<int, 5>, 12> kFaces = {{{7, 15, 13, 3, 11},
                                                                   {7, 19, 18, 6, 15},
                                                                   {7, 11, 9, 5, 19},
                                                                   {0, 8, 4, 14, 12},
                                                                   {0, 12, 1, 17, 16},
                                                                   {0, 16, 2, 10, 8},
                                                                   {3, 13, 2, 16, 17},
                                                                   {3, 17, 1, 9, 11},
                                                                   {5, 9, 1, 12, 14},
                                                                   {5, 14, 4, 18, 19},
                                                                   {6, 18, 4, 8, 10},
                                                                   {6, 10, 2, 13, 15}}};
    Polyhedron(style, kCorners, kFaces, Uniform(radius / 1.73));
}

// --- Torus -----------------------------------------------------------------------------------

/// A torus about z of `Rings` tube sections with `Sides` corners each.
template <int Sides, int Rings>
class TorusMesh {
 public:
    TorusMesh(double inner, double outer) : m_Inner(std::abs(inner)), m_Outer(std::abs(outer)) {}

    void DrawWire() const {
        for (int ring = 0; ring < Rings; ++ring) {
            glBegin(GL_LINE_LOOP);
            for (int side = 0; side < Sides; ++side)
                Vertex(ring, side);
            glEnd();
        }
        for (int side = 0; side < Sides; ++side) {
            glBegin(GL_LINE_LOOP);
            for (int ring = 0; ring < Rings; ++ring)
                Vertex(ring, side);
            glEnd();
        }
    }

    void DrawSolid() const {
        glBegin(GL_QUADS);
        for (int ring = 0; ring < Rings; ++ring)
            for (int side = 0; side < Sides; ++side) {
                Vertex(ring, side);
                Vertex(ring + 1, side);
                Vertex(ring + 1, side + 1);
                Vertex(ring, side + 1);
            }
        glEnd();
    }

 private:
    static double Angle(int step, int steps) {
        return 2.0 * std::numbers::pi * (step % steps) / steps;
    }
    void Vertex(int ring, int side) const {
        const double around = Angle(ring, Rings);
        const double tube = Angle(side, Sides);
        const double distance = m_Outer + m_Inner * std::cos(tube);
        glNormal3d(std::cos(around) * std::cos(tube), std::sin(around) * std::cos(tube),
                   std::sin(tube));
        glVertex3d(std::cos(around) * distance, std::sin(around) * distance,
                   m_Inner * std::sin(tube));
    }

    double m_Inner;
    double m_Outer;
};

}  // namespace

void auxWireSphere(double radius) {
    Sphere(Style::kWire, radius);
}
void auxSolidSphere(double radius) {
    Sphere(Style::kSolid, radius);
}

void auxWireCube(double size) {
    Box(Style::kWire, size, size, size);
}
void auxSolidCube(double size) {
    Box(Style::kSolid, size, size, size);
}

void auxWireBox(double width, double height, double depth) {
    Box(Style::kWire, width, height, depth);
}
void auxSolidBox(double width, double height, double depth) {
    Box(Style::kSolid, width, height, depth);
}

void auxWireTorus(double inner, double outer) {
    TorusMesh<5, 10>(inner, outer).DrawWire();
}
void auxSolidTorus(double inner, double outer) {
    TorusMesh<8, 15>(inner, outer).DrawSolid();
}

void auxWireCylinder(double radius, double height) {
    Cylinder(Style::kWire, radius, height);
}
void auxSolidCylinder(double radius, double height) {
    Cylinder(Style::kSolid, radius, height);
}

void auxWireIcosahedron(double radius) {
    Icosahedron(Style::kWire, radius);
}
void auxSolidIcosahedron(double radius) {
    Icosahedron(Style::kSolid, radius);
}

void auxWireOctahedron(double radius) {
    Octahedron(Style::kWire, radius);
}
void auxSolidOctahedron(double radius) {
    Octahedron(Style::kSolid, radius);
}

void auxWireTetrahedron(double radius) {
    Tetrahedron(Style::kWire, radius);
}
void auxSolidTetrahedron(double radius) {
    Tetrahedron(Style::kSolid, radius);
}

void auxWireDodecahedron(double radius) {
    Dodecahedron(Style::kWire, radius);
}
void auxSolidDodecahedron(double radius) {
    Dodecahedron(Style::kSolid, radius);
}

void auxWireCone(double base, double height) {
    Cone(Style::kWire, base, height);
}
void auxSolidCone(double base, double height) {
    Cone(Style::kSolid, base, height);
}

}  // namespace varnel
