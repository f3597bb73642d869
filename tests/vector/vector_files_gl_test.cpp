// Vector files and pages of whole views, as other programs read them.
#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "tests/support/expect_error.h"
#include "tests/support/x_server.h"
#include "varnel/varnel.h"

namespace varnel {
namespace {

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
        chart->GetHeader()->SetTitle1("Größe & Zahl");
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
    EXPECT_NE(Output("pdffonts " + file).find("yes yes yes"), std::string::npos)
        << "embedded, a subset, with a way back to Unicode";
    EXPECT_EQ(Output("pdfimages -list " + file).find("image"), std::string::npos);
    EXPECT_NE(Output("pdfinfo " + file).find("453.543 x 340.157"), std::string::npos);
}

TEST_F(VectorFiles, SvgHoldsTextAndIsReadAgain) {
    SKIP_WITHOUT("rsvg-convert");
    const std::string file = m_Folder.File("a.svg");
    m_View.SaveToSVG(file);
    const std::string svg = Output("cat " + file);
    EXPECT_NE(svg.find("Größe </tspan>"), std::string::npos);
    EXPECT_NE(svg.find(">&amp; </tspan>"), std::string::npos);
    test::RunCommand("rsvg-convert " + file + " -o " + m_Folder.File("a.png"));
    EXPECT_GT(std::filesystem::file_size(m_Folder.File("a.png")), 1000U);
}

TEST_F(VectorFiles, DocumentsAndPrintersTakePagesOfVectors) {
    SKIP_WITHOUT("pdftotext");
    PdfDocument document(m_Folder.File("two.pdf"));
    document.AddPage(m_View);
    m_View.GetChart(0)->GetHeader()->SetTitle1("Second");
    document.AddPage(m_View, 100, 75);
    document.Close();
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
    const std::string file = m_Folder.File("far.svg");
    m_View.SaveToSVG(file);
    EXPECT_LT(std::filesystem::file_size(file), 200'000U);
    const std::string svg = Output("cat " + file);
    EXPECT_NE(svg.find("stroke=\"#f00\""), std::string::npos);
}

TEST_F(VectorFiles, WhatCannotBeWrittenLeavesNoFile) {
    EXPECT_TRUE(test::Raises(ERR3D_FILE_OPEN_OUTPUT, ERR3DCLASS_CHARTVIEW3D, "SaveToPDF",
                             [&] { m_View.SaveToPDF(m_Folder.File("no/a.pdf")); }));
    EXPECT_TRUE(test::Raises(ERR3D_PARAMETER, ERR3DCLASS_CHARTVIEW3D, "SaveToPDF",
                             [&] { m_View.SaveToPDF(m_Folder.File("b.pdf"), -1, 10); }));
    EXPECT_FALSE(std::filesystem::exists(m_Folder.File("b.pdf")));
}

}  // namespace
}  // namespace varnel
