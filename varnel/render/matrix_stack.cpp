#include <cmath>
#include <numbers>

#include "varnel/render/detail/matrix_stack.h"

namespace varnel::detail {

Vec3 Normalized(const Vec3& v) {
    // The plain sum of squares serves all but the most extreme lengths, which hypot scales first.
    constexpr double kSmall = 1e-200;
    constexpr double kLarge = 1e200;
    const double squared = Dot(v, v);
    const double length =
        squared > kSmall && squared < kLarge ? std::sqrt(squared) : std::hypot(v.x, v.y, v.z);
    if (!(length > 0.0) || !std::isfinite(length)) return {0.0, 0.0, 0.0};
    const double inverse = 1.0 / length;
    if (!std::isfinite(inverse)) return {v.x / length, v.y / length, v.z / length};
    return {v.x * inverse, v.y * inverse, v.z * inverse};
}

Matrix4 Matrix4::Identity() {
    return {{1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1}};
}

Matrix4 operator*(const Matrix4& a, const Matrix4& b) {
    Matrix4 out;
    for (int column = 0; column < 4; ++column)
        for (int row = 0; row < 4; ++row) {
            double sum = 0.0;
            for (int k = 0; k < 4; ++k)
                sum += a.At(row, k) * b.At(k, column);
            out.m[static_cast<std::size_t>(column) * 4 + static_cast<std::size_t>(row)] = sum;
        }
    return out;
}

namespace {

/// Sine and cosine of an angle in degrees; exact at quarter turns, so that a face turned by them
/// stays in its axis plane.
void SineCosine(double degrees, double& sine, double& cosine) {
    const double turn = std::remainder(degrees, 360.0);
    if (std::remainder(turn, 90.0) == 0.0) {
        const int quarter = static_cast<int>(turn / 90.0) & 3;
        constexpr double kSines[4] = {0.0, 1.0, 0.0, -1.0};
        sine = kSines[quarter];
        cosine = kSines[(quarter + 1) & 3];
        return;
    }
    const double radians = turn * std::numbers::pi / 180.0;
    sine = std::sin(radians);
    cosine = std::cos(radians);
}

}  // namespace

Matrix4 Rotation(double degrees, int axis) {
    double s = 0.0;
    double c = 1.0;
    SineCosine(degrees, s, c);
    switch (axis) {
        case 0:
            return {{1, 0, 0, 0, 0, c, s, 0, 0, -s, c, 0, 0, 0, 0, 1}};
        case 1:
            return {{c, 0, -s, 0, 0, 1, 0, 0, s, 0, c, 0, 0, 0, 0, 1}};
        case 2:
            return {{c, s, 0, 0, -s, c, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1}};
        default:
            return Matrix4::Identity();
    }
}

MatrixStack::MatrixStack() : m_Stack{Matrix4::Identity()} {
    Derive();
}

void MatrixStack::Load(const Matrix4& matrix) {
    m_Stack.back() = matrix;
    Derive();
}

void MatrixStack::Translate(double x, double y, double z) {
    Multiply({{1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, x, y, z, 1}});
}

void MatrixStack::Scale(double x, double y, double z) {
    Multiply({{x, 0, 0, 0, 0, y, 0, 0, 0, 0, z, 0, 0, 0, 0, 1}});
}

void MatrixStack::Pop() {
    if (m_Stack.size() == 1) return;
    m_Stack.pop_back();
    Derive();
}

void MatrixStack::Derive() {
    const auto& m = Top().m;
    const Vec3 x{m[0], m[1], m[2]};
    const Vec3 y{m[4], m[5], m[6]};
    const Vec3 z{m[8], m[9], m[10]};
    // The inverse transpose of the upper 3 x 3 part is its cofactor matrix over the determinant;
    // the columns of the cofactor matrix are cross products of the columns.
    const Vec3 cx = Cross(y, z);
    const Vec3 cy = Cross(z, x);
    const Vec3 cz = Cross(x, y);
    m_Determinant = Dot(x, cx);
    const double sign = m_Determinant < 0.0 ? -1.0 : 1.0;
    m_NormalRows = {Vec3{sign * cx.x, sign * cy.x, sign * cz.x},
                    Vec3{sign * cx.y, sign * cy.y, sign * cz.y},
                    Vec3{sign * cx.z, sign * cy.z, sign * cz.z}};
    m_Affine = m[3] == 0.0 && m[7] == 0.0 && m[11] == 0.0 && m[15] == 1.0;
}

Vec3 MatrixStack::DirectionToDevice(const Vec3& d) const {
    const auto& m = Top().m;
    return {m[0] * d.x + m[4] * d.y + m[8] * d.z, m[1] * d.x + m[5] * d.y + m[9] * d.z,
            m[2] * d.x + m[6] * d.y + m[10] * d.z};
}

Vec3 MatrixStack::NormalToDevice(const Vec3& n) const {
    return Normalized({Dot(m_NormalRows[0], n), Dot(m_NormalRows[1], n), Dot(m_NormalRows[2], n)});
}

bool MatrixStack::PlaneToDevice(const std::array<double, 4>& plane,
                                std::array<double, 4>& out) const {
    if (m_Determinant == 0.0 || !std::isfinite(m_Determinant) || !m_Affine) return false;
    // A plane is a row vector that goes through the inverse: its normal by the inverse transpose,
    // its distance by what the translation takes off.
    const double magnitude = std::fabs(m_Determinant);
    const Vec3 normal{plane[0], plane[1], plane[2]};
    const Vec3 n{Dot(m_NormalRows[0], normal) / magnitude, Dot(m_NormalRows[1], normal) / magnitude,
                 Dot(m_NormalRows[2], normal) / magnitude};
    const auto& m = Top().m;
    out = {n.x, n.y, n.z, plane[3] - (n.x * m[12] + n.y * m[13] + n.z * m[14])};
    return true;
}

}  // namespace varnel::detail
