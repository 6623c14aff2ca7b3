#include "zvBoxWidget.h"

#include "zvTestKit.h"

#include "vtkActor.h"
#include "vtkCallbackCommand.h"
#include "vtkCellPicker.h"
#include "vtkPropCollection.h"
#include "vtkProperty.h"
#include "vtkTransform.h"
#include "vtkWeakPointer.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <limits>

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using zvtest::Display;
using zvtest::World;

namespace
{
class OpenBox : public zvBoxWidget
{
public:
  using zvBoxWidget::Bounds;
  using zvBoxWidget::Clicked;
  using zvBoxWidget::CurrentHandle;
  using zvBoxWidget::CurrentHexFace;
  using zvBoxWidget::EventCallbackCommand;
  using zvBoxWidget::Handle;
  using zvBoxWidget::HandlePicker;
  using zvBoxWidget::HexFace;
  using zvBoxWidget::HexOutline;
  using zvBoxWidget::State;

  // The states of the stock class.
  static constexpr int Free = Start;
  static constexpr int IsMoving = Moving;
  static constexpr int IsScaling = Scaling;
  static constexpr int IsOutside = Outside;

  void CalculateBounds() override
  {
    ++this->Calculations;
    this->zvBoxWidget::CalculateBounds();
  }
  int Calculations = 0;
};

const std::initializer_list<unsigned long> MouseEvents = { vtkCommand::MouseMoveEvent,
  vtkCommand::LeftButtonPressEvent, vtkCommand::LeftButtonReleaseEvent,
  vtkCommand::MiddleButtonPressEvent, vtkCommand::MiddleButtonReleaseEvent,
  vtkCommand::RightButtonPressEvent, vtkCommand::RightButtonReleaseEvent };

// A box of 10, 8 and 6 millimetres about the origin, seen from above.
class BoxWidget : public zvtest::QuietTest
{
protected:
  BoxWidget()
    : Pointer(Scene)
    , Box(vtkSmartPointer<OpenBox>::Take(new OpenBox))
  {
    this->Scene.LookAlong(2);
    const double view[6] = { -12, 12, -12, 12, -12, 12 };
    this->Scene.ResetCamera(view);
    this->Scene.Render();
    this->Box->SetInteractor(this->Scene.Interactor());
    this->Box->SetPlaceFactor(1.0);
    this->Box->PlaceWidget(-5, 5, -4, 4, -3, 3);
    this->Box->SetEnabled(1);
    this->Told.Watch(this->Box, zvtest::WidgetEvents);
  }

  std::vector<double> Now()
  {
    return { this->Box->GetBound0(), this->Box->GetBound1(), this->Box->GetBound2(),
      this->Box->GetBound3(), this->Box->GetBound4(), this->Box->GetBound5() };
  }

  std::vector<double> Calculated() { return { this->Box->Bounds, this->Box->Bounds + 6 }; }

  // How many millimetres a pixel is.
  double Scale() const
  {
    const World zero = this->Scene.WorldAt({ { 0, 0 } }, { { 0, 0, 0 } });
    return this->Scene.WorldAt({ { 1, 0 } }, { { 0, 0, 0 } })[0] - zero[0];
  }

  Display OnRightSphere() const { return this->Pointer.At({ { 5, 0, 0 } }); }
  Display OnFace() const { return this->Pointer.At({ { 2, 2, 3 } }); }
  static Display Beside() { return { { 20, 20 } }; }
  static Display Plus(const Display& at, int x, int y) { return { { at[0] + x, at[1] + y } }; }

  // Everything that tells something.
  void UseUntilItHasNoInteractor()
  {
    const Display from = this->OnRightSphere();
    this->Pointer.Drag(zvtest::Left, from, Plus(from, 10, 0));
    for (int enabling : { 0, 1 })
    {
      if (this->Box->GetInteractor())
      {
        this->Box->SetEnabled(enabling);
      }
    }
  }

  bool LooksUntouched()
  {
    return this->Box->HexFace->GetProperty() == this->Box->GetFaceProperty() &&
      this->Box->HexOutline->GetProperty() == this->Box->GetOutlineProperty() &&
      std::all_of(this->Box->Handle, this->Box->Handle + 7,
        [this](vtkActor* sphere)
        { return sphere->GetProperty() == this->Box->GetHandleProperty(); });
  }

  zvtest::Scene Scene;
  zvtest::Mouse Pointer;
  vtkSmartPointer<OpenBox> Box;
  zvtest::EventRecorder Told;
};

const std::vector<double> Placed = { -5, 5, -4, 4, -3, 3 };
}

TEST_F(BoxWidget, ReportsTheNameOfItsBaseByDesign)
{
  EXPECT_STREQ(this->Box->GetClassName(), "vtkBoxWidget");
  EXPECT_EQ(this->Box->IsA("zvBoxWidget"), 0);
  EXPECT_EQ(this->Box->IsA("vtkBoxWidget"), 1);
}

TEST_F(BoxWidget, IsMadeWithNewAndGoesSilentlyByDeleteOrRelease)
{
  auto* deleted = new zvBoxWidget;
  EXPECT_EQ(deleted->GetReferenceCount(), 1);
  delete deleted;
  auto* released = new zvBoxWidget;
  released->Delete();
  auto* enabled = new zvBoxWidget;
  enabled->SetInteractor(this->Scene.Interactor());
  enabled->SetEnabled(1);
  delete enabled;
  this->ExpectNoMessage();
}

TEST_F(BoxWidget, StartsUnclickedWithoutBounds)
{
  const auto fresh = vtkSmartPointer<OpenBox>::Take(new OpenBox);
  EXPECT_EQ(fresh->GetClicked(), 0);
  EXPECT_THAT(std::vector<double>(fresh->Bounds, fresh->Bounds + 6), ElementsAre(0, 0, 0, 0, 0, 0));
}

TEST_F(BoxWidget, CalculatesTheBoundsAtOnceForEachGetter)
{
  const int before = this->Box->Calculations;
  EXPECT_EQ(this->Now(), Placed);
  EXPECT_EQ(this->Box->Calculations, before + 6);
  EXPECT_EQ(this->Calculated(), Placed);
  this->Box->PlaceWidget(0, 1, 2, 3, 4, 5);
  EXPECT_EQ(this->Calculated(), Placed);
  EXPECT_DOUBLE_EQ(this->Box->GetBound1(), 1.0);
  EXPECT_THAT(this->Calculated(), ElementsAre(0, 1, 2, 3, 4, 5));
}

TEST_F(BoxWidget, TellsTheBoundsOfATurnedBox)
{
  vtkNew<vtkTransform> turn;
  turn->RotateZ(90.0);
  this->Box->SetTransform(turn);
  EXPECT_NEAR(this->Box->GetBound0(), -4.0, 1e-9);
  EXPECT_NEAR(this->Box->GetBound1(), 4.0, 1e-9);
  EXPECT_NEAR(this->Box->GetBound3(), 5.0, 1e-9);
}

TEST_F(BoxWidget, ABoxThatWasMovedTellsItsGreatestX)
{
  const Display from = this->OnRightSphere();
  this->Pointer.Drag(zvtest::Left, from, Plus(from, 30, 0));
  EXPECT_NEAR(this->Box->GetBound1(), 5.0 + 30 * this->Scale(), 1e-6);
  EXPECT_DOUBLE_EQ(this->Box->GetBound0(), -5.0);
}

//------------------------------------------------------------------------------
TEST_F(BoxWidget, ALeftPressOnASphereTakesHoldOfIt)
{
  this->Pointer.Press(zvtest::Left, this->OnRightSphere());
  EXPECT_EQ(this->Box->State, OpenBox::IsMoving);
  EXPECT_EQ(this->Box->GetClicked(), 1);
  EXPECT_EQ(this->Calculated(), Placed);
  EXPECT_EQ(this->Box->Handle[1]->GetProperty(), this->Box->GetSelectedHandleProperty());
  EXPECT_THAT(this->Told.Names(), ElementsAre("StartInteractionEvent"));
  EXPECT_FALSE(this->Told.Events().front().HasData);
}

TEST_F(BoxWidget, ALeftPressOffTheSpheresWithoutShiftIsNotSeen)
{
  zvtest::EventRecorder behind;
  behind.Watch(this->Scene.Interactor(), MouseEvents, 0.1f);
  for (const Display& at : { this->OnFace(), Beside() })
  {
    this->Pointer.Press(zvtest::Left, at);
    EXPECT_EQ(this->Box->State, OpenBox::Free);
    EXPECT_EQ(this->Box->GetClicked(), 0);
    EXPECT_TRUE(this->LooksUntouched());
    this->Pointer.MoveTo(Plus(at, 30, 20));
    this->Pointer.Release(zvtest::Left);
  }
  EXPECT_EQ(this->Now(), Placed);
  EXPECT_THAT(this->Told.Events(), IsEmpty());
  EXPECT_EQ(behind.Events().size(), 6u);
}

TEST_F(BoxWidget, ALeftPressOnAFaceWithShiftMovesTheBox)
{
  const Display from = this->OnFace();
  this->Pointer.Press(zvtest::Left, from, zvtest::Shift);
  EXPECT_EQ(this->Box->State, OpenBox::IsMoving);
  EXPECT_EQ(this->Box->GetClicked(), 1);
  EXPECT_EQ(this->Box->HexOutline->GetProperty(), this->Box->GetSelectedOutlineProperty());
  this->Pointer.MoveTo(Plus(from, 20, -10), zvtest::Shift);
  const double x = 20 * this->Scale();
  EXPECT_NEAR(this->Box->GetBound0(), -5.0 + x, 1e-6);
  EXPECT_NEAR(this->Box->GetBound1(), 5.0 + x, 1e-6);
  EXPECT_NEAR(this->Box->GetBound2(), -4.0 - 0.5 * x, 1e-6);
  EXPECT_NEAR(this->Box->GetBound4(), -3.0, 1e-6);
  EXPECT_THAT(this->Told.Names(), ElementsAre("StartInteractionEvent", "InteractionEvent"));
}

TEST_F(BoxWidget, ALeftPressBesideTheBoxWithShiftReachesTheBaseToo)
{
  this->Pointer.Press(zvtest::Left, Beside(), zvtest::Shift);
  EXPECT_EQ(this->Box->State, OpenBox::IsOutside); // the base hits nothing
  EXPECT_EQ(this->Box->GetClicked(), 1);
  EXPECT_THAT(this->Told.Events(), IsEmpty());
  this->Pointer.Release(zvtest::Left, zvtest::Shift);
  EXPECT_EQ(this->Box->GetClicked(), 0);
}

TEST_F(BoxWidget, ALeftPressOutsideTheViewportIsOutside)
{
  for (int shift : { zvtest::NoModifier, zvtest::Shift })
  {
    this->Box->State = OpenBox::Free;
    this->Pointer.Press(zvtest::Left, { { -3, 200 } }, shift);
    EXPECT_EQ(this->Box->State, OpenBox::IsOutside);
    EXPECT_EQ(this->Box->GetClicked(), 0);
  }
  EXPECT_THAT(this->Told.Events(), IsEmpty());
}

TEST_F(BoxWidget, AMiddlePressNeedsShift)
{
  this->Pointer.Press(zvtest::Middle, this->OnRightSphere());
  EXPECT_EQ(this->Box->State, OpenBox::Free);
  EXPECT_EQ(this->Box->GetClicked(), 0);
  EXPECT_THAT(this->Told.Events(), IsEmpty());
  const Display from = this->OnFace();
  this->Pointer.Press(zvtest::Middle, from, zvtest::Shift);
  EXPECT_EQ(this->Box->State, OpenBox::IsMoving);
  EXPECT_EQ(this->Box->GetClicked(), 1);
  EXPECT_EQ(this->Calculated(), Placed);
  this->Pointer.MoveTo(Plus(from, 10, 0));
  this->Pointer.Release(zvtest::Middle); // with Shift up
  EXPECT_EQ(this->Box->State, OpenBox::Free);
  EXPECT_EQ(this->Box->GetClicked(), 0);
  EXPECT_NEAR(this->Box->GetBound1(), 5.0 + 10 * this->Scale(), 1e-6);
  EXPECT_THAT(this->Told.Names(),
    ElementsAre("StartInteractionEvent", "InteractionEvent", "EndInteractionEvent"));
}

TEST_F(BoxWidget, ARightPressAndItsReleaseWithoutShiftDoNothing)
{
  const int before = this->Box->Calculations;
  this->Pointer.Press(zvtest::Right, this->OnFace());
  EXPECT_EQ(this->Box->State, OpenBox::Free);
  EXPECT_EQ(this->Box->GetClicked(), 0);
  this->Pointer.Release(zvtest::Right);
  EXPECT_EQ(this->Box->State, OpenBox::Free);
  EXPECT_EQ(this->Box->Calculations, before);
  EXPECT_THAT(this->Told.Events(), IsEmpty());
}

TEST_F(BoxWidget, ARightDragWithShiftScales)
{
  const Display from = this->OnFace();
  this->Pointer.Press(zvtest::Right, from, zvtest::Shift);
  EXPECT_EQ(this->Box->State, OpenBox::IsScaling);
  EXPECT_EQ(this->Box->GetClicked(), 1);
  this->Pointer.MoveTo(Plus(from, 0, 30), zvtest::Shift);
  EXPECT_GT(this->Box->GetBound1(), 5.0);
  EXPECT_GT(this->Box->GetBound5(), 3.0);
  this->Pointer.Release(zvtest::Right, zvtest::Shift);
  EXPECT_EQ(this->Box->State, OpenBox::Free);
  EXPECT_EQ(this->Box->GetClicked(), 0);
}

TEST_F(BoxWidget, ARightReleaseWithShiftUpLeavesItScalingByDesign)
{
  const Display from = this->OnFace();
  this->Pointer.Press(zvtest::Right, from, zvtest::Shift);
  this->Pointer.Release(zvtest::Right);
  EXPECT_EQ(this->Box->State, OpenBox::IsScaling);
  EXPECT_EQ(this->Box->GetClicked(), 1);
  this->Pointer.MoveTo(Plus(from, 0, 30));
  EXPECT_GT(this->Box->GetBound1(), 5.0);
  this->Pointer.Release(zvtest::Middle); // the next one that counts
  EXPECT_EQ(this->Box->State, OpenBox::Free);
  EXPECT_EQ(this->Box->GetClicked(), 0);
  const std::vector<double> bounds = this->Now();
  this->Pointer.MoveTo(Plus(from, 0, 90));
  EXPECT_EQ(this->Now(), bounds);
}

TEST_F(BoxWidget, TheBoundsLagOneMoveBehind)
{
  const Display from = this->OnRightSphere();
  this->Pointer.Press(zvtest::Left, from);
  this->Pointer.MoveTo(Plus(from, 10, 0));
  EXPECT_EQ(this->Calculated(), Placed);
  this->Pointer.MoveTo(Plus(from, 20, 0));
  EXPECT_NEAR(this->Box->Bounds[1], 5.0 + 10 * this->Scale(), 1e-6);
  this->Pointer.Release(zvtest::Left);
  EXPECT_NEAR(this->Box->Bounds[1], 5.0 + 20 * this->Scale(), 1e-6);
}

TEST_F(BoxWidget, MovesWithoutAPressCalculateNothing)
{
  const int before = this->Box->Calculations;
  this->Pointer.MoveTo(this->OnFace());
  EXPECT_EQ(this->Box->Calculations, before);
  this->Pointer.Press(zvtest::Left, this->OnRightSphere());
  this->Pointer.MoveTo(this->OnFace());
  EXPECT_EQ(this->Box->Calculations, before + 2);
}

TEST_F(BoxWidget, EveryReleaseThatCountsCalculates)
{
  const int before = this->Box->Calculations;
  this->Pointer.Release(zvtest::Left, Beside());
  this->Pointer.Release(zvtest::Middle, Beside());
  EXPECT_EQ(this->Box->Calculations, before + 2);
  EXPECT_THAT(this->Told.Events(), IsEmpty());
  this->Pointer.Release(zvtest::Right, Beside(), zvtest::Shift);
  EXPECT_EQ(this->Box->Calculations, before + 3);
  // The base tells the end of a right drag even if there was none.
  EXPECT_THAT(this->Told.Names(), ElementsAre("EndInteractionEvent"));
}

TEST_F(BoxWidget, IsClickedWhileItsObserversAreTold)
{
  std::vector<int> clicked;
  zvtest::EventRecorder told;
  told.Watch(this->Box,
    { vtkCommand::StartInteractionEvent, vtkCommand::InteractionEvent,
      vtkCommand::EndInteractionEvent },
    [&](const zvtest::RecordedEvent&) { clicked.push_back(this->Box->GetClicked()); });
  const Display from = this->OnRightSphere();
  this->Pointer.Drag(zvtest::Left, from, Plus(from, 10, 0));
  EXPECT_THAT(clicked, ElementsAre(1, 1, 1));
  EXPECT_EQ(this->Box->GetClicked(), 0);
}

TEST_F(BoxWidget, AnAcceptedPressIsNotSeenBehindIt)
{
  zvtest::EventRecorder behind;
  behind.Watch(this->Scene.Interactor(), MouseEvents, 0.1f);
  const Display from = this->OnRightSphere();
  this->Pointer.Drag(zvtest::Left, from, Plus(from, 10, 0));
  EXPECT_THAT(behind.Events(), IsEmpty());
}

//------------------------------------------------------------------------------
TEST_F(BoxWidget, EnablingWithoutAnInteractorIsTheBasesError)
{
  const auto fresh = vtkSmartPointer<OpenBox>::Take(new OpenBox);
  fresh->SetEnabled(1);
  const auto messages = this->TakeMessages();
  ASSERT_EQ(messages.size(), 1u);
  EXPECT_NE(messages.front().find("vtkBoxWidget ("), std::string::npos);
  EXPECT_NE(
    messages.front().find("The interactor must be set prior to enabling"), std::string::npos);
  EXPECT_EQ(fresh->GetEnabled(), 0);
}

TEST_F(BoxWidget, DisablingEndsADrag)
{
  this->Pointer.Press(zvtest::Left, this->OnFace(), zvtest::Shift);
  this->Box->SetEnabled(0);
  EXPECT_EQ(this->Box->State, OpenBox::Free);
  EXPECT_EQ(this->Box->GetClicked(), 0);
  EXPECT_EQ(this->Scene.Renderer()->GetViewProps()->GetNumberOfItems(), 0);
  this->Box->SetEnabled(1);
  EXPECT_TRUE(this->LooksUntouched());
  this->Pointer.MoveTo(Plus(this->OnFace(), 50, 50), zvtest::Shift);
  EXPECT_EQ(this->Now(), Placed);
}

TEST_F(BoxWidget, LosingItsRendererDisablesIt)
{
  this->Box->SetCurrentRenderer(nullptr);
  EXPECT_EQ(this->Box->GetEnabled(), 0);
  EXPECT_EQ(this->Box->GetCurrentRenderer(), nullptr);
  EXPECT_EQ(this->Scene.Renderer()->GetViewProps()->GetNumberOfItems(), 0);
  this->Box->SetEnabled(1);
  EXPECT_EQ(this->Box->GetEnabled(), 1);
}

TEST_F(BoxWidget, ItsHandlersAreHarmlessWithoutAViewOrInteractor)
{
  const auto useAll = [this]()
  {
    this->Box->OnMouseMove();
    this->Box->OnLeftButtonDown();
    this->Box->OnLeftButtonUp();
    this->Box->OnMiddleButtonDown();
    this->Box->OnMiddleButtonUp();
    this->Box->OnRightButtonDown();
    this->Box->OnRightButtonUp();
  };
  this->Scene.Interactor()->SetEventInformation(200, 200, 0, 1);
  this->Pointer.Press(zvtest::Left, this->OnFace(), zvtest::Shift);
  ASSERT_EQ(this->Box->State, OpenBox::IsMoving);
  this->Scene.Window()->RemoveRenderer(this->Scene.Renderer());
  useAll();
  EXPECT_EQ(this->Box->State, OpenBox::Free);
  EXPECT_EQ(this->Box->GetClicked(), 0);
  this->Scene.DropWindow();
  useAll();
  this->Box->SetInteractor(nullptr);
  this->Box->State = OpenBox::IsMoving;
  useAll();
  EXPECT_EQ(this->Box->State, OpenBox::Free);
  this->ExpectNoMessage();
}

TEST_F(BoxWidget, AFlatBoxAndOneAtNoNumberAreSurvived)
{
  const double nan = std::numeric_limits<double>::quiet_NaN();
  for (double size : { 0.0, nan })
  {
    this->Box->PlaceWidget(size, size, size, size, size, size);
    this->Scene.Render();
    for (zvtest::Button button : { zvtest::Left, zvtest::Middle, zvtest::Right })
    {
      this->Pointer.Drag(button, { { 200, 200 } }, { { 230, 220 } }, zvtest::Shift, 2);
    }
    this->Scene.Render();
  }
  EXPECT_GT(this->Box->GetBound0(), this->Box->GetBound1());
  this->Box->PlaceWidget(-5, 5, -4, 4, -3, 3);
  EXPECT_EQ(this->Now(), Placed);
}

TEST_F(BoxWidget, AnObserverMayTakeItsInteractorAway)
{
  for (unsigned long event : { vtkCommand::EnableEvent, vtkCommand::StartInteractionEvent,
         vtkCommand::InteractionEvent, vtkCommand::EndInteractionEvent, vtkCommand::DisableEvent })
  {
    SCOPED_TRACE(vtkCommand::GetStringFromEventId(event));
    {
      zvtest::EventRecorder told;
      told.Watch(this->Box, { event },
        [this](const zvtest::RecordedEvent&)
        {
          this->Box->SetInteractor(nullptr);
          EXPECT_EQ(this->Box->GetInteractor(), this->Scene.Interactor()); // the handler goes on
        });
      this->UseUntilItHasNoInteractor();
      EXPECT_GE(told.Events().size(), 1u);
    }
    EXPECT_EQ(this->Box->GetInteractor(), nullptr);
    EXPECT_EQ(this->Box->GetEnabled(), 0);
    EXPECT_EQ(this->Scene.Renderer()->GetViewProps()->GetNumberOfItems(), 0);
    this->Box->PlaceWidget(-5, 5, -4, 4, -3, 3);
    this->Box->SetInteractor(this->Scene.Interactor());
    this->Box->SetEnabled(1);
  }
}

TEST_F(BoxWidget, AnObserverMayDisableIt)
{
  zvtest::EventRecorder told;
  told.Watch(this->Box, { vtkCommand::InteractionEvent },
    [this](const zvtest::RecordedEvent&) { this->Box->SetEnabled(0); });
  const Display from = this->OnRightSphere();
  this->Pointer.Drag(zvtest::Left, from, Plus(from, 20, 0), zvtest::NoModifier, 2);
  EXPECT_EQ(told.Events().size(), 1u);
  EXPECT_EQ(this->Box->GetEnabled(), 0);
}

TEST_F(BoxWidget, AnObserverMayDestroyTheInteractorOnItsWayToAnotherView)
{
  zvtest::Scene other;
  vtkWeakPointer<vtkRenderWindowInteractor> former = this->Scene.Interactor();
  zvtest::EventRecorder told;
  told.Watch(this->Box, { vtkCommand::DisableEvent },
    [this](const zvtest::RecordedEvent&) { this->Scene.DropInteractor(); });
  this->Box->SetInteractor(other.Interactor());
  EXPECT_EQ(former, nullptr);
  EXPECT_EQ(this->Box->GetInteractor(), other.Interactor());
  this->Box->SetEnabled(1);
  EXPECT_EQ(this->Box->GetEnabled(), 1);
}

TEST_F(BoxWidget, MayBeReleasedFromAnyOfItsEvents)
{
  for (unsigned long event : { vtkCommand::EnableEvent, vtkCommand::StartInteractionEvent,
         vtkCommand::InteractionEvent, vtkCommand::EndInteractionEvent, vtkCommand::DisableEvent })
  {
    SCOPED_TRACE(vtkCommand::GetStringFromEventId(event));
    vtkWeakPointer<OpenBox> alive = this->Box.Get();
    zvtest::EventRecorder told;
    told.Watch(this->Box, { event }, [this](const zvtest::RecordedEvent&) { this->Box = nullptr; });
    alive->SetEnabled(0);
    if (alive)
    {
      alive->SetEnabled(1);
    }
    const Display from = this->OnRightSphere();
    this->Pointer.Drag(zvtest::Left, from, Plus(from, 10, 0));
    EXPECT_EQ(alive, nullptr);
    this->Box = vtkSmartPointer<OpenBox>::Take(new OpenBox);
    this->Box->SetInteractor(this->Scene.Interactor());
    this->Box->SetPlaceFactor(1.0);
    this->Box->PlaceWidget(-5, 5, -4, 4, -3, 3);
    this->Box->SetEnabled(1);
  }
}

//------------------------------------------------------------------------------
TEST_F(BoxWidget, IsDrawnWithItsSpheresAndHighlightedOnlyWhenItTakesAPress)
{
  // The first press gives the spheres their size on the screen.
  this->Pointer.Press(zvtest::Left, this->OnRightSphere());
  this->Pointer.Release(zvtest::Left);
  const zvtest::Picture rest = this->Scene.RenderAndLook();
  const zvtest::Color sphere = rest.At(this->OnRightSphere());
  EXPECT_GT(sphere.Red, 200) << sphere;
  EXPECT_EQ(sphere.Red, sphere.Blue);
  EXPECT_TRUE(
    rest.HasNear(zvtest::Color::Grey(255), this->Pointer.At({ { 5, 4, 3 } }), 2)); // a corner
  this->Pointer.Press(zvtest::Left, this->OnFace());
  EXPECT_EQ(this->Scene.RenderAndLook().CountDifferent(rest), 0);
  this->Pointer.Release(zvtest::Left);
  this->Pointer.Press(zvtest::Left, this->OnRightSphere());
  // Beside the edge of the box that passes before the sphere.
  const zvtest::Color grabbed = this->Scene.Look().At(Plus(this->OnRightSphere(), 4, 4));
  EXPECT_GT(grabbed.Red, 120) << grabbed;
  EXPECT_LT(grabbed.Blue, 60) << grabbed;
  this->Pointer.Release(zvtest::Left);
  EXPECT_EQ(this->Scene.Look().CountDifferent(rest), 0);
  // With Shift the whole box is held, and goes along.
  const Display from = this->OnFace();
  this->Pointer.Press(zvtest::Left, from, zvtest::Shift);
  this->Pointer.MoveTo(Plus(from, 40, 30), zvtest::Shift);
  const Display corner = Plus(this->Pointer.At({ { 5, 4, 3 } }), 40, 30);
  EXPECT_TRUE(this->Scene.Look().HasNear({ 0, 255, 0 }, corner, 2));
}
