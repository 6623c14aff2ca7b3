// The handles of the spline widget: giving, inserting and erasing them, and the motions.
#include "zvSplineWidget.h"

#include "zvCurveFixture.h"
#include "zvParametricSpline.h"

#include "vtkMath.h"
#include "vtkPropCollection.h"

#include <gmock/gmock.h>

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
}

// ---- Handles

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
