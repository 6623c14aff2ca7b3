// The handles of the spline widget: giving, inserting and erasing them, and the motions.
#include "zvSplineWidget.h"

#include "zvCurveFixture.h"
#include "zvParametricSpline.h"

#include "vtkMath.h"
#include "vtkParametricFunctionSource.h"
#include "vtkPlaneSource.h"
#include "vtkPropCollection.h"

#include <gmock/gmock.h>

#include <cmath>

using ::testing::ElementsAre;
using zvtest::World;

namespace
{
class SplineWidgetHandles : public zvtest::CurveTest<zvSplineWidget>
{
protected:
  /// The sampled point in the middle between those next to two handles that follow each other.
  World MiddleOfSpan(const World& from, const World& to)
  {
    const int first = this->SampleNearest(from, 0);
    return this->Sample((first + this->SampleNearest(to, first + 1)) / 2);
  }

  World Sample(int index)
  {
    vtkNew<vtkPolyData> line;
    this->Curve->GetPolyData(line);
    World position;
    line->GetPoint(index, position.data());
    return position;
  }

  int SampleNearest(const World& place, int begin)
  {
    int nearest = begin;
    double least = VTK_DOUBLE_MAX;
    for (int i = begin; i <= this->Curve->GetResolution(); ++i)
    {
      const double distance = vtkMath::Distance2BetweenPoints(place.data(), this->Sample(i).data());
      if (distance < least)
      {
        least = distance;
        nearest = i;
      }
    }
    return nearest;
  }
};

constexpr char IndexError[] = "zvSplineWidget: handle index out of range.";
constexpr char IndexWarning[] = "Spline handle index out of range.";
constexpr char PlaneWarning[] = "Set the plane source for oblique projections...";
}

// ---- Handles

TEST_F(SplineWidgetHandles, InitializingTakesAListOfAnyPrecision)
{
  vtkNew<vtkPoints> single;
  single->InsertNextPoint(0.5, 1.5, 2.5);
  single->InsertNextPoint(-0.5, -1.5, -2.5);
  this->Curve->InitializeHandles(single);
  this->ExpectHandles({ { { 0.5, 1.5, 2.5 } }, { { -0.5, -1.5, -2.5 } } });
  this->Curve->InitializeHandles(nullptr);
  EXPECT_EQ(this->Curve->GetNumberOfHandles(), 2);
  vtkNew<vtkPoints> none;
  this->Curve->InitializeHandles(none);
  EXPECT_EQ(this->Curve->GetNumberOfHandles(), 0);
}

TEST_F(SplineWidgetHandles, EachHandleOfAListIsProjectedByItself)
{
  this->Curve->SetProjectionNormal(3);
  this->Curve->ProjectToPlaneOn();
  this->Curve->InitializeHandles(PointsOf({ { { 1, 0, 0 } }, { { 2, 0, 0 } }, { { 3, 0, 0 } } }));
  for (int i = 0; i < 3; ++i)
  {
    this->ExpectGenericWarning("zvSplineWidget", PlaneWarning); // one for each: hosts count on it
  }
  this->ExpectNoMessage();
}

TEST_F(SplineWidgetHandles, TheNumberIsSetByTheVirtualOperation)
{
  class Watched : public zvtest::Open<zvSplineWidget>
  {
  public:
    void SetNumberOfHandles(int count) override
    {
      this->Counts.push_back(count);
      this->zvSplineWidget::SetNumberOfHandles(count);
    }
    std::vector<int> Counts;
  };
  auto curve = vtkSmartPointer<Watched>::Take(new Watched);
  double position[3] = { 0, 0, 0 };
  curve->InitializeHandles(PointsOf(Square()));
  curve->AddHandle(position);
  curve->EraseHandle(0);
  EXPECT_THAT(curve->Counts, ElementsAre(4, 5, 4));
}

TEST_F(SplineWidgetHandles, ThePositionsOfTwoHandlesCanBeHeldAtOnce)
{
  this->Show(Square());
  const double* first = this->Curve->GetHandlePosition(0);
  const double* third = this->Curve->GetHandlePosition(2);
  EXPECT_EQ(first[0], -6.0);
  EXPECT_EQ(third[0], 6.0);
}

TEST_F(SplineWidgetHandles, AHandleOutOfRangeIsAnErrorAndChangesNothing)
{
  this->Show(Square());
  for (int handle : { -1, 4, 1000 })
  {
    this->Curve->SetHandlePosition(handle, 1.0, 2.0, 3.0);
    this->ExpectVtkError("zvSplineWidget", "zvSplineWidget", this->Curve, IndexError);
    double position[3] = { 7, 8, 9 };
    this->Curve->SetHandlePosition(handle, position);
    this->ExpectVtkError("zvSplineWidget", "zvSplineWidget", this->Curve, IndexError);
    this->Curve->GetHandlePosition(handle, position);
    this->ExpectVtkError("zvSplineWidget", "zvSplineWidget", this->Curve, IndexError);
    EXPECT_THAT(position, ElementsAre(7, 8, 9));
    EXPECT_EQ(this->Curve->GetHandlePosition(handle), nullptr);
    this->ExpectVtkError("zvSplineWidget", "zvSplineWidget", this->Curve, IndexError);
  }
  this->ExpectHandles(Square());
}

TEST_F(SplineWidgetHandles, SettingTheNumberChangesTheCountAlone)
{
  this->Show(Square());
  this->Curve->SetNumberOfHandles(2);
  EXPECT_EQ(this->Curve->GetNumberOfHandles(), 2);
  EXPECT_EQ(this->Curve->HandlePolyData->GetNumberOfPoints(), 4);
  EXPECT_EQ(this->Curve->HandlePolyData->GetNumberOfVerts(), 4);
  this->Curve->SetNumberOfHandles(4);
  this->ExpectHandles(Square());
  this->Curve->Initialize();
  EXPECT_EQ(this->Curve->GetNumberOfHandles(), 0);
  EXPECT_EQ(this->Curve->HandlePolyData->GetNumberOfPoints(), 4);
  this->Curve->SetNumberOfHandles(-3);
  EXPECT_EQ(this->Curve->GetNumberOfHandles(), 0);
}

TEST_F(SplineWidgetHandles, EachChangeOfTheNumberListsTheHandlesOnceMoreByDesign)
{
  vtkPropCollection* list = this->Curve->HandlePicker->GetPickList();
  const int before = list->GetNumberOfItems();
  this->Curve->SetNumberOfHandles(3);
  this->Curve->SetNumberOfHandles(3);
  this->Curve->SetNumberOfHandles(4);
  EXPECT_EQ(list->GetNumberOfItems(), before + 2);
}

TEST_F(SplineWidgetHandles, AHandleWithoutAPositionHasNoPartInTheCurve)
{
  this->Curve->SetNumberOfHandles(3);
  this->Curve->SetEnabled(1);
  EXPECT_EQ(this->Curve->GetHandlePosition(0), nullptr);
  this->ExpectVtkError("zvSplineWidget", "zvSplineWidget", this->Curve, IndexError);
  EXPECT_EQ(this->Curve->GetParametricSpline()->GetPoints()->GetNumberOfPoints(), 0);
  this->Curve->CalculateCentroid();
  EXPECT_THAT(this->Curve->Centroid, ElementsAre(0.0, 0.0, 0.0));
  this->Curve->EraseHandle(1);
  EXPECT_EQ(this->Curve->GetNumberOfHandles(), 3);
  this->Curve->SetHandlePosition(1, 1.0, 2.0, 3.0);
  EXPECT_EQ(this->Curve->GetParametricSpline()->GetPoints()->GetNumberOfPoints(), 2);
  EXPECT_EQ(this->HandleAt(1), (World{ { 1, 2, 3 } }));
}

TEST_F(SplineWidgetHandles, TheCentroidIsTheMeanOfTheHandles)
{
  this->Curve->InitializeHandles(PointsOf({ { { 1, 2, 3 } }, { { 3, 6, -3 } } }));
  this->Curve->CalculateCentroid();
  EXPECT_THAT(this->Curve->Centroid, ElementsAre(2.0, 4.0, 0.0));
}

TEST_F(SplineWidgetHandles, ErasingLeavesTheOldLastPointDrawnByDesign)
{
  this->Show(Square());
  this->Curve->EraseHandle(1);
  this->ExpectHandles({ { { -6, -6, 0 } }, { { 6, 6, 0 } }, { { -6, 6, 0 } } });
  EXPECT_EQ(this->Curve->HandlePolyData->GetNumberOfPoints(), 4);
  EXPECT_EQ(this->Curve->HandlePolyData->GetNumberOfVerts(), 4);
  World left;
  this->Curve->HandlePolyData->GetPoint(3, left.data());
  EXPECT_EQ(left, (World{ { -6, 6, 0 } }));
}

TEST_F(SplineWidgetHandles, TheLeftOverPointOfAnErasureCanBePickedButNotMoved)
{
  this->Show({ { { -6, -6, 0 } }, { { 0, -6, 0 } }, { { 6, 6, 0 } } });
  this->Curve->SetHandlePosition(2, 6.0, 6.0, 0.0);
  this->Curve->EraseHandle(2);
  this->Scene.Render();
  this->Pointer.Press(zvtest::Left, this->Pointer.At({ { 6, 6, 0 } }));
  EXPECT_EQ(this->Curve->CurrentHandleIndex, 2);
  EXPECT_EQ(this->Curve->GetState(), zvSplineWidget::Moving);
  this->Pointer.MoveTo({ { 200, 200 } });
  this->ExpectGenericWarning("zvSplineWidget", IndexWarning);
  this->ExpectHandles({ { { -6, -6, 0 } }, { { 0, -6, 0 } } });
}

TEST_F(SplineWidgetHandles, ErasingOutOfRangeOrBelowThreeDoesNothing)
{
  this->Show(Square());
  for (int index : { -1, 4, 5 })
  {
    this->Curve->EraseHandle(index);
  }
  this->ExpectHandles(Square());
  this->Curve->InitializeHandles(PointsOf({ { { 1, 0, 0 } }, { { 2, 0, 0 } } }));
  this->Curve->EraseHandle(0);
  EXPECT_EQ(this->Curve->GetNumberOfHandles(), 2);
}

TEST_F(SplineWidgetHandles, InsertingNeedsALineThatWasHitAndTwoHandles)
{
  double position[3] = { 0, 0, 0 };
  this->Show(Square());
  this->Curve->InsertHandleOnLine(position);
  EXPECT_EQ(this->Curve->GetNumberOfHandles(), 4);
  this->Curve->InitializeHandles(PointsOf({ { { 0, 0, 0 } } }));
  this->Scene.Render();
  this->Pointer.MoveTo(this->Pointer.At({ { 0, 0, 0 } }));
  EXPECT_EQ(this->Curve->IsClicked(), 1);
  this->Curve->InsertHandleOnLine(position);
  EXPECT_EQ(this->Curve->GetNumberOfHandles(), 1);
}

TEST_F(SplineWidgetHandles, InsertsInEachSegmentOfAClosedCurve)
{
  for (int segment = 0; segment < 4; ++segment)
  {
    this->Show(Square(), true);
    this->Scene.Render();
    const World clicked = this->OnLine((segment + 0.5) / 4.0);
    this->Pointer.Press(zvtest::Left, this->Pointer.At(clicked));
    this->Pointer.Release(zvtest::Left);
    ASSERT_EQ(this->Curve->GetNumberOfHandles(), 5);
    std::vector<World> expected = Square();
    expected.insert(expected.begin() + segment + 1, clicked);
    this->ExpectHandles(expected, 3.0 * this->PixelSize());
    EXPECT_EQ(this->Curve->HandlePolyData->GetNumberOfVerts(), 5);
  }
}

TEST_F(SplineWidgetHandles, InsertsBySumOfLengthsWhereSpansAreUnequal)
{
  // A span of 1 among spans of 12 and more: a part of the handles would be another span.
  const std::vector<World> handles = { { { -7, -7, 0 } }, { { -6, -7, 0 } }, { { 7, -7, 0 } },
    { { 7, 7, 0 } } };
  for (bool closed : { false, true })
  {
    this->Show(handles, closed);
    this->Scene.Render();
    // Where a span runs, by the sampled points between its handles.
    for (std::size_t span = 0; span < (closed ? 4u : 3u); ++span)
    {
      this->Show(handles, closed);
      this->Scene.Render();
      const World clicked = this->MiddleOfSpan(handles[span], handles[(span + 1) % 4]);
      this->Pointer.Press(zvtest::Left, this->Pointer.At(clicked));
      this->Pointer.Release(zvtest::Left);
      ASSERT_EQ(this->Curve->GetNumberOfHandles(), 5) << span;
      std::vector<World> expected = handles;
      expected.insert(expected.begin() + span + 1, clicked);
      this->ExpectHandles(expected, 3.0 * this->PixelSize());
    }
  }
}

TEST_F(SplineWidgetHandles, SumsTheLengthOfTheLineAsItWasDrawn)
{
  EXPECT_EQ(this->Curve->GetSummedLength(), 0.0);
  this->Show({ { { -3, 0, 0 } }, { { 3, 8, 0 } } });
  EXPECT_NEAR(this->Curve->GetSummedLength(), 10.0, 1e-4);
  this->Curve->SetHandlePosition(1, -3.0, 5.0, 0.0);
  EXPECT_NEAR(this->Curve->GetSummedLength(), 10.0, 1e-4);
  this->Scene.Render();
  EXPECT_NEAR(this->Curve->GetSummedLength(), 5.0, 1e-4);
}

TEST_F(SplineWidgetHandles, GivesACopyOfTheLineAsItWasDrawn)
{
  vtkNew<vtkPolyData> line;
  this->Curve->GetPolyData(line);
  EXPECT_EQ(line->GetNumberOfPoints(), 0);
  this->Show(Square());
  this->Curve->GetPolyData(line);
  EXPECT_EQ(line->GetNumberOfPoints(), 501);
  EXPECT_EQ(line->GetNumberOfLines(), 1);
  this->Curve->GetPolyData(nullptr);
}

// ---- Closure

TEST_F(SplineWidgetHandles, IsClosedTellsOfTheLineThatWasDrawn)
{
  this->Curve->InitializeHandles(PointsOf(Square()));
  this->Curve->ClosedOn();
  EXPECT_EQ(this->Curve->IsClosed(), 0);
  this->ExpectVtkError(
    "zvSplineWidget", "zvSplineWidget", this->Curve, "No line data to query geometric closure");
  this->Curve->SetEnabled(1);
  EXPECT_EQ(this->Curve->IsClosed(), 1);
  this->Curve->ClosedOff();
  EXPECT_EQ(this->Curve->IsClosed(), 0);
}

TEST_F(SplineWidgetHandles, AnOpenCurveIsNotClosedEvenIfItsEndsMeet)
{
  this->Show(std::vector<World>(3, { { 1, 2, 0 } }));
  EXPECT_EQ(this->OnLine(0.0), this->OnLine(1.0));
  EXPECT_EQ(this->Curve->IsClosed(), 0);
  this->Curve->ClosedOn();
  EXPECT_EQ(this->Curve->IsClosed(), 1);
}

TEST_F(SplineWidgetHandles, OneHandleIsNotClosed)
{
  this->Show({ { { 1, 1, 0 } } }, true);
  EXPECT_EQ(this->Curve->IsClosed(), 0);
}

// ---- Motions

TEST_F(SplineWidgetHandles, MovePointMovesTheCurrentHandle)
{
  this->Show(Square());
  double from[3] = { 1, 1, 1 };
  double to[3] = { 2, 0, 4 };
  this->Curve->CurrentHandleIndex = 2;
  this->Curve->MovePoint(from, to);
  std::vector<World> expected = Square();
  expected[2] = { { 7, 5, 3 } };
  this->ExpectHandles(expected);
  for (int index : { -1, 4 })
  {
    this->Curve->CurrentHandleIndex = index;
    this->Curve->MovePoint(from, to);
    this->ExpectGenericWarning("zvSplineWidget", IndexWarning);
  }
  this->ExpectHandles(expected);
}

TEST_F(SplineWidgetHandles, TranslateMovesAllHandles)
{
  this->Show(Square());
  double from[3] = { 1, 1, 1 };
  double to[3] = { 2, 0, 4 };
  this->Curve->Translate(from, to);
  this->ExpectHandles({ { { -5, -7, 3 } }, { { 7, -7, 3 } }, { { 7, 5, 3 } }, { { -5, 5, 3 } } });
}

TEST_F(SplineWidgetHandles, ScaleShrinksOnAMotionDownOrAcrossAndGrowsOnOneUp)
{
  // Length 36 over 4 handles is 9; a motion of 3 is a third.
  double from[3] = { 0, 0, 0 };
  double to[3] = { 0, 3, 0 };
  this->Scene.Interactor()->SetEventPosition(100, 100);
  this->Scene.Interactor()->SetEventPosition(100, 100); // the last position, too
  struct Row
  {
    int Y;
    double Corner;
  };
  for (const Row& row : { Row{ 101, 8.0 }, Row{ 100, 4.0 }, Row{ 99, 4.0 } })
  {
    this->Curve->InitializeHandles(PointsOf(Square()));
    this->Curve->Scale(from, to, 0, row.Y);
    this->ExpectHandles({ { { -row.Corner, -row.Corner, 0 } }, { { row.Corner, -row.Corner, 0 } },
      { { row.Corner, row.Corner, 0 } }, { { -row.Corner, row.Corner, 0 } } });
  }
  vtkNew<zvSplineWidget> lonely;
  lonely->Scale(from, to, 0, 0);
}

TEST_F(SplineWidgetHandles, SpinTurnsAboutTheCentroidThatWasLastCalculated)
{
  // A quarter turn: the motion is a quarter of the radius 4.
  double from[3] = { 4, -1, 0 };
  double to[3] = { 4, 0, 0 };
  double normal[3] = { 0, 0, 1 };
  this->Curve->SetProjectionNormal(2);
  this->Curve->SetProjectToPlane(1);
  this->Curve->InitializeHandles(PointsOf({ { { 3, 0, 0 } }, { { 5, 0, 0 } } }));
  this->Curve->Spin(from, to, normal);
  this->ExpectHandles({ { { 0, 3, 0 } }, { { 0, 5, 0 } } });
  this->Curve->CalculateCentroid(); // (0, 4, 0)
  double beside[3] = { 4, 4, 0 };
  double below[3] = { 4, 3, 0 };
  this->Curve->Spin(below, beside, normal);
  this->ExpectHandles({ { { 1, 4, 0 } }, { { -1, 4, 0 } } });
}

TEST_F(SplineWidgetHandles, AFreeSpinTurnsAcrossTheView)
{
  // The axis is the view's normal (z) crossed with the motion (x): y.
  double from[3] = { -1, 0, 4 };
  double to[3] = { 0, 0, 4 };
  double normal[3] = { 0, 0, 1 };
  this->Curve->InitializeHandles(PointsOf({ { { 0, 0, 2 } }, { { 1, 5, 0 } } }));
  this->Curve->Spin(from, to, normal);
  this->ExpectHandles({ { { 2, 0, 0 } }, { { 0, 5, -1 } } });
  this->Curve->Spin(from, from, normal);
  this->ExpectHandles({ { { 2, 0, 0 } }, { { 0, 5, -1 } } });
}

TEST_F(SplineWidgetHandles, SpinOnAnObliquePlaneTurnsAboutItsNormal)
{
  double from[3] = { 4, -1, 0 };
  double to[3] = { 4, 0, 0 };
  double viewNormal[3] = { 1, 0, 0 };
  this->Curve->InitializeHandles(PointsOf({ { { 2, 0, 7 } } }));
  this->Curve->SetProjectionNormal(3);
  this->Curve->SetProjectToPlane(1);
  this->Curve->Spin(from, to, viewNormal); // no plane: harmless
  this->ExpectHandles({ { { 2, 0, 7 } } });
  vtkNew<vtkPlaneSource> plane;
  this->Curve->SetPlaneSource(plane); // in x and y
  this->Curve->Spin(from, to, viewNormal);
  this->ExpectHandles({ { { 0, 2, 7 } } });
}

TEST_F(SplineWidgetHandles, MotionsDoNotProjectByThemselves)
{
  double from[3] = { 0, 0, 0 };
  double to[3] = { 0, 0, 3 };
  double normal[3] = { 0, 1, 0 };
  this->Show(Square());
  this->Curve->SetProjectionNormal(2);
  this->Curve->ProjectToPlaneOn();
  this->Curve->Translate(from, to);
  this->ExpectHandles({ { { -6, -6, 3 } }, { { 6, -6, 3 } }, { { 6, 6, 3 } }, { { -6, 6, 3 } } });
  this->Curve->CurrentHandleIndex = 1;
  this->Curve->MovePoint(from, to);
  EXPECT_EQ(this->HandleAt(1)[2], 6.0);
  this->Curve->Scale(from, to, 0, 0);
  this->Curve->SetProjectionNormal(0);
  this->Curve->Spin(from, to, normal);
  EXPECT_NE(this->HandleAt(0)[0], 0.0);
  this->Curve->SetHandlePosition(0, 5.0, 1.0, 2.0); // this does, for all
  for (int i = 0; i < 4; ++i)
  {
    EXPECT_EQ(this->HandleAt(i)[0], 0.0);
  }
}
