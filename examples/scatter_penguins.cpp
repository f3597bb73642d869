// Three species of penguins by three of their measures, one symbol and colour a species.
#include "examples/support/example.h"

using namespace varnel;

namespace {

struct Species {
    std::string name;
    int symbol;
    RGBDType color;
};

void Draw(example::Picture& picture) {
    const example::Table table = picture.Read("penguins.csv");
    const std::vector<std::string> species = table.Text("species");
    const std::vector<double> bill = table.Numbers("bill_length_mm");
    const std::vector<double> flipper = table.Numbers("flipper_length_mm");
    const std::vector<double> mass = table.Numbers("body_mass_g");

    CChart3D* chart = picture.NewChart("Penguins of the Palmer Archipelago",
                                       "bill and flipper in mm, mass in kg", "Palmer Station LTER");
    CTransform3D* transform = chart->NewTransform({30, 170, 2.5, 0}, {60, 235, 6.5, 0});
    transform->SetRotate({-22, 0, 30, 0});
    transform->SetChartRect({0.52, 0.44, 0.5, 0});
    transform->SetOffset({-0.04, 0, 0, 0});

    CAxes3D* axes = chart->AutoAxes(transform);
    axes->SetAxisTitleString(0, "bill");
    example::SetDepthTitle(*axes, "flipper");
    axes->SetAxisTitleString(2, "mass");
    example::AddWalls(*axes, axes->GetAxisNthTicMajor(0), axes->GetAxisNthTicMajor(1),
                      axes->GetAxisNthTicMajor(2));

    std::vector<std::string> names;
    std::vector<RGBDType> colors;
    for (const Species& s :
         {Species{"Adelie", 10, example::Color(1)}, Species{"Chinstrap", 13, example::Color(4)},
          Species{"Gentoo", 12, example::Color(0)}}) {
        std::vector<point3Dtype> points;
        for (std::size_t i = 0; i < species.size(); ++i)
            if (species[i] == s.name) points.push_back({bill[i], flipper[i], mass[i] / 1000, 0});
        CChartObj3D* symbols = chart->NewChartObj(transform);
        symbols->ScatterChart3D(points.data(), 0.3, static_cast<int>(points.size()), s.symbol,
                                s.color, example::kGrey, -1, 0);
        names.push_back(s.name);
        colors.push_back(s.color);
    }
    example::AddKey(*chart, names, colors);
    picture.Save("scatter_penguins");
}

}  // namespace

int main(int argc, char** argv) {
    return example::Run(argc, argv, Draw);
}
