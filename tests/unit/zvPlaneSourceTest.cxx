#include "zvPlaneSource.h"
#include "zvDice.h"
#include "zvTestKit.h"

#include "vtkCell.h"
#include "vtkDataArray.h"
#include "vtkMath.h"
#include "vtkNew.h"
#include "vtkPlaneSource.h"
#include "vtkPointData.h"
#include "vtkPolyData.h"

#include <gmock/gmock.h>

#include <array>
#include <cmath>
#include <cstddef>
#include <cstring>
#include <sstream>
#include <vector>

namespace
{
using Point = std::array<double, 3>;

Point At(const double* p)
{
  return { p[0], p[1], p[2] };
}

// A plane of 4 by 2 in the plane z = 3, with its normal along z.
class PlaneSource : public zvtest::QuietTest
{
protected:
  PlaneSource()
  {
    Plane->SetOrigin(1.0, 2.0, 3.0);
    Plane->SetPoint1(5.0, 2.0, 3.0);
    Plane->SetPoint2(1.0, 4.0, 3.0);
  }

  void ExpectPoints(const Point& origin, const Point& point1, const Point& point2)
  {
    EXPECT_EQ(At(Plane->GetOrigin()), origin);
    EXPECT_EQ(At(Plane->GetPoint1()), point1);
    EXPECT_EQ(At(Plane->GetPoint2()), point2);
  }

  void ExpectNear(const double* actual, const Point& expected, double tolerance = 1e-12)
  {
    for (int i = 0; i < 3; ++i)
    {
      EXPECT_NEAR(actual[i], expected[i], tolerance) << "coordinate " << i;
    }
  }

  vtkNew<zvPlaneSource> Plane;
};

Point RandomPoint(zvtest::Dice& dice)
{
  return { dice.Real(-300.0, 300.0), dice.Real(-300.0, 300.0), dice.Real(-300.0, 300.0) };
}

template <typename Source>
void SetPoints(Source* source, Point origin, Point point1, Point point2)
{
  source->SetOrigin(origin.data());
  source->SetPoint1(point1.data());
  source->SetPoint2(point2.data());
}

void ExpectSameArrays(vtkDataArray* actual, vtkDataArray* expected, double tolerance)
{
  ASSERT_NE(actual, nullptr);
  ASSERT_EQ(actual->GetDataType(), expected->GetDataType());
  ASSERT_STREQ(actual->GetName(), expected->GetName());
  ASSERT_EQ(actual->GetNumberOfComponents(), expected->GetNumberOfComponents());
  ASSERT_EQ(actual->GetNumberOfTuples(), expected->GetNumberOfTuples());
  for (vtkIdType i = 0; i < expected->GetNumberOfTuples(); ++i)
  {
    for (int c = 0; c < expected->GetNumberOfComponents(); ++c)
    {
      ASSERT_NEAR(actual->GetComponent(i, c), expected->GetComponent(i, c), tolerance);
    }
  }
}

void ExpectSameOutput(vtkPolyData* actual, vtkPolyData* expected)
{
  const double rounding = 4e-5; // a float at the size of the coordinates
  ExpectSameArrays(actual->GetPoints()->GetData(), expected->GetPoints()->GetData(), rounding);
  ExpectSameArrays(
    actual->GetPointData()->GetNormals(), expected->GetPointData()->GetNormals(), 2e-7);
  ExpectSameArrays(
    actual->GetPointData()->GetTCoords(), expected->GetPointData()->GetTCoords(), 0.0);
  ASSERT_EQ(actual->GetNumberOfCells(), expected->GetNumberOfCells());
  for (vtkIdType cell = 0; cell < expected->GetNumberOfCells(); ++cell)
  {
    ASSERT_EQ(actual->GetCellType(cell), expected->GetCellType(cell));
    for (int corner = 0; corner < 4; ++corner)
    {
      ASSERT_EQ(
        actual->GetCell(cell)->GetPointId(corner), expected->GetCell(cell)->GetPointId(corner));
    }
  }
}

// The place of a virtual operation in the table of its class, up to a constant.
template <typename Member>
std::ptrdiff_t PlaceOf(Member member)
{
  std::ptrdiff_t place;
  std::memcpy(&place, &member, sizeof(place));
  return place / static_cast<std::ptrdiff_t>(sizeof(void*));
}

// Its own operation takes the first place behind those of the base class.
class FirstBehindTheBase : public vtkPolyDataAlgorithm
{
public:
  virtual void Own();
};
}

TEST_F(PlaneSource, StartsAsTheUnitSquareAboutTheOrigin)
{
  vtkNew<zvPlaneSource> plane;
  vtkNew<vtkPlaneSource> stock;
  EXPECT_EQ(At(plane->GetOrigin()), At(stock->GetOrigin()));
  EXPECT_EQ(At(plane->GetPoint1()), At(stock->GetPoint1()));
  EXPECT_EQ(At(plane->GetPoint2()), At(stock->GetPoint2()));
  EXPECT_EQ(At(plane->GetCenter()), (Point{ 0, 0, 0 }));
  EXPECT_EQ(At(plane->GetNormal()), (Point{ 0, 0, 1 }));
  EXPECT_EQ(plane->GetXResolution(), 1);
  EXPECT_EQ(plane->GetYResolution(), 1);
  EXPECT_EQ(plane->GetReferenceCount(), stock->GetReferenceCount());
  EXPECT_STREQ(plane->GetClassName(), "zvPlaneSource");
  EXPECT_TRUE(plane->IsA("vtkPolyDataAlgorithm"));
}

TEST_F(PlaneSource, KeepsItsVirtualOperationsInTheOrderThatCallersRelyOn)
{
  using P = zvPlaneSource;
  using Set3 = void (P::*)(double, double, double);
  using Set1 = void (P::*)(double*);
  using Get0 = double* (P::*)();
  const std::vector<std::ptrdiff_t> places = { PlaceOf(&P::SetXResolution),
    PlaceOf(&P::GetXResolution), PlaceOf(&P::SetYResolution), PlaceOf(&P::GetYResolution),
    PlaceOf(static_cast<Set3>(&P::SetOrigin)), PlaceOf(static_cast<Set1>(&P::SetOrigin)),
    PlaceOf(static_cast<Get0>(&P::GetOrigin)), PlaceOf(static_cast<Set1>(&P::GetOrigin)),
    PlaceOf(static_cast<Get0>(&P::GetPoint1)), PlaceOf(static_cast<Set1>(&P::GetPoint1)),
    PlaceOf(static_cast<Get0>(&P::GetPoint2)), PlaceOf(static_cast<Set1>(&P::GetPoint2)),
    PlaceOf(static_cast<Get0>(&P::GetCenter)), PlaceOf(static_cast<Set1>(&P::GetCenter)),
    PlaceOf(static_cast<Get0>(&P::GetNormal)), PlaceOf(static_cast<Set1>(&P::GetNormal)) };
  const std::ptrdiff_t first = PlaceOf(&FirstBehindTheBase::Own);
  for (std::size_t i = 0; i < places.size(); ++i)
  {
    EXPECT_EQ(places[i], first + static_cast<std::ptrdiff_t>(i)) << "operation " << i;
  }
}

TEST_F(PlaneSource, EachPointIsStoredAndMovesNothingElse)
{
  ExpectPoints({ 1, 2, 3 }, { 5, 2, 3 }, { 1, 4, 3 });
  double point[3] = { 1.5, 2.5, 3.5 };
  Plane->SetOrigin(point);
  ExpectPoints({ 1.5, 2.5, 3.5 }, { 5, 2, 3 }, { 1, 4, 3 });
  Plane->SetPoint1(point);
  ExpectPoints({ 1.5, 2.5, 3.5 }, { 1.5, 2.5, 3.5 }, { 1, 4, 3 });
  Plane->SetPoint2(point);
  ExpectPoints({ 1.5, 2.5, 3.5 }, { 1.5, 2.5, 3.5 }, { 1.5, 2.5, 3.5 });
}

TEST_F(PlaneSource, BothFormsOfAGetterAgree)
{
  double v[3];
  Plane->GetOrigin(v);
  EXPECT_EQ(At(v), (Point{ 1, 2, 3 }));
  Plane->GetPoint1(v);
  EXPECT_EQ(At(v), (Point{ 5, 2, 3 }));
  Plane->GetPoint2(v);
  EXPECT_EQ(At(v), (Point{ 1, 4, 3 }));
  Plane->GetCenter(v);
  EXPECT_EQ(At(v), (Point{ 3, 3, 3 }));
  EXPECT_EQ(At(v), At(Plane->GetCenter()));
  Plane->GetNormal(v);
  EXPECT_EQ(At(v), (Point{ 0, 0, 1 }));
  EXPECT_EQ(At(v), At(Plane->GetNormal()));
  Plane->GetAxis1(v);
  EXPECT_EQ(At(v), (Point{ 4, 0, 0 }));
  Plane->GetAxis2(v);
  EXPECT_EQ(At(v), (Point{ 0, 2, 0 }));
}

TEST_F(PlaneSource, NormalAndCentreFollowTheAxisEndsAtOnce)
{
  Plane->SetPoint1(1.0, 2.0, 7.0);
  EXPECT_EQ(At(Plane->GetNormal()), (Point{ -1, 0, 0 }));
  EXPECT_EQ(At(Plane->GetCenter()), (Point{ 1, 3, 5 }));
  Plane->SetPoint2(4.0, 2.0, 3.0);
  EXPECT_EQ(At(Plane->GetNormal()), (Point{ 0, 1, 0 }));
  EXPECT_EQ(At(Plane->GetCenter()), (Point{ 2.5, 2, 5 }));
}

TEST_F(PlaneSource, NormalAndCentreFollowTheOriginAloneAtOnce)
{
  Plane->SetOrigin(5.0, 4.0, 3.0); // beyond both ends, which turns the normal over
  EXPECT_EQ(At(Plane->GetNormal()), (Point{ 0, 0, -1 }));
  Plane->SetOrigin(1.0, 2.0, 9.0);
  ExpectNear(Plane->GetNormal(), { 12.0 / 28.0, 24.0 / 28.0, 8.0 / 28.0 });
  EXPECT_EQ(At(Plane->GetCenter()), (Point{ 3, 3, 3 }));
}

TEST_F(PlaneSource, NormalIsTheUnitCrossProductOfTheAxes)
{
  zvtest::Dice dice(11);
  for (int i = 0; i < 300; ++i)
  {
    SetPoints(Plane.Get(), RandomPoint(dice), RandomPoint(dice), RandomPoint(dice));
    double axis1[3], axis2[3];
    Plane->GetAxis1(axis1);
    Plane->GetAxis2(axis2);
    const double* normal = Plane->GetNormal();
    double cross[3];
    vtkMath::Cross(axis1, axis2, cross);
    EXPECT_NEAR(vtkMath::Norm(normal), 1.0, 1e-14);
    EXPECT_NEAR(vtkMath::Dot(normal, cross), vtkMath::Norm(cross), 1e-9);
  }
}

TEST_F(PlaneSource, TheCentreThatWasSetIsReadBackExactlyAtOnce)
{
  zvtest::Dice dice(12);
  for (int i = 0; i < 300; ++i)
  {
    SetPoints(Plane.Get(), RandomPoint(dice), RandomPoint(dice), RandomPoint(dice));
    Point center = RandomPoint(dice);
    Plane->SetCenter(center.data());
    EXPECT_EQ(At(Plane->GetCenter()), center);
    const double* o = Plane->GetOrigin();
    const double* p1 = Plane->GetPoint1();
    const double* p2 = Plane->GetPoint2();
    for (int c = 0; c < 3; ++c)
    {
      EXPECT_NEAR(o[c] + 0.5 * ((p1[c] - o[c]) + (p2[c] - o[c])), center[c], 1e-11);
    }
  }
}

TEST_F(PlaneSource, ANewCentreKeepsSizeAndDirection)
{
  Plane->SetCenter(-10.0, 20.0, 30.0);
  ExpectPoints({ -12, 19, 30 }, { -8, 19, 30 }, { -12, 21, 30 });
  EXPECT_EQ(At(Plane->GetNormal()), (Point{ 0, 0, 1 }));
}

TEST_F(PlaneSource, PushMovesAlongTheNormal)
{
  Plane->Push(2.5);
  ExpectPoints({ 1, 2, 5.5 }, { 5, 2, 5.5 }, { 1, 4, 5.5 });
  EXPECT_EQ(At(Plane->GetCenter()), (Point{ 3, 3, 5.5 }));
}

TEST_F(PlaneSource, ANegativePushMovesAgainstTheNormal)
{
  Plane->Push(-1.0);
  ExpectPoints({ 1, 2, 2 }, { 5, 2, 2 }, { 1, 4, 2 });
}

TEST_F(PlaneSource, APushByNothingChangesNothing)
{
  const vtkMTimeType before = Plane->GetMTime();
  Plane->Push(0.0);
  ExpectPoints({ 1, 2, 3 }, { 5, 2, 3 }, { 1, 4, 3 });
  EXPECT_EQ(Plane->GetMTime(), before);
}

TEST_F(PlaneSource, PushedToAndFroItDoesNotTurn)
{
  zvtest::Dice dice(13);
  for (int i = 0; i < 50; ++i)
  {
    SetPoints(Plane.Get(), RandomPoint(dice), RandomPoint(dice), RandomPoint(dice));
    const Point normal = At(Plane->GetNormal());
    const Point center = At(Plane->GetCenter());
    for (int j = 0; j < 100; ++j)
    {
      const double distance = dice.Real(-70.0, 70.0);
      Plane->Push(distance);
      Plane->Push(-distance);
    }
    EXPECT_EQ(At(Plane->GetNormal()), normal);
    ExpectNear(Plane->GetCenter(), center, 1e-10);
  }
}

TEST_F(PlaneSource, PointersStayTheSameAndShowLaterChanges)
{
  double* normal = Plane->GetNormal();
  double* center = Plane->GetCenter();
  double* origin = Plane->GetOrigin();
  Plane->SetPoint1(1.0, 2.0, 7.0);
  Plane->SetCenter(0.0, 0.0, 0.0);
  EXPECT_EQ(Plane->GetNormal(), normal);
  EXPECT_EQ(Plane->GetCenter(), center);
  EXPECT_EQ(Plane->GetOrigin(), origin);
  EXPECT_EQ(At(normal), (Point{ -1, 0, 0 }));
  EXPECT_EQ(At(center), (Point{ 0, 0, 0 }));
  EXPECT_EQ(At(origin), (Point{ 0, -1, -2 }));
}

TEST_F(PlaneSource, ItsOwnPointersMayBeArguments)
{
  Plane->SetCenter(Plane->GetOrigin());
  ExpectPoints({ -1, 1, 3 }, { 3, 1, 3 }, { -1, 3, 3 });
  Plane->SetOrigin(Plane->GetCenter());
  Plane->SetPoint1(Plane->GetPoint2());
  Plane->SetNormal(Plane->GetNormal());
  ExpectPoints({ 1, 2, 3 }, { -1, 3, 3 }, { -1, 3, 3 });
  ExpectVtkError("src/companions/zvPlaneSource", "zvPlaneSource", Plane,
    "A plane cannot be turned to a normal of no length");
}

TEST_F(PlaneSource, OnlyAChangeIsAModification)
{
  Plane->SetCenter(0.1, 0.2, 0.3);
  const vtkMTimeType before = Plane->GetMTime();
  Plane->SetOrigin(Plane->GetOrigin());
  Plane->SetPoint1(Plane->GetPoint1());
  Plane->SetPoint2(Plane->GetPoint2());
  Plane->SetCenter(0.1, 0.2, 0.3);
  Plane->SetNormal(Plane->GetNormal());
  Plane->SetXResolution(1);
  Plane->SetYResolution(1);
  Plane->SetResolution(1, 1);
  Plane->SetOutputPointsPrecision(vtkAlgorithm::SINGLE_PRECISION);
  EXPECT_EQ(Plane->GetMTime(), before);
}

TEST_F(PlaneSource, EveryChangeIsAModification)
{
  vtkMTimeType last = Plane->GetMTime();
  double axis[3] = { 1.0, 1.0, 0.0 };
  const auto expectModified = [&](const char* what)
  {
    EXPECT_GT(Plane->GetMTime(), last) << what;
    last = Plane->GetMTime();
  };
  Plane->SetOrigin(0.0, 2.0, 3.0);
  expectModified("SetOrigin");
  Plane->SetPoint1(5.0, 2.0, 4.0);
  expectModified("SetPoint1");
  Plane->SetPoint2(1.0, 4.0, 4.0);
  expectModified("SetPoint2");
  Plane->SetCenter(1.0, 1.0, 1.0);
  expectModified("SetCenter");
  Plane->SetNormal(1.0, 2.0, 3.0);
  expectModified("SetNormal");
  Plane->Push(1.0);
  expectModified("Push");
  Plane->Rotate(10.0, axis);
  expectModified("Rotate");
  Plane->SetXResolution(2);
  expectModified("SetXResolution");
  Plane->SetYResolution(2);
  expectModified("SetYResolution");
  Plane->SetOutputPointsPrecision(vtkAlgorithm::DOUBLE_PRECISION);
  expectModified("SetOutputPointsPrecision");
}

TEST_F(PlaneSource, ResolutionsBelowOneCountAsOne)
{
  Plane->SetXResolution(0);
  Plane->SetYResolution(-5);
  EXPECT_EQ(Plane->GetXResolution(), 1);
  EXPECT_EQ(Plane->GetYResolution(), 1);
  Plane->SetResolution(4, 3);
  int x = 0, y = 0;
  Plane->GetResolution(x, y);
  EXPECT_EQ(x, 4);
  EXPECT_EQ(y, 3);
}

TEST_F(PlaneSource, ResolutionOneGivesOneTexturedQuad)
{
  Plane->Update();
  vtkPolyData* output = Plane->GetOutput();
  ASSERT_EQ(output->GetNumberOfPoints(), 4);
  ASSERT_EQ(output->GetNumberOfCells(), 1);
  ASSERT_EQ(output->GetCellType(0), VTK_QUAD);
  const std::vector<std::array<double, 5>> corners = { { 1, 2, 3, 0, 0 }, { 5, 2, 3, 1, 0 },
    { 5, 4, 3, 1, 1 }, { 1, 4, 3, 0, 1 } };
  for (int corner = 0; corner < 4; ++corner)
  {
    const vtkIdType id = output->GetCell(0)->GetPointId(corner);
    const std::array<double, 5>& expected = corners[corner];
    EXPECT_EQ(At(output->GetPoint(id)), (Point{ expected[0], expected[1], expected[2] }));
    const double* texture = output->GetPointData()->GetTCoords()->GetTuple2(id);
    EXPECT_EQ(texture[0], expected[3]);
    EXPECT_EQ(texture[1], expected[4]);
    EXPECT_EQ(At(output->GetPointData()->GetNormals()->GetTuple3(id)), (Point{ 0, 0, 1 }));
  }
}

TEST_F(PlaneSource, ItsOutputIsThatOfTheStockSource)
{
  zvtest::Dice dice(14);
  for (int i = 0; i < 200; ++i)
  {
    vtkNew<vtkPlaneSource> stock;
    const Point origin = RandomPoint(dice), point1 = RandomPoint(dice), point2 = RandomPoint(dice);
    SetPoints(Plane.Get(), origin, point1, point2);
    SetPoints(stock.Get(), origin, point1, point2);
    const int x = dice.Int(1, 9), y = dice.Int(1, 9);
    Plane->SetResolution(x, y);
    stock->SetResolution(x, y);
    const int precision = dice.Int(0, 1);
    Plane->SetOutputPointsPrecision(precision);
    stock->SetOutputPointsPrecision(precision);
    Plane->Update();
    stock->Update();
    ExpectSameOutput(Plane->GetOutput(), stock->GetOutput());
  }
}

TEST_F(PlaneSource, ItMovesAndTurnsAsTheStockSource)
{
  zvtest::Dice dice(15);
  for (int i = 0; i < 200; ++i)
  {
    vtkNew<vtkPlaneSource> stock;
    const Point origin = RandomPoint(dice), point1 = RandomPoint(dice), point2 = RandomPoint(dice);
    SetPoints(Plane.Get(), origin, point1, point2);
    SetPoints(stock.Get(), origin, point1, point2);
    Point normal = RandomPoint(dice), axis = RandomPoint(dice), center = RandomPoint(dice);
    const double distance = dice.Real(-50.0, 50.0), angle = dice.Real(-360.0, 360.0);
    Plane->SetNormal(normal.data());
    stock->SetNormal(normal.data());
    Plane->Push(distance);
    stock->Push(distance);
    Plane->Rotate(angle, axis.data());
    stock->Rotate(angle, axis.data());
    Plane->SetCenter(center[0], center[1], center[2]);
    stock->SetCenter(center.data());
    // The stock source turns to a normal by the arc cosine, which costs it digits.
    ExpectNear(Plane->GetOrigin(), At(stock->GetOrigin()), 1e-4);
    ExpectNear(Plane->GetPoint1(), At(stock->GetPoint1()), 1e-4);
    ExpectNear(Plane->GetPoint2(), At(stock->GetPoint2()), 1e-4);
    ExpectNear(Plane->GetCenter(), center);
  }
}

TEST_F(PlaneSource, OutputFollowsAChangeAtTheNextUpdateOnly)
{
  Plane->Update();
  const vtkMTimeType made = Plane->GetOutput()->GetMTime();
  Plane->Update();
  EXPECT_EQ(Plane->GetOutput()->GetMTime(), made);
  Plane->Push(1.0);
  EXPECT_EQ(At(Plane->GetOutput()->GetPoint(0)), (Point{ 1, 2, 3 }));
  Plane->Update();
  EXPECT_EQ(At(Plane->GetOutput()->GetPoint(0)), (Point{ 1, 2, 4 }));
}

TEST_F(PlaneSource, OutputPointsAreFloatUnlessAskedOtherwise)
{
  Plane->Update();
  EXPECT_EQ(Plane->GetOutput()->GetPoints()->GetDataType(), VTK_FLOAT);
  Plane->SetOutputPointsPrecision(vtkAlgorithm::DOUBLE_PRECISION);
  Plane->Update();
  EXPECT_EQ(Plane->GetOutput()->GetPoints()->GetDataType(), VTK_DOUBLE);
  EXPECT_EQ(Plane->GetOutputPointsPrecision(), vtkAlgorithm::DOUBLE_PRECISION);
}

TEST_F(PlaneSource, ADegeneratePlaneIsSilentAndHasNoNormal)
{
  Plane->SetPoint1(1.0, 8.0, 3.0); // on the line of the second axis
  EXPECT_EQ(At(Plane->GetNormal()), (Point{ 0, 0, 0 }));
  EXPECT_EQ(At(Plane->GetCenter()), (Point{ 1, 6, 3 }));
  Plane->Update();
  EXPECT_EQ(Plane->GetOutput()->GetNumberOfCells(), 1);
  const vtkMTimeType before = Plane->GetMTime();
  Plane->Push(10.0);
  ExpectPoints({ 1, 2, 3 }, { 1, 8, 3 }, { 1, 4, 3 });
  EXPECT_EQ(Plane->GetMTime(), before);
  ExpectNoMessage();
}

TEST_F(PlaneSource, AfterADegenerateStateItIsAsGoodAsNew)
{
  Plane->SetOrigin(5.0, 2.0, 3.0); // on point 1
  Plane->Update();
  Plane->SetPoint1(5.0, 6.0, 3.0);
  EXPECT_EQ(At(Plane->GetNormal()), (Point{ 0, 0, 1 }));
  Plane->Update();
  EXPECT_EQ(At(Plane->GetOutput()->GetPointData()->GetNormals()->GetTuple3(0)), (Point{ 0, 0, 1 }));
}

TEST_F(PlaneSource, TurnsToANormalAboutItsCentre)
{
  Plane->SetNormal(5.0, 0.0, 0.0);
  ExpectNear(Plane->GetNormal(), { 1, 0, 0 });
  ExpectNear(Plane->GetOrigin(), { 3, 2, 5 });
  ExpectNear(Plane->GetPoint1(), { 3, 2, 1 });
  ExpectNear(Plane->GetPoint2(), { 3, 4, 5 });
  EXPECT_EQ(At(Plane->GetCenter()), (Point{ 3, 3, 3 }));
}

TEST_F(PlaneSource, TurnsStraightOverToTheOppositeNormal)
{
  Plane->SetNormal(0.0, 0.0, -1.0);
  ExpectNear(Plane->GetNormal(), { 0, 0, -1 });
  ExpectNear(Plane->GetOrigin(), { 1, 4, 3 });
  ExpectNear(Plane->GetPoint1(), { 5, 4, 3 });
  ExpectNear(Plane->GetPoint2(), { 1, 2, 3 });
}

TEST_F(PlaneSource, CannotTurnToANormalOfNoLength)
{
  Plane->SetNormal(0.0, 0.0, 0.0);
  ExpectVtkError("src/companions/zvPlaneSource", "zvPlaneSource", Plane,
    "A plane cannot be turned to a normal of no length");
  ExpectPoints({ 1, 2, 3 }, { 5, 2, 3 }, { 1, 4, 3 });
}

TEST_F(PlaneSource, CannotTurnADegeneratePlaneToANormal)
{
  Plane->SetPoint1(1.0, 2.0, 3.0);
  Plane->SetNormal(1.0, 0.0, 0.0);
  ExpectVtkError("src/companions/zvPlaneSource", "zvPlaneSource", Plane,
    "A plane that spans no area cannot be turned to a normal");
  ExpectPoints({ 1, 2, 3 }, { 1, 2, 3 }, { 1, 4, 3 });
}

TEST_F(PlaneSource, TurnsRightHandedByDegreesAboutItsCentre)
{
  double axis[3] = { 0.0, 0.0, 7.0 };
  Plane->Rotate(90.0, axis);
  ExpectNear(Plane->GetOrigin(), { 4, 1, 3 });
  ExpectNear(Plane->GetPoint1(), { 4, 5, 3 });
  ExpectNear(Plane->GetPoint2(), { 2, 1, 3 });
  EXPECT_EQ(At(Plane->GetCenter()), (Point{ 3, 3, 3 }));
}

TEST_F(PlaneSource, DoesNotTurnAboutNoAxisOrByNoAngle)
{
  double none[3] = { 0.0, 0.0, 0.0 };
  double axis[3] = { 0.0, 0.0, 1.0 };
  Plane->Rotate(90.0, none);
  Plane->Rotate(0.0, axis);
  ExpectPoints({ 1, 2, 3 }, { 5, 2, 3 }, { 1, 4, 3 });
}

TEST_F(PlaneSource, PrintsWhatItIs)
{
  std::ostringstream text;
  Plane->PrintSelf(text, vtkIndent(2));
  EXPECT_THAT(text.str(),
    ::testing::EndsWith("  X Resolution: 1\n  Y Resolution: 1\n  Origin: (1, 2, 3)\n"
                        "  Point 1: (5, 2, 3)\n  Point 2: (1, 4, 3)\n  Normal: (0, 0, 1)\n"
                        "  Center: (3, 3, 3)\n  Output Points Precision: 0\n"));
}
