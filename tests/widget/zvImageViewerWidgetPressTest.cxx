// Who may take a press on the slice view, in which order, and what each of them makes of it: the
// tables of states and events, row by row.

#include "zvImageViewerMouseFixture.h"

#include <functional>

using zvtest::Left;
using zvtest::Middle;
using zvtest::Right;
using zvtest::Shift;

namespace
{
using Names = std::vector<std::string>;

// Every state that the stock class knows.
const int AllStates[] = { 0, 1, 2, 3, 4, 5, 6, 7, 8 };

// A view with one tool of each kind, all away from the cross.
class ImageViewerPress : public ImageViewerMouse
{
protected:
  ImageViewerPress()
  {
    this->Watch(this->Events);
    this->Renders.Watch(this->Scene.Interactor(), { vtkCommand::RenderEvent });
  }

  void Forget()
  {
    this->Events.Clear();
    this->Renders.Clear();
  }

  int RenderCount() const { return static_cast<int>(this->Renders.Events().size()); }

  // A ruler with an end here, enabled.
  vtkSmartPointer<zvRulerWidget> MakeRuler(double x, double y)
  {
    vtkSmartPointer<zvRulerWidget> ruler = this->PlaceRuler();
    ruler->SetPoint1(x, y, 20.0);
    ruler->SetPoint2(15.0, 2.0, 20.0);
    this->Scene.Render();
    return ruler;
  }

  // A closed contour with its first corner here.
  vtkSmartPointer<zvAreaWidget> MakeArea(double x, double y)
  {
    vtkSmartPointer<zvAreaWidget> area =
      this->DrawArea({ { { 3, 6, 0 } }, { { 3, 12, 0 } }, { { 6, 15, 0 } } });
    this->PutCorner(area, x, y);
    return area;
  }

  void PutCorner(zvAreaWidget* area, double x, double y)
  {
    area->SetHandlePosition(0, x, y, 20.0);
    this->Scene.Render();
  }

  // A text whose middle is here.
  vtkSmartPointer<zvTextNoteWidget> MakeNote(double x, double y)
  {
    double color[3] = { 0.0, 1.0, 0.0 };
    this->Viewer->CurrentTextNoteWidget = nullptr;
    this->Viewer->AddTextNoteWidget("note", 2, color, 1.0);
    vtkSmartPointer<zvTextNoteWidget> note = this->Viewer->CurrentTextNoteWidget.Get();
    note->SetLocation(x - 1.0, y - 0.5, 20.0);
    this->Scene.Render();
    return note;
  }

  void SetViewport(double left) { this->Scene.Renderer()->SetViewport(left, 0.0, 1.0, 1.0); }

  zvtest::EventRecorder Events;
  zvtest::EventRecorder Renders;
};

// What a row of a table does before the event and what it wants to see after it.
struct Row
{
  std::string Name;
  std::function<void()> Prepare;
  std::function<void()> Event;
  int State;                           // after it; Unchanged if it stays
  Names Events;                        // in their order
  std::function<void()> Check = [] {}; // anything else
  static constexpr int Unchanged = -1;
};
}

//------------------------------------------------------------------------------
// Who takes a press when all of them could

namespace
{
// One who may take a press, and how that shows.
struct Claimant
{
  std::string Name;
  std::function<void()> Withdraw;
  std::function<void()> ExpectTaken;
};

// Everything that may claim a press lies under one pixel: the crossing of both lines.
class ImageViewerClaims : public ImageViewerPress
{
protected:
  ImageViewerClaims()
  {
    this->Here = this->On(9.5, 9.5);
    this->Area = this->MakeArea(9.5, 9.5);
    this->Note = this->MakeNote(9.5, 9.5);
    this->Ruler = this->MakeRuler(9.5, 9.5);
    this->Viewer->CurrentRulerWidget = nullptr;
    this->Viewer->CurrentAreaWidget = nullptr;
    this->Viewer->CurrentTextNoteWidget = nullptr;
    this->Viewer->SetPickPointModeA(true);
    this->Viewer->AddRulerMode = true;
    this->Viewer->AddAreaMode = true;
    this->Viewer->SetAddLassoMode(true);
    this->Viewer->SetPickPointBoundMode(true);
    this->Viewer->SetAddText(true);
    this->Viewer->SetPaintMode(true);
    this->Viewer->SetFillMode(true);
    this->Picks.Watch(this->Viewer->SliceLine1Picker, { vtkCommand::StartPickEvent });
    this->Picks.Watch(this->Viewer->SliceLine2Picker, { vtkCommand::StartPickEvent });
    this->Picks.Watch(this->Viewer->PlanePicker, { vtkCommand::StartPickEvent });
    this->SetViewport(0.9);
  }

  // How often the first line, the second and the plane were asked.
  std::array<int, 3> Asked() const
  {
    std::array<int, 3> count{ { 0, 0, 0 } };
    for (const auto& pick : this->Picks.Events())
    {
      count[0] += pick.Caller == this->Viewer->SliceLine1Picker.Get();
      count[1] += pick.Caller == this->Viewer->SliceLine2Picker.Get();
      count[2] += pick.Caller == this->Viewer->PlanePicker;
    }
    return count;
  }

  void ExpectState(int state) { EXPECT_EQ(this->Viewer->State, state); }
  void ExpectEvents(const Names& names) { EXPECT_EQ(this->Events.Names(), names); }
  void ExpectPointAt(double z)
  {
    EXPECT_TRUE(IsPoint(this->Viewer->PointClicked, { { 9.5, 9.5, z } }, 0.1));
  }
  void ExpectAsked(int line1, int line2, int plane)
  {
    EXPECT_EQ(this->Asked(), (std::array<int, 3>{ { line1, line2, plane } }));
  }
  void ExpectCounts(int rulers, int areas, int lassos)
  {
    EXPECT_EQ(this->Viewer->RulerWidgets->GetNumberOfItems(), rulers);
    EXPECT_EQ(this->Viewer->AreaWidgets->GetNumberOfItems(), areas);
    EXPECT_EQ(this->Viewer->LassoWidgets->GetNumberOfItems(), lassos);
  }
  // A mode on the slice took it and ended the press.
  void ExpectMode(double z)
  {
    this->ExpectState(StateCursoring);
    this->ExpectEvents({});
    this->ExpectPointAt(z);
    this->ExpectAsked(1, 1, 1);
  }

  std::vector<Claimant> InOrder();

  zvtest::Display Here;
  vtkSmartPointer<zvRulerWidget> Ruler;
  vtkSmartPointer<zvAreaWidget> Area;
  vtkSmartPointer<zvTextNoteWidget> Note;
  zvtest::EventRecorder Picks;
};

// The order in which they claim; each is asked with all that follow still offering.
std::vector<Claimant> ImageViewerClaims::InOrder()
{
  OpenViewer* v = this->Viewer;
  return {
    { "a press outside the viewport", [this] { this->SetViewport(0.0); },
      [=]
      {
        this->ExpectState(StateOutside);
        this->ExpectEvents({});
        this->ExpectAsked(0, 0, 0);
        EXPECT_EQ(this->RenderCount(), 0);
      } },
    { "a point mode", [=] { v->SetPickPointModeA(false); },
      [=]
      {
        this->ExpectState(StateStart);
        this->ExpectEvents({});
        this->ExpectPointAt(19.0);
        this->ExpectAsked(0, 0, 1);
        EXPECT_EQ(v->CurrentRulerWidget, nullptr);
        EXPECT_EQ(v->CurrentTextNoteWidget, nullptr);
      } },
    { "a ruler",
      [=]
      {
        this->Ruler->SetPoint1(2.0, 18.0, 20.0);
        this->Scene.Render();
        v->CurrentRulerWidget = nullptr; // or contours were not asked
      },
      [=]
      {
        this->ExpectState(StateCursoring);
        this->ExpectEvents({});
        this->ExpectAsked(0, 0, 0);
        EXPECT_EQ(v->CurrentRulerWidget, this->Ruler.Get());
        EXPECT_EQ(v->CurrentAreaWidget, nullptr);
        EXPECT_EQ(v->CurrentTextNoteWidget, this->Note.Get()) << "notes are asked in any case";
      } },
    { "a closed contour", [=] { this->PutCorner(this->Area, 2.0, 2.0); },
      [=]
      {
        this->ExpectState(StateCursoring);
        this->ExpectEvents({});
        this->ExpectAsked(0, 0, 0);
        EXPECT_EQ(v->CurrentAreaWidget, this->Area.Get());
        EXPECT_EQ(v->CurrentTextNoteWidget, this->Note.Get()) << "notes are asked in any case";
      } },
    { "a note", [=] { this->Note->SetLocation(1.0, 17.0, 20.0); },
      [=]
      {
        this->ExpectState(StateCursoring);
        this->ExpectEvents({});
        this->ExpectAsked(0, 0, 0);
        EXPECT_EQ(v->CurrentTextNoteWidget, this->Note.Get());
      } },
    { "the first line", [=] { v->SliceLine1Picker->DeletePickList(v->SliceLine1Actor); },
      [=]
      {
        this->ExpectState(StateRotating);
        this->ExpectEvents({ "LeftButtonPressEvent", "StartInteractionEvent" });
        this->ExpectAsked(1, 0, 0);
        EXPECT_EQ(v->CurrentTextNoteWidget, nullptr);
      } },
    { "the second line", [=] { v->SetLinesEnabled(0); },
      [=]
      {
        this->ExpectState(StateRotating);
        this->ExpectEvents({ "LeftButtonPressEvent", "StartInteractionEvent" });
        this->ExpectAsked(1, 1, 0);
      } },
    { "the ruler that waits", [] {},
      [=]
      {
        this->ExpectMode(20.0);
        EXPECT_FALSE(v->AddRulerMode);
        this->ExpectCounts(1, 1, 0);
      } },
    { "the contour that is drawn", [=] { v->AddAreaMode = false; },
      [=]
      {
        this->ExpectMode(20.0);
        this->ExpectCounts(1, 2, 0);
      } },
    { "the lasso that is drawn", [=] { v->SetAddLassoMode(false); },
      [=]
      {
        this->ExpectMode(19.0);
        this->ExpectCounts(1, 2, 1);
      } },
    { "the point at the bound", [=] { v->SetPickPointBoundMode(false); },
      [=] { this->ExpectMode(v->Bounds[4]); } },
    { "the text", [=] { v->SetAddText(false); }, [=] { this->ExpectMode(v->Bounds[4]); } },
    { "paint", [=] { v->SetPaintMode(false); },
      [=]
      {
        this->ExpectState(StateCursoring);
        this->ExpectEvents({ "StartInteractionEvent" });
        this->ExpectPointAt(19.0);
      } },
    { "fill", [=] { v->SetFillMode(false); },
      [=]
      {
        this->ExpectState(StateCursoring);
        this->ExpectEvents({ "StartInteractionEvent" });
        this->ExpectPointAt(19.0);
      } },
    { "the cross", [] {},
      [=]
      {
        this->ExpectState(StatePushing);
        this->ExpectEvents({ "LeftButtonPressEvent", "StartInteractionEvent" });
        this->ExpectPointAt(19.0);
      } },
  };
}
}

TEST_F(ImageViewerClaims, AreMadeInThisOrder)
{
  for (const Claimant& claimant : this->InOrder())
  {
    SCOPED_TRACE(claimant.Name);
    this->Viewer->State = StateWindowLevelling;
    this->Forget();
    this->Picks.Clear();
    this->Press(this->Here);
    claimant.ExpectTaken();
    this->Mouse.Release(Left);
    claimant.Withdraw();
  }
}

TEST_F(ImageViewerClaims, ARulerThatWasClickedBeforeKeepsContoursFromBeingAsked)
{
  this->SetViewport(0.0);
  this->Viewer->SetPickPointModeA(false);
  this->Note->SetLocation(1.0, 17.0, 20.0);
  this->Ruler->SetPoint1(2.0, 18.0, 20.0);
  this->Viewer->CurrentRulerWidget = this->Ruler;
  this->Scene.Render();
  this->Forget();
  this->Press(this->Here);
  EXPECT_EQ(this->Viewer->CurrentAreaWidget, nullptr);
  EXPECT_EQ(this->Viewer->State, StateRotating) << "the press went on to the line under it";
}

TEST_F(ImageViewerPress, TheFirstOfSeveralToolsUnderThePointerIsSelected)
{
  const auto first = this->MakeRuler(5.0, 5.0);
  const auto second = this->MakeRuler(5.0, 5.0);
  ASSERT_EQ(this->Viewer->CurrentRulerWidget, second.Get());
  this->Press(this->On(5.0, 5.0));
  EXPECT_EQ(this->Viewer->CurrentRulerWidget, first.Get());
  this->Mouse.Release(Left);
  this->Viewer->DeleteWidget();

  const auto note1 = this->MakeNote(5.0, 5.0);
  const auto note2 = this->MakeNote(5.0, 5.0);
  ASSERT_EQ(this->Viewer->CurrentTextNoteWidget, note2.Get());
  this->Press(this->On(5.0, 5.0));
  EXPECT_EQ(this->Viewer->CurrentTextNoteWidget, note1.Get());
}

// In the Z view the two leave the same point, so the X view tells them apart.
TEST_F(ImageViewerPress, ThePointAtTheBoundComesBeforeTheText)
{
  this->Viewer->SetPlaneOrientation(0);
  this->Viewer->SetSliceIndex(10);
  this->LookAlongNormal(0);
  this->Scene.Render();
  this->Viewer->SetAddText(true);
  this->Viewer->SetPickPointBoundMode(true);
  this->Click(this->Mouse.At({ { 10.0, 4.0, 4.0 } }));
  EXPECT_NEAR(this->Viewer->PointClicked[0], 10.0, 1e-3);
  this->Viewer->SetPickPointBoundMode(false);
  this->Click(this->Mouse.At({ { 10.0, 4.0, 4.0 } }));
  EXPECT_EQ(this->Viewer->PointClicked[0], this->Viewer->Bounds[1]);
}

// A point mode takes its press before the slice is asked. One that is turned on while the slice is
// being asked takes it all the same, after the bound and before the text.
TEST_F(ImageViewerPress, APointModeTurnedOnDuringThePressRecordsIt)
{
  for (auto mode : { &OpenViewer::PickPointModeC, &OpenViewer::PickPointModeD })
  {
    this->Viewer->SetAddText(true);
    this->Viewer->SetPaintMode(true);
    {
      zvtest::EventRecorder picks;
      picks.Watch(this->Viewer->PlanePicker, { vtkCommand::StartPickEvent },
        [&](const zvtest::RecordedEvent&) { (*this->Viewer).*mode = true; });
      this->Forget();
      this->Press(this->On(4.0, 15.0));
    }
    EXPECT_EQ(this->Viewer->State, StateCursoring);
    EXPECT_TRUE(IsPoint(this->Viewer->PointClicked, { { 4.0, 15.0, 19.0 } }, 0.1));
    EXPECT_TRUE(this->Events.Names().empty());
    EXPECT_EQ(this->RenderCount(), 1);
    this->Viewer->ResetMode();
  }
}

//------------------------------------------------------------------------------
// The states and events of each press and release, from every state

namespace
{
class ImageViewerTransitions : public ImageViewerPress
{
protected:
  // Start all over, with nothing on and no tools but those that the row makes.
  void Run(const Row& row)
  {
    for (const int from : AllStates)
    {
      SCOPED_TRACE(row.Name + ", from state " + std::to_string(from));
      this->Viewer->ResetMode();
      this->Viewer->DeleteWidget();
      this->Viewer->DeleteAllTextNoteWidgets();
      this->Viewer->SetPlaneOrientation(2);
      this->Viewer->UpdatePlane();
      this->Viewer->SetRightButtonAction(2);
      this->SetViewport(0.0);
      this->Scene.Render();
      row.Prepare();
      this->Viewer->State = from;
      this->Forget();
      row.Event();
      EXPECT_EQ(this->Viewer->State, row.State == Row::Unchanged ? from : row.State);
      EXPECT_EQ(this->Events.Names(), row.Events);
      for (const auto& event : this->Events.Events())
      {
        EXPECT_FALSE(event.HasData) << event.Name;
      }
      row.Check();
      // What the press began ends with it.
      this->SetViewport(0.0);
      this->Mouse.Release(Left, this->Beside());
      this->Mouse.Release(Right, this->Beside());
    }
  }

  std::function<void()> PressAt(double x, double y, int modifiers = zvtest::NoModifier)
  {
    return [=] { this->Press(this->On(x, y), modifiers); };
  }
  std::function<void()> Turn(bool OpenViewer::*mode)
  {
    return [=] { (*this->Viewer).*mode = true; };
  }
  std::function<void()> ExpectRenders(int count)
  {
    return [=] { EXPECT_EQ(this->RenderCount(), count); };
  }
  std::function<void()> ExpectCross(int first, int second)
  {
    return [=] { EXPECT_TRUE(this->CrossIndexIs(first, second)); };
  }
  // Without the tools' own share.
  std::function<void()> Nothing()
  {
    return [] {};
  }
};

const Names PressAndStart{ "LeftButtonPressEvent", "StartInteractionEvent" };
}

TEST_F(ImageViewerTransitions, OfAPressThatIsNotOnTheSlice)
{
  this->Run({ "outside the viewport", [=] { this->SetViewport(0.5); },
    [=] { this->Press(this->Beside()); }, StateOutside, {}, this->ExpectRenders(0) });
  this->Run({ "beside the slice", this->Nothing(), [=] { this->Press(this->Beside()); },
    Row::Unchanged, {}, this->ExpectRenders(1) });
  this->Run({ "beside the slice in a point mode", this->Turn(&OpenViewer::PickPointModeD),
    [=] { this->Press(this->Beside()); }, Row::Unchanged, {}, this->ExpectRenders(1) });
}

TEST_F(ImageViewerTransitions, OfAPressInAPointMode)
{
  for (auto mode : { &OpenViewer::PickPointModeA, &OpenViewer::PickPointModeB,
         &OpenViewer::PickPointModeC, &OpenViewer::PickPointModeD })
  {
    this->Run({ "in a point mode", this->Turn(mode), this->PressAt(4.0, 15.0), StateStart, {},
      [=]
      {
        EXPECT_EQ(this->RenderCount(), 1);
        EXPECT_TRUE(IsPoint(this->Viewer->PointClicked, { { 4.0, 15.0, 19.0 } }, 0.1));
      } });
  }
}

TEST_F(ImageViewerTransitions, OfAPressOnATool)
{
  this->Run({ "on a ruler", [=] { this->MakeRuler(5.0, 5.0); }, this->PressAt(5.0, 5.0),
    StateCursoring, {}, this->ExpectCross(9, 9) });
  this->Run({ "on a closed contour", [=] { this->MakeArea(5.0, 5.0); }, this->PressAt(5.0, 5.0),
    StateCursoring, {}, this->ExpectCross(9, 9) });
  this->Run({ "on a note", [=] { this->MakeNote(5.0, 5.0); }, this->PressAt(5.0, 5.0),
    StateCursoring, {}, this->ExpectCross(9, 9) });
}

TEST_F(ImageViewerTransitions, OfAPressOnALine)
{
  this->Run({ "on line 1", this->Nothing(), this->PressAt(9.5, 15.0), StateRotating, PressAndStart,
    this->ExpectCross(9, 9) });
  this->Run({ "on line 2", this->Nothing(), this->PressAt(4.0, 9.5), StateRotating, PressAndStart,
    this->ExpectCross(9, 9) });
  this->Run({ "on line 1 with Shift", this->Nothing(), this->PressAt(9.5, 15.0, Shift),
    StatePushing, PressAndStart, this->ExpectCross(9, 14) });
  this->Run({ "on line 2 with Shift", this->Nothing(), this->PressAt(4.0, 9.5, Shift), StatePushing,
    PressAndStart, this->ExpectCross(4, 9) });
}

TEST_F(ImageViewerTransitions, OfAPressOnTheSliceInAMode)
{
  this->Run({ "a ruler waits", [=] { this->Viewer->AddRulerWidget(nullptr); },
    this->PressAt(4.0, 15.0), StateCursoring, {}, this->ExpectRenders(1) });
  this->Run({ "a contour is drawn", [=] { this->Viewer->AddAreaWidget(nullptr); },
    this->PressAt(4.0, 15.0), StateCursoring, {}, this->ExpectCross(9, 9) });
  this->Run({ "a lasso is drawn", this->Turn(&OpenViewer::AddLassoMode), this->PressAt(4.0, 15.0),
    StateCursoring, {}, this->ExpectCross(9, 9) });
  this->Run({ "a lasso closes",
    [=]
    {
      this->Viewer->SetAddLassoMode(true);
      this->Click(this->On(4.0, 15.0));
      this->Click(this->On(4.0, 4.0));
      this->Click(this->On(7.0, 4.0));
    },
    this->PressAt(4.0, 15.0), StateStart, {},
    [=] { EXPECT_EQ(this->Viewer->CurrentLassoWidget, nullptr); } });
  this->Run({ "a point at the bound", this->Turn(&OpenViewer::PickPointBoundMode),
    this->PressAt(4.0, 15.0), StateCursoring, {}, this->ExpectRenders(1) });
  this->Run({ "a text", this->Turn(&OpenViewer::AddText), this->PressAt(4.0, 15.0), StateCursoring,
    {}, this->ExpectRenders(1) });
  this->Run({ "paint", this->Turn(&OpenViewer::PaintMode), this->PressAt(4.0, 15.0), StateCursoring,
    { "StartInteractionEvent" }, this->ExpectCross(9, 9) });
  this->Run({ "fill", this->Turn(&OpenViewer::FillMode), this->PressAt(4.0, 15.0), StateCursoring,
    { "StartInteractionEvent" }, this->ExpectCross(9, 9) });
  this->Run({ "no mode", this->Nothing(), this->PressAt(4.0, 15.0), StatePushing, PressAndStart,
    [=]
    {
      EXPECT_TRUE(this->CrossIndexIs(4, 14));
      EXPECT_EQ(this->RenderCount(), 1);
    } });
  this->Run({ "no mode, with Shift", this->Nothing(), this->PressAt(4.0, 15.0, Shift), StatePushing,
    PressAndStart, this->ExpectCross(4, 14) });
}

TEST_F(ImageViewerTransitions, OfARelease)
{
  this->Run({ "inside", this->Nothing(), [=] { this->Mouse.Release(Left, this->On(4.0, 15.0)); },
    StateStart, { "LeftButtonReleaseEvent" }, this->ExpectRenders(1) });
  this->Run(
    { "beside the slice", this->Nothing(), [=] { this->Mouse.Release(Left, this->Beside()); },
      StateStart, { "LeftButtonReleaseEvent" }, this->ExpectRenders(1) });
  this->Run({ "outside the viewport", [=] { this->SetViewport(0.5); },
    [=] { this->Mouse.Release(Left, this->Beside()); }, StateOutside, { "LeftButtonReleaseEvent" },
    this->ExpectRenders(0) });
}

TEST_F(ImageViewerTransitions, OfTheRightButtonOnWindowAndLevel)
{
  this->Run(
    { "on the slice", this->Nothing(), [=] { this->Mouse.Press(Right, this->On(4.0, 15.0)); },
      StateWindowLevelling, {}, this->ExpectRenders(1) });
  this->Run({ "beside the slice", this->Nothing(),
    [=] { this->Mouse.Press(Right, this->Beside()); }, StateOutside, {}, this->ExpectRenders(0) });
  this->Run({ "with Shift, whatever it did before", [=] { this->Viewer->SetRightButtonAction(1); },
    [=] { this->Mouse.Press(Right, this->On(4.0, 15.0), Shift); }, StateWindowLevelling, {},
    [=] { EXPECT_EQ(this->Viewer->GetRightButtonAction(), 2); } });
  this->Run({ "released", [=] { this->Mouse.Press(Right, this->On(4.0, 15.0)); },
    [=]
    {
      this->Viewer->State = StateWindowLevelling;
      this->Mouse.Release(Right);
    },
    StateStart, {}, this->ExpectRenders(1) });
}

TEST_F(ImageViewerTransitions, TheMiddleButtonMakesNone)
{
  this->Run({ "press", this->Nothing(), [=] { this->Mouse.Press(Middle, this->On(4.0, 15.0)); },
    Row::Unchanged, {}, this->ExpectRenders(0) });
  this->Run({ "release", this->Nothing(), [=] { this->Mouse.Release(Middle, this->On(4.0, 15.0)); },
    Row::Unchanged, {}, this->ExpectRenders(0) });
}

TEST_F(ImageViewerTransitions, AMoveChangesNoStateAndIsToldInEachOfThem)
{
  for (const int state : AllStates)
  {
    this->Viewer->State = state;
    this->Forget();
    this->Mouse.MoveTo(this->On(4.0, 15.0));
    EXPECT_EQ(this->Viewer->State, state);
    EXPECT_EQ(this->Events.Names(),
      state == StateWindowLevelling ? (Names{ "MouseMoveEvent", "WindowLevelEvent" })
                                    : Names{ "MouseMoveEvent" });
    const bool isIdle = state == StateStart || state == StateOutside;
    EXPECT_EQ(this->RenderCount(), isIdle ? 0 : 1) << state;
  }
}

//------------------------------------------------------------------------------
// Events

TEST_F(ImageViewerPress, WithoutACameraAMoveTellsNothing)
{
  this->Viewer->SetQuickApply(true); // tracking would make a camera
  this->Scene.Renderer()->SetActiveCamera(nullptr);
  this->Mouse.MoveTo({ { 200, 200 } });
  EXPECT_TRUE(this->Events.Names().empty());
  this->Scene.Renderer()->GetActiveCamera();
  this->Mouse.MoveTo({ { 201, 200 } });
  EXPECT_EQ(this->Events.Names(), Names{ "MouseMoveEvent" });
}

TEST_F(ImageViewerPress, AnInteractionStaysOpenAfterTheReleaseByDesign)
{
  vtkRenderWindow* window = this->Scene.Window();
  window->SetDesiredUpdateRate(this->Scene.Interactor()->GetStillUpdateRate());
  this->Press(this->On(4.0, 15.0));
  this->Mouse.MoveTo(this->On(6.0, 13.0));
  this->Mouse.Release(Left);
  EXPECT_EQ(window->GetDesiredUpdateRate(), this->Scene.Interactor()->GetDesiredUpdateRate());
  EXPECT_EQ(this->Events.Names(),
    (Names{ "LeftButtonPressEvent", "StartInteractionEvent", "MouseMoveEvent",
      "LeftButtonReleaseEvent" }));
}

TEST_F(ImageViewerPress, EveryLeftReleaseIsTold)
{
  this->Mouse.Release(Left, this->On(4.0, 15.0));
  this->SetViewport(0.5);
  this->Mouse.Release(Left, this->Beside());
  this->Viewer->SetCurrentRenderer(nullptr);
  this->Mouse.Release(Left, this->Beside());
  EXPECT_EQ(this->Events.Names(), Names(3, "LeftButtonReleaseEvent"));
  EXPECT_EQ(this->Viewer->State, StateOutside);
  this->Viewer->SetCurrentRenderer(this->Scene.Renderer());
}

TEST_F(ImageViewerPress, AMoveIsToldBeforeTheCrossMoves)
{
  this->Press(this->On(4.0, 15.0));
  std::vector<int> steps;
  zvtest::EventRecorder recorder;
  recorder.Watch(this->Viewer, { vtkCommand::MouseMoveEvent },
    [&](const zvtest::RecordedEvent&) { steps.push_back(this->Viewer->SlicesMovement[0]); });
  this->Mouse.MoveTo(this->On(7.0, 15.0));
  this->Mouse.MoveTo(this->On(12.0, 15.0));
  EXPECT_EQ(steps, (std::vector<int>{ -5, 2 })) << "those of the press, then of the first move";
  EXPECT_EQ(this->Viewer->SlicesMovement[0], 5);
}

TEST_F(ImageViewerPress, AShiftPressOnALineIsToldBeforeTheCrossMoves)
{
  std::vector<int> seen;
  zvtest::EventRecorder recorder;
  recorder.Watch(this->Viewer, { vtkCommand::LeftButtonPressEvent },
    [&](const zvtest::RecordedEvent&)
    {
      seen.push_back(this->Viewer->State);
      seen.push_back(this->Viewer->CrossIndex[1]);
    });
  this->Press(this->On(9.5, 15.0), Shift);
  EXPECT_EQ(seen, (std::vector<int>{ StateRotating, 9 }));
  EXPECT_TRUE(this->CrossIndexIs(9, 14));
}

TEST_F(ImageViewerPress, TheReleaseIsToldWithTheWholePictureBackAndBeforeTheStateIsLeft)
{
  this->Press(this->On(4.0, 15.0));
  this->Mouse.MoveTo(this->On(6.0, 13.0));
  std::vector<int> seen;
  zvtest::EventRecorder recorder;
  recorder.Watch(this->Viewer, { vtkCommand::LeftButtonReleaseEvent },
    [&](const zvtest::RecordedEvent&)
    {
      seen = { this->Viewer->State, this->Viewer->GetImageResolutionFactor(),
        this->Viewer->Reslice->GetOutputExtent()[1], this->Viewer->LeftButtonHeld };
    });
  this->Mouse.Release(Left);
  EXPECT_EQ(seen, (std::vector<int>{ StatePushing, 1, 31, 0 }));
}

//------------------------------------------------------------------------------
// Observers that cancel

namespace
{
// What is left of each press for an observer behind the view.
class ImageViewerBehind : public ImageViewerPress
{
protected:
  ImageViewerBehind()
  {
    this->Behind.Watch(this->Scene.Interactor(),
      { vtkCommand::LeftButtonPressEvent, vtkCommand::LeftButtonReleaseEvent,
        vtkCommand::MouseMoveEvent, vtkCommand::RightButtonPressEvent,
        vtkCommand::RightButtonReleaseEvent },
      -1.0f);
  }

  // Whether a press here in this mode is left to those behind.
  bool IsLeftToOthers(const zvtest::Display& at, bool OpenViewer::*mode = nullptr)
  {
    this->Viewer->ResetMode();
    if (mode)
    {
      (*this->Viewer).*mode = true;
    }
    this->Behind.Clear();
    this->Press(at);
    const bool isLeft = !this->Behind.Names().empty();
    this->Mouse.Release(Left);
    return isLeft;
  }

  zvtest::EventRecorder Behind;
};
}

TEST_F(ImageViewerBehind, OnlyPressesThatBeginAnInteractionAreTakenAway)
{
  EXPECT_FALSE(this->IsLeftToOthers(this->OffTheLines()));
  EXPECT_FALSE(this->IsLeftToOthers(this->On(5.0, 15.0), &OpenViewer::PaintMode));
  EXPECT_FALSE(this->IsLeftToOthers(this->On(5.0, 15.0), &OpenViewer::FillMode));
  EXPECT_TRUE(this->IsLeftToOthers(this->On(5.0, 15.0), &OpenViewer::PickPointModeA));
  EXPECT_TRUE(this->IsLeftToOthers(this->On(5.0, 15.0), &OpenViewer::PickPointBoundMode));
  EXPECT_TRUE(this->IsLeftToOthers(this->On(5.0, 15.0), &OpenViewer::AddText));
  EXPECT_TRUE(this->IsLeftToOthers(this->On(5.0, 15.0), &OpenViewer::AddRulerMode));
  EXPECT_TRUE(this->IsLeftToOthers(this->On(6.0, 12.0), &OpenViewer::AddAreaMode));
  EXPECT_TRUE(this->IsLeftToOthers(this->On(6.0, 4.0), &OpenViewer::AddLassoMode));
  EXPECT_TRUE(this->IsLeftToOthers(this->Beside()));
  this->SetViewport(0.5);
  EXPECT_TRUE(this->IsLeftToOthers(this->Beside()));
}

TEST_F(ImageViewerBehind, MovesAndReleasesAreLeftToOthersButThoseOfWindowAndLevel)
{
  this->Press(this->OffTheLines());
  this->Behind.Clear();
  this->Mouse.MoveTo(this->On(6.0, 13.0));
  this->Mouse.Release(Left);
  EXPECT_EQ(this->Behind.Names(), (Names{ "MouseMoveEvent", "LeftButtonReleaseEvent" }));
  this->Viewer->SetRightButtonAction(2);
  this->Behind.Clear();
  this->Mouse.Press(Right, this->OffTheLines());
  this->Mouse.MoveTo(this->On(6.0, 13.0));
  this->Mouse.Release(Right);
  EXPECT_TRUE(this->Behind.Names().empty());
}

namespace
{
// An observer that keeps an event to itself.
class Aborter : public vtkCommand
{
public:
  static Aborter* New() { return new Aborter; }
  void Execute(vtkObject*, unsigned long, void*) override
  {
    ++this->Calls;
    this->SetAbortFlag(1);
  }
  int Calls = 0;
};
}

TEST_F(ImageViewerPress, AnObserverInFrontThatKeepsAPressKeepsItFromTheView)
{
  vtkNew<Aborter> front;
  this->Scene.Interactor()->AddObserver(vtkCommand::LeftButtonPressEvent, front, 2.0f);
  this->Press(this->OffTheLines());
  EXPECT_EQ(front->Calls, 1);
  EXPECT_EQ(this->Viewer->State, StateStart);
  EXPECT_FALSE(this->Viewer->LeftButtonHeld);
  EXPECT_TRUE(this->Events.Names().empty());
  EXPECT_TRUE(this->CrossIndexIs(9, 9));
  this->Scene.Interactor()->RemoveObserver(front);
}

TEST_F(ImageViewerPress, AnObserverThatKeepsTheToldPressStopsOthersButNotTheCross)
{
  vtkNew<Aborter> keeper;
  this->Viewer->AddObserver(vtkCommand::LeftButtonPressEvent, keeper, 2.0f);
  this->Press(this->OffTheLines());
  EXPECT_EQ(keeper->Calls, 1);
  EXPECT_EQ(this->Events.Names(), Names{ "StartInteractionEvent" });
  EXPECT_TRUE(this->CrossIndexIs(4, 14));
  EXPECT_EQ(this->Viewer->State, StatePushing);
}

TEST_F(ImageViewerPress, APressCancelledByTheStateStillBeginsAnInteraction)
{
  for (const bool onLine : { false, true })
  {
    for (const int idle : { StateStart, StateOutside })
    {
      zvtest::EventRecorder cancel;
      cancel.Watch(this->Viewer, { vtkCommand::LeftButtonPressEvent },
        [&](const zvtest::RecordedEvent&) { this->Viewer->SetState(idle); });
      this->Viewer->LastDegree = 33.0;
      this->Forget();
      this->Press(onLine ? this->OnLine1() : this->OffTheLines(), Shift);
      EXPECT_EQ(this->Viewer->GetState(), idle);
      EXPECT_EQ(this->Events.Names(), PressAndStart);
      EXPECT_EQ(this->Viewer->GetLastDegree(), 0.0);
      EXPECT_EQ(this->RenderCount(), 1);
      // A move of a press that was cancelled turns and moves nothing.
      this->Mouse.MoveTo(this->On(12.0, 12.0));
      EXPECT_TRUE(this->CrossIndexIs(9, 9));
      EXPECT_EQ(this->Viewer->GetPlaneOrientation(), 2);
    }
  }
}

// Any other state that an observer sets is overwritten by that of the press.
TEST_F(ImageViewerPress, AnObserverThatSetsAnotherStateDoesNotCancel)
{
  zvtest::EventRecorder recorder;
  recorder.Watch(this->Viewer, { vtkCommand::LeftButtonPressEvent },
    [&](const zvtest::RecordedEvent&) { this->Viewer->SetState(StateCursoring); });
  this->Press(this->OffTheLines());
  EXPECT_EQ(this->Viewer->State, StatePushing);
  EXPECT_TRUE(this->CrossIndexIs(4, 14));
  this->Press(this->On(4.5, 4.0)); // line 1, after the cross has moved
  EXPECT_EQ(this->Viewer->State, StateRotating);
}
