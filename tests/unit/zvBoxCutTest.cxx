#include "zvBoxCut.h"

#include "vtkCubeSource.h"
#include "vtkCutter.h"
#include "vtkNew.h"
#include "vtkPlane.h"
#include "vtkPolyData.h"

#include <gtest/gtest.h>

namespace
{
class BoxCut : public ::testing::Test
{
protected:
  void Cut(double x, double y, double z)
  {
    this->Plane->SetOrigin(x, y, z);
    zvBoxCut::Connect(this->Bounds, this->Cube, this->Plane, this->Cutter);
  }

  const double Bounds[6] = { 0.1, 0.7, -2.3, 4.9, 10.0, 11.1 };
  vtkNew<vtkCubeSource> Cube;
  vtkNew<vtkPlane> Plane;
  vtkNew<vtkCutter> Cutter;
};
}

TEST_F(BoxCut, WithoutInputThereIsNone)
{
  double mean[3] = { 1.0, 2.0, 3.0 };
  EXPECT_FALSE(zvBoxCut::Update(this->Cutter));
  EXPECT_FALSE(zvBoxCut::Mean(this->Cutter, mean));
  EXPECT_EQ(mean[1], 2.0);
}

TEST_F(BoxCut, TheMeanIsTheMiddleOfTheCut)
{
  this->Plane->SetNormal(0.0, 0.0, 1.0);
  this->Cut(50.0, 50.0, 10.25);
  double mean[3];
  ASSERT_TRUE(zvBoxCut::Mean(this->Cutter, mean));
  EXPECT_NEAR(mean[0], 0.4, 1e-12);
  EXPECT_NEAR(mean[1], 1.3, 1e-12);
  EXPECT_NEAR(mean[2], 10.25, 1e-12);
  EXPECT_EQ(this->Cutter->GetOutput()->GetNumberOfPoints(), 4);
}

TEST_F(BoxCut, TheFaceThatTheNormalPointsToIsCut)
{
  // Neither bound can be held in single precision.
  this->Plane->SetNormal(1.0, 0.0, 0.0);
  this->Cut(0.7, 0.0, 10.0);
  EXPECT_TRUE(zvBoxCut::Update(this->Cutter));
  this->Plane->SetNormal(0.0, 1.0, 0.0);
  this->Cut(0.7, 4.9, 10.0);
  EXPECT_TRUE(zvBoxCut::Update(this->Cutter));
}

TEST_F(BoxCut, APlaneBesideTheBoxCutsNothing)
{
  this->Plane->SetNormal(0.0, 0.0, 1.0);
  this->Cut(0.4, 0.0, 9.0);
  double mean[3] = { 1.0, 2.0, 3.0 };
  EXPECT_FALSE(zvBoxCut::Mean(this->Cutter, mean));
  EXPECT_EQ(mean[2], 3.0);
}
