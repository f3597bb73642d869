#include <algorithm>
#include <cmath>

#include "varnel/axes/axes.h"
#include "varnel/axes/detail/axis_walk.h"
#include "varnel/axes/detail/label_text.h"
#include "varnel/chart/detail/label_fit.h"
#include "varnel/transform/transform.h"

namespace varnel::detail {
namespace {

constexpr double kLargest = 0.8;
constexpr double kSmallest = 0.4;
constexpr double kSmallestTitle = 0.7;

// Of a font with the measures of Arial, in ems.
constexpr double kDigitWidth = 0.556;
constexpr double kLetterHeight = 0.73;
constexpr double kDescender = 0.2;

/// Room between labels, in digits and in heights, and between labels and title, in ems.
constexpr double kGapWidth = 0.6;
constexpr double kGapHeight = 1.25;
constexpr double kGapTitle = 0.08;

/// How a unit of the x, y and z axis of the box appears on the screen under rotations of -20
/// degrees about x and 25 about z: across and up.
constexpr double kAcross[3] = {0.91, 0.42, 0.0};
constexpr double kUp[3] = {0.14, 0.31, 0.94};

constexpr int kZ = 2;

/// The labels of an axis: the longest text and the smallest step, a fraction of the axis.
struct Labels {
    int characters = 1;
    double step = 1.0;
};

Labels LinearLabels(const CAxes3D& axes, int axis) {
    Labels labels;
    const double major = axes.GetAxisNthTicMajor(axis) * axes.GetAxisTicSpace(axis);
    const double range = axes.GetAxisRange(axis);
    if (range > 0.0) labels.step = major / range;
    const CString& suffixes = axes.GetAxisLabels(axis)->GetEngString();
    WalkLinear(axes.GetAxisCenterPoint(axis), major, axes.GetAxisMin(axis), axes.GetAxisMax(axis),
               [&](double v, int) {
                   const CString text = LabelText(v, axes.GetAxisLabelsFormat(axis),
                                                  axes.GetAxisLabelsDecimals(axis), suffixes);
                   labels.characters = std::max(labels.characters, static_cast<int>(text.size()));
               });
    return labels;
}

Labels LogLabels(const CAxes3D& axes, const CTransform3D& t, int axis) {
    Labels labels;
    const double low = t.LogLimits(axis, axes.GetAxisMin(axis));
    const double high = t.LogLimits(axis, axes.GetAxisMax(axis));
    const double decades = std::log10(high / low);
    if (decades > 0.0) labels.step = std::log10(2.0) / decades;
    WalkLogLabels(
        t.LogLimits(axis, axes.GetAxisCenterPoint(axis)), low, high, false, [&](double v) {
            const CString text =
                LabelText(v, axes.GetAxisLabelsFormat(axis), axes.GetAxisLabelsDecimals(axis), {});
            labels.characters = std::max(labels.characters, static_cast<int>(text.size()));
        });
    return labels;
}

}  // namespace

double FittingTitleSize(const TextScale& text) {
    return std::clamp(1.0 / text.aspect, kSmallestTitle, 1.0);
}

double FittingLabelSize(const CAxes3D& axes, const CTransform3D& t, int axis,
                        const TextScale& text) {
    const Labels labels =
        t.GetAxisScaleMode(axis) != 0 ? LogLabels(axes, t, axis) : LinearLabels(axes, axis);
    const double step = labels.step * 2.0 * GetCoord3D(t.GetChartRect(), axis);
    const double width = labels.characters * kDigitWidth * text.aspect;
    const double beside =
        step * kAcross[axis] / ((width + kGapWidth * kDigitWidth * text.aspect) * text.em);
    const double above = step * kUp[axis] / (kGapHeight * kLetterHeight * text.em);
    double size = std::max(beside, above);
    if (axis == kZ) {
        // The upright title begins a letter's height beyond the widest label of full size and grows
        // towards the labels; it turns with the box, which the labels do not.
        const double letters = (kLetterHeight + kDescender) * text.aspect * FittingTitleSize(text);
        const double room = kAcross[0] * (width + kLetterHeight - letters);
        size = std::min(size, (room - kGapTitle * text.aspect) / width);
    }
    return std::clamp(size, kSmallest, kLargest);
}

}  // namespace varnel::detail
