// The chart file: a view saved and loaded draws the same picture, and damaged files do no harm.
#include <cstring>

#include "tests/support/view_test.h"

namespace varnel::test {
namespace {

constexpr int kWidth = 160;
constexpr int kHeight = 120;

class ChartFile : public ViewTest {
 protected:
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
            view.NewLegend3D()->AddChartObj(chart->GetChartObj(0), "bars");
        }
        const RGBDType colors[] = {kRed, kBlue, kBlack};
        view.GetLegend(1)->SetColorBar(colors, 3, 0, 30);
        view.GetLegend(1)->SetLegendPlace(LEGEND_UPPER_LEFT);
    }
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
    EXPECT_EQ(loaded.GetNumLegends(), 2);
    EXPECT_EQ(loaded.GetFontWeight(), 400);
    EXPECT_EQ(loaded.GetHeader()->GetTitle1(), "A view");
    CChart3D* const chart = loaded.GetChart(1);
    EXPECT_EQ(chart->GetChartObj(0)->GetTransform(), chart->GetTransform(0));
    EXPECT_EQ(Draw(loaded), picture);
    loaded.Save(Path("b.chart"));
    EXPECT_EQ(ReadAll(Path("b.chart")), ReadAll(Path("a.chart")));
    loaded.DeleteLegends();
    EXPECT_EQ(loaded.GetNumLegends(), 0);
    loaded.NewLegend3D();
    loaded.DeleteChartViewObjects();
    EXPECT_EQ(loaded.GetNumLegends() + loaded.GetNumCharts(), 0);
}

TEST_F(ChartFile, AnEmptyViewIsItsFixedFieldsTwoCountsAndTheHeader) {
    CChartView3D view;
    view.SetFont("abc", 300, 256);
    view.Save(Path("empty.chart"));
    const std::string bytes = ReadAll(Path("empty.chart"));
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
    const std::string plain = ReadAll(Path("plain.chart"));
    const std::string more = ReadAll(Path("more.chart"));
    ASSERT_GT(more.size(), plain.size());
    EXPECT_EQ(more.substr(0, plain.size()), plain);
    CChartView3D back;
    back.Load(Path("more.chart"));
    EXPECT_EQ(back.GetHeaderOnTop(), 1);
    EXPECT_EQ(back.GetLoadComplete(), 1);
    WriteAll(Path("bad.chart"), more.substr(0, more.size() - 1));
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
    const std::string whole = ReadAll(Path("whole.chart"));
    for (std::size_t size = 0; size < whole.size(); size += size < 400 ? 37 : 1499) {
        SCOPED_TRACE(size);
        WriteAll(Path("cut.chart"), whole.substr(0, size));
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
    const std::string whole = ReadAll(Path("whole.chart"));
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
        WriteAll(Path("bad.chart"), bytes);
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
                [&] { view.Load(std::filesystem::temp_directory_path()); });
    ExpectError(ERR3D_DISK_IO, ERR3DCLASS_CHARTVIEW3D, "Save", [&] { view.Save("/dev/full"); });
}

TEST_F(ChartFile, WhatIsNoChartFileIsRefusedAndChangesNothing) {
    CChartView3D view(&m_Window, kWidth, kHeight);
    Fill(view);
    const auto picture = Draw(view);
    std::string png = "\x89PNG\r\n\x1a\n";
    for (const std::string& bytes :
         {std::string("year,jobs\n2001,7\n2002,9\n"), png + std::string(40, '\0'),
          std::string("\x90\1\0\0\0\1\0\0\0\0\0\0\0\0\0\0\xFF\xFF\0\0", 20)}) {
        WriteAll(Path("jobs.csv"), bytes);
        ExpectError(ERR3D_FILE_OPEN_INPUT, ERR3DCLASS_CHARTVIEW3D, "Load",
                    [&] { view.Load(Path("jobs.csv")); });
    }
    EXPECT_EQ(WhatOf([&] { view.Load(Path("jobs.csv")); }),
              "Load: " + Path("jobs.csv") + " is no chart file");
    EXPECT_EQ(Draw(view), picture);
}

TEST_F(ChartFile, APictureThatManyPlanesNameIsReadOnce) {
    CChartView3D view(&m_Window, kWidth, kHeight);
    view.SaveToFile(Path("a.bmp"));
    for (int i = 0; i < 2; ++i) {
        CTransform3D* t = nullptr;
        CChart3D* const chart = view.NewChart3D({0, 0, 0, 0}, {1, 1, 1, 0}, &t);
        chart->NewDIBObj(t, Path("a.bmp"));
        chart->NewDIBObj(t, Path("a.bmp"));
    }
    view.Save(Path("a.chart"));
    int reads = 0;
    const auto before = SetPictureFileHook([&](const CString& picture, const CString&) {
        ++reads;
        return picture;
    });
    view.DeleteChartViewObjects();
    view.Load(Path("a.chart"));
    SetPictureFileHook(before);
    EXPECT_EQ(reads, 1);
    EXPECT_EQ(view.GetChart(1)->GetDIBObj(1)->GetDib()->GetDibWidth(), kWidth);
}

TEST_F(ChartFile, AnErrorInsideAFileLeavesTheViewAsItWas) {
    CChartView3D bad(&m_Window, kWidth, kHeight);
    Fill(bad);
    bad.SetFont("Courier New", 900, 256);
    bad.GetHeader()->SetTitle1("Bad");
    bad.GetChart(1)->NewChartTextObj();
    EXPECT_EQ(Told([&] { bad.Save(Path("bad.chart")); }),
              "Save: text object 1 has no transform: what is saved cannot be loaded again\n");
    CChartView3D view(&m_Window, kWidth, kHeight);
    Fill(view);
    const auto picture = Draw(view);
    ExpectError(ERR3D_TRANSFORM_PARAMETER, ERR3DCLASS_TEXTOBJ3D, "InitTextObj",
                [&] { view.Load(Path("bad.chart")); });
    EXPECT_EQ(view.GetFontName(), "Arial");
    EXPECT_EQ(view.GetHeader()->GetTitle1(), "A view");
    EXPECT_EQ(view.GetNumCharts(), 2);
    EXPECT_EQ(Draw(view), picture);
}

TEST_F(ChartFile, LoadingAChartReplacesWhatItHas) {
    CChartView3D view(&m_Window, kWidth, kHeight);
    Fill(view);
    CChart3D* const chart = view.GetChart(0);
    MemoryFile whole;
    chart->Save(&whole);
    chart->NewChartTextObj("one more");
    chart->GetHeader()->SetFooter("another");
    MemoryFile cut({whole.GetBytes().begin(), whole.GetBytes().end() - 3});
    for (MemoryFile* file : {&whole, &cut}) {
        chart->Load(file);
        EXPECT_EQ(chart->GetNumChartTextObjs(), 1);
        EXPECT_EQ(chart->GetNumTransforms(), 1);
        EXPECT_EQ(chart->GetChartObj(0)->GetTransform(), chart->GetTransform(0));
        EXPECT_EQ(chart->GetHeader()->GetFooter(), "footer");
    }
}

TEST_F(ChartFile, AHostWatchesAndStopsWhatTakesLong) {
    CChartView3D view(&m_Window, kWidth, kHeight);
    CChart3D* const chart = AddBar(view, kRed);
    view.Save(Path("old.chart"));
    const std::string old = ReadAll(Path("old.chart"));
    const auto picture = Draw(view);
    // Enough bars for drawing, and enough numbers for the file, to take a while.
    const std::vector<double> x(1500000, 5.0);
    for (const int bars : std::vector<int>(30, 1000))
        chart->NewChartObj(chart->GetTransform(0))
            ->BarChart25D(x.data(), x.data(), 0, 0, bars, 1, 1, kBlue, kBlue, 0, 0, 0);
    CChartObj3D* const hidden = chart->NewChartObj(chart->GetTransform(0));
    hidden->BarChart25D(x.data(), x.data(), 0, 0, 1500000, 1, 1, kBlue, kBlue, 0, 0, 0);
    hidden->EnableChartObj(0);
    view.Save(Path("long.chart"));
    CChartView3D other(&m_Window, kWidth, kHeight);
    int calls = 0;
    double last = 0.0;
    std::string whats;
    const ProgressHandler stop = [&](double fraction, const CString& what) {
        EXPECT_GE(fraction, last);
        EXPECT_LE(fraction, 1.0);
        last = fraction;
        whats += " " + what;
        ++calls;
        return false;
    };
    const auto watch = [&](CChartView3D& watched, const auto& work) {
        calls = 0;
        last = 0.0;
        watched.SetProgressHandler(stop);
        work();
        EXPECT_EQ(watched.GetStopped(), 1) << whats;
        EXPECT_EQ(calls, 1) << "a handler that stops is not asked again";
        watched.SetProgressHandler({});
    };
    watch(view, [&] { view.DrawView(); });
    EXPECT_TRUE(Image(view) == picture) << "the picture is the former one";
    watch(view, [&] { view.Save(Path("old.chart")); });
    EXPECT_TRUE(ReadAll(Path("old.chart")) == old) << "the file is the former one";
    watch(other, [&] { other.Load(Path("long.chart")); });
    EXPECT_EQ(other.GetNumCharts(), 0);
    watch(view, [&] { view.SaveToPNG(Path("never.png")); });
    EXPECT_FALSE(std::filesystem::exists(Path("never.png")));
    EXPECT_EQ(whats, " drawing saving loading drawing");
    last = 0.0;
    other.SetProgressHandler([&](double fraction, const CString& what) {
        stop(fraction, what);
        return true;
    });
    other.Load(Path("long.chart"));
    EXPECT_EQ(other.GetStopped(), 0);
    other.SetProgressHandler({});
    EXPECT_EQ(Draw(other), Draw(view)) << "nothing is left behind";
}

}  // namespace
}  // namespace varnel::test
