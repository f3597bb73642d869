// Small transforms and data for tests of chart geometry, without a context.
#pragma once

#include <gtest/gtest.h>

#include "tests/support/values.h"
#include "varnel/transform/transform.h"

namespace varnel::test {

/// A transform of the given limits with its working limits computed. `logAxis` -1: all linear.
inline CTransform3D Scaled(const point3Dtype& min, const point3Dtype& max, int logAxis = -1) {
    CTransform3D t;
    t.SetScale(min, max);
    if (logAxis >= 0) t.SetAxisScaleMode(logAxis, 1);
    t.TransformScale();
    return t;
}

/// Linear, 0..10 on every axis.
inline CTransform3D Linear() {
    return Scaled({0, 0, 0, 0}, {10, 10, 10, 0});
}

inline void ExpectPoint(const point3Dtype& p, double x, double y, double z) {
    EXPECT_NEAR(p.x, x, 1e-12);
    EXPECT_NEAR(p.y, y, 1e-12);
    EXPECT_NEAR(p.z, z, 1e-12);
}

}  // namespace varnel::test
