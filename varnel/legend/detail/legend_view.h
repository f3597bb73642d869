// What a legend asks the view that it lies over, which implements it: legends stand below views.
#pragma once

namespace varnel {
class CChartObj3D;
class CLegendObj3D;
}  // namespace varnel

namespace varnel::detail {

class LegendView {
 public:
    virtual ~LegendView() = default;
    /// The size of the view now, in pixels.
    virtual void GetSize(int& width, int& height) const = 0;
    /// Puts the view's font into the context, if the first drawing has not done so.
    virtual void PrepareFont() const = 0;
    /// Gives an entry the light of the chart that owns an object; nothing when none does.
    virtual void LendLight(const CChartObj3D* object, CLegendObj3D& entry) const = 0;
};

}  // namespace varnel::detail
