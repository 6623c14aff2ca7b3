#include "zvOutlineCut.h"

#include "vtkCellArray.h"
#include "vtkCutter.h"
#include "vtkNew.h"
#include "vtkPlane.h"
#include "vtkPoints.h"
#include "vtkPolyData.h"

#include <gtest/gtest.h>

#include <array>
#include <random>
#include <vector>

namespace
{
using Point = std::array<double, 3>;

/// The outline of a plane, with its lines in the order in which an image widget keeps them.
void MakeOutline(const std::array<Point, 4>& corners, vtkPolyData* outline)
{
  vtkNew<vtkPoints> points;
  points->SetDataTypeToDouble();
  for (const Point& corner : corners)
  {
    points->InsertNextPoint(corner.data());
  }
  constexpr vtkIdType ends[4][2] = { { 3, 2 }, { 0, 1 }, { 0, 3 }, { 1, 2 } };
  vtkNew<vtkCellArray> lines;
  for (const auto& line : ends)
  {
    lines->InsertNextCell(2, line);
  }
  outline->SetPoints(points);
  outline->SetLines(lines);
}

std::vector<Point> CutByStockFilter(vtkPolyData* outline, const Point& origin, const Point& normal)
{
  vtkNew<vtkPlane> plane;
  plane->SetOrigin(origin[0], origin[1], origin[2]);
  plane->SetNormal(normal[0], normal[1], normal[2]);
  vtkNew<vtkCutter> cutter;
  cutter->SetInputData(outline);
  cutter->SetCutFunction(plane);
  cutter->Update();
  std::vector<Point> points(cutter->GetOutput()->GetNumberOfPoints());
  for (std::size_t n = 0; n < points.size(); ++n)
  {
    cutter->GetOutput()->GetPoint(static_cast<vtkIdType>(n), points[n].data());
  }
  return points;
}

/// Of a quarter of them, so that planes pass through corners and along lines often.
double Roll(std::mt19937& dice)
{
  const bool isWhole = std::uniform_int_distribution<int>(0, 3)(dice) == 0;
  return isWhole ? std::uniform_int_distribution<int>(-2, 2)(dice)
                 : std::uniform_real_distribution<double>(-3.0, 3.0)(dice);
}

Point RollPoint(std::mt19937& dice)
{
  return { Roll(dice), Roll(dice), Roll(dice) };
}
}

TEST(OutlineCut, FindsThePointsOfTheStockFilterInItsOrder)
{
  std::mt19937 dice(5);
  int found = 0;
  for (int n = 0; n < 3000; ++n)
  {
    const Point origin = RollPoint(dice);
    const Point right = RollPoint(dice);
    const Point up = RollPoint(dice);
    std::array<Point, 4> corners{ origin, origin, origin, origin };
    for (int axis = 0; axis < 3; ++axis)
    {
      corners[1][axis] += right[axis];
      corners[2][axis] += right[axis] + up[axis];
      corners[3][axis] += up[axis];
    }
    vtkNew<vtkPolyData> outline;
    MakeOutline(corners, outline);
    const Point through = RollPoint(dice);
    const Point normal = RollPoint(dice);
    const auto points = zvOutlineCut::FindPoints(outline, through.data(), normal.data());
    ASSERT_EQ(points, CutByStockFilter(outline, through, normal)) << "plane " << n;
    found += points.size() >= 2 ? 1 : 0;
  }
  EXPECT_GT(found, 500) << "the planes hardly cut anything";
}

TEST(OutlineCut, OfASquareGivesThePointOfTheFirstLineFirst)
{
  vtkNew<vtkPolyData> outline;
  MakeOutline({ { { 0, 0, 0 }, { 2, 0, 0 }, { 2, 4, 0 }, { 0, 4, 0 } } }, outline);
  const Point through{ 0.5, 9.0, 9.0 };
  const Point normal{ 1, 0, 0 };
  EXPECT_EQ(zvOutlineCut::FindPoints(outline, through.data(), normal.data()),
    (std::vector<Point>{ { 0.5, 4, 0 }, { 0.5, 0, 0 } }));
}

TEST(OutlineCut, OfNoOutlineOrAnEmptyOneIsEmpty)
{
  vtkNew<vtkPolyData> empty;
  const Point through{ 0, 0, 0 };
  const Point normal{ 1, 0, 0 };
  EXPECT_TRUE(zvOutlineCut::FindPoints(nullptr, through.data(), normal.data()).empty());
  EXPECT_TRUE(zvOutlineCut::FindPoints(empty, through.data(), normal.data()).empty());
}
