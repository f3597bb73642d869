// Iowa's electricity: three ribbons behind each other, one a source, their names on the axis of
// depth.
#include "examples/support/example.h"

using namespace varnel;

namespace {

void Draw(example::Picture& picture) {
    const example::Table table = picture.Read("iowa_electricity.csv");
    const std::vector<double> years = table.Numbers("year");
    const int n = static_cast<int>(years.size());
    const char* columns[] = {"fossil_fuels_gwh", "renewables_gwh", "nuclear_energy_gwh"};
    const CString names[] = {"fossil", "renewable", "nuclear"};
    const RGBDType colors[] = {example::Color(7), example::Color(2), example::Color(4)};

    CChart3D* chart = picture.NewChart("Iowa's electricity", "three sources behind each other",
                                       "U.S. Energy Information Administration");
    CTransform3D* transform = chart->NewTransform({2000, 0, 0, 0}, {2018, 3, 45, 0});
    transform->SetRotate({-22, 0, 28, 0});
    transform->SetChartRect({0.56, 0.44, 0.48, 0});
    transform->SetOffset({-0.02, 0, -0.03, 0});

    CAxes3D* axes = chart->AutoAxes(transform);
    axes->SetAxisTics(1, 0.5, 1, 1, 0.02, 0.04, 3);
    axes->SetAxisLabelsStrings(1, names, 3);
    axes->SetAxisTitleString(0, "year");
    axes->SetAxisTitleString(2, "TWh");
    example::AddWalls(*axes, 0, 0, axes->GetAxisNthTicMajor(2));

    for (int source = 0; source < 3; ++source) {
        std::vector<double> terawattHours;
        for (double gwh : table.Numbers(columns[source]))
            terawattHours.push_back(gwh / 1000);
        CChartObj3D* ribbon = chart->NewChartObj(transform);
        ribbon->RibbonChart25D(years.data(), terawattHours.data(), source + 0.5, n, 0.7,
                               colors[source], example::kGrey, 1, 0);
    }
    picture.Save("ribbons_depth");
}

}  // namespace

int main(int argc, char** argv) {
    return example::Run(argc, argv, Draw);
}
