// Vector files and pages of whole views, as other programs read them.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>

#include "tests/support/expect_error.h"
#include "tests/support/png.h"
#include "tests/support/x_server.h"
#include "varnel/varnel.h"

namespace varnel {
namespace {

using test::MeanDifference;
using test::Pixels;
using test::ReadPng;

class VectorFiles : public testing::Test {
 protected:
    VectorFiles() {
        constexpr double x[] = {1, 2, 3};
        constexpr double z[] = {12, 19, 17};
        CChart3D* chart = m_View.NewChart3D();
        CTransform3D* transform = chart->AutoTransform25D(x, z, 3, 1.0, 0, 0);
        transform->SetRotate({-20, 0, 25, 0});
        chart->AutoAxes(transform);
        CChartObj3D* bars = chart->NewChartObj(transform);
        bars->BarChart25D(x, z, 0.0, 0.5, 3, 0.7, 0.5, {0.2, 0.5, 0.8, 1}, {0, 0, 0, 1}, 1, 1, 0);
        chart->GetHeader()->SetTitle1("Größe & Zahl \u2603");
    }

    std::string Output(const std::string& command) const {
        const std::string file = m_Folder.File("out.txt");
        test::RunCommand(command + " > " + file);
        return test::ReadAll(file);
    }

    test::TemporaryFolder m_Folder;
    CWnd m_Window{400, 300};
    CChartView3D m_View{&m_Window, 400, 300};
};

TEST_F(VectorFiles, PdfHoldsTextInEmbeddedFontsAndNoPicture) {
    SKIP_WITHOUT("pdftotext");
    const std::string file = m_Folder.File("a.pdf");
    m_View.SaveToPDF(file, 160, 120);
    const std::string text = Output("pdftotext " + file + " -");
    EXPECT_NE(text.find("Größe & Zahl"), std::string::npos) << text;
    EXPECT_NE(text.find("20"), std::string::npos) << text;
    // A character that the face lacks is in the face that the picture takes it from.
    const auto face = GlyphFace::Find(LOGFONT{.lfFaceName = "Arial"});
    const std::filesystem::path other = face->Source(U'\u2603').file;
    EXPECT_NE(Output("pdffonts " + file).find(other.stem()), std::string::npos) << other;
    EXPECT_EQ(Output("pdfimages -list " + file).find("image"), std::string::npos);
    EXPECT_NE(Output("pdfinfo " + file).find("453.543 x 340.157"), std::string::npos);
}

TEST_F(VectorFiles, LettersAndLargeObjectsCanBeAreasAndPictures) {
    SKIP_WITHOUT("pdftotext");
    struct Case {
        const char* name;
        int limit, paths;
        bool hasText, hasPicture;
    };
    m_View.SetAntialiasing(16);
    m_View.SaveToPNG(m_Folder.File("a.png"));
    const Pixels drawn = ReadPng(m_Folder.File("a.png"));
    for (const Case& c : {Case{"plain", 0, 0, true, false}, Case{"picture", 5, 0, true, true},
                          Case{"paths", 50'000, 1, false, false}}) {
        SCOPED_TRACE(c.name);
        const std::string base = m_Folder.File(c.name);
        m_View.SetVectorPictureLimit(c.limit);
        m_View.SetVectorTextPaths(c.paths);
        m_View.SaveToPDF(base + ".pdf");
        m_View.SaveToSVG(base + ".svg");
        const std::string svg = test::ReadAll(base + ".svg");
        EXPECT_EQ(svg.find(">&amp; </tspan>") != std::string::npos, c.hasText);
        EXPECT_EQ(svg.find("<image") != std::string::npos, c.hasPicture);
        EXPECT_EQ(Output("pdftotext " + base + ".pdf -").find("Zahl") != std::string::npos,
                  c.hasText);
        test::RunCommand("pdftoppm -png -r 96 -singlefile " + base + ".pdf " + base);
        EXPECT_LE(MeanDifference(drawn, ReadPng(base + ".png")), 0.015 * 255);
        test::RunCommand("rsvg-convert " + base + ".svg -o " + base + ".png");
        EXPECT_LE(MeanDifference(drawn, ReadPng(base + ".png")), 0.015 * 255);
    }
}

TEST_F(VectorFiles, DocumentsAndPrintersTakePagesOfVectors) {
    SKIP_WITHOUT("pdftotext");
    PdfDocument document(m_Folder.File("two.pdf"));
    document.AddPage(m_View);
    m_View.GetChart(0)->GetHeader()->SetTitle1("Second");
    document.AddPage(m_View, PageSize::Points(300, 225));
    document.Close();
    EXPECT_NE(Output("pdfinfo -f 2 -l 2 " + m_Folder.File("two.pdf")).find("300 x 225"),
              std::string::npos);
    const std::string text = Output("pdftotext " + m_Folder.File("two.pdf") + " -");
    EXPECT_NE(text.find("Zahl"), std::string::npos);
    EXPECT_NE(text.find("Second"), std::string::npos);
    m_View.SetPrintResolution(2);
    Printer printer(m_Folder.File("printed.pdf"), {});
    m_View.OnPrint(printer.GetDC(), nullptr);
    ASSERT_TRUE(printer.Finish());
    EXPECT_NE(Output("pdftotext " + m_Folder.File("printed.pdf") + " -").find("Second"),
              std::string::npos);
}

TEST_F(VectorFiles, DashedLinesEndWhereThePictureDoes) {
    CTransform3D* transform = m_View.GetChart(0)->GetTransform(0);
    const point3Dtype far[] = {{-1e9, 0.5, -1e9, 0}, {2, 0.5, 15, 0}, {1e9, 0.5, 1e9, 0}};
    m_View.GetChart(0)->NewChartObj(transform)->LineChart3D(far, 3, 2, 1.0, {1, 0, 0, 1});
    const point3Dtype near[] = {{1, 0.1, 19, 0}, {3, 0.1, 12, 0}};
    m_View.GetChart(0)->NewChartObj(transform)->LineChart3D(near, 2, 0, 3.0, {0, 0, 1, 1});
    const std::string file = m_Folder.File("far.svg");
    m_View.SaveToSVG(file);
    EXPECT_LT(std::filesystem::file_size(file), 200'000U);
    const std::string svg = Output("cat " + file);
    EXPECT_NE(svg.find("stroke=\"#f00\""), std::string::npos);
    EXPECT_GT(svg.find("stroke=\"#00f\""), svg.find("stroke=\"#f00\"")) << "the nearer one";
    EXPECT_NE(svg.find("stroke=\"#00f\""), std::string::npos);
}

TEST_F(VectorFiles, WhatCannotBeWrittenLeavesNoFile) {
    EXPECT_TRUE(test::Raises(ERR3D_FILE_OPEN_OUTPUT, ERR3DCLASS_CHARTVIEW3D, "SaveToPDF",
                             [&] { m_View.SaveToPDF(m_Folder.File("no/a.pdf")); }));
    EXPECT_TRUE(test::Raises(ERR3D_PARAMETER, ERR3DCLASS_CHARTVIEW3D, "SaveToPDF",
                             [&] { m_View.SaveToPDF(m_Folder.File("b.pdf"), -1, 10); }));
    EXPECT_FALSE(std::filesystem::exists(m_Folder.File("b.pdf")));
    // Enough to take a while.
    std::vector<double> x(1000);
    for (std::size_t i = 0; i < x.size(); ++i)
        x[i] = 1.0 + static_cast<double>(i) / 500.0;
    CChart3D* chart = m_View.GetChart(0);
    chart->NewChartObj(chart->GetTransform(0))
        ->BarChart25D(x.data(), x.data(), 0, 0, 1000, 1, 1, {1, 0, 0, 1}, {0, 0, 0, 1}, 0, 1, 0);
    // Fast machines may be done before they ask for the last time.
    const std::string file = m_Folder.File("former");
    for (const double last : {0.0, 0.3, 0.7})
        for (const bool isPdf : {true, false}) {
            std::ofstream(file) << "former";
            m_View.SetProgressHandler([last](double done, const CString&) { return done < last; });
            isPdf ? m_View.SaveToPDF(file) : m_View.SaveToSVG(file);
            const bool isKept = test::ReadAll(file) == "former";
            EXPECT_EQ(isKept, m_View.GetStopped() == 1) << "stopped at " << last;
            EXPECT_TRUE(isKept || last > 0.0);
        }
}

}  // namespace
}  // namespace varnel
