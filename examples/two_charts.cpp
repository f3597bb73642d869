// Two charts in one view, with a title of the view above them.
#include "examples/support/example.h"

using namespace varnel;

namespace {

void AddMonths(CChart3D& chart, const std::string& title, const std::string& unit,
               const std::vector<double>& values, int color, const GLViewRType& position) {
    chart.SetChartPosition(position);
    CTransform3D* transform = chart.NewTransform();
    chart.NewChartObj(transform)->BarChart25D(example::Count(1, 12), values, 0, 0, 0.65, 1,
                                              Theme().SeriesColor(color), Theme().outline,
                                              WIDTH_CENTERED, WIDTH_CENTERED, INDAXIS_X);
    chart.AutoFrame(transform, {.axes = {AxisFrame{.names = example::kMonths}, AxisFrame{},
                                         AxisFrame{.title = unit}},
                                .title = title});
}

}  // namespace

void example::Draw(Picture& picture) {
    const Table table = picture.Read("seattle_weather.csv");
    const std::vector<Date> dates = table.Dates("date");
    CChartView3D& view = picture.View();
    // The charts leave room for the view's title above them and its footer below them.
    view.GetHeader()->SetRelSize(0.36);
    view.GetHeader()->SetTextSizes(1.25, 1.0, 0.8);
    view.GetHeader()->SetTitle1("Weather in Seattle");
    view.GetHeader()->SetFooter("2012 to 2015");
    AddMonths(*view.NewChart3D(), "rain a day", "mm",
              MonthlyMeans(dates, table.Numbers("precipitation_mm")), 0, {0, 0.1, 0.5, 0.78});
    AddMonths(*view.NewChart3D(), "wind", "m/s", MonthlyMeans(dates, table.Numbers("wind_m_s")), 1,
              {0.5, 0.1, 0.5, 0.78});
    picture.Save("two_charts");
}
