// Colours as doubles (every public attribute), floats (what OpenGL takes) and bytes (images).
//
// Components run from 0 to 1 in the double and float forms and from 0 to 255 in the byte form;
// nothing is clamped: a byte keeps the low 8 bits of the truncated product with 255.
#pragma once

#include "varnel/foundation/export.h"
#include "varnel/foundation/types.h"

namespace varnel {

/// Red, green, blue, alpha as doubles, nominally 0..1; 32 bytes in chart files.
struct RGBDType {
    double r = 0.0;
    double g = 0.0;
    double b = 0.0;
    double a = 0.0;
};

/// The same four components as floats.
struct RGBFType {
    float r = 0.0F;
    float g = 0.0F;
    float b = 0.0F;
    float a = 0.0F;
};

/// The same four components as bytes 0..255, in this order in memory.
struct RGBBType {
    BYTE r = 0;
    BYTE g = 0;
    BYTE b = 0;
    BYTE a = 0;
};

/// Of what has no value to be coloured by.
inline constexpr RGBDType kNoDataColor{0.6, 0.6, 0.6, 1.0};

VARNEL_API RGBDType SetRGBD(double r, double g, double b, double a);
VARNEL_API RGBFType SetRGBF(float r, float g, float b, float a);

VARNEL_API RGBFType RGBDtoRGBF(const RGBDType& c);
VARNEL_API RGBDType RGBFtoRGBD(const RGBFType& c);

/// Each byte divided by 255.
VARNEL_API RGBDType RGBBtoRGBD(const RGBBType& c);

/// Each component times 255, truncated toward zero, low 8 bits kept.
VARNEL_API RGBBType RGBDtoRGBB(const RGBDType& c);

/// RGBDtoRGBB packed as r + g * 256 + b * 65536; alpha is dropped.
VARNEL_API unsigned int RGBD2INT(const RGBDType& c);

/// Red, green and blue packed as r + g * 256 + b * 65536.
VARNEL_API COLORREF RGBDtoCOLORREF(const RGBDType& c);

/// The packed colour as doubles, alpha 1.
VARNEL_API RGBDType COLORREFtoRGDB(const COLORREF& c);

}  // namespace varnel
