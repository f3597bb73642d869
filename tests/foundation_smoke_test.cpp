#include <gtest/gtest.h>
#include "varnel/varnel.h"
TEST(Smoke, Compiles) { EXPECT_EQ(varnel::GetSwapCoordAxis(2, 0), 1); }
