// Bitmap files (.bmp): from the bytes to the pixels, without files and without notices.
//
// Everything here works on the bytes that follow the 14-byte file header. Unless a place is given,
// the pixels are taken to start right after the colour table. Nothing is read outside the bytes,
// and no memory is asked for that they cannot account for.
#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>

#include "varnel/platform/pixels.h"

namespace varnel::detail {

/// The bytes that ParseBmpHeader needs at most: the longest header.
inline constexpr std::size_t kBmpHeaderBytes = 124;

/// Most bytes that one picture may take, both as a file and decoded: 1 GiB.
inline constexpr std::uint64_t kMaxBmpBytes = std::uint64_t{1} << 30;

/// Run-length encoding can describe any number of pixels in two bytes. A picture of up to
/// kMaxFreePixels (4096 x 4096) is taken at its word; a larger one needs a byte for every
/// kMaxPixelsPerByte pixels, which is what the longest runs take.
inline constexpr std::uint64_t kMaxFreePixels = std::uint64_t{1} << 24;
inline constexpr std::uint64_t kMaxPixelsPerByte = 128;

/// A picture's description, in one form for every kind of header.
struct BmpHeader {
    /// The 40-byte fields as the file has them, also for shorter and longer headers.
    BITMAPINFOHEADER info;
    int width = 0;
    int height = 0;        ///< rows, always positive
    bool topDown = false;  ///< order of the rows in the file
    /// The bits of red, green and blue in pixels of 16 and 32 bits.
    std::array<DWORD, 3> masks{};
    std::uint64_t colorCount = 0;
    std::size_t colorBytes = 4;      ///< size of a colour table's entry: 3 or 4
    std::uint64_t tableAt = 0;       ///< where the colour table starts
    std::uint64_t pixelsAt = 0;      ///< where the pixels start
    std::uint64_t usedBytes = 0;     ///< bytes up to the end of the pixels
    std::uint64_t decodedBytes = 0;  ///< what the picture takes when decoded
};

/// Reads a header of 12 (OS/2), 16 to 64 (OS/2, Windows) or up to 124 bytes (V4, V5). `start` holds
/// the first kBmpHeaderBytes of the `size` bytes that there are, or all of them. Empty when they do
/// not describe a picture that is wholly there; the padding of the last row may be missing. A
/// `pixelsAt` behind the colour table is where the pixels start; any other value is not heeded.
std::optional<BmpHeader> ParseBmpHeader(std::span<const BYTE> start, std::uint64_t size,
                                        std::uint64_t pixelsAt = 0);

/// Decodes the picture that `header`, read from the same bytes, describes: to 8 bits with its
/// colour table where the file has at most 8, else to 24. Indices beyond the table are black;
/// pixels that run-length data skips have index 0. Null when the run-length data ends too early, or
/// when `bytes` is shorter than the header's usedBytes. Throws std::bad_alloc without memory.
std::unique_ptr<Bitmap> DecodeBmp(const BmpHeader& header, std::span<const BYTE> bytes);

}  // namespace varnel::detail
