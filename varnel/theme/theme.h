// Theme: how a chart looks, as one plain value: colours, line widths, light and fonts.
//
// Take one of the three below, change what should be different, and hand it to ApplyTheme
// (chart/apply_theme.h). Widths are in pixels, text sizes are heights of an em in device units (a
// chart is 2 high).
#pragma once

#include <array>

#include "varnel/foundation/colors.h"
#include "varnel/foundation/export.h"
#include "varnel/foundation/points.h"
#include "varnel/foundation/types.h"

namespace varnel {

struct VARNEL_API Theme {
    RGBDType background{1.0, 1.0, 1.0, 1.0};
    RGBDType text{0.10, 0.10, 0.12, 1.0};  ///< titles, labels, legends
    RGBDType axis{0.25, 0.26, 0.29, 1.0};  ///< axis lines and tics
    RGBDType wall{0.94, 0.945, 0.955, 1.0};
    RGBDType wallEdge{0.70, 0.72, 0.76, 1.0};
    RGBDType grid{0.76, 0.78, 0.82, 1.0};
    RGBDType outline{0.15, 0.16, 0.19, 1.0};  ///< of bars, areas and symbols
    int walls = 1;                            ///< 0: axes stand without walls and grids

    /// The colours of data sets in the order in which they are given out. They are told apart by
    /// people with any of the common kinds of colour blindness, and printed in grey.
    std::array<RGBDType, 10> palette = DefaultPalette();

    double axisWidth = 1.5;
    double gridWidth = 0.8;
    double seriesWidth = 2.0;  ///< of lines that are data
    double outlineWidth = 1.0;

    /// The direction of the light as in CChart3D::SetLightPosition, and its colours: from
    /// above, a little from the left and from the viewer. A face that looks at the viewer has its
    /// own colour (CChart3D::SetLightLimit), others are darker, down to the ambient colours: the
    /// scene's and OpenGL's own share of a tenth.
    point3Dtype lightPosition{-0.6, 0.6, 0.6, 0.0};
    RGBDType ambientLight{0.25, 0.25, 0.25, 1.0};
    RGBDType diffuseLight{0.75, 0.75, 0.75, 1.0};

    CString fontName = "Arial";
    int fontWeight = 400;
    double fontSize = 0.085;
    int antialiasing = 4;  ///< samples a pixel

    /// The colour of data set `index`, counted from 0. From the eleventh on the palette comes
    /// again, first lighter, then darker, and so on; negative numbers count as 0.
    RGBDType SeriesColor(int index) const;

    /// On white, with pale walls.
    static Theme Light();
    /// On dark grey.
    static Theme Dark();
    /// On white, for paper: no walls, black axes and texts.
    static Theme Print();
    /// The theme called "light", "dark" or "print"; false, and nothing is changed, for other names.
    static bool Find(const CString& name, Theme& theme);

    static std::array<RGBDType, 10> DefaultPalette();
};

}  // namespace varnel
