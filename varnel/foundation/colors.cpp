#include "varnel/foundation/colors.h"

namespace varnel {
namespace {

constexpr double kByteMax = 255.0;
/// Beyond this no 64-bit integer holds the product; such components become 0 instead of undefined.
constexpr double kConvertible = 9.0e18;

BYTE toByte(double component) {
    const double scaled = component * kByteMax;
    if (!(scaled > -kConvertible && scaled < kConvertible)) return 0;
    return static_cast<BYTE>(static_cast<long long>(scaled) & 0xFF);
}

}  // namespace

RGBDType SetRGBD(double r, double g, double b, double a) {
    return {r, g, b, a};
}

RGBFType SetRGBF(float r, float g, float b, float a) {
    return {r, g, b, a};
}

RGBFType RGBDtoRGBF(const RGBDType& c) {
    return {static_cast<float>(c.r), static_cast<float>(c.g), static_cast<float>(c.b),
            static_cast<float>(c.a)};
}

RGBDType RGBFtoRGBD(const RGBFType& c) {
    return {static_cast<double>(c.r), static_cast<double>(c.g), static_cast<double>(c.b),
            static_cast<double>(c.a)};
}

RGBDType RGBBtoRGBD(const RGBBType& c) {
    return {c.r / kByteMax, c.g / kByteMax, c.b / kByteMax, c.a / kByteMax};
}

RGBBType RGBDtoRGBB(const RGBDType& c) {
    return {toByte(c.r), toByte(c.g), toByte(c.b), toByte(c.a)};
}

unsigned int RGBD2INT(const RGBDType& c) {
    const RGBBType bytes = RGBDtoRGBB(c);
    return bytes.r + bytes.g * 256U + bytes.b * 65536U;
}

COLORREF RGBDtoCOLORREF(const RGBDType& c) {
    return RGBD2INT(c);
}

RGBDType COLORREFtoRGDB(const COLORREF& c) {
    return {(c & 0xFFU) / kByteMax, ((c >> 8) & 0xFFU) / kByteMax, ((c >> 16) & 0xFFU) / kByteMax,
            1.0};
}

}  // namespace varnel
