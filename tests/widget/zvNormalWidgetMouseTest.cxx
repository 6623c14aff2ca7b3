// How a user places a normal in the slice viewers and drags it, and what is seen of it.

#include "zvNormalFixture.h"

#include <gmock/gmock.h>

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using zvtest::Display;
using zvtest::World;

namespace
{
const zvtest::Color Red{ 255, 0, 0 };
constexpr double Pixel = 0.2; // millimetres, generously

// The viewer's states, which are its own.
constexpr int ViewerStart = 0;
constexpr int ViewerPushing = 3;

class NormalWidgetMouse : public NormalWidgetTest
{
protected:
  static World ExpectedAfter(const zvtest::Scene& scene, const World& start, const Display& from,
    const Display& to, const double* depth)
  {
    const World at = ToWorld(depth);
    return start + scene.WorldAt(to, at) - scene.WorldAt(from, at);
  }

  static Display Plus(const Display& position, int x, int y)
  {
    return { { position[0] + x, position[1] + y } };
  }

  /// In the Z viewer, beside all parts and the lines of the cross.
  Display OnImage() { return this->Z->Mouse.At({ { 33, 7, 40 } }); }

  std::array<int, 2> Cross(OpenViewer* viewer)
  {
    std::array<int, 2> index;
    viewer->GetCrossIndex(index.data());
    return index;
  }

  bool IsHighlighted(vtkActor* actor)
  {
    return actor->GetProperty() == this->Normal->SelectedNormalProperty;
  }
};
}

TEST_F(NormalWidgetMouse, TheFirstClickShowsTheFirstConeOnly)
{
  this->Click(*this->Z, First);
  EXPECT_TRUE(IsPoint(this->Point1().data(), First, Pixel));
  EXPECT_EQ(this->Point2(), this->Point1());
  EXPECT_EQ(this->CountViewsWith(this->Normal->Cone1Actor), 4);
  EXPECT_EQ(this->CountViewsWith(this->Normal->Cone2Actor), 0);
  EXPECT_EQ(this->CountViewsWith(this->Normal->LineActor), 0);
  EXPECT_EQ(this->Normal->GetState(), zvNormalWidget::Adding);
}

TEST_F(NormalWidgetMouse, TheSecondClickShowsLineAndBothCones)
{
  this->Place();
  EXPECT_TRUE(IsPoint(this->Point1().data(), First, Pixel));
  EXPECT_TRUE(IsPoint(this->Point2().data(), Second, Pixel));
  EXPECT_TRUE(IsPoint(this->Direction().data(), { { 0.8, 0.6, 0 } }, 0.02));
  for (vtkProp* part : { this->Normal->LineActor.Get(), this->Normal->Cone1Actor.Get(),
         this->Normal->Cone2Actor.Get() })
  {
    EXPECT_EQ(this->CountViewsWith(part), 4);
  }
  EXPECT_EQ(this->Normal->GetState(), zvNormalWidget::Start);
}

TEST_F(NormalWidgetMouse, APointIsPlacedInTheDepthOfTheSlice)
{
  this->Z->Viewer->SetSliceIndex(25);
  this->Z->Scene.Render();
  this->Click(*this->Z, { { 10, 10, 25 } });
  EXPECT_TRUE(IsPoint(this->Point1().data(), { { 10, 10, 25 } }, Pixel));
}

TEST_F(NormalWidgetMouse, APressThatPlacesTellsNothingAndRendersTheFourViews)
{
  this->Watch();
  this->WatchRenders();
  const std::array<int, 2> cross = this->Cross(this->Z->Viewer);
  this->Z->Mouse.Press(zvtest::Left, this->Z->Mouse.At(First));
  EXPECT_THAT(this->Told.Events(), IsEmpty());
  EXPECT_EQ(this->Renders.Events().size(), 5u); // and once more by the viewer
  EXPECT_EQ(this->Z->Viewer->GetState(), ViewerStart);
  EXPECT_EQ(this->Cross(this->Z->Viewer), cross);
}

TEST_F(NormalWidgetMouse, AReleaseWhilePlacingTellsItsEndAndGoesOnPlacing)
{
  this->Z->Mouse.Press(zvtest::Left, this->Z->Mouse.At(First));
  this->Watch();
  this->WatchRenders();
  this->Z->Mouse.Release(zvtest::Left);
  EXPECT_THAT(this->Told.Names(), ElementsAre("EndInteractionEvent"));
  EXPECT_EQ(this->Renders.Events().size(), 5u);
  EXPECT_EQ(this->Normal->GetState(), zvNormalWidget::Adding);
  EXPECT_EQ(this->Normal->Cone1Actor->GetProperty(), this->Normal->NormalProperty.Get());
}

TEST_F(NormalWidgetMouse, MovesWhilePlacingDoNothing)
{
  this->Click(*this->Z, First);
  this->Watch();
  this->WatchRenders();
  const World first = this->Point1();
  this->Z->Mouse.MoveTo(this->OnImage());
  EXPECT_EQ(this->Point1(), first);
  EXPECT_THAT(this->Told.Events(), IsEmpty());
  EXPECT_THAT(this->Renders.Events(), IsEmpty());
}

TEST_F(NormalWidgetMouse, TwoClicksOnOnePlaceSkipTheDivision)
{
  this->X->Viewer->SetSliceIndex(0); // the second click meets the cone of the first otherwise
  const Display at = this->Z->Mouse.At(First);
  this->Z->Mouse.Press(zvtest::Left, at);
  this->Z->Mouse.Release(zvtest::Left);
  World first = this->Point1();
  this->Normal->AddHandle(first.data());
  EXPECT_TRUE(IsPoint(this->Normal->Cone1Source->GetDirection(), { { 0, 0, 0 } }));
  EXPECT_TRUE(IsPoint(this->Normal->Cone2Source->GetDirection(), { { 0, 0, 0 } }));
  EXPECT_EQ(this->Direction(), (World{ { 0, 0, 0 } }));
  EXPECT_EQ(this->Normal->GetState(), zvNormalWidget::Start);
}

TEST_F(NormalWidgetMouse, PointsMayBePlacedInDifferentViewers)
{
  this->Click(*this->Z, First);
  EXPECT_EQ(this->Normal->GetViewerWidgetCurrent(), this->Z->Viewer.Get());
  const World inX{ { 40, 30, 8 } };
  this->X->Mouse.MoveTo(this->X->Mouse.At({ { 40, 33, 8 } }));
  EXPECT_EQ(this->Normal->GetViewerWidgetCurrent(), this->X->Viewer.Get());
  this->Click(*this->X, inX);
  EXPECT_TRUE(IsPoint(this->Point1().data(), First, Pixel));
  EXPECT_TRUE(IsPoint(this->Point2().data(), inX, Pixel));
  EXPECT_EQ(this->CountViewsWith(this->Normal->Cone1Actor), 4);
  EXPECT_EQ(this->CountViewsWith(this->Normal->Cone2Actor), 4);
}

TEST_F(NormalWidgetMouse, APressInAnyViewerMakesItCurrentAndDragsThere)
{
  this->Place();
  this->Normal->SetPoint1(12, 14, 30); // over the slice of each viewer
  this->Normal->SetPoint2(30, 26, 24);
  for (ViewerInWindow* view : { this->X.get(), this->Y.get(), this->Z.get(), this->X.get() })
  {
    // Enabled or not is all the same.
    this->Normal->SetEnabled(view == this->X.get() ? 1 : this->Normal->GetEnabled());
    const World first = this->Point1();
    const World second = this->Point2();
    const Display from = view->Mouse.At(first);
    const Display to = Plus(from, 8, -6);
    view->Mouse.Press(zvtest::Left, from);
    EXPECT_EQ(this->Normal->GetViewerWidgetCurrent(), view->Viewer.Get());
    EXPECT_EQ(this->Normal->GetInteractor(), view->Scene.Interactor());
    EXPECT_EQ(this->Normal->GetCurrentRenderer(), view->Scene.Renderer());
    ASSERT_EQ(this->Normal->GetState(), zvNormalWidget::MovingHandle);
    view->Mouse.MoveTo(to);
    view->Mouse.Release(zvtest::Left);
    EXPECT_TRUE(IsPoint(this->Point1().data(),
      ExpectedAfter(view->Scene, first, from, to, this->Normal->LastPickPosition), 1e-6));
    EXPECT_EQ(this->Point2(), second);
  }
}

//------------------------------------------------------------------------------
TEST_F(NormalWidgetMouse, APressOnTheFirstConeTakesHoldOfIt)
{
  this->Place();
  this->Watch();
  this->WatchRenders();
  const std::array<int, 2> cross = this->Cross(this->Z->Viewer);
  this->Z->Mouse.Press(zvtest::Left, this->Z->Mouse.At(this->Point1()));
  EXPECT_EQ(this->Normal->GetState(), zvNormalWidget::MovingHandle);
  EXPECT_EQ(this->Normal->CurrentHandle, this->Normal->Cone1Source.Get());
  EXPECT_TRUE(this->IsHighlighted(this->Normal->Cone1Actor));
  EXPECT_FALSE(this->IsHighlighted(this->Normal->Cone2Actor));
  EXPECT_FALSE(this->IsHighlighted(this->Normal->LineActor));
  EXPECT_EQ(this->Z->Viewer->GetState(), ViewerStart);
  EXPECT_EQ(this->Cross(this->Z->Viewer), cross);
  EXPECT_THAT(this->Told.Names(), ElementsAre("StartInteractionEvent"));
  EXPECT_FALSE(this->Told.Events().front().HasData);
  EXPECT_EQ(this->Renders.Events().size(), 5u);
}

TEST_F(NormalWidgetMouse, APressOnTheSecondConeTakesHoldOfThat)
{
  this->Place();
  this->Z->Mouse.Press(zvtest::Left, this->Z->Mouse.At(this->Point2()));
  EXPECT_EQ(this->Normal->GetState(), zvNormalWidget::MovingHandle);
  EXPECT_EQ(this->Normal->CurrentHandle, this->Normal->Cone2Source.Get());
  EXPECT_TRUE(this->IsHighlighted(this->Normal->Cone2Actor));
  EXPECT_FALSE(this->IsHighlighted(this->Normal->Cone1Actor));
  EXPECT_FALSE(this->IsHighlighted(this->Normal->LineActor));
  EXPECT_EQ(this->Z->Viewer->GetState(), ViewerStart);
}

TEST_F(NormalWidgetMouse, APressOnTheLineTakesHoldOfTheWhole)
{
  this->Place();
  this->Watch();
  this->Z->Mouse.Press(zvtest::Left, this->Z->Mouse.At(this->Middle()));
  EXPECT_EQ(this->Normal->GetState(), zvNormalWidget::Translating);
  EXPECT_EQ(this->Normal->CurrentHandle, nullptr);
  EXPECT_TRUE(this->IsHighlighted(this->Normal->Cone1Actor));
  EXPECT_TRUE(this->IsHighlighted(this->Normal->Cone2Actor));
  EXPECT_TRUE(this->IsHighlighted(this->Normal->LineActor));
  EXPECT_EQ(this->Z->Viewer->GetState(), ViewerStart);
  EXPECT_THAT(this->Told.Names(), ElementsAre("StartInteractionEvent"));
}

TEST_F(NormalWidgetMouse, APressOnTheImageHitsNothingAndLeavesTheViewerItsAction)
{
  this->Place();
  this->Normal->HighlightNormal(1);
  this->Watch();
  const std::array<int, 2> cross = this->Cross(this->Z->Viewer);
  this->Z->Mouse.Press(zvtest::Left, this->OnImage());
  EXPECT_EQ(this->Normal->GetState(), zvNormalWidget::Start);
  EXPECT_EQ(this->Z->Viewer->GetState(), ViewerPushing);
  EXPECT_NE(this->Cross(this->Z->Viewer), cross);
  EXPECT_THAT(this->Told.Names(), ElementsAre("StartInteractionEvent"));
  // Deliberate: a press on nothing leaves the look alone.
  EXPECT_TRUE(this->IsHighlighted(this->Normal->LineActor));
}

TEST_F(NormalWidgetMouse, APressOnAnotherPropOfTheListLetsGo)
{
  this->Place();
  vtkNew<vtkConeSource> source;
  source->SetCenter(33, 7, 40);
  source->SetHeight(4);
  source->SetRadius(4);
  vtkNew<vtkPolyDataMapper> mapper;
  mapper->SetInputConnection(source->GetOutputPort());
  vtkNew<vtkActor> other;
  other->SetMapper(mapper);
  this->Normal->AddActorInRenderers(other);
  this->Normal->HandlePicker->AddPickList(other);
  this->Normal->HighlightNormal(1);
  this->Watch();
  this->Z->Mouse.Press(zvtest::Left, this->OnImage());
  EXPECT_EQ(this->Normal->GetState(), zvNormalWidget::Start);
  EXPECT_FALSE(this->IsHighlighted(this->Normal->LineActor));
  EXPECT_EQ(this->Z->Viewer->GetState(), ViewerPushing);
  EXPECT_THAT(this->Told.Names(), ElementsAre("StartInteractionEvent"));
}

TEST_F(NormalWidgetMouse, PartsThatAreNotShownAreNotHit)
{
  this->Place();
  this->Normal->RemoveAllActorsOfRenderers();
  this->Z->Mouse.Press(zvtest::Left, this->Z->Mouse.At(this->Point2()));
  EXPECT_EQ(this->Normal->GetState(), zvNormalWidget::Start);
  EXPECT_EQ(this->Z->Viewer->GetState(), ViewerPushing);
}

TEST_F(NormalWidgetMouse, APartThatIsNotShownHidesNoOther)
{
  this->Place();
  this->Normal->RemoveActorOfRenderers(this->Normal->Cone2Actor);
  this->Normal->SetPoint2(First[0], First[1], First[2] + 5.0); // in front of the first, from Z
  this->Z->Mouse.Press(zvtest::Left, this->Z->Mouse.At(this->Point1()));
  EXPECT_EQ(this->Normal->CurrentHandle, this->Normal->Cone1Source.Get());
}

TEST_F(NormalWidgetMouse, AClickWithAViewMissingWarnsAndPlacesNothing)
{
  this->Normal->SetRenderer3D(nullptr);
  this->Z->Mouse.Press(zvtest::Left, this->Z->Mouse.At(First));
  this->ExpectGenericWarning("zvNormalWidget", "set Renderer3D before placing a handle...");
  EXPECT_EQ(this->Items(), 1);
  this->Z->Mouse.Release(zvtest::Left);
  this->ExpectGenericWarning("zvNormalWidget", "set Renderer3D before rendering the views...");
  EXPECT_EQ(this->Normal->GetState(), zvNormalWidget::Adding);
}

TEST_F(NormalWidgetMouse, APressOutsideTheViewportEndsThePlacingByClicks)
{
  this->Click(*this->Z, First);
  this->Watch();
  // The viewer tells no such press: only a host may ask.
  this->Z->Scene.Interactor()->SetEventInformation(-5, 200);
  this->Normal->OnLeftButtonDown();
  EXPECT_EQ(this->Normal->GetState(), zvNormalWidget::Outside);
  EXPECT_THAT(this->Told.Events(), IsEmpty());
  this->Normal->OnMouseMove();
  EXPECT_THAT(this->Told.Events(), IsEmpty());
  this->Z->Mouse.Release(zvtest::Left);
  EXPECT_EQ(this->Normal->GetState(), zvNormalWidget::Start);
  this->Click(*this->Z, Second);
  EXPECT_EQ(this->Items(), 2);
  World at = Second;
  this->Normal->AddHandle(at.data());
  EXPECT_EQ(this->Items(), 3);
  EXPECT_EQ(this->Point2(), Second);
}

//------------------------------------------------------------------------------
TEST_F(NormalWidgetMouse, DraggingAConeKeepsTheOtherAndTurnsBoth)
{
  this->Place();
  const World first = this->Point1();
  const World second = this->Point2();
  const Display from = this->Z->Mouse.At(second);
  this->Z->Mouse.Press(zvtest::Left, from);
  this->Watch();
  this->WatchRenders();
  World expected = second;
  Display last = from;
  for (const Display& to : { Plus(from, 10, 5), Plus(from, 30, -60) })
  {
    expected = ExpectedAfter(this->Z->Scene, expected, last, to, this->Normal->LastPickPosition);
    this->Z->Mouse.MoveTo(to);
    EXPECT_TRUE(IsPoint(this->Point2().data(), expected, 1e-6));
    last = to;
  }
  EXPECT_EQ(this->Point1(), first);
  const World direction = this->Direction();
  EXPECT_TRUE(IsPoint(direction.data(), Unit(expected - first), 1e-6));
  EXPECT_TRUE(IsPoint(this->Normal->Cone1Source->GetDirection(), direction));
  EXPECT_TRUE(IsPoint(this->Normal->Cone2Source->GetDirection(), direction));
  EXPECT_THAT(this->Told.Names(), ElementsAre("InteractionEvent", "InteractionEvent"));
  EXPECT_FALSE(this->Told.Events().front().HasData);
  EXPECT_THAT(this->Renders.Events(), IsEmpty()); // observers render
}

TEST_F(NormalWidgetMouse, DraggingTheLineKeepsTheDirection)
{
  this->Place();
  const World first = this->Point1();
  const World second = this->Point2();
  const World direction = this->Direction();
  const Display from = this->Z->Mouse.At(this->Middle());
  const Display to = Plus(from, -25, 35);
  this->Z->Mouse.Press(zvtest::Left, from);
  this->Watch();
  this->Z->Mouse.MoveTo(to);
  const double* depth = this->Normal->LastPickPosition;
  EXPECT_TRUE(
    IsPoint(this->Point1().data(), ExpectedAfter(this->Z->Scene, first, from, to, depth), 1e-6));
  EXPECT_TRUE(
    IsPoint(this->Point2().data(), ExpectedAfter(this->Z->Scene, second, from, to, depth), 1e-6));
  EXPECT_TRUE(IsPoint(this->Direction().data(), direction, 1e-9));
  EXPECT_THAT(this->Told.Names(), ElementsAre("InteractionEvent"));
}

TEST_F(NormalWidgetMouse, AReleaseLeavesNothingHighlightedAndNoHandle)
{
  this->Place();
  for (const World& at : { this->Point1(), this->Middle() })
  {
    this->Z->Mouse.Press(zvtest::Left, this->Z->Mouse.At(at));
    this->Normal->Cone1Source->SetRadius(1.0);
    zvtest::EventRecorder told;
    told.Watch(this->Normal, zvtest::WidgetEvents);
    this->Z->Mouse.Release(zvtest::Left);
    EXPECT_EQ(this->Normal->GetState(), zvNormalWidget::Start);
    EXPECT_EQ(this->Normal->CurrentHandle, nullptr);
    EXPECT_FALSE(this->IsHighlighted(this->Normal->Cone1Actor));
    EXPECT_FALSE(this->IsHighlighted(this->Normal->Cone2Actor));
    EXPECT_FALSE(this->IsHighlighted(this->Normal->LineActor));
    EXPECT_DOUBLE_EQ(this->Normal->Cone1Source->GetRadius(), 3.0);
    EXPECT_THAT(told.Names(), ElementsAre("EndInteractionEvent"));
    EXPECT_FALSE(told.Events().front().HasData);
  }
  EXPECT_EQ(this->Normal->Cone1Actor->GetProperty(), this->Normal->NormalProperty.Get());
}

TEST_F(NormalWidgetMouse, AReleaseTellsItsEndInEveryState)
{
  this->Place();
  this->Watch();
  this->WatchRenders();
  this->X->Mouse.Release(zvtest::Left, { { 20, 20 } });
  EXPECT_THAT(this->Told.Names(), ElementsAre("EndInteractionEvent"));
  EXPECT_EQ(this->Renders.Events().size(), 5u);
  EXPECT_EQ(this->Normal->GetState(), zvNormalWidget::Start);
}

TEST_F(NormalWidgetMouse, MovesWithoutADragDoNothing)
{
  this->Place();
  this->Watch();
  const World first = this->Point1();
  this->Z->Mouse.MoveTo(this->Z->Mouse.At(first));
  this->Z->Mouse.MoveTo(this->OnImage());
  EXPECT_EQ(this->Point1(), first);
  EXPECT_THAT(this->Told.Events(), IsEmpty());
}

TEST_F(NormalWidgetMouse, AConeThatTheHostLetsGoOfStaysWhereItIs)
{
  this->Place();
  const Display from = this->Z->Mouse.At(this->Point1());
  const World first = this->Point1();
  this->Z->Mouse.Press(zvtest::Left, from);
  this->Normal->HighlightNormal(0);
  this->Z->Mouse.MoveTo(Plus(from, 20, 20));
  EXPECT_EQ(this->Point1(), first);
  this->ExpectNoMessage();
}

TEST_F(NormalWidgetMouse, OtherObserversOfTheViewerSeeEveryEvent)
{
  this->Place();
  zvtest::EventRecorder before;
  zvtest::EventRecorder after;
  const std::initializer_list<unsigned long> events = { vtkCommand::LeftButtonPressEvent,
    vtkCommand::MouseMoveEvent, vtkCommand::LeftButtonReleaseEvent };
  before.Watch(this->Z->Viewer, events, 0.5f);
  after.Watch(this->Z->Viewer, events, 0.0f);
  const Display at = this->Z->Mouse.At(this->Middle());
  this->Z->Mouse.Drag(zvtest::Left, at, Plus(at, 10, 10));
  const auto all = ElementsAre("LeftButtonPressEvent", "MouseMoveEvent", "LeftButtonReleaseEvent");
  EXPECT_THAT(before.Names(), all);
  EXPECT_THAT(after.Names(), all);
}

TEST_F(NormalWidgetMouse, WorksWhileEnabledInViewsThatShareAWindow)
{
  zvtest::SceneOptions options;
  options.Width = 800;
  options.Viewports = 2;
  zvtest::Scene scene(options);
  scene.LookAlong(2, 0);
  scene.ResetCamera(this->Volume->GetBounds(), 0);
  scene.LookAlong(2, 1);
  scene.ResetCamera(this->Volume->GetBounds(), 1);
  const auto viewer = vtkSmartPointer<OpenViewer>::Take(OpenViewer::New());
  viewer->SetInput(this->Volume);
  viewer->SetPlaneOrientation(2);
  viewer->UpdatePlane();
  viewer->SetInteractor(scene.Interactor());
  viewer->SetCurrentRenderer(scene.Renderer(0));
  viewer->SetEnabled(1);
  const auto normal = vtkSmartPointer<OpenNormal>::Take(OpenNormal::New());
  normal->SetViewerWidgetX(viewer);
  normal->SetViewerWidgetY(viewer);
  normal->SetViewerWidgetZ(viewer);
  normal->SetRenderer3D(scene.Renderer(1));
  normal->SetViewerWidgetCurrent(viewer);
  normal->SetEnabled(1);
  zvtest::Mouse mouse(scene);
  for (const World& at : { First, Second })
  {
    mouse.Press(zvtest::Left, mouse.At(at));
    mouse.Release(zvtest::Left);
  }
  EXPECT_EQ(normal->GetEnabled(), 1);
  const Display from = mouse.At(Second);
  mouse.Drag(zvtest::Left, from, Plus(from, 0, -40));
  World second;
  normal->GetPoint2(second.data());
  EXPECT_LT(second[1], Second[1] - 3.0);
  EXPECT_EQ(normal->GetEnabled(), 1);
}

//------------------------------------------------------------------------------
TEST_F(NormalWidgetMouse, IsDrawnWhereThePointsAreInAllViews)
{
  // The slices go behind the normal.
  this->X->Viewer->SetSliceIndex(5);
  this->Y->Viewer->SetSliceIndex(5);
  this->Place();
  const Display grip = this->Z->Mouse.At(this->Middle());
  this->Z->Mouse.Press(zvtest::Left, grip);
  ASSERT_EQ(this->Normal->GetState(), zvNormalWidget::Translating);
  this->Z->Mouse.MoveTo(Plus(grip, 20, -10));
  this->Normal->RenderesUpdate();
  const World ends[] = { this->Point1(), this->Point2() };
  for (const zvtest::Scene* scene :
    { &this->X->Scene, &this->Y->Scene, &this->Z->Scene, this->Depth.get() })
  {
    const zvtest::Picture picture = scene->Look();
    EXPECT_TRUE(picture.HasNear(Red, scene->At(this->Middle()), 2, 60));
    for (const World& end : ends)
    {
      // A cone is lit from the viewer: dark red at the least.
      const zvtest::Color color = picture.At(scene->At(end));
      EXPECT_GT(color.Red, 60) << color;
      EXPECT_LT(color.Green, 10) << color;
      EXPECT_LT(color.Blue, 10) << color;
    }
  }
  this->Z->Mouse.Release(zvtest::Left);
  for (const zvtest::Scene* scene :
    { &this->X->Scene, &this->Y->Scene, &this->Z->Scene, this->Depth.get() })
  {
    const zvtest::Color color = scene->ColorAt(this->Point1());
    EXPECT_GT(color.Green, 60) << color;
    EXPECT_EQ(color.Red, color.Green);
  }
}
