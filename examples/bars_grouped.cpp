// Iowa's electricity by source, year by year: three bars side by side, and the same stacked.
#include "examples/support/example.h"

using namespace varnel;

namespace {

void DrawBars(example::Picture& picture, int groupType, const std::string& subtitle,
              const std::string& name) {
    const example::Table table = picture.Read("iowa_electricity.csv");
    const std::vector<double> years = table.Numbers("year");
    const int n = static_cast<int>(years.size());
    std::vector<double> terawattHours;  // source by source
    for (const char* source : {"fossil_fuels_gwh", "nuclear_energy_gwh", "renewables_gwh"})
        for (double gwh : table.Numbers(source))
            terawattHours.push_back(gwh / 1000);
    const std::vector<RGBDType> colors = {example::Color(7), example::Color(4), example::Color(2)};

    CChart3D* chart =
        picture.NewChart("Iowa's electricity", subtitle, "U.S. Energy Information Administration");
    CTransform3D* transform = chart->AutoTransformGroup25D(years.data(), terawattHours.data(), 0.0,
                                                           n, 3, 1.0, 0, groupType, 0);
    transform->SetScaleMin({2000, 0, 0, 0});
    transform->SetScaleMax({2018, 1, transform->GetScaleMax().z, 0});
    transform->SetRotate({-18, 0, 22, 0});
    transform->SetChartRect({0.76, 0.1, 0.52, 0});
    transform->SetOffset({0.04, 0, -0.04, 0});

    CAxes3D* axes = chart->AutoAxes(transform);
    axes->EnableAxis(1, 0);
    axes->EnableAxisLabels(1, 0);
    axes->SetAxisTitleString(0, "year");
    axes->SetAxisTitleString(2, "TWh");
    example::AddWalls(*axes, 0, 0, axes->GetAxisNthTicMajor(2));

    CChartObj3D* bars = chart->NewChartObj(transform);
    bars->GroupBarChart25D(years.data(), terawattHours.data(), 0.5, 0.0, n, 3, groupType, 0.8, 0.7,
                           colors.data(), example::kGrey, 1, 1, 0);
    example::AddKey(*chart, {"fossil", "nuclear", "renewable"}, colors);
    picture.Save(name);
}

void Draw(example::Picture& picture) {
    DrawBars(picture, 0, "three sources side by side", "bars_grouped");
    DrawBars(picture, 1, "three sources stacked", "bars_stacked");
}

}  // namespace

int main(int argc, char** argv) {
    return example::Run(argc, argv, Draw);
}
