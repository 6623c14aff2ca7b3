#include "zvImagePlaneFixture.h"

#include "vtkImageShiftScale.h"
#include "vtkPropCollection.h"

#include <string>
#include <utility>
#include <vector>

// ---- enabling ----

namespace
{
class ImagePlaneEnabling : public ImagePlaneViewTest
{
protected:
  // Which of the widget's props the view holds.
  std::vector<std::string> PropsInView()
  {
    const std::pair<const char*, vtkProp*> props[] = { { "outline",
                                                         this->Widget->PlaneOutlineActor },
      { "texture", this->Widget->TexturePlaneActor }, { "cursor", this->Widget->CursorActor },
      { "margin", this->Widget->MarginActor }, { "text", this->Widget->TextActor },
      { "cut", this->Widget->CutActor } };
    std::vector<std::string> names;
    for (const auto& prop : props)
    {
      if (this->Scene.Renderer()->HasViewProp(prop.second))
      {
        names.push_back(prop.first);
      }
    }
    return names;
  }

  bool Observes(unsigned long event)
  {
    return this->Scene.Interactor()->HasObserver(event, this->Widget->EventCallbackCommand) != 0;
  }

  const std::vector<std::string> Shown{ "texture", "text", "cut" };
};
}

TEST_F(ImagePlaneEnabling, WithoutAnInteractorItIsAnError)
{
  const char* text = "The interactor must be set prior to enabling/disabling widget";
  this->Widget->SetEnabled(1);
  this->ExpectVtkError("zvImagePlaneWidget", "vtkPolyDataSourceWidget", this->Widget.get(), text);
  EXPECT_EQ(this->Widget->GetEnabled(), 0);
  this->Widget->SetEnabled(0);
  this->ExpectVtkError("zvImagePlaneWidget", "vtkPolyDataSourceWidget", this->Widget.get(), text);
}

TEST_F(ImagePlaneEnabling, EnablingShowsTextureCutAndTextAndTells)
{
  this->Place(this->Cube(5), 2);
  zvtest::EventRecorder recorder;
  recorder.Watch(this->Widget.get(), zvtest::WidgetEvents);
  recorder.Watch(this->Scene.Interactor(), { vtkCommand::RenderEvent });
  this->Enable();
  EXPECT_EQ(this->Widget->GetEnabled(), 1);
  EXPECT_EQ(recorder.Names(), (std::vector<std::string>{ "EnableEvent", "RenderEvent" }));
  EXPECT_FALSE(recorder.Events()[0].HasData);
  EXPECT_EQ(this->PropsInView(), this->Shown);
  EXPECT_EQ(this->Widget->GetCurrentRenderer(), this->Scene.Renderer());
  EXPECT_EQ(
    this->Widget->TexturePlaneActor->GetProperty(), this->Widget->GetTexturePlaneProperty());
  EXPECT_EQ(this->Widget->CutActor->GetProperty(), this->Widget->GetPlaneProperty());
  EXPECT_EQ(this->Widget->TexturePlaneActor->GetPickable(), 1);
}

TEST_F(ImagePlaneEnabling, DisablingTakesEverythingAwayAndTells)
{
  this->Place(this->Cube(5), 2);
  this->Enable();
  zvtest::EventRecorder recorder;
  recorder.Watch(this->Widget.get(), zvtest::WidgetEvents);
  recorder.Watch(this->Scene.Interactor(), { vtkCommand::RenderEvent });
  this->Widget->SetEnabled(0);
  EXPECT_EQ(this->Widget->GetEnabled(), 0);
  EXPECT_EQ(recorder.Names(), (std::vector<std::string>{ "DisableEvent", "RenderEvent" }));
  EXPECT_FALSE(recorder.Events()[0].HasData);
  EXPECT_TRUE(this->PropsInView().empty());
  EXPECT_EQ(this->Widget->GetCurrentRenderer(), nullptr);
  EXPECT_EQ(this->Widget->TexturePlaneActor->GetPickable(), 0);
  EXPECT_FALSE(this->Observes(vtkCommand::MouseMoveEvent));
}

TEST_F(ImagePlaneEnabling, EnablingTwiceAndDisablingTwiceTellOnce)
{
  this->Place(this->Cube(5), 2);
  zvtest::EventRecorder recorder;
  recorder.Watch(this->Widget.get(), zvtest::WidgetEvents);
  this->Widget->SetInteractor(this->Scene.Interactor());
  this->Widget->SetEnabled(0);
  this->Widget->SetEnabled(1);
  this->Widget->SetEnabled(1);
  this->Widget->SetEnabled(0);
  this->Widget->SetEnabled(0);
  this->Widget->SetEnabled(1);
  EXPECT_EQ(
    recorder.Names(), (std::vector<std::string>{ "EnableEvent", "DisableEvent", "EnableEvent" }));
  EXPECT_EQ(this->PropsInView(), this->Shown);
  EXPECT_EQ(this->Widget->TexturePlaneActor->GetPickable(), 1);
}

TEST_F(ImagePlaneEnabling, ItObservesSixEventsOfTheInteractor)
{
  this->Place(this->Cube(5), 2);
  this->Enable();
  for (unsigned long event : { vtkCommand::MouseMoveEvent, vtkCommand::LeftButtonPressEvent,
         vtkCommand::LeftButtonReleaseEvent, vtkCommand::RightButtonPressEvent,
         vtkCommand::RightButtonReleaseEvent, vtkCommand::CharEvent })
  {
    EXPECT_TRUE(this->Observes(event)) << vtkCommand::GetStringFromEventId(event);
  }
  for (unsigned long event : { vtkCommand::MiddleButtonPressEvent,
         vtkCommand::MiddleButtonReleaseEvent, vtkCommand::MouseWheelForwardEvent,
         vtkCommand::MouseWheelBackwardEvent, vtkCommand::KeyPressEvent })
  {
    EXPECT_FALSE(this->Observes(event)) << vtkCommand::GetStringFromEventId(event);
  }
}

TEST_F(ImagePlaneEnabling, ObserversNeedAnInteractorAndTellNothing)
{
  zvtest::EventRecorder recorder;
  recorder.Watch(this->Widget.get(), zvtest::WidgetEvents);
  this->Widget->AddObservers();
  this->Widget->SetInteractor(this->Scene.Interactor());
  this->Widget->AddObservers();
  EXPECT_TRUE(this->Observes(vtkCommand::CharEvent));
  EXPECT_TRUE(recorder.Events().empty());
  this->Scene.Interactor()->RemoveObserver(this->Widget->EventCallbackCommand);
}

TEST_F(ImagePlaneEnabling, InteractionTurnsTheObserversOfAnEnabledWidget)
{
  this->Place(this->Cube(5), 2);
  this->Widget->SetInteraction(0);
  EXPECT_EQ(this->Widget->GetInteraction(), 1) << "there is no interactor";
  this->Widget->SetInteractor(this->Scene.Interactor());
  this->Widget->SetInteraction(0);
  EXPECT_EQ(this->Widget->GetInteraction(), 1) << "it is not enabled";
  this->Widget->SetEnabled(1);
  zvtest::EventRecorder recorder;
  recorder.Watch(this->Widget.get(), zvtest::WidgetEvents);
  this->Widget->InteractionOff();
  EXPECT_EQ(this->Widget->GetInteraction(), 0);
  EXPECT_FALSE(this->Observes(vtkCommand::MouseMoveEvent));
  EXPECT_EQ(this->PropsInView(), this->Shown);
  this->Widget->InteractionOn();
  this->Widget->SetInteraction(1);
  EXPECT_EQ(this->Widget->GetInteraction(), 1);
  EXPECT_TRUE(this->Observes(vtkCommand::MouseMoveEvent));
  EXPECT_TRUE(recorder.Events().empty());
}

TEST_F(ImagePlaneEnabling, WithoutInteractionNothingIsObserved)
{
  this->Place(this->Cube(5), 2);
  this->Enable();
  this->Widget->SetInteraction(0);
  this->Widget->SetEnabled(0);
  this->Widget->SetEnabled(1);
  EXPECT_FALSE(this->Observes(vtkCommand::MouseMoveEvent));
  EXPECT_EQ(this->PropsInView(), this->Shown);
}

TEST_F(ImagePlaneEnabling, TextureVisibilityAddsAndRemovesTheTexture)
{
  this->Place(this->Cube(5), 2);
  this->Widget->TextureVisibilityOff();
  this->Enable();
  EXPECT_EQ(this->PropsInView(), (std::vector<std::string>{ "text", "cut" }));
  this->Widget->TextureVisibilityOn();
  EXPECT_EQ(this->PropsInView(), this->Shown);
  this->Widget->SetTextureVisibility(0);
  EXPECT_EQ(this->PropsInView(), (std::vector<std::string>{ "text", "cut" }));
}

TEST_F(ImagePlaneEnabling, ActivationNeedsAView)
{
  this->Place(this->Cube(5), 2);
  OpenImagePlane* w = this->Widget.get();
  w->DisplayTextOn();
  w->ActivateCursor(1);
  w->ActivateMargins(1);
  w->ActivateText(1);
  EXPECT_EQ(w->CursorActor->GetVisibility(), 0);
  EXPECT_EQ(w->MarginActor->GetVisibility(), 0);
  EXPECT_EQ(w->TextActor->GetVisibility(), 0);
  this->Enable();
  w->ActivateCursor(1);
  w->ActivateMargins(1);
  w->ActivateText(1);
  EXPECT_EQ(w->CursorActor->GetVisibility(), 1);
  EXPECT_EQ(w->MarginActor->GetVisibility(), 1);
  EXPECT_EQ(w->TextActor->GetVisibility(), 1);
  w->ActivateCursor(0);
  w->ActivateMargins(0);
  w->ActivateText(0);
  EXPECT_EQ(w->CursorActor->GetVisibility(), 0);
  EXPECT_EQ(w->MarginActor->GetVisibility(), 0);
  EXPECT_EQ(w->TextActor->GetVisibility(), 0);
  w->DisplayTextOff();
  w->ActivateText(1);
  EXPECT_EQ(w->TextActor->GetVisibility(), 0);
}

TEST_F(ImagePlaneEnabling, WithoutARendererItStaysDisabledSilently)
{
  this->Place(this->Cube(5), 2);
  zvtest::SceneOptions options;
  options.Viewports = 0;
  zvtest::Scene empty(options);
  this->Widget->SetInteractor(empty.Interactor());
  this->Widget->SetEnabled(1);
  EXPECT_EQ(this->Widget->GetEnabled(), 0);
}

TEST_F(ImagePlaneEnabling, ItGoesIntoTheViewportUnderTheLastPosition)
{
  zvtest::SceneOptions options;
  options.Viewports = 2;
  zvtest::Scene two(options);
  this->Place(this->Cube(5), 2);
  zvtest::Mouse mouse(two);
  mouse.MoveTo({ { 300, 200 } });
  mouse.MoveTo({ { 100, 200 } }); // the last position is that of the event before
  this->Widget->SetInteractor(two.Interactor());
  this->Widget->SetEnabled(1);
  EXPECT_EQ(this->Widget->GetCurrentRenderer(), two.Renderer(1));
  EXPECT_TRUE(two.Renderer(1)->HasViewProp(this->Widget->TexturePlaneActor));
  EXPECT_FALSE(two.Renderer(0)->HasViewProp(this->Widget->TexturePlaneActor));
  this->Widget.reset();
}

TEST_F(ImagePlaneEnabling, AGivenRendererIsTaken)
{
  zvtest::SceneOptions options;
  options.Viewports = 2;
  zvtest::Scene two(options);
  this->Place(this->Cube(5), 2);
  this->Widget->SetInteractor(two.Interactor());
  this->Widget->SetCurrentRenderer(two.Renderer(1));
  this->Widget->SetEnabled(1);
  EXPECT_TRUE(two.Renderer(1)->HasViewProp(this->Widget->TexturePlaneActor));
  this->Widget.reset();
}

TEST_F(ImagePlaneEnabling, WindowAndLevelRenderAnEnabledWidgetOnly)
{
  this->Place(this->Cube(5), 2);
  zvtest::EventRecorder recorder;
  recorder.Watch(this->Scene.Interactor(), { vtkCommand::RenderEvent });
  this->Widget->SetWindowLevel(10.0, 20.0);
  this->Widget->SetInteractor(this->Scene.Interactor());
  this->Widget->SetWindowLevel(11.0, 20.0);
  EXPECT_EQ(recorder.Count(vtkCommand::RenderEvent), 0);
  this->Widget->SetEnabled(1);
  recorder.Clear();
  this->Widget->SetWindowLevel(12.0, 20.0);
  EXPECT_EQ(recorder.Count(vtkCommand::RenderEvent), 1);
  this->Widget->SetWindowLevel(12.0, 20.0);
  this->Widget->SetWindowLevel(13.0, 20.0, 1);
  EXPECT_EQ(recorder.Count(vtkCommand::RenderEvent), 1);
}

// ---- pictures ----

namespace
{
class ImagePlanePicture : public ImagePlaneEnabling
{
protected:
  // Unsigned char, 50 in the lower half of x and 200 in the upper; 17 voxels an edge.
  void ShowHalves(int axis)
  {
    zvtest::VolumeOptions options = this->Cube(17);
    options.ScalarType = VTK_UNSIGNED_CHAR;
    this->Volume =
      zvtest::MakeVolume(options, [](int i, int, int, int) { return i < 8 ? 50.0 : 200.0; });
    this->Widget->SetInput(this->Volume);
    this->Widget->SetPlaneOrientation(axis);
    this->Widget->SetWindowLevel(255.0, 127.5);
    this->Enable();
    this->Scene.LookAlong(axis);
    this->Scene.Render();
  }
};
}

TEST_F(ImagePlanePicture, ThePlaneShowsTheGreyOfItsVoxels)
{
  this->ShowHalves(2);
  EXPECT_TRUE(ShowsEntry(this->Scene.ColorAt({ { 3, 5, 16 } }), 50));
  EXPECT_TRUE(ShowsEntry(this->Scene.ColorAt({ { 3, 13, 16 } }), 50));
  EXPECT_TRUE(ShowsEntry(this->Scene.ColorAt({ { 12, 5, 16 } }), 200));
  EXPECT_TRUE(ShowsEntry(this->Scene.ColorAt({ { 12, 13, 16 } }), 200));
  EXPECT_EQ(this->Scene.ColorAt({ { -2, 5, 16 } }), (zvtest::Color{ 0, 0, 0 }));
}

TEST_F(ImagePlanePicture, EveryOrientationShowsItsSlice)
{
  this->ShowHalves(1);
  EXPECT_TRUE(ShowsEntry(this->Scene.ColorAt({ { 3, 16, 5 } }), 50));
  EXPECT_TRUE(ShowsEntry(this->Scene.ColorAt({ { 12, 16, 11 } }), 200));
  this->Widget->SetPlaneOrientation(0);
  this->Scene.LookAlong(0);
  this->Scene.Render();
  EXPECT_TRUE(ShowsEntry(this->Scene.ColorAt({ { 16, 5, 5 } }), 200));
  this->Widget->SetSliceIndex(3);
  this->Scene.LookAlong(0);
  this->Scene.Render();
  EXPECT_TRUE(ShowsEntry(this->Scene.ColorAt({ { 3, 5, 5 } }), 50));
  EXPECT_TRUE(ShowsEntry(this->Scene.ColorAt({ { 3, 12, 11 } }), 50));
}

TEST_F(ImagePlanePicture, ANegativeWindowShowsTheNegative)
{
  this->ShowHalves(2);
  this->Widget->SetWindowLevel(-255.0, 127.5);
  EXPECT_TRUE(ShowsEntry(this->Scene.ColorAt({ { 3, 5, 16 } }), 205));
  EXPECT_TRUE(ShowsEntry(this->Scene.ColorAt({ { 12, 5, 16 } }), 55));
}

TEST_F(ImagePlanePicture, ThePlaneKeepsItsGreySeenAtAnAngle)
{
  this->ShowHalves(2);
  this->Scene.LookAlong({ { 0, 0.8, -0.6 } }, { { 0, 0, 1 } });
  this->Scene.Render();
  EXPECT_TRUE(ShowsEntry(this->Scene.ColorAt({ { 3, 8, 16 } }), 50));
  EXPECT_TRUE(ShowsEntry(this->Scene.ColorAt({ { 12, 8, 16 } }), 200));
}

TEST_F(ImagePlanePicture, TheCutHasTheColourOfThePlanesProperty)
{
  this->ShowHalves(2);
  const zvtest::Color yellow{ 255, 255, 0 };
  const zvtest::World edges[4] = { { { 8, 0, 16 } }, { { 8, 16, 16 } }, { { 0, 8, 16 } },
    { { 16, 8, 16 } } };
  const zvtest::Picture white = this->Scene.Look();
  for (const zvtest::World& edge : edges)
  {
    EXPECT_TRUE(white.HasNear({ 255, 255, 255 }, this->Scene.At(edge), 3));
  }
  this->Widget->GetPlaneProperty()->SetColor(1.0, 1.0, 0.0);
  const zvtest::Picture picture = this->Scene.RenderAndLook();
  for (const zvtest::World& edge : edges)
  {
    EXPECT_TRUE(picture.HasNear(yellow, this->Scene.At(edge), 3));
  }
  EXPECT_FALSE(picture.HasNear(yellow, this->Scene.At({ { 4, 4, 16 } }), 10));
  this->Widget->HighlightPlane(1);
  EXPECT_EQ(this->Scene.RenderAndLook().CountDifferent(picture), 0) << "highlighting does not show";
}

TEST_F(ImagePlanePicture, AnObliquePlaneIsDrawnInsideTheImageOnly)
{
  this->ShowHalves(2);
  double axis[3] = { 0, 1, 0 }, center[3] = { 8, 8, 8 };
  this->Widget->SetSlicePosition(8.0);
  this->Widget->Rotate(30.0, axis, center);
  this->Scene.LookAlong(2);
  this->Scene.Render();
  const zvtest::Color black{ 0, 0, 0 };
  EXPECT_TRUE(ShowsEntry(this->Scene.ColorAt({ { 12, 8, 8 - 4 * std::tan(0.5236) } }), 200));
  EXPECT_TRUE(ShowsEntry(this->Scene.ColorAt({ { 4, 8, 8 + 4 * std::tan(0.5236) } }), 50));
  EXPECT_EQ(this->Scene.ColorAt({ { 18, 8, 8 } }), black);
  EXPECT_EQ(this->Scene.ColorAt({ { 8, -2, 8 } }), black);
}

TEST_F(ImagePlanePicture, DetachingTakesThePictureAwayWithoutAMessage)
{
  this->ShowHalves(2);
  this->Widget->SetInput(nullptr);
  this->Scene.Render();
  EXPECT_EQ(this->Scene.ColorAt({ { 3, 5, 16 } }), (zvtest::Color{ 0, 0, 0 }));
  vtkNew<vtkPolyData> mesh;
  this->Widget->SetInput(mesh);
  this->Scene.Render();
  this->Widget->SetInput(this->Volume);
  this->Widget->SetWindowLevel(255.0, 127.5);
  this->Scene.Render();
  EXPECT_TRUE(ShowsEntry(this->Scene.ColorAt({ { 3, 5, 16 } }), 50));
}

TEST_F(ImagePlanePicture, APlaneThatNoViewHasRoomForIsNotShownAndSaysSo)
{
  this->Place(this->Cube(5), 2);
  this->Enable();
  const int dimensions[2] = { this->Widget->Dimensions[0], this->Widget->Dimensions[1] };
  this->Widget->SetDimensions(100000, 100000);
  this->ExpectVtkError("zvImagePlaneWidget", "vtkPolyDataSourceWidget", this->Widget.get(),
    "The plane is too large to be shown: 131072 by 131072 samples");
  this->Scene.Render();
  this->Widget->SetDimensions(dimensions[0], dimensions[1]);
  this->Widget->SetPlaneOrientation(2);
  this->Widget->SetSliceIndex(2);
  this->Scene.ResetCamera();
  this->Scene.Render();
  EXPECT_FALSE(this->Scene.ColorAt({ { 3, 3, 2 } }).IsNear(zvtest::Color::Grey(0), 2));
}

TEST_F(ImagePlanePicture, ATurnedImageIsNotShown)
{
  this->ShowHalves(2);
  this->Widget->SetInput(zvtest::MakeIndexVolume(zvtest::TurnedVolume()));
  EXPECT_EQ(this->TakeMessages().size(), 1u);
  const zvtest::Picture picture = this->Scene.RenderAndLook();
  EXPECT_EQ(picture.At(this->Scene.At({ { 3, 5, 16 } })), (zvtest::Color{ 0, 0, 0 }));
}

TEST_F(ImagePlanePicture, AFilterUpstreamChangesThePicture)
{
  this->ShowHalves(2);
  vtkNew<vtkImageShiftScale> filter;
  filter->SetInputData(this->Volume);
  filter->SetShift(10.0);
  this->Widget->SetInputConnection(filter->GetOutputPort());
  this->Widget->SetPlaneOrientation(2);
  this->Widget->SetWindowLevel(255.0, 127.5);
  this->Scene.Render();
  EXPECT_TRUE(ShowsEntry(this->Scene.ColorAt({ { 3, 5, 16 } }), 60));
  filter->SetShift(40.0);
  this->Scene.Render();
  EXPECT_TRUE(ShowsEntry(this->Scene.ColorAt({ { 3, 5, 16 } }), 90));
  EXPECT_TRUE(ShowsEntry(this->Scene.ColorAt({ { 12, 5, 16 } }), 240));
}

TEST_F(ImagePlanePicture, EnabledWithoutInputItRendersNothingAndSaysNothing)
{
  this->Enable();
  this->Scene.ResetCamera();
  const zvtest::Picture picture = this->Scene.RenderAndLook();
  EXPECT_EQ(picture.CountOther({ 0, 0, 0 }, { { { 0, 0 } }, { { 399, 399 } } }), 0);
}

// ---- lifetime ----

TEST_F(ImagePlaneEnabling, MadeAndReleasedWithoutAView)
{
  bool gone = false;
  this->Widget->Gone = &gone;
  this->Widget.reset();
  EXPECT_TRUE(gone);
}

TEST_F(ImagePlaneEnabling, ADeleteExpressionReleasesItToo)
{
  this->Place(this->Cube(5), 2);
  this->Enable();
  bool gone = false;
  this->Widget->Gone = &gone;
  delete this->Widget.release();
  EXPECT_TRUE(gone);
  this->Scene.Render();
  this->Mouse.Drag(zvtest::Left, { { 200, 200 } }, { { 210, 220 } });
}

TEST_F(ImagePlaneEnabling, DeletedWhileEnabledItLeavesTheView)
{
  this->Place(this->Cube(5), 2);
  this->Enable();
  const int before = this->Scene.Renderer()->GetViewProps()->GetNumberOfItems();
  vtkSmartPointer<vtkCallbackCommand> command = this->Widget->EventCallbackCommand;
  ASSERT_TRUE(this->Observes(vtkCommand::RightButtonPressEvent));
  this->Release();
  EXPECT_EQ(this->Scene.Renderer()->GetViewProps()->GetNumberOfItems(), before - 3);
  EXPECT_FALSE(this->Scene.Interactor()->HasObserver(vtkCommand::RightButtonPressEvent, command));
  this->Scene.Render();
  this->Mouse.Drag(zvtest::Left, { { 200, 200 } }, { { 210, 220 } });
  this->Mouse.Drag(zvtest::Right, { { 200, 200 } }, { { 210, 220 } });
  this->Mouse.Type('r', zvtest::Shift);
}

TEST_F(ImagePlaneEnabling, TheInteractorMayGoFirst)
{
  this->Place(this->Cube(5), 2);
  this->Enable();
  this->Scene.DropInteractor();
  this->Scene.Render();
  EXPECT_EQ(this->Widget->GetEnabled(), 0);
  this->Release();
  this->Scene.Render();
}

TEST_F(ImagePlaneEnabling, TheRenderersMayGoFirst)
{
  this->Place(this->Cube(5), 2);
  this->Enable();
  this->Scene.DropRenderers();
  this->Mouse.Press(zvtest::Left, { { 200, 200 } });
  this->Mouse.MoveTo({ { 210, 220 } });
  this->Mouse.Release(zvtest::Left);
  this->Release();
  this->Scene.Render();
}

TEST_F(ImagePlaneEnabling, TheWholeViewMayGoFirst)
{
  this->Place(this->Cube(5), 2);
  this->Enable();
  this->Scene.Render();
  this->Scene.DropRenderers();
  this->Scene.DropWindow();
  this->Scene.DropInteractor();
  this->Release();
}

TEST_F(ImagePlaneEnabling, TheImageMayGoFirst)
{
  this->Place(this->Cube(5), 2);
  this->Enable();
  this->Volume = nullptr;
  this->Scene.Render();
  this->Widget->SetSliceIndex(2);
  EXPECT_EQ(this->Widget->GetSliceIndex(), 2);
  this->Release();
}

TEST_F(ImagePlaneEnabling, TakenOffItsInteractorItIsDisabled)
{
  this->Place(this->Cube(5), 2);
  this->Enable();
  this->Widget->SetInteractor(nullptr);
  EXPECT_EQ(this->Widget->GetEnabled(), 0);
  EXPECT_TRUE(this->PropsInView().empty());
  this->Enable();
  EXPECT_EQ(this->PropsInView(), this->Shown);
}

TEST_F(ImagePlaneEnabling, EnabledAgainByAnObserverOfItsDisablingItCanStillLeaveTheView)
{
  this->Place(this->Cube(5), 2);
  this->Enable();
  bool first = true;
  zvtest::EventRecorder recorder;
  recorder.Watch(this->Widget.get(), { vtkCommand::DisableEvent },
    [&](const zvtest::RecordedEvent&)
    {
      if (std::exchange(first, false))
      {
        this->Widget->SetEnabled(1);
      }
    });
  this->Widget->SetEnabled(0);
  EXPECT_EQ(this->Widget->GetEnabled(), 1);
  EXPECT_EQ(this->Widget->GetCurrentRenderer(), this->Scene.Renderer());
  EXPECT_EQ(this->PropsInView(), this->Shown);
  this->Widget->SetEnabled(0);
  EXPECT_EQ(this->Widget->GetEnabled(), 0);
  EXPECT_TRUE(this->PropsInView().empty());
}

TEST_F(ImagePlaneEnabling, ItMayBeDeletedFromItsOwnEnableEvents)
{
  for (unsigned long event : { vtkCommand::EnableEvent, vtkCommand::DisableEvent })
  {
    bool gone = false;
    OpenImagePlane* widget = new OpenImagePlane;
    widget->Gone = &gone;
    widget->SetInput(zvtest::MakeIndexVolume(this->Cube(5)));
    widget->SetPlaneOrientation(2);
    widget->SetInteractor(this->Scene.Interactor());
    zvtest::EventRecorder recorder;
    recorder.Watch(widget, { event }, [&](const zvtest::RecordedEvent&) { widget->Delete(); });
    widget->SetEnabled(1);
    if (!gone)
    {
      widget->SetEnabled(0);
    }
    EXPECT_TRUE(gone) << vtkCommand::GetStringFromEventId(event);
    EXPECT_EQ(recorder.Count(event), 1);
    this->Scene.Render();
  }
}
