#include "zvImageViewerFixture.h"

#include "vtkInteractorObserver.h"
#include "vtkPropCollection.h"
#include "vtkTextProperty.h"
#include "vtkWeakPointer.h"

#include <functional>
#include <utility>

using zvtest::World;

namespace
{
// A tool of the view: notes when it is enabled, and when it goes.
class Tool : public vtkInteractorObserver
{
public:
  static Tool* Make(const std::string& name, std::vector<std::string>* log)
  {
    auto* tool = new Tool;
    tool->InitializeObjectBase();
    tool->Name = name;
    tool->Log = log;
    return tool;
  }
  void SetEnabled(int enabling) override
  {
    this->Enabled = enabling;
    this->Log->push_back(this->Name + (enabling ? " on" : " off"));
  }

private:
  ~Tool() override { this->Log->push_back(this->Name + " gone"); }
  std::string Name;
  std::vector<std::string>* Log = nullptr;
};

using Names = std::vector<std::string>;
}

class ImageViewerView : public ImageViewerViewTest
{
protected:
  // Must outlive the tools, which the viewer releases.
  ~ImageViewerView() override { this->Release(); }

  /// A tool as the viewer holds its own: by the reference that it was made with, and by its list.
  Tool* AddTool(vtkCollection* list, const std::string& name)
  {
    Tool* tool = Tool::Make(name, &this->Log);
    list->AddItem(tool);
    return tool;
  }

  void AddOneToolOfEachKind()
  {
    this->AddTool(this->Viewer->RulerWidgets, "ruler");
    this->AddTool(this->Viewer->AreaWidgets, "area");
    this->AddTool(this->Viewer->LassoWidgets, "lasso");
    this->AddTool(this->Viewer->TextNoteWidgets, "note");
  }

  // The viewer's props in the order in which the view holds them.
  Names PropsInView()
  {
    OpenViewer* v = this->Viewer;
    const std::pair<const char*, vtkProp*> props[] = { { "texture", v->TexturePlaneActor },
      { "text", v->TextActor }, { "line 1", v->SliceLine1Actor }, { "line 2", v->SliceLine2Actor },
      { "box", v->BoxOutlineActor }, { "mask", v->MaskActor }, { "outline", v->PlaneOutlineActor },
      { "cursor", v->CursorActor }, { "margin", v->MarginActor } };
    Names names;
    vtkPropCollection* shown = this->Scene.Renderer()->GetViewProps();
    for (int i = 0; i < shown->GetNumberOfItems(); ++i)
    {
      const vtkObject* prop = shown->GetItemAsObject(i);
      const auto* row = std::find_if(std::begin(props), std::end(props),
        [prop](const auto& candidate) { return candidate.second == prop; });
      names.push_back(row == std::end(props) ? "stranger" : row->first);
    }
    return names;
  }

  bool Observes(unsigned long event)
  {
    return this->Scene.Interactor()->HasObserver(event, this->Viewer->EventCallbackCommand) != 0;
  }

  zvtest::Display Middle() { return this->Mouse.At(this->Plane().Center()); }

  Names Log;
  const Names Shown{ "texture", "text", "line 1", "line 2", "box" };
};

// ---- enabling ----

TEST_F(ImageViewerView, WithoutAnInteractorItsToolsAreEnabledBeforeTheError)
{
  this->AddOneToolOfEachKind();
  const char* text = "The interactor must be set prior to enabling/disabling widget";
  this->Viewer->SetEnabled(1);
  this->ExpectVtkError("zvImageViewerWidget", "zvImageViewerWidget", this->Viewer, text);
  EXPECT_EQ(this->Log, (Names{ "ruler on", "area on", "lasso on" })) << "and no text note";
  EXPECT_EQ(this->Viewer->GetEnabled(), 0);
  this->Viewer->SetEnabled(0);
  this->ExpectVtkError("zvImageViewerWidget", "zvImageViewerWidget", this->Viewer, text);
  EXPECT_EQ(
    this->Log, (Names{ "ruler on", "area on", "lasso on", "ruler off", "area off", "lasso off" }));
}

TEST_F(ImageViewerView, ItsToolsAreEnabledFirstAndEachTime)
{
  this->Place(this->Cube(5), 2);
  this->AddTool(this->Viewer->LassoWidgets, "lasso");
  this->AddTool(this->Viewer->RulerWidgets, "ruler 1");
  this->AddTool(this->Viewer->RulerWidgets, "ruler 2");
  zvtest::EventRecorder recorder;
  recorder.Watch(this->Viewer, { vtkCommand::EnableEvent, vtkCommand::DisableEvent },
    [this](const zvtest::RecordedEvent& event) { this->Log.push_back(event.Name); });
  this->Enable();
  EXPECT_EQ(this->Log, (Names{ "ruler 1 on", "ruler 2 on", "lasso on", "EnableEvent" }));
  this->Log.clear();
  this->Viewer->SetEnabled(1);
  EXPECT_EQ(this->Log, (Names{ "ruler 1 on", "ruler 2 on", "lasso on" }));
  this->Log.clear();
  this->Viewer->SetEnabled(0);
  EXPECT_EQ(this->Log, (Names{ "ruler 1 off", "ruler 2 off", "lasso off", "DisableEvent" }));
}

TEST_F(ImageViewerView, AToolMayDisableAndDeleteTheViewerWhenItIsEnabled)
{
  this->Place(this->Cube(5), 2);
  this->Viewer->SetInteractor(this->Scene.Interactor());
  // A list changed from within must not be read on.
  class Remover : public vtkInteractorObserver
  {
  public:
    static Remover* New()
    {
      auto* remover = new Remover;
      remover->InitializeObjectBase();
      return remover;
    }
    void SetEnabled(int enabling) override
    {
      if (enabling && this->Action)
      {
        this->Action();
      }
    }
    std::function<void()> Action;
  };
  Remover* remover = Remover::New();
  this->Viewer->RulerWidgets->AddItem(remover);
  Tool* second = this->AddTool(this->Viewer->RulerWidgets, "second");
  remover->Action = [this, second]
  {
    this->Viewer->RulerWidgets->RemoveItem(second);
    second->Delete();
  };
  this->Viewer->SetEnabled(1);
  EXPECT_EQ(this->Log, Names{ "second gone" });
  EXPECT_EQ(this->Viewer->GetEnabled(), 1);
  this->Viewer->SetEnabled(0);
  remover->Action = [this] { this->Release(); };
  OpenViewer* viewer = this->Viewer;
  viewer->SetEnabled(1);
  EXPECT_EQ(this->Viewer.GetPointer(), nullptr);
  EXPECT_TRUE(this->Scene.Renderer()->GetViewProps()->GetNumberOfItems() == 0);
}

TEST_F(ImageViewerView, EnablingShowsSliceLinesAndBoxAndTells)
{
  this->Place(this->Cube(5), 2);
  zvtest::EventRecorder recorder;
  recorder.Watch(this->Viewer, zvtest::WidgetEvents);
  recorder.Watch(this->Scene.Interactor(), { vtkCommand::RenderEvent });
  this->Enable();
  EXPECT_EQ(this->Viewer->GetEnabled(), 1);
  EXPECT_EQ(recorder.Names(), (Names{ "EnableEvent", "RenderEvent" }));
  EXPECT_FALSE(recorder.Events()[0].HasData);
  EXPECT_EQ(this->PropsInView(), this->Shown);
  OpenViewer* v = this->Viewer;
  EXPECT_EQ(v->GetCurrentRenderer(), this->Scene.Renderer());
  EXPECT_EQ(v->TexturePlaneActor->GetProperty(), v->TexturePlaneProperty);
  EXPECT_EQ(v->SliceLine1Actor->GetProperty(), v->SliceLine1Property.Get());
  EXPECT_EQ(v->SliceLine2Actor->GetProperty(), v->SliceLine2Property.Get());
  EXPECT_EQ(v->BoxOutlineActor->GetProperty(), v->PlaneProperty);
  EXPECT_EQ(v->TexturePlaneActor->GetPickable(), 1);
}

TEST_F(ImageViewerView, DisablingTakesEverythingAwayAndTells)
{
  this->Place(this->Cube(5), 2);
  this->Enable();
  this->Viewer->SetImageMask(zvtest::MakeConstantVolume(0.0, this->Cube(5)));
  zvtest::EventRecorder recorder;
  recorder.Watch(this->Viewer, zvtest::WidgetEvents);
  recorder.Watch(this->Scene.Interactor(), { vtkCommand::RenderEvent });
  this->Viewer->SetEnabled(0);
  EXPECT_EQ(this->Viewer->GetEnabled(), 0);
  EXPECT_EQ(recorder.Names(), (Names{ "DisableEvent", "RenderEvent" }));
  EXPECT_FALSE(recorder.Events()[0].HasData);
  EXPECT_TRUE(this->PropsInView().empty());
  EXPECT_EQ(this->Viewer->GetCurrentRenderer(), nullptr);
  EXPECT_EQ(this->Viewer->TexturePlaneActor->GetPickable(), 0);
  EXPECT_FALSE(this->Observes(vtkCommand::MouseMoveEvent));
}

TEST_F(ImageViewerView, ObserversOfBothFindTheViewComplete)
{
  this->Place(this->Cube(5), 2);
  Names seen;
  zvtest::EventRecorder recorder;
  recorder.Watch(this->Viewer, { vtkCommand::EnableEvent, vtkCommand::DisableEvent },
    [&](const zvtest::RecordedEvent&)
    {
      EXPECT_EQ(this->Viewer->GetCurrentRenderer(), this->Scene.Renderer());
      EXPECT_EQ(this->Observes(vtkCommand::LeftButtonPressEvent), this->Viewer->Enabled != 0);
      EXPECT_EQ(this->Viewer->TexturePlaneActor->GetPickable(), this->Viewer->Enabled);
      EXPECT_EQ(this->PropsInView(), this->Viewer->Enabled ? this->Shown : Names{});
      seen.emplace_back(this->Viewer->Enabled ? "on" : "off");
    });
  this->Enable();
  this->Viewer->SetEnabled(0);
  EXPECT_EQ(seen, (Names{ "on", "off" }));
}

TEST_F(ImageViewerView, EnablingTwiceAndDisablingTwiceTellOnce)
{
  this->Place(this->Cube(5), 2);
  zvtest::EventRecorder recorder;
  recorder.Watch(this->Viewer, zvtest::WidgetEvents);
  this->Viewer->SetInteractor(this->Scene.Interactor());
  this->Viewer->SetEnabled(0);
  this->Viewer->SetEnabled(1);
  this->Viewer->SetEnabled(1);
  this->Viewer->SetEnabled(0);
  this->Viewer->SetEnabled(0);
  this->Viewer->SetEnabled(1);
  EXPECT_EQ(recorder.Names(), (Names{ "EnableEvent", "DisableEvent", "EnableEvent" }));
  EXPECT_EQ(this->PropsInView(), this->Shown);
  EXPECT_EQ(this->Viewer->TexturePlaneActor->GetPickable(), 1);
}

TEST_F(ImageViewerView, ItObservesTheEventsOfTheStockWidget)
{
  this->Place(this->Cube(5), 2);
  this->Enable();
  for (unsigned long event : { vtkCommand::MouseMoveEvent, vtkCommand::LeftButtonPressEvent,
         vtkCommand::LeftButtonReleaseEvent, vtkCommand::MiddleButtonPressEvent,
         vtkCommand::MiddleButtonReleaseEvent, vtkCommand::RightButtonPressEvent,
         vtkCommand::RightButtonReleaseEvent, vtkCommand::CharEvent })
  {
    EXPECT_TRUE(this->Observes(event)) << vtkCommand::GetStringFromEventId(event);
  }
  for (unsigned long event :
    { vtkCommand::MouseWheelForwardEvent, vtkCommand::MouseWheelBackwardEvent })
  {
    EXPECT_FALSE(this->Observes(event)) << vtkCommand::GetStringFromEventId(event);
  }
}

TEST_F(ImageViewerView, WithoutInteractionNothingIsObserved)
{
  this->Place(this->Cube(5), 2);
  this->Viewer->Interaction = 0;
  this->Enable();
  EXPECT_FALSE(this->Observes(vtkCommand::MouseMoveEvent));
  EXPECT_EQ(this->PropsInView(), this->Shown);
}

TEST_F(ImageViewerView, WithoutTextureVisibilityOnlyTheRestIsShown)
{
  this->Place(this->Cube(5), 2);
  this->Viewer->TextureVisibilityOff();
  this->Enable();
  EXPECT_EQ(this->PropsInView(), (Names{ "text", "line 1", "line 2", "box" }));
}

TEST_F(ImageViewerView, WithoutARendererItStaysDisabledSilently)
{
  this->Place(this->Cube(5), 2);
  this->Scene.DropRenderers();
  this->Enable();
  EXPECT_EQ(this->Viewer->GetEnabled(), 0);
}

TEST_F(ImageViewerView, ItGoesIntoTheViewportUnderTheLastPosition)
{
  zvtest::SceneOptions options;
  options.Viewports = 2;
  zvtest::Scene scene(options);
  this->Place(this->Cube(5), 2);
  scene.Interactor()->SetEventPosition(300, 100);
  scene.Interactor()->SetEventPosition(10, 100); // the last position is the one before
  this->Viewer->SetInteractor(scene.Interactor());
  this->Viewer->SetEnabled(1);
  EXPECT_EQ(this->Viewer->GetCurrentRenderer(), scene.Renderer(1));
  EXPECT_EQ(scene.Renderer(0)->GetViewProps()->GetNumberOfItems(), 0);
  this->Viewer->SetEnabled(0);
  this->Viewer->SetCurrentRenderer(scene.Renderer(0));
  this->Viewer->SetEnabled(1);
  EXPECT_EQ(this->Viewer->GetCurrentRenderer(), scene.Renderer(0));
  EXPECT_TRUE(scene.Renderer(0)->HasViewProp(this->Viewer->SliceLine2Actor));
  this->Release();
}

TEST_F(ImageViewerView, EnablingShowsTheMaskThatWasSetBefore)
{
  this->Place(this->Cube(5), 2);
  this->Viewer->SetImageMask(zvtest::MakeConstantVolume(0.0, this->Cube(5)));
  this->Enable();
  Names shown = this->Shown;
  shown.push_back("mask");
  EXPECT_EQ(this->PropsInView(), shown);
}

TEST_F(ImageViewerView, EnabledWithoutInputItRendersNothingAndSaysNothing)
{
  this->Enable();
  this->Viewer->SetLinesEnabled(0);
  this->Scene.LookAlong(2);
  const zvtest::Picture picture = this->Scene.RenderAndLook();
  EXPECT_EQ(this->Viewer->TexturePlaneActor->GetVisibility(), 0);
  EXPECT_EQ(picture.Count({ 0, 0, 0 }), picture.Width() * picture.Height());
}

TEST_F(ImageViewerView, AnImageWithoutScalarsRendersNothingAndSaysNothing)
{
  vtkNew<vtkImageData> bare;
  bare->SetDimensions(4, 4, 4);
  this->Viewer->SetInput(bare);
  this->Viewer->SetPlaneOrientation(2);
  this->Viewer->UpdatePlane();
  this->Enable();
  this->LookAlongNormal(2);
  this->Scene.Render();
  this->ExpectNoMessage();
}

TEST_F(ImageViewerView, DetachingTakesThePictureAwayWithoutAMessage)
{
  this->Show(this->Cube(5), 2);
  const zvtest::Display at = this->Scene.At({ { 1.2, 2.7, 4 } });
  EXPECT_NE(this->Scene.Look().At(at), (zvtest::Color{ 0, 0, 0 }));
  this->Viewer->SetInput(nullptr);
  EXPECT_EQ(this->Scene.RenderAndLook().At(at), (zvtest::Color{ 0, 0, 0 }));
  this->Mouse.MoveTo(at);
  this->Mouse.Press(zvtest::Left, at);
  this->Mouse.Release(zvtest::Left);
  this->Viewer->SetInput(this->Volume);
  this->Refresh();
  EXPECT_NE(this->Scene.RenderAndLook().At(at), (zvtest::Color{ 0, 0, 0 }));
}

TEST_F(ImageViewerView, AnotherRangeRendersOnceItIsEnabled)
{
  this->Show(this->Cube(5), 2);
  zvtest::EventRecorder recorder;
  recorder.Watch(this->Scene.Interactor(), { vtkCommand::RenderEvent });
  this->SetVolume(this->Cube(5));
  EXPECT_EQ(recorder.Count(vtkCommand::RenderEvent), 0);
  this->SetVolume(this->Cube(4));
  EXPECT_EQ(recorder.Count(vtkCommand::RenderEvent), 1);
}

TEST_F(ImageViewerView, NoSliceOperationRenders)
{
  this->Show(this->Cube(5), 2);
  zvtest::EventRecorder recorder;
  recorder.Watch(this->Scene.Interactor(), { vtkCommand::RenderEvent });
  recorder.Watch(this->Scene.Window(), { vtkCommand::StartEvent });
  this->Viewer->SetSliceIndex(1);
  this->Viewer->SetPlaneOrientation(0);
  this->Viewer->UpdatePlane();
  World axis{ { 0, 1, 0 } };
  World center{ { 2, 2, 2 } };
  this->Viewer->Rotate(10.0, axis.data(), center.data());
  this->Viewer->SetDimensions(9, 9);
  this->Viewer->PushCross(1);
  this->Viewer->AdjustCross(100, 100);
  this->Viewer->SetSliceCross(1, 1);
  this->Viewer->UpdateCursor(100, 100);
  EXPECT_TRUE(recorder.Events().empty());
}

// ---- pictures ----

TEST_F(ImageViewerView, TheSliceShowsTheGreyOfItsVoxels)
{
  const auto volume = zvtest::MakeVolume(
    this->Cube(5), [](int i, int j, int k, int) { return k == 2 ? 100 * i : 1000 + j; });
  this->Volume = volume;
  this->Viewer->SetInput(volume);
  this->Viewer->SetPlaneOrientation(2);
  this->Viewer->SetResliceInterpolate(VTK_NEAREST_RESLICE);
  this->Viewer->SetSliceIndex(2);
  this->Viewer->SetWindowLevel(400.0, 200.0);
  this->Enable();
  this->Viewer->SetLinesEnabled(0);
  this->LookAlongNormal(2);
  this->Scene.Render();
  int last = -1;
  for (int i = 0; i < 4; ++i)
  {
    const zvtest::Color color = this->Scene.ColorAt({ { i + 0.5, 1.3, 2.0 } });
    EXPECT_EQ(color.Red, color.Blue);
    EXPECT_GT(color.Red, last);
    last = color.Red;
  }
}

TEST_F(ImageViewerView, TheLinesHaveTheirColoursInEveryOrientation)
{
  const zvtest::Color red{ 255, 0, 0 }, green{ 0, 255, 0 }, blue{ 0, 0, 255 };
  struct Row
  {
    int Orientation;
    zvtest::Color Line1;
    zvtest::Color Line2;
  };
  for (const Row& row : { Row{ 2, red, green }, Row{ 0, green, blue }, Row{ 1, blue, red } })
  {
    for (const auto& options : { zvtest::UnequalVolume(), zvtest::NegativeSpacingVolume() })
    {
      SCOPED_TRACE(row.Orientation);
      this->Show(options, row.Orientation);
      const PlanePoints plane = this->Plane();
      const World axis1 = plane.Point1 - plane.Origin;
      const World axis2 = plane.Point2 - plane.Origin;
      const zvtest::Picture picture = this->Scene.Look();
      // Line 1 runs along the second axis, line 2 along the first.
      for (double at : { 0.1, 0.3, 0.7, 0.9 })
      {
        EXPECT_TRUE(
          picture.HasNear(row.Line1, this->Scene.At(plane.Origin + axis1 * 0.5 + axis2 * at), 1));
        EXPECT_TRUE(
          picture.HasNear(row.Line2, this->Scene.At(plane.Origin + axis2 * 0.5 + axis1 * at), 1));
        EXPECT_FALSE(picture.HasNear(
          row.Line1, this->Scene.At(plane.Origin + axis1 * 0.25 + axis2 * at), 3, 60));
      }
      this->Viewer->SetEnabled(0);
    }
  }
}

TEST_F(ImageViewerView, TheLinesAreUnbroken)
{
  const zvtest::Color red{ 255, 0, 0 };
  this->Show(this->Cube(9), 2);
  const zvtest::Picture picture = this->Scene.Look();
  const zvtest::Display from = this->Scene.At(this->Line(1).Point1);
  const zvtest::Display to = this->Scene.At(this->Line(1).Point2);
  for (int y = from[1] + 1; y < to[1]; ++y)
  {
    ASSERT_TRUE(picture.HasNear(red, { { from[0], y } }, 1)) << y;
  }
}

TEST_F(ImageViewerView, TheLinesOfAnObliquePlaneAreUnbroken)
{
  const zvtest::Color red{ 255, 0, 0 }, green{ 0, 255, 0 };
  zvtest::Dice dice(11);
  for (const bool isAlongNormal : { true, false })
  {
    int seen = 0;
    this->Show(this->Cube(9), 2);
    this->Viewer->SetSliceIndex(4);
    for (int n = 0; n < 20; ++n)
    {
      World axis{ { dice.Real(-1, 1), dice.Real(-1, 1), dice.Real(-1, 1) } };
      World center{ { 4, 4, 4 } };
      this->Viewer->Rotate(dice.Real(-30, 30), axis.data(), center.data());
      if (isAlongNormal)
      {
        this->LookAtPlane();
      }
      else if (std::abs(this->Viewer->PlaneSource->GetNormal()[2]) < 0.7)
      {
        continue; // seen from the side
      }
      ++seen;
      const zvtest::Picture picture = this->Scene.RenderAndLook();
      for (int line : { 1, 2 })
      {
        // The middle of the plane is inside the box for sure.
        const LineEnds ends = this->Line(line);
        const World direction = Unit(ends.Point2 - ends.Point1);
        int missing = 0;
        for (double at = -3.0; at <= 3.0; at += 0.02)
        {
          missing +=
            picture.HasNear(line == 1 ? red : green, this->Scene.At(center + direction * at), 1)
            ? 0
            : 1;
        }
        EXPECT_EQ(missing, 0) << "line " << line << ", rotation " << n << ", " << isAlongNormal;
      }
    }
    EXPECT_GE(seen, 5);
    this->Viewer->SetEnabled(0);
  }
}

TEST_F(ImageViewerView, AnObliquePlaneIsDrawnInsideTheBoxOnly)
{
  const zvtest::Color black{ 0, 0, 0 };
  this->Show(zvtest::MakeConstantVolume(50.0, this->Cube(9)), 2);
  this->Viewer->SetWindowLevel(200.0, 0.0); // what lies beside the volume, 0, would be grey
  this->Viewer->SetSliceIndex(4);
  this->Viewer->SetLinesEnabled(0);
  World axis{ { 0, 0, 1 } };
  World center{ { 4, 4, 4 } };
  this->Viewer->Rotate(30.0, axis.data(), center.data());
  this->LookAlongNormal(2);
  const zvtest::Picture picture = this->Scene.RenderAndLook();
  const zvtest::Color inside = picture.At(this->Scene.At(center));
  EXPECT_GT(inside.Red, 150);
  int outsides = 0;
  for (double x = -1.5; x <= 9.5; x += 0.5)
  {
    for (double y = -1.5; y <= 9.5; y += 0.5)
    {
      const zvtest::Color color = picture.At(this->Scene.At({ { x, y, 4 } }));
      if (x > 1.2 && x < 6.8 && y > 1.2 && y < 6.8) // farther in than a sample of what lies beside
      {
        EXPECT_EQ(color, inside) << x << ", " << y;
      }
      else if (x < -0.2 || x > 8.2 || y < -0.2 || y > 8.2)
      {
        EXPECT_EQ(color, black) << x << ", " << y;
        ++outsides;
      }
      else if (x > 0.2 && x < 7.8 && y > 0.2 && y < 7.8)
      {
        EXPECT_GT(color.Red, 100) << x << ", " << y;
      }
    }
  }
  EXPECT_GT(outsides, 100);
}

TEST_F(ImageViewerView, APlaneThatLeavesTheBoxAskewShowsItsCutOnly)
{
  const zvtest::Color black{ 0, 0, 0 };
  this->Show(zvtest::MakeConstantVolume(50.0, this->Cube(9)), 2);
  this->Viewer->SetWindowLevel(200.0, 0.0);
  this->Viewer->SetSliceIndex(4);
  this->Viewer->SetLinesEnabled(0);
  World axis{ { 1, -1, 0 } };
  World center{ { 4, 4, 4 } };
  this->Viewer->Rotate(54.735610317245346, axis.data(), center.data()); // normal along a diagonal
  this->LookAtPlane();
  const zvtest::Picture picture = this->Scene.RenderAndLook();
  // The cut is a regular hexagon with corners in the middles of the box's edges.
  const World normal = ToWorld(this->Viewer->PlaneSource->GetNormal());
  EXPECT_NEAR(std::abs(normal[0]), std::sqrt(1.0 / 3), 1e-9);
  EXPECT_NEAR(std::abs(normal[1]), std::sqrt(1.0 / 3), 1e-9);
  const World u = Unit(this->Plane().Point1 - this->Plane().Origin);
  const World w = Cross(normal, u);
  for (int step = 0; step < 72; ++step)
  {
    const double angle = step * std::acos(-1.0) / 36;
    const World direction = u * std::cos(angle) + w * std::sin(angle);
    double reach = 1e9;
    for (double component : direction)
    {
      reach = std::min(reach, 4.0 / std::abs(component));
    }
    EXPECT_GT(picture.At(this->Scene.At(center + direction * (reach - 0.3))).Red, 100) << step;
    EXPECT_EQ(picture.At(this->Scene.At(center + direction * (reach + 0.3))), black) << step;
  }
}

TEST_F(ImageViewerView, TheBoxOutlineHasTheColourOfThePlanesProperty)
{
  this->Show(zvtest::MakeConstantVolume(0.0, this->Cube(5)), 2);
  this->Viewer->GetPlaneProperty()->SetColor(1.0, 0.5, 0.0);
  const zvtest::Picture picture = this->Scene.RenderAndLook();
  for (const World& at :
    { World{ { 0, 1, 4 } }, World{ { 4, 1, 4 } }, World{ { 1, 0, 4 } }, World{ { 1, 4, 4 } } })
  {
    EXPECT_TRUE(picture.HasNear(zvtest::Color::FromUnit(1.0, 0.5, 0.0), this->Scene.At(at), 2, 10));
  }
}

// ---- window and level by the right button ----

class ImageViewerWindowLevel : public ImageViewerView
{
protected:
  void SetUp() override
  {
    this->Show(this->Cube(9), 2);
    this->Viewer->SetRightButtonAction(2);
    this->Viewer->SetWindowLevel(500.0, 200.0);
    this->Recorder.Watch(this->Viewer, zvtest::WidgetEvents);
    this->Recorder.Watch(this->Scene.Interactor(), { vtkCommand::RenderEvent });
  }

  zvtest::EventRecorder Recorder;
};

TEST_F(ImageViewerWindowLevel, APressOnTheSliceStartsIt)
{
  const zvtest::Display at = this->Mouse.At({ { 2, 3, 8 } });
  const std::string text = this->Viewer->TextBuff;
  this->Viewer->TextActor->SetVisibility(0);
  this->Mouse.Press(zvtest::Right, at);
  EXPECT_EQ(this->Viewer->GetState(), 2);
  ASSERT_EQ(this->Recorder.Names(), (Names{ "StartWindowLevelEvent", "RenderEvent" }));
  EXPECT_EQ(this->Recorder.Events()[0].Values, (std::vector<double>{ 500.0, 200.0 }));
  EXPECT_EQ(this->Viewer->InitialWindow, 500.0);
  EXPECT_EQ(this->Viewer->InitialLevel, 200.0);
  EXPECT_EQ(this->Viewer->StartWindowLevelPositionX, at[0]);
  EXPECT_EQ(this->Viewer->StartWindowLevelPositionY, at[1]);
  EXPECT_EQ(this->Viewer->PlaneOutlineActor->GetProperty(), this->Viewer->SelectedPlaneProperty);
  EXPECT_EQ(this->Viewer->TextActor->GetVisibility(), 0) << "the text is left alone";
  EXPECT_EQ(std::string(this->Viewer->TextBuff), text);
  EXPECT_EQ(
    this->Scene.Window()->GetDesiredUpdateRate(), this->Scene.Interactor()->GetDesiredUpdateRate());
}

TEST_F(ImageViewerWindowLevel, ADragChangesItAndTheReleaseEndsIt)
{
  const zvtest::Display at = this->Mouse.At({ { 2, 3, 8 } });
  this->Mouse.Press(zvtest::Right, at);
  this->Mouse.MoveTo({ { at[0] + 40, at[1] + 20 } });
  EXPECT_NE(this->Viewer->GetWindow(), 500.0);
  const std::vector<double> now{ this->Viewer->GetWindow(), this->Viewer->GetLevel() };
  EXPECT_GE(this->Recorder.Count(vtkCommand::WindowLevelEvent), 1);
  this->Recorder.Clear();
  this->Mouse.Release(zvtest::Right);
  EXPECT_EQ(this->Viewer->GetState(), 0);
  ASSERT_EQ(this->Recorder.Names(), (Names{ "EndWindowLevelEvent", "RenderEvent" }));
  EXPECT_EQ(this->Recorder.Events()[0].Values, now);
  EXPECT_EQ(this->Viewer->PlaneOutlineActor->GetProperty(), this->Viewer->PlaneProperty);
  EXPECT_EQ(
    this->Scene.Window()->GetDesiredUpdateRate(), this->Scene.Interactor()->GetStillUpdateRate());
  this->Recorder.Clear();
  this->Mouse.Release(zvtest::Right);
  EXPECT_TRUE(this->Recorder.Events().empty()) << "there is nothing to end";
}

TEST_F(ImageViewerWindowLevel, ItTakesPressAndReleaseAwayFromOthers)
{
  const zvtest::Display at = this->Mouse.At({ { 2, 3, 8 } });
  zvtest::EventRecorder others;
  others.Watch(this->Scene.Interactor(),
    { vtkCommand::RightButtonPressEvent, vtkCommand::RightButtonReleaseEvent });
  this->Mouse.Press(zvtest::Right, at);
  this->Mouse.Release(zvtest::Right);
  EXPECT_TRUE(others.Events().empty());
  // A press beside the slice is left to them.
  this->Mouse.Press(zvtest::Right, { { 3, 3 } });
  this->Mouse.Release(zvtest::Right);
  EXPECT_EQ(others.Names(), (Names{ "RightButtonPressEvent", "RightButtonReleaseEvent" }));
}

TEST_F(ImageViewerWindowLevel, APressBesideTheSliceIsOutside)
{
  this->Viewer->InitialWindow = 1.0;
  this->Mouse.Press(zvtest::Right, { { 3, 3 } });
  EXPECT_EQ(this->Viewer->GetState(), 8);
  EXPECT_EQ(this->Recorder.Count(vtkCommand::StartWindowLevelEvent), 0);
  EXPECT_EQ(this->Viewer->InitialWindow, 500.0);
  EXPECT_EQ(this->Viewer->PlaneOutlineActor->GetProperty(), this->Viewer->PlaneProperty);
  this->Mouse.Release(zvtest::Right);
  EXPECT_EQ(this->Viewer->GetState(), 8);
  EXPECT_EQ(this->Recorder.Count(vtkCommand::EndWindowLevelEvent), 0);
}

TEST_F(ImageViewerWindowLevel, APressOutsideTheViewportIsOutside)
{
  this->Viewer->InitialWindow = 1.0;
  this->Mouse.Press(zvtest::Right, { { 1000, 1000 } });
  EXPECT_EQ(this->Viewer->GetState(), 8);
  EXPECT_EQ(this->Viewer->InitialWindow, 1.0);
}

TEST_F(ImageViewerWindowLevel, WithoutARendererItIsOutside)
{
  this->Viewer->SetCurrentRenderer(nullptr);
  this->Viewer->StartWindowLevel();
  EXPECT_EQ(this->Viewer->GetState(), 8);
  this->Viewer->StopWindowLevel();
  EXPECT_EQ(this->Viewer->GetState(), 8);
}

TEST_F(ImageViewerWindowLevel, AnObserverMayDisableDetachUnhookOrDelete)
{
  const zvtest::Display at = this->Mouse.At({ { 2, 3, 8 } });
  const std::function<void()> actions[] = { [this] { this->Viewer->SetEnabled(0); },
    [this] { this->Viewer->SetInteractor(nullptr); }, [this] { this->Viewer->SetInput(nullptr); },
    [this] { this->Release(); } };
  for (const unsigned long event : { vtkCommand::StartWindowLevelEvent,
         vtkCommand::WindowLevelEvent, vtkCommand::EndWindowLevelEvent })
  {
    for (const auto& action : actions)
    {
      this->Viewer = vtkSmartPointer<OpenViewer>::Take(OpenViewer::New());
      this->Show(this->Cube(9), 2);
      this->Viewer->SetRightButtonAction(2);
      bool isDone = false;
      zvtest::EventRecorder recorder;
      recorder.Watch(this->Viewer, { event },
        [&](const zvtest::RecordedEvent&)
        {
          isDone = true;
          action();
        });
      this->Mouse.Press(zvtest::Right, at);
      this->Mouse.MoveTo({ { at[0] + 10, at[1] + 10 } });
      this->Mouse.Release(zvtest::Right);
      EXPECT_TRUE(isDone);
      this->Release();
      EXPECT_EQ(this->Scene.Renderer()->GetViewProps()->GetNumberOfItems(), 0);
    }
  }
}

TEST_F(ImageViewerWindowLevel, TheWindowMayGoBetweenPressAndRelease)
{
  this->Mouse.Press(zvtest::Right, this->Mouse.At({ { 2, 3, 8 } }));
  EXPECT_EQ(this->Viewer->GetState(), 2);
  this->Scene.DropWindow();
  this->Viewer->StopWindowLevel();
  EXPECT_EQ(this->Viewer->GetState(), 0);
}

TEST_F(ImageViewerWindowLevel, ShiftAndRResetItAndAnObserverMayDelete)
{
  this->Mouse.MoveTo(this->Mouse.At({ { 2, 3, 8 } }));
  EXPECT_EQ(this->Viewer->GetWindow(), 500.0);
  this->Mouse.Type('R', zvtest::Shift);
  EXPECT_EQ(this->Viewer->GetWindow(), this->Viewer->OriginalWindow);
  EXPECT_EQ(this->Viewer->GetLevel(), this->Viewer->OriginalLevel);
  EXPECT_GE(this->Recorder.Count(vtkCommand::ResetWindowLevelEvent), 1);
  zvtest::EventRecorder recorder;
  recorder.Watch(this->Viewer, { vtkCommand::ResetWindowLevelEvent },
    [this](const zvtest::RecordedEvent&) { this->Release(); });
  this->Mouse.Type('R', zvtest::Shift);
  EXPECT_EQ(this->Viewer.GetPointer(), nullptr);
}

// ---- lifecycle ----

TEST_F(ImageViewerView, DeletedWhileEnabledItLeavesTheView)
{
  this->Place(this->Cube(5), 2);
  this->Enable();
  this->Release();
  EXPECT_EQ(this->Scene.Renderer()->GetViewProps()->GetNumberOfItems(), 0);
  EXPECT_FALSE(this->Scene.Interactor()->HasObserver(vtkCommand::MouseMoveEvent, nullptr));
  this->Mouse.Press(zvtest::Left, { { 200, 200 } });
  this->Mouse.MoveTo({ { 220, 210 } });
  this->Mouse.Release(zvtest::Left);
  EXPECT_EQ(this->Scene.Renderer()->GetReferenceCount(), 2) << "the scene's and the window's";
}

TEST_F(ImageViewerView, DeletedInMidDragItLeavesTheView)
{
  for (const zvtest::Button button : { zvtest::Left, zvtest::Middle, zvtest::Right })
  {
    this->Viewer = vtkSmartPointer<OpenViewer>::Take(OpenViewer::New());
    this->Show(this->Cube(5), 2);
    const zvtest::Display at = this->Middle();
    this->Mouse.Press(button, at);
    this->Mouse.MoveTo({ { at[0] + 5, at[1] + 7 } });
    this->Release();
    this->Mouse.MoveTo({ { at[0] + 9, at[1] + 9 } });
    this->Mouse.Release(button);
    EXPECT_EQ(this->Scene.Renderer()->GetViewProps()->GetNumberOfItems(), 0);
  }
}

TEST_F(ImageViewerView, ItMayBeDeletedFromItsOwnObservers)
{
  for (const unsigned long event : { vtkCommand::EnableEvent, vtkCommand::DisableEvent })
  {
    this->Viewer = vtkSmartPointer<OpenViewer>::Take(OpenViewer::New());
    this->Place(this->Cube(5), 2);
    zvtest::EventRecorder recorder;
    recorder.Watch(
      this->Viewer, { event }, [this](const zvtest::RecordedEvent&) { this->Release(); });
    OpenViewer* viewer = this->Viewer;
    viewer->SetInteractor(this->Scene.Interactor());
    viewer->SetEnabled(1);
    if (event == vtkCommand::DisableEvent)
    {
      viewer->SetEnabled(0);
    }
    EXPECT_EQ(this->Viewer.GetPointer(), nullptr);
    EXPECT_EQ(this->Scene.Renderer()->GetViewProps()->GetNumberOfItems(), 0);
  }
}

TEST_F(ImageViewerView, ItMayBeDisabledFromItsOwnObservers)
{
  this->Place(this->Cube(5), 2);
  zvtest::EventRecorder recorder;
  recorder.Watch(this->Viewer, { vtkCommand::EnableEvent },
    [this](const zvtest::RecordedEvent&) { this->Viewer->SetEnabled(0); });
  this->Enable();
  EXPECT_EQ(this->Viewer->GetEnabled(), 0);
  EXPECT_TRUE(this->PropsInView().empty());
}

TEST_F(ImageViewerView, TheInteractorMayGoFirst)
{
  this->Show(this->Cube(5), 2);
  this->Scene.DropInteractor();
  EXPECT_EQ(this->Viewer->GetEnabled(), 0);
  EXPECT_EQ(this->Viewer->GetInteractor(), nullptr);
  this->Viewer->SetSliceIndex(1);
  this->Viewer->UndoFill();
  this->Viewer->SetLinesEnabled(0);
  EXPECT_EQ(this->Viewer->GetSliceIndex(), 1);
}

TEST_F(ImageViewerView, TheRenderersMayGoFirst)
{
  this->Show(this->Cube(5), 2);
  this->Scene.DropRenderers();
  this->Viewer->UpdateCursor(200, 200);
  this->Viewer->AdjustCross(200, 200);
  this->Viewer->SetLinesEnabled(0);
  this->Viewer->SetLinesEnabled(1);
  this->Viewer->StartWindowLevel();
  this->Viewer->StopWindowLevel();
  this->Viewer->SetEnabled(0);
  EXPECT_EQ(this->Viewer->GetEnabled(), 0);
}

TEST_F(ImageViewerView, TheWindowMayGoFirst)
{
  this->Show(this->Cube(5), 2);
  this->Scene.DropWindow();
  this->Viewer->SetSliceIndex(1);
  this->Viewer->UpdateCursor(200, 200);
  this->Viewer->AdjustCross(200, 200);
  this->Viewer->UndoFill();
  this->Viewer->SetLinesEnabled(0);
  this->Viewer->StartWindowLevel();
  this->Viewer->StopWindowLevel();
  EXPECT_EQ(this->Viewer->GetSliceIndex(), 1);
}

TEST_F(ImageViewerView, TheWholeViewMayGoFirst)
{
  this->Show(this->Cube(5), 2);
  this->Viewer->SetImageMask(zvtest::MakeConstantVolume(0.0, this->Cube(5)));
  this->Scene.DropWindow();
  this->Scene.DropRenderers();
  this->Scene.DropInteractor();
  EXPECT_EQ(this->Viewer->GetEnabled(), 0);
  this->Viewer->SetSliceIndex(1);
  this->Viewer->SetEnableImageMask(0);
  this->Viewer->SetEnableImageMask(1);
  EXPECT_EQ(this->Viewer->GetSliceIndex(), 1);
}

TEST_F(ImageViewerView, TakenOffItsInteractorItIsDisabled)
{
  this->Show(this->Cube(5), 2);
  this->Viewer->SetInteractor(nullptr);
  EXPECT_EQ(this->Viewer->GetEnabled(), 0);
  EXPECT_TRUE(this->PropsInView().empty());
}

TEST_F(ImageViewerView, MovedToAnotherViewItLeavesTheFirst)
{
  this->Show(this->Cube(5), 2);
  zvtest::Scene other;
  this->Viewer->SetInteractor(other.Interactor());
  this->Viewer->SetEnabled(1);
  EXPECT_EQ(this->Scene.Renderer()->GetViewProps()->GetNumberOfItems(), 0);
  EXPECT_EQ(this->Viewer->GetCurrentRenderer(), other.Renderer());
  this->Release();
}

TEST_F(ImageViewerView, ItsToolsGoWithIt)
{
  this->AddOneToolOfEachKind();
  vtkWeakPointer<OpenViewer> viewer = this->Viewer.GetPointer();
  Tool* kept = this->AddTool(this->Viewer->AreaWidgets, "kept");
  kept->Register(nullptr);
  this->Release();
  std::sort(this->Log.begin(), this->Log.end());
  EXPECT_EQ(this->Log, (Names{ "area gone", "lasso gone", "note gone", "ruler gone" }));
  EXPECT_EQ(viewer.GetPointer(), nullptr);
  EXPECT_EQ(kept->GetReferenceCount(), 1);
  kept->Delete();
}

TEST_F(ImageViewerView, AToolThatHasNoInteractorYetIsNotAskedToDisable)
{
  this->Place(this->Cube(5), 2);
  this->Enable();
  this->AddOneToolOfEachKind();
  this->Viewer->SetEnabled(0);
  EXPECT_TRUE(this->Log.empty());
  this->Release();
}

TEST_F(ImageViewerView, AnEnabledViewerDisablesItsToolsBeforeItReleasesThem)
{
  this->Place(this->Cube(5), 2);
  this->Enable();
  for (const auto& [list, name] : { std::pair{ this->Viewer->RulerWidgets.Get(), "ruler" },
         std::pair{ this->Viewer->AreaWidgets.Get(), "area" },
         std::pair{ this->Viewer->LassoWidgets.Get(), "lasso" },
         std::pair{ this->Viewer->TextNoteWidgets.Get(), "note" } })
  {
    this->AddTool(list, name)->SetInteractor(this->Scene.Interactor());
  }
  this->Release();
  EXPECT_EQ(this->Log,
    (Names{ "ruler off", "area off", "lasso off", "ruler gone", "area gone", "lasso gone",
      "note gone" }));
}
