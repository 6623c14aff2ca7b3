#include "zvContourRing.h"

#include "zvTestKit.h"

#include "vtkCellArray.h"
#include "vtkPoints.h"
#include "vtkPolyData.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <limits>
#include <vector>

namespace
{
using zvContourRing::Trigonometry;
using Point = std::array<float, 3>;

// Computed step by step outside the library, each step rounded as it is to be. Both tables differ
// from what a single rounding at the end, or angles that do not add up, would give.
const std::vector<Point> Seven = {
  { { 0.800000012f, -0.200000003f, 0.333333343f } },
  { { 0.536442876f, 0.347282052f, 0.333333343f } },
  { { -0.0557646081f, 0.482449532f, 0.333333343f } },
  { { -0.530678153f, 0.103718713f, 0.333333343f } },
  { { -0.530678213f, -0.503718555f, 0.333333343f } },
  { { -0.0557646975f, -0.882449508f, 0.333333343f } },
  { { 0.536442697f, -0.747282147f, 0.333333343f } },
};
const std::vector<Point> SevenSingle = {
  { { 0.800000012f, -0.200000003f, 0.333333343f } },
  { { 0.536442876f, 0.347282052f, 0.333333343f } },
  { { -0.0557646677f, 0.482449532f, 0.333333343f } },
  { { -0.530678153f, 0.103718683f, 0.333333343f } },
  { { -0.530678153f, -0.503718615f, 0.333333343f } },
  { { -0.0557646975f, -0.882449508f, 0.333333343f } },
  { { 0.536442757f, -0.747282147f, 0.333333343f } },
};
const std::vector<Point> Thirteen = {
  { { 25.5999985f, 0.699999988f, -1.10000002f } },
  { { 22.7020359f, 12.4574966f, -1.10000002f } },
  { { 14.6720381f, 21.521492f, -1.10000002f } },
  { { 3.34957623f, 25.8155346f, -1.10000002f } },
  { { -8.67150497f, 24.3559113f, -1.10000002f } },
  { { -18.6373253f, 17.4770012f, -1.10000002f } },
  { { -24.2648296f, 6.75468254f, -1.10000002f } },
  { { -24.2648277f, -5.3546896f, -1.10000002f } },
  { { -18.6373215f, -16.0770035f, -1.10000002f } },
  { { -8.67150116f, -22.9559116f, -1.10000002f } },
  { { 3.34958625f, -24.4155331f, -1.10000002f } },
  { { 14.6720505f, -20.1214828f, -1.10000002f } },
  { { 22.7020454f, -11.057478f, -1.10000002f } },
};
const std::vector<Point> ThirteenSingle = {
  { { 25.5999985f, 0.699999988f, -1.10000002f } },
  { { 22.7020359f, 12.4574966f, -1.10000002f } },
  { { 14.6720371f, 21.521492f, -1.10000002f } },
  { { 3.34957504f, 25.8155346f, -1.10000002f } },
  { { -8.67150497f, 24.3559113f, -1.10000002f } },
  { { -18.6373272f, 17.4769993f, -1.10000002f } },
  { { -24.2648315f, 6.75468063f, -1.10000002f } },
  { { -24.2648258f, -5.35469675f, -1.10000002f } },
  { { -18.6373196f, -16.0770054f, -1.10000002f } },
  { { -8.67150688f, -22.9559097f, -1.10000002f } },
  { { 3.34959149f, -24.4155312f, -1.10000002f } },
  { { 14.6720533f, -20.1214809f, -1.10000002f } },
  { { 22.7020473f, -11.0574751f, -1.10000002f } },
};
const std::vector<Point> Three = {
  { { 1.0f, 0.0f, 0.0f } },
  { { -0.5f, 0.866025388f, 0.0f } },
  { { -0.5f, -0.866025388f, 0.0f } },
};
const std::vector<Point> ThreeSingle = {
  { { 1.0f, 0.0f, 0.0f } },
  { { -0.50000006f, 0.866025388f, 0.0f } },
  { { -0.499999911f, -0.866025448f, 0.0f } },
};

struct Row
{
  std::array<double, 3> Center;
  double Radius;
  Trigonometry Angles;
  const std::vector<Point>& Expected;
};

const Row Rows[] = {
  { { { 0.1, -0.2, 1.0 / 3.0 } }, 0.7, Trigonometry::Double, Seven },
  { { { 0.1, -0.2, 1.0 / 3.0 } }, 0.7, Trigonometry::Single, SevenSingle },
  { { { 0.3, 0.7, -1.1 } }, 25.3, Trigonometry::Double, Thirteen },
  { { { 0.3, 0.7, -1.1 } }, 25.3, Trigonometry::Single, ThirteenSingle },
  { { { 0.0, 0.0, 0.0 } }, 1.0, Trigonometry::Double, Three },
  { { { 0.0, 0.0, 0.0 } }, 1.0, Trigonometry::Single, ThreeSingle },
};

const double Origin[3] = { 0.0, 0.0, 0.0 };

std::vector<std::array<vtkIdType, 2>> CellsOf(vtkPolyData* ring)
{
  std::vector<std::array<vtkIdType, 2>> cells;
  for (vtkIdType i = 0; i < ring->GetLines()->GetNumberOfCells(); ++i)
  {
    vtkIdType count;
    const vtkIdType* ids;
    ring->GetLines()->GetCellAtId(i, count, ids);
    EXPECT_EQ(count, 2);
    cells.push_back({ { ids[0], ids[1] } });
  }
  return cells;
}

using ContourRing = zvtest::QuietTest;
}

TEST_F(ContourRing, EveryStepIsNarrowedAsItIsToBe)
{
  for (const Row& row : Rows)
  {
    const int resolution = static_cast<int>(row.Expected.size());
    EXPECT_EQ(
      zvContourRing::Points(row.Center.data(), row.Radius, resolution, row.Angles), row.Expected)
      << resolution;
  }
}

TEST_F(ContourRing, ThePolyDataHoldsThesePointsInSinglePrecision)
{
  for (const Row& row : Rows)
  {
    const int resolution = static_cast<int>(row.Expected.size());
    const auto ring = zvContourRing::Make(row.Center.data(), row.Radius, resolution, row.Angles);
    ASSERT_NE(ring, nullptr);
    EXPECT_EQ(ring->GetPoints()->GetDataType(), VTK_FLOAT);
    ASSERT_EQ(ring->GetNumberOfPoints(), resolution);
    for (int i = 0; i < resolution; ++i)
    {
      for (int axis = 0; axis < 3; ++axis)
      {
        EXPECT_EQ(ring->GetPoint(i)[axis], row.Expected[i][axis]) << i << " axis " << axis;
      }
    }
  }
}

TEST_F(ContourRing, TheAngleAddsUpInSinglePrecision)
{
  // A hundred steps of 3.6 degrees end at 356.4, the sum of their narrowed values a little beside:
  // the last point is not where an exact angle would put it.
  const auto points = zvContourRing::Points(Origin, 1.0e6, 100, Trigonometry::Double);
  const double exact = 1.0e6 * std::sin(356.4 * 3.141592653589793 / 180.0);
  const double offset = points.back()[1] - exact;
  EXPECT_GT(std::abs(offset), 0.1);
  EXPECT_LT(std::abs(offset), 10.0);
}

TEST_F(ContourRing, RunsCounterClockwiseFromPlusXAtConstantZ)
{
  const double center[3] = { 2.0, 3.0, 4.5 };
  for (Trigonometry angles : { Trigonometry::Double, Trigonometry::Single })
  {
    const auto points = zvContourRing::Points(center, 2.0, 4, angles);
    const Point expected[4] = { { { 4, 3, 4.5 } }, { { 2, 5, 4.5 } }, { { 0, 3, 4.5 } },
      { { 2, 1, 4.5 } } };
    ASSERT_EQ(points.size(), 4u);
    for (int i = 0; i < 4; ++i)
    {
      EXPECT_NEAR(points[i][0], expected[i][0], 1e-6);
      EXPECT_NEAR(points[i][1], expected[i][1], 1e-6);
      EXPECT_EQ(points[i][2], 4.5f);
    }
  }
}

TEST_F(ContourRing, IsClosedByItsLastCell)
{
  using Cells = std::vector<std::array<vtkIdType, 2>>;
  const auto ring = zvContourRing::Make(Origin, 1.0, 5, Trigonometry::Double);
  EXPECT_EQ(
    CellsOf(ring), (Cells{ { { 0, 1 } }, { { 1, 2 } }, { { 2, 3 } }, { { 3, 4 } }, { { 4, 0 } } }));
  EXPECT_EQ(ring->GetNumberOfCells(), 5);
  const auto pair = zvContourRing::Make(Origin, 1.0, 2, Trigonometry::Single);
  EXPECT_EQ(CellsOf(pair), (Cells{ { { 0, 1 } }, { { 1, 0 } } }));
}

TEST_F(ContourRing, BelowTwoPointsThereIsNone)
{
  for (int resolution : { 1, 0, -1, std::numeric_limits<int>::min() })
  {
    EXPECT_EQ(zvContourRing::Make(Origin, 1.0, resolution, Trigonometry::Double), nullptr);
    EXPECT_EQ(zvContourRing::Points(Origin, 1.0, resolution, Trigonometry::Single).size(),
      resolution == 1 ? 1u : 0u);
  }
}

TEST_F(ContourRing, BeyondTheLargestResolutionThereIsNone)
{
  for (int resolution : { 8388609, std::numeric_limits<int>::max() })
  {
    EXPECT_EQ(zvContourRing::Make(Origin, 1.0, resolution, Trigonometry::Double), nullptr);
    EXPECT_TRUE(zvContourRing::Points(Origin, 1.0, resolution, Trigonometry::Single).empty());
  }
  EXPECT_EQ(zvContourRing::Points(Origin, 1.0, 8388608, Trigonometry::Double).size(), 8388608u);
}

TEST_F(ContourRing, BearsValuesThatAreNoNumbers)
{
  const double NaN = std::numeric_limits<double>::quiet_NaN();
  const double infinity = std::numeric_limits<double>::infinity();
  const double center[3] = { NaN, infinity, 1e300 };
  const auto points = zvContourRing::Points(center, NaN, 3, Trigonometry::Double);
  ASSERT_EQ(points.size(), 3u);
  EXPECT_TRUE(std::isnan(points[0][0]));
  EXPECT_TRUE(std::isinf(points[0][2]));
  EXPECT_NE(zvContourRing::Make(center, infinity, 3, Trigonometry::Single), nullptr);
}
