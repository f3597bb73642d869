#include "varnel/bitmap/detail/bmp_decoder.h"

#include <algorithm>
#include <bit>
#include <cstdlib>

namespace varnel::detail {

namespace {

constexpr DWORD kCoreHeader = 12;      // OS/2 1: sizes of 16 bits, colours of 3 bytes
constexpr DWORD kShortestHeader = 16;  // OS/2 2 may leave out what is 0
constexpr DWORD kInfoHeader = 40;
constexpr DWORD kMaskedHeader = 52;  // from here on a header has room for masks
constexpr DWORD kOS2Header = 64;     // except this one, whose compressions differ as well

constexpr DWORD kRuns8 = 1;
constexpr DWORD kRuns4 = 2;
constexpr DWORD kBitFields = 3;
constexpr DWORD kAlphaBitFields = 6;

// A bound on sizes that keeps every product below within 64 bits.
constexpr std::uint64_t kMaxSize = std::uint64_t{1} << 40;

using Bytes = std::span<const BYTE>;

WORD Word(Bytes bytes, std::size_t at) {
    return static_cast<WORD>(bytes[at] | bytes[at + 1] << 8);
}

DWORD Dword(Bytes bytes, std::size_t at) {
    return Word(bytes, at) | static_cast<DWORD>(Word(bytes, at + 2)) << 16;
}

bool IsRuns(const BmpHeader& header) {
    return header.info.biCompression == kRuns4 || header.info.biCompression == kRuns8;
}

bool HasBitFields(const BmpHeader& header) {
    return header.info.biCompression == kBitFields || header.info.biCompression == kAlphaBitFields;
}

int DecodedBits(const BmpHeader& header) {
    return header.info.biBitCount <= 8 ? 8 : 24;
}

BITMAPINFOHEADER ReadCoreHeader(Bytes start) {
    BITMAPINFOHEADER info;
    info.biSize = kInfoHeader;
    info.biWidth = Word(start, 4);
    info.biHeight = Word(start, 6);
    info.biPlanes = Word(start, 8);
    info.biBitCount = Word(start, 10);
    return info;
}

BITMAPINFOHEADER ReadInfoHeader(Bytes start, DWORD size) {
    std::array<BYTE, kInfoHeader> field{};  // what a short header leaves out is 0
    std::copy_n(start.begin(), std::min(size, kInfoHeader), field.begin());
    BITMAPINFOHEADER info;
    info.biSize = kInfoHeader;
    info.biWidth = static_cast<LONG>(Dword(field, 4));
    info.biHeight = static_cast<LONG>(Dword(field, 8));
    info.biPlanes = Word(field, 12);
    info.biBitCount = Word(field, 14);
    info.biCompression = Dword(field, 16);
    info.biSizeImage = Dword(field, 20);
    info.biXPelsPerMeter = static_cast<LONG>(Dword(field, 24));
    info.biYPelsPerMeter = static_cast<LONG>(Dword(field, 28));
    info.biClrUsed = Dword(field, 32);
    info.biClrImportant = Dword(field, 36);
    return info;
}

bool IsKnownFormat(const BmpHeader& header) {
    const WORD bits = header.info.biBitCount;
    switch (header.info.biCompression) {
        case BI_RGB:
            return bits == 1 || bits == 4 || bits == 8 || bits == 16 || bits == 24 || bits == 32;
        case kRuns8:
            return bits == 8;
        case kRuns4:
            return bits == 4;
        case kBitFields:
        case kAlphaBitFields:
            return bits == 16 || bits == 32;
        default:
            return false;
    }
}

/// Sets the masks and where the colour table starts. False when the masks are not there.
bool ReadMasks(BmpHeader& header, Bytes start, DWORD size) {
    header.tableAt = size;
    if (!HasBitFields(header)) {
        if (header.info.biBitCount == 16) header.masks = {0x7C00, 0x03E0, 0x001F};
        if (header.info.biBitCount == 32) header.masks = {0xFF0000, 0x00FF00, 0x0000FF};
        return true;
    }
    if (size == kInfoHeader)
        header.tableAt += header.info.biCompression == kAlphaBitFields ? 16 : 12;
    else if (size < kMaskedHeader || size == kOS2Header)
        return false;
    if (start.size() < kMaskedHeader) return false;
    for (std::size_t i = 0; i < 3; ++i)
        header.masks[i] = Dword(start, kInfoHeader + 4 * i);
    return true;
}

/// Sets where the pixels are and what they take. False when they are not wholly there.
bool MeasurePixels(BmpHeader& header, std::uint64_t size, std::uint64_t pixelsAt) {
    header.colorCount = header.info.biClrUsed;
    if (header.colorCount == 0 && header.info.biBitCount <= 8)
        header.colorCount = std::uint64_t{1} << header.info.biBitCount;
    header.pixelsAt = std::max(header.tableAt + header.colorCount * header.colorBytes, pixelsAt);
    if (header.pixelsAt > size) return false;
    const std::uint64_t available = size - header.pixelsAt;
    const auto width = static_cast<std::uint64_t>(header.width);
    const auto height = static_cast<std::uint64_t>(header.height);

    if (IsRuns(header)) {
        if (width * height > std::max(kMaxFreePixels, available * kMaxPixelsPerByte)) return false;
        header.usedBytes = std::min(size, kMaxBmpBytes);
    } else {
        const std::uint64_t row = RowStride(header.width, header.info.biBitCount);
        const std::uint64_t last = (width * header.info.biBitCount + 7) / 8;
        if (height - 1 > available / row || (height - 1) * row + last > available) return false;
        header.usedBytes = header.pixelsAt + (height - 1) * row + last;
    }
    header.decodedBytes = RowStride(header.width, DecodedBits(header)) * height;
    return true;
}

/// The table's colours, as many as a table of a Bitmap holds.
void ReadColorTable(const BmpHeader& header, Bytes bytes, Bitmap& bitmap) {
    const auto count = std::min<std::uint64_t>(header.colorCount, bitmap.ColorTable.size());
    for (std::size_t i = 0; i < count; ++i) {
        const std::size_t at = header.tableAt + i * header.colorBytes;
        bitmap.ColorTable[i] = {bytes[at], bytes[at + 1], bytes[at + 2], 0};
    }
}

/// One colour of a pixel of 16 or 32 bits, as 0..255. Masks with gaps are read as if the gaps were
/// bits of theirs that are 0; an empty mask gives 0.
class Channel {
 public:
    explicit Channel(DWORD mask)
        : m_Mask(mask), m_Shift(mask == 0 ? 0 : std::countr_zero(mask)), m_Most(mask >> m_Shift) {}

    BYTE operator()(DWORD pixel) const {
        const DWORD value = (pixel & m_Mask) >> m_Shift;
        if (m_Most == 255 || m_Most == 0) return static_cast<BYTE>(value);
        return static_cast<BYTE>((std::uint64_t{value} * 255 + m_Most / 2) / m_Most);
    }

 private:
    DWORD m_Mask;
    int m_Shift;
    DWORD m_Most;
};

/// The picture's row `row` in the order of the file.
BYTE* FileRow(const BmpHeader& header, Bitmap& bitmap, int row) {
    return bitmap.RowFromTop(header.topDown ? row : header.height - 1 - row);
}

/// Spreads indices of 1, 4 or 8 bits, the leftmost in the highest bits, to a byte each.
void UnpackIndices(const BYTE* from, BYTE* to, int width, int bits) {
    const int perByte = 8 / bits;
    const int mask = (1 << bits) - 1;
    for (int x = 0; x < width; ++x)
        to[x] = static_cast<BYTE>(from[x / perByte] >> (8 - bits - x % perByte * bits) & mask);
}

void UnpackMasked(Bytes from, BYTE* to, int width, std::size_t pixelBytes,
                  const std::array<Channel, 3>& channels) {
    for (int x = 0; x < width; ++x, to += 3) {
        const std::size_t at = static_cast<std::size_t>(x) * pixelBytes;
        const DWORD pixel = pixelBytes == 2 ? Word(from, at) : Dword(from, at);
        to[0] = channels[2](pixel);
        to[1] = channels[1](pixel);
        to[2] = channels[0](pixel);
    }
}

void DecodeRows(const BmpHeader& header, Bytes pixels, Bitmap& bitmap) {
    const int bits = header.info.biBitCount;
    const std::size_t stride = RowStride(header.width, bits);
    const std::array<Channel, 3> channels{Channel(header.masks[0]), Channel(header.masks[1]),
                                          Channel(header.masks[2])};
    for (int row = 0; row < header.height; ++row) {
        const Bytes from = pixels.subspan(static_cast<std::size_t>(row) * stride);
        BYTE* const to = FileRow(header, bitmap, row);
        if (bits <= 8)
            UnpackIndices(from.data(), to, header.width, bits);
        else if (bits == 24)
            std::copy_n(from.begin(), static_cast<std::size_t>(header.width) * 3, to);
        else
            UnpackMasked(from, to, header.width, static_cast<std::size_t>(bits) / 8, channels);
    }
}

/// The pixel at which run-length data has arrived. Pixels beyond the end of a row are dropped.
class RunCursor {
 public:
    RunCursor(const BmpHeader& header, Bitmap& bitmap)
        : m_Header(header), m_Bitmap(bitmap), m_To(FileRow(header, bitmap, 0)) {}

    void Put(BYTE index) {
        if (m_X < m_Header.width) m_To[m_X++] = index;
    }

    /// False when that leaves the picture.
    bool Move(int right, int rows) {
        m_X = std::min(m_Header.width - m_X, right) + m_X;
        if (rows >= m_Header.height - m_Row) return false;
        m_Row += rows;
        m_To = FileRow(m_Header, m_Bitmap, m_Row);
        return true;
    }

    bool NextRow() {
        m_X = 0;
        return Move(0, 1);
    }

    bool AtEnd() const { return m_Row == m_Header.height - 1 && m_X == m_Header.width; }

 private:
    const BmpHeader& m_Header;
    Bitmap& m_Bitmap;
    BYTE* m_To;
    int m_X = 0;
    int m_Row = 0;
};

/// Decodes run-length data of 4 or 8 bits. False when it ends before the picture does.
bool DecodeRuns(const BmpHeader& header, Bytes runs, Bitmap& bitmap) {
    constexpr BYTE kEndOfRow = 0;
    constexpr BYTE kEndOfPicture = 1;
    constexpr BYTE kDelta = 2;
    const bool nibbles = header.info.biBitCount == 4;
    const auto part = [nibbles](BYTE byte, unsigned i) {
        if (!nibbles) return byte;
        return static_cast<BYTE>(i % 2 == 0 ? byte >> 4 : byte & 15);
    };
    RunCursor cursor(header, bitmap);
    while (runs.size() >= 2) {
        const BYTE count = runs[0];
        const BYTE code = runs[1];
        runs = runs.subspan(2);
        if (count != 0) {
            for (unsigned i = 0; i < count; ++i)
                cursor.Put(part(code, i));
        } else if (code == kEndOfRow) {
            if (!cursor.NextRow()) return true;
        } else if (code == kEndOfPicture) {
            return true;
        } else if (code == kDelta) {
            if (runs.size() < 2) return false;
            if (!cursor.Move(runs[0], runs[1])) return true;
            runs = runs.subspan(2);
        } else {  // `code` literal pixels, padded to a multiple of 2 bytes
            const std::size_t size = nibbles ? (code + 1U) / 2 : code;
            if (runs.size() < size) return false;
            for (unsigned i = 0; i < code; ++i)
                cursor.Put(part(runs[nibbles ? i / 2 : i], i));
            runs = runs.subspan(std::min(runs.size(), size + size % 2));
        }
    }
    return cursor.AtEnd();
}

}  // namespace

std::optional<BmpHeader> ParseBmpHeader(std::span<const BYTE> start, std::uint64_t size,
                                        std::uint64_t pixelsAt) {
    if (start.size() < kCoreHeader) return std::nullopt;
    const DWORD headerSize = Dword(start, 0);
    const bool core = headerSize == kCoreHeader;
    if (headerSize > std::min(start.size(), kBmpHeaderBytes)) return std::nullopt;
    if (!core && headerSize < kShortestHeader) return std::nullopt;

    BmpHeader header;
    header.info = core ? ReadCoreHeader(start) : ReadInfoHeader(start, headerSize);
    header.colorBytes = core ? 3 : 4;
    header.width = header.info.biWidth;
    header.topDown = header.info.biHeight < 0;
    const std::int64_t rows = std::abs(std::int64_t{header.info.biHeight});
    if (header.width <= 0 || rows == 0 || rows > INT32_MAX) return std::nullopt;
    header.height = static_cast<int>(rows);

    if (!IsKnownFormat(header) || !ReadMasks(header, start, headerSize)) return std::nullopt;
    if (!MeasurePixels(header, std::min(size, kMaxSize), pixelsAt)) return std::nullopt;
    return header;
}

std::unique_ptr<Bitmap> DecodeBmp(const BmpHeader& header, std::span<const BYTE> bytes) {
    if (bytes.size() < header.usedBytes) return nullptr;
    auto bitmap = std::make_unique<Bitmap>(header.width, header.height, DecodedBits(header));
    ReadColorTable(header, bytes, *bitmap);
    const Bytes pixels = bytes.subspan(header.pixelsAt);
    if (!IsRuns(header))
        DecodeRows(header, pixels, *bitmap);
    else if (!DecodeRuns(header, pixels, *bitmap))
        return nullptr;
    return bitmap;
}

}  // namespace varnel::detail
