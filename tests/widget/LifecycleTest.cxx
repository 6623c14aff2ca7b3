// What every widget promises of its life, whatever it shows: it may be made, enabled, dragged and
// deleted in any order with the view that it is in.

#include "zv3DRulerWidget.h"
#include "zv3DTreeWidget.h"
#include "zvAreaWidget.h"
#include "zvBoxWidget.h"
#include "zvImage3DPlanes.h"
#include "zvImagePlaneWidget.h"
#include "zvImageViewerWidget.h"
#include "zvInstanceManager.h"
#include "zvLassoWidget.h"
#include "zvNormalWidget.h"
#include "zvPointWidget.h"
#include "zvRulerWidget.h"
#include "zvSeedWidget.h"
#include "zvSnakeWidget.h"
#include "zvSplineWidget.h"
#include "zvTestKit.h"
#include "zvTextNoteWidget.h"
#include "zvVolumeSnakeWidget.h"

#include "vtkCollection.h"
#include "vtkImageData.h"
#include "vtkInteractorObserver.h"
#include "vtkPoints.h"

#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <type_traits>
#include <utility>

namespace
{
// How a widget of each class is made and brought into a view, so that something of it is under the
// middle of the window.
template <typename Widget>
struct Case;

template <>
struct Case<zvImagePlaneWidget>
{
  static zvImagePlaneWidget* Make() { return new zvImagePlaneWidget; }
  static void Show(zvImagePlaneWidget* widget, zvtest::Scene& scene, vtkImageData* volume)
  {
    widget->SetInteractor(scene.Interactor());
    widget->SetInput(volume);
    widget->SetPlaneOrientation(2);
    widget->SetEnabled(1);
  }
  static constexpr bool CanBeEnabled = true;
};

template <>
struct Case<zvImage3DPlanes>
{
  static zvImage3DPlanes* Make() { return new zvImage3DPlanes; }
  static void Show(zvImage3DPlanes* widget, zvtest::Scene& scene, vtkImageData* volume)
  {
    widget->SetImage(volume);
    widget->SetRender(scene.Renderer());
    widget->Create();
    widget->Show();
  }
  static constexpr bool CanBeEnabled = false; // its planes are, it is not
};

template <>
struct Case<zvImageViewerWidget>
{
  static zvImageViewerWidget* Make() { return zvImageViewerWidget::New(); }
  static void Show(zvImageViewerWidget* widget, zvtest::Scene& scene, vtkImageData* volume)
  {
    widget->SetInteractor(scene.Interactor());
    widget->SetInput(volume);
    widget->SetPlaneOrientation(2);
    widget->UpdatePlane();
    widget->SetEnabled(1);
  }
  static constexpr bool CanBeEnabled = true;
};

// A viewer with one tool of each kind, drawn by clicks as a user draws them.
class ViewerFullOfTools : public zvImageViewerWidget
{
public:
  static ViewerFullOfTools* New()
  {
    auto* viewer = new ViewerFullOfTools;
    viewer->InitializeObjectBase();
    return viewer;
  }

  void DrawTools(zvtest::Scene& scene)
  {
    zvtest::Mouse mouse(scene);
    const auto click = [&mouse](double x, double y)
    {
      const zvtest::Display at = mouse.At({ { x, y, 4.0 } });
      mouse.MoveTo(at);
      mouse.Press(zvtest::Left, at);
      mouse.Release(zvtest::Left, at);
    };
    this->AddRulerWidget(nullptr);
    click(1.0, 1.0);
    this->EnableRulerWidget();
    this->CurrentRulerWidget->SetPoint1(3.0, 2.5, 5.0); // the middle of the window
    this->CurrentRulerWidget->SetPoint2(5.0, 4.0, 5.0);
    this->AddAreaWidget(nullptr);
    const double corners[4][2] = { { 1, 4 }, { 2, 4 }, { 2, 3 }, { 1, 4 } };
    for (const auto& corner : corners)
    {
      click(corner[0], corner[1]);
    }
    this->AddAreaMode = false;
    this->SetAddLassoMode(true);
    for (const auto& corner : corners)
    {
      click(corner[0] + 3.0, corner[1] - 2.5); // apart from the contour, and on the slice
    }
    this->SetAddLassoMode(false);
    double color[3] = { 0.0, 1.0, 0.0 };
    this->AddTextNoteWidget("note", 2, color, 0.5);
    for (vtkCollection* tools : { this->RulerWidgets.Get(), this->AreaWidgets.Get(),
           this->LassoWidgets.Get(), this->TextNoteWidgets.Get() })
    {
      ASSERT_EQ(tools->GetNumberOfItems(), 1);
      auto* tool = vtkInteractorObserver::SafeDownCast(tools->GetItemAsObject(0));
      EXPECT_EQ(tool->GetEnabled(), 1) << tool->GetClassName();
    }
  }
};

template <>
struct Case<ViewerFullOfTools>
{
  static ViewerFullOfTools* Make() { return ViewerFullOfTools::New(); }
  static void Show(ViewerFullOfTools* widget, zvtest::Scene& scene, vtkImageData* volume)
  {
    Case<zvImageViewerWidget>::Show(widget, scene, volume);
    double bounds[6];
    volume->GetBounds(bounds);
    scene.LookAlong(2);
    scene.ResetCamera(bounds); // tools stand before the slice, which alone has no depth
    scene.Render();
    widget->DrawTools(scene);
  }
  static constexpr bool CanBeEnabled = true;
};

template <>
struct Case<zvPointWidget>
{
  static zvPointWidget* Make() { return new zvPointWidget; }
  static void Show(zvPointWidget* widget, zvtest::Scene& scene, vtkImageData* volume)
  {
    double bounds[6];
    volume->GetBounds(bounds);
    widget->SetInteractor(scene.Interactor());
    widget->SetPlaceFactor(2.0);
    widget->PlaceWidget(bounds);
    widget->SetEnabled(1);
  }
  static constexpr bool CanBeEnabled = true;
};

template <>
struct Case<zvRulerWidget>
{
  static zvRulerWidget* Make() { return zvRulerWidget::New(); }
  static void Show(zvRulerWidget* widget, zvtest::Scene& scene, vtkImageData* volume)
  {
    double bounds[6];
    volume->GetBounds(bounds);
    widget->SetInteractor(scene.Interactor());
    widget->SetPoint1(bounds[0], bounds[2], bounds[5]);
    widget->SetPoint2(bounds[1], bounds[3], bounds[5]);
    widget->SetEnabled(1);
  }
  static constexpr bool CanBeEnabled = true;
};

template <typename Widget>
struct CurveCase
{
  static Widget* Make() { return Widget::New(); }
  static void Show(Widget* widget, zvtest::Scene& scene, vtkImageData* volume)
  {
    double bounds[6];
    volume->GetBounds(bounds);
    vtkNew<vtkPoints> handles;
    handles->InsertNextPoint(bounds[0], bounds[2], bounds[5]);
    handles->InsertNextPoint(
      0.5 * (bounds[0] + bounds[1]), 0.5 * (bounds[2] + bounds[3]), bounds[5]);
    handles->InsertNextPoint(bounds[1], bounds[3], bounds[5]);
    widget->SetInteractor(scene.Interactor());
    widget->InitializeHandles(handles);
    widget->SetEnabled(1);
  }
  static constexpr bool CanBeEnabled = true;
};

template <>
struct Case<zvSplineWidget> : CurveCase<zvSplineWidget>
{
};

template <>
struct Case<zvAreaWidget> : CurveCase<zvAreaWidget>
{
};

template <>
struct Case<zvLassoWidget> : CurveCase<zvLassoWidget>
{
};

template <>
struct Case<zvTextNoteWidget>
{
  static zvTextNoteWidget* Make() { return zvTextNoteWidget::New(); }
  static void Show(zvTextNoteWidget* widget, zvtest::Scene& scene, vtkImageData* volume)
  {
    double b[6];
    volume->GetBounds(b);
    double green[3] = { 0.0, 1.0, 0.0 };
    widget->SetInteractor(scene.Interactor());
    widget->SetText("HH", green, b[1] - b[0]); // wide enough for the middle, wherever it begins
    widget->SetLocation(b[0], b[2], b[5]);
    widget->AddObservers();
    widget->SetEnabled(1);
  }
  static constexpr bool CanBeEnabled = true;
};

template <typename Widget>
struct ContourCase
{
  static Widget* Make() { return Widget::New(); }
  static void Contour(Widget* widget, zvtest::Scene& scene, vtkImageData* volume)
  {
    double center[3];
    volume->GetCenter(center);
    zvInstanceManager::Instance()->SetCurrentOutput(volume);
    widget->SetRenderer3D(scene.Renderer());
    widget->SetCenter(center);
    widget->SetRadius(1.0);
    widget->CreateInitialSnake();
    widget->SetSnakes3D(widget->GetSnake());
    widget->SetGradient(widget->GetSnake());
    widget->SetEnabled(1);
  }
  static constexpr bool CanBeEnabled = true;
};

template <>
struct Case<zvSnakeWidget> : ContourCase<zvSnakeWidget>
{
  static void Show(zvSnakeWidget* widget, zvtest::Scene& scene, vtkImageData* volume)
  {
    widget->SetCurrentRender(scene.Renderer());
    widget->ViewAreaOn();
    Contour(widget, scene, volume);
  }
};

template <>
struct Case<zvVolumeSnakeWidget> : ContourCase<zvVolumeSnakeWidget>
{
  static void Show(zvVolumeSnakeWidget* widget, zvtest::Scene& scene, vtkImageData* volume)
  {
    widget->SetInteractor(scene.Interactor());
    Contour(widget, scene, volume);
  }
};

template <>
struct Case<zvBoxWidget>
{
  static zvBoxWidget* Make() { return new zvBoxWidget; }
  static void Show(zvBoxWidget* widget, zvtest::Scene& scene, vtkImageData* volume)
  {
    double bounds[6];
    volume->GetBounds(bounds);
    widget->SetInteractor(scene.Interactor());
    widget->PlaceWidget(bounds);
    widget->SetEnabled(1);
  }
  static constexpr bool CanBeEnabled = true;
};

template <>
struct Case<zvNormalWidget>
{
  static zvNormalWidget* Make() { return zvNormalWidget::New(); }
  void Show(zvNormalWidget* widget, zvtest::Scene& scene, vtkImageData* volume)
  {
    this->Viewer = vtkSmartPointer<zvImageViewerWidget>::New();
    Case<zvImageViewerWidget>::Show(this->Viewer, scene, volume);
    widget->SetViewerWidgetX(this->Viewer);
    widget->SetViewerWidgetY(this->Viewer);
    widget->SetViewerWidgetZ(this->Viewer);
    widget->SetRenderer3D(scene.Renderer());
    widget->SetViewerWidgetCurrent(this->Viewer);
    widget->SetEnabled(1);
    double bounds[6];
    volume->GetBounds(bounds);
    double low[3] = { bounds[0], bounds[2], bounds[5] };
    double high[3] = { bounds[1], bounds[3], bounds[5] };
    widget->AddHandle(low);
    widget->AddHandle(high);
  }
  static constexpr bool CanBeEnabled = true;

  vtkSmartPointer<zvImageViewerWidget> Viewer;
};

// Markers in four views, here all the same view.
template <typename Widget>
struct MarkerCase
{
  static Widget* Make() { return Widget::New(); }
  static void Show(Widget* widget, zvtest::Scene& scene, vtkImageData* volume)
  {
    zvInstanceManager::Instance()->SetCurrentOutput(volume);
    widget->SetRendererX(scene.Renderer());
    widget->SetRendererY(scene.Renderer());
    widget->SetRendererZ(scene.Renderer());
    Set3DView(widget, scene.Renderer());
    widget->SetCurrentRender(scene.Renderer());
    double b[6];
    volume->GetBounds(b);
    double points[3][3] = { { b[0], b[2], b[4] }, { b[1], b[3], b[5] },
      { 0.5 * (b[0] + b[1]), 0.5 * (b[2] + b[3]), 0.5 * (b[4] + b[5]) } };
    for (double* point : points)
    {
      widget->AddHandle(point, 0);
    }
    widget->SetEnabled(1);
  }
  static void Set3DView(zvSeedWidget* widget, vtkRenderer* view) { widget->Set3DRender(view); }
  static void Set3DView(zv3DRulerWidget* widget, vtkRenderer* view) { widget->SetRenderer3D(view); }
  static constexpr bool CanBeEnabled = true;
};

template <>
struct Case<zvSeedWidget> : MarkerCase<zvSeedWidget>
{
};

template <>
struct Case<zv3DRulerWidget> : MarkerCase<zv3DRulerWidget>
{
};

template <>
struct Case<zv3DTreeWidget>
{
  static zv3DTreeWidget* Make() { return zv3DTreeWidget::New(); }
  static void Show(zv3DTreeWidget* widget, zvtest::Scene& scene, vtkImageData* volume)
  {
    zvInstanceManager::Instance()->SetCurrentOutput(volume);
    widget->SetRendererX(scene.Renderer());
    widget->SetRendererY(scene.Renderer());
    widget->SetRendererZ(scene.Renderer());
    widget->SetRenderer3D(scene.Renderer());
    widget->SetCurrentRender(scene.Renderer());
    double b[6];
    volume->GetBounds(b);
    double points[3][3] = { { b[0], b[2], b[4] },
      { 0.5 * (b[0] + b[1]), 0.5 * (b[2] + b[3]), 0.5 * (b[4] + b[5]) }, { b[1], b[3], b[5] } };
    for (double* point : points)
    {
      widget->AddHandle(point, 0);
    }
    widget->SetEnabled(1);
    widget->HighlightHandle(-1); // the label would move the tree out of the middle
  }
  static constexpr bool CanBeEnabled = true;
};

// What a widget that can be enabled says where it cannot be: without an interactor, and in a window
// without renderers. Null is nothing.
template <typename Widget>
constexpr const char* SaidWithoutInteractor =
  "The interactor must be set prior to enabling/disabling widget";
template <>
constexpr const char* SaidWithoutInteractor<zvSeedWidget> =
  "set RendererX before enabling the widget...";
template <>
constexpr const char* SaidWithoutInteractor<zv3DRulerWidget> = nullptr;
template <>
constexpr const char* SaidWithoutInteractor<zv3DTreeWidget> = nullptr;
template <>
constexpr const char* SaidWithoutInteractor<zvTextNoteWidget> = nullptr;

template <typename Widget>
constexpr const char* SaidWithoutRenderers = nullptr;
template <>
constexpr const char* SaidWithoutRenderers<zvSeedWidget> =
  "set RendererX before enabling the widget...";
template <>
constexpr const char* SaidWithoutRenderers<zv3DRulerWidget> =
  "set RendererX before enabling the widget...";
template <>
constexpr const char* SaidWithoutRenderers<zv3DTreeWidget> =
  "set RendererX before enabling the widget...";

// Whether one that an observer enables again while it is being disabled stays so: the stock class
// behind a box leaves its renderer then in any case.
template <typename Widget>
constexpr int StaysEnabledAgain = 1;
template <>
constexpr int StaysEnabledAgain<zvBoxWidget> = 0;

template <typename Widget>
class Lifecycle : public zvtest::QuietTest
{
protected:
  Lifecycle()
    : Volume(zvtest::MakeIndexVolume())
    , Made(Case<Widget>::Make())
  {
    this->View.emplace();
  }

  void Show()
  {
    double bounds[6];
    this->Volume->GetBounds(bounds);
    this->View->ResetCamera(bounds);
    this->Parts.Show(this->Made, *this->View, this->Volume);
    this->View->ResetCamera(bounds);
    this->View->LookAlong(2);
    this->View->Render();
  }

  void Delete()
  {
    this->Made->Delete();
    this->Made = nullptr;
  }

  // Destroy what the widget works with besides the view.
  void DropParts() { this->Parts = Case<Widget>(); }

  void StartDrag()
  {
    zvtest::Mouse mouse(*this->View);
    mouse.MoveTo(Middle);
    mouse.Press(zvtest::Left, Middle);
    mouse.MoveTo({ { 220, 215 } });
  }

  // Everything that a user does, to whatever is left of the view.
  void UseEverything()
  {
    zvtest::Mouse mouse(*this->View);
    for (zvtest::Button button : { zvtest::Left, zvtest::Middle, zvtest::Right })
    {
      mouse.Drag(button, Middle, { { 230, 190 } });
      mouse.Drag(button, { { 3, 3 } }, Middle, zvtest::Shift);
    }
    mouse.WheelForward(Middle);
    mouse.WheelBackward(Middle);
    mouse.Type('r', zvtest::Control);
    this->View->Render();
  }

  // One message, or none for null.
  void ExpectToHaveSaid(const char* text)
  {
    const auto messages = this->TakeMessages();
    ASSERT_EQ(messages.size(), text ? 1u : 0u);
    if (text)
    {
      EXPECT_NE(messages.front().find(text), std::string::npos) << messages.front();
    }
  }

  void TearDown() override
  {
    if (this->Made)
    {
      this->Delete();
    }
    this->View.reset();
    QuietTest::TearDown();
  }

  static constexpr zvtest::Display Middle{ { 200, 200 } };
  vtkSmartPointer<vtkImageData> Volume;
  std::optional<zvtest::Scene> View;
  Widget* Made;
  Case<Widget> Parts; // a case may hold other widgets that its own works with
};

using Widgets = ::testing::Types<zvImagePlaneWidget, zvImage3DPlanes, zvImageViewerWidget,
  zvPointWidget, zvRulerWidget, zvSplineWidget, zvAreaWidget, zvLassoWidget, zvTextNoteWidget,
  zvSnakeWidget, zvVolumeSnakeWidget, zvNormalWidget, zv3DTreeWidget, zvSeedWidget, zv3DRulerWidget,
  zvBoxWidget, ViewerFullOfTools>;
TYPED_TEST_SUITE(Lifecycle, Widgets, );
}

TYPED_TEST(Lifecycle, MadeAndDeleted)
{
  this->Delete();
  this->ExpectNoMessage();
}

TYPED_TEST(Lifecycle, ShownUsedAndDeletedLeavesTheViewInUse)
{
  this->Show();
  this->UseEverything();
  this->Delete();
  this->UseEverything();
  this->DropParts();
  EXPECT_EQ(this->View->Renderer()->GetViewProps()->GetNumberOfItems(), 0);
  this->ExpectNoMessage();
}

TYPED_TEST(Lifecycle, DeletedWhileShownTakesItsPropsAlong)
{
  const int before = this->View->Renderer()->GetViewProps()->GetNumberOfItems();
  this->Show();
  ASSERT_GT(this->View->Renderer()->GetViewProps()->GetNumberOfItems(), before);
  this->Delete();
  this->DropParts();
  EXPECT_EQ(this->View->Renderer()->GetViewProps()->GetNumberOfItems(), before);
}

TYPED_TEST(Lifecycle, ShowsAndHidesTwice)
{
  if (!Case<TypeParam>::CanBeEnabled)
  {
    this->Made->SetEnabled(1);
    EXPECT_EQ(this->Made->GetEnabled(), 0);
    return;
  }
  this->Show();
  zvtest::EventRecorder events;
  events.Watch(this->Made, { vtkCommand::EnableEvent, vtkCommand::DisableEvent });
  this->Made->SetEnabled(1);
  EXPECT_TRUE(events.Names().empty());
  if constexpr (std::is_same_v<TypeParam, zvTextNoteWidget>)
  {
    this->ExpectTrace("zvTextNoteWidget", this->Made, "Return in method SetEnabled())");
  }
  this->Made->SetEnabled(0);
  EXPECT_EQ(this->Made->GetEnabled(), 0);
  this->Made->SetEnabled(0);
  EXPECT_EQ(events.Names(), (std::vector<std::string>{ "DisableEvent" }));
  this->Made->SetEnabled(1);
  EXPECT_EQ(this->Made->GetEnabled(), 1);
  this->UseEverything();
}

// What it then shows goes when it is disabled once more, or deleted.
TYPED_TEST(Lifecycle, EnabledAgainByAnObserverWhileItIsDisabled)
{
  if (!Case<TypeParam>::CanBeEnabled)
  {
    return;
  }
  this->Show();
  {
    bool isEnabledAgain = false;
    zvtest::EventRecorder events;
    events.Watch(this->Made, { vtkCommand::DisableEvent },
      [this, &isEnabledAgain](const zvtest::RecordedEvent&)
      {
        if (!std::exchange(isEnabledAgain, true))
        {
          this->Made->SetEnabled(1);
        }
      });
    this->Made->SetEnabled(0);
    EXPECT_TRUE(isEnabledAgain);
  }
  EXPECT_EQ(this->Made->GetEnabled(), StaysEnabledAgain<TypeParam>);
  this->UseEverything();
  this->Delete();
  this->DropParts();
  EXPECT_EQ(this->View->Renderer()->GetViewProps()->GetNumberOfItems(), 0);
  this->ExpectNoMessage();
}

TYPED_TEST(Lifecycle, DeletedFromAnObserverOfARender)
{
  for (const int render : { 0, 1, 2 })
  {
    if (!this->Made)
    {
      this->Made = Case<TypeParam>::Make();
    }
    this->Show();
    int left = render;
    zvtest::EventRecorder events;
    events.Watch(this->View->Interactor(), { vtkCommand::RenderEvent },
      [this, &left](const zvtest::RecordedEvent&)
      {
        if (this->Made && left-- == 0)
        {
          this->Delete();
        }
      });
    this->UseEverything();
    EXPECT_EQ(this->Made, nullptr) << "deleted at render " << render;
    this->DropParts();
    EXPECT_EQ(this->View->Renderer()->GetViewProps()->GetNumberOfItems(), 0);
  }
  this->ExpectNoMessage();
}

TYPED_TEST(Lifecycle, DeletedInMidDrag)
{
  this->Show();
  this->StartDrag();
  this->Delete();
  this->UseEverything();
  this->ExpectNoMessage();
}

TYPED_TEST(Lifecycle, DeletedFromItsOwnObserver)
{
  this->Show();
  bool isDeleted = false;
  zvtest::EventRecorder events;
  events.Watch(this->Made,
    { vtkCommand::StartInteractionEvent, vtkCommand::InteractionEvent,
      vtkCommand::EndInteractionEvent, vtkCommand::LeftButtonPressEvent },
    [this, &isDeleted](const zvtest::RecordedEvent&)
    {
      if (!isDeleted)
      {
        isDeleted = true;
        this->Delete();
      }
    });
  this->UseEverything();
  EXPECT_TRUE(isDeleted);
  this->ExpectNoMessage();
}

TYPED_TEST(Lifecycle, DeletedByWhatAKeyTells)
{
  this->Show();
  zvtest::EventRecorder events;
  events.Watch(this->Made, { vtkCommand::EnableEvent, vtkCommand::DisableEvent },
    [this](const zvtest::RecordedEvent&) { this->Delete(); });
  zvtest::Mouse mouse(*this->View);
  mouse.Type('i');
  this->UseEverything();
  this->ExpectNoMessage();
}

TYPED_TEST(Lifecycle, DeletedWhenItsInteractorIsTakenAway)
{
  this->Show();
  zvtest::EventRecorder events;
  events.Watch(this->Made, { vtkCommand::DisableEvent },
    [this](const zvtest::RecordedEvent&) { this->Delete(); });
  this->Made->SetInteractor(nullptr);
  this->UseEverything();
}

TYPED_TEST(Lifecycle, LosesItsInteractorWhenItIsToHaveAnother)
{
  this->Show();
  zvtest::Scene other;
  zvtest::EventRecorder events;
  events.Watch(this->Made, { vtkCommand::DisableEvent },
    [this](const zvtest::RecordedEvent&) { this->Made->SetInteractor(nullptr); });
  this->Made->SetInteractor(other.Interactor());
  EXPECT_EQ(this->Made->GetEnabled(), 0);
  this->UseEverything();
}

TYPED_TEST(Lifecycle, LosesItsRenderer)
{
  this->Show();
  this->StartDrag();
  this->Made->SetCurrentRenderer(nullptr);
  this->UseEverything();
  if (Case<TypeParam>::CanBeEnabled)
  {
    this->Made->SetEnabled(0);
  }
  EXPECT_EQ(this->Made->GetEnabled(), 0);
  this->Delete();
  this->UseEverything();
}

TYPED_TEST(Lifecycle, OutlivesTheInteractor)
{
  this->Show();
  this->StartDrag();
  this->View->DropInteractor();
  this->View->Render();
  this->Delete();
  this->ExpectNoMessage();
}

TYPED_TEST(Lifecycle, OutlivesTheRenderers)
{
  this->Show();
  this->StartDrag();
  this->View->DropRenderers();
  this->Delete();
  this->ExpectNoMessage();
}

TYPED_TEST(Lifecycle, OutlivesTheWholeView)
{
  this->Show();
  this->View.reset();
  this->Delete();
  this->View.emplace();
  this->ExpectNoMessage();
}

TYPED_TEST(Lifecycle, OutlivesWhatItWorksWith)
{
  this->Show();
  this->StartDrag();
  this->DropParts();
  this->UseEverything();
  this->Delete();
  this->ExpectNoMessage();
}

TYPED_TEST(Lifecycle, AViewWithoutTheWidgetsRendererTakesEvents)
{
  this->Show();
  this->View->DropRenderers();
  zvtest::Mouse mouse(*this->View);
  mouse.MoveTo(this->Middle);
  mouse.Press(zvtest::Left, this->Middle);
  mouse.MoveTo({ { 210, 210 } });
  mouse.Release(zvtest::Left);
  this->Delete();
  this->ExpectNoMessage();
}

TYPED_TEST(Lifecycle, EnabledWithoutAnInteractorOnlySaysSo)
{
  this->Made->SetEnabled(1);
  EXPECT_EQ(this->Made->GetEnabled(), 0);
  this->ExpectToHaveSaid(
    Case<TypeParam>::CanBeEnabled ? SaidWithoutInteractor<TypeParam> : nullptr);
}

TYPED_TEST(Lifecycle, EnabledInAWindowWithoutRenderersStaysDisabled)
{
  this->View->DropRenderers();
  this->Made->SetInteractor(this->View->Interactor());
  this->Made->SetEnabled(1);
  EXPECT_EQ(this->Made->GetEnabled(), 0);
  this->ExpectToHaveSaid(SaidWithoutRenderers<TypeParam>);
}
