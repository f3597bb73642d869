// The small scalar types and plain records that the library's interfaces are written in.
//
// Their names and layouts are those of the desktop interfaces that charting hosts are used to, so
// that bitmap headers and palettes can be handed over byte for byte.
#pragma once

#include <cstdint>
#include <string>

namespace varnel {

using BOOL = int;             ///< 0 = false, anything else = true
using BYTE = std::uint8_t;    ///< unsigned 8 bits
using WORD = std::uint16_t;   ///< unsigned 16 bits
using DWORD = std::uint32_t;  ///< unsigned 32 bits
using LONG = std::int32_t;    ///< signed 32 bits

/// A colour packed as red + green * 256 + blue * 65536.
using COLORREF = std::uint32_t;

/// Text in UTF-8; one that is not valid UTF-8 as a whole is read as Windows-1252.
using CString = std::string;

/// A rectangle in device pixels; right and bottom lie just outside it.
struct RECT {
    int left = 0;
    int top = 0;
    int right = 0;
    int bottom = 0;
};

/// A rectangle in fractions of a page: its corner (from the page's upper left) and its extent.
struct REALRECT {
    double left = 0.0;
    double top = 0.0;
    double width = 1.0;
    double height = 1.0;
};

}  // namespace varnel
