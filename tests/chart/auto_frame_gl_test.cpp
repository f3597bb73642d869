// Automatic charts over many data sets, sizes and views: nothing outside the frame, no text on
// another, every label different, and a box that uses the room.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>
#include <span>
#include <string>
#include <vector>

#include "tests/support/view_test.h"
#include "varnel/axes/detail/axes_extents.h"

namespace varnel::test {
namespace {

enum class Kind { kLine, kBars, kPoints };

/// Values from `min` to `max` over places from `first` to `last`.
struct DataSet {
    const char* name;
    double first, last, min, max;
    int count;
    bool dates = false;
    bool logarithmic = false;
    int names = 0;
    bool damaged = false;
};

const DataSet kSets[] = {
    {"years", 1950, 2020, 3, 870, 71},
    {"percent", 0, 100, 0, 1, 30},
    {"tiny", 0, 10, 1e-9, 9e-9, 20},
    {"huge", 0, 10, 1.1e9, 1.9e9, 20},
    {"negative", -50, -10, -873, -12, 20},
    {"one point", 5, 5, 7, 7, 1},
    {"all equal", 0, 10, 5, 5, 11},
    {"two points", 1, 2, -1, 1, 2},
    {"seven decades", 1, 10, 3e-4, 4e3, 12, false, true},
    {"an hour", DaysOf(2024, 3, 3, 40000), DaysOf(2024, 3, 3, 43000), 0, 8, 50, true},
    {"months", DaysOf(2023, 11, 27), DaysOf(2024, 6, 2), -5, 25, 90, true},
    {"centuries", DaysOf(1010, 1, 1), DaysOf(1990, 1, 1), 100, 9e5, 50, true},
    {"12 names", 1, 12, 0, 300, 12, false, false, 12},
    {"40 long names", 1, 40, 0, 2e6, 40, false, false, 40},
    {"a range on a large number", 0, 1, 1e9, 1e9 + 5, 9},
    {"no data among them", 0, 10, -3, 40, 20, false, false, 0, true},
    {"many", 0, 1, -1, 1, 100000},
    {"beyond all bounds", 0, 1, -1e300, 1e300, 5},
    {"a thousand years", 0, 2000, 0.001, 0.002, 20},
    {"around zero", -1e-4, 1e-4, -0.02, 0.03, 15},
};

std::vector<double> Spread(double min, double max, int count) {
    std::vector<double> values;
    for (int i = 0; i < count; ++i)
        values.push_back(count < 2 ? min : min + (max - min) * i / (count - 1));
    return values;
}

/// The number that a label shows: "−1.5K", "5×10⁻⁹", "10⁶".
double ReadLabel(std::string text) {
    static const std::pair<const char*, const char*> kAscii[] = {
        {"−", "-"},  {"×10", "e"},  {"⁻", "-"},   {"⁰", "0"},   {"¹", "1"},   {"²", "2"},
        {"³", "3"},  {"⁴", "4"},    {"⁵", "5"},   {"⁶", "6"},   {"⁷", "7"},   {"⁸", "8"},
        {"⁹", "9"},  {"p", "e-12"}, {"n", "e-9"}, {"µ", "e-6"}, {"m", "e-3"}, {"K", "e3"},
        {"M", "e6"}, {"B", "e9"},   {"T", "e12"}};
    std::erase(text, ' ');
    // A power of ten by itself; "µ" begins like "¹".
    const std::string next = text.substr(std::min<std::size_t>(2, text.size()), 2);
    if (text.starts_with("10") && (next == "\xE2\x81" || next == "¹" || next == "²" || next == "³"))
        text.replace(0, 2, "1e");
    if (text.starts_with("×")) text.insert(0, "1");
    for (const auto& [from, to] : kAscii)
        for (std::size_t at = text.find(from); at != std::string::npos; at = text.find(from))
            text.replace(at, std::strlen(from), to);
    std::size_t read = 0;
    const double value = std::stod(text, &read);
    EXPECT_EQ(read, text.size()) << text;
    return value;
}

class AutoFrames : public ViewTest {
 protected:
    /// An automatic chart with titles.
    Frame Make(CChart3D& chart, const DataSet& set, Kind kind) {
        CTransform3D* const t = chart.NewTransform({0, 0, 0, 0}, {1, 1, 1, 0});
        CChartObj3D* const object = chart.NewChartObj(t);
        const std::vector<double> ind = Spread(set.first, set.last, set.count);
        std::vector<double> dep = Spread(set.min, set.max, set.count);
        if (set.logarithmic)
            for (double& v : dep)
                v = set.min * std::pow(set.max / set.min, (v - set.min) / (set.max - set.min));
        if (set.damaged) {
            dep[2] = kNaN;
            dep[5] = kInf;
        }
        const double width = set.count > 1 ? 0.7 * (ind[1] - ind[0]) : 1.0;
        FrameOptions options;
        if (kind == Kind::kLine) object->LineChart25D(ind, dep, 0, 0, 1, {}, 0);
        if (kind == Kind::kBars) object->BarChart25D(ind, dep, 0, 0, width, 1, {}, {}, 1, 0, 0);
        if (kind == Kind::kPoints) {
            std::vector<point3Dtype> points;
            for (std::size_t i = 0; i < ind.size(); ++i)
                points.push_back({ind[i], dep[i], dep[i], 0});
            object->ScatterChart3D(points, 0.2, SYMBOL_CUBE, {}, {}, PROJECTION_NONE, 0);
            options.axes[1].title = "Tiefe über alles";
        }
        options.title = "Température, µm: " + std::string(set.name);
        options.axes[0].title = "Ελλάδα";
        options.axes[0].dates = set.dates;
        for (int i = 0; i < set.names; ++i)
            options.axes[0].names.push_back((set.names > 12 ? "a name of place " : "M") +
                                            std::to_string(i + 1));
        options.axes[2].title = "values, °C";
        options.axes[2].logarithmic = set.logarithmic;
        if (kind == Kind::kPoints) options.axes[1].logarithmic = set.logarithmic;
        return chart.AutoFrame(t, options);
    }

    static bool HasMargin(const CChartView3D& view, int width, int height);

    /// The labels of an axis of numbers show tics exactly, in ascending order, with the factor or
    /// offset that its title may tell.
    static void CheckLabels(const Frame& frame, const std::vector<detail::AxesText>& texts,
                            int axis) {
        double factor = 1.0;
        double offset = 0.0;
        for (const detail::AxesText& text : texts) {
            const std::size_t comma = text.text.rfind(", ");
            if (!text.isTitle || text.axis != axis || comma == std::string::npos) continue;
            const std::string note = text.text.substr(comma + 2);
            if (note.starts_with("×")) factor = ReadLabel(note);
            if (note.starts_with("+")) offset = ReadLabel(note.substr(1));
            if (note.starts_with("−")) offset = ReadLabel(note);
        }
        const std::span<const double> tics = frame.axes->GetAxis(axis)->GetMajorTicValues();
        double last = -HUGE_VAL;
        for (const detail::AxesText& text : texts) {
            if (text.isTitle || text.axis != axis) continue;
            const double value = ReadLabel(text.text) * factor + offset;
            const auto distance = [&](double tic) { return std::abs(tic - value); };
            const double step = tics.size() > 1 ? (tics[1] - tics[0]) : std::abs(value);
            EXPECT_LE(distance(*std::ranges::min_element(tics, {}, distance)), 1e-6 * step)
                << text.text;
            EXPECT_GT(value, last) << text.text;
            last = value;
        }
    }

    /// Texts inside of what titles leave of the frame, apart from each other and different.
    static void Check(CChart3D& chart, const Frame& frame, int width, int height) {
        const BoxPlacement box = chart.FitToView();
        const detail::AxesExtents extents = frame.axes->MeasureAxes(width, height);
        const TextSizes sizes = TextSizesFor(width, height);
        const double top = height - StripsFor(sizes, true, false, false).top;
        EXPECT_TRUE((PixelRect{0.0, 0.0, 1.0 * width, top}.Contains(BoxExtent(box))));
        for (std::size_t i = 0; i < extents.texts.size(); ++i) {
            const detail::AxesText& a = extents.texts[i];
            EXPECT_TRUE(a.box.left >= 0.0 && a.box.right <= width && a.box.bottom >= 0.0 &&
                        a.box.top <= top)
                << a.text << ": " << a.box.left << " " << a.box.bottom << " " << a.box.right << " "
                << a.box.top;
            for (std::size_t k = 0; k < i; ++k) {
                const detail::AxesText& b = extents.texts[k];
                EXPECT_FALSE(a.box.Touches(b.box, 0.0, 0.0) && a.shape.Touches(b.shape))
                    << a.text << " on " << b.text;
            }
        }
        for (int axis = 0; axis < 3; ++axis)
            if (frame.axes->GetAutoTics(axis) != 0) CheckLabels(frame, extents.texts, axis);
    }
};

TEST_F(AutoFrames, EveryTextHasItsPlaceAtEverySizeAndView) {
    const struct {
        int width, height;
    } sizes[] = {{1600, 1200}, {640, 480}, {360, 640}, {320, 240}};
    for (const auto& size : sizes) {
        CWnd window(size.width, size.height);
        CChartView3D view(&window);
        view.SetFont("Arial", 400, 128);
        view.SetViewSizeWindow();
        for (const DataSet& set : kSets) {
            for (const Kind kind : {Kind::kLine, Kind::kBars, Kind::kPoints}) {
                SCOPED_TRACE(testing::Message() << set.name << ", kind " << static_cast<int>(kind)
                                                << ", " << size.width << " x " << size.height);
                CChart3D* const chart = view.NewChart3D();
                const Frame frame = Make(*chart, set, kind);
                Check(*chart, frame, size.width, size.height);
                if (size.width == 1600) {
                    const PixelRect box = BoxExtent(chart->FitToView());
                    const double share = box.Width() * box.Height() / (1600.0 * 1200.0);
                    EXPECT_GT(share, frame.flat ? 0.55 : 0.40);
                }
                for (const auto& [azimuth, elevation] : {std::pair{-127.5, 30.0}, {20.0, 60.0}}) {
                    SCOPED_TRACE(testing::Message() << "from " << azimuth << ", " << elevation);
                    frame.transform->SetView(azimuth, elevation);
                    Check(*chart, frame, size.width, size.height);
                }
                EXPECT_EQ(frame.leftOut, set.damaged ? (kind == Kind::kPoints ? 0 : 2) : 0);
                view.DeleteCharts();
            }
        }
    }
}

/// Whether the outermost pixels of a drawn picture are all of the background, which is white.
bool AutoFrames::HasMargin(const CChartView3D& view, int width, int height) {
    bool white = true;
    for (int x = 0; x < width; ++x)
        white = white && IsColor(Pixel(view, x, 0), 255, 255, 255) &&
                IsColor(Pixel(view, x, height - 1), 255, 255, 255);
    for (int y = 0; y < height; ++y)
        white = white && IsColor(Pixel(view, 0, y), 255, 255, 255) &&
                IsColor(Pixel(view, width - 1, y), 255, 255, 255);
    return white;
}

TEST_F(AutoFrames, PicturesKeepTheirMarginAndComeBackFromAFile) {
    CWnd window(400, 300);
    CChartView3D view(&window);
    for (const int set : {0, 3, 8, 9, 12, 13}) {
        CChart3D* const chart = view.NewChart3D();
        Make(*chart, kSets[set], set == 8 ? Kind::kPoints : Kind::kBars);
        CLegend3D* const legend = view.NewLegend3D();
        legend->AddChartObj(chart->GetChartObj(0), "a name of a data set");
        legend->SetPlace(LEGEND_OUTSIDE_RIGHT);
        legend->EnableBorder(0);
        const std::vector<BYTE> before = Draw(view);
        EXPECT_TRUE(HasMargin(view, 400, 300)) << kSets[set].name;
        EXPECT_NEAR(chart->GetCoveredRight(), legend->GetLegendViewport().x, 1.0);
        view.Save(Path("chart"));
        // In a view of its own, with its antialiasing.
        CWnd otherWindow(400, 300);
        CChartView3D other(&otherWindow);
        other.Load(Path("chart"));
        EXPECT_EQ(Draw(other) == before, true) << kSets[set].name;
        view.DeleteChartViewObjects();
    }
}

TEST_F(AutoFrames, AxesMeasuredBeforeTheFirstDrawingAreWithoutTexts) {
    CWnd window(400, 300);
    CChartView3D view(&window);
    CChart3D* const chart = view.NewChart3D();
    CTransform3D* const transform = chart->NewTransform();
    CAxes3D* const axes = chart->AutoFrame(transform, {.flat = false, .autoFit = 0}).axes;
    const detail::AxesExtents early = axes->MeasureAxes(400, 300);
    double x = 0.0;
    EXPECT_FALSE(transform->DataToPixel({}, x, x));
    Draw(view);
    const detail::AxesExtents drawn = axes->MeasureAxes(400, 300);
    EXPECT_TRUE(early.texts.empty());
    EXPECT_FALSE(drawn.texts.empty());
    // The box reaches the highest, its texts the farthest down.
    EXPECT_NEAR(early.bounds.top, drawn.bounds.top, 0.5);
    EXPECT_GT(early.bounds.bottom, drawn.bounds.bottom);
}

}  // namespace
}  // namespace varnel::test
