#include "zv3DTreeFixture.h"

#include "vtkPoints.h"

#include <gmock/gmock.h>

#include <functional>

using ::testing::IsEmpty;
using zvtest::ThreeD;
using zvtest::View;
using zvtest::World;
using zvtest::X;
using zvtest::Y;
using zvtest::Z;

namespace
{
using TreeMouse = zvtest::TreeInFourViews;

const std::vector<std::string> FourRenders{ "X", "Y", "Z", "3" };

std::vector<std::string> Then(std::vector<std::string> first, const std::vector<std::string>& more)
{
  first.insert(first.end(), more.begin(), more.end());
  return first;
}
}

// ---- Presses

TEST_F(TreeMouse, APressSelectsAPointInEveryView)
{
  this->ShowSquare();
  for (View view : zvtest::AllViews)
  {
    this->Tree->SetEnabled(0);
    this->Tree->SetCurrentRender(this->Renderer(view));
    this->Tree->SetEnabled(1);
    zvtest::Mouse mouse = this->PointerIn(view);
    for (int id = 1; id < 4; ++id)
    {
      zvtest::EventRecorder recorder;
      this->Watch(recorder);
      mouse.Press(zvtest::Left, this->OnPoint(view, id));
      EXPECT_EQ(this->Tree->State, zv3DTreeWidget::Moving);
      EXPECT_EQ(this->Tree->CurrentPoint, id);
      EXPECT_EQ(this->Tree->CurrentLine, id - 1);
      EXPECT_EQ(this->Sphere(), Corners[id]);
      // the label's render comes first
      EXPECT_EQ(
        this->NamesOf(recorder), Then(Then(FourRenders, { "StartInteractionEvent" }), FourRenders));
      EXPECT_FALSE(recorder.Events()[4].HasData);
      recorder.Clear();
      mouse.Release(zvtest::Left);
      EXPECT_EQ(this->Tree->State, zv3DTreeWidget::Start);
      EXPECT_EQ(this->NamesOf(recorder), Then({ "EndInteractionEvent" }, FourRenders));
      EXPECT_FALSE(recorder.Events()[0].HasData);
    }
  }
}

TEST_F(TreeMouse, APressSelectsASegmentInEveryView)
{
  this->ShowSquare();
  for (View view : zvtest::AllViews)
  {
    this->Tree->SetEnabled(0);
    this->Tree->SetCurrentRender(this->Renderer(view));
    this->Tree->SetEnabled(1);
    zvtest::Mouse mouse = this->PointerIn(view);
    for (int id = 0; id < 3; ++id)
    {
      mouse.Press(zvtest::Left, this->OnSegment(view, id));
      EXPECT_EQ(this->Tree->State, zv3DTreeWidget::MovingLine) << id << view;
      EXPECT_EQ(this->Tree->CurrentLine, id);
      EXPECT_EQ(this->Tree->CurrentPoint, id + 1);
      EXPECT_EQ(this->LineStart(), Corners[Parents[id + 1]]);
      EXPECT_EQ(this->LineEnd(), Corners[id + 1]);
      mouse.Release(zvtest::Left);
      EXPECT_EQ(this->Tree->State, zv3DTreeWidget::Start);
    }
  }
}

TEST_F(TreeMouse, APointWinsOverASegment)
{
  this->ShowSquare();
  zvtest::Mouse mouse = this->PointerIn(Z);
  // on the segment, still within the tolerance of its end
  zvtest::Display on = this->OnPoint(Z, 2);
  on[1] -= 2;
  mouse.Press(zvtest::Left, on);
  EXPECT_EQ(this->Tree->State, zv3DTreeWidget::Moving);
  EXPECT_EQ(this->Tree->CurrentPoint, 2);
}

TEST_F(TreeMouse, APressRemembersTheDepthOfWhatWasHit)
{
  this->ShowSquare();
  zvtest::Mouse mouse = this->PointerIn(Z);
  mouse.Press(zvtest::Left, this->OnPoint(Z, 3));
  EXPECT_NEAR(this->Tree->LastPickPosition[2], 7.0, 0.01);
  mouse.Release(zvtest::Left);
  mouse.Press(zvtest::Left, this->OnSegment(Z, 0));
  EXPECT_NEAR(this->Tree->LastPickPosition[2], -2.0, 0.2);
}

TEST_F(TreeMouse, APressOnNothingKeepsTheSelection)
{
  this->ShowSquare();
  this->Tree->HighlightHandle(1);
  zvtest::EventRecorder recorder;
  this->Watch(recorder);
  zvtest::Mouse mouse = this->PointerIn(Z);
  mouse.Drag(zvtest::Left, Nothing, this->OnPoint(Z, 2));
  EXPECT_EQ(this->Tree->State, zv3DTreeWidget::Outside);
  EXPECT_EQ(this->Tree->CurrentPoint, 1);
  EXPECT_EQ(this->Tree->CurrentLine, 0);
  EXPECT_EQ(this->Sphere(), Corners[1]);
  EXPECT_THAT(recorder.Names(), IsEmpty());
  mouse.Press(zvtest::Left, this->OnPoint(Z, 2)); // Outside is left by the next press
  EXPECT_EQ(this->Tree->State, zv3DTreeWidget::Moving);
}

TEST_F(TreeMouse, PressesOutsideTheCurrentViewportAreOutside)
{
  this->ShowSquare();
  this->Renderer(Z)->SetViewport(0.0, 0.0, 0.5, 1.0);
  this->In(Z).Render();
  zvtest::EventRecorder recorder;
  this->Watch(recorder);
  zvtest::Mouse mouse = this->PointerIn(Z);
  for (zvtest::Button button : { zvtest::Left, zvtest::Middle })
  {
    this->Tree->State = zv3DTreeWidget::Start;
    mouse.Press(button, { { 150, 100 } });
    EXPECT_EQ(this->Tree->State, zv3DTreeWidget::Outside);
  }
  EXPECT_THAT(recorder.Names(), IsEmpty());
}

TEST_F(TreeMouse, EventsOfAnotherViewAreReadInTheCurrentOne)
{
  this->ShowSquare(Z);
  // the last event of the current view was on a point; that of X says where nothing
  zvtest::Mouse current = this->PointerIn(Z);
  current.MoveTo(this->OnPoint(Z, 1));
  zvtest::Mouse other = this->PointerIn(X);
  other.Press(zvtest::Left, Nothing);
  EXPECT_EQ(this->Tree->CurrentPoint, 1);
  EXPECT_EQ(this->Tree->State, zv3DTreeWidget::Moving);
}

TEST_F(TreeMouse, ThesePicksFindNothing)
{
  struct Row
  {
    const char* Name;
    std::function<void()> Prepare;
  };
  const Row rows[] = {
    { "disabled", [this] { this->Tree->SetEnabled(0); } },
    { "cleared", [this] { this->Tree->Clear(); } },
    { "cleared and enabled, the old tree",
      [this]
      {
        this->Tree->Clear();
        this->Tree->SetEnabled(1);
      } },
    { "grown again, not enabled",
      [this]
      {
        this->Tree->Clear();
        this->GrowSquare();
      } },
    { "taken out of the current view",
      [this]
      {
        this->In(ThreeD).Renderer()->RemoveAllViewProps();
        this->In(Z).Renderer()->RemoveAllViewProps();
      } },
  };
  for (View view : { ThreeD, Z })
  {
    for (const Row& row : rows)
    {
      this->MakeTree(view);
      this->ShowSquare(view);
      zvtest::Mouse mouse = this->PointerIn(view);
      mouse.MoveTo(this->OnPoint(view, 1));
      ASSERT_EQ(this->Tree->IsClicked(), 1) << row.Name;
      row.Prepare();
      for (const zvtest::Display& on : { this->OnPoint(view, 1), this->OnSegment(view, 1) })
      {
        mouse.MoveTo(on);
        EXPECT_EQ(this->Tree->IsClicked(), 0) << row.Name;
        this->Tree->OnLeftButtonDown();
        EXPECT_EQ(this->Tree->State, zv3DTreeWidget::Outside) << row.Name;
      }
    }
  }
}

TEST_F(TreeMouse, TheSelectionItselfCannotBeHit)
{
  this->Tree->SetCurrentRender(this->Renderer(ThreeD));
  this->Tree->SetEnabled(1); // an empty tree: sphere and line lie at the origin
  zvtest::Mouse mouse = this->PointerIn(ThreeD);
  mouse.Press(zvtest::Left, this->At(ThreeD, { { 0, 0, 0 } }));
  EXPECT_EQ(this->Tree->State, zv3DTreeWidget::Outside);
  EXPECT_EQ(this->Tree->IsClicked(), 0);
}

TEST_F(TreeMouse, IsClickedStoresTheOneNumberAndShowsNothing)
{
  this->ShowSquare();
  this->Tree->HighlightHandle(3);
  const auto where = this->WhereAll();
  zvtest::EventRecorder recorder;
  this->Watch(recorder);
  zvtest::Mouse mouse = this->PointerIn(Z);
  mouse.MoveTo(this->OnPoint(Z, 1));
  EXPECT_EQ(this->Tree->IsClicked(), 1);
  EXPECT_EQ(this->Tree->CurrentPoint, 1);
  EXPECT_EQ(this->Tree->CurrentLine, 2);
  mouse.MoveTo(this->OnSegment(Z, 0));
  EXPECT_EQ(this->Tree->IsClicked(), 1);
  EXPECT_EQ(this->Tree->CurrentPoint, 1);
  EXPECT_EQ(this->Tree->CurrentLine, 0);
  mouse.MoveTo(this->OnPoint(Z, 0));
  EXPECT_EQ(this->Tree->IsClicked(), 1);
  EXPECT_EQ(this->Tree->CurrentPoint, 0); // so the root can be the next parent
  mouse.MoveTo(Nothing);
  EXPECT_EQ(this->Tree->IsClicked(), 0);
  EXPECT_EQ(this->Tree->CurrentPoint, 0);
  EXPECT_EQ(this->Tree->CurrentLine, 0);
  EXPECT_EQ(this->Sphere(), Corners[3]);
  EXPECT_EQ(this->WhereAll(), where);
  EXPECT_THAT(recorder.Names(), IsEmpty());
}

// ---- Drags

TEST_F(TreeMouse, APointFollowsTheMouseAtItsDepth)
{
  this->ShowSquare();
  zvtest::Mouse mouse = this->PointerIn(Z);
  mouse.Press(zvtest::Left, this->OnPoint(Z, 2));
  const zvtest::Display to = this->At(Z, { { 2, 8, 4 } });
  zvtest::EventRecorder recorder;
  this->Watch(recorder);
  mouse.MoveTo(to);
  // the label's render comes first
  EXPECT_EQ(this->NamesOf(recorder), Then(Then(FourRenders, { "InteractionEvent" }), FourRenders));
  EXPECT_FALSE(recorder.Events()[4].HasData);
  ExpectNear(this->PointAt(2), { { 2, 8, 4 } }, 0.25); // a pixel
  ExpectNear(this->Sphere(), this->PointAt(2));
  EXPECT_EQ(this->Sphere(), this->LineEnd());
  EXPECT_EQ(this->LineStart(), Corners[1]);
  EXPECT_EQ(this->PointAt(1), Corners[1]);
  EXPECT_EQ(this->PointAt(3), Corners[3]);
  mouse.Release(zvtest::Left);
  const World moved = this->PointAt(2);
  mouse.MoveTo({ { 20, 20 } });
  EXPECT_EQ(this->PointAt(2), moved);
}

TEST_F(TreeMouse, TheLabelFollowsADrag)
{
  this->ShowSquare();
  zvtest::Mouse mouse = this->PointerIn(Z);
  mouse.Press(zvtest::Left, this->OnPoint(Z, 2));
  double from[3] = { 0, 0, 0 };
  double to[3] = { 0, 2, 0 };
  this->Tree->MovePoint(from, to);
  EXPECT_EQ(this->PointAt(2), (World{ { 5, 7, 4 } }));
  EXPECT_EQ(this->Label(), "     12.65 mm"); // from (5, -5, 0)
  const double* at = this->Tree->TextActor->GetPosition();
  ExpectNear({ { at[0], at[1], at[2] } }, { { 5, 7, 5 } });
}

TEST_F(TreeMouse, ADragDoesNotMarkTheTreeAsChangedByDesign)
{
  this->ShowSquare();
  vtkPolyData* const data[] = { this->Tree->TreePoints, this->Tree->TreeLines };
  vtkMTimeType before[4];
  for (int i = 0; i < 2; ++i)
  {
    before[2 * i] = data[i]->GetMTime();
    before[2 * i + 1] = data[i]->GetPoints()->GetMTime();
  }
  zvtest::Mouse mouse = this->PointerIn(Z);
  mouse.Drag(zvtest::Left, this->OnPoint(Z, 2), { { 100, 100 } });
  mouse.Drag(zvtest::Left, this->OnSegment(Z, 0), { { 90, 60 } });
  EXPECT_NE(this->PointAt(2), Corners[2]);
  EXPECT_NE(this->PointAt(0), Corners[0]);
  for (int i = 0; i < 2; ++i)
  {
    EXPECT_EQ(data[i]->GetMTime(), before[2 * i]);
    EXPECT_EQ(data[i]->GetPoints()->GetMTime(), before[2 * i + 1]);
  }
}

TEST_F(TreeMouse, WhatWasDraggedOutOfTheTreesBoxIsHitAfterTheNextChangeByDesign)
{
  this->ShowSquare();
  zvtest::Mouse mouse = this->PointerIn(Z);
  const zvtest::Display out = this->At(Z, { { 9, 9, 4 } });
  mouse.Drag(zvtest::Left, this->OnPoint(Z, 2), out);
  mouse.Press(zvtest::Left, out);
  EXPECT_EQ(this->Tree->State, zv3DTreeWidget::Outside);
  this->Add({ { 0, 0, 0 } });
  mouse.Press(zvtest::Left, out);
  EXPECT_EQ(this->Tree->State, zv3DTreeWidget::Moving);
  EXPECT_EQ(this->Tree->CurrentPoint, 2);
}

TEST_F(TreeMouse, APointStopsAtEachFaceAndSlidesAlongIt)
{
  this->ShowSquare();
  for (int axis = 0; axis < 3; ++axis)
  {
    for (double side : { -1.0, 1.0 })
    {
      double from[3] = { 0, 0, 0 };
      double to[3] = { 0.5, 0.5, 0.5 };
      to[axis] = side * 50.0;
      this->Tree->HighlightHandle(2);
      const World before = this->PointAt(2);
      this->Tree->MovePoint(from, to);
      for (int other = 0; other < 3; ++other)
      {
        EXPECT_FLOAT_EQ(this->PointAt(2)[other],
          other == axis ? side * 10.0 : std::min(before[other] + 0.5, 10.0));
      }
    }
  }
}

TEST_F(TreeMouse, AMousePastTheFaceLeavesThePointOnIt)
{
  this->ShowSquare();
  struct Row
  {
    View In;
    zvtest::Display To;
    int Axis;
    double Face;
  };
  const Row rows[] = { { Z, { { 199, 100 } }, 0, 10.0 }, { Z, { { 0, 100 } }, 0, -10.0 },
    { Z, { { 100, 199 } }, 1, 10.0 }, { Z, { { 100, 0 } }, 1, -10.0 },
    { Y, { { 100, 199 } }, 2, 10.0 }, { X, { { 100, 0 } }, 2, -10.0 } };
  for (const Row& row : rows)
  {
    this->MakeTree(row.In);
    this->ShowSquare(row.In);
    zvtest::Mouse mouse = this->PointerIn(row.In);
    mouse.Drag(zvtest::Left, this->OnPoint(row.In, 2), row.To);
    EXPECT_EQ(this->PointAt(2)[row.Axis], row.Face) << row.Axis;
    EXPECT_EQ(this->Sphere()[row.Axis], row.Face);
    EXPECT_EQ(this->LineEnd()[row.Axis], row.Face);
    for (int axis = 0; axis < 3; ++axis)
    {
      EXPECT_LT(std::abs(this->PointAt(2)[axis]), 10.0 + 1e-12);
    }
  }
}

TEST_F(TreeMouse, ASegmentFollowsTheMouseWithBothEnds)
{
  this->ShowSquare();
  zvtest::Mouse mouse = this->PointerIn(Z);
  const World middle = Middle(Corners[1], Corners[2]);
  mouse.Press(zvtest::Left, this->At(Z, middle));
  zvtest::EventRecorder recorder;
  this->Watch(recorder);
  mouse.MoveTo(this->At(Z, { { middle[0] - 3, middle[1] + 2, middle[2] } }));
  EXPECT_EQ(this->NamesOf(recorder), Then(Then(FourRenders, { "InteractionEvent" }), FourRenders));
  ExpectNear(this->PointAt(1), { { 2, -3, 0 } }, 0.25);
  ExpectNear(this->PointAt(2), { { 2, 7, 4 } }, 0.25);
  ExpectNear(this->LineStart(), this->PointAt(1));
  ExpectNear(this->LineEnd(), this->PointAt(2));
  ExpectNear(this->Sphere(), this->PointAt(2));
  EXPECT_EQ(this->PointAt(0), Corners[0]);
  EXPECT_EQ(this->PointAt(3), Corners[3]);
  EXPECT_EQ(this->Label(), "     10.77 mm");
}

TEST_F(TreeMouse, ASegmentPressedAgainstAFaceChangesItsLength)
{
  this->ShowSquare();
  this->Tree->HighlightLine(1); // from (5, -5, 0) to (5, 5, 4)
  double from[3] = { 0, 0, 0 };
  double to[3] = { 2, 8, 0 };
  this->Tree->MoveLine(from, to);
  EXPECT_EQ(this->PointAt(1), (World{ { 7, 3, 0 } }));
  EXPECT_EQ(this->PointAt(2), (World{ { 7, 10, 4 } }));
  EXPECT_EQ(this->Label(), "      8.06 mm");
  for (int axis = 0; axis < 3; ++axis)
  {
    for (double side : { -10.0, 10.0 })
    {
      double far[3] = { 0, 0, 0 };
      far[axis] = 5.0 * side;
      this->Tree->MoveLine(from, far);
      EXPECT_EQ(this->PointAt(1)[axis], side);
      EXPECT_EQ(this->PointAt(2)[axis], side);
    }
  }
  EXPECT_EQ(this->Label(), "      0.00 mm");
}

TEST_F(TreeMouse, ChildrenStayJoinedToAPointThatMoves)
{
  this->ShowSquare();
  this->Tree->HighlightHandle(1);
  double from[3] = { 0, 0, 0 };
  double to[3] = { 1, 2, 3 };
  this->Tree->MovePoint(from, to);
  EXPECT_EQ(this->SegmentsOfTree(), (Segments{ { 0, 1 }, { 1, 2 }, { 0, 3 } }));
  this->Tree->HighlightHandle(2);
  EXPECT_EQ(this->LineStart(), (World{ { 6, -3, 3 } }));
}

TEST_F(TreeMouse, ADragOnTheRootMovesTheSelectedPointByDesign)
{
  this->ShowSquare();
  this->Tree->HighlightHandle(2);
  zvtest::Mouse mouse = this->PointerIn(Z);
  mouse.Press(zvtest::Left, this->OnPoint(Z, 0));
  EXPECT_EQ(this->Tree->State, zv3DTreeWidget::Moving);
  EXPECT_EQ(this->Tree->CurrentPoint, 2);
  EXPECT_EQ(this->Sphere(), Corners[0]);
  EXPECT_EQ(this->WhereIs(this->Tree->SelectedLineActor), "");
  // the label is that of the point that is held
  EXPECT_EQ(this->WhereIs(this->Tree->TextActor), "XYZ3");
  mouse.MoveTo(this->At(Z, { { -3, -5, -4 } }));
  ExpectNear(this->Sphere(), { { -3, -5, -4 } }, 0.25);
  ExpectNear(this->PointAt(2), this->Sphere());
  EXPECT_EQ(this->PointAt(0), Corners[0]);
}

TEST_F(TreeMouse, ALonelyRootIsDragged)
{
  this->Tree->SetEnabled(1);
  this->Add({ { 1, 1, 1 } });
  zvtest::Mouse mouse = this->PointerIn(Z);
  mouse.Drag(zvtest::Left, this->At(Z, { { 1, 1, 1 } }), this->At(Z, { { 6, -2, 1 } }), 0, 3);
  ExpectNear(this->PointAt(0), { { 6, -2, 1 } }, 0.25);
  EXPECT_EQ(this->WhereIs(this->Tree->TextActor), "");
}

TEST_F(TreeMouse, ADragWithoutAnImageSaysSoAndGoesOn)
{
  this->ShowSquare();
  zvtest::Mouse mouse = this->PointerIn(Z);
  mouse.Press(zvtest::Left, this->OnPoint(Z, 2));
  zvInstanceManager::Instance()->SetCurrentOutput(nullptr);
  zvtest::EventRecorder recorder;
  this->Watch(recorder);
  mouse.MoveTo({ { 100, 100 } });
  this->ExpectGenericWarning("zv3DTreeWidget", "set the current image before moving a point...");
  EXPECT_EQ(this->NamesOf(recorder), Then({ "InteractionEvent" }, FourRenders));
  EXPECT_EQ(this->PointAt(2), Corners[2]);
  zvInstanceManager::Instance()->SetCurrentOutput(this->Volume);
  mouse.MoveTo({ { 105, 100 } });
  EXPECT_NE(this->PointAt(2), Corners[2]);
}

TEST_F(TreeMouse, AStateOfTheHostsPassesTheGuardsAndMovesNothing)
{
  this->ShowSquare();
  this->Tree->SetState(3);
  EXPECT_EQ(this->Tree->GetState(), 3);
  zvtest::EventRecorder recorder;
  this->Watch(recorder);
  zvtest::Mouse mouse = this->PointerIn(Z);
  mouse.MoveTo({ { 100, 100 } });
  mouse.Release(zvtest::Left);
  EXPECT_EQ(this->NamesOf(recorder),
    Then(Then({ "InteractionEvent" }, FourRenders), Then({ "EndInteractionEvent" }, FourRenders)));
  EXPECT_EQ(this->Tree->State, zv3DTreeWidget::Start);
  EXPECT_EQ(this->PointAt(3), Corners[3]);
}

// ---- The other buttons

TEST_F(TreeMouse, TheMiddleButtonTellsAndKeepsTheState)
{
  this->ShowSquare();
  zvtest::Mouse mouse = this->PointerIn(Z);
  for (int state : { zv3DTreeWidget::Start, zv3DTreeWidget::Moving, zv3DTreeWidget::MovingLine,
         zv3DTreeWidget::Outside })
  {
    this->Tree->State = state;
    zvtest::EventRecorder recorder;
    this->Watch(recorder);
    mouse.Press(zvtest::Middle, Nothing);
    EXPECT_EQ(this->NamesOf(recorder), Then({ "StartInteractionEvent" }, FourRenders));
    EXPECT_EQ(this->Tree->State, state);
    recorder.Clear();
    mouse.Release(zvtest::Middle);
    const bool isDragging = state == zv3DTreeWidget::Moving || state == zv3DTreeWidget::MovingLine;
    EXPECT_EQ(
      this->NamesOf(recorder), isDragging ? Then({ "EndInteractionEvent" }, FourRenders) : Names{});
    EXPECT_EQ(this->Tree->State, state);
  }
}

TEST_F(TreeMouse, TheRightButtonAndTheWheelRender)
{
  this->ShowSquare(ThreeD); // heard once there
  this->Tree->State = zv3DTreeWidget::Outside;
  zvtest::Mouse mouse = this->PointerIn(ThreeD);
  zvtest::EventRecorder recorder;
  this->Watch(recorder);
  mouse.Press(zvtest::Right, Nothing);
  EXPECT_THAT(recorder.Names(), IsEmpty());
  mouse.Release(zvtest::Right);
  EXPECT_EQ(this->NamesOf(recorder), FourRenders);
  recorder.Clear();
  mouse.WheelForward(Nothing);
  EXPECT_EQ(this->NamesOf(recorder), FourRenders);
  recorder.Clear();
  mouse.WheelBackward(Nothing);
  EXPECT_EQ(this->NamesOf(recorder), FourRenders);
  EXPECT_EQ(this->Tree->State, zv3DTreeWidget::Outside);
}

TEST_F(TreeMouse, OnlyWhatTheWidgetTakesIsKeptFromOthers)
{
  this->ShowSquare();
  zvtest::EventRecorder behind;
  behind.Watch(this->Interactor(Z), zvtest::MouseEvents, -1.0f);
  zvtest::Mouse mouse = this->PointerIn(Z);
  mouse.Drag(zvtest::Left, this->OnPoint(Z, 2), { { 100, 100 } });
  mouse.Press(zvtest::Middle, Nothing);
  EXPECT_THAT(behind.Names(), IsEmpty());
  mouse.Release(zvtest::Middle);
  mouse.Drag(zvtest::Left, Nothing, { { 8, 8 } });
  mouse.Drag(zvtest::Right, Nothing, { { 8, 8 } });
  mouse.WheelForward(Nothing);
  EXPECT_EQ(behind.Names(),
    (Names{ "MiddleButtonReleaseEvent", "LeftButtonPressEvent", "MouseMoveEvent",
      "LeftButtonReleaseEvent", "RightButtonPressEvent", "MouseMoveEvent",
      "RightButtonReleaseEvent", "MouseWheelForwardEvent" }));
}

// ---- Leaving the mouse alone

TEST_F(TreeMouse, InactiveItLeavesEverythingToTheHost)
{
  this->ShowSquare();
  this->Tree->HighlightHandle(1);
  this->Tree->StopInteraction(1);
  EXPECT_TRUE(this->Tree->IsInactive());
  EXPECT_EQ(this->Tree->State, zv3DTreeWidget::Inactive);
  zvtest::EventRecorder recorder;
  this->Watch(recorder);
  zvtest::Mouse mouse = this->PointerIn(Z);
  for (zvtest::Button button : { zvtest::Left, zvtest::Middle, zvtest::Right })
  {
    mouse.Drag(button, this->OnPoint(Z, 2), { { 100, 100 } });
    mouse.Press(button, { { -5, -5 } });
  }
  mouse.WheelForward(Nothing);
  mouse.WheelBackward(Nothing);
  EXPECT_THAT(recorder.Names(), IsEmpty());
  EXPECT_EQ(this->Tree->CurrentPoint, 1);
  EXPECT_TRUE(this->Tree->IsInactive());
  this->Tree->StopInteraction(0);
  EXPECT_FALSE(this->Tree->IsInactive());
  EXPECT_EQ(this->Tree->State, zv3DTreeWidget::Start);
  mouse.Press(zvtest::Left, this->OnPoint(Z, 2));
  EXPECT_EQ(this->Tree->CurrentPoint, 2);
}

TEST_F(TreeMouse, AddingListensToTheMouseAgain)
{
  this->ShowSquare();
  this->Tree->StopInteraction(7);
  EXPECT_TRUE(this->Tree->IsInactive());
  this->Add({ { 0, 0, 0 } });
  EXPECT_FALSE(this->Tree->IsInactive());
  EXPECT_EQ(this->Tree->State, zv3DTreeWidget::Start);
}

TEST_F(TreeMouse, StoppedInMidDragItEndsWithoutAnEvent)
{
  this->ShowSquare();
  zvtest::Mouse mouse = this->PointerIn(Z);
  mouse.Press(zvtest::Left, this->OnPoint(Z, 2));
  this->Tree->StopInteraction(1);
  zvtest::EventRecorder recorder;
  this->Watch(recorder);
  mouse.MoveTo({ { 100, 100 } });
  mouse.Release(zvtest::Left);
  EXPECT_THAT(recorder.Names(), IsEmpty());
  EXPECT_EQ(this->PointAt(2), Corners[2]);
}

// ---- What is seen

TEST_F(TreeMouse, PointsSegmentsAndSelectionAreSeenInTheirColoursInEveryView)
{
  this->ShowSquare();
  this->Tree->HighlightHandle(2);
  this->Tree->SetTextToActorPosition(0); // the label would hide parts
  const zvtest::Color red{ 255, 0, 0 };
  const zvtest::Color yellow{ 255, 255, 0 };
  for (View view : zvtest::AllViews)
  {
    const zvtest::Picture picture = this->In(view).Look();
    for (int id : { 0, 1, 3 })
    {
      EXPECT_TRUE(picture.HasNear(red, this->OnPoint(view, id), 2)) << id << view;
    }
    for (int id : { 0, 2 })
    {
      EXPECT_TRUE(picture.HasNear(yellow, this->OnSegment(view, id), 2)) << id << view;
    }
    const zvtest::Color selected = zvtest::Color::FromUnit(0.0, 1.0, 0.2);
    EXPECT_TRUE(picture.HasNear(selected, this->OnSegment(view, 1), 2)) << view;
    // a lit sphere: some shade of cyan
    const zvtest::Color sphere = picture.At(this->OnPoint(view, 2));
    EXPECT_EQ(sphere.Red, 0) << view;
    EXPECT_GT(sphere.Green, 100) << view;
    EXPECT_EQ(sphere.Green, sphere.Blue) << view;
  }
}

TEST_F(TreeMouse, TheSphereIsSeenUnderTheMouseAtEachMove)
{
  this->ShowSquare();
  zvtest::Mouse mouse = this->PointerIn(Z);
  mouse.Press(zvtest::Left, this->OnPoint(Z, 2));
  this->Tree->TextActor->VisibilityOff();
  for (const zvtest::Display& to : { zvtest::Display{ { 80, 140 } }, { { 120, 90 } } })
  {
    mouse.MoveTo(to);
    const zvtest::Color color = this->In(Z).Look().At(to); // what the handler drew
    EXPECT_EQ(color.Red, 0);
    EXPECT_GT(color.Blue, 100);
  }
}

TEST_F(TreeMouse, TheLabelIsSeenBesideTheSelectedPoint)
{
  const zvtest::Color red{ 255, 0, 0 };
  this->ShowSquare();
  this->Tree->HighlightHandle(3);
  this->Tree->SetTextToActorPosition(3);
  const int with = this->In(Z).Look().Count(red, 60);
  this->Tree->SetTextToActorPosition(0);
  const int without = this->In(Z).Look().Count(red, 60);
  EXPECT_GT(with, without + 20);
}

TEST_F(TreeMouse, DisabledNothingOfItIsSeen)
{
  std::vector<zvtest::Picture> empty;
  for (View view : zvtest::AllViews)
  {
    empty.push_back(this->In(view).RenderAndLook());
  }
  this->ShowSquare();
  for (View view : zvtest::AllViews)
  {
    EXPECT_GT(this->In(view).Look().CountDifferent(empty[view]), 0);
  }
  this->Tree->SetEnabled(0);
  for (View view : zvtest::AllViews)
  {
    EXPECT_EQ(this->In(view).Look().CountDifferent(empty[view]), 0);
  }
}
