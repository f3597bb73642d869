#include <iostream>

#include "tools/varnel/commands.h"
#include "varnel/varnel.h"
#include "varnel/viewer/chart_files.h"

namespace tool {

using namespace varnel;

namespace {

void PrintPoint(const char* name, const point3Dtype& p) {
    std::cout << name << " (" << p.x << ", " << p.y << ", " << p.z << ")";
}

void PrintTitle(const char* name, const CString& text) {
    if (!text.empty()) std::cout << name << ToUtf8(text) << '\n';
}

void PrintChart(const CChart3D& chart, int number) {
    const GLViewRType p = chart.GetChartPosition();
    std::cout << "chart " << number << ": at (" << p.x << ", " << p.y << "), " << p.width << " x "
              << p.height << " of the view" << (chart.GetChartEnable() ? "" : ", not drawn")
              << '\n';
    PrintTitle("  title: ", chart.GetHeader()->GetTitle1());
    for (int i = 0; i < chart.GetNumTransforms(); ++i) {
        const CTransform3D* t = chart.GetTransform(i);
        std::cout << "  scale " << i + 1 << ": ";
        PrintPoint("from", t->GetScaleMin());
        PrintPoint(" to", t->GetScaleMax());
        PrintPoint(", turned by", t->GetRotation());
        for (int axis = 0; axis < 3; ++axis)
            if (t->GetAxisScaleMode(axis) != 0)
                std::cout << ", "
                          << "xyz"[axis] << " logarithmic";
        std::cout << '\n';
    }
    for (int i = 0; i < chart.GetNumChartObjs(); ++i) {
        const CChartObj3D* data = chart.GetChartObj(i);
        std::cout << "  data " << i + 1 << ": " << data->GetChartTypeName() << ", "
                  << data->GetNumDataPnts() << " points\n";
    }
    std::cout << "  " << chart.GetNumAxes() << " axes, " << chart.GetNumChartTextObjs()
              << " texts, " << chart.GetNumAuxObjs() << " solids, " << chart.GetNumDIBObjs()
              << " pictures\n";
}

}  // namespace

int Info(const std::string& file) {
    CErr3D::SetErrorReportMode(0);
    try {
        // Nothing is drawn: the smallest of windows gives the context that loading needs.
        CWnd window(16, 16);
        CChartView3D view(&window, 16, 16);
        const Loaded loaded = LoadChartFile(view, file);
        if (loaded.usable) {
            std::cout << "view: " << view.GetNumCharts() << " charts, font "
                      << ToUtf8(view.GetFontName()) << '\n';
            PrintTitle("title: ", view.GetHeader()->GetTitle1());
            for (int i = 0; i < view.GetNumCharts(); ++i)
                PrintChart(*view.GetChart(i), i + 1);
        }
        if (loaded.sentence.empty()) return 0;
        std::cerr << "varnel: " << loaded.sentence << '\n';
        return loaded.usable ? 2 : 1;
    } catch (const Error& e) {
        std::cerr << "varnel: " << Describe("The file " + file + " cannot be shown", e) << '\n';
        return 1;
    }
}

}  // namespace tool
