// A fixture for whole views: an in-memory window, a folder that goes with the test, and a look at
// the picture.
#pragma once

#include <string>
#include <vector>

#include "tests/support/expect_error.h"
#include "tests/support/files.h"
#include "tests/support/told.h"
#include "tests/support/values.h"
#include "varnel/varnel.h"

namespace varnel::test {

class ViewTest : public ::testing::Test {
 protected:
    void SetUp() override { CErr3D::SetErrorReportMode(0); }
    std::string Path(const std::string& name) const { return m_Folder.File(name); }
    /// A chart that shows one bar on white in its lower left, seen straight from the front.
    static CChart3D* AddBar(CChartView3D& view, const RGBDType& color) {
        CTransform3D* t = nullptr;
        CChart3D* const chart = view.NewChart3D({0, 0, 0, 0}, {10, 1, 10, 0}, &t);
        t->SetChartRect({1, 0.5, 1, 0});
        CChartObj3D* const bars = chart->NewChartObj(t);
        double x = 2.5;
        double y = 5;
        bars->BarChart25D(&x, &y, 0, 0, 1, 5, 1, color, color, 0, 0, 0);
        bars->SetColorMode(0);
        bars->SetOutlineMode(0);
        return chart;
    }

    /// Draws at the size of the image, whose bytes are returned.
    static std::vector<BYTE> Draw(CChartView3D& view) {
        view.SetViewSizePrinter();
        view.DrawView();
        return Image(view);
    }
    static std::vector<BYTE> Image(CChartView3D& view) {
        CDIBSection& section = *view.GetDIBSectionPntr();
        const auto size = static_cast<std::size_t>(section.StorageWidth()) *
                          static_cast<std::size_t>(section.DIBHeight());
        return {section.FindDIBBits(), section.FindDIBBits() + size};
    }
    /// The pixel at (x, y) from the lower left.
    static RGBQUAD Pixel(const CChartView3D& view, int x, int y) {
        const Bitmap& image = *view.GetDIBSectionPntr()->GetBitmap();
        return image.PixelFromTop(x, image.Height() - 1 - y);
    }
    static bool IsColor(const RGBQUAD& p, int r, int g, int b) {
        return p.rgbRed == r && p.rgbGreen == g && p.rgbBlue == b;
    }

    CWnd m_Window{160, 120};

    TemporaryFolder m_Folder;
};

}  // namespace varnel::test
