// The user's hand on the 3D ruler, in four windows, and what is seen there.
#include "zv3DRulerFixture.h"

#include "vtkNew.h"

#include <gmock/gmock.h>

#include <cmath>
#include <cstdlib>

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using zvtest::Display;
using zvtest::ThreeD;
using zvtest::World;
using zvtest::X;
using zvtest::Y;
using zvtest::Z;

namespace
{
const zvtest::Color Black{ 0, 0, 0 };
const zvtest::Color Red{ 255, 0, 0 };
const zvtest::Color Cyan{ 0, 255, 255 };
const zvtest::Color Yellow{ 255, 255, 0 };
const zvtest::Color Green{ 0, 255, 51 };

// Three points in the image, enabled.
class Ruler3DMouse : public zvtest::Ruler3D
{
protected:
  explicit Ruler3DMouse(int size = 200)
    : Ruler3D(size)
  {
    this->Start();
  }

  void Start()
  {
    this->Widget->SetEnabled(1);
    this->Add({ { -6, -4, -5 } });
    this->Add({ { 0, 5, 1 } });
    this->Add({ { 5, 0, 6 } });
  }

  /// Make a view the current one, with its observers.
  void ComeInto(zvtest::View view)
  {
    this->Widget->SetEnabled(0);
    this->Widget->SetCurrentRender(this->Renderer(view));
    this->Widget->SetEnabled(1);
  }

  World MiddleOf(int segment)
  {
    World middle;
    for (int axis = 0; axis < 3; ++axis)
    {
      middle[axis] = (this->PositionOf(segment)[axis] + this->PositionOf(segment + 1)[axis]) / 2;
    }
    return middle;
  }

  Display AtPoint(zvtest::View view, int point)
  {
    return this->In(view).At(this->PositionOf(point));
  }
  Display AtSegment(zvtest::View view, int segment)
  {
    return this->In(view).At(this->MiddleOf(segment));
  }

  void ExpectNear(const World& actual, const World& expected, double tolerance)
  {
    for (int axis = 0; axis < 3; ++axis)
    {
      EXPECT_NEAR(actual[axis], expected[axis], tolerance) << axis;
    }
  }

  bool Shows(zvtest::View view, const Display& at, const zvtest::Color& color)
  {
    return this->In(view).Look().HasNear(color, at, 2, 60);
  }

  static constexpr Display Beside{ { 3, 3 } };
};

constexpr Display Ruler3DMouse::Beside;
}

// ---- The left button

TEST_F(Ruler3DMouse, APressOnAPointTakesItInEveryView)
{
  for (zvtest::View view : zvtest::AllViews)
  {
    this->ComeInto(view);
    for (int point : { 1, 2 })
    {
      zvtest::EventRecorder recorder;
      this->Record(recorder);
      zvtest::Mouse mouse = this->PointerIn(view);
      mouse.Press(zvtest::Left, this->AtPoint(view, point));
      EXPECT_EQ(this->Widget->GetState(), zv3DRulerWidget::Moving);
      EXPECT_EQ(this->Widget->CurrentPoint, point);
      EXPECT_EQ(this->Widget->CurrentLine, point - 1);
      EXPECT_EQ(this->Widget->CurrentHandle, this->PointActor(point));
      EXPECT_EQ(this->Looks(), point == 1 ? "o=*-o" : "o-o=*");
      EXPECT_THAT(
        this->NamesOf(recorder), ElementsAre("StartInteractionEvent", "X", "Y", "Z", "3"));
      EXPECT_FALSE(recorder.Events().front().HasData);
      recorder.Clear();
      mouse.Release(zvtest::Left);
      EXPECT_EQ(this->Widget->GetState(), zv3DRulerWidget::Start);
      EXPECT_THAT(this->NamesOf(recorder), ElementsAre("EndInteractionEvent", "X", "Y", "Z", "3"));
      EXPECT_FALSE(recorder.Events().front().HasData);
    }
  }
}

TEST_F(Ruler3DMouse, APressOnPointZeroShowsSegmentZeroWithoutSelectingItByDesign)
{
  this->PointerIn(Z).Press(zvtest::Left, this->AtPoint(Z, 0));
  EXPECT_EQ(this->Widget->CurrentPoint, 0);
  EXPECT_EQ(this->Widget->CurrentLine, -1);
  EXPECT_EQ(this->Looks(), "*=o-o");
  EXPECT_EQ(this->Label(), "     12.37 mm");
  this->ExpectLabelAt({ { 0, 5, 1 } });
}

TEST_F(Ruler3DMouse, APressOnASegmentSelectsItAndTheMouseThenMovesNothing)
{
  for (zvtest::View view : zvtest::AllViews)
  {
    this->ComeInto(view);
    const std::string before = this->Widget->GetStringCoordinate();
    zvtest::EventRecorder recorder;
    this->Record(recorder);
    zvtest::Mouse mouse = this->PointerIn(view);
    mouse.Press(zvtest::Left, this->AtSegment(view, 0));
    EXPECT_EQ(this->Widget->GetState(), zv3DRulerWidget::Start);
    EXPECT_EQ(this->Widget->CurrentLine, 0);
    EXPECT_EQ(this->Widget->CurrentPoint, 2);
    EXPECT_EQ(this->Widget->CurrentHandle, this->SegmentActor(0));
    EXPECT_EQ(this->Looks()[1], '=');
    EXPECT_THAT(this->NamesOf(recorder), ElementsAre("StartInteractionEvent", "X", "Y", "Z", "3"));
    recorder.Clear();
    mouse.MoveTo({ { 30, 30 } });
    mouse.Release(zvtest::Left);
    EXPECT_THAT(this->NamesOf(recorder), ElementsAre("MouseMoveEvent", "LeftButtonReleaseEvent"));
    EXPECT_EQ(this->Widget->GetStringCoordinate(), before);
  }
}

TEST_F(Ruler3DMouse, APressOnASegmentLeavesTheStateOfAMiss)
{
  zvtest::Mouse mouse = this->PointerIn(Z);
  mouse.Press(zvtest::Left, Beside);
  mouse.Press(zvtest::Left, this->AtSegment(Z, 1));
  EXPECT_EQ(this->Widget->GetState(), zv3DRulerWidget::Outside);
  EXPECT_EQ(this->Widget->CurrentLine, 1);
  EXPECT_EQ(this->Widget->CurrentPoint, -1);
}

TEST_F(Ruler3DMouse, AMissClearsBothSelections)
{
  zvtest::EventRecorder recorder;
  this->Record(recorder);
  zvtest::Mouse mouse = this->PointerIn(Z);
  mouse.Press(zvtest::Left, Beside);
  EXPECT_EQ(this->Widget->GetState(), zv3DRulerWidget::Outside);
  EXPECT_EQ(this->Widget->CurrentPoint, -1);
  EXPECT_EQ(this->Widget->CurrentLine, -1);
  EXPECT_EQ(this->Widget->CurrentHandle, nullptr);
  EXPECT_EQ(this->Looks(), "o-o-o");
  EXPECT_EQ(this->WhereIs(this->Widget->TextActor), "XYZ3");
  mouse.MoveTo(this->AtPoint(Z, 1));
  mouse.Release(zvtest::Left);
  EXPECT_EQ(this->Widget->GetState(), zv3DRulerWidget::Outside);
  // Nothing is told or rendered, and others see all of it.
  EXPECT_THAT(recorder.Names(),
    ElementsAre("LeftButtonPressEvent", "MouseMoveEvent", "LeftButtonReleaseEvent"));
}

TEST_F(Ruler3DMouse, APressOutsideTheViewportLeavesTheSelection)
{
  zvtest::SceneOptions options;
  options.Viewports = 2;
  zvtest::Scene scene(options);
  const double bounds[6] = { -12, 12, -12, 12, -12, 12 };
  scene.LookAlong(2, 0);
  scene.ResetCamera(bounds, 0);
  scene.Render();
  this->Widget->SetEnabled(0);
  this->Widget->SetRendererZ(scene.Renderer(0));
  this->Widget->SetCurrentRender(scene.Renderer(0));
  this->Widget->SetEnabled(1);
  zvtest::Mouse mouse(scene);
  for (zvtest::Button button : { zvtest::Left, zvtest::Middle })
  {
    mouse.Press(zvtest::Left, scene.At({ { 0, 5, 1 } }));
    EXPECT_EQ(this->Widget->GetState(), zv3DRulerWidget::Moving);
    mouse.Press(button, { { 300, 200 } });
    EXPECT_EQ(this->Widget->GetState(), zv3DRulerWidget::Outside);
    EXPECT_EQ(this->Widget->CurrentPoint, 1);
    EXPECT_EQ(this->Looks(), "o=*-o");
  }
  this->Widget->SetEnabled(0);
}

TEST_F(Ruler3DMouse, APressWithoutACurrentViewIsOutside)
{
  this->Widget->SetCurrentRenderer(nullptr);
  for (zvtest::Button button : { zvtest::Left, zvtest::Middle })
  {
    this->Widget->SetState(zv3DRulerWidget::Start);
    this->PointerIn(Z).Press(button, this->AtPoint(Z, 1));
    EXPECT_EQ(this->Widget->GetState(), zv3DRulerWidget::Outside);
    EXPECT_EQ(this->Looks(), "o-o=*");
  }
}

TEST_F(Ruler3DMouse, APointWinsOverItsSegments)
{
  this->PointerIn(Z).Press(zvtest::Left, this->AtPoint(Z, 1));
  EXPECT_EQ(this->Widget->GetState(), zv3DRulerWidget::Moving);
}

// ---- Dragging

namespace
{
// What a view cannot change, and drags past each of its edges.
struct DragRow
{
  const char* Name;
  zvtest::View View;
  World To;
  World End; // from (0, 5, 1) in a box from -10 to 10
};
void PrintTo(const DragRow& row, std::ostream* os)
{
  *os << row.Name;
}
const DragRow DragRows[] = { { "InX", X, { { 0, -3, -4 } }, { { 0, -3, -4 } } },
  { "InY", Y, { { -3, 5, -4 } }, { { -3, 5, -4 } } },
  { "InZ", Z, { { -3, -4, 1 } }, { { -3, -4, 1 } } },
  { "InXPastUpperY", X, { { 0, 14, -4 } }, { { 0, 10, -4 } } },
  { "InXPastLowerZ", X, { { 0, 3, -14 } }, { { 0, 3, -10 } } },
  { "InYPastLowerX", Y, { { -14, 5, -4 } }, { { -10, 5, -4 } } },
  { "InYPastUpperZ", Y, { { 3, 5, 14 } }, { { 3, 5, 10 } } },
  { "InZPastUpperX", Z, { { 14, -4, 1 } }, { { 10, -4, 1 } } },
  { "InZPastLowerY", Z, { { 3, -14, 1 } }, { { 3, -10, 1 } } } };

class Ruler3DDragged
  : public Ruler3DMouse
  , public ::testing::WithParamInterface<DragRow>
{
};
}

TEST_P(Ruler3DDragged, StaysWithThePointerAndInTheImage)
{
  const DragRow& row = this->GetParam();
  this->ComeInto(row.View);
  this->PointerIn(row.View).Drag(
    zvtest::Left, this->AtPoint(row.View, 1), this->In(row.View).At(row.To), zvtest::NoModifier, 4);
  this->ExpectNear(this->PositionOf(1), row.End, 0.25); // two pixels are so much
  for (int axis = 0; axis < 3; ++axis)
  {
    if (std::abs(row.End[axis]) == 10 || axis == row.View)
    {
      EXPECT_EQ(this->PositionOf(1)[axis], row.End[axis]) << axis;
    }
  }
  this->ExpectChain(3);
  this->ExpectLabelAt(this->PositionOf(1));
  EXPECT_EQ(this->PositionOf(0), (World{ { -6, -4, -5 } }));
  EXPECT_EQ(this->PositionOf(2), (World{ { 5, 0, 6 } }));
}

INSTANTIATE_TEST_SUITE_P(Views, Ruler3DDragged, ::testing::ValuesIn(DragRows),
  [](const auto& row) { return row.param.Name; });

TEST_F(Ruler3DMouse, ADragInThe3DViewFollowsThePointer)
{
  this->ComeInto(ThreeD);
  const Display from = this->AtPoint(ThreeD, 1);
  const Display to = { { from[0] + 20, from[1] - 10 } };
  this->PointerIn(ThreeD).Drag(zvtest::Left, from, to, zvtest::NoModifier, 3);
  EXPECT_NEAR(this->AtPoint(ThreeD, 1)[0], to[0], 1);
  EXPECT_NEAR(this->AtPoint(ThreeD, 1)[1], to[1], 1);
  this->ExpectChain(3);
}

TEST_F(Ruler3DMouse, EachMoveOfADragTellsAndRenders)
{
  zvtest::Mouse mouse = this->PointerIn(Z);
  mouse.Press(zvtest::Left, this->AtPoint(Z, 1));
  zvtest::EventRecorder recorder;
  this->Record(recorder);
  for (int y : { 120, 110 })
  {
    recorder.Clear();
    mouse.MoveTo({ { 90, y } });
    EXPECT_THAT(this->NamesOf(recorder), ElementsAre("InteractionEvent", "X", "Y", "Z", "3"));
    EXPECT_FALSE(recorder.Events().front().HasData);
  }
}

TEST_F(Ruler3DMouse, TheReleaseSizesTheSpheresAndKeepsTheSelection)
{
  for (zvtest::Button button : { zvtest::Left, zvtest::Middle })
  {
    zvtest::Mouse mouse = this->PointerIn(Z);
    mouse.Press(zvtest::Left, this->AtPoint(Z, 1));
    this->Sphere(2)->SetRadius(5);
    zvtest::EventRecorder recorder;
    this->Record(recorder);
    mouse.Release(button);
    EXPECT_EQ(this->Widget->GetState(), zv3DRulerWidget::Start);
    EXPECT_THAT(this->NamesOf(recorder), ElementsAre("EndInteractionEvent", "X", "Y", "Z", "3"));
    EXPECT_LT(this->Sphere(2)->GetRadius(), 1);
    EXPECT_EQ(this->Looks(), "o=*-o");
    recorder.Clear();
    mouse.Release(button); // nothing is dragged any more
    EXPECT_EQ(recorder.Count(vtkCommand::EndInteractionEvent), 0);
  }
}

TEST_F(Ruler3DMouse, AStateOfTheHostsOwnTellsOfADragThatMovesNothing)
{
  this->Widget->SetState(7);
  const std::string before = this->Widget->GetStringCoordinate();
  zvtest::EventRecorder recorder;
  this->Record(recorder);
  zvtest::Mouse mouse = this->PointerIn(Z);
  mouse.MoveTo({ { 90, 120 } });
  EXPECT_THAT(this->NamesOf(recorder), ElementsAre("InteractionEvent", "X", "Y", "Z", "3"));
  EXPECT_EQ(this->Widget->GetStringCoordinate(), before);
  mouse.Release(zvtest::Left);
  EXPECT_EQ(this->Widget->GetState(), zv3DRulerWidget::Start);
}

TEST_F(Ruler3DMouse, ADragWhosePointWasRemovedOnlySaysSo)
{
  zvtest::Mouse mouse = this->PointerIn(Z);
  mouse.Press(zvtest::Left, this->AtPoint(Z, 2));
  this->Widget->RemovePointSelected(); // selects segment 0
  mouse.MoveTo({ { 90, 120 } });
  this->ExpectGenericWarning("zv3DRulerWidget", "there is no point of index 2...");
  mouse.Release(zvtest::Left);
  this->ExpectChain(2);
}

TEST_F(Ruler3DMouse, AMoveAsksForTheProjectionIfThatIsOn)
{
  zvtest::Mouse mouse = this->PointerIn(Z);
  this->Widget->ProjectToPlaneOn();
  this->Widget->SetState(7);
  this->Widget->DebugMode = true;
  mouse.MoveTo({ { 90, 120 } });
  this->Widget->DebugMode = false;
  this->ExpectTraces("zv3DRulerWidget", this->Widget,
    { "zv3DRulerWidget::ProjectPointsToPlane()", "zv3DRulerWidget::ProjectPointsToOrthoPlane()" });
}

// ---- The middle button

TEST_F(Ruler3DMouse, AMiddleDragMovesTheSelectedPointFromAnywhere)
{
  const Display before = this->AtPoint(Z, 2);
  zvtest::EventRecorder recorder;
  this->Record(recorder);
  zvtest::Mouse mouse = this->PointerIn(Z);
  mouse.Press(zvtest::Middle, { { 50, 150 } });
  EXPECT_EQ(this->Widget->GetState(), zv3DRulerWidget::Moving);
  EXPECT_EQ(this->Looks(), "o-o=*");
  EXPECT_THAT(this->NamesOf(recorder), ElementsAre("StartInteractionEvent", "X", "Y", "Z", "3"));
  recorder.Clear();
  mouse.MoveTo({ { 40, 160 } });
  EXPECT_THAT(this->NamesOf(recorder), ElementsAre("InteractionEvent", "X", "Y", "Z", "3"));
  EXPECT_NEAR(this->AtPoint(Z, 2)[0], before[0] - 10, 1);
  EXPECT_NEAR(this->AtPoint(Z, 2)[1], before[1] + 10, 1);
  recorder.Clear();
  mouse.Release(zvtest::Middle);
  EXPECT_THAT(this->NamesOf(recorder), ElementsAre("EndInteractionEvent", "X", "Y", "Z", "3"));
  this->ExpectChain(3);
}

TEST_F(Ruler3DMouse, AMiddlePressOnAnotherPointDoesNotSelectItByDesign)
{
  zvtest::Mouse mouse = this->PointerIn(Z);
  mouse.Drag(zvtest::Middle, this->AtPoint(Z, 0), { { 60, 60 } });
  EXPECT_EQ(this->Widget->CurrentPoint, 2);
  EXPECT_EQ(this->PositionOf(0), (World{ { -6, -4, -5 } }));
  EXPECT_NE(this->PositionOf(2), (World{ { 5, 0, 6 } }));
}

TEST_F(Ruler3DMouse, WithTheControlKeyAMiddlePressStartsNoDrag)
{
  zvtest::EventRecorder recorder;
  this->Record(recorder);
  zvtest::Mouse mouse = this->PointerIn(Z);
  mouse.Press(zvtest::Middle, { { 50, 150 } }, zvtest::Control);
  EXPECT_EQ(this->Widget->GetState(), zv3DRulerWidget::Start);
  EXPECT_THAT(this->NamesOf(recorder), ElementsAre("StartInteractionEvent", "X", "Y", "Z", "3"));
  mouse.MoveTo({ { 60, 60 } }, zvtest::Control);
  EXPECT_EQ(this->PositionOf(2), (World{ { 5, 0, 6 } }));
  this->Widget->SetState(7); // any state stays
  mouse.Press(zvtest::Middle, { { 50, 150 } }, zvtest::Control);
  EXPECT_EQ(this->Widget->GetState(), 7);
}

TEST_F(Ruler3DMouse, AMiddleDragWithoutASelectionMovesNothing)
{
  zvtest::Mouse mouse = this->PointerIn(Z);
  mouse.Press(zvtest::Left, Beside);
  const std::string before = this->Widget->GetStringCoordinate();
  mouse.Drag(zvtest::Middle, { { 50, 150 } }, { { 60, 60 } });
  EXPECT_EQ(this->Widget->GetStringCoordinate(), before);
  this->ExpectNoMessage();
  mouse.Press(zvtest::Left, this->AtSegment(Z, 0)); // a segment, and still no point
  mouse.Drag(zvtest::Middle, { { 50, 150 } }, { { 60, 60 } });
  this->ExpectGenericWarning("zv3DRulerWidget", "there is no point of index -1...");
  EXPECT_EQ(this->Widget->GetStringCoordinate(), before);
}

// ---- The right button and the wheel

TEST_F(Ruler3DMouse, TheRightPressIsTheHosts)
{
  zvtest::EventRecorder recorder;
  this->Record(recorder);
  this->PointerIn(Z).Press(zvtest::Right, this->AtPoint(Z, 1));
  EXPECT_THAT(recorder.Names(), ElementsAre("RightButtonPressEvent"));
  EXPECT_EQ(this->Looks(), "o-o=*");
}

TEST_F(Ruler3DMouse, RightReleaseAndWheelSizeAndRenderWithoutAbort)
{
  const std::vector<std::pair<unsigned long, std::string>> rows = {
    { vtkCommand::RightButtonReleaseEvent, "RightButtonReleaseEvent" },
    { vtkCommand::MouseWheelForwardEvent, "MouseWheelForwardEvent" },
    { vtkCommand::MouseWheelBackwardEvent, "MouseWheelBackwardEvent" }
  };
  for (const auto& row : rows)
  {
    this->Sphere(1)->SetRadius(5);
    const double labelSize = this->Widget->TextActor->GetScale()[0];
    zvtest::EventRecorder recorder;
    this->Record(recorder);
    this->Interactor(X)->InvokeEvent(row.first, nullptr);
    EXPECT_THAT(this->NamesOf(recorder), ElementsAre("X", "Y", "Z", "3", row.second));
    EXPECT_LT(this->Sphere(1)->GetRadius(), 1);
    EXPECT_EQ(this->Widget->TextActor->GetScale()[0], labelSize);
  }
}

// ---- Asking

TEST_F(Ruler3DMouse, TellsPointsAndSegmentsUnderThePointer)
{
  struct Row
  {
    Display At;
    int IsClicked;
    int IsLine;
  };
  for (zvtest::View view : zvtest::AllViews)
  {
    this->ComeInto(view);
    const Row rows[] = { { this->AtPoint(view, 1), 1, 1 }, { this->AtSegment(view, 1), 0, 1 },
      { Beside, 0, 0 } };
    for (const Row& row : rows)
    {
      this->PointerIn(view).MoveTo(row.At);
      EXPECT_EQ(this->Widget->IsClicked(), row.IsClicked) << view;
      EXPECT_EQ(this->Widget->IsLine(), row.IsLine) << view;
    }
  }
  EXPECT_EQ(this->Widget->CurrentPoint, 2);
  EXPECT_EQ(this->Widget->CurrentLine, 1);
}

TEST_F(Ruler3DMouse, TellsNothingAsLongAsNothingWasSelected)
{
  this->PointerIn(Z).MoveTo(this->AtPoint(Z, 1));
  this->Widget->CurrentPoint = -1;
  EXPECT_EQ(this->Widget->IsClicked(), 0);
  EXPECT_EQ(this->Widget->IsLine(), 1);
  this->Widget->CurrentLine = -1;
  EXPECT_EQ(this->Widget->IsLine(), 0);
}

TEST_F(Ruler3DMouse, WhatWasRemovedOrHiddenIsNotHit)
{
  this->PointerIn(Z).MoveTo(this->AtPoint(Z, 2));
  EXPECT_EQ(this->Widget->IsClicked(), 1);
  this->Widget->RemovePointSelected();
  EXPECT_EQ(this->Widget->IsClicked(), 0);
  EXPECT_EQ(this->Widget->IsLine(), 0);
  this->PointerIn(Z).MoveTo(this->AtPoint(Z, 1));
  EXPECT_EQ(this->Widget->IsClicked(), 1);
  this->Widget->SetEnabled(0);
  EXPECT_EQ(this->Widget->IsClicked(), 0);
  EXPECT_EQ(this->Widget->IsLine(), 0);
}

// ---- What is seen

TEST_F(Ruler3DMouse, EveryViewShowsTheChainInItsColoursAndFollows)
{
  for (zvtest::View view : zvtest::AllViews)
  {
    EXPECT_TRUE(this->Shows(view, this->AtPoint(view, 0), Red)) << view;
    EXPECT_TRUE(this->Shows(view, this->AtPoint(view, 1), Red)) << view;
    EXPECT_TRUE(this->Shows(view, this->AtPoint(view, 2), Cyan)) << view;
    EXPECT_TRUE(this->Shows(view, this->AtSegment(view, 0), Yellow)) << view;
    EXPECT_TRUE(this->Shows(view, this->AtSegment(view, 1), Green)) << view;
  }
  zvtest::Mouse mouse = this->PointerIn(Z);
  mouse.Press(zvtest::Left, this->AtPoint(Z, 1));
  mouse.MoveTo(this->In(Z).At({ { -5, 2, 1 } }));
  for (zvtest::View view : zvtest::AllViews)
  {
    EXPECT_TRUE(this->Shows(view, this->AtPoint(view, 1), Cyan)) << view;
    EXPECT_TRUE(this->Shows(view, this->AtPoint(view, 2), Red)) << view;
    EXPECT_TRUE(this->Shows(view, this->AtSegment(view, 0), Green)) << view;
    EXPECT_TRUE(this->Shows(view, this->AtSegment(view, 1), Yellow)) << view;
  }
}

TEST_F(Ruler3DMouse, TheLabelIsSeenInTheCurrentViewBesideItsPoint)
{
  this->ComeInto(Z);
  this->Widget->SetCurrentActorIndex(1);
  const Display at = this->AtPoint(Z, 1);
  // Its letters begin behind the blanks that pad the number.
  const zvtest::Region right = { { { at[0] + 5, at[1] - 2 } }, { { at[0] + 60, at[1] + 8 } } };
  const int seen = this->In(Z).Look().Count(Red, right, 80);
  EXPECT_GT(seen, 5);
  this->Widget->SetTextToActorPosition(99); // takes it out
  this->In(Z).Render();
  EXPECT_EQ(this->In(Z).Look().Count(Red, right, 80), 0);
}

TEST_F(Ruler3DMouse, NothingIsSeenOfAClearedOrHiddenRuler)
{
  const auto countSeen = [this]()
  {
    std::vector<int> seen;
    for (zvtest::View view : zvtest::AllViews)
    {
      seen.push_back(this->In(view).Look().CountOther(Black, { { { 0, 0 } }, { { 199, 199 } } }));
    }
    return seen;
  };
  this->Widget->SetEnabled(0);
  EXPECT_THAT(countSeen(), ElementsAre(0, 0, 0, 0));
  this->Widget->SetEnabled(1);
  for (int seen : countSeen())
  {
    EXPECT_GT(seen, 50);
  }
  this->Widget->Clear();
  EXPECT_THAT(countSeen(), ElementsAre(0, 0, 0, 0));
}
