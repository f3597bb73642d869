// The program varnel, as its user meets it: pictures, sentences, and a window driven by mouse and
// keys.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <functional>
#include <regex>
#include <set>
#include <sstream>
#include <thread>

#include "tests/support/png.h"
#include "tests/support/x_server.h"
#include "varnel/chart/chart.h"
#include "varnel/chart/chart_view.h"
#include "varnel/chart/header.h"
#include "varnel/chartobj/chart_object.h"
#include "varnel/foundation/version.h"
#include "varnel/platform/dib_section.h"
#include "varnel/platform/window.h"
#include "varnel/transform/transform.h"

namespace varnel {
namespace {

using test::ReadAll;

constexpr int kWidth = 400;
constexpr int kHeight = 300;

/// Two charts side by side, the left one with bars.
void WriteChartFile(const std::string& file) {
    CWnd window(16, 16);
    CChartView3D view(&window, 16, 16);
    for (const double x : {0.0, 0.5}) {
        CTransform3D* t = nullptr;
        CChart3D* chart = view.NewChart3D({0, 0, 0, 0}, {5, 1, 10, 0}, &t);
        chart->SetChartPosition({x, 0, 0.5, 1});
        t->SetRotate({-20, 0, 25, 0});
        const double ind[] = {1, 2, 3, 4};
        const double dep[] = {4, 9, 6, 2};
        chart->NewChartObj(t)->BarChart25D(ind, dep, 0, 0.5, 4, 0.7, 0.5, {0.2, 0.5, 0.8, 1},
                                           {0, 0, 0, 1}, 1, 1, 0);
        chart->GetHeader()->SetTitle1(x == 0.0 ? "Left" : "Right");
    }
    view.Save(file);
}

/// What the file looks like, drawn here, after `change`.
class Expected {
 public:
    explicit Expected(
        const std::string& file,
        const std::function<void(CChartView3D&)>& change = [](CChartView3D&) {})
        : m_Window(kWidth, kHeight), m_View(&m_Window, kWidth, kHeight) {
        m_View.Load(file);
        change(m_View);
        m_View.SetViewSizePrinter();
        m_View.DrawView();
    }
    CChartView3D& View() { return m_View; }
    const Bitmap& Picture() const { return *m_View.GetDIBSectionPntr()->GetBitmap(); }

 private:
    CWnd m_Window;
    CChartView3D m_View;
};

/// The part of the pixels of columns [from, to) that differ visibly.
double PartDiffering(const Bitmap& a, const Bitmap& b, int from = 0, int to = kWidth) {
    int differing = 0;
    for (int y = 0; y < kHeight; ++y)
        for (int x = from; x < to; ++x) {
            const RGBQUAD p = a.PixelFromTop(x, y);
            const RGBQUAD q = b.PixelFromTop(x, y);
            differing += std::abs(p.rgbRed - q.rgbRed) > 20 || std::abs(p.rgbBlue - q.rgbBlue) > 20;
        }
    return static_cast<double>(differing) / ((to - from) * kHeight);
}

class ProgramTest : public testing::Test {
 protected:
    ProgramTest() : m_File(m_Folder.File("two.chart")) { WriteChartFile(m_File); }

    static std::string Run(const std::string& arguments, int* status = nullptr) {
        return test::RunCommand(std::string(VARNEL_PROGRAM) + " " + arguments + " 2>&1", status);
    }

    test::TemporaryFolder m_Folder;
    std::string m_File;
};

TEST_F(ProgramTest, RenderMakesTheViewsPicture) {
    int status = -1;
    const std::string said =
        Run("render " + m_File + " -o " + m_Folder.File("a.png") + " --size 400x300 --samples 0",
            &status);
    EXPECT_EQ(status, 0) << said;
    Run("render " + m_File + " -o " + m_Folder.File("a.BMP") + " --size 400x300 --samples 0");
    Run("render " + m_File + " -o " + m_Folder.File("c.png") +
        " --size 400x300 --samples 0 --theme dark");
    Expected expected(m_File);
    expected.View().SaveToPNG(m_Folder.File("b.png"), {"Left", "Varnel " VARNEL_VERSION, 96});
    expected.View().SaveToFile(m_Folder.File("b.bmp"));
    EXPECT_EQ(ReadAll(m_Folder.File("a.png")), ReadAll(m_Folder.File("b.png")));
    EXPECT_EQ(ReadAll(m_Folder.File("a.BMP")), ReadAll(m_Folder.File("b.bmp")));
    EXPECT_GT(test::MeanDifference(test::ReadPng(m_Folder.File("a.png")),
                                   test::ReadPng(m_Folder.File("c.png"))),
              50)
        << "a dark ground";
    Run("render " + m_File + " -o " + m_Folder.File("a.svg") + " --size 90x60mm");
    EXPECT_NE(ReadAll(m_Folder.File("a.svg")).find("width=\"90mm\" height=\"60mm\""),
              std::string::npos);
}

TEST_F(ProgramTest, WhatIsWrongIsToldInASentence) {
    const std::string cut = m_Folder.File("cut.chart");
    std::ofstream(cut, std::ios::binary) << ReadAll(m_File).substr(0, 2000);
    const std::string text = m_Folder.File("text");
    std::ofstream(text) << "no chart at all";
    const std::string picture = " -o " + m_Folder.File("x.png");
    struct Case {
        std::string arguments;
        std::string said;
        int status;
    };
    const Case cases[] = {
        {"render /nonexistent" + picture, "varnel: There is no file /nonexistent.\n", 1},
        {"info " + text, "varnel: " + text + " is not a chart file.\n", 1},
        {"render /tmp" + picture, "varnel: /tmp is a folder, not a chart file.\n", 1},
        {"render " + cut + picture,
         "varnel: " + cut +
             " is damaged: it ends too early. What could be read is shown.\n"
             "varnel: DrawChart: the chart has no data, and no axes that are enabled\n",
         2},
        {"render " + m_File + " -o x.jpg",
         "varnel: The picture x.jpg has to end in .png, .bmp, .pdf or .svg.\n", 1},
    };
    for (const Case& c : cases) {
        int status = -1;
        EXPECT_EQ(Run(c.arguments, &status), c.said);
        EXPECT_EQ(status, c.status) << c.arguments;
    }
    EXPECT_TRUE(std::filesystem::exists(m_Folder.File("x.png"))) << "of the part that was read";
    int status = -1;
    const std::string said = test::RunCommand(
        "env -u DISPLAY " + std::string(VARNEL_PROGRAM) + " view " + m_File + " 2>&1", &status);
    EXPECT_NE(said.find("DISPLAY is not set"), std::string::npos) << said;
    EXPECT_EQ(status, 1);
    for (const char* wrong : {" --size 10", " --limit-time -1", " --limit-memory 2X", " --none"}) {
        Run("render " + m_File + picture + wrong, &status);
        EXPECT_EQ(status, 64) << wrong;
    }
}

TEST_F(ProgramTest, ManyFilesAreDrawnPastBrokenOnesAndWithinLimits) {
    const std::string broken = m_Folder.File("broken.chart");
    std::ofstream(broken) << "no chart at all";
    const std::string out = " -o " + m_Folder.File("out/") + " --size 80x60 --samples 0";
    const std::string same = m_Folder.File("copy.chart");
    std::filesystem::copy(m_File, same);
    const std::string files = m_File + " " + broken + " " + same;
    struct Case {
        std::string arguments;
        const char* said;
        int status;
        bool made;
    };
    const Case cases[] = {
        {files, "2 of 3 pictures made", 1, true},
        {m_File + " " + same + " --limit-time 60 --limit-memory 8G --format bmp", "", 0, true},
        {files + " --limit-time 0.000001", "took longer than the limit of time", 3, false},
        {m_File + " --limit-memory 30M", "varnel: ", 1, false},
        {m_File + " " + m_File, "would both become", 1, false},
        {m_File + " -o " + same + "/x/", "is no folder", 1, false},
    };
    for (const Case& c : cases) {
        std::filesystem::remove_all(m_Folder.File("out"));
        int status = -1;
        const std::string said =
            Run("render " + c.arguments + (c.arguments.find(" -o ") == c.arguments.npos ? out : ""),
                &status);
        // Without memory it is the driver's choice whether it fails or dies.
        const bool died = status == 3 && c.arguments.find("memory 30M") != c.arguments.npos;
        EXPECT_EQ(died ? 1 : status, c.status) << c.arguments << said;
        EXPECT_NE(said.find(c.said), std::string::npos) << said;
        const bool bmp = c.arguments.find("bmp") != c.arguments.npos;
        EXPECT_EQ(std::filesystem::exists(m_Folder.File(bmp ? "out/copy.bmp" : "out/two.png")),
                  c.made)
            << c.arguments;
    }
}

TEST_F(ProgramTest, DoctorAndManPage) {
    int status = -1;
    EXPECT_NE(Run("doctor", &status).find("can be made"), std::string::npos);
    EXPECT_EQ(status, 0);
    const std::string without = test::RunCommand(
        "VARNEL_EGL=device:99 " + std::string(VARNEL_PROGRAM) + " doctor", &status);
    EXPECT_NE(without.find("install libegl-mesa0"), std::string::npos) << without;
    EXPECT_EQ(status, 1);
    const std::string page = Run("man", &status);
    for (const char* part : {".SH EXIT STATUS", "\\-\\-limit\\-memory", ".SS varnel doctor"})
        EXPECT_NE(page.find(part), std::string::npos) << part;
}

TEST_F(ProgramTest, InfoListsWhatIsThere) {
    const std::string said = Run("info " + m_File);
    for (const char* part : {"view: 2 charts", "title: Left", "title: Right", "bar, 4 points",
                             "from (0, 0, 0) to (5, 1, 10), turned by (-20, 0, 25)"})
        EXPECT_NE(said.find(part), std::string::npos) << part << "\nin\n" << said;
}

TEST_F(ProgramTest, EveryCommandOfTheDocumentsWorks) {
    const std::filesystem::path data = VARNEL_EXAMPLE_DATA;
    std::filesystem::create_directory(m_Folder.File("examples"));
    std::filesystem::create_directory_symlink(data, m_Folder.File("examples/data"));
    std::filesystem::copy(m_File, m_Folder.File("sold.chart"));
    const std::string start = "cd " + m_Folder.File("") + " && env -u DISPLAY " VARNEL_PROGRAM;
    // The man page has the examples of every --help.
    std::istringstream lines(ReadAll(data.parent_path().parent_path() / "README.md") +
                             std::regex_replace(Run("man"), std::regex("[\\\\]-"), "-"));
    std::set<std::string> commands;
    for (std::string line; std::getline(lines, line);) {
        const std::size_t at = line.find("varnel ");
        if (line.starts_with("    varnel ") || line.starts_with("Example: "))
            commands.insert(line.substr(at + 6, line.find('#') - at - 6));
    }
    EXPECT_GE(commands.size(), 16U + 8U);
    for (const std::string& command : commands) {
        const bool draws = command.find(" -o ") != command.npos;
        const bool shows = command.starts_with(" view");
        int status = -1;
        const std::string said = test::RunCommand(
            start + command + (draws ? " --size 160x120 --samples 0" : "") + " 2>&1", &status);
        EXPECT_EQ(status, shows ? 1 : 0) << command << said;
        EXPECT_TRUE(!draws || said.empty()) << command << said;
        EXPECT_TRUE(!shows || said.find("DISPLAY is not set") != said.npos) << said;
        if (!draws || command.find("out/") != command.npos) continue;
        const std::size_t at = command.find(" -o ") + 4;
        EXPECT_TRUE(
            std::filesystem::exists(m_Folder.File(command.substr(at, command.find(' ', at) - at))))
            << command;
    }
}

TEST_F(ProgramTest, PlotReadsPreparesAndTells) {
    const std::string csv = m_Folder.File("t.csv");
    std::ofstream(csv) << "day;kind;v\n3.1.2024;b;1,5\n1.1.2024;a;2,5\n2.1.2024;a;x\n";
    const std::string out = " -o " + m_Folder.File("t.chart") + " --size 60x40 --samples 0";
    struct Case {
        std::string arguments;
        const char* said;
        int status;
    };
    const Case cases[] = {
        {"plot line " + csv + " -x day --date-format %d.%m.%Y -y v --where kind=b", "", 0},
        {"plot bars " + csv + " -x B -y 3 --where kind!=c --where v!=x", "", 0},
        {"plot bars " + csv + " -x kind --group count --sort -kind", "", 0},
        {"plot line " + csv + " -x day --date-format %d.%m.%Y -y v",
         "t.csv, line 4, column 3 (v): \"x\" is no number", 1},
        {"plot line " + csv + " -x day -y v --where kind=b --line-y abc",
         "\"abc\" is neither a number nor a date.", 1},
        {"plot line " + csv + " -y w", "has no column \"w\"; its columns are day, kind, v", 1},
        {"plot line " + csv + " -y v --where kind=c", "has no rows that match --where", 1},
        {"plot surface " + csv, "is no number", 1},
        {"plot line /none.csv", "/none.csv cannot be read: No such file", 1},
        {"plot pie " + csv, "", 64},
        {"plot line " + csv + " --size 1", "WIDTHxHEIGHT", 64},
        {"plot line " + csv + " --size 9x6ft", "WIDTHxHEIGHT", 64},
        {"plot bars " + csv + " --group most", "", 64},
    };
    for (const Case& c : cases) {
        int status = -1;
        const std::string said = Run(c.arguments + out, &status);
        EXPECT_EQ(status, c.status) << c.arguments << said;
        EXPECT_NE(said.find(c.said), std::string::npos) << said;
    }
    EXPECT_NE(Run("info " + m_Folder.File("t.chart")).find("bar, 2 points"), std::string::npos);
    const std::string png =
        test::RunCommand("printf \"a,b\\n1,2\\n3,4\\n\" | " + std::string(VARNEL_PROGRAM) +
                         " plot line - -x a -o - --size 60x40");
    EXPECT_EQ(png.find("PNG"), 1U);
    int status = -1;
    const std::string said =
        test::RunCommand("env -u DISPLAY " + std::string(VARNEL_PROGRAM) + " plot boxes " + csv +
                             " -x kind -y v --where kind=b 2>&1",
                         &status);
    EXPECT_EQ(status, 1);
    EXPECT_NE(said.find("no display"), std::string::npos) << said;
}

/// A viewer on a display of its own.
class ViewerTest : public ProgramTest {
 protected:
    void Start() {
        SKIP_WITHOUT("xdotool");
        SKIP_WITHOUT("Xvfb");
        m_Server = test::XServer::Start();
        ASSERT_NE(m_Server, nullptr);
        m_Process = fork();
        if (m_Process == 0) {
            prctl(PR_SET_PDEATHSIG, SIGKILL);
            setenv("DISPLAY", m_Server->Name().c_str(), 1);
            // Pictures are saved to the current folder.
            if (chdir(m_Folder.File("").c_str()) != 0) _exit(126);
            const int errors = open("errors", O_WRONLY | O_CREAT, 0600);
            dup2(errors, STDERR_FILENO);
            execl(VARNEL_PROGRAM, "varnel", "view", m_File.c_str(), "--size", "400x300",
                  "--samples", "0", static_cast<char*>(nullptr));
            _exit(127);
        }
        std::string id;
        ASSERT_TRUE(Until([&] {
            id = test::RunCommand("DISPLAY=" + m_Server->Name() + " xdotool search --name varnel");
            return !id.empty();
        })) << "no window comes up";
        m_Window = std::stoul(id);
        // The hint at the start goes away with the first click.
        Do("mousemove 5 5 click 1");
        ASSERT_TRUE(Shows(Expected(m_File).Picture())) << "the chart is not shown";
    }

    void TearDown() override {
        if (m_Process > 0) {
            kill(m_Process, SIGKILL);
            waitpid(m_Process, nullptr, 0);
        }
    }

    void Do(const std::string& actions) {
        test::RunCommand("DISPLAY=" + m_Server->Name() + " xdotool " + actions);
    }

    static bool Until(const std::function<bool()>& condition, int seconds = 30) {
        const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(seconds);
        while (!condition()) {
            if (std::chrono::steady_clock::now() > end) return false;
            std::this_thread::sleep_for(std::chrono::milliseconds(50));
        }
        return true;
    }

    /// Waits until the window shows a picture, but for `part` of its pixels.
    bool Shows(const Bitmap& picture, double part = 0.0) {
        return Until([&] {
            const auto shown = m_Server->Photograph(m_Window);
            return shown && shown->Width() == kWidth && PartDiffering(*shown, picture) <= part;
        });
    }

    bool Exists(const std::string& name) const {
        return std::filesystem::exists(m_Folder.File(name));
    }

    /// Waits for the program's end; its exit status, -1 when it does not end by itself.
    int ExitStatus() {
        int status = 0;
        if (!Until([&] { return waitpid(m_Process, &status, WNOHANG) == m_Process; })) return -1;
        m_Process = 0;
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }

    std::unique_ptr<test::XServer> m_Server;
    pid_t m_Process = 0;
    unsigned long m_Window = 0;
};

TEST_F(ViewerTest, TheChartUnderTheMouseTurnsAndGrows) {
    Start();
    if (IsSkipped() || HasFatalFailure()) return;
    std::string drag = "mousemove 100 150 mousedown 1";
    for (int i = 1; i <= 50; ++i)
        drag += " mousemove " + std::to_string(100 + 2 * i) + " " + std::to_string(150 - i / 5);
    Do(drag + " mouseup 1 mousemove 190 20");
    // 100 pixels to the right and 10 up, at 0.4 degrees each.
    const Expected turned(m_File, [](CChartView3D& view) {
        view.GetChart(0)->GetTransform(0)->SetRotate({-16, 0, 25 - 40, 0});
    });
    EXPECT_GT(PartDiffering(turned.Picture(), Expected(m_File).Picture(), 0, 200), 0.05);
    EXPECT_TRUE(Shows(turned.Picture(), 0.002));

    Do("mousemove 300 150 click 4 click 4 click 5 click 4");
    const Expected larger(m_File, [](CChartView3D& view) {
        view.GetChart(0)->GetTransform(0)->SetRotate({-16, 0, 25 - 40, 0});
        const double half = 0.5 * 1.1 * 1.1;
        view.GetChart(1)->GetTransform(0)->SetChartRect({half, half, half, 0});
    });
    EXPECT_TRUE(Shows(larger.Picture(), 0.002));

    Do("key r");
    EXPECT_TRUE(Shows(Expected(m_File).Picture()));
    Do("key Right key Right key Down");
    EXPECT_TRUE(Shows(Expected(m_File,
                               [](CChartView3D& view) {
                                   view.GetChart(1)->GetTransform(0)->SetRotate({-25, 0, 15, 0});
                               })
                          .Picture(),
                      0.002));
}

TEST_F(ViewerTest, ResizingRedrawsAndHelpCoversTheChart) {
    Start();
    if (IsSkipped() || HasFatalFailure()) return;
    Do("key h");
    EXPECT_TRUE(Until([&] {
        const auto shown = m_Server->Photograph(m_Window);
        const RGBQUAD p = shown->PixelFromTop(300, 40);
        return p.rgbRed < 60 && p.rgbBlue < 80;
    })) << "no help";
    Do("key h");
    EXPECT_TRUE(Shows(Expected(m_File).Picture()));
    m_Server->ResizeWindow(m_Window, 500, 350);
    m_Server->ResizeWindow(m_Window, kWidth, kHeight);
    EXPECT_TRUE(Shows(Expected(m_File).Picture()));
    Do("key a");
    EXPECT_TRUE(Until([&] {
        const auto shown = m_Server->Photograph(m_Window);
        return PartDiffering(*shown, Expected(m_File).Picture(), 200, 400) > 0.001;
    })) << "no smoother edges";
}

TEST_F(ViewerTest, PicturesAreSavedCopiedAndPrinted) {
    Start();
    if (IsSkipped() || HasFatalFailure()) return;
    SKIP_WITHOUT("xclip");
    SKIP_WITHOUT("pdfinfo");
    Expected(m_File).View().SaveToPNG(m_Folder.File("expected.png"));
    const std::string expected = ReadAll(m_Folder.File("expected.png"));
    Do("key s key s");
    ASSERT_TRUE(Until([&] { return Exists("two.png") && Exists("two-2.png"); }));
    EXPECT_EQ(ReadAll(m_Folder.File("two.png")), expected);
    EXPECT_EQ(ReadAll(m_Folder.File("two-2.png")), expected);
    Do("key c");
    std::string pasted;
    EXPECT_TRUE(Until([&] {
        pasted = test::RunCommand("DISPLAY=" + m_Server->Name() +
                                  " xclip -selection clipboard -o -t image/png 2>/dev/null");
        return !pasted.empty();
    }));
    EXPECT_EQ(pasted, expected);
    Do("key p");
    ASSERT_TRUE(Until([&] { return Exists("two.pdf"); }));
    const std::string info = test::RunCommand("pdfinfo " + m_Folder.File("two.pdf"));
    EXPECT_NE(info.find("841.89 x 595.276 pts"), std::string::npos) << info;
    EXPECT_EQ(test::RunCommand("pdfimages -list " + m_Folder.File("two.pdf")).find("image"),
              std::string::npos)
        << "areas, lines and text";
    Do("key q");
    EXPECT_EQ(ExitStatus(), 0);
}

TEST_F(ViewerTest, ALostDisplayEndsItWithASentence) {
    Start();
    if (IsSkipped() || HasFatalFailure()) return;
    m_Server->Kill();
    EXPECT_EQ(ExitStatus(), 1);
    EXPECT_EQ(ReadAll(m_Folder.File("errors")), "varnel: The display is gone.\n");
}

}  // namespace
}  // namespace varnel
