#include "varnel/bitmap/dib.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <functional>
#include <random>

#include "tests/bitmap/bmp_files.h"
#include "tests/fuzz/dib_entry.h"
#include "tests/support/memory_target.h"
#include "varnel/foundation/error.h"
#include "varnel/platform/window.h"

namespace varnel::test {
namespace {

RGB PixelOf(const Bitmap& bitmap, int x, int y) {
    const RGBQUAD color = bitmap.PixelFromTop(x, y);
    return {color.rgbRed, color.rgbGreen, color.rgbBlue};
}

std::vector<RGB> PixelsOf(const CDib& dib) {
    std::vector<RGB> pixels;
    if (dib.GetBitmap() == nullptr) return pixels;
    for (int y = 0; y < dib.GetBitmap()->Height(); ++y)
        for (int x = 0; x < dib.GetBitmap()->Width(); ++x)
            pixels.push_back(PixelOf(*dib.GetBitmap(), x, y));
    return pixels;
}

void Poke(std::vector<BYTE>& bytes, std::size_t at, DWORD value, std::size_t size) {
    for (std::size_t i = 0; i < size; ++i)
        bytes[at + i] = static_cast<BYTE>(value >> 8 * i);
}

/// Places of fields in a file with a 40-byte header.
constexpr std::size_t kHeaderSizeAt = 14, kWidthAt = 18, kHeightAt = 22, kBitsAt = 28,
                      kCompressionAt = 30, kColorsUsedAt = 46, kTableAt = 54;

/// Expects an empty picture and one notice.
void ExpectRefused(const std::vector<BYTE>& bytes) {
    const TempFile file(bytes);
    const NoticeLog notices;
    const CDib dib(file.Path().c_str());
    EXPECT_EQ(dib.GetDibInfoPtr(), nullptr);
    EXPECT_EQ(dib.GetBitmap(), nullptr);
    EXPECT_EQ(dib.GetDibWidth(), 0);
    EXPECT_EQ(dib.GetDibNumColors(), 0U);
    EXPECT_EQ(notices.texts, std::vector<std::string>{"Not a bitmap file"});
}

CErr3DTypes ErrorOf(const std::function<void()>& action) {
    CErr3D::SetErrorReportMode(0);
    CErr3DTypes type = ERR3D_NONE;
    try {
        action();
    } catch (const CErr3D& error) {
        type = error.m_ErrorType;
        EXPECT_EQ(error.m_ErrorClass, ERR3DCLASS_DIB);
        EXPECT_EQ(error.m_FunctionName, "LoadBitmapFile");
    }
    CErr3D::SetErrorReportMode(1);
    return type;
}

/// A bottom-up file of 8 bits, 7 x 5.
std::vector<BYTE> SmallFile() {
    return ReadSample("8").bytes;
}

/// A colour of the colour table of a file with a 40-byte header.
RGB TableColor(const std::vector<BYTE>& bytes, int i) {
    const std::size_t at = kTableAt + 4 * static_cast<std::size_t>(i);
    return {bytes[at + 2], bytes[at + 1], bytes[at]};
}

TEST(Dib, DecodesEveryStoredFile) {
    ASSERT_EQ(SampleNames().size(), 28U);
    for (const std::string& name : SampleNames()) {
        SCOPED_TRACE(name);
        const BmpSample sample = ReadSample(name);
        const TempFile file(sample.bytes);
        const NoticeLog notices;
        const CDib dib(file.Path().c_str());
        EXPECT_TRUE(notices.texts.empty());
        EXPECT_EQ(dib.GetDibWidth(), sample.width);
        EXPECT_EQ(std::abs(dib.GetDibHeight()), sample.height);
        EXPECT_EQ(dib.GetDibHeight() < 0,
                  name.find("topdown") != std::string::npos || name == "32_fields_v4");
        ASSERT_EQ(PixelsOf(dib), sample.pixels);
    }
    for (const int width : {1, 2, 3, 4, 301}) {
        const BmpSample sample = MakeBmp24(width, 2);
        const TempFile file(sample.bytes);
        ASSERT_EQ(PixelsOf(CDib(file.Path().c_str())), sample.pixels);
    }
}

TEST(Dib, PixelsStartAfterTheColorTableWhateverTheFileHeaderSays) {
    std::vector<BYTE> bytes = MakeBmp24(2, 2).bytes;
    Poke(bytes, 10, 0x7FFFFFFF, 4);
    const TempFile file(bytes);
    const CDib dib(file.Path().c_str());
    EXPECT_EQ(PixelsOf(dib), MakeBmp24(2, 2).pixels);
    EXPECT_EQ(dib.GetDibNumColors(), 0U);
}

TEST(Dib, PixelsAreWhereTheFileHeaderSaysOnRequest) {
    for (const char* name : {"8", "16", "24", "32"}) {
        const BmpSample sample = ReadSample(name);
        std::vector<BYTE> bytes = sample.bytes;
        const auto at = static_cast<std::ptrdiff_t>(bytes[10] | bytes[11] << 8);
        bytes.insert(bytes.begin() + at, 12, BYTE{0x5A});
        Poke(bytes, 10, static_cast<DWORD>(at) + 12, 4);
        const TempFile file(bytes);
        EXPECT_EQ(PixelsOf(CDib(file.Path().c_str(), DIB_USE_OFFSET)), sample.pixels);
        EXPECT_NE(PixelsOf(CDib(file.Path().c_str())), sample.pixels);
        // An offset into the header or beyond the end is none.
        Poke(bytes, 10, 3, 4);
        const TempFile low(bytes);
        EXPECT_NE(CDib(low.Path().c_str(), DIB_USE_OFFSET).GetBitmap(), nullptr);
        Poke(bytes, 10, 0x7FFFFFFF, 4);
        const NoticeLog notices;
        const TempFile high(bytes);
        EXPECT_EQ(CDib(high.Path().c_str(), DIB_USE_OFFSET).GetBitmap(), nullptr);
        EXPECT_EQ(notices.texts.size(), 1U);
    }
}

TEST(Dib, CompletesTheHeader) {
    const TempFile indexed(SmallFile());
    const CDib dib(indexed.Path().c_str());
    EXPECT_EQ(dib.GetDibInfoPtr()->bmiHeader.biClrUsed, 256U);
    EXPECT_EQ(dib.GetDibInfoPtr()->bmiHeader.biSizeImage, 35U) << "pixels, not bytes";
    EXPECT_EQ(dib.GetDibInfoPtr()->bmiColors[1].rgbRed, TableColor(SmallFile(), 1)[0]);

    std::vector<BYTE> stated = SmallFile();
    Poke(stated, 34, 77, 4);
    const TempFile statedFile(stated);
    EXPECT_EQ(CDib(statedFile.Path().c_str()).GetDibSizeImage(), 77U);
}

TEST(Dib, RunsAlternateAndStopAtTheEndsOfRowAndPicture) {
    std::vector<BYTE> bytes = ReadSample("rle4").bytes;
    Poke(bytes, kWidthAt, 5, 4);
    Poke(bytes, kHeightAt, 2, 4);
    bytes.resize(kTableAt + 16 * 4);
    // A run longer than the row, a new row, a move right by two, two pixels, and rows beyond the
    // end.
    for (const int byte : {9, 0x12, 0, 0, 0, 2, 2, 0, 2, 0x34, 0, 0, 0, 0, 5, 0x77})
        bytes.push_back(static_cast<BYTE>(byte));
    const TempFile file(bytes);
    const CDib dib(file.Path().c_str());
    const int expected[2][5] = {{0, 0, 3, 4, 0}, {1, 2, 1, 2, 1}};
    ASSERT_NE(dib.GetBitmap(), nullptr);
    for (int y = 0; y < 2; ++y)
        for (int x = 0; x < 5; ++x)
            EXPECT_EQ(PixelOf(*dib.GetBitmap(), x, y), TableColor(bytes, expected[y][x])) << x << y;
}

TEST(Dib, IndicesBeyondTheTableAreBlack) {
    std::vector<BYTE> bytes = ReadSample("4_five_colors").bytes;
    Poke(bytes, kWidthAt, 2, 4);
    Poke(bytes, kHeightAt, 1, 4);
    bytes[kTableAt + 5 * 4] = 0x1F;
    const TempFile file(bytes);
    const CDib dib(file.Path().c_str());
    EXPECT_EQ(PixelsOf(dib), (std::vector<RGB>{TableColor(bytes, 1), {0, 0, 0}}));
}

TEST(Dib, RefusesWhatIsNoBitmapFile) {
    std::vector<BYTE> swapped = SmallFile();
    std::swap(swapped[0], swapped[1]);
    ExpectRefused(swapped);
    ExpectRefused({});
    ExpectRefused({'B', 'M'});
}

TEST(Dib, RefusesEveryTruncation) {
    for (const std::string& name : SampleNames()) {
        const BmpSample sample = ReadSample(name);
        // Run-length data may leave out its last two codes and the padding before them, rows
        // theirs.
        const std::size_t slack = name.substr(0, 3) == "rle" ? 5 : 3;
        for (std::size_t size = 0; size + slack < sample.bytes.size(); ++size) {
            SCOPED_TRACE(name + " " + std::to_string(size));
            ExpectRefused(
                {sample.bytes.begin(), sample.bytes.begin() + static_cast<std::ptrdiff_t>(size)});
        }
    }
}

TEST(Dib, RefusesForgedHeaders) {
    const struct {
        std::size_t at, size;
        std::vector<DWORD> values;
    } forgeries[] = {
        {kHeaderSizeAt, 4, {0, 13, 0xFFFFFFFF}},
        {kWidthAt, 4, {0, 0xFFFFFFFF, 0x7FFFFFFF, 0x40000000}},
        {kHeightAt, 4, {0, 0x80000000, 0x7FFFFFFF, 0x80000001}},
        {kBitsAt, 2, {0, 2, 48, 0xFFFF}},
        {kCompressionAt, 4, {2, 3, 5}},
        {kColorsUsedAt, 4, {0x3FFFFFFF, 0x40000001, 0xFFFFFFFF}},
    };
    for (const auto& forgery : forgeries)
        for (const DWORD value : forgery.values) {
            SCOPED_TRACE(std::to_string(forgery.at) + " " + std::to_string(value));
            std::vector<BYTE> bytes = SmallFile();
            Poke(bytes, forgery.at, value, forgery.size);
            ExpectRefused(bytes);
        }
    std::vector<BYTE> runs = ReadSample("rle8").bytes;
    Poke(runs, kWidthAt, 60000, 4);
    Poke(runs, kHeightAt, 60000, 4);
    ExpectRefused(runs);
}

TEST(Dib, FilesThatCannotBeLoadedRaise) {
    EXPECT_EQ(ErrorOf([] { CDib("no such folder/picture.bmp"); }), ERR3D_FILE_OPEN_INPUT);
    EXPECT_EQ(ErrorOf([] { CDib(nullptr); }), ERR3D_FILE_OPEN_INPUT);

    // As large as it says it is: 4.8 GB, none of which is stored.
    std::vector<BYTE> bytes = MakeBmp24(1, 1).bytes;
    Poke(bytes, kWidthAt, 40000, 4);
    Poke(bytes, kHeightAt, 40000, 4);
    const TempFile giant(bytes);
    std::filesystem::resize_file(giant.Path(), kTableAt + 40000ULL * 40000 * 3);
    EXPECT_EQ(ErrorOf([&] { CDib(giant.Path().c_str()); }), ERR3D_MEM_ALLOC);
}

TEST(Dib, PaletteHasTheTablesColors) {
    const BmpSample sample = ReadSample("4_five_colors");
    const TempFile file(sample.bytes);
    CDib dib(file.Path().c_str());
    EXPECT_EQ(dib.GetDibPalette(), nullptr);
    const HPALETTE palette = dib.CreateDibPalette();
    ASSERT_NE(palette, nullptr);
    EXPECT_EQ(palette, dib.GetDibPalette());
    EXPECT_EQ(palette->palVersion, 0x300);
    ASSERT_EQ(palette->palNumEntries, 5);
    for (int i = 0; i < 5; ++i) {
        const PALETTEENTRY& entry = palette->palPalEntry[static_cast<std::size_t>(i)];
        EXPECT_EQ((RGB{entry.peRed, entry.peGreen, entry.peBlue}), TableColor(sample.bytes, i));
        EXPECT_EQ(entry.peFlags, 0);
    }
    const TempFile plain(MakeBmp24(2, 2).bytes);
    EXPECT_EQ(CDib(plain.Path().c_str()).CreateDibPalette(), nullptr);
}

struct RoundingDib : CDib {
    using CDib::RoundSizeUp;
};

TEST(Dib, SizesAreRoundedUpToPowersOfTwo) {
    const int expected[][2] = {{-5, 2},   {0, 2},       {1, 2},
                               {2, 2},    {3, 4},       {64, 64},
                               {65, 128}, {5000, 8192}, {INT32_MAX, 1 << 30}};
    for (const auto& [n, rounded] : expected)
        EXPECT_EQ(RoundingDib::RoundSizeUp(n), rounded) << n;
}

/// Expects each texel to have the colour of the pixel under its centre, the lowest row first.
void ExpectStretched(const CDib& dib, const BmpSample& sample) {
    const auto width = static_cast<int>(dib.GetTextureWidth());
    const auto height = static_cast<int>(dib.GetTextureHeight());
    for (int row = 0; row < height; ++row) {
        for (int column = 0; column < width; ++column) {
            const int x = static_cast<int>((column + 0.5) / width * sample.width);
            const int y = static_cast<int>((height - 1 - row + 0.5) / height * sample.height);
            const RGB& color = sample.pixels[static_cast<std::size_t>(y * sample.width + x)];
            const BYTE* const texel = dib.GetTextureBits() + 4 * (row * width + column);
            ASSERT_EQ((RGB{texel[0], texel[1], texel[2]}), color) << column << " " << row;
            ASSERT_EQ(texel[3], 255);
        }
    }
}

TEST(Dib, TextureIsTheStretchedPicture) {
    for (const auto& [width, height] : {std::pair{100, 50}, {1, 1}, {64, 3}}) {
        const BmpSample sample = MakeBmp24(width, height);
        const TempFile file(sample.bytes);
        CDib dib(file.Path().c_str());
        const BYTE* const texels = dib.TranslateDIBToOGL(nullptr);
        EXPECT_EQ(texels, dib.GetTextureBits());
        EXPECT_GE(dib.GetTextureWidth(), 2U);
        ExpectStretched(dib, sample);
        if (width == 100) {
            EXPECT_EQ(dib.GetTextureWidth(), 128U);
            EXPECT_EQ(dib.GetTextureHeight(), 64U);
            dib.TranslateDIBToOGL(nullptr, 16);
            EXPECT_EQ(dib.GetTextureWidth(), 16U);
            EXPECT_EQ(dib.GetTextureHeight(), 16U);
            ExpectStretched(dib, sample);
        }
    }
}

TEST(Dib, EmptyPictureHasABlackTexture) {
    CDib dib;
    const BYTE* const texels = dib.TranslateDIBToOGL(nullptr);
    EXPECT_EQ(dib.GetTextureWidth(), 2U);
    EXPECT_EQ(dib.GetTextureHeight(), 2U);
    for (int i = 0; i < 16; ++i)
        EXPECT_EQ(texels[i], i % 4 == 3 ? 255 : 0);
}

TEST(Dib, PaintsPartsOfThePictureFromItsUpperLeftCorner) {
    const BmpSample sample = ReadSample("8");
    const TempFile file(sample.bytes);
    CDib dib(file.Path().c_str());
    MemoryTarget canvas(10, 8);
    const RECT part{1, 2, 4, 4};
    const RECT same{2, 1, 5, 3};
    EXPECT_EQ(dib.PaintDIB(&canvas.memory, &same, &part, dib.CreateDibPalette()), 5);
    for (int y = 0; y < 2; ++y)
        for (int x = 0; x < 3; ++x)
            EXPECT_EQ(PixelOf(*canvas.bitmap, 2 + x, 1 + y),
                      sample.pixels[static_cast<std::size_t>((2 + y) * 7 + 1 + x)]);
    EXPECT_EQ(PixelOf(*canvas.bitmap, 5, 1), (RGB{0, 0, 0}));

    const RECT doubled{0, 0, 6, 4};
    dib.PaintDIB(canvas.memory.GetSafeHdc(), &doubled, &part, nullptr);
    for (int y = 0; y < 4; ++y)
        for (int x = 0; x < 6; ++x)
            EXPECT_EQ(PixelOf(*canvas.bitmap, x, y),
                      sample.pixels[static_cast<std::size_t>((2 + y / 2) * 7 + 1 + x / 2)]);

    EXPECT_EQ(dib.PaintDIB(HDC{}, &same, &part, nullptr), 0);
    EXPECT_EQ(CDib().PaintDIB(&canvas.memory, &same, &part, nullptr), 0);
}

/// Damages a file in one to four places: bytes, header fields of telling values, its length.
std::vector<BYTE> Damage(std::vector<BYTE> bytes, std::mt19937& random) {
    constexpr DWORD kValues[] = {0,  1,  2,  3,   4,          8,          12,
                                 24, 32, 64, 124, 0x7FFFFFFF, 0x80000000, 0xFFFFFFFF};
    const auto below = [&random](std::size_t n) { return random() % n; };
    for (std::size_t times = 1 + below(4); times > 0; --times) {
        switch (below(3)) {
            case 0:
                bytes[below(bytes.size())] = static_cast<BYTE>(random());
                break;
            case 1:
                Poke(bytes, std::min(kHeaderSizeAt + 2 * below(20), bytes.size() - 4),
                     kValues[below(std::size(kValues))], 4);
                break;
            default:
                bytes.resize(std::max<std::size_t>(below(bytes.size()), 20));
        }
    }
    return bytes;
}

TEST(Dib, SurvivesDamagedFiles) {
    constexpr int kRounds = 600;
    const NoticeLog quiet;
    CErr3D::SetErrorReportMode(0);
    std::mt19937 random(20240611);
    for (const std::string& name : SampleNames()) {
        const BmpSample sample = ReadSample(name);
        ASSERT_TRUE(UseDib(sample.bytes.data(), sample.bytes.size()));
        for (int round = 0; round < kRounds; ++round) {
            const std::vector<BYTE> bytes = Damage(sample.bytes, random);
            ASSERT_TRUE(UseDib(bytes.data(), bytes.size())) << name << " " << round;
        }
    }
    CErr3D::SetErrorReportMode(1);
}

}  // namespace
}  // namespace varnel::test
