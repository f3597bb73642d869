// Turning, enlarging and putting back the charts of a view, as its user does with the mouse.
#pragma once

#include <map>

#include "varnel/foundation/points.h"

namespace varnel {
class CChart3D;
class CChartView3D;
class CTransform3D;
}  // namespace varnel

namespace varnel::detail {

class Turning {
 public:
    explicit Turning(CChartView3D& view);

    /// The uppermost chart at a place in fractions of the view from its upper left corner; null
    /// where there is none.
    CChart3D* ChartAt(double x, double y) const;

    /// Turns a chart by degrees: about its upright axis, positive: what is in front goes to the
    /// right; and towards the viewer, positive: what is in front goes down.
    void Turn(CChart3D& chart, double around, double over) const;

    /// Makes a chart larger, factor > 1, or smaller, within reason.
    void Enlarge(CChart3D& chart, double factor) const;

    /// Gives all charts the position and size that they had at construction.
    void Reset() const;

 private:
    struct Start {
        varnel::point3Dtype rotation;
        varnel::point3Dtype chartRect;
    };

    CChartView3D& m_View;
    std::map<CTransform3D*, Start> m_Start;
};

}  // namespace varnel::detail
