// Iowa's electricity by source as stacked areas and as stacked ribbons.
#include "examples/support/example.h"

using namespace varnel;

namespace {

constexpr int kSources = 3;

struct Electricity {
    std::vector<double> years;
    std::vector<double> terawattHours;  ///< source by source
};

Electricity Read(const example::Picture& picture) {
    const example::Table table = picture.Read("iowa_electricity.csv");
    Electricity out{table.Numbers("year"), {}};
    for (const char* source : {"nuclear_energy_gwh", "fossil_fuels_gwh", "renewables_gwh"})
        for (double gwh : table.Numbers(source))
            out.terawattHours.push_back(gwh / 1000);
    return out;
}

CTransform3D* NewAxes(CChart3D* chart) {
    CTransform3D* transform = chart->NewTransform({2000, 0, 0, 0}, {2018, 1, 60, 0});
    transform->SetRotate({-20, 0, 22, 0});
    transform->SetChartRect({0.72, 0.16, 0.5, 0});
    transform->SetOffset({0.05, 0, -0.04, 0});
    CAxes3D* axes = chart->AutoAxes(transform);
    axes->EnableAxis(1, 0);
    axes->EnableAxisLabels(1, 0);
    axes->SetAxisTitleString(0, "year");
    axes->SetAxisTitleString(2, "TWh");
    example::AddWalls(*axes, 0, 0, axes->GetAxisNthTicMajor(2));
    return transform;
}

void Draw(example::Picture& picture) {
    const Electricity data = Read(picture);
    const int n = static_cast<int>(data.years.size());
    const std::vector<RGBDType> colors = {example::Color(4), example::Color(7), example::Color(2)};
    const std::vector<std::string> names = {"nuclear", "fossil", "renewable"};

    CChart3D* chart = picture.NewChart("Iowa's electricity", "stacked areas",
                                       "U.S. Energy Information Administration");
    CChartObj3D* areas = chart->NewChartObj(NewAxes(chart));
    areas->GroupAreaFillChart25D(data.years.data(), data.terawattHours.data(), 0.5, n, kSources,
                                 0.7, colors.data(), example::kGrey, 1, 0);
    areas->SetFillGap(0);
    example::AddKey(*chart, names, colors);
    picture.Save("areas_stacked");

    chart = picture.NewChart("Iowa's electricity", "stacked ribbons: each on those before",
                             "U.S. Energy Information Administration");
    CChartObj3D* ribbons = chart->NewChartObj(NewAxes(chart));
    ribbons->GroupRibbonChart25D(data.years.data(), data.terawattHours.data(), 0.5, n, kSources,
                                 0.7, colors.data(), example::kGrey, 1, 0);
    example::AddKey(*chart, names, colors);
    picture.Save("ribbons_stacked");
}

}  // namespace

int main(int argc, char** argv) {
    return example::Run(argc, argv, Draw);
}
