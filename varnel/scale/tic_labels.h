// Texts for the tics of an axis or a colour bar: the shortest common notation that shows every
// value exactly and each differently.
//
// Texts are UTF-8: exponents are real superscripts (10⁻⁹), and the minus is the minus sign "−"
// (U+2212), as wide as a plus, unless an ASCII hyphen is asked for.
#pragma once

#include <span>
#include <string>
#include <vector>

#include "varnel/foundation/export.h"

namespace varnel {

enum class LabelStyle {
    kAutomatic,    ///< the chooser decides
    kFixed,        ///< 1500000, 0.25
    kEngineering,  ///< 1.5M, 250m: powers of 1000 by a letter, p n µ m and K M B T
    kGeneral,      ///< 1.5e6: plain where that is short, else with an exponent
    kScientific,   ///< 1.5×10⁶ for every value
    kPowerOfTen,   ///< 10⁶, 5×10⁶
};

struct LabelOptions {
    LabelStyle style = LabelStyle::kAutomatic;
    /// Digits after the point; -1: as few as show every value.
    int decimals = -1;
    /// The values are those of a logarithmic axis: beyond 5 characters powers of ten are written.
    bool logarithmic = false;
    /// A factor or an offset that all labels share may be left out of them; `note` tells it.
    bool allowNote = false;
    /// "-" instead of the minus sign.
    bool asciiMinus = false;
};

struct TicLabels {
    std::vector<std::string> texts;  ///< one for each value
    LabelStyle style = LabelStyle::kFixed;
    /// Each text shows (value - offset) / factor.
    double factor = 1.0;
    double offset = 0.0;
    /// What belongs into the axis' title: "×10⁶", "+ 10⁹"; empty without factor and offset.
    std::string note;
};

/// The texts of the values. Automatic: plain numbers as long as none is longer than 5 characters
/// (the sign not counted), else the style with the shortest texts among plain, engineering and
/// powers of ten, then the one that reads more easily. A text shows its value exactly when reading
/// it gives the value to a millionth of the smallest distance between the values. A value that is
/// not finite has an empty text.
VARNEL_API TicLabels ChooseLabels(std::span<const double> values, const LabelOptions& options = {});

/// One value by itself, to as many significant digits as asked for (1 to 17), in the style;
/// automatic as in ChooseLabels.
VARNEL_API std::string NumberText(double value, int digits = 6,
                                  LabelStyle style = LabelStyle::kAutomatic);

/// A whole number in superscript digits: "⁻⁹".
VARNEL_API std::string Superscript(int exponent);

}  // namespace varnel
