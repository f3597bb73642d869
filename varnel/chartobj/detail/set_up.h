// What the set-up operations of the chart families share.
#pragma once

#include "varnel/chartobj/chart_object.h"
#include "varnel/foundation/detail/raise.h"

namespace varnel::detail {

/// One call of a set-up operation, which errors name while it lives. It stores arrays and assigns
/// what several operations assign.
class SetUp {
 public:
    explicit SetUp(CChartObj3D& object, const char* operation = __builtin_FUNCTION())
        : m_Called(operation), m_Object(object), m_Saved(object.m_Saved) {}

    void Series(const double* ind, int n, double constValue, int indAxis) const;
    void Groups(const double* groupData, int numGroups, const RGBDType* groupColors) const;
    void Points(const point3Dtype* points, int n) const;
    void Projection(int plane, double constValue) const;
    void Widths(double indWidth, double depthWidth) const;
    void Justify(int indJustify, int depthJustify) const;
    void Colors(const RGBDType& fill, const RGBDType& outline) const;
    void Line(int style, int width, const RGBDType& color) const;

 private:
    CalledOperation m_Called;
    CChartObj3D& m_Object;
    ChartObjectSaved& m_Saved;
};

}  // namespace varnel::detail
