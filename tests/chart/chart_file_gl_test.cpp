// The chart file: a view saved and loaded draws the same picture, and damaged files do no harm.
#include <unistd.h>

#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>

#include "tests/support/gl_fixture.h"
#include "varnel/varnel.h"

namespace varnel {
namespace {

using test::ExpectError;

constexpr int kWidth = 160;
constexpr int kHeight = 120;

class ChartFile : public ::testing::Test {
 protected:
    void SetUp() override {
        CErr3D::SetErrorReportMode(0);
        std::filesystem::create_directories(m_Folder);
    }
    void TearDown() override { std::filesystem::remove_all(m_Folder); }

    std::string Path(const std::string& name) const { return m_Folder / name; }

    static std::string Bytes(const std::string& path) {
        std::ifstream in(path, std::ios::binary);
        return {std::istreambuf_iterator<char>(in), {}};
    }
    static void WriteBytes(const std::string& path, const std::string& bytes) {
        std::ofstream(path, std::ios::binary) << bytes;
    }

    /// Two charts with something of every kind that can be saved without loss.
    static void Fill(CChartView3D& view) {
        view.SetFont("Arial", 400, 128);
        view.SetViewBorderColor(SetRGBD(0.2, 0.4, 0.6, 1));
        view.GetHeader()->SetTitle1("A view");
        for (int i = 0; i < 2; ++i) {
            CTransform3D* t = nullptr;
            CAxes3D* axes = nullptr;
            CChart3D* const chart = view.NewChart3D({0, 0, 0, 0}, {10, 1, 100, 0}, &t, &axes);
            t->SetRotate({-20, 0, 25.0 + i, 0});
            chart->SetChartPosition({0.5 * i, 0, 0.5, 0.85});
            chart->GetHeader()->SetFooter("footer");
            for (int axis = 0; axis < 3; ++axis)
                axes->EnableAxis(axis, 1);
            double x[] = {1, 4, 7};
            double y[] = {20, 90, 50};
            chart->NewChartObj(t)->BarChart25D(x, y, 0, 0, 3, 2, 1, {0.8, 0.3, 0.1, 1},
                                               {0, 0, 0, 1}, 0, 0, 0);
            chart->NewAuxObj(t, 3)->SetScale(0.2);
            chart->NewChartTextObj(t, "text")->SetLocation({5, 0, 100, 0});
        }
    }

    static std::vector<BYTE> Draw(CChartView3D& view) {
        view.SetViewSizePrinter();
        view.DrawView();
        CDIBSection& section = *view.GetDIBSectionPntr();
        return {section.FindDIBBits(),
                section.FindDIBBits() + section.StorageWidth() * section.DIBHeight()};
    }

    CWnd m_Window{kWidth, kHeight};
    const std::filesystem::path m_Folder =
        std::filesystem::temp_directory_path() / ("varnel_chart_file_" + std::to_string(getpid()));
};

TEST_F(ChartFile, ALoadedViewDrawsTheSamePicture) {
    CChartView3D saved(&m_Window, kWidth, kHeight);
    Fill(saved);
    const auto picture = Draw(saved);
    saved.Save(Path("a.chart"));
    CChartView3D loaded(&m_Window, kWidth, kHeight);
    loaded.Load(Path("a.chart"));
    EXPECT_EQ(loaded.GetLoadComplete(), 1);
    ASSERT_EQ(loaded.GetNumCharts(), 2);
    EXPECT_EQ(loaded.GetFontWeight(), 400);
    EXPECT_EQ(loaded.GetHeader()->GetTitle1(), "A view");
    CChart3D* const chart = loaded.GetChart(1);
    EXPECT_EQ(chart->GetChartObj(0)->GetTransform(), chart->GetTransform(0));
    EXPECT_EQ(Draw(loaded), picture);
    loaded.Save(Path("b.chart"));
    EXPECT_EQ(Bytes(Path("b.chart")), Bytes(Path("a.chart")));
}

TEST_F(ChartFile, AnEmptyViewIsItsFixedFieldsTwoCountsAndTheHeader) {
    CChartView3D view;
    view.SetFont("abc", 300, 256);
    view.Save(Path("empty.chart"));
    const std::string bytes = Bytes(Path("empty.chart"));
    std::int32_t word[5];
    std::memcpy(word, bytes.data(), sizeof word);
    EXPECT_EQ(word[0], 300);
    EXPECT_EQ(word[1], 256);
    EXPECT_EQ(word[4], 3) << "the length of the name";
    EXPECT_EQ(bytes.substr(20, 3), "abc");
    const std::size_t fixed = 16 + 7 + 32 + 4 + 8 + 32 + 4;
    EXPECT_EQ(bytes.substr(fixed, 8), std::string(8, '\0')) << "no charts, no legends";
    CChartView3D back;
    back.Load(Path("empty.chart"));
    EXPECT_EQ(back.GetFontName(), "abc");
    EXPECT_EQ(back.GetLoadComplete(), 1);
}

TEST_F(ChartFile, WhatThePlainFormatLacksTravelsBehindIt) {
    CChartView3D view;
    view.Save(Path("plain.chart"));
    view.SetHeaderOnTop(1);
    view.Save(Path("more.chart"));
    const std::string plain = Bytes(Path("plain.chart"));
    const std::string more = Bytes(Path("more.chart"));
    ASSERT_GT(more.size(), plain.size());
    EXPECT_EQ(more.substr(0, plain.size()), plain);
    CChartView3D back;
    back.Load(Path("more.chart"));
    EXPECT_EQ(back.GetHeaderOnTop(), 1);
    EXPECT_EQ(back.GetLoadComplete(), 1);
    WriteBytes(Path("bad.chart"), more.substr(0, more.size() - 1));
    back.Load(Path("bad.chart"));
    EXPECT_EQ(back.GetHeaderOnTop(), 0) << "a damaged block is left out";
    EXPECT_EQ(back.GetLoadComplete(), 0);
}

TEST_F(ChartFile, ObjectsFindTheirTransformsAgain) {
    CChartView3D saved(&m_Window, kWidth, kHeight);
    CChart3D* const chart = saved.NewChart3D();
    CTransform3D* const a = chart->NewTransform({0, 0, 0, 0}, {1, 1, 1, 0});
    CTransform3D* const b = chart->NewTransform({0, 0, 0, 0}, {2, 2, 2, 0});
    b->SetSelfID(a->GetSelfID());  // as after loading into a process that has used the number
    chart->NewChartObj(b);
    chart->NewAuxObj(b, 1);
    chart->NewAxes(b);
    chart->NewChartTextObj(b, "x");
    saved.Save(Path("ids.chart"));
    EXPECT_NE(a->GetSelfID(), b->GetSelfID()) << "made unique before it is saved";
    CChartView3D loaded(&m_Window, kWidth, kHeight);
    loaded.Load(Path("ids.chart"));
    CChart3D* const back = loaded.GetChart(0);
    EXPECT_EQ(back->GetChartObj(0)->GetTransform(), back->GetTransform(1));
    EXPECT_EQ(back->GetAuxObj(0)->GetTransform(), back->GetTransform(1));
    EXPECT_EQ(back->GetAxes(0)->GetTransform(), back->GetTransform(1));
    EXPECT_EQ(back->GetChartTextObj(0)->GetTransform(), back->GetTransform(1));
}

TEST_F(ChartFile, CutOffFilesLoadWhatIsThere) {
    CChartView3D saved(&m_Window, kWidth, kHeight);
    Fill(saved);
    saved.Save(Path("whole.chart"));
    const std::string whole = Bytes(Path("whole.chart"));
    for (std::size_t size = 0; size < whole.size(); size += size < 400 ? 37 : 1499) {
        SCOPED_TRACE(size);
        WriteBytes(Path("cut.chart"), whole.substr(0, size));
        CChartView3D loaded(&m_Window, kWidth, kHeight);
        ASSERT_NO_THROW(loaded.Load(Path("cut.chart")));
        EXPECT_EQ(loaded.GetLoadComplete(), 0);
        if (size % 3 == 0) {
            EXPECT_NO_THROW(Draw(loaded));
        }
    }
}

TEST_F(ChartFile, DamagedFilesRaiseErrorsOrLoad) {
    CChartView3D saved(&m_Window, kWidth, kHeight);
    Fill(saved);
    saved.Save(Path("whole.chart"));
    const std::string whole = Bytes(Path("whole.chart"));
    std::uint64_t random = 88172645463325252ULL;
    const auto next = [&random] {
        random ^= random << 13;
        random ^= random >> 7;
        return random ^= random << 17;
    };
    for (int round = 0; round < 40; ++round) {
        SCOPED_TRACE(round);
        std::string bytes = whole;
        for (int k = 0; k < 1 + round % 5; ++k)
            bytes[next() % bytes.size()] = static_cast<char>(next());
        WriteBytes(Path("bad.chart"), bytes);
        CChartView3D loaded(&m_Window, kWidth, kHeight);
        try {
            loaded.Load(Path("bad.chart"));
        } catch (const CErr3D&) {
            continue;  // an object whose transform is not in the file
        }
        EXPECT_NO_THROW(Draw(loaded));
    }
}

TEST_F(ChartFile, FailingFilesLeaveTheOldOneAsItWas) {
    CChartView3D view(&m_Window, kWidth, kHeight);
    Fill(view);
    ExpectError(ERR3D_FILE_OPEN_OUTPUT, ERR3DCLASS_CHARTVIEW3D, "Save",
                [&] { view.Save(Path("missing/a.chart")); });
    ExpectError(ERR3D_FILE_OPEN_INPUT, ERR3DCLASS_CHARTVIEW3D, "Load",
                [&] { view.Load(Path("missing.chart")); });
    ExpectError(ERR3D_FILE_OPEN_INPUT, ERR3DCLASS_CHARTVIEW3D, "Load",
                [&] { view.Load(m_Folder); });
    try {
        view.Save("/dev/full");
        ADD_FAILURE() << "a full disk went unnoticed";
    } catch (const CErr3D& e) {
        EXPECT_EQ(e.m_ErrorType, ERR3D_DISK_IO);
        EXPECT_EQ(e.m_FunctionName, "Save");
    }
}

TEST_F(ChartFile, ABarChart3DLosesItsHeights) {
    CChartView3D saved(&m_Window, kWidth, kHeight);
    CChart3D* const chart = saved.NewChart3D();
    CTransform3D* const t = chart->NewTransform({0, 0, 0, 0}, {10, 10, 10, 0});
    point3Dtype corner{1, 1, 8, 0};
    double height = 4;
    chart->NewChartObj(t)->BarChart3D(&corner, &height, 1, 2, 2, {1, 0, 0, 1}, {0, 0, 0, 1});
    saved.Save(Path("bars.chart"));
    CChartView3D loaded(&m_Window, kWidth, kHeight);
    loaded.Load(Path("bars.chart"));
    EXPECT_EQ(loaded.GetChart(0)->GetChartObj(0)->Get3DPoint(0).z, 8);
    EXPECT_EQ(loaded.GetChart(0)->GetChartObj(0)->GetBarHeight(0), 0);
}

}  // namespace
}  // namespace varnel
