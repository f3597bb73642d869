// Iowa's electricity by source, year by year: three bars side by side, and the same stacked.
#include "examples/support/example.h"

using namespace varnel;

namespace {

/// Three groups of values over the years, one row a source.
struct Electricity {
    std::vector<double> years;
    std::vector<double> terawattHours;
};

Electricity Read(const example::Picture& picture) {
    const example::Table table = picture.Read("iowa_electricity.csv");
    Electricity out{table.Numbers("year"), {}};
    for (const char* source : {"fossil_fuels_gwh", "nuclear_energy_gwh", "renewables_gwh"})
        for (double gwh : table.Numbers(source)) out.terawattHours.push_back(gwh / 1000);
    return out;
}

void DrawBars(example::Picture& picture, int groupType, const std::string& name) {
    Electricity data = Read(picture);
    const int n = static_cast<int>(data.years.size());
    RGBDType colors[] = {example::Color(7), example::Color(4), example::Color(2)};

    CChart3D* chart = picture.View().NewChart3D();
    CTransform3D* transform = chart->AutoTransformGroup25D(
        data.years.data(), data.terawattHours.data(), 0.0, n, 3, 1.0, 0, groupType, 0);
    transform->SetScaleMin({2000, 0, 0, 0});
    transform->SetScaleMax({2018, 1, transform->GetScaleMax().z, 0});
    transform->SetRotate({-18, 0, 24, 0});
    transform->SetChartRect({0.72, 0.22, 0.5, 0});

    CAxes3D* axes = chart->AutoAxes(transform);
    axes->EnableAxis(1, 0);
    axes->EnableAxisLabels(1, 0);
    axes->SetAxisTitleString(2, "TWh");
    example::AddWalls(*axes);

    CChartObj3D* bars = chart->NewChartObj(transform);
    bars->GroupBarChart25D(data.years.data(), data.terawattHours.data(), 0.5, 0.0, n, 3, groupType,
                           0.8, 0.5, colors, example::kBlack, 1, 1, 0);

    chart->EnableBorder(0);
    chart->SetFontSize(0.09);
    chart->GetHeader()->SetTitle1("Iowa's electricity");
    chart->GetHeader()->SetTitle2("fossil, nuclear, renewable");
    picture.Save(name);
    picture.View().DeleteCharts();
}

void Draw(example::Picture& picture) {
    DrawBars(picture, 0, "bars_grouped");
    DrawBars(picture, 1, "bars_stacked");
}

}  // namespace

int main(int argc, char** argv) { return example::Run(argc, argv, Draw); }
