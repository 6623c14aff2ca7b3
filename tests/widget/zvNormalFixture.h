#ifndef zvNormalFixture_h
#define zvNormalFixture_h

#include "zvImageViewerFixture.h"
#include "zvNormalWidget.h"

#include "vtkActor.h"
#include "vtkCellPicker.h"
#include "vtkConeSource.h"
#include "vtkLineSource.h"
#include "vtkPolyDataMapper.h"
#include "vtkPropCollection.h"
#include "vtkProperty.h"

#include <memory>

/// A normal widget that shows its inside.
class OpenNormal : public zvNormalWidget
{
public:
  static OpenNormal* New()
  {
    auto* widget = new OpenNormal;
    widget->InitializeObjectBase();
    return widget;
  }

  using zvNormalWidget::Cone1Actor;
  using zvNormalWidget::Cone1Mapper;
  using zvNormalWidget::Cone1Source;
  using zvNormalWidget::Cone2Actor;
  using zvNormalWidget::Cone2Mapper;
  using zvNormalWidget::Cone2Source;
  using zvNormalWidget::CurrentHandle;
  using zvNormalWidget::DebugMode;
  using zvNormalWidget::EventCallbackCommand;
  using zvNormalWidget::HandlePicker;
  using zvNormalWidget::HandleSize;
  using zvNormalWidget::InitialLength;
  using zvNormalWidget::Interaction;
  using zvNormalWidget::LastPickPosition;
  using zvNormalWidget::LineActor;
  using zvNormalWidget::LineMapper;
  using zvNormalWidget::LineSource;
  using zvNormalWidget::NormalProperty;
  using zvNormalWidget::SelectedNormalProperty;
  using zvNormalWidget::State;
  using zvNormalWidget::ViewerCallback;

protected:
  OpenNormal() = default;
  ~OpenNormal() override = default;
};

/// A normal widget without any view.
class NormalWidgetAlone : public zvtest::QuietTest
{
protected:
  zvtest::World Point1()
  {
    zvtest::World point;
    this->Normal->GetPoint1(point.data());
    return point;
  }

  zvtest::World Point2()
  {
    zvtest::World point;
    this->Normal->GetPoint2(point.data());
    return point;
  }

  zvtest::World Direction()
  {
    zvtest::World normal;
    this->Normal->GetNormal(normal.data());
    return normal;
  }

  /// How far the placing has come: 1, 2 or 3.
  int Items() { return this->Normal->HandlePicker->GetPickList()->GetNumberOfItems(); }

  /// What the widget tells.
  void Watch() { this->Told.Watch(this->Normal, zvtest::WidgetEvents); }

  static constexpr zvtest::World First{ { 10, 10, 40 } };
  static constexpr zvtest::World Second{ { 30, 25, 40 } };

  vtkSmartPointer<OpenNormal> Normal = vtkSmartPointer<OpenNormal>::Take(OpenNormal::New());
  zvtest::EventRecorder Told;
};

/// A slice viewer in a window of its own, which looks at the far side of a volume.
struct ViewerInWindow
{
  ViewerInWindow(vtkImageData* volume, int orientation)
    : Viewer(vtkSmartPointer<OpenViewer>::Take(OpenViewer::New()))
  {
    static const zvtest::World directions[3] = { { { -1, 0, 0 } }, { { 0, -1, 0 } },
      { { 0, 0, -1 } } };
    static const zvtest::World ups[3] = { { { 0, 0, 1 } }, { { 1, 0, 0 } }, { { 0, 1, 0 } } };
    this->Viewer->SetInput(volume);
    this->Viewer->SetPlaneOrientation(orientation);
    this->Viewer->UpdatePlane();
    this->Viewer->SetInteractor(this->Scene.Interactor());
    this->Viewer->SetEnabled(1);
    this->Scene.LookAlong(directions[orientation], ups[orientation]);
    this->Scene.ResetCamera(volume->GetBounds());
    this->Scene.Render();
  }

  zvtest::Scene Scene;
  zvtest::Mouse Mouse{ this->Scene };
  vtkSmartPointer<OpenViewer> Viewer;
};

/// A normal widget in three slice viewers and a 3D view, each with a window of its own, on a volume
/// that reaches from 0 to 40 millimetres.
class NormalWidgetTest : public NormalWidgetAlone
{
protected:
  NormalWidgetTest()
    : Volume(MakeVolume())
    , X(std::make_unique<ViewerInWindow>(this->Volume, 0))
    , Y(std::make_unique<ViewerInWindow>(this->Volume, 1))
    , Z(std::make_unique<ViewerInWindow>(this->Volume, 2))
    , Depth(std::make_unique<zvtest::Scene>())
  {
    this->Depth->LookAlong({ { -0.4, 0.5, -0.6 } }, { { 0, 0, 1 } });
    this->Depth->ResetCamera(this->Volume->GetBounds());
    this->Depth->Render();
    this->Normal->SetViewerWidgetX(this->X->Viewer);
    this->Normal->SetViewerWidgetY(this->Y->Viewer);
    this->Normal->SetViewerWidgetZ(this->Z->Viewer);
    this->Normal->SetRenderer3D(this->Depth->Renderer());
  }

  static vtkSmartPointer<vtkImageData> MakeVolume()
  {
    zvtest::VolumeOptions options;
    options.Dimensions = { { 41, 41, 41 } };
    return zvtest::MakeConstantVolume(100.0, options);
  }

  void Click(ViewerInWindow& view, const zvtest::World& at)
  {
    view.Mouse.Press(zvtest::Left, view.Mouse.At(at));
    view.Mouse.Release(zvtest::Left);
  }

  /// Place both points by clicks on the slice of the Z viewer, which is at z = 40.
  void Place()
  {
    this->Click(*this->Z, First);
    this->Click(*this->Z, Second);
  }

  /// The renderers of the X, Y, Z and 3D views.
  std::vector<vtkRenderer*> Renderers() const
  {
    return { this->X->Scene.Renderer(), this->Y->Scene.Renderer(), this->Z->Scene.Renderer(),
      this->Depth->Renderer() };
  }

  /// In how many of the views a prop is.
  int CountViewsWith(vtkProp* prop) const
  {
    const auto renderers = this->Renderers();
    return static_cast<int>(std::count_if(renderers.begin(), renderers.end(),
      [prop](vtkRenderer* renderer) { return renderer->HasViewProp(prop) != 0; }));
  }

  /// The middle of the line between the points.
  zvtest::World Middle() { return (this->Point1() + this->Point2()) * 0.5; }

  /// What the windows of the four views draw.
  void WatchRenders()
  {
    for (vtkRenderer* renderer : this->Renderers())
    {
      this->Renders.Watch(renderer, { vtkCommand::EndEvent });
    }
  }

  vtkSmartPointer<vtkImageData> Volume;
  std::unique_ptr<ViewerInWindow> X;
  std::unique_ptr<ViewerInWindow> Y;
  std::unique_ptr<ViewerInWindow> Z;
  std::unique_ptr<zvtest::Scene> Depth;
  zvtest::EventRecorder Renders;
};

#endif
