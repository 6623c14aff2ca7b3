#ifndef zv3DRulerFixture_h
#define zv3DRulerFixture_h

#include "zv3DRulerWidget.h"
#include "zvFourViewsFixture.h"

#include "vtkActor.h"
#include "vtkCallbackCommand.h"
#include "vtkCamera.h"
#include "vtkCellPicker.h"
#include "vtkCollection.h"
#include "vtkFollower.h"
#include "vtkLineSource.h"
#include "vtkPlaneSource.h"
#include "vtkProperty.h"
#include "vtkSphereSource.h"
#include "vtkVectorText.h"

#include <string>
#include <vector>

namespace zvtest
{
/// A ruler whose parts can be looked at.
class Open3DRuler : public zv3DRulerWidget
{
public:
  static Open3DRuler* New() { return new Open3DRuler; }

  using zv3DRulerWidget::CurrentHandle;
  using zv3DRulerWidget::CurrentLine;
  using zv3DRulerWidget::CurrentPoint;
  using zv3DRulerWidget::CurrentRenderer;
  using zv3DRulerWidget::DebugMode;
  using zv3DRulerWidget::EventCallbackCommand;
  using zv3DRulerWidget::HandleActors;
  using zv3DRulerWidget::HandleProperty;
  using zv3DRulerWidget::HandleSources;
  using zv3DRulerWidget::InitialBounds;
  using zv3DRulerWidget::InitialLength;
  using zv3DRulerWidget::Interactor3D;
  using zv3DRulerWidget::InteractorX;
  using zv3DRulerWidget::InteractorY;
  using zv3DRulerWidget::InteractorZ;
  using zv3DRulerWidget::LastPickPosition;
  using zv3DRulerWidget::LineActors;
  using zv3DRulerWidget::LinePicker;
  using zv3DRulerWidget::LineProperty;
  using zv3DRulerWidget::LineSources;
  using zv3DRulerWidget::PlaneSource;
  using zv3DRulerWidget::PointPicker;
  using zv3DRulerWidget::ProjectionNormal;
  using zv3DRulerWidget::ProjectionPosition;
  using zv3DRulerWidget::ProjectToPlane;
  using zv3DRulerWidget::Renderer3D;
  using zv3DRulerWidget::RendererX;
  using zv3DRulerWidget::RendererY;
  using zv3DRulerWidget::RendererZ;
  using zv3DRulerWidget::SelectedHandleProperty;
  using zv3DRulerWidget::SelectedLineProperty;
  using zv3DRulerWidget::State;
  using zv3DRulerWidget::TextActor;
  using zv3DRulerWidget::TextSource;
  using zv3DRulerWidget::ValidPick;
};

/// A widget with its four views, not yet enabled and without points.
class Ruler3D : public FourViews
{
protected:
  using Names = std::vector<std::string>;
  using Open = Open3DRuler;
  using Class = zv3DRulerWidget;
  static constexpr const char* ClassName = "zv3DRulerWidget";
  static constexpr const char* Item = "point";
  static vtkObject* Instantiate() { return vtkInstantiatorzv3DRulerWidgetNew(); }

  explicit Ruler3D(int size = 200)
    : FourViews(size)
  {
    this->MakeWidget();
  }

  void MakeWidget()
  {
    this->Widget = vtkSmartPointer<Open3DRuler>::Take(Open3DRuler::New());
    this->SetViews(this->Widget.GetPointer());
  }

  void Add(const World& position)
  {
    World x = position;
    this->Widget->AddHandle(x.data(), 0);
  }

  /// Three points, whose segments are 5 and 13 mm long; the last point and segment are selected.
  void AddThree()
  {
    this->Add({ { -6, -4, 1 } });
    this->Add({ { -3, 0, 1 } });
    this->Add({ { 9, 5, 1 } });
  }

  int CountPoints() { return this->Widget->HandleActors->GetNumberOfItems(); }
  int CountSegments() { return this->Widget->LineActors->GetNumberOfItems(); }

  vtkActor* PointActor(int i)
  {
    return vtkActor::SafeDownCast(this->Widget->HandleActors->GetItemAsObject(i));
  }
  vtkSphereSource* Sphere(int i)
  {
    return vtkSphereSource::SafeDownCast(this->Widget->HandleSources->GetItemAsObject(i));
  }
  vtkActor* SegmentActor(int i)
  {
    return vtkActor::SafeDownCast(this->Widget->LineActors->GetItemAsObject(i));
  }
  vtkLineSource* Segment(int i)
  {
    return vtkLineSource::SafeDownCast(this->Widget->LineSources->GetItemAsObject(i));
  }

  World PositionOf(int i)
  {
    const double* center = this->Sphere(i)->GetCenter();
    return { { center[0], center[1], center[2] } };
  }

  /// Each segment must join its two points.
  void ExpectChain(int points)
  {
    ASSERT_EQ(this->CountPoints(), points);
    ASSERT_EQ(this->Widget->HandleSources->GetNumberOfItems(), points);
    ASSERT_EQ(this->CountSegments(), std::max(points - 1, 0));
    ASSERT_EQ(this->Widget->LineSources->GetNumberOfItems(), std::max(points - 1, 0));
    for (int i = 0; i < points - 1; ++i)
    {
      const double* p1 = this->Segment(i)->GetPoint1();
      const double* p2 = this->Segment(i)->GetPoint2();
      EXPECT_EQ((World{ { p1[0], p1[1], p1[2] } }), this->PositionOf(i)) << i;
      EXPECT_EQ((World{ { p2[0], p2[1], p2[2] } }), this->PositionOf(i + 1)) << i;
    }
  }

  /// In which views the points are, then the segments, then the label: "XYZ3" where all is well.
  Names Where()
  {
    Names where;
    for (int i = 0; i < this->CountPoints(); ++i)
    {
      where.push_back(this->WhereIs(this->PointActor(i)));
    }
    for (int i = 0; i < this->CountSegments(); ++i)
    {
      where.push_back(this->WhereIs(this->SegmentActor(i)));
    }
    where.push_back("label " + this->WhereIs(this->Widget->TextActor));
    return where;
  }

  /// How points and segments look, along the chain: "*" a selected point, "o" another; "=" a
  /// selected segment, "-" another; "?" an unknown look.
  std::string Looks()
  {
    std::string looks;
    for (int i = 0; i < this->CountPoints(); ++i)
    {
      vtkProperty* point = this->PointActor(i)->GetProperty();
      looks += point == this->Widget->SelectedHandleProperty ? "*"
        : point == this->Widget->HandleProperty              ? "o"
                                                             : "?";
      if (i < this->CountSegments())
      {
        vtkProperty* segment = this->SegmentActor(i)->GetProperty();
        looks += segment == this->Widget->SelectedLineProperty ? "="
          : segment == this->Widget->LineProperty              ? "-"
                                                               : "?";
      }
    }
    return looks;
  }

  std::string Label() { return this->Widget->TextSource->GetText(); }

  /// The label stands one millimetre before a position, seen in the current view.
  void ExpectLabelAt(const World& position)
  {
    const double* direction =
      this->Widget->CurrentRenderer->GetActiveCamera()->GetDirectionOfProjection();
    const double* actual = this->Widget->TextActor->GetPosition();
    for (int axis = 0; axis < 3; ++axis)
    {
      EXPECT_NEAR(actual[axis], position[axis] - direction[axis], 1e-9) << axis;
    }
  }

  /// Note what the widget tells, the renders, and the mouse events that it lets pass to others.
  void Record(EventRecorder& recorder)
  {
    recorder.Watch(this->Widget, WidgetEvents);
    this->WatchRenders(recorder);
    for (View view : AllViews)
    {
      recorder.Watch(this->Interactor(view), MouseEvents);
    }
  }

  vtkSmartPointer<Open3DRuler> Widget;
};
}

#endif
