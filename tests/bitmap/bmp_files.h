// Bitmap files made in memory, with the pixels that they must decode to known by construction.
#pragma once

#include <unistd.h>

#include <algorithm>
#include <array>
#include <filesystem>
#include <fstream>
#include <string>
#include <utility>
#include <vector>

#include "varnel/foundation/notice.h"
#include "varnel/foundation/types.h"

namespace varnel::test {

/// A file that is removed again.
class TempFile {
 public:
    explicit TempFile(const std::vector<BYTE>& bytes) {
        static int count = 0;
        m_Path = std::filesystem::temp_directory_path() /
                 ("varnel_bmp_" + std::to_string(::getpid()) + "_" + std::to_string(count++));
        std::ofstream file(m_Path, std::ios::binary);
        file.write(reinterpret_cast<const char*>(bytes.data()),
                   static_cast<std::streamsize>(bytes.size()));
    }
    ~TempFile() {
        std::error_code ignored;
        std::filesystem::remove(m_Path, ignored);
    }
    TempFile(const TempFile&) = delete;
    TempFile& operator=(const TempFile&) = delete;

    std::string Path() const { return m_Path.string(); }

 private:
    std::filesystem::path m_Path;
};

/// Keeps the notices shown during its life.
class NoticeLog {
 public:
    NoticeLog() {
        m_Before = SetNoticeHandler([this](const std::string& text) { texts.push_back(text); });
    }
    ~NoticeLog() { SetNoticeHandler(std::move(m_Before)); }
    NoticeLog(const NoticeLog&) = delete;
    NoticeLog& operator=(const NoticeLog&) = delete;

    std::vector<std::string> texts;

 private:
    NoticeHandler m_Before;
};

using RGB = std::array<int, 3>;

/// One way to store a picture.
struct BmpVariant {
    const char* name;
    int bits;
    DWORD headerSize = 40;
    bool topDown = false;
    DWORD compression = 0;  // 1: 8-bit runs, 2: 4-bit runs, 3 and 6: bit fields
    std::array<DWORD, 3> masks{};
    DWORD colorsUsed = 0;
};

/// The variants that are decoded in the tests.
inline const std::vector<BmpVariant>& BmpVariants() {
    static const std::vector<BmpVariant> variants = {
        {"1", 1},
        {"1_topdown", 1, 40, true},
        {"4", 4},
        {"4_five_colors", 4, 40, false, 0, {}, 5},
        {"8", 8},
        {"8_topdown", 8, 40, true},
        {"8_os2", 8, 12},
        {"1_os2", 1, 12},
        {"24_os2", 24, 12},
        {"4_os2_second", 4, 64},
        {"8_v4", 8, 108},
        {"16", 16},
        {"16_topdown", 16, 40, true},
        {"16_565", 16, 40, false, 3, {0xF800, 0x07E0, 0x001F}},
        {"16_565_v5", 16, 124, false, 3, {0xF800, 0x07E0, 0x001F}},
        {"24", 24},
        {"24_topdown", 24, 40, true},
        {"24_with_table", 24, 40, false, 0, {}, 3},
        {"32", 32},
        {"32_fields", 32, 40, false, 3, {0x000000FF, 0x0000FF00, 0x00FF0000}},
        {"32_fields_v4", 32, 108, true, 3, {0xFF000000, 0x00FF0000, 0x0000FF00}},
        {"32_fields_alpha", 32, 40, false, 6, {0x00FF0000, 0x0000FF00, 0x000000FF}},
        {"32_wide_fields", 32, 56, false, 3, {0x3FF00000, 0x000FFC00, 0x000003FF}},
        {"rle8", 8, 40, false, 1},
        {"rle4", 4, 40, false, 2},
        {"rle8_v5", 8, 124, false, 1},
    };
    return variants;
}

/// A file and what it must decode to, the upper row first.
struct BmpSample {
    std::vector<BYTE> bytes;
    std::vector<RGB> pixels;
    int width;
    int height;
};

namespace bmp {

inline void Put(std::vector<BYTE>& bytes, DWORD value, int count) {
    for (int i = 0; i < count; ++i)
        bytes.push_back(static_cast<BYTE>(value >> 8 * i));
}

inline RGB TableColor(int i) {
    return {(i * 37 + 20) % 256, (i * 91 + 3) % 256, (i * 151 + 200) % 256};
}

inline DWORD ColorCount(const BmpVariant& v) {
    if (v.colorsUsed != 0) return v.colorsUsed;
    return v.bits <= 8 ? DWORD{1} << v.bits : 0;
}

/// The index at (x, y): rows of change, rows of one colour, and rows of index 0, so that every code
/// of the run-length encodings has something to say.
inline int Index(const BmpVariant& v, int x, int y) {
    const int colors = static_cast<int>(ColorCount(v));
    if (y % 3 == 2) return 0;
    return (y % 3 == 1 ? y : x * 3 + y * 5 + 1) % colors;
}

inline std::array<DWORD, 3> Masks(const BmpVariant& v) {
    if (v.compression != 0) return v.masks;
    if (v.bits == 16) return {0x7C00, 0x03E0, 0x001F};
    return {0xFF0000, 0x00FF00, 0x0000FF};
}

/// The stored components at (x, y) of a picture without indices, each below `most` + 1.
inline DWORD Component(int channel, int x, int y, DWORD most) {
    const DWORD value = static_cast<DWORD>(x * (channel * 20 + 11) + y * (31 - channel * 9));
    return most <= 31 ? value % (most + 1) : value * (most / 63) % (most + 1);
}

inline int LowestBit(DWORD mask) {
    return __builtin_ctz(mask);
}

inline DWORD PackedPixel(const BmpVariant& v, int x, int y) {
    DWORD pixel = 0;
    const std::array<DWORD, 3> masks = Masks(v);
    for (int c = 0; c < 3; ++c) {
        const DWORD mask = masks[static_cast<std::size_t>(c)];
        const int shift = LowestBit(mask);
        pixel |= Component(c, x, y, mask >> shift) << shift;
    }
    return pixel;
}

inline RGB Expected(const BmpVariant& v, int x, int y) {
    if (v.bits <= 8) return TableColor(Index(v, x, y));
    RGB color{};
    for (std::size_t c = 0; c < 3; ++c) {
        const DWORD mask = Masks(v)[c];
        const DWORD most = mask >> LowestBit(mask);
        const double part = Component(static_cast<int>(c), x, y, most) / static_cast<double>(most);
        color[c] = static_cast<int>(part * 255.0 + 0.5);
    }
    return color;
}

inline void PutRow(std::vector<BYTE>& bytes, const BmpVariant& v, int width, int y) {
    const std::size_t start = bytes.size();
    if (v.bits <= 8) {
        bytes.resize(start + static_cast<std::size_t>((width * v.bits + 7) / 8));
        for (int x = 0; x < width; ++x) {
            const int bit = x * v.bits;
            bytes[start + static_cast<std::size_t>(bit / 8)] |=
                static_cast<BYTE>(Index(v, x, y) << (8 - v.bits - bit % 8));
        }
    } else {
        for (int x = 0; x < width; ++x)
            Put(bytes, PackedPixel(v, x, y), v.bits / 8);
    }
    while ((bytes.size() - start) % 4 != 0)
        bytes.push_back(0xEE);
}

/// Literal pixels; fewer than three cannot be literal and become runs of one.
inline void PutLiterals(std::vector<BYTE>& bytes, const BmpVariant& v, int x, int count, int y) {
    if (count < 3) {
        for (int i = 0; i < count; ++i) {
            const int index = Index(v, x + i, y);
            Put(bytes, 1, 1);
            Put(bytes, static_cast<DWORD>(v.bits == 4 ? index << 4 : index), 1);
        }
        return;
    }
    Put(bytes, 0, 1);
    Put(bytes, static_cast<DWORD>(count), 1);
    const std::size_t start = bytes.size();
    for (int i = 0; i < count; i += v.bits == 4 ? 2 : 1) {
        int byte = Index(v, x + i, y);
        if (v.bits == 4) byte = byte << 4 | (i + 1 < count ? Index(v, x + i + 1, y) : 0);
        Put(bytes, static_cast<DWORD>(byte), 1);
    }
    if ((bytes.size() - start) % 2 != 0) bytes.push_back(0xEE);
}

inline void PutRuns(std::vector<BYTE>& bytes, const BmpVariant& v, int width, int height) {
    for (int row = 0; row < height; ++row) {
        const int y = height - 1 - row;
        if (y % 3 == 2 && row + 1 < height) {
            for (const DWORD code : {0U, 2U, 0U, 1U})
                Put(bytes, code, 1);
            continue;
        }
        for (int x = 0; x < width && y % 3 != 2; x += 200) {
            const int count = std::min(width - x, 200);
            if (y % 3 == 0) {
                PutLiterals(bytes, v, x, count, y);
            } else {
                Put(bytes, static_cast<DWORD>(count), 1);
                Put(bytes, static_cast<DWORD>(Index(v, x, y) * (v.bits == 4 ? 17 : 1)), 1);
            }
        }
        Put(bytes, 0, 2);
    }
    Put(bytes, 0x0100, 2);
}

inline void PutHeader(std::vector<BYTE>& bytes, const BmpVariant& v, int width, int height) {
    const std::size_t start = bytes.size();
    Put(bytes, v.headerSize, 4);
    const int side = v.headerSize == 12 ? 2 : 4;
    Put(bytes, static_cast<DWORD>(width), side);
    Put(bytes, static_cast<DWORD>(v.topDown ? -height : height), side);
    Put(bytes, 1, 2);
    Put(bytes, static_cast<DWORD>(v.bits), 2);
    if (v.headerSize == 12) return;
    Put(bytes, v.compression, 4);
    for (const DWORD field : {0U, 2835U, 2835U, v.colorsUsed, 0U})
        Put(bytes, field, 4);
    const bool fields = v.compression == 3 || v.compression == 6;
    if (fields || v.headerSize >= 108)
        for (const DWORD mask : v.masks)
            Put(bytes, mask, 4);
    if (v.compression == 6) Put(bytes, 0xFF000000, 4);
    if (bytes.size() < start + v.headerSize) bytes.resize(start + v.headerSize);
}

}  // namespace bmp

/// Makes a file of `width` x `height` pixels.
inline BmpSample MakeBmp(const BmpVariant& v, int width, int height) {
    std::vector<BYTE> bytes = {'B', 'M'};
    bytes.resize(14);
    bmp::PutHeader(bytes, v, width, height);
    for (int i = 0; i < static_cast<int>(bmp::ColorCount(v)); ++i) {
        const RGB color = bmp::TableColor(i);
        for (const int c : {2, 1, 0})
            bmp::Put(bytes, static_cast<DWORD>(color[static_cast<std::size_t>(c)]), 1);
        if (v.headerSize != 12) bytes.push_back(0);
    }
    bytes[10] = static_cast<BYTE>(bytes.size());
    bytes[11] = static_cast<BYTE>(bytes.size() >> 8);
    if (v.compression == 1 || v.compression == 2)
        bmp::PutRuns(bytes, v, width, height);
    else
        for (int row = 0; row < height; ++row)
            bmp::PutRow(bytes, v, width, v.topDown ? row : height - 1 - row);
    for (std::size_t i = 0; i < 4; ++i)
        bytes[2 + i] = static_cast<BYTE>(bytes.size() >> 8 * i);

    BmpSample sample{std::move(bytes), {}, width, height};
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x)
            sample.pixels.push_back(bmp::Expected(v, x, y));
    return sample;
}

}  // namespace varnel::test
