// The model-view matrix in double precision.
//
// OpenGL keeps matrices as floats, whose 24 bits are too few for data such as time stamps;
// vertices, normals and clip planes are therefore taken to device coordinates with these matrices.
#pragma once

#include <array>
#include <cmath>
#include <vector>

#include "varnel/foundation/points.h"

namespace varnel::detail {

struct Vec3 {
    double x, y, z;
};

inline Vec3 operator-(const Vec3& a, const Vec3& b) {
    return {a.x - b.x, a.y - b.y, a.z - b.z};
}
inline Vec3 Cross(const Vec3& a, const Vec3& b) {
    return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}
inline double Dot(const Vec3& a, const Vec3& b) {
    return a.x * b.x + a.y * b.y + a.z * b.z;
}
inline bool IsFinite(const Vec3& v) {
    return std::isfinite(v.x) && std::isfinite(v.y) && std::isfinite(v.z);
}
/// v at length 1; a vector without a finite direction gives (0, 0, 0).
Vec3 Normalized(const Vec3& v);

/// A 4 x 4 matrix, column-major.
struct Matrix4 {
    std::array<double, 16> m;

    static Matrix4 Identity();
    double At(int row, int column) const { return m[static_cast<unsigned>(column * 4 + row)]; }
};

Matrix4 operator*(const Matrix4& a, const Matrix4& b);

/// Rotation by degrees about axis 0, 1 or 2; quarter turns are exact.
Matrix4 Rotation(double degrees, int axis);

class MatrixStack {
 public:
    MatrixStack();

    const Matrix4& Top() const { return m_Stack.back(); }
    void Load(const Matrix4& matrix);
    void Multiply(const Matrix4& matrix) { Load(Top() * matrix); }
    void Translate(double x, double y, double z);
    void Scale(double x, double y, double z);
    void Push() { m_Stack.push_back(m_Stack.back()); }
    void Pop();

    /// A point in device coordinates.
    Vec3 ToDevice(const point3Dtype& p) const;
    /// A direction in device coordinates; its length changes with the scale.
    Vec3 DirectionToDevice(const Vec3& d) const;
    /// The direction in device coordinates of a normal of a surface, at length 1.
    Vec3 NormalToDevice(const Vec3& n) const;
    /// Whether that direction leads away from the viewer.
    bool LeadsAway(const Vec3& n) const { return Dot(m_NormalRows[2], n) > 0.0; }
    /// -1 when the matrix mirrors, else 1.
    int Handedness() const { return m_Determinant < 0.0 ? -1 : 1; }
    /// The plane (a, b, c, d) in device coordinates; false when the matrix has no inverse.
    bool PlaneToDevice(const std::array<double, 4>& plane, std::array<double, 4>& out) const;

 private:
    void Derive();

    std::vector<Matrix4> m_Stack;
    std::array<Vec3, 3> m_NormalRows{};  ///< inverse transpose up to a positive factor
    double m_Determinant = 1.0;
    bool m_Affine = true;
};

inline Vec3 MatrixStack::ToDevice(const point3Dtype& p) const {
    const auto& m = Top().m;
    const Vec3 e{m[0] * p.x + m[4] * p.y + m[8] * p.z + m[12],
                 m[1] * p.x + m[5] * p.y + m[9] * p.z + m[13],
                 m[2] * p.x + m[6] * p.y + m[10] * p.z + m[14]};
    if (m_Affine) return e;
    const double w = m[3] * p.x + m[7] * p.y + m[11] * p.z + m[15];
    return {e.x / w, e.y / w, e.z / w};
}

}  // namespace varnel::detail
