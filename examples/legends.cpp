// Legends that take their samples from what they stand for: the groups of bars and of stacked
// areas, the parts of candlesticks, the symbols of scatter charts and contour lines.
#include "examples/support/example.h"

using namespace varnel;

namespace {

/// A box, axes and walls over data limits; charts without depth have no y axis.
CAxes3D* NewAxes(CChart3D& chart, const point3Dtype& min, const point3Dtype& max,
                 const point3Dtype& box) {
    CTransform3D* transform = chart.NewTransform(min, max);
    transform->SetRotate({-20, 0, 22, 0});
    transform->SetChartRect(box);
    transform->SetOffset({-0.04, 0, -0.08, 0});
    CAxes3D* axes = chart.AutoAxes(transform);
    const bool deep = box.y > 0.2;
    axes->EnableAxis(1, deep);
    axes->EnableAxisLabels(1, deep);
    example::AddWalls(*axes, 0, 0, axes->GetAxisNthTicMajor(2));
    return axes;
}

void DrawGroups(example::Picture& picture, bool stacked, const std::string& name) {
    const example::Table table = picture.Read("iowa_electricity.csv");
    const std::vector<double> years = table.Numbers("year");
    const int n = static_cast<int>(years.size());
    std::vector<double> terawattHours;  // source by source
    for (const char* source : {"nuclear_energy_gwh", "fossil_fuels_gwh", "renewables_gwh"})
        for (double gwh : table.Numbers(source))
            terawattHours.push_back(gwh / 1000);
    const RGBDType colors[] = {example::Color(4), example::Color(7), example::Color(2)};
    const CString names[] = {"nuclear", "fossil", "renewable"};

    CChart3D* chart =
        picture.NewChart("Iowa's electricity", "", "U.S. Energy Information Administration");
    CAxes3D* axes =
        NewAxes(*chart, {2000, 0, 0, 0}, {2018, 1, stacked ? 60.0 : 50.0, 0}, {0.66, 0.14, 0.5, 0});
    axes->SetAxisTitleString(2, "TWh");
    CChartObj3D* groups = chart->NewChartObj(axes->GetTransform());
    CLegend3D* legend = picture.View().NewLegend3D();
    if (stacked) {
        groups->GroupAreaFillChart25D(years.data(), terawattHours.data(), 0.5, n, 3, 0.7, colors,
                                      example::kGrey, 1, 0);
        // One row below the title.
        legend->SetLegendColumns(3);
        legend->SetLegendPosition({0.25, 0.84, 0, 0});
        legend->EnableBorder(0);
    } else {
        groups->GroupBarChart25D(years.data(), terawattHours.data(), 0.5, 0.0, n, 3, 0, 0.8, 0.7,
                                 colors, example::kGrey, 1, 1, 0);
        legend->SetLegendTitle("source");
    }
    legend->AddGroups(groups, names);
    picture.Save(name);
}

void DrawPrices(example::Picture& picture) {
    const example::Table table = picture.Read("vix_ohlc.csv");
    std::vector<double> day, prices;
    for (const char* column : {"open", "high", "low", "close"})
        for (double price : table.Numbers(column))
            prices.push_back(price);
    const int n = static_cast<int>(table.rows.size());
    for (int i = 0; i < n; ++i)
        day.push_back(i + 1);

    CChart3D* chart = picture.NewChart("Volatility index", "", "June and July 2009");
    CAxes3D* axes = NewAxes(*chart, {0, 0, 22, 0}, {45, 1, 34, 0}, {0.66, 0.08, 0.5, 0});
    axes->SetAxisTitleString(0, "trading day");
    axes->SetAxisTitleString(2, "points");
    const RGBDType black = example::kBlack;
    const RGBDType colors[] = {black, example::Color(2), example::Color(3), black, black};
    CChartObj3D* candles = chart->NewChartObj(axes->GetTransform());
    candles->SetIndWidth(0.7);
    candles->OHLCChart25D(day.data(), prices.data(), 0.5, n, 0, 0, 0.2, 2, colors, example::kGrey,
                          1, 1, 0, nullptr);
    const int parts[6] = {1, 0, 0, 0, 0, 1};  // the line from low to high, and the body
    candles->SetComboChartFlags(parts);

    CLegend3D* legend = picture.View().NewLegend3D();
    legend->AddChartObj(candles, "low to high");
    const CString names[] = {"", "rose", "fell", ""};
    legend->AddGroups(candles, names);
    picture.Save("legends_stock");
}

void DrawSymbols(example::Picture& picture) {
    const example::Table table = picture.Read("penguins.csv");
    const std::vector<std::string> species = table.Text("species");
    const std::vector<double> bill = table.Numbers("bill_length_mm");
    const std::vector<double> depth = table.Numbers("bill_depth_mm");
    const std::vector<double> mass = table.Numbers("body_mass_g");

    CChart3D* chart =
        picture.NewChart("Penguins' bills", "in mm, and mass in kg", "Palmer Station LTER");
    CAxes3D* axes = NewAxes(*chart, {30, 12, 2.5, 0}, {60, 22, 6.5, 0}, {0.50, 0.40, 0.42, 0});
    axes->SetAxisTitleString(0, "length");
    example::SetDepthTitle(*axes, "depth");
    axes->SetAxisTitleString(2, "mass");
    CLegend3D* legend = picture.View().NewLegend3D();
    legend->SetLegendTitle("species");
    const char* names[] = {"Adelie", "Chinstrap", "Gentoo"};
    const int solids[] = {10, 13, 12};
    for (int s = 0; s < 3; ++s) {
        std::vector<point3Dtype> points;
        for (std::size_t i = 0; i < species.size(); ++i)
            if (species[i] == names[s]) points.push_back({bill[i], depth[i], mass[i] / 1000, 0});
        CChartObj3D* symbols = chart->NewChartObj(axes->GetTransform());
        symbols->ScatterChart3D(points.data(), 0.3, static_cast<int>(points.size()), solids[s],
                                example::Color(s), example::kGrey, -1, 0);
        legend->AddChartObj(symbols, names[s]);
    }
    picture.Save("legends_scatter");
}

void DrawContours(example::Picture& picture) {
    const std::vector<double> heights = picture.ReadMatrix("volcano.csv");
    CPolysurface surface(61, 87, 0, 0, 860, 600, heights.data(), 1);
    // A hair above whole metres: lines are whole where no point lies on them.
    constexpr int levels = 7;
    const double values[levels] = {100.001, 115.001, 130.001, 145.001, 160.001, 175.001, 190.001};
    RGBDType colors[levels + 1];
    for (int i = 0; i <= levels; ++i)
        colors[i] = example::Color(i);

    CChart3D* chart = picture.NewChart("Maunga Whau, Auckland", "lines of equal height",
                                       "digitised by Ross Ihaka");
    CAxes3D* axes = NewAxes(*chart, {0, 0, 0, 0}, {860, 600, 1, 0}, {0.58, 0.56, 0.02, 0});
    CTransform3D* transform = axes->GetTransform();
    transform->SetRotate({-52, 0, 20, 0});
    transform->SetOffset({-0.06, 0, 0, 0});
    axes->EnableAxis(2, 0);
    axes->EnableAxisLabels(2, 0);
    axes->SetAxisTics(0, 0, 100, 2, 0.02, 0.04, 0);
    axes->SetAxisTics(1, 0, 100, 2, 0.02, 0.04, 0);
    axes->SetAxisTitleString(0, "north, m");
    example::SetDepthTitle(*axes, "east, m");
    CChartObj3D* contours = chart->NewChartObj(transform);
    contours->ContourPolysurface3D(&surface, values, colors, levels, 0.2, 0);
    CLegend3D* legend = picture.View().NewLegend3D();
    legend->SetLegendTitle("height, m");
    legend->SetFontHeightSF(0.85);
    legend->SetContours(contours, 0, 0, 0);
    picture.Save("legends_contour");
}

void Draw(example::Picture& picture) {
    DrawGroups(picture, false, "legends_grouped");
    DrawGroups(picture, true, "legends_stacked");
    DrawPrices(picture);
    DrawSymbols(picture);
    DrawContours(picture);
}

}  // namespace

int main(int argc, char** argv) {
    return example::Run(argc, argv, Draw);
}
