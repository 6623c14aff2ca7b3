#include "zvNumbers.h"

#include <gtest/gtest.h>

#include <climits>
#include <cmath>
#include <limits>

namespace
{
const double Infinity = std::numeric_limits<double>::infinity();
}

TEST(Numbers, TruncationGoesTowardZero)
{
  EXPECT_EQ(zvNumbers::Truncate(2.9), 2);
  EXPECT_EQ(zvNumbers::Truncate(-2.9), -2);
  EXPECT_EQ(zvNumbers::Truncate(0.0), 0);
}

TEST(Numbers, HalvesAreRoundedAwayFromZero)
{
  EXPECT_EQ(zvNumbers::Round(2.5), 3);
  EXPECT_EQ(zvNumbers::Round(2.4999), 2);
  EXPECT_EQ(zvNumbers::Round(-2.5), -3);
  EXPECT_EQ(zvNumbers::Round(-0.4), 0);
  EXPECT_EQ(zvNumbers::Round(0.5), 1);
}

TEST(Numbers, WhatAnIntCannotHoldBecomesItsEnd)
{
  EXPECT_EQ(zvNumbers::Truncate(1e300), INT_MAX);
  EXPECT_EQ(zvNumbers::Truncate(-1e300), INT_MIN);
  EXPECT_EQ(zvNumbers::Round(Infinity), INT_MAX);
  EXPECT_EQ(zvNumbers::Round(-Infinity), INT_MIN);
  EXPECT_EQ(zvNumbers::Truncate(static_cast<double>(INT_MAX)), INT_MAX);
  EXPECT_EQ(zvNumbers::Truncate(static_cast<double>(INT_MIN)), INT_MIN);
}

TEST(Numbers, WhatIsNotANumberBecomesZero)
{
  EXPECT_EQ(zvNumbers::Truncate(std::nan("")), 0);
  EXPECT_EQ(zvNumbers::Round(std::nan("")), 0);
}

TEST(Numbers, APointIsFiniteIfAllThreeValuesAre)
{
  double point[3] = { 1.0, -1e308, 0.0 };
  EXPECT_TRUE(zvNumbers::AreFinite(point));
  for (double& value : point)
  {
    const double kept = value;
    value = Infinity;
    EXPECT_FALSE(zvNumbers::AreFinite(point));
    value = std::nan("");
    EXPECT_FALSE(zvNumbers::AreFinite(point));
    value = kept;
  }
}
