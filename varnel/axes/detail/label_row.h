// The labels of one axis that follows the view: how they are written so that no two touch, and
// where each of them stands.
#pragma once

#include <optional>
#include <span>
#include <string_view>
#include <vector>

#include "varnel/axes/detail/axes_layout.h"

namespace varnel::detail {

inline constexpr double kLabelsBeside = 0.5;  ///< ems between labels side by side
inline constexpr double kLabelsAbove = 0.1;   ///< and one above the other

/// Names that are whole numbers in even steps, such as years, tell what is left out between them:
/// they are thinned out like numbers, and the roundest of them stays.
void ReadNamesAsNumbers(AxisContent& content);

/// How a row of labels is written.
struct RowStyle {
    double size = 1.0;
    int rotation = 0;  ///< degrees: 0, 45 (which may become -45) or 90
    bool wrapped = false;
    int stride = 1;
};

class LabelRow {
 public:
    /// What is given must live as long as the row. Turned labels are at most `longest` pixels long.
    LabelRow(const PlacedAxis& axis, int number, const AxisContent& content,
             const TextMeasure& measure, double longest);

    int GetAxis() const { return m_Number; }
    /// The first style in which no two labels touch; of this size alone where one is given.
    RowStyle ChooseStyle(std::optional<double> size = {}) const;
    /// The texts of the labels that a style keeps, for each label one or two.
    std::vector<std::vector<PlacedText>> Place(const RowStyle& style) const;

 private:
    struct Line {
        std::string_view text;
        double width = 0.0;  ///< in ems
    };
    struct Label {
        Line lines[2];
        int count = 0;
        double width = 0.0;  ///< of the longer one
    };
    /// A label's rectangle: its lower left corner, the directions along its lines and up, and its
    /// size in pixels.
    struct Block {
        PixelPoint corner;
        PixelPoint right;
        PixelPoint up;
        double width;
        double height;
    };

    std::vector<RowStyle> Styles(std::span<const double> sizes) const;
    bool IsKept(const RowStyle& style, int i) const;
    const Label& LabelOf(const RowStyle& style, int i) const;
    int Turn(const RowStyle& style) const;
    double Anchor(const RowStyle& style, PixelPoint right) const;
    Block BlockOf(const RowStyle& style, int i) const;
    Label NewLabel(std::string_view text, bool wrapped, const TextMeasure& measure);
    PlacedText LineOf(const RowStyle& style, int i, const Block& block, int line) const;
    bool Fits(const RowStyle& style, double longest) const;

    const PlacedAxis& m_Axis;
    int m_Number;
    const AxisContent& m_Content;
    double m_Longest;
    std::vector<Label> m_Labels[2];  ///< in one line, and wrapped where any can be
    double m_Ascent = 0.0;
    double m_Descent = 0.0;
};

}  // namespace varnel::detail
