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

TEST(Numbers, SinglePrecisionIsRoundedAlsoWhereTwoAreComputedSideBySide)
{
  // Values that a float cannot hold, and their nearest floats written out.
  const double values[2] = { 0.1, 0.547282041 };
  double rounded[2];
  for (int i = 0; i < 2; ++i)
  {
    rounded[i] = 1.0 + zvNumbers::ToSinglePrecision(values[i]);
  }
  EXPECT_EQ(rounded[0], 1.0 + 0.100000001490116119384765625);
  EXPECT_EQ(rounded[1], 1.0 + 0.547282040119171142578125);
  EXPECT_EQ(zvNumbers::ToSinglePrecision(-0.5), -0.5);
  EXPECT_TRUE(std::isinf(zvNumbers::ToSinglePrecision(1e300)));
  EXPECT_TRUE(std::isnan(zvNumbers::ToSinglePrecision(std::nan(""))));
}
