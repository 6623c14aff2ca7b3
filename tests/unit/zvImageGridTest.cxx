#include "zvImageGrid.h"

#include "zvTestKit.h"

#include "vtkImageData.h"
#include "vtkImageReslice.h"
#include "vtkImageTranslateExtent.h"
#include "vtkMatrix3x3.h"
#include "vtkNew.h"

#include <algorithm>
#include <cmath>
#include <iterator>

class ImageGrid : public zvtest::QuietTest
{
};

TEST_F(ImageGrid, TheGridIsThatOfTheInput)
{
  vtkSmartPointer<vtkImageData> image = zvtest::MakeIndexVolume(zvtest::ShiftedExtentVolume());
  vtkNew<vtkImageReslice> reslice;
  reslice->SetInputData(image);
  const zvImageGrid::Grid grid = zvImageGrid::Read(reslice);
  EXPECT_TRUE(std::equal(std::begin(grid.Extent), std::end(grid.Extent), image->GetExtent()));
  EXPECT_TRUE(std::equal(std::begin(grid.Origin), std::end(grid.Origin), image->GetOrigin()));
  EXPECT_TRUE(std::equal(std::begin(grid.Spacing), std::end(grid.Spacing), image->GetSpacing()));
  EXPECT_TRUE(grid.IdentityDirection);
}

TEST_F(ImageGrid, TheGridIsThatAPipelineIsGoingToDeliver)
{
  vtkNew<vtkImageTranslateExtent> shift;
  shift->SetInputData(zvtest::MakeIndexVolume());
  vtkNew<vtkImageReslice> reslice;
  reslice->SetInputConnection(shift->GetOutputPort());
  zvImageGrid::Read(reslice);
  shift->SetTranslation(0, 0, 7);
  EXPECT_EQ(zvImageGrid::Read(reslice).Extent[4], 7);
}

TEST_F(ImageGrid, WithoutAConnectionTheGridIsEmpty)
{
  vtkNew<vtkImageReslice> reslice;
  const zvImageGrid::Grid grid = zvImageGrid::Read(reslice);
  EXPECT_GT(grid.Extent[0], grid.Extent[1]);
}

TEST_F(ImageGrid, TheSpanGoesFromTheLowToTheHighCentresOfVoxels)
{
  zvImageGrid::Grid grid;
  const int extent[6] = { 2, 5, -1, 3, 7, 7 };
  const double spacing[3] = { 0.5, -2.0, 3.0 };
  const double origin[3] = { 10.0, 20.0, 30.0 };
  std::copy_n(extent, 6, grid.Extent);
  std::copy_n(spacing, 3, grid.Spacing);
  std::copy_n(origin, 3, grid.Origin);
  double low[3], high[3];
  zvImageGrid::Span(grid, low, high);
  EXPECT_EQ(zvtest::World({ { low[0], low[1], low[2] } }), (zvtest::World{ { 11.0, 14.0, 51.0 } }));
  EXPECT_EQ(
    zvtest::World({ { high[0], high[1], high[2] } }), (zvtest::World{ { 12.5, 22.0, 51.0 } }));
}

TEST_F(ImageGrid, AnyTurnOrFlipOfTheAxesIsSeen)
{
  vtkSmartPointer<vtkImageData> image = zvtest::MakeIndexVolume();
  EXPECT_TRUE(zvImageGrid::HasIdentityDirection(image));
  for (int element = 0; element < 9; ++element)
  {
    SCOPED_TRACE(element);
    vtkNew<vtkMatrix3x3> direction;
    direction->SetElement(element / 3, element % 3, element % 4 == 0 ? -1.0 : 1e-6);
    image->SetDirectionMatrix(direction);
    EXPECT_FALSE(zvImageGrid::HasIdentityDirection(image));
    vtkNew<vtkImageReslice> reslice;
    reslice->SetInputData(image);
    EXPECT_FALSE(zvImageGrid::Read(reslice).IdentityDirection);
  }
}

TEST_F(ImageGrid, TheNearestIndexRoundsHalvesAwayFromZero)
{
  EXPECT_EQ(zvImageGrid::NearestIndex(4.0, 1.0, 2.0), 2);
  EXPECT_EQ(zvImageGrid::NearestIndex(3.9, 1.0, 2.0), 1);
  EXPECT_EQ(zvImageGrid::NearestIndex(-2.0, 1.0, 2.0), -2);
  EXPECT_EQ(zvImageGrid::NearestIndex(-5.0, 1.0, -2.0), 3);
  EXPECT_EQ(zvImageGrid::NearestIndex(5.0, 1.0, 0.0), 0);
  EXPECT_EQ(zvImageGrid::NearestIndex(5.0, 1.0, std::nan("")), 0);
}

TEST_F(ImageGrid, AnImageHasVoxelsIfEachHasItsScalars)
{
  EXPECT_TRUE(zvImageGrid::HasVoxels(zvtest::MakeIndexVolume()));
  vtkNew<vtkImageData> image;
  EXPECT_FALSE(zvImageGrid::HasVoxels(image));
  image->SetDimensions(3, 3, 3);
  EXPECT_FALSE(zvImageGrid::HasVoxels(image));
  image->AllocateScalars(VTK_SHORT, 1);
  EXPECT_TRUE(zvImageGrid::HasVoxels(image));
  image->SetDimensions(3, 3, 4);
  EXPECT_FALSE(zvImageGrid::HasVoxels(image));
}

TEST_F(ImageGrid, AnExtentIsEmptyIfAnyAxisIs)
{
  const int full[6] = { 3, 3, -2, 0, 5, 9 };
  EXPECT_FALSE(zvImageGrid::IsEmpty(full));
  for (int axis = 0; axis < 3; ++axis)
  {
    int extent[6];
    std::copy(full, full + 6, extent);
    extent[2 * axis] = extent[2 * axis + 1] + 1;
    EXPECT_TRUE(zvImageGrid::IsEmpty(extent)) << axis;
  }
  const int empty[6] = { 0, -1, 2, 3, -4, 5 };
  EXPECT_EQ(zvImageGrid::EmptyExtentText(empty),
    "Invalid extent [0, -1, 2, 3, -4, 5]. Perhaps the input data is empty?");
}

TEST_F(ImageGrid, StepsAlongAnAxisAreOneLessThanItsVoxels)
{
  const int extent[6] = { 3, 3, -2, 5, 0, -1 };
  EXPECT_EQ(zvImageGrid::StepsAlong(extent, 0), 0);
  EXPECT_EQ(zvImageGrid::StepsAlong(extent, 1), 7);
  EXPECT_EQ(zvImageGrid::StepsAlong(extent, 2), -1);
}

TEST_F(ImageGrid, StepsBeyondAnIntEndAtItsLimits)
{
  const int extent[6] = { -2000000000, 2000000000, 2000000000, -2000000000, -1, 2147483647 };
  EXPECT_EQ(zvImageGrid::StepsAlong(extent, 0), 2147483646);
  EXPECT_EQ(zvImageGrid::StepsAlong(extent, 1), -2147483647 - 1);
  EXPECT_EQ(zvImageGrid::StepsAlong(extent, 2), 2147483646);
}

TEST_F(ImageGrid, ARefusedDirectionIsToldWithWhatFollows)
{
  EXPECT_EQ(zvImageGrid::DirectionText("mask", "the mask is not shown"),
    "The mask's direction matrix is not the identity, so the mask is not shown. Reorient it first: "
    "permute and flip its axes exactly, or resample it.");
}
