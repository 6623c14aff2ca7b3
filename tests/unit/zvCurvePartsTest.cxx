#include "zvCurveParts.h"

#include "zvParametricSpline.h"
#include "zvTestKit.h"

#include "vtkActor.h"
#include "vtkCellPicker.h"
#include "vtkMapper.h"
#include "vtkNew.h"
#include "vtkParametricFunctionSource.h"
#include "vtkPoints.h"
#include "vtkPolyData.h"
#include "vtkPolyDataMapper.h"
#include "vtkPropCollection.h"
#include "vtkProperty.h"

#include <gtest/gtest.h>

#include <sstream>

namespace
{
class CurveParts : public zvtest::QuietTest
{
protected:
  CurveParts() { zvCurveParts::BuildLine(this->Spline, this->Source, this->Line, 40); }

  vtkNew<zvParametricSpline> Spline;
  vtkNew<vtkParametricFunctionSource> Source;
  vtkNew<vtkActor> Line;
};

const zvHandleCurve::Positions Handles{ { { 0, 0, 0 } }, { { 2, 0, 0 } }, { { 2, 3, 0 } } };
}

TEST_F(CurveParts, TheLineIsSampledFromTheSplineWithPointsAlone)
{
  ASSERT_NE(this->Spline->GetPoints(), nullptr);
  EXPECT_EQ(this->Spline->GetPoints()->GetDataType(), VTK_DOUBLE);
  EXPECT_EQ(this->Spline->GetPoints()->GetNumberOfPoints(), 0);
  EXPECT_EQ(this->Source->GetParametricFunction(), this->Spline);
  EXPECT_EQ(this->Source->GetUResolution(), 40);
  EXPECT_EQ(this->Source->GetScalarMode(), vtkParametricFunctionSource::SCALAR_NONE);
  EXPECT_EQ(this->Source->GetGenerateTextureCoordinates(), 0);
  EXPECT_EQ(this->Line->GetMapper()->GetInputAlgorithm(), this->Source);
  EXPECT_EQ(vtkMapper::GetResolveCoincidentTopology(), VTK_RESOLVE_POLYGON_OFFSET);
}

TEST_F(CurveParts, TheLineFollowsTheHandles)
{
  zvCurveParts::FollowHandles(Handles, this->Spline, this->Line);
  this->Source->Update();
  EXPECT_EQ(this->Source->GetOutput()->GetNumberOfPoints(), 41);
  const double* end = this->Source->GetOutput()->GetPoint(40);
  EXPECT_EQ(end[0], 2.0);
  EXPECT_EQ(end[1], 3.0);
  zvCurveParts::FollowHandles({ Handles[0], Handles[1] }, this->Spline, this->Line);
  this->Source->Update();
  EXPECT_EQ(this->Spline->GetPoints()->GetNumberOfPoints(), 2);
  EXPECT_EQ(this->Source->GetOutput()->GetPoint(40)[1], 0.0);
}

TEST_F(CurveParts, TheLineOfNoHandlesIsHidden)
{
  zvCurveParts::FollowHandles({}, this->Spline, this->Line);
  EXPECT_EQ(this->Line->GetVisibility(), 0);
  zvCurveParts::FollowHandles(Handles, this->Spline, this->Line);
  EXPECT_EQ(this->Line->GetVisibility(), 1);
}

TEST_F(CurveParts, ASplineWithoutPointsGetsSomeAndNoSplineIsBorne)
{
  this->Spline->SetPoints(nullptr);
  zvCurveParts::FollowHandles(Handles, this->Spline, this->Line);
  ASSERT_NE(this->Spline->GetPoints(), nullptr);
  EXPECT_EQ(this->Spline->GetPoints()->GetNumberOfPoints(), 3);
  zvCurveParts::FollowHandles({}, nullptr, this->Line);
  EXPECT_EQ(this->Line->GetVisibility(), 1);
}

TEST_F(CurveParts, PickersHitOnlyWhatIsInTheirList)
{
  auto picker = zvCurveParts::MakePicker();
  EXPECT_EQ(picker->GetTolerance(), 0.005);
  EXPECT_EQ(picker->GetPickFromList(), 1);
  EXPECT_EQ(picker->GetPickList()->GetNumberOfItems(), 0);
}

TEST_F(CurveParts, TheLooksHaveOnlyAmbientLight)
{
  const vtkSmartPointer<vtkProperty> looks[] = { zvCurveParts::MakeSelectedHandleProperty(),
    zvCurveParts::MakeLineProperty(), zvCurveParts::MakeSelectedLineProperty() };
  for (vtkProperty* look : looks)
  {
    EXPECT_EQ(look->GetAmbient(), 1.0);
    EXPECT_EQ(look->GetDiffuse(), 0.0);
  }
}

TEST_F(CurveParts, AMotionIsTheDifferenceOfItsEnds)
{
  const double from[3] = { 1, 2, 3 };
  const double to[3] = { 4, 0, 3.5 };
  EXPECT_EQ(zvCurveParts::MotionBetween(from, to), (zvHandleCurve::Position{ { 3, -2, 0.5 } }));
}

TEST_F(CurveParts, PrintsALineForEachObjectAndSetting)
{
  const int object = 0;
  std::ostringstream address;
  address << static_cast<const void*>(&object);
  std::ostringstream text;
  zvCurveParts::Print(
    text, vtkIndent(2), { { { "First", &object }, { "Second", nullptr } }, 1, 2, 0.5, 40, 3, 0 });
  EXPECT_EQ(text.str(),
    "  First: " + address.str() +
      "\n  Second: (none)\n  Project To Plane: On\n  Projection Normal: 2\n"
      "  Projection Position: 0.5\n  Resolution: 40\n  Number Of Handles: 3\n  Closed: Off\n");
}
