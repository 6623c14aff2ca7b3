#include "zvAreaWidget.h"

#include "zvCurveFixture.h"
#include "zvEvents.h"
#include "zvParametricSpline.h"
#include "zvUtils.h"

#include "vtkFollower.h"
#include "vtkParametricFunctionSource.h"
#include "vtkPropCollection.h"
#include "vtkProperty.h"
#include "vtkVectorText.h"

#include <gmock/gmock.h>

#include <cmath>
#include <cstdio>
#include <functional>
#include <limits>
#include <sstream>

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using zvtest::World;

namespace
{
class OpenArea : public zvtest::Open<zvAreaWidget>
{
public:
  static OpenArea* New() { return new OpenArea; }
  using zvAreaWidget::AreaActor;
  using zvAreaWidget::AreaText;
};

class AreaWidget : public zvtest::CurveTest<zvAreaWidget, OpenArea>
{
protected:
  /// A click at a world position as a host takes it: the position is where the pointer is.
  void Place(const World& position)
  {
    const zvtest::Display at = this->Pointer.At(position);
    this->Scene.Interactor()->SetEventPosition(at[0], at[1]);
    World copy = position;
    this->Curve->AddHandle(copy.data());
  }

  /// The square, closed by clicks.
  void PlaceSquare()
  {
    for (const World& corner : Square())
    {
      this->Place(corner);
    }
    this->Place(Square()[0]);
  }

  std::string Label() { return this->Curve->AreaText->GetText(); }

  static std::string LabelFor(double area)
  {
    char text[100];
    std::snprintf(text, sizeof(text), "%10.2lf mm^2", area);
    return text;
  }

  /// The area enclosed by the spline through the square.
  double SquareArea()
  {
    vtkNew<zvParametricSpline> spline;
    spline->SetPoints(PointsOf(Square()));
    spline->ClosedOn();
    vtkNew<vtkParametricFunctionSource> source;
    source->SetParametricFunction(spline);
    source->SetUResolution(500);
    source->Update();
    return zvUtils::CalculateArea(source->GetOutput());
  }
};
}

// ---- What it is, and how it starts

TEST_F(AreaWidget, WritesItsRevisionAfterTheParents)
{
  vtkNew<zvAreaWidget> widget;
  std::ostringstream text;
  widget->CollectRevisions(text);
  EXPECT_EQ(text.str(),
    "zvWidgets $Revision: 1.2 $\nzvSplineWidget $Revision: 1.2 $\nzvAreaWidget $Revision: 1.2 $\n");
}

TEST_F(AreaWidget, StartsWithTheseDefaults)
{
  EXPECT_EQ(this->Curve->GetState(), zvAreaWidget::Start);
  EXPECT_EQ(this->Curve->GetResolution(), 500);
  EXPECT_EQ(this->Curve->ParametricFunctionSource->GetUResolution(), 500);
  EXPECT_EQ(this->Curve->GetArea(), 0.0);
  EXPECT_EQ(this->Label(), " ");
  EXPECT_EQ(this->Curve->CurrentHandleIndex, -1);
  EXPECT_FALSE(this->Curve->GetInteraction());
  const double* color = this->Curve->AreaActor->GetProperty()->GetColor();
  EXPECT_THAT(std::vector<double>(color, color + 3), ElementsAre(1.0, 1.0, 0.0));
  const auto scale = static_cast<float>(0.01 * std::sqrt(3.0) * 1.7);
  const double* actual = this->Curve->AreaActor->GetScale();
  EXPECT_THAT(std::vector<double>(actual, actual + 3), ElementsAre(scale, scale, scale));
}

TEST_F(AreaWidget, PrintsTheAreaAfterTheFieldsOfTheParent)
{
  this->PlaceSquare();
  std::ostringstream text;
  this->Curve->PrintSelf(text, vtkIndent(2));
  std::ostringstream end;
  end << "  Number Of Handles: 4\n  Closed: On\n  Area: " << this->Curve->GetArea() << "\n";
  ASSERT_GT(text.str().size(), end.str().size());
  EXPECT_EQ(text.str().substr(text.str().size() - end.str().size()), end.str());
}

// ---- Enabling

TEST_F(AreaWidget, EnablingShowsTheLabelToTheCamera)
{
  zvtest::EventRecorder recorder;
  this->Curve->InitializeHandles(PointsOf(Square()));
  this->RecordWithRenders(recorder);
  this->Curve->SetEnabled(1);
  EXPECT_EQ(recorder.Names(), (Names{ "EnableEvent", "RenderEvent", "RenderEvent" }));
  EXPECT_EQ(this->Curve->GetEnabled(), 1);
  EXPECT_TRUE(this->IsShown(this->Curve->AreaActor));
  EXPECT_TRUE(this->IsShown(this->Curve->LineActor));
  EXPECT_TRUE(this->IsShown(this->Curve->HandleActor));
  EXPECT_EQ(this->Curve->AreaActor->GetCamera(), this->Scene.Renderer()->GetActiveCamera());
  recorder.Clear();
  this->Curve->SetEnabled(1);
  EXPECT_THAT(recorder.Names(), IsEmpty());
}

TEST_F(AreaWidget, DisablingTakesEverythingOut)
{
  this->Show(Square());
  zvtest::EventRecorder recorder;
  this->RecordWithRenders(recorder);
  this->Curve->SetEnabled(0);
  EXPECT_EQ(recorder.Names(), (Names{ "DisableEvent", "RenderEvent", "RenderEvent" }));
  EXPECT_FALSE(this->IsShown(this->Curve->AreaActor));
  EXPECT_FALSE(this->IsShown(this->Curve->LineActor));
  EXPECT_FALSE(this->IsShown(this->Curve->HandleActor));
  EXPECT_EQ(this->Curve->GetCurrentRenderer(), nullptr);
  recorder.Clear();
  this->Curve->SetEnabled(0);
  EXPECT_THAT(recorder.Names(), IsEmpty());
}

TEST_F(AreaWidget, ObservesEachEventTwiceByDesign)
{
  this->Show(Square(), true);
  zvtest::EventRecorder recorder;
  this->RecordWithRenders(recorder);
  const zvtest::Display corner = this->Pointer.At({ { 6, 6, 0 } });
  // What is not aborted comes twice,
  this->Pointer.WheelForward(corner);
  this->Pointer.WheelBackward(corner);
  EXPECT_EQ(recorder.Count(vtkCommand::RenderEvent), 4);
  // what is aborted once.
  recorder.Clear();
  this->Pointer.Drag(zvtest::Left, corner, { { 200, 200 } });
  EXPECT_EQ(recorder.Names(),
    (Names{ "StartInteractionEvent", "RenderEvent", "InteractionEvent", "RenderEvent",
      "EndInteractionEvent", "RenderEvent" }));
  this->Curve->SetEnabled(0);
  for (unsigned long event : zvEvents::Handle)
  {
    EXPECT_FALSE(this->Scene.Interactor()->HasObserver(event, this->Curve->EventCallbackCommand));
  }
}

TEST_F(AreaWidget, EachOfTheNineEventsHasTwoObserversByDesign)
{
  this->Show(Square(), true);
  int calls = 0;
  vtkCallbackCommand* command = this->Curve->EventCallbackCommand;
  command->SetClientData(&calls);
  command->SetCallback(
    [](vtkObject*, unsigned long, void* clientData, void*) { ++*static_cast<int*>(clientData); });
  const auto countOf = [this, &calls](unsigned long event)
  {
    calls = 0;
    this->Scene.Interactor()->InvokeEvent(event);
    return calls;
  };
  for (unsigned long event : zvEvents::Handle)
  {
    EXPECT_EQ(countOf(event), 2) << vtkCommand::GetStringFromEventId(event);
  }
  EXPECT_EQ(countOf(vtkCommand::EnterEvent), 0);
  this->Curve->SetEnabled(0);
  for (unsigned long event : zvEvents::Handle)
  {
    EXPECT_EQ(countOf(event), 0) << vtkCommand::GetStringFromEventId(event);
  }
}

TEST_F(AreaWidget, HandlesTwiceWhatItDoesNotAbortByDesign)
{
  class Counted : public zvAreaWidget
  {
  public:
    void SizeHandles() override { ++this->Times; }
    int Times = 0;
  };
  auto area = vtkSmartPointer<Counted>::Take(new Counted);
  area->SetInteractor(this->Scene.Interactor());
  area->InitializeHandles(PointsOf(Square()));
  area->SetEnabled(1);
  const zvtest::Display corner = this->Pointer.At({ { 6, 6, 0 } });
  struct Row
  {
    const char* Event;
    std::function<void()> Do;
    int Times;
  };
  const Row rows[] = {
    { "wheel forward", [&] { this->Pointer.WheelForward(corner); }, 2 },
    { "wheel backward", [&] { this->Pointer.WheelBackward(corner); }, 2 },
    { "right release", [&] { this->Pointer.Release(zvtest::Right, corner); }, 2 },
    { "left press", [&] { this->Pointer.Press(zvtest::Left, corner); }, 0 },
    { "left release", [&] { this->Pointer.Release(zvtest::Left, corner); }, 0 }, // never sizes
    { "middle press", [&] { this->Pointer.Press(zvtest::Middle, corner); }, 0 },
    { "middle release", [&] { this->Pointer.Release(zvtest::Middle, corner); }, 1 },
  };
  for (const Row& row : rows)
  {
    area->Times = 0;
    row.Do();
    EXPECT_EQ(area->Times, row.Times) << row.Event;
  }
  area->SetInteraction(true); // it counts as off: on attaches it a third time
  area->Times = 0;
  this->Pointer.Release(zvtest::Right, corner);
  EXPECT_EQ(area->Times, 3);
  area->SetInteraction(false); // and off detaches all
  area->Times = 0;
  this->Pointer.Release(zvtest::Right, corner);
  EXPECT_EQ(area->Times, 0);
}

TEST_F(AreaWidget, TakesTheObserversOfBothLayersAwayTogether)
{
  this->Show(Square(), true);
  this->Curve->SetEnabled(0);
  this->Curve->SetEnabled(1);
  zvtest::EventRecorder recorder;
  this->RecordWithRenders(recorder);
  this->Pointer.WheelForward({ { 100, 100 } });
  EXPECT_EQ(recorder.Count(vtkCommand::RenderEvent), 2);
}

TEST_F(AreaWidget, HasNoTracesOfItsOwn)
{
  this->Curve->DebugMode = true;
  this->PlaceSquare();
  this->Pointer.Drag(zvtest::Left, this->Pointer.At({ { 6, 6, 0 } }), { { 200, 200 } });
  this->Pointer.WheelForward({ { 100, 100 } });
  this->Curve->SetEnabled(0);
  EXPECT_EQ(this->TakeOutput(), "");
}

// ---- AddHandle

TEST_F(AreaWidget, AddHandleStartsFromNothing)
{
  zvtest::EventRecorder recorder;
  this->RecordWithRenders(recorder);
  this->Curve->SetState(zvAreaWidget::Outside);
  this->Place({ { 2, 3, 0 } });
  this->ExpectHandles({ { { 2, 3, 0 } } });
  EXPECT_EQ(this->Curve->HandlePolyData->GetNumberOfPoints(), 1);
  EXPECT_EQ(this->Curve->HandlePolyData->GetNumberOfVerts(), 1);
  EXPECT_EQ(this->Curve->GetState(), zvAreaWidget::Outside);
  EXPECT_EQ(this->Curve->GetEnabled(), 0);
  EXPECT_EQ(this->Curve->GetCurrentRenderer(), this->Scene.Renderer());
  EXPECT_TRUE(this->IsShown(this->Curve->HandleActor));
  EXPECT_TRUE(this->IsShown(this->Curve->LineActor));
  EXPECT_FALSE(this->IsShown(this->Curve->AreaActor));
  EXPECT_EQ(this->Curve->HandleActor->GetProperty(), this->Curve->GetHandleProperty());
  EXPECT_EQ(this->Curve->LineActor->GetProperty(), this->Curve->GetLineProperty());
  EXPECT_EQ(recorder.Names(), (Names{ "RenderEvent" }));
  EXPECT_TRUE(this->Scene.Look().HasNear(Red, this->Scene.At({ { 2, 3, 0 } }), 2));
}

TEST_F(AreaWidget, AddHandleAtTheOnlyHandleAppendsAnother)
{
  this->Place({ { 2, 3, 0 } });
  this->Place({ { 2, 3, 0 } });
  EXPECT_EQ(this->Curve->GetNumberOfHandles(), 2);
  EXPECT_EQ(this->Curve->GetClosed(), 0);
}

TEST_F(AreaWidget, AddHandleOnTheFirstHandleClosesEnablesAndMeasures)
{
  for (const World& corner : Square())
  {
    this->Place(corner);
  }
  EXPECT_EQ(this->Curve->GetArea(), 0.0);
  EXPECT_EQ(this->Curve->GetEnabled(), 0);
  this->Curve->SetState(zvAreaWidget::Moving);
  this->Place(Square()[0]);
  EXPECT_EQ(this->Curve->GetNumberOfHandles(), 4);
  EXPECT_EQ(this->Curve->GetClosed(), 1);
  EXPECT_EQ(this->Curve->IsClosed(), 1);
  EXPECT_EQ(this->Curve->GetEnabled(), 1);
  EXPECT_EQ(this->Curve->GetState(), zvAreaWidget::Start);
  EXPECT_EQ(this->Curve->CurrentHandleIndex, -1);
  EXPECT_GT(this->Curve->GetArea(), 144.0); // the spline bulges out of the square
  EXPECT_LT(this->Curve->GetArea(), M_PI * 72.0);
  EXPECT_NEAR(this->Curve->GetArea(), this->SquareArea(), 1e-6);
  EXPECT_EQ(this->Label(), LabelFor(this->Curve->GetArea()));
}

TEST_F(AreaWidget, ClosingMeasuresAWidgetThatIsEnabledAlready)
{
  this->Curve->SetEnabled(1);
  this->PlaceSquare();
  EXPECT_EQ(this->Curve->IsClosed(), 1);
  EXPECT_NEAR(this->Curve->GetArea(), this->SquareArea(), 1e-6);
}

TEST_F(AreaWidget, AddHandleOnAnotherHandleLeavesEverything)
{
  for (const World& corner : Square())
  {
    this->Place(corner);
  }
  this->Curve->SetState(zvAreaWidget::Outside);
  this->Curve->CurrentHandleIndex = 3;
  zvtest::EventRecorder recorder;
  this->RecordWithRenders(recorder);
  this->Place(Square()[2]);
  this->ExpectHandles(Square());
  EXPECT_EQ(this->Curve->GetClosed(), 0);
  EXPECT_EQ(this->Curve->GetState(), zvAreaWidget::Outside);
  EXPECT_EQ(this->Curve->CurrentHandleIndex, -1);
  EXPECT_THAT(recorder.Names(), IsEmpty());
}

TEST_F(AreaWidget, GrowsOnAfterAnErasure)
{
  this->PlaceSquare();
  this->Curve->EraseHandle(3);
  EXPECT_EQ(this->Curve->HandlePolyData->GetNumberOfPoints(), 4);
  this->Place({ { 0, 8, 0 } });
  this->ExpectHandles({ { { -6, -6, 0 } }, { { 6, -6, 0 } }, { { 6, 6, 0 } }, { { 0, 8, 0 } } });
  EXPECT_EQ(this->Curve->HandlePolyData->GetNumberOfPoints(), 4);
  EXPECT_EQ(this->Curve->HandlePolyData->GetNumberOfVerts(), 4);
}

// ---- The area and its label

TEST_F(AreaWidget, TheLabelKeepsItsPaddingAndSitsAtTheMeanOfTheHandles)
{
  this->Show({ { { -6, -6, 0 } }, { { 6, -6, 0 } }, { { 6, 6, 3 } } }, true);
  this->Curve->UpdateAreaLabel();
  EXPECT_EQ(this->Label(), "      0.00 mm^2");
  const double* position = this->Curve->AreaActor->GetPosition();
  EXPECT_THAT(std::vector<double>(position, position + 3), ElementsAre(2.0, -2.0, 1.0));
}

TEST_F(AreaWidget, TheAreaIsThatOfTheLineAsItWasDrawn)
{
  this->Show(Square(), true);
  this->Curve->CalculateArea();
  EXPECT_NEAR(this->Curve->GetArea(), this->SquareArea(), 1e-6);
  const double area = this->Curve->GetArea();
  double from[3] = { 0, 0, 0 };
  double to[3] = { 3, 3, 0 };
  this->Curve->CurrentHandleIndex = 2;
  this->Curve->MovePoint(from, to);
  this->Curve->BuildRepresentation();
  this->Curve->CalculateArea();
  EXPECT_EQ(this->Curve->GetArea(), area);
  this->Scene.Render();
  this->Curve->CalculateArea();
  EXPECT_GT(this->Curve->GetArea(), area + 10.0);
}

TEST_F(AreaWidget, AnOpenOrUndrawnLineHasNoArea)
{
  this->Curve->CalculateArea();
  EXPECT_EQ(this->Curve->GetArea(), 0.0);
  this->Show(Square());
  this->Curve->CalculateArea();
  EXPECT_EQ(this->Curve->GetArea(), 0.0);
  EXPECT_EQ(this->Label(), "      0.00 mm^2");
  this->Pointer.Drag(zvtest::Left, this->Pointer.At({ { 6, 6, 0 } }), { { 200, 200 } });
  EXPECT_EQ(this->Curve->GetArea(), 0.0);
}

TEST_F(AreaWidget, TheAreaDoesNotDependOnTheDirectionOfThePlane)
{
  this->Show({ { { 3, -6, -6 } }, { { 3, 6, -6 } }, { { 3, 6, 6 } }, { { 3, -6, 6 } } }, true);
  this->Curve->CalculateArea();
  EXPECT_NEAR(this->Curve->GetArea(), this->SquareArea(), 1e-3);
}

TEST_F(AreaWidget, ADragOfAHandleIsMeasuredOneMotionBehindByDesign)
{
  this->PlaceSquare();
  const double area = this->Curve->GetArea();
  this->Pointer.Press(zvtest::Left, this->Pointer.At({ { 6, 6, 0 } }));
  this->Pointer.MoveTo(this->Pointer.At({ { 8, 8, 0 } }));
  EXPECT_NEAR(this->Curve->GetArea(), area, 1e-9);
  this->Pointer.MoveTo(this->Pointer.At({ { 8, 8, 0 } }));
  EXPECT_GT(this->Curve->GetArea(), area + 10.0);
  EXPECT_EQ(this->Label(), LabelFor(this->Curve->GetArea()));
}

TEST_F(AreaWidget, ATranslationMovesTheLabelAndNotTheArea)
{
  this->PlaceSquare();
  const double area = this->Curve->GetArea();
  const zvtest::Display from = this->Pointer.At({ { 6, -6, 0 } });
  this->Pointer.Drag(zvtest::Middle, from, { { from[0] - 20, from[1] + 10 } });
  EXPECT_EQ(this->Curve->GetArea(), area);
  const double* position = this->Curve->AreaActor->GetPosition();
  EXPECT_NEAR(position[0], -20.0 * this->PixelSize(), 1e-6);
  EXPECT_NEAR(position[1], 10.0 * this->PixelSize(), 1e-6);
}

TEST_F(AreaWidget, ScalingLeavesTheAreaAsItWasByDesign)
{
  this->PlaceSquare();
  const double area = this->Curve->GetArea();
  this->Curve->SetState(zvAreaWidget::Scaling);
  this->Pointer.MoveTo({ { 200, 220 } });
  EXPECT_GT(this->HandleAt(2)[0], 6.1);
  EXPECT_EQ(this->Curve->GetArea(), area);
}

TEST_F(AreaWidget, TheLabelKeepsItsSizeOnScreenWhenTheWheelTurns)
{
  this->PlaceSquare();
  const double before = this->Curve->AreaActor->GetScale()[0];
  this->Scene.Renderer()->GetActiveCamera()->Zoom(2.0);
  this->Pointer.WheelForward({ { 200, 200 } });
  EXPECT_NEAR(this->Curve->AreaActor->GetScale()[0], before / 2.0, 1e-6 * before);
  this->Scene.Renderer()->GetActiveCamera()->Zoom(0.25);
  this->Pointer.WheelBackward({ { 200, 200 } });
  EXPECT_NEAR(this->Curve->AreaActor->GetScale()[0], before * 2.0, 1e-6 * before);
}

TEST_F(AreaWidget, WithoutAWindowTheLabelTakesTheSizeOfThePlacement)
{
  this->PlaceSquare();
  this->Scene.DropRenderers();
  this->Curve->UpdateAreaLabel();
  const auto scale = static_cast<float>(0.01 * std::sqrt(3.0) * 1.7);
  EXPECT_EQ(this->Curve->AreaActor->GetScale()[0], scale);
}

// ---- The mouse

TEST_F(AreaWidget, APressOnNothingNeitherAddsNorCloses)
{
  for (bool closed : { false, true })
  {
    this->Show(Square(), closed);
    zvtest::EventRecorder recorder;
    this->RecordWithRenders(recorder);
    recorder.Watch(this->Scene.Interactor(), zvtest::MouseEvents);
    this->Pointer.Press(zvtest::Left, this->Pointer.At({ { 0, 0, 0 } }));
    EXPECT_EQ(this->Curve->GetState(), zvAreaWidget::Outside);
    EXPECT_EQ(this->Curve->CurrentHandleIndex, -1);
    EXPECT_EQ(this->Curve->GetClosed(), closed ? 1 : 0);
    this->ExpectHandles(Square());
    EXPECT_EQ(recorder.Names(), (Names{ "LeftButtonPressEvent" }));
  }
}

TEST_F(AreaWidget, APressOnTheFirstHandleOfAnOpenCurveOnlyDragsIt)
{
  this->Show(Square());
  zvtest::EventRecorder recorder;
  this->RecordWithRenders(recorder);
  recorder.Watch(this->Scene.Interactor(), zvtest::MouseEvents);
  this->Pointer.Press(zvtest::Left, this->Pointer.At({ { -6, -6, 0 } }));
  EXPECT_EQ(this->Curve->GetState(), zvAreaWidget::Moving);
  EXPECT_EQ(this->Curve->CurrentHandleIndex, 0);
  EXPECT_EQ(this->Curve->GetClosed(), 0);
  EXPECT_EQ(recorder.Names(), (Names{ "StartInteractionEvent", "RenderEvent" }));
  this->Pointer.MoveTo(this->Pointer.At({ { -3, -5, 0 } }));
  EXPECT_NEAR(this->HandleAt(0)[0], -3.0, 2.0 * this->PixelSize());
}

TEST_F(AreaWidget, APressOnTheLineInsertsAHandleAndDragsIt)
{
  this->Show(Square(), true);
  zvtest::EventRecorder recorder;
  this->RecordWithRenders(recorder);
  recorder.Watch(this->Scene.Interactor(), zvtest::MouseEvents);
  this->Pointer.Press(zvtest::Left, this->Pointer.At(this->OnLine(0.875)));
  EXPECT_EQ(this->Curve->GetNumberOfHandles(), 5);
  EXPECT_EQ(this->Curve->CurrentHandleIndex, 4); // in the closing segment
  EXPECT_EQ(this->Curve->GetState(), zvAreaWidget::Moving);
  EXPECT_EQ(recorder.Names(), (Names{ "RenderEvent", "StartInteractionEvent", "RenderEvent" }));
}

TEST_F(AreaWidget, ALeftReleaseForgetsTheHandleSoAMiddleDragMovesAll)
{
  this->Show(Square(), true);
  this->Pointer.Press(zvtest::Left, this->Pointer.At({ { 6, 6, 0 } }));
  zvtest::EventRecorder recorder;
  this->RecordWithRenders(recorder);
  recorder.Watch(this->Scene.Interactor(), zvtest::MouseEvents);
  this->Curve->CurveGrabbed = true;
  this->Curve->HighlightLine(1);
  this->Pointer.Release(zvtest::Left);
  EXPECT_EQ(recorder.Names(), (Names{ "EndInteractionEvent", "RenderEvent" }));
  EXPECT_EQ(this->Curve->CurrentHandleIndex, -1);
  EXPECT_FALSE(this->Curve->CurveGrabbed);
  EXPECT_EQ(this->Curve->GetState(), zvAreaWidget::Start);
  EXPECT_EQ(this->Curve->LineActor->GetProperty(), this->Curve->GetLineProperty());
  const zvtest::Display from = this->Pointer.At({ { 6, -6, 0 } });
  this->Pointer.Drag(zvtest::Middle, from, { { from[0], from[1] + 10 } });
  std::vector<World> expected = Square();
  for (World& handle : expected)
  {
    handle[1] += 10.0 * this->PixelSize();
  }
  this->ExpectHandles(expected, 1e-6);
}

TEST_F(AreaWidget, ReleasesInStartAndOutsideAndTheRightButtonAreLeftToOthers)
{
  this->Show(Square(), true);
  for (int state : { zvAreaWidget::Start, zvAreaWidget::Outside })
  {
    this->Curve->SetState(state);
    zvtest::EventRecorder recorder;
    this->RecordWithRenders(recorder);
    recorder.Watch(this->Scene.Interactor(), zvtest::MouseEvents);
    this->Pointer.Release(zvtest::Left);
    this->Pointer.Release(zvtest::Middle);
    this->Pointer.MoveTo({ { 150, 150 } });
    this->Pointer.Press(zvtest::Right, { { 150, 150 } });
    this->Pointer.Release(zvtest::Right);
    EXPECT_EQ(this->Curve->GetState(), state);
    EXPECT_EQ(recorder.Names(),
      (Names{ "LeftButtonReleaseEvent", "MiddleButtonReleaseEvent", "MouseMoveEvent",
        "RightButtonPressEvent", "RightButtonReleaseEvent" }));
  }
}

TEST_F(AreaWidget, TheLabelFollowsTheHandlesInEveryDraggingState)
{
  for (int state :
    { zvAreaWidget::Moving, zvAreaWidget::Scaling, zvAreaWidget::Spinning, zvAreaWidget::Placing })
  {
    this->Show({ { { -6, -6, 0 } }, { { 6, -6, 0 } }, { { 6, 6, 3 } } }, true);
    this->Curve->AreaActor->SetPosition(9.0, 9.0, 9.0);
    this->Curve->SetState(state);
    zvtest::EventRecorder recorder;
    this->RecordWithRenders(recorder);
    recorder.Watch(this->Scene.Interactor(), zvtest::MouseEvents);
    this->Pointer.MoveTo({ { 170, 160 } });
    EXPECT_EQ(recorder.Names(), (Names{ "InteractionEvent", "RenderEvent" }));
    this->Curve->CalculateCentroid();
    for (int axis = 0; axis < 3; ++axis)
    {
      EXPECT_EQ(this->Curve->AreaActor->GetPosition()[axis], this->Curve->Centroid[axis]);
    }
  }
}

// ---- What is seen

TEST_F(AreaWidget, TheLabelIsSeenInYellowWhereTheHandlesAre)
{
  this->PlaceSquare();
  const zvtest::Picture picture = this->Scene.RenderAndLook();
  const zvtest::Display middle = this->Pointer.At({ { 0, 0, 0 } });
  // The text runs to the right of its place, after its padding.
  const zvtest::Region beside{ { { middle[0], middle[1] - 10 } },
    { { middle[0] + 170, middle[1] + 30 } } };
  EXPECT_GT(picture.Count(Yellow, beside), 100);
  EXPECT_EQ(picture.Count(Yellow), picture.Count(Yellow, beside));
}

TEST_F(AreaWidget, TheLabelIsSeenInTheNewPlaceAtEachMove)
{
  this->PlaceSquare();
  this->Scene.Render();
  const zvtest::Display from = this->Pointer.At({ { 6, -6, 0 } });
  this->Pointer.Press(zvtest::Middle, from);
  this->Pointer.MoveTo({ { from[0] - 60, from[1] + 60 } });
  const zvtest::Picture picture = this->Scene.Look(); // what the handler itself drew
  const zvtest::Display middle = this->Pointer.At({ { 0, 0, 0 } });
  const zvtest::Region moved{ { { middle[0] - 60, middle[1] + 50 } },
    { { middle[0] + 110, middle[1] + 90 } } };
  EXPECT_GT(picture.Count(Yellow, moved), 100);
  EXPECT_EQ(picture.Count(Yellow), picture.Count(Yellow, moved));
}

// ---- Curves that are hardly any

TEST_F(AreaWidget, DegenerateCurvesBearEverything)
{
  const double NaN = std::numeric_limits<double>::quiet_NaN();
  const std::vector<std::vector<World>> curves = { {}, { { { 1, 2, 0 } } },
    { { { 1, 2, 0 } }, { { 4, 2, 0 } } }, std::vector<World>(7, { { 1, 2, 0 } }),
    std::vector<World>(3, { { NaN, NaN, NaN } }),
    { { { 1, 2, 0 } }, { { NaN, 0, 0 } }, { { 4, 5, 0 } } } };
  for (const auto& handles : curves)
  {
    for (bool closed : { false, true })
    {
      this->Curve = vtkSmartPointer<OpenWidget>::Take(OpenWidget::New());
      this->Curve->SetInteractor(this->Scene.Interactor());
      this->Show(handles, closed);
      this->Curve->CalculateArea();
      EXPECT_NEAR(this->Curve->GetArea(), 0.0, 1e-6);
      for (int state = zvAreaWidget::Moving; state <= zvAreaWidget::Placing; ++state)
      {
        this->Curve->SetState(state);
        this->Pointer.MoveTo({ { 180, 190 } });
        this->Pointer.MoveTo({ { 190, 190 } });
      }
      // Nothing runs across the view.
      EXPECT_EQ(this->Scene.RenderAndLook().Count({ 0, 0, 0 }, { { { 0, 0 } }, { { 99, 399 } } }),
        100 * 400);
      this->Pointer.Release(zvtest::Left);
      this->Pointer.WheelForward({ { 180, 190 } });
      this->Pointer.Drag(zvtest::Left, this->Pointer.At({ { 1, 2, 0 } }), { { 190, 190 } });
      this->Pointer.Drag(zvtest::Middle, this->Pointer.At({ { 1, 2, 0 } }), { { 30, 20 } });
    }
  }
}

TEST_F(AreaWidget, TwoHandlesCanBeClosed)
{
  this->Place({ { -6, 0, 0 } });
  this->Place({ { 6, 0, 0 } });
  this->Place({ { -6, 0, 0 } });
  EXPECT_EQ(this->Curve->GetNumberOfHandles(), 2);
  EXPECT_EQ(this->Curve->GetClosed(), 1);
  EXPECT_NEAR(this->Curve->GetArea(), 0.0, 1e-6);
}

// ---- Life and death

TEST_F(AreaWidget, DeletedWhileEnabledLeavesNothingBehind)
{
  const zvtest::Picture empty = this->Scene.RenderAndLook();
  const int props = this->Scene.Renderer()->GetViewProps()->GetNumberOfItems();
  this->PlaceSquare();
  vtkSmartPointer<vtkCommand> command = this->Curve->EventCallbackCommand;
  this->Curve = nullptr;
  EXPECT_EQ(this->Scene.Renderer()->GetViewProps()->GetNumberOfItems(), props);
  EXPECT_EQ(this->Scene.Look().CountDifferent(empty), 0);
  for (unsigned long event : zvEvents::Handle)
  {
    EXPECT_FALSE(this->Scene.Interactor()->HasObserver(event, command));
  }
  this->Pointer.Drag(zvtest::Left, { { 100, 100 } }, { { 200, 200 } });
}

TEST_F(AreaWidget, DeletedBeforeItIsClosedTakesItsHandlesWithIt)
{
  const int props = this->Scene.Renderer()->GetViewProps()->GetNumberOfItems();
  this->Place({ { 1, 1, 0 } });
  this->Place({ { 4, 1, 0 } });
  this->Curve = nullptr;
  EXPECT_EQ(this->Scene.Renderer()->GetViewProps()->GetNumberOfItems(), props);
}

TEST_F(AreaWidget, OutlivesWhatItWasShownIn)
{
  this->PlaceSquare();
  const zvtest::Display corner = this->Pointer.At({ { 6, 6, 0 } });
  this->Scene.DropRenderers();
  this->Pointer.Drag(zvtest::Left, corner, { { 200, 200 } });
  this->Pointer.WheelForward(corner);
  this->Curve->SetState(zvAreaWidget::Moving);
  this->Pointer.MoveTo({ { 210, 200 } });
  this->Scene.DropInteractor();
  this->Scene.DropWindow();
  EXPECT_EQ(this->Curve->GetInteractor(), nullptr);
  EXPECT_EQ(this->Curve->GetEnabled(), 0);
  this->Curve->OnLeftButtonDown();
  EXPECT_EQ(this->Curve->GetState(), zvAreaWidget::Outside);
  this->Curve->SetState(zvAreaWidget::Moving);
  this->Curve->OnMouseMove();
  this->Curve->OnLeftButtonUp();
  EXPECT_EQ(this->Curve->GetState(), zvAreaWidget::Start);
  this->Curve->OnMouseWheelForward();
  this->Curve->OnMouseWheelBackward();
}
