// Every set-up of chart objects, each argument with a value of its own, as far as it can be drawn
// in a box of 0..10.
#pragma once

#include <span>

#include "tests/support/values.h"
#include "varnel/chartobj/chart_object.h"
#include "varnel/surface/polysurface.h"

namespace varnel::test {

inline constexpr RGBDType kColors[] = {kRed,   kGreen,           {.1, .2, .3, .4},
                                       kGreen, {.5, .6, .7, .8}, kRed};
inline constexpr double kInd[] = {2, 8};
inline constexpr double kDep[] = {3, 7};
inline constexpr double kMore[] = {1.75, 2.25};
inline constexpr double kGroups[] = {1, 2.5, 3.5, 4, 4.5, 6, 6.5, 8.5, 9, 9.5, 5.5, 7.5};
inline constexpr point3Dtype kPoints[] = {{2, 1, 5, 4}, {6, 9, 7, 8}};
inline const CString kTexts[] = {"first", "2"};

inline CPolysurface& SetUpSurface() {
    static constexpr double z[] = {1, 2, 3, 4};
    static CPolysurface surface(2, 2, 1, 1, 9, 9, z, 1);
    return surface;
}

/// The count that the classic set-ups are given.
inline int numPoints = 2;

struct SetUpCase {
    const char* name;
    int type;
    const char* call;  ///< the classic call as it is written, where it has a count
    void (*classic)(CChartObj3D&);
    void (*spans)(CChartObj3D&);  ///< the same, counted by itself; null where there is none
};

using O = CChartObj3D;
using Span = std::span<const double>;

#define BOTH(call, spanCall) #call, [](O & o) { o.call; }, [](O & o) { o.spanCall; }
inline const SetUpCase kSetUps[] = {
    // The heights of bars in space are not in their records.
    {"ribbon", 1,
     BOTH(RibbonChart25D(kInd, kDep, 5, numPoints, 0.75, kRed, kGreen, 22, 23),
          RibbonChart25D(Span(kInd), Span(kDep), 5, 0.75, kRed, kGreen, 22, 23))},
    {"bar", 2,
     BOTH(BarChart25D(kInd, kDep, 1.5, 5, numPoints, 0.5, 0.75, kRed, kGreen, 21, 22, 23),
          BarChart25D(Span(kInd), Span(kDep), 1.5, 5, 0.5, 0.75, kRed, kGreen, 21, 22, 23))},
    {"bar in space", 3,
     BOTH(BarChart3D(kPoints, kDep, numPoints, 0.5, 0.75, kRed, kGreen),
          BarChart3D(kPoints, Span(kDep), 0.5, 0.75, kRed, kGreen))},
    {"area", 4,
     BOTH(AreaFillChart25D(kInd, kDep, 1.5, 5, numPoints, 0.75, kRed, kGreen, 22, 23),
          AreaFillChart25D(Span(kInd), Span(kDep), 1.5, 5, 0.75, kRed, kGreen, 22, 23))},
    {"range", 5,
     BOTH(AreaRangeChart25D(kInd, kDep, kMore, 5, numPoints, 0.75, kRed, kGreen, 22, 23),
          AreaRangeChart25D(Span(kInd), Span(kDep), Span(kMore), 5, 0.75, kRed, kGreen, 22, 23))},
    {"line", 6,
     BOTH(LineChart25D(kInd, kDep, 5, numPoints, 4, 3.9, kRed, 23),
          LineChart25D(Span(kInd), Span(kDep), 5, 4, 3.9, kRed, 23))},
    {"scatter", 7,
     BOTH(ScatterChart3D(kPoints, 1.25, numPoints, 11, kRed, kGreen, 24, 5),
          ScatterChart3D(kPoints, 1.25, 11, kRed, kGreen, 24, 5))},
    {"line in space", 8,
     BOTH(LineChart3D(kPoints, numPoints, 4, 3, kRed), LineChart3D(kPoints, 4, 3, kRed))},
    {"projection", 9,
     BOTH(ProjectionLineChart3D(kPoints, 99, numPoints, 4, 3, kRed, 1, 5),
          ProjectionLineChart3D(kPoints, 4, 3, kRed, 1, 5))},
    {"grouped bars", 10,
     BOTH(GroupBarChart25D(kInd, kGroups, 5, 1.5, numPoints, 2, 1, 0.5, 0.75, kColors, kGreen, 21,
                           22, 23),
          GroupBarChart25D(kInd, Span(kGroups, 4), 5, 1.5, 1, 0.5, 0.75, kColors, kGreen, 21, 22,
                           23))},
    {"grouped ribbons", 11,
     BOTH(GroupRibbonChart25D(kInd, kGroups, 5, numPoints, 3, 0.75, kColors, kGreen, 22, 23),
          GroupRibbonChart25D(kInd, Span(kGroups, 6), 5, 0.75, kColors, kGreen, 22, 23))},
    {"grouped areas", 12,
     BOTH(GroupAreaFillChart25D(kInd, kGroups, 5, numPoints, 3, 0.75, kColors, kGreen, 22, 23),
          GroupAreaFillChart25D(kInd, Span(kGroups, 6), 5, 0.75, kColors, kGreen, 22, 23))},
    {"prices", 13,
     BOTH(OHLCChart25D(kInd, kGroups, 5, numPoints, 11, 12, 1.25, 3, kColors, kGreen, 22, 24, 23,
                       nullptr),
          OHLCChart25D(kInd, Span(kGroups, 8), 5, 11, 12, 1.25, 3, kColors, kGreen, 22, 24, 23,
                       nullptr))},
    {"plane in space", 14,
     BOTH(PlaneChart3D(kPoints, numPoints, 0.5, 0.75, kRed, kGreen),
          PlaneChart3D(kPoints, 0.5, 0.75, kRed, kGreen))},
    {"texts", 15,
     BOTH(ScatterText3D(kPoints, kTexts, numPoints, 1.25, 3, kRed, 24, 5),
          ScatterText3D(kPoints, kTexts, 1.25, 3, kRed, 24, 5))},
    {"boxes", 16,
     BOTH(BoxAndWhiskerChart25D(kInd, kGroups, 5, numPoints, 0.5, 0.75, 11, 1.25, 3, kColors,
                                kGreen, 22, 24, 23, 9),
          BoxAndWhiskerChart25D(kInd, kGroups, 5, 0.5, 0.75, 11, 1.25, 3, kColors, kGreen, 22, 24,
                                23, 9))},
    {"floating bars", 17,
     BOTH(FloatingBarChart25D(kInd, kDep, kMore, 5, numPoints, 0.5, 0.75, kRed, kGreen, 21, 22, 23),
          FloatingBarChart25D(Span(kInd), Span(kDep), Span(kMore), 5, 0.5, 0.75, kRed, kGreen, 21,
                              22, 23))},
    {"plane", 18,
     BOTH(PlaneChart25D(kInd, kDep, 5, numPoints, 0.5, 0.75, kRed, kGreen, 21, 22, 23),
          PlaneChart25D(Span(kInd), Span(kDep), 5, 0.5, 0.75, kRed, kGreen, 21, 22, 23))},
    {"flat surface", 50, nullptr, [](O& o) { o.PolysurfaceChart2D(&SetUpSurface(), 5, 1); },
     nullptr},
    {"surface", 51, nullptr, [](O& o) { o.PolysurfaceChart3D(&SetUpSurface()); }, nullptr},
    {"contours", 52,
     BOTH(ContourPolysurface3D(&SetUpSurface(), kDep, kColors, numPoints, 5, 5),
          ContourPolysurface3D(&SetUpSurface(), Span(kDep), kColors, 5, 5))},
    {"error bars", 60, nullptr,
     [](O& o) { o.ErrorBars3D(kPoints, kDep, kMore, 2, 1.25, 4, 3, kRed); }, nullptr},
    {"arrows", 61, nullptr, [](O& o) { o.Vectors3D(kPoints, kPoints, 2, 1.25, 1, 3, kRed); },
     nullptr},
    {"reference line", 62, nullptr, [](O& o) { o.ReferenceLine3D(2, 5, 1, 4, 3, kRed); }, nullptr},
    {"reference band", 63, nullptr, [](O& o) { o.ReferenceBand3D(2, 5, 1.5, 4, kRed); }, nullptr},
    {"note", 64, nullptr, [](O& o) { o.Note3D("first", kPoints[0], kPoints[1], 1.25, 3, kRed); },
     nullptr},
};
#undef BOTH

}  // namespace varnel::test
