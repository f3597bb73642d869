// How large a page of vectors is.
#pragma once

namespace varnel {

/// view.SaveToPDF("a.pdf", PageSize::Points(510, 340)). The picture fills the page.
struct PageSize {
    double width = 0.0;  ///< millimetres, 0..5080; 0: 96 pixels of the view to the inch
    double height = 0.0;

    static constexpr PageSize Millimetres(double width, double height) { return {width, height}; }
    /// 1/72 inch each.
    static constexpr PageSize Points(double width, double height) {
        constexpr double kPoint = 25.4 / 72.0;
        return {width * kPoint, height * kPoint};
    }
};

}  // namespace varnel
