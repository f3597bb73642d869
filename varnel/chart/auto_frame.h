// What an automatic chart is told, and what CChart3D::AutoFrame makes of it: limits, axes, walls,
// grids, labels, titles, view and layout from the data alone.
//
// Every default is the automatic choice. Each choice is also a setting of its own on the transform,
// the axes and the header, and can be changed afterwards.
#pragma once

#include <array>
#include <optional>
#include <vector>

#include "varnel/foundation/points.h"
#include "varnel/foundation/types.h"
#include "varnel/theme/theme.h"

namespace varnel {

class CAxes3D;
class CTransform3D;

/// One axis of an automatic chart.
struct AxisFrame {
    CString title{};
    bool logarithmic = false;
    /// Values are days since 1970-01-01; `format` as FormatTime takes it, empty: by the step.
    bool dates = false;
    CString format{};
    /// Names of the positions 1, 2, .. or of `positions`.
    std::vector<CString> names{};
    std::vector<double> positions{};
    // Limits: as ScaleOptions; given ones are kept as they are.
    bool tight = false;
    bool round = false;
    bool zero = false;
    std::optional<double> min{};
    std::optional<double> max{};
    /// Line, tics, labels and title; off: nothing of the axis.
    bool show = true;
};

struct FrameOptions {
    std::array<AxisFrame, 3> axes{};  ///< x, y, z
    CString title{};
    CString subtitle{};
    CString footer{};
    /// Whether all data count as lying in one plane, x to the right and z up; without: whether they
    /// do. Points and lines in space can be part of a flat chart so.
    std::optional<bool> flat{};
    /// Where the viewer stands (CTransform3D::SetView). Without: (-60, 30) for data in space, from
    /// the front and a little above for data with a depth, more from the side where several planes
    /// of them stand behind each other, straight from the front for lines.
    std::optional<double> azimuth{};
    std::optional<double> elevation{};
    /// Edges of the box; without: 1 : 1 : 0.7 in space; in a plane as wide and high as the frame
    /// allows and `depth` of its width deep.
    std::optional<point3Dtype> proportions{};
    /// x and y in the proportions of their data, for maps; z as `proportions` says.
    bool asData = false;
    double depth = 0.12;
    bool walls = true;
    bool grids = true;
    /// Colours, widths and light of the chart. A view whose font and antialiasing were never set
    /// gets those of the theme as well, and legends with a SetPlace its colours, without a border.
    Theme theme = Theme::Light();
    /// CChart3D::SetAutoFit (AutoFit3D).
    int autoFit = 1;
};

/// What AutoFrame chose.
struct Frame {
    CTransform3D* transform = nullptr;  ///< owned by the chart
    CAxes3D* axes = nullptr;            ///< owned by the chart
    bool flat = false;                  ///< 2.5D: all data in vertical planes of one direction
    int leftOut = 0;  ///< values that are no data: not finite, or not positive on a log axis
};

}  // namespace varnel
