#ifndef zvSeedFixture_h
#define zvSeedFixture_h

#include "zvFourViewsFixture.h"
#include "zvSeedWidget.h"

#include "vtkActor.h"
#include "vtkCallbackCommand.h"
#include "vtkCellPicker.h"
#include "vtkCollection.h"
#include "vtkPlaneSource.h"
#include "vtkProperty.h"
#include "vtkSphereSource.h"

#include <string>
#include <vector>

namespace zvtest
{
/// Seeds whose parts can be looked at.
class OpenSeeds : public zvSeedWidget
{
public:
  static OpenSeeds* New() { return new OpenSeeds; }

  using zvSeedWidget::CurrentActorIndex;
  using zvSeedWidget::CurrentHandle;
  using zvSeedWidget::CurrentRenderer;
  using zvSeedWidget::DebugMode;
  using zvSeedWidget::EventCallbackCommand;
  using zvSeedWidget::HandleActors;
  using zvSeedWidget::HandleActors3D;
  using zvSeedWidget::HandlePicker;
  using zvSeedWidget::HandleProperty;
  using zvSeedWidget::HandleSources;
  using zvSeedWidget::HandleSources3D;
  using zvSeedWidget::InitialBounds;
  using zvSeedWidget::InitialLength;
  using zvSeedWidget::Interactor3D;
  using zvSeedWidget::InteractorX;
  using zvSeedWidget::InteractorY;
  using zvSeedWidget::InteractorZ;
  using zvSeedWidget::LastPickPosition;
  using zvSeedWidget::PlaneSource;
  using zvSeedWidget::ProjectionNormal;
  using zvSeedWidget::ProjectionPosition;
  using zvSeedWidget::ProjectToPlane;
  using zvSeedWidget::Renderer3D;
  using zvSeedWidget::RendererX;
  using zvSeedWidget::RendererY;
  using zvSeedWidget::RendererZ;
  using zvSeedWidget::SelectedHandleProperty;
  using zvSeedWidget::State;
  using zvSeedWidget::ValidPick;
};

/// A widget with its four views, not yet enabled and without seeds.
class Seeds : public FourViews
{
protected:
  using Names = std::vector<std::string>;
  using Open = OpenSeeds;
  using Class = zvSeedWidget;
  static constexpr const char* ClassName = "zvSeedWidget";
  static constexpr const char* Item = "seed";
  static vtkObject* Instantiate() { return vtkInstantiatorzvSeedWidgetNew(); }

  explicit Seeds(int size = 200)
    : FourViews(size)
  {
    this->MakeWidget();
  }

  void MakeWidget()
  {
    this->Widget = vtkSmartPointer<OpenSeeds>::Take(OpenSeeds::New());
    this->SetViews(this->Widget.GetPointer());
  }

  void Add(const World& position)
  {
    World x = position;
    this->Widget->AddHandle(x.data(), 0);
  }

  /// Three seeds that no view shows one behind another; the last is selected.
  void AddThree()
  {
    this->Add({ { -6, -4, -5 } });
    this->Add({ { 0, 5, 1 } });
    this->Add({ { 5, 0, 6 } });
  }

  int Count() { return this->Widget->HandleActors->GetNumberOfItems(); }

  vtkActor* SliceActor(int i)
  {
    return vtkActor::SafeDownCast(this->Widget->HandleActors->GetItemAsObject(i));
  }
  vtkActor* Actor3D(int i)
  {
    return vtkActor::SafeDownCast(this->Widget->HandleActors3D->GetItemAsObject(i));
  }
  vtkSphereSource* SliceSource(int i)
  {
    return vtkSphereSource::SafeDownCast(this->Widget->HandleSources->GetItemAsObject(i));
  }
  vtkSphereSource* Source3D(int i)
  {
    return vtkSphereSource::SafeDownCast(this->Widget->HandleSources3D->GetItemAsObject(i));
  }

  static World CenterOf(vtkSphereSource* sphere)
  {
    return { { sphere->GetCenter()[0], sphere->GetCenter()[1], sphere->GetCenter()[2] } };
  }

  /// Where a seed is, which must be the same in all views.
  World PositionOf(int i)
  {
    EXPECT_EQ(CenterOf(this->SliceSource(i)), CenterOf(this->Source3D(i))) << i;
    return CenterOf(this->SliceSource(i));
  }

  /// In which views the two actors of each seed are: "XYZ 3" where all is well.
  Names Where()
  {
    Names where;
    for (int i = 0; i < this->Count(); ++i)
    {
      where.push_back(this->WhereIs(this->SliceActor(i)) + " " + this->WhereIs(this->Actor3D(i)));
    }
    return where;
  }

  /// How the seeds look, in order: "*" selected, "." not, "?" if its actors differ.
  std::string Looks()
  {
    std::string looks;
    for (int i = 0; i < this->Count(); ++i)
    {
      vtkProperty* property = this->SliceActor(i)->GetProperty();
      looks += property != this->Actor3D(i)->GetProperty()      ? "?"
        : property == this->Widget->GetSelectedHandleProperty() ? "*"
        : property == this->Widget->GetHandleProperty()         ? "."
                                                                : "?";
    }
    return looks;
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

  vtkSmartPointer<OpenSeeds> Widget;
};
}

#endif
