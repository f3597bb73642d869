#include <cstdio>

#include "varnel/varnel.h"

int main(int, char** argv) {
    varnel::CWnd window(320, 240);
    varnel::CChartView3D view(&window, 320, 240);
    view.NewChart3D({0, 0, 0, 0}, {1, 1, 1, 0});
    view.SaveToPNG(argv[1]);
    std::puts("drawn by the installed library");
}
