#include "varnel/platform/dib_section.h"

#include <gtest/gtest.h>

#include <cstring>
#include <limits>

#include "tests/support/expect_error.h"
#include "tests/support/files.h"
#include "tests/support/memory_target.h"
#include "tests/support/values.h"

namespace varnel::test {
namespace {

/// A page that remembers what was scaled onto it.
class Page : public DeviceContext {
 public:
    Page(int width, int height, int dpiX, int dpiY)
        : m_Width(width), m_Height(height), m_DpiX(dpiX), m_DpiY(dpiY) {}

    int Caps(int code) const override {
        switch (code) {
            case HORZRES:
                return m_Width;
            case VERTRES:
                return m_Height;
            case LOGPIXELSX:
                return m_DpiX;
            case LOGPIXELSY:
                return m_DpiY;
            default:
                return 0;
        }
    }
    bool Put(int, int, int, int, const Bitmap&, int, int) override { return false; }
    bool Stretch(const RECT& target, const Bitmap& source, const RECT& sourceRect) override {
        printed = &source;
        printedTo = target;
        printedFrom = sourceRect;
        return !jammed;
    }

    const Bitmap* printed = nullptr;
    RECT printedTo;
    RECT printedFrom;
    bool jammed = false;

 private:
    int m_Width, m_Height, m_DpiX, m_DpiY;
};

/// A section of an in-memory window's depth, selected into a memory device as a view does it.
struct Section {
    Section(int width, int height, int bitsPerPixel) : window(8, 8, bitsPerPixel) {
        memory.CreateCompatibleDC(window.GetDC());
        dib = std::make_unique<CDIBSection>(window.GetDC(), &memory, width, height, 0);
        memory.SelectObject(dib->GetBitmap());
        PIXELFORMATDESCRIPTOR wanted;
        wanted.cColorBits = static_cast<BYTE>(bitsPerPixel);
        memory.SetPixelFormat(CDC::ChoosePixelFormat(wanted));
    }

    CWnd window;
    CDC memory;
    std::unique_ptr<CDIBSection> dib;
};

void ExpectRect(const RECT& r, int left, int top, int right, int bottom) {
    EXPECT_EQ(r.left, left);
    EXPECT_EQ(r.top, top);
    EXPECT_EQ(r.right, right);
    EXPECT_EQ(r.bottom, bottom);
}

TEST(CDIBSection, DescribesABitmapOfTheScreensDepth) {
    Section s(5, 3, 24);
    const BITMAPINFOHEADER* header = s.dib->GetDIBHeader();
    ASSERT_NE(header, nullptr);
    EXPECT_EQ(Row(header->biBitCount, header->biSizeImage, s.dib->StorageWidth()), Row(24, 48, 16));
    EXPECT_EQ(s.dib->DIBNumColors(header), 1u << 24);
    EXPECT_EQ(s.dib->PaletteSize(header), 4u << 24);
    EXPECT_EQ(s.dib->FindDIBBits(), s.dib->GetBitmap()->Bits());
    EXPECT_EQ(s.dib->GetMemCDC(), &s.memory);
    EXPECT_EQ(s.dib->GetScreenCDC(), s.window.GetDC());

    BITMAPINFOHEADER deep;
    deep.biBitCount = 32;
    EXPECT_EQ(s.dib->PaletteSize(&deep), std::uint64_t{1} << 34) << "no cap";
}

TEST(CDIBSection, WithoutABitmap) {
    CWnd window(8, 8);
    CDC memory;
    Page page(100, 100, 10, 10);
    CDC printer(std::shared_ptr<Page>(&page, [](Page*) {}));
    CDC none;
    for (CDC* screen : {static_cast<CDC*>(nullptr), &none, window.GetDC()}) {
        CDIBSection dib(screen, &memory, 0, 5, 0);
        EXPECT_EQ(dib.FindDIBBits(), nullptr);
        EXPECT_EQ(dib.GetDIBHeader(), nullptr);
        EXPECT_EQ(dib.StorageWidth() + dib.DIBWidth() + dib.DIBHeight(), 0);
        dib.CreateRGBPalette();
        const auto no = [](const char* name, auto operation) {
            return Raises(ERR3D_DIB_HANDLE, ERR3DCLASS_DIBSECTION, name, operation);
        };
        EXPECT_TRUE(no("PrintDIB", [&] { dib.PrintDIB(&printer, 1, ""); }));
        EXPECT_TRUE(no("SaveDIB", [&] { dib.SaveDIB("/dev/null"); }));
        EXPECT_TRUE(no("GetDIBSectionAsDIB", [&] { dib.GetDIBSectionAsDIB(); }));
    }
}

TEST(CDIBSection, PackedAndSavedBytes) {
    Section s(3, 2, 24);
    for (int i = 0; i < 24; ++i)
        s.dib->FindDIBBits()[i] = static_cast<BYTE>(i + 1);
    const std::vector<BYTE> dib = s.dib->GetDIBSectionAsDIB();
    ASSERT_EQ(dib.size(), 1064u + 24);
    const std::vector<BYTE> header = {40, 0, 0, 0, 3, 0, 0,  0, 2, 0, 0, 0, 1, 0,
                                      24, 0, 0, 0, 0, 0, 24, 0, 0, 0, 0, 0, 0, 0};
    EXPECT_TRUE(std::equal(header.begin(), header.end(), dib.begin()));
    EXPECT_EQ(std::count(dib.begin() + 28, dib.begin() + 1064, 0), 1036) << "no colours at 24 bits";
    EXPECT_EQ(std::memcmp(dib.data() + 1064, s.dib->FindDIBBits(), 24), 0);

    const TemporaryFolder folder;
    s.dib->SaveDIB(folder.File("a.bmp"));
    const std::string saved = ReadAll(folder.File("a.bmp"));
    const std::vector<BYTE> bytes(saved.begin(), saved.end());
    const std::vector<BYTE> fileHeader = {'B', 'M', 0x4E, 0x04, 0, 0, 0, 0, 0, 0, 0x36, 0x04, 0, 0};
    ASSERT_EQ(bytes.size(), 0x44Eu);
    EXPECT_TRUE(std::equal(fileHeader.begin(), fileHeader.end(), bytes.begin()));
    EXPECT_TRUE(std::equal(dib.begin(), dib.end(), bytes.begin() + 14));
}

TEST(CDIBSection, PaletteOfAnEightBitScreen) {
    Section s(4, 4, 8);
    const auto own = std::make_shared<LOGPALETTE>();
    s.window.GetDC()->SelectPalette(own, 0);
    s.dib->CreateRGBPalette();
    const HPALETTE palette = s.dib->GetDIBPalette();
    ASSERT_TRUE(palette);
    EXPECT_EQ(palette->palVersion, 0x300);
    EXPECT_EQ(palette->palNumEntries, 256);
    // 2 * 255 / 7 = 72.86, cut: red 2, green 5, blue 1 of 3.
    const RGBQUAD& color = s.dib->GetCDIBColorTable()[2 | 5 << 3 | 1 << 6];
    EXPECT_EQ(Rgb(color), 0x48B655u);
    EXPECT_EQ(palette->palPalEntry[2 | 5 << 3 | 1 << 6].peGreen, 0xB6);
    // Slots of the system colours differ in the palette alone.
    EXPECT_EQ(palette->palPalEntry[3].peRed, 128);
    EXPECT_EQ(Rgb(s.dib->GetCDIBColorTable()[3]), 0x6D0000u);
    EXPECT_EQ(palette->palPalEntry[247].peBlue, 240);
    EXPECT_EQ(palette->palPalEntry[0].peRed, 0);
    EXPECT_EQ(palette->palPalEntry[255].peRed, 255);

    EXPECT_EQ(Rgb(s.dib->GetBitmap()->ColorTable[3]), 0x6D0000u);
    EXPECT_EQ(Rgb(s.window.GetPixels()->ColorTable[3]), 0x800000u) << "realized on the screen";
    const std::vector<BYTE> packed = s.dib->GetDIBSectionAsDIB();
    EXPECT_EQ(packed[40 + 4 * 3 + 2], 0x6D);

    s.dib->CreateRGBPalette();
    s.dib.reset();
    EXPECT_EQ(s.window.GetDC()->SelectPalette(nullptr, 0), own) << "the screen has its own back";
}

TEST(CDIBSection, NoPaletteOnDeepScreens) {
    for (const int bits : {16, 24, 32}) {
        Section s(4, 4, bits);
        s.dib->CreateRGBPalette();
        EXPECT_EQ(s.dib->GetDIBPalette(), nullptr);
        EXPECT_EQ(Rgb(s.dib->GetCDIBColorTable()[255]), 0u);
    }
}

TEST(CDIBSection, AGivenPaletteBecomesTheColorTable) {
    Section s(4, 4, 8);
    const auto palette = std::make_shared<LOGPALETTE>();
    palette->palNumEntries = 2;
    palette->palPalEntry[1] = {1, 2, 3, 9};
    palette->palPalEntry[2] = {4, 5, 6, 0};
    s.dib->SetCDIBColorTable(palette);
    EXPECT_EQ(s.dib->GetDIBPalette(), palette);
    EXPECT_EQ(Rgb(s.dib->GetBitmap()->ColorTable[1]), 0x010203u);
    EXPECT_EQ(s.dib->GetBitmap()->ColorTable[1].rgbReserved, 0);
    EXPECT_EQ(Rgb(s.dib->GetBitmap()->ColorTable[2]), 0u) << "beyond the palette's entries";
    s.dib->SetCDIBColorTable(nullptr);
    EXPECT_EQ(s.dib->GetDIBPalette(), nullptr);
}

TEST(CDIBSection, PrintRectangles) {
    Section s(200, 100, 32);
    const auto calculate = [&](int width, int height, int dpiX, int dpiY, WORD mode,
                               const REALRECT& norm = {}) {
        CDC page(std::make_shared<Page>(width, height, dpiX, dpiY));
        RECT r;
        s.dib->CalculatePrintRect(&page, r, mode, norm);
        return r;
    };
    // Upright: the whole width, and pixels of the page that are half as high as wide.
    ExpectRect(calculate(800, 2200, 100, 200, 1), 33, 66, 767, 800 - 66);
    // Lying: the whole height.
    ExpectRect(calculate(2200, 800, 100, 100, 1), 33, 33, 1600 - 33, 767);
    // As tall as wide in inches, though not in pixels, counts as upright.
    ExpectRect(calculate(600, 1200, 100, 200, 1), 33, 66, 567, 600 - 66);
    ExpectRect(calculate(800, 1100, 100, 100, 0), 33, 33, 767, 1067);
    ExpectRect(calculate(800, 1100, 100, 100, 3), 33, 33, 767, 1067);
    ExpectRect(calculate(800, 1100, 100, 100, 3, {0.25, 0.5, 0.5, 0.25}), 233, 583, 567, 792);
    // A device without a resolution, and fractions of no page, are no rectangle worth printing.
    ExpectRect(calculate(0, 0, 0, 0, 1), 0, 0, 0, 0);
    const double nan = std::numeric_limits<double>::quiet_NaN();
    calculate(800, 1100, 100, 100, 3, {nan, 1e300, -1e300, nan});
}

TEST(CDIBSection, Prints) {
    Section s(200, 100, 32);
    const auto page = std::make_shared<Page>(800, 1100, 100, 100);
    CDC printer(page);
    s.dib->SetNormPrintRect({0.0, 0.5, 1.0, 0.5});
    s.dib->PrintDIBSection(&printer, 3, "");
    EXPECT_EQ(page->printed, s.dib->GetBitmap().get());
    ExpectRect(page->printedTo, 33, 583, 767, 1067);
    ExpectRect(page->printedFrom, 0, 0, 200, 100);

    const auto fails = [&](CDC* dc) {
        return Raises(ERR3D_PRINT_DC, ERR3DCLASS_DIBSECTION, "PrintDIB",
                      [&] { s.dib->PrintDIB(dc, 3, nullptr); });
    };
    CDC none;
    EXPECT_TRUE(fails(nullptr));
    EXPECT_TRUE(fails(&none));
    page->printed = nullptr;
    s.dib->SetNormPrintRect({0.0, 0.0, 0.01, 0.01});
    s.dib->PrintDIB(&printer, 3, nullptr);
    EXPECT_EQ(page->printed, nullptr) << "no room inside the margins";
    s.dib->SetNormPrintRect({});
    page->jammed = true;
    EXPECT_TRUE(fails(&printer));
}

}  // namespace
}  // namespace varnel::test
