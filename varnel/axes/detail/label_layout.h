// The placement of axis labels and titles as far as it needs neither a context nor a font.
//
// Codes are those of CAxisLabels3D: axes 0 x, 1 y, 2 z; directions 0 -x .. 5 +z; text planes 0..3;
// x justification 0 start, 1 centre, 2 end; y justification 0 bottom, 1 centre, 2 top.
#pragma once

namespace varnel::detail {

/// Justifications by axis, text plane, orientation (0 near horizontal, 1 near vertical) and x/y.
using JustTable = int[3][4][2][2];

void FillJustTable(JustTable& table);

struct Justification {
    int x = 0;
    int y = 0;
};

/// Start and end, or bottom and top, exchanged.
int SwapTextJust(int just);

/// The entry of the table for a rotation in degrees, swapped for negative ones; (0, 0) for an axis
/// or a plane that the table does not have.
Justification TableJustification(const JustTable& table, int axis, int plane, int rotation);

/// What the justification of a row of labels depends on.
struct LabelRow {
    int axis = 0;
    int plane = 3;
    int rotation = 0;
    int dir = 0;
    int xJust = -1;  ///< -1: by the table
    int yJust = -1;
    bool inverted = false;  ///< the scale along `dir` runs backwards
    bool flipX = false;
    bool flipY = false;
};

Justification LabelJustification(const JustTable& table, const LabelRow& row);

/// Whether an end mask (1 minimum, 2 centre, 4 maximum) lets a label at `value` be shown.
bool IsLabelShown(double value, double min, double center, double max, double tolerance, int mask);

/// Rotation and justification of a title.
struct TitleStyle {
    int rotation = 0;
    Justification just;
};

/// The automatic style of the title of an axis whose labels stand off in a direction; `kept` for an
/// axis number that is none.
TitleStyle AutoTitleStyle(int axis, int dir, const TitleStyle& kept);

/// How far from the labels' location a title of that height stands, beside labels of that width.
double TitleDistance(int axis, double titleHeight, double labelsWidth);

}  // namespace varnel::detail
