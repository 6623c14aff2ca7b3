#include "zvImage3DPlanes.h"

#include "zvEvents.h"
#include "zvImagePlaneWidget.h"
#include "zvTestKit.h"

#include "vtkCallbackCommand.h"
#include "vtkCamera.h"
#include "vtkImageData.h"
#include "vtkImageShiftScale.h"
#include "vtkLODActor.h"
#include "vtkLookupTable.h"
#include "vtkMath.h"
#include "vtkMatrix3x3.h"
#include "vtkNew.h"
#include "vtkOutlineFilter.h"
#include "vtkPolyData.h"
#include "vtkPropCollection.h"
#include "vtkProperty.h"
#include "vtkSphereSource.h"
#include "vtkTrivialProducer.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace
{
const char* const TurnedText =
  "The image's direction matrix is not the identity, so the planes do not show it. Reorient it "
  "first: permute and flip its axes exactly, or resample it.";
const char* const NoRenderText = "set render before showing the planes...";
const char* const NotCreatedText = "create the planes before resetting them...";

// The three planes with their inside open.
class OpenPlanes : public zvImage3DPlanes
{
public:
  explicit OpenPlanes(int* alive)
    : Alive(alive)
  {
    ++*this->Alive;
  }
  ~OpenPlanes() override { --*this->Alive; }

  using zvImage3DPlanes::Created;
  using zvImage3DPlanes::Dimension;
  using zvImage3DPlanes::EventCallbackCommand;
  using zvImage3DPlanes::Image;
  using zvImage3DPlanes::Interactor;
  using zvImage3DPlanes::LastClickedVoxel;
  using zvImage3DPlanes::OutlineActor;
  using zvImage3DPlanes::OutlineFilter;
  using zvImage3DPlanes::PlaneX;
  using zvImage3DPlanes::PlaneY;
  using zvImage3DPlanes::PlaneZ;
  using zvImage3DPlanes::Renderer;
  using zvImage3DPlanes::RenderWindow;
  using zvImage3DPlanes::State;

  std::array<zvImagePlaneWidget*, 3> Planes()
  {
    return { { this->PlaneX, this->PlaneY, this->PlaneZ } };
  }

private:
  int* Alive;
};

using Ints = std::vector<int>;
using Doubles = std::vector<double>;

class ThreePlanes : public zvtest::QuietTest
{
protected:
  explicit ThreePlanes(const zvtest::SceneOptions& options = {})
    : Scene(options)
    , Mouse(this->Scene)
  {
  }

  ~ThreePlanes() override
  {
    if (this->Widget)
    {
      this->Widget->Delete();
    }
  }

  // Unit voxels, 24 x 20 x 16, whose values tell their indices.
  static zvtest::VolumeOptions Brick()
  {
    zvtest::VolumeOptions options;
    options.Dimensions = { { 24, 20, 16 } };
    options.ScalarType = VTK_INT;
    return options;
  }

  void Create(const zvtest::VolumeOptions& options)
  {
    this->Volume = zvtest::MakeIndexVolume(options);
    this->Widget->SetImage(this->Volume);
    this->Widget->SetRender(this->Scene.Renderer());
    ASSERT_TRUE(this->Widget->Create());
  }

  void Show(const zvtest::VolumeOptions& options = Brick())
  {
    this->Create(options);
    this->Widget->Show();
  }

  // Looking straight at one plane, the others edge on.
  void ShowAlong(int axis)
  {
    this->Show();
    this->Scene.LookAlong(axis);
    this->Scene.Render();
  }

  // Looking at a corner, where all planes can be seen.
  void ShowAslant(const zvtest::World& direction = { { -1, -1.3, -0.8 } })
  {
    this->Show();
    this->Scene.LookAlong(direction, { { 0, 0, 1 } });
    this->Scene.Render();
  }

  Ints Slices()
  {
    return { this->Widget->GetSliceX(), this->Widget->GetSliceY(), this->Widget->GetSliceZ() };
  }

  Ints Interactions()
  {
    Ints result;
    for (zvImagePlaneWidget* plane : this->Widget->Planes())
    {
      result.push_back(plane->GetInteraction());
    }
    return result;
  }

  Ints EnabledPlanes()
  {
    Ints result;
    for (zvImagePlaneWidget* plane : this->Widget->Planes())
    {
      result.push_back(plane->GetEnabled());
    }
    return result;
  }

  Ints States()
  {
    Ints result;
    for (zvImagePlaneWidget* plane : this->Widget->Planes())
    {
      result.push_back(plane->GetState());
    }
    return result;
  }

  Ints Dimension()
  {
    int d[3];
    this->Widget->GetDimension(d);
    return { d[0], d[1], d[2] };
  }

  Doubles LastClicked()
  {
    return { this->Widget->GetXOfLastClickedVoxel(), this->Widget->GetYOfLastClickedVoxel(),
      this->Widget->GetZOfLastClickedVoxel(), this->Widget->GetIntensityOfLastClickedVoxel() };
  }

  Doubles Reading(const zvtest::Index& index)
  {
    return { double(index[0]), double(index[1]), double(index[2]),
      zvtest::IndexValue(this->Volume, index) };
  }

  bool IsOutlineShown(int viewport = 0)
  {
    return this->Scene.Renderer(viewport)->HasViewProp(this->Widget->OutlineActor) &&
      this->Widget->OutlineActor->GetVisibility();
  }

  // How many of the four events the widget observes.
  int CountObserved(vtkRenderWindowInteractor* interactor)
  {
    int count = 0;
    for (unsigned long event : zvEvents::ThreePlanes)
    {
      count += interactor->HasObserver(event, this->Widget->EventCallbackCommand);
    }
    return count;
  }

  int CountRenders(const std::function<void()>& operation)
  {
    zvtest::EventRecorder renders;
    renders.Watch(this->Scene.Window(), { vtkCommand::StartEvent });
    operation();
    return renders.Count(vtkCommand::StartEvent);
  }

  void Release()
  {
    // Let go of first, as the end renders and observers look.
    std::exchange(this->Widget, nullptr)->Delete();
  }

  int Alive = 0;
  zvtest::Scene Scene;
  zvtest::Mouse Mouse;
  vtkSmartPointer<vtkImageData> Volume;
  OpenPlanes* Widget = new OpenPlanes(&this->Alive);
};

Doubles Values(const double* values, int count)
{
  return Doubles(values, values + count);
}
}

// ---- making ----

TEST_F(ThreePlanes, ItReportsTheNameOfItsBaseByDesign)
{
  EXPECT_STREQ(this->Widget->GetClassName(), "vtk3DWidget");
  EXPECT_EQ(this->Widget->IsA("zvImage3DPlanes"), 0);
  EXPECT_EQ(this->Widget->GetReferenceCount(), 1);
}

TEST_F(ThreePlanes, FieldsHaveTheirDefaults)
{
  EXPECT_FALSE(this->Widget->isCreated());
  EXPECT_EQ(this->Dimension(), (Ints{ 0, 0, 0 }));
  EXPECT_EQ(this->Widget->GetPlaneSelected(), 0);
  EXPECT_EQ(this->Widget->GetState(), 0);
  EXPECT_EQ(this->LastClicked(), (Doubles{ 0, 0, 0, 0 }));
  EXPECT_EQ(this->Widget->Image.Get(), nullptr);
  EXPECT_EQ(this->Widget->Renderer.Get(), nullptr);
  EXPECT_EQ(this->Widget->GetRenderWindow(), nullptr);
  EXPECT_EQ(this->Widget->GetInteractor(), nullptr);
  double spacing[3];
  this->Widget->GetSpacing(spacing);
  EXPECT_EQ(Values(spacing, 3), (Doubles{ 1, 1, 1 }));
  int extent[6];
  this->Widget->GetExtent(extent);
  EXPECT_EQ(Ints(extent, extent + 6), (Ints{ 0, -1, 0, -1, 0, -1 }));
  for (zvImagePlaneWidget* plane : this->Widget->Planes())
  {
    ASSERT_NE(plane, nullptr);
    EXPECT_EQ(plane->GetReferenceCount(), 1);
  }
}

TEST_F(ThreePlanes, SetEnabledDoesNothing)
{
  this->Widget->SetRender(this->Scene.Renderer());
  zvtest::EventRecorder events;
  events.Watch(this->Widget, zvtest::WidgetEvents);
  this->Widget->SetEnabled(1);
  this->Widget->On();
  EXPECT_EQ(this->Widget->GetEnabled(), 0);
  EXPECT_TRUE(events.Events().empty());
}

// ---- image ----

TEST_F(ThreePlanes, SetImageReadsItsGrid)
{
  auto volume = zvtest::MakeIndexVolume(zvtest::ShiftedExtentVolume());
  this->Widget->SetImage(volume);
  EXPECT_EQ(Ints(this->Widget->Dimension, this->Widget->Dimension + 3), (Ints{ 8, 6, 4 }));
  double spacing[3];
  this->Widget->GetSpacing(spacing);
  EXPECT_EQ(Values(spacing, 3), (Doubles{ 0.5, 1.25, 3 }));
  int extent[6];
  this->Widget->GetExtent(extent);
  EXPECT_EQ(Ints(extent, extent + 6), (Ints{ 3, 10, -2, 3, 11, 14 }));
}

TEST_F(ThreePlanes, BeforeCreateNoPlaneHasSlices)
{
  this->Widget->SetImage(zvtest::MakeIndexVolume());
  EXPECT_EQ(this->Dimension(), (Ints{ 0, 0, 0 }));
}

TEST_F(ThreePlanes, SetImageTakesNoReference)
{
  auto volume = zvtest::MakeIndexVolume();
  const int before = volume->GetReferenceCount();
  this->Widget->SetImage(volume);
  EXPECT_EQ(volume->GetReferenceCount(), before);
}

TEST_F(ThreePlanes, AnImageThatIsGoneIsNoImage)
{
  this->Widget->SetImage(zvtest::MakeIndexVolume());
  EXPECT_EQ(this->Widget->Image.Get(), nullptr);
  this->Widget->SetRender(this->Scene.Renderer());
  EXPECT_FALSE(this->Widget->Create());
  this->ExpectGenericWarning("zvImage3DPlanes", "set image before creating the planes...");
}

TEST_F(ThreePlanes, TheImageLivesAsLongAsItIsShown)
{
  this->Show();
  vtkWeakPointer<vtkImageData> image = this->Volume.Get();
  this->Volume = nullptr;
  ASSERT_NE(image, nullptr);
  this->Scene.Render();
  this->Widget->Update();
  EXPECT_EQ(this->Slices(), (Ints{ 11, 9, 7 }));
  this->Widget->SetImage(nullptr);
  this->Widget->Update();
  EXPECT_EQ(image, nullptr);
}

// ---- view ----

TEST_F(ThreePlanes, SetRenderTakesWindowAndInteractorAndAttaches)
{
  this->Widget->SetRender(this->Scene.Renderer());
  EXPECT_EQ(this->Widget->Renderer, this->Scene.Renderer());
  EXPECT_EQ(this->Widget->GetRenderWindow(), this->Scene.Window());
  EXPECT_EQ(this->Widget->GetInteractor(), this->Scene.Interactor());
  EXPECT_EQ(this->CountObserved(this->Scene.Interactor()), 4);
  for (unsigned long event : { vtkCommand::RightButtonPressEvent, vtkCommand::CharEvent,
         vtkCommand::MiddleButtonPressEvent, vtkCommand::MouseWheelForwardEvent })
  {
    EXPECT_FALSE(this->Scene.Interactor()->HasObserver(event, this->Widget->EventCallbackCommand));
  }
}

TEST_F(ThreePlanes, SetRenderTakesNoReferences)
{
  const int window = this->Scene.Window()->GetReferenceCount();
  const int renderer = this->Scene.Renderer()->GetReferenceCount();
  const int interactor = this->Scene.Interactor()->GetReferenceCount();
  this->Widget->SetRender(this->Scene.Renderer());
  EXPECT_EQ(this->Scene.Window()->GetReferenceCount(), window);
  EXPECT_EQ(this->Scene.Renderer()->GetReferenceCount(), renderer);
  EXPECT_EQ(this->Scene.Interactor()->GetReferenceCount(), interactor);
}

TEST_F(ThreePlanes, SetRenderTwiceAttachesOnce)
{
  this->Show();
  this->Widget->SetRender(this->Scene.Renderer());
  EXPECT_EQ(this->EnabledPlanes(), (Ints{ 1, 1, 1 }));
  zvtest::EventRecorder events;
  events.Watch(this->Widget, zvtest::WidgetEvents);
  this->Mouse.Press(zvtest::Left, { { 1, 1 } });
  this->Mouse.Release(zvtest::Left);
  EXPECT_EQ(events.Names(), (std::vector<std::string>{ "StartInteractionEvent" }));
}

TEST_F(ThreePlanes, SetRenderWithNullLetsGoOfTheView)
{
  this->Show();
  this->Widget->SetRender(nullptr);
  EXPECT_EQ(this->Widget->Renderer.Get(), nullptr);
  EXPECT_EQ(this->Widget->GetRenderWindow(), nullptr);
  EXPECT_EQ(this->Widget->GetInteractor(), nullptr);
  EXPECT_EQ(this->CountObserved(this->Scene.Interactor()), 0);
  EXPECT_EQ(this->EnabledPlanes(), (Ints{ 0, 0, 0 }));
  EXPECT_EQ(this->Scene.Renderer()->GetViewProps()->GetNumberOfItems(), 0);
  this->Widget->SetRender(nullptr);
}

TEST_F(ThreePlanes, ARendererWithoutAWindowGivesNoInteractor)
{
  vtkNew<vtkRenderer> renderer;
  this->Widget->SetRender(renderer);
  EXPECT_EQ(this->Widget->GetInteractor(), nullptr);
  this->Widget->EnableXPlane(false);
  EXPECT_FALSE(this->Widget->Create());
  this->ExpectPlainWarning(
    "zvImage3DPlanes", this->Widget, "zvImage3DPlanes::Create -> Interactor not set");
  this->Widget->SetRender(nullptr);
}

TEST_F(ThreePlanes, AnotherRendererTakesOverTheView)
{
  this->ShowAlong(2);
  zvtest::Scene other;
  this->Widget->SetRender(other.Renderer());
  EXPECT_EQ(this->Scene.Renderer()->GetViewProps()->GetNumberOfItems(), 0);
  EXPECT_EQ(this->CountObserved(this->Scene.Interactor()), 0);
  EXPECT_EQ(this->CountObserved(other.Interactor()), 4);
  this->Widget->Show();
  other.LookAlong(2);
  other.Render();

  zvtest::Mouse(this->Scene).Press(zvtest::Left, { { 200, 200 } });
  EXPECT_EQ(this->Widget->GetPlaneSelected(), 0);
  zvtest::Mouse mouse(other);
  mouse.Press(zvtest::Left, mouse.At({ { 5, 5, 7 } }));
  EXPECT_EQ(this->Widget->GetPlaneSelected(), 3);
  mouse.Release(zvtest::Left);
  this->Release(); // before the other scene goes
  EXPECT_EQ(other.Renderer()->GetViewProps()->GetNumberOfItems(), 0);
}

TEST_F(ThreePlanes, AnInteractorTakenAwayIsLeft)
{
  this->Widget->SetRender(this->Scene.Renderer());
  this->Widget->SetInteractor(nullptr);
  EXPECT_EQ(this->CountObserved(this->Scene.Interactor()), 0);
  this->Widget->SetRender(this->Scene.Renderer());
  EXPECT_EQ(this->CountObserved(this->Scene.Interactor()), 4);
}

// ---- creating ----

TEST_F(ThreePlanes, CreateWithoutAnInteractorWarnsOnTheStandardOutput)
{
  auto volume = zvtest::MakeIndexVolume();
  this->Widget->SetImage(volume);
  vtkObject::GlobalWarningDisplayOff(); // no switch silences it
  EXPECT_FALSE(this->Widget->Create());
  vtkObject::GlobalWarningDisplayOn();
  this->ExpectPlainWarning(
    "zvImage3DPlanes", this->Widget, "zvImage3DPlanes::Create -> Interactor not set");
  EXPECT_FALSE(this->Widget->isCreated());
}

TEST_F(ThreePlanes, CreateWithoutAnImageIsRefused)
{
  this->Widget->SetRender(this->Scene.Renderer());
  this->Widget->SetImage(nullptr);
  EXPECT_FALSE(this->Widget->Create());
  this->ExpectGenericWarning("zvImage3DPlanes", "set image before creating the planes...");
  EXPECT_FALSE(this->Widget->isCreated());
}

TEST_F(ThreePlanes, CreateSetsUpEachPlane)
{
  this->Create(this->Brick());
  EXPECT_TRUE(this->Widget->isCreated());
  const Doubles colors[3] = { { 1, 0, 0 }, { 0, 1, 0 }, { 0, 0, 1 } };
  for (int i = 0; i < 3; ++i)
  {
    SCOPED_TRACE(i);
    zvImagePlaneWidget* plane = this->Widget->Planes()[i];
    EXPECT_EQ(plane->GetInteractor(), this->Scene.Interactor());
    EXPECT_EQ(plane->GetInput(), this->Volume);
    EXPECT_EQ(Values(plane->GetPlaneProperty()->GetColor(), 3), colors[i]);
    EXPECT_EQ(plane->GetTextureInterpolate(), 1);
    EXPECT_EQ(plane->GetResliceInterpolate(), 1);
    EXPECT_EQ(plane->GetPlaneOrientation(), i);
    EXPECT_EQ(plane->GetTextureVisibility(), 1);
    EXPECT_EQ(plane->GetDisplayText(), 1);
    EXPECT_EQ(plane->GetRightButtonAction(), zvImagePlaneWidget::CursorAction);
    EXPECT_EQ(Values(plane->GetSelectedPlaneProperty()->GetColor(), 3), (Doubles{ 1, 0.5, 0 }));
    EXPECT_EQ(Values(plane->GetCursorProperty()->GetColor(), 3), (Doubles{ 1, 0.5, 0 }));
    EXPECT_EQ(plane->GetRestrictPlaneToVolume(), 0);
    EXPECT_EQ(plane->GetEnabled(), 0);
  }
  EXPECT_EQ(this->Slices(), (Ints{ 23, 19, 15 }));
  EXPECT_EQ(this->Dimension(), (Ints{ 24, 20, 16 }));
}

TEST_F(ThreePlanes, CreateReadsTheDimensionsAnew)
{
  this->Widget->SetRender(this->Scene.Renderer());
  this->Volume = zvtest::MakeIndexVolume(this->Brick());
  this->Widget->SetImage(this->Volume);
  this->Mouse.MoveTo({ { 10, 10 } }); // refreshes from planes that have no slices yet
  EXPECT_EQ(Ints(this->Widget->Dimension, this->Widget->Dimension + 3), (Ints{ 0, 0, 0 }));
  EXPECT_TRUE(this->Widget->Create());
  EXPECT_EQ(Ints(this->Widget->Dimension, this->Widget->Dimension + 3), (Ints{ 24, 20, 16 }));
}

TEST_F(ThreePlanes, CreateBuildsTheOutline)
{
  this->Create(zvtest::UnequalVolume());
  EXPECT_EQ(Values(this->Widget->OutlineActor->GetProperty()->GetColor(), 3), (Doubles{ 1, 1, 1 }));
  EXPECT_EQ(Values(this->Widget->OutlineFilter->GetOutput()->GetBounds(), 6),
    Values(this->Volume->GetBounds(), 6));
  EXPECT_EQ(this->Scene.Renderer()->GetViewProps()->GetNumberOfItems(), 0);
}

TEST_F(ThreePlanes, CreateRendersNothing)
{
  EXPECT_EQ(this->CountRenders([this] { this->Create(this->Brick()); }), 0);
}

TEST_F(ThreePlanes, CreateTwiceBuildsNothingTheSecondTime)
{
  this->Create(this->Brick());
  this->Widget->PlaneX->GetPlaneProperty()->SetColor(0.2, 0.3, 0.4);
  const vtkMTimeType before = this->Widget->PlaneZ->GetMTime();
  EXPECT_TRUE(this->Widget->Create());
  EXPECT_EQ(
    Values(this->Widget->PlaneX->GetPlaneProperty()->GetColor(), 3), (Doubles{ 0.2, 0.3, 0.4 }));
  EXPECT_EQ(this->Widget->PlaneZ->GetMTime(), before);
  this->Widget->SetRender(nullptr);
  EXPECT_TRUE(this->Widget->Create()); // not even a word about the interactor
}

TEST_F(ThreePlanes, ATurnedImageIsRefusedWithOneErrorUntilAnotherComes)
{
  auto turned = zvtest::MakeIndexVolume(zvtest::TurnedVolume());
  this->Widget->SetImage(turned);
  this->Widget->SetRender(this->Scene.Renderer());
  EXPECT_FALSE(this->Widget->Create());
  this->ExpectVtkError("zvImage3DPlanes", "vtk3DWidget", this->Widget, TurnedText);
  EXPECT_FALSE(this->Widget->isCreated());
  this->ExpectNoMessage();

  this->Widget->Show();
  EXPECT_EQ(this->Widget->GetSliceImageX(), nullptr);
  EXPECT_EQ(
    this->Scene.RenderAndLook().CountOther(zvtest::Color::Grey(0), { { 0, 0 }, { 399, 399 } }), 0);

  this->Show();
  EXPECT_NE(this->Widget->GetSliceImageX(), nullptr);
}

// ---- showing ----

TEST_F(ThreePlanes, ShowPutsThePlanesOnTheMiddleSlices)
{
  zvtest::VolumeOptions options = this->Brick();
  options.Dimensions = { { 100, 7, 2 } };
  this->Show(options);
  EXPECT_EQ(this->Slices(), (Ints{ 49, 2, 0 }));
  EXPECT_EQ(this->EnabledPlanes(), (Ints{ 1, 1, 1 }));
  EXPECT_TRUE(this->IsOutlineShown());
}

// Two of the planes have no width then, and say so.
TEST_F(ThreePlanes, ShowWorksOnASingleSlice)
{
  for (int axis = 0; axis < 3; ++axis)
  {
    SCOPED_TRACE(axis);
    OpenPlanes* other = new OpenPlanes(&this->Alive);
    auto volume = zvtest::MakeIndexVolume(zvtest::OneVoxelThickVolume(axis));
    other->SetImage(volume);
    other->SetRender(this->Scene.Renderer());
    EXPECT_TRUE(other->Create());
    other->Show();
    EXPECT_EQ(other->Planes()[axis]->GetSliceIndex(), 0);
    EXPECT_EQ(other->Planes()[axis]->GetNumberOfSlices(), 1);
    for (const std::string& message : this->TakeMessages())
    {
      EXPECT_TRUE(zvtest::IsVtkError(message, "zvImagePlaneWidget", "vtkPolyDataSourceWidget",
                    nullptr, "Invalid X extent: 2.14748e+09") ||
        zvtest::IsVtkError(message, "zvImagePlaneWidget", "vtkPolyDataSourceWidget", nullptr,
          "Invalid Y extent: 2.14748e+09"))
        << message;
    }
    other->Delete();
  }
}

TEST_F(ThreePlanes, ShowEnablesTheInteractorAndTurnsTheCamera)
{
  this->Create(this->Brick());
  this->Scene.Interactor()->Disable();
  this->Widget->Show();
  EXPECT_EQ(this->Scene.Interactor()->GetEnabled(), 1);
  vtkCamera* camera = this->Scene.Renderer()->GetActiveCamera();
  EXPECT_EQ(Values(camera->GetViewUp(), 3), (Doubles{ 0, -1, 0 }));
  EXPECT_EQ(Values(camera->GetDirectionOfProjection(), 3), (Doubles{ 0, 0, 1 }));
  EXPECT_EQ(Values(camera->GetFocalPoint(), 3), (Doubles{ 11.5, 9.5, 7.5 }));
  EXPECT_LT(camera->GetPosition()[2], 0.0);
}

TEST_F(ThreePlanes, ShowDrawsTheSlicesAndTheOutline)
{
  this->ShowAslant();
  const zvtest::Picture picture = this->Scene.Look();
  EXPECT_GT(picture.CountOther(zvtest::Color::Grey(0), { { 0, 0 }, { 399, 399 } }), 20000);
  for (const zvtest::World& corner :
    std::vector<zvtest::World>{ { { 23, 19, 15 } }, { { 23, 19, 0 } }, { { 0, 19, 15 } } })
  {
    EXPECT_TRUE(picture.HasNear(zvtest::Color::Grey(255), this->Scene.At(corner), 2));
  }
  // The borders where they leave the box, each on a face that is turned to the viewer.
  EXPECT_TRUE(picture.HasNear({ 255, 0, 0 }, this->Scene.At({ { 11, 19, 12 } }), 2));
  EXPECT_TRUE(picture.HasNear({ 0, 255, 0 }, this->Scene.At({ { 23, 9, 12 } }), 2));
  EXPECT_TRUE(picture.HasNear({ 0, 0, 255 }, this->Scene.At({ { 23, 14, 7 } }), 2));
}

TEST_F(ThreePlanes, ShowWithoutAViewIsRefused)
{
  this->Widget->Show();
  this->ExpectGenericWarning("zvImage3DPlanes", NoRenderText);
  this->Create(this->Brick());
  this->Widget->SetRender(nullptr);
  this->Widget->Show();
  this->ExpectGenericWarning("zvImage3DPlanes", NoRenderText);
  EXPECT_EQ(this->EnabledPlanes(), (Ints{ 0, 0, 0 }));
}

TEST_F(ThreePlanes, ShowBeforeCreateShowsNothing)
{
  this->Widget->SetRender(this->Scene.Renderer());
  this->Widget->Show();
  // With nothing to point it at, the camera stays where it starts.
  EXPECT_NEAR(this->Scene.Renderer()->GetActiveCamera()->GetPosition()[2], -1.0 / 1.5, 1e-9);
  EXPECT_EQ(this->Scene.Look().CountOther(zvtest::Color::Grey(0), { { 0, 0 }, { 399, 399 } }), 0);
  this->Show();
  EXPECT_EQ(this->Slices(), (Ints{ 11, 9, 7 }));
}

TEST_F(ThreePlanes, ResetPlanesBringsBackCameraOrientationsAndSlices)
{
  this->Show();
  double axis[3] = { 0, 0, 1 };
  double center[3] = { 11.5, 9.5, 7.5 };
  this->Widget->Rotate(30.0, axis, center);
  this->Widget->SetSliceX(2);
  ASSERT_NE(this->Dimension(), (Ints{ 24, 20, 16 }));
  this->Scene.LookAlong(1);
  EXPECT_EQ(this->CountRenders([this] { this->Widget->ResetPlanes(); }), 1);
  for (int i = 0; i < 3; ++i)
  {
    EXPECT_EQ(this->Widget->Planes()[i]->GetPlaneOrientation(), i);
  }
  EXPECT_EQ(this->Slices(), (Ints{ 11, 9, 7 }));
  EXPECT_EQ(Ints(this->Widget->Dimension, this->Widget->Dimension + 3), (Ints{ 24, 20, 16 }));
  vtkCamera* camera = this->Scene.Renderer()->GetActiveCamera();
  EXPECT_EQ(Values(camera->GetViewUp(), 3), (Doubles{ 0, -1, 0 }));
  EXPECT_EQ(Values(camera->GetDirectionOfProjection(), 3), (Doubles{ 0, 0, 1 }));
}

TEST_F(ThreePlanes, ResetPlanesBeforeCreateIsRefused)
{
  this->Widget->ResetPlanes();
  this->ExpectGenericWarning("zvImage3DPlanes", NotCreatedText);
  this->Create(this->Brick());
  this->Widget->SetImage(nullptr);
  this->Widget->ResetPlanes();
  this->ExpectGenericWarning("zvImage3DPlanes", NotCreatedText);
}

TEST_F(ThreePlanes, AllPlanesAreHiddenAndShownTogether)
{
  this->Show();
  this->Widget->Enable3DPlanes(false);
  EXPECT_EQ(this->EnabledPlanes(), (Ints{ 0, 0, 0 }));
  EXPECT_FALSE(this->IsOutlineShown());
  EXPECT_EQ(this->Scene.Look().CountOther(zvtest::Color::Grey(0), { { 0, 0 }, { 399, 399 } }), 0);
  EXPECT_EQ(this->CountRenders([this] { this->Widget->Enable3DPlanes(false); }), 1);
  this->Widget->Enable3DPlanes(true);
  EXPECT_EQ(this->EnabledPlanes(), (Ints{ 1, 1, 1 }));
  EXPECT_TRUE(this->IsOutlineShown());
  EXPECT_EQ(this->CountRenders([this] { this->Widget->Enable3DPlanes(true); }), 1);
}

TEST_F(ThreePlanes, OnePlaneIsHiddenAndShownByItself)
{
  this->Show();
  const std::function<void(bool)> operations[3] = { [this](bool on)
    { this->Widget->EnableXPlane(on); },
    [this](bool on) { this->Widget->EnableYPlane(on); },
    [this](bool on) { this->Widget->EnableZPlane(on); } };
  for (int i = 0; i < 3; ++i)
  {
    SCOPED_TRACE(i);
    Ints expected{ 1, 1, 1 };
    expected[i] = 0;
    operations[i](false);
    EXPECT_EQ(this->EnabledPlanes(), expected);
    EXPECT_TRUE(this->IsOutlineShown());
    EXPECT_EQ(this->CountRenders([&] { operations[i](false); }), 1);
    operations[i](true);
    EXPECT_EQ(this->EnabledPlanes(), (Ints{ 1, 1, 1 }));
    EXPECT_EQ(this->Scene.Renderer()->GetViewProps()->GetLastProp(), this->Widget->OutlineActor);
  }
  this->Widget->Enable3DPlanes(false);
  this->Widget->EnableZPlane(false);
  EXPECT_TRUE(this->IsOutlineShown()); // by design: with any change of one plane
}

TEST_F(ThreePlanes, WithoutARendererNothingIsShownOrHidden)
{
  this->Create(this->Brick());
  this->Widget->SetRender(nullptr);
  this->Widget->Enable3DPlanes(true);
  this->Widget->EnableXPlane(true);
  this->Widget->EnableYPlane(true);
  this->Widget->EnableZPlane(true);
  EXPECT_EQ(this->EnabledPlanes(), (Ints{ 0, 0, 0 }));
}

TEST_F(ThreePlanes, EnablingBeforeCreateIsThePlanesError)
{
  this->Widget->SetRender(this->Scene.Renderer());
  this->Widget->EnableYPlane(true);
  this->ExpectVtkError("zvImagePlaneWidget", "vtkPolyDataSourceWidget", this->Widget->PlaneY,
    "The interactor must be set prior to enabling/disabling widget");
  this->Widget->EnableYPlane(false);
  this->Widget->Enable3DPlanes(false);
}

// ---- two views in one window ----

namespace
{
class ThreePlanesInOneOfTwoViewports : public ThreePlanes
{
protected:
  ThreePlanesInOneOfTwoViewports()
    : ThreePlanes(TwoViewports())
  {
  }
  static zvtest::SceneOptions TwoViewports()
  {
    zvtest::SceneOptions options;
    options.Viewports = 2;
    return options;
  }
};
}

TEST_F(ThreePlanesInOneOfTwoViewports, PlanesAreShownInTheRendererThatWasSet)
{
  this->Mouse.MoveTo({ { 300, 200 } }); // over the other one
  this->Mouse.MoveTo({ { 301, 200 } });
  this->Show();
  EXPECT_EQ(this->Scene.Renderer(1)->GetViewProps()->GetNumberOfItems(), 0);
  for (zvImagePlaneWidget* plane : this->Widget->Planes())
  {
    EXPECT_EQ(plane->GetCurrentRenderer(), this->Scene.Renderer(0));
  }
  this->Widget->Enable3DPlanes(false);
  this->Widget->EnableZPlane(true);
  EXPECT_EQ(this->Widget->PlaneZ->GetCurrentRenderer(), this->Scene.Renderer(0));
}

TEST_F(ThreePlanesInOneOfTwoViewports, APressInTheOtherIsOnNoPlane)
{
  this->ShowAlong(2);
  this->Mouse.Press(zvtest::Left, this->Mouse.At({ { 5, 5, 7 } }));
  EXPECT_EQ(this->Widget->GetPlaneSelected(), 3);
  this->Mouse.Release(zvtest::Left);
  this->Mouse.Press(zvtest::Left, { { 300, 200 } });
  EXPECT_EQ(this->Widget->GetPlaneSelected(), 0);
  EXPECT_EQ(this->Interactions(), (Ints{ 1, 1, 1 }));
  this->Mouse.Release(zvtest::Left);
}

// ---- another image ----

TEST_F(ThreePlanes, UpdateKeepsWindowLevelAndSlices)
{
  this->Show();
  this->Widget->SetSliceX(3);
  this->Widget->SetSliceY(4);
  this->Widget->SetSliceZ(5);
  this->Widget->SetWindowLevel(500.0, 300.0);
  auto other = zvtest::MakeConstantVolume(77, this->Brick());
  this->Widget->SetImage(other);
  this->Widget->Update();
  EXPECT_EQ(this->Slices(), (Ints{ 3, 4, 5 }));
  for (zvImagePlaneWidget* plane : this->Widget->Planes())
  {
    double wl[2];
    plane->GetWindowLevel(wl);
    EXPECT_EQ(Values(wl, 2), (Doubles{ 500, 300 }));
    EXPECT_EQ(Values(plane->GetLookupTable()->GetRange(), 2), (Doubles{ 50, 550 }));
    EXPECT_EQ(plane->GetInput(), other);
    EXPECT_EQ(plane->GetResliceOutput()->GetScalarComponentAsDouble(2, 2, 0, 0), 77.0);
  }
  EXPECT_TRUE(this->IsOutlineShown());
}

TEST_F(ThreePlanes, UpdateOfTheSameImageMovesNothing)
{
  this->Show();
  std::vector<Doubles> before;
  for (int turn = 0; turn < 2; ++turn)
  {
    std::vector<Doubles> now;
    for (zvImagePlaneWidget* plane : this->Widget->Planes())
    {
      for (const double* point : { plane->GetOrigin(), plane->GetPoint1(), plane->GetPoint2() })
      {
        now.push_back(Values(point, 3));
      }
    }
    if (turn == 0)
    {
      before = now;
      this->Widget->Update();
    }
    EXPECT_EQ(now, before);
  }
}

TEST_F(ThreePlanes, UpdateFollowsAnImageOfAnotherSize)
{
  this->Show();
  zvtest::VolumeOptions options = this->Brick();
  options.Dimensions = { { 44, 10, 16 } };
  auto other = zvtest::MakeIndexVolume(options);
  this->Widget->SetImage(other);
  EXPECT_GE(this->CountRenders([this] { this->Widget->Update(); }), 1);
  EXPECT_EQ(this->Dimension(), (Ints{ 44, 10, 16 }));
  EXPECT_EQ(this->Slices(), (Ints{ 11, 9, 7 }));
  EXPECT_EQ(Values(this->Widget->OutlineActor->GetBounds(), 6), (Doubles{ 0, 43, 0, 9, 0, 15 }));
  // The z plane was 24 by 20 voxels and is 44 by 10 now, about its centre in the new box.
  double axis[3];
  this->Widget->PlaneZ->GetVector1(axis);
  EXPECT_NEAR(vtkMath::Norm(axis), 43.0, 1e-9);
  this->Widget->PlaneZ->GetVector2(axis);
  EXPECT_NEAR(vtkMath::Norm(axis), 11.0, 1e-9);
  EXPECT_NEAR(this->Widget->PlaneZ->GetCenter()[0], 21.5, 1e-9);
  // The x plane was 20 by 16, the y plane 16 by 24.
  this->Widget->PlaneX->GetVector1(axis);
  EXPECT_NEAR(vtkMath::Norm(axis), 11.0, 1e-9);
  this->Widget->PlaneY->GetVector2(axis);
  EXPECT_NEAR(vtkMath::Norm(axis), 43.0, 1e-9);
}

TEST_F(ThreePlanes, UpdateClampsTheSlicesToASmallerImage)
{
  this->Show();
  auto other = zvtest::MakeIndexVolume(); // 7 x 6 x 5
  this->Widget->SetImage(other);
  this->Widget->Update();
  EXPECT_EQ(this->Slices(), (Ints{ 6, 5, 4 }));
}

TEST_F(ThreePlanes, UpdateOfOnePlaneLeavesTheOthers)
{
  this->Show();
  const std::function<void()> operations[3] = { [this] { this->Widget->UpdatePlaneX(); },
    [this] { this->Widget->UpdatePlaneY(); }, [this] { this->Widget->UpdatePlaneZ(); } };
  for (int i = 0; i < 3; ++i)
  {
    SCOPED_TRACE(i);
    this->Widget->SetWindowLevel(100.0, 50.0);
    auto other = zvtest::MakeConstantVolume(10.0 * i, this->Brick());
    this->Widget->SetImage(other);
    operations[i]();
    for (int k = 0; k < 3; ++k)
    {
      EXPECT_EQ(this->Widget->Planes()[k]->GetInput() == other, k == i);
    }
    double wl[2];
    this->Widget->Planes()[i]->GetWindowLevel(wl);
    EXPECT_EQ(Values(wl, 2), (Doubles{ 100, 50 }));
  }
}

TEST_F(ThreePlanes, UpdateOfOnePlaneCentresItInTheNewImageAndCountsItsSlices)
{
  this->Show();
  zvtest::VolumeOptions options = this->Brick();
  options.Dimensions = { { 34, 40, 10 } };
  auto other = zvtest::MakeIndexVolume(options);
  this->Widget->SetImage(other);
  this->Widget->UpdatePlaneX();
  EXPECT_NEAR(this->Widget->PlaneX->GetCenter()[1], 19.5, 1e-9);
  EXPECT_NEAR(this->Widget->PlaneX->GetCenter()[2], 4.5, 1e-9);
  EXPECT_EQ(this->Dimension(), (Ints{ 34, 20, 16 }));
}

TEST_F(ThreePlanes, UpdateWithoutAnImageEmptiesTheViewSilently)
{
  this->Show();
  this->Widget->SetImage(nullptr);
  this->Widget->Update();
  EXPECT_EQ(this->Widget->GetSliceImageZ(), nullptr);
  EXPECT_FALSE(this->IsOutlineShown());
  EXPECT_EQ(this->Scene.Look().CountOther(zvtest::Color::Grey(0), { { 0, 0 }, { 399, 399 } }), 0);

  this->Widget->SetImage(this->Volume);
  this->Widget->Update();
  EXPECT_TRUE(this->IsOutlineShown());
  EXPECT_NE(this->Widget->GetSliceImageZ(), nullptr);
  EXPECT_EQ(this->Slices(), (Ints{ 0, 0, 0 }));
}

TEST_F(ThreePlanes, UpdateWithATurnedImageEmptiesTheViewWithOneError)
{
  this->Show();
  auto turned = zvtest::MakeIndexVolume(zvtest::TurnedVolume());
  this->Widget->SetImage(turned);
  this->Widget->Update();
  this->ExpectVtkError("zvImage3DPlanes", "vtk3DWidget", this->Widget, TurnedText);
  this->ExpectNoMessage();
  EXPECT_EQ(this->Scene.Look().CountOther(zvtest::Color::Grey(0), { { 0, 0 }, { 399, 399 } }), 0);

  this->Widget->UpdatePlaneX();
  this->ExpectVtkError("zvImage3DPlanes", "vtk3DWidget", this->Widget, TurnedText);
  this->ExpectNoMessage();
}

TEST_F(ThreePlanes, UpdateBeforeCreateIsHarmless)
{
  this->Widget->Update();
  this->Widget->UpdatePlaneX();
  auto volume = zvtest::MakeIndexVolume(this->Brick());
  this->Widget->SetImage(volume);
  this->Widget->Update();
  this->Show();
  EXPECT_EQ(this->Slices(), (Ints{ 11, 9, 7 }));
}

// ---- a pipeline upstream ----

namespace
{
vtkSmartPointer<vtkImageShiftScale> MakeFilter(vtkImageData* volume)
{
  auto filter = vtkSmartPointer<vtkImageShiftScale>::New();
  filter->SetInputData(volume);
  return filter;
}
}

TEST_F(ThreePlanes, AFilterUpstreamDrivesThePlanes)
{
  auto filter = MakeFilter(zvtest::MakeConstantVolume(50, this->Brick()));
  this->Widget->SetImageConnection(filter->GetOutputPort());
  EXPECT_EQ(this->Widget->Image.Get(), filter->GetOutput());
  EXPECT_EQ(Ints(this->Widget->Dimension, this->Widget->Dimension + 3), (Ints{ 24, 20, 16 }));
  this->Widget->SetRender(this->Scene.Renderer());
  EXPECT_TRUE(this->Widget->Create());
  this->Widget->Show();
  this->Widget->SetWindowLevel(100.0, 50.0);
  this->Scene.LookAlong(2);
  const zvtest::World place{ { 5, 5, 7 } };
  this->Scene.Render();
  EXPECT_TRUE(this->Scene.ColorAt(place).IsNear(zvtest::Color::Grey(127), 2));

  filter->SetShift(50.0);
  this->Scene.Render();
  EXPECT_TRUE(this->Scene.ColorAt(place).IsNear(zvtest::Color::Grey(255), 2));
}

TEST_F(ThreePlanes, AConnectionKeepsItsFilter)
{
  vtkWeakPointer<vtkImageShiftScale> filter;
  {
    auto made = MakeFilter(zvtest::MakeIndexVolume(this->Brick()));
    filter = made.Get();
    this->Widget->SetImageConnection(made->GetOutputPort());
  }
  this->Widget->SetRender(this->Scene.Renderer());
  EXPECT_TRUE(this->Widget->Create());
  this->Widget->Show();
  EXPECT_EQ(this->Slices(), (Ints{ 11, 9, 7 }));
  EXPECT_NE(filter, nullptr);

  this->Volume = zvtest::MakeIndexVolume(this->Brick());
  this->Widget->SetImage(this->Volume);
  this->Widget->Update();
  EXPECT_EQ(filter, nullptr);
}

TEST_F(ThreePlanes, UpdateFollowsAFilterWhoseImageGrew)
{
  auto filter = MakeFilter(zvtest::MakeIndexVolume());
  this->Widget->SetImageConnection(filter->GetOutputPort());
  this->Widget->SetRender(this->Scene.Renderer());
  EXPECT_TRUE(this->Widget->Create());
  this->Widget->Show();
  filter->SetInputData(zvtest::MakeIndexVolume(this->Brick()));
  this->Widget->Update();
  EXPECT_EQ(this->Dimension(), (Ints{ 24, 20, 16 }));
  EXPECT_EQ(Values(this->Widget->OutlineActor->GetBounds(), 6), (Doubles{ 0, 23, 0, 19, 0, 15 }));
}

TEST_F(ThreePlanes, TheOtherNamesOfTheRoadDoTheSame)
{
  auto filter = MakeFilter(zvtest::MakeIndexVolume(this->Brick()));
  this->Widget->SetInputConnection(filter->GetOutputPort());
  EXPECT_EQ(this->Widget->Image.Get(), filter->GetOutput());
  auto volume = zvtest::MakeIndexVolume();
  this->Widget->SetInputData(volume);
  EXPECT_EQ(this->Widget->Image.Get(), volume);
  this->Widget->SetInputData(nullptr);
  EXPECT_EQ(this->Widget->Image.Get(), nullptr);
}

TEST_F(ThreePlanes, AConnectionWithoutAnImageIsNoImage)
{
  this->Widget->SetRender(this->Scene.Renderer());
  vtkNew<vtkSphereSource> sphere;
  for (vtkAlgorithmOutput* port :
    std::initializer_list<vtkAlgorithmOutput*>{ sphere->GetOutputPort(), nullptr })
  {
    this->Widget->SetImageConnection(port);
    EXPECT_EQ(this->Widget->Image.Get(), nullptr);
    EXPECT_EQ(this->Widget->GetInput(), nullptr);
    EXPECT_FALSE(this->Widget->Create());
    this->ExpectGenericWarning("zvImage3DPlanes", "set image before creating the planes...");
  }
}

TEST_F(ThreePlanes, ATurnedImageOfAConnectionIsRefusedToo)
{
  auto turned = zvtest::MakeIndexVolume(zvtest::TurnedVolume());
  vtkNew<vtkTrivialProducer> producer;
  producer->SetOutput(turned);
  this->Widget->SetImageConnection(producer->GetOutputPort());
  this->Widget->SetRender(this->Scene.Renderer());
  EXPECT_FALSE(this->Widget->Create());
  this->ExpectVtkError("zvImage3DPlanes", "vtk3DWidget", this->Widget, TurnedText);
  this->ExpectNoMessage();
}

// ---- slices and turns ----

TEST_F(ThreePlanes, SlicesAreClamped)
{
  this->Show();
  this->Widget->SetSliceX(100);
  this->Widget->SetSliceY(-4);
  this->Widget->SetSliceZ(8);
  EXPECT_EQ(this->Slices(), (Ints{ 23, 0, 8 }));
}

TEST_F(ThreePlanes, SliceImagesAreTheSlices)
{
  this->Show();
  this->Widget->SetSliceX(3);
  this->Widget->SetSliceY(4);
  this->Widget->SetSliceZ(5);
  vtkImageData* const images[3] = { this->Widget->GetSliceImageX(), this->Widget->GetSliceImageY(),
    this->Widget->GetSliceImageZ() };
  for (int axis = 0; axis < 3; ++axis)
  {
    ASSERT_NE(images[axis], nullptr);
    const double value = images[axis]->GetScalarComponentAsDouble(2, 2, 0, 0);
    EXPECT_EQ(zvtest::IndexOfValue(this->Volume, value)[axis], 3 + axis);
  }
}

TEST_F(ThreePlanes, BeforeCreateThereAreNoSlices)
{
  this->Widget->SetSliceX(3);
  EXPECT_EQ(this->Slices(), (Ints{ 0, 0, 0 }));
  EXPECT_EQ(this->Widget->GetSliceImageX(), nullptr);
  EXPECT_EQ(this->Widget->GetSliceImageY(), nullptr);
  EXPECT_EQ(this->Widget->GetSliceImageZ(), nullptr);
}

TEST_F(ThreePlanes, WindowAndLevelGoToAllPlanes)
{
  this->Show();
  this->Widget->SetWindowLevel(12.0, 34.0);
  for (zvImagePlaneWidget* plane : this->Widget->Planes())
  {
    double wl[2];
    plane->GetWindowLevel(wl);
    EXPECT_EQ(Values(wl, 2), (Doubles{ 12, 34 }));
  }
}

TEST_F(ThreePlanes, PlaceWidgetPlacesEachPlaneInTheMiddle)
{
  this->Create(this->Brick());
  double bounds[6] = { 2, 6, 4, 10, 1, 3 };
  this->Widget->PlaceWidget(bounds);
  EXPECT_EQ(this->Widget->PlaneX->GetOrigin()[0], 4.0);
  EXPECT_EQ(this->Widget->PlaneY->GetOrigin()[1], 7.0);
  EXPECT_EQ(this->Widget->PlaneZ->GetOrigin()[2], 2.0);
  this->Widget->PlaceWidget(2, 6, 4, 12, 1, 3);
  EXPECT_EQ(this->Widget->PlaneY->GetOrigin()[1], 8.0);
}

namespace
{
// A plane as Create and Show leave it, to be turned by hand.
vtkSmartPointer<zvImagePlaneWidget> MakePlane(vtkImageData* image, int axis)
{
  auto plane = vtkSmartPointer<zvImagePlaneWidget>::Take(new zvImagePlaneWidget);
  plane->SetInput(image);
  plane->SetPlaneOrientation(axis);
  plane->SetSliceIndex(image->GetDimensions()[axis] / 2 - 1);
  return plane;
}

void ExpectSamePlane(zvImagePlaneWidget* actual, zvImagePlaneWidget* expected)
{
  EXPECT_EQ(Values(actual->GetOrigin(), 3), Values(expected->GetOrigin(), 3));
  EXPECT_EQ(Values(actual->GetPoint1(), 3), Values(expected->GetPoint1(), 3));
  EXPECT_EQ(Values(actual->GetPoint2(), 3), Values(expected->GetPoint2(), 3));
  EXPECT_EQ(actual->GetPlaneOrientation(), expected->GetPlaneOrientation());
  EXPECT_EQ(actual->GetNumberOfSlices(), expected->GetNumberOfSlices());
}
}

TEST_F(ThreePlanes, ATurnOfAllFitsEachPlaneToTheCountsOfTheOthers)
{
  this->Show();
  double axis[3] = { 0.2, 0.5, 1 };
  double center[3] = { 11.5, 9.5, 7.5 };
  vtkSmartPointer<zvImagePlaneWidget> x = MakePlane(this->Volume, 0);
  vtkSmartPointer<zvImagePlaneWidget> y = MakePlane(this->Volume, 1);
  vtkSmartPointer<zvImagePlaneWidget> z = MakePlane(this->Volume, 2);
  for (int turn = 0; turn < 2; ++turn)
  {
    for (zvImagePlaneWidget* plane : { x.Get(), y.Get(), z.Get() })
    {
      plane->Rotate(25.0, axis, center);
    }
    x->SetDimensions(y->GetNumberOfSlices(), z->GetNumberOfSlices());
    y->SetDimensions(z->GetNumberOfSlices(), x->GetNumberOfSlices());
    z->SetDimensions(x->GetNumberOfSlices(), y->GetNumberOfSlices());
    this->Widget->Rotate(25.0, axis, center);
    ExpectSamePlane(this->Widget->PlaneX, x);
    ExpectSamePlane(this->Widget->PlaneY, y);
    ExpectSamePlane(this->Widget->PlaneZ, z);
  }
  EXPECT_EQ(this->Dimension(),
    (Ints{ x->GetNumberOfSlices(), y->GetNumberOfSlices(), z->GetNumberOfSlices() }));
}

TEST_F(ThreePlanes, ATurnOfOneLeavesTheOthersAndFitsNothing)
{
  double axis[3] = { 0.2, 0.5, 1 };
  double center[3] = { 11.5, 9.5, 7.5 };
  const std::function<void()> operations[3] = { [&] { this->Widget->RotateX(25.0, axis, center); },
    [&] { this->Widget->RotateY(25.0, axis, center); },
    [&] { this->Widget->RotateZ(25.0, axis, center); } };
  this->Show();
  std::vector<vtkSmartPointer<zvImagePlaneWidget>> planes;
  for (int i = 0; i < 3; ++i)
  {
    planes.push_back(MakePlane(this->Volume, i));
  }
  for (int i = 0; i < 3; ++i)
  {
    operations[i]();
    planes[i]->Rotate(25.0, axis, center);
    for (int k = 0; k < 3; ++k)
    {
      SCOPED_TRACE(std::to_string(i) + std::to_string(k));
      ExpectSamePlane(this->Widget->Planes()[k], planes[k]);
    }
  }
}

TEST_F(ThreePlanes, ATurnWithoutAnImageIsHarmless)
{
  double axis[3] = { 0, 0, 1 };
  double center[3] = { 0, 0, 0 };
  this->Widget->Rotate(25.0, axis, center);
  EXPECT_EQ(this->Slices(), (Ints{ 0, 0, 0 }));
}

// ---- the press ----

namespace
{
// What a user points at: the plane that a ray from the camera meets first, 0 for none, -1 where it
// is too close to call.
class Pointer
{
public:
  Pointer(const zvtest::Scene& scene, vtkImageData* image,
    const std::array<zvImagePlaneWidget*, 3>& planes)
    : Stage(scene)
  {
    image->GetBounds(this->Bounds);
    for (int i = 0; i < 3; ++i)
    {
      this->Positions[i] = planes[i]->GetOrigin()[i];
    }
  }

  int PlaneAt(const zvtest::Display& position) const
  {
    vtkCamera* camera = this->Stage.Renderer()->GetActiveCamera();
    const double* p = camera->GetPosition();
    const double* f = camera->GetFocalPoint();
    const zvtest::World far = this->Stage.WorldAt(position, { { f[0], f[1], f[2] } });
    const bool parallel = camera->GetParallelProjection() != 0;
    std::array<double, 3> from;
    std::array<double, 3> along;
    for (int k = 0; k < 3; ++k)
    {
      along[k] = parallel ? f[k] - p[k] : far[k] - p[k];
      from[k] = far[k] - along[k];
    }
    return this->FirstAlong(from, along);
  }

private:
  int FirstAlong(const std::array<double, 3>& from, const std::array<double, 3>& along) const
  {
    int first = 0;
    double best = 1e30;
    for (int i = 0; i < 3; ++i)
    {
      if (std::abs(along[i]) < 1e-9)
      {
        continue;
      }
      const double t = (this->Positions[i] - from[i]) / along[i];
      const int where = this->WhereAcross(i, from, along, t);
      if (where == Edge || (where == Inside && std::abs(t - best) < 1e-2))
      {
        return -1;
      }
      if (where == Inside && t < best)
      {
        best = t;
        first = i + 1;
      }
    }
    return first;
  }

  enum Where
  {
    Outside,
    Edge,
    Inside
  };

  Where WhereAcross(int normal, const std::array<double, 3>& from,
    const std::array<double, 3>& along, double t) const
  {
    const double margin = 0.6; // the picker's tolerance and the border's width
    Where result = Inside;
    for (int k = 0; k < 3; ++k)
    {
      const double x = from[k] + t * along[k];
      const double inside = std::min(x - this->Bounds[2 * k], this->Bounds[2 * k + 1] - x);
      if (k == normal || inside > margin)
      {
        continue;
      }
      if (inside < -margin)
      {
        return Outside;
      }
      result = Edge;
    }
    return result;
  }

  const zvtest::Scene& Stage;
  double Bounds[6];
  double Positions[3];
};
}

TEST_F(ThreePlanes, ThePlaneThatIsSeenTakesThePress)
{
  this->Show();
  this->Widget->SetSliceX(7);
  int taken[4] = { 0, 0, 0, 0 };
  for (bool parallel : { true, false })
  {
    for (const zvtest::World& direction : std::vector<zvtest::World>{ { { -1, -1.3, -0.8 } },
           { { 1, -1.3, -0.8 } }, { { -1, 1.3, -0.8 } }, { { -1, -1.3, 0.8 } }, { { 1, 1.3, 0.8 } },
           { { 0.3, 0.2, -1 } }, { { -0.1, 1, 0.2 } }, { { 1, 0.2, 0.3 } } })
    {
      this->Scene.Renderer()->GetActiveCamera()->SetParallelProjection(parallel ? 1 : 0);
      this->Scene.LookAlong(direction, { { 0.1, 0.2, 1 } });
      this->Scene.Render();
      const Pointer pointer(this->Scene, this->Volume, this->Widget->Planes());
      for (int x = 20; x < 400; x += 30)
      {
        for (int y = 20; y < 400; y += 45)
        {
          const int expected = pointer.PlaneAt({ { x, y } });
          if (expected < 0)
          {
            continue;
          }
          SCOPED_TRACE(::testing::Message() << x << ", " << y << " along " << direction[0] << ", "
                                            << direction[1] << ", " << direction[2]);
          this->Mouse.Press(zvtest::Left, { { x, y } });
          EXPECT_EQ(this->Widget->GetPlaneSelected(), expected);
          Ints interactions{ expected == 0, expected == 0, expected == 0 };
          if (expected > 0)
          {
            interactions[expected - 1] = 1;
          }
          EXPECT_EQ(this->Interactions(), interactions);
          for (int i = 0; i < 3; ++i)
          {
            const int state = this->States()[i];
            EXPECT_EQ(state != zvImagePlaneWidget::Start && state != zvImagePlaneWidget::Outside,
              i + 1 == expected);
          }
          this->Mouse.Release(zvtest::Left);
          EXPECT_EQ(this->Interactions(), (Ints{ 1, 1, 1 }));
          ++taken[expected];
        }
      }
    }
  }
  for (int count : taken)
  {
    EXPECT_GT(count, 50);
  }
}

TEST_F(ThreePlanes, APressOnNoPlaneChangesNothing)
{
  this->ShowAlong(2);
  this->Mouse.Press(zvtest::Left, this->Mouse.At({ { 5, 5, 7 } }));
  EXPECT_EQ(this->Widget->GetPlaneSelected(), 3);
  this->Mouse.Release(zvtest::Left);
  this->Widget->PlaneX->SetInteraction(0);
  this->Mouse.Press(zvtest::Left, { { 2, 2 } });
  EXPECT_EQ(this->Widget->GetPlaneSelected(), 0);
  EXPECT_EQ(this->Interactions(), (Ints{ 0, 1, 1 }));
  EXPECT_EQ(this->Widget->GetState(), 0);
  this->Mouse.Release(zvtest::Left);
  EXPECT_EQ(this->Interactions(), (Ints{ 1, 1, 1 }));
}

TEST_F(ThreePlanes, OnlyTheXPlaneTakesAPressFromVeryFarByDesign)
{
  this->Show();
  struct Row
  {
    int Axis;
    zvtest::World Place;
  };
  for (const Row& row :
    { Row{ 0, { { 11, 5, 4 } } }, Row{ 1, { { 5, 9, 4 } } }, Row{ 2, { { 5, 5, 7 } } } })
  {
    for (double distance : { 3000.0, 3300.0 })
    {
      SCOPED_TRACE(::testing::Message() << "axis " << row.Axis << " from " << distance);
      this->Scene.LookAlong(row.Axis);
      vtkCamera* camera = this->Scene.Renderer()->GetActiveCamera();
      double position[3];
      for (int k = 0; k < 3; ++k)
      {
        position[k] = camera->GetFocalPoint()[k] - distance * camera->GetDirectionOfProjection()[k];
      }
      camera->SetPosition(position);
      this->Scene.Renderer()->ResetCameraClippingRange();
      this->Scene.Render();
      this->Mouse.Press(zvtest::Left, this->Mouse.At(row.Place));
      const bool near = distance * distance < 10000000.0;
      EXPECT_EQ(this->Widget->GetPlaneSelected(), near || row.Axis == 0 ? row.Axis + 1 : 0);
      this->Mouse.Release(zvtest::Left);
    }
  }
}

TEST_F(ThreePlanes, ANearerPlaneBeatsAFarXPlaneFromAnyDistance)
{
  this->Show();
  this->Scene.LookAlong({ { -1, -1, 0 } }, { { 0, 0, 1 } });
  vtkCamera* camera = this->Scene.Renderer()->GetActiveCamera();
  camera->SetPosition(camera->GetFocalPoint()[0] + 4000, camera->GetFocalPoint()[1] + 4000,
    camera->GetFocalPoint()[2]);
  this->Scene.Renderer()->ResetCameraClippingRange();
  this->Scene.Render();
  // Through (18, 9) of the y plane the ray goes on to (11, 2) of the x plane.
  this->Mouse.Press(zvtest::Left, this->Mouse.At({ { 18, 9, 12 } }));
  EXPECT_EQ(this->Widget->GetPlaneSelected(), 2);
  this->Mouse.Release(zvtest::Left);
  // And the other way round.
  this->Mouse.Press(zvtest::Left, this->Mouse.At({ { 11, 16, 12 } }));
  EXPECT_EQ(this->Widget->GetPlaneSelected(), 1);
  this->Mouse.Release(zvtest::Left);
}

TEST_F(ThreePlanes, OfPlanesAtOnePlaceTheEarlierTakesThePress)
{
  this->ShowAlong(0);
  const zvtest::Display place = this->Mouse.At({ { 11, 5, 4 } });
  for (zvImagePlaneWidget* plane : this->Widget->Planes())
  {
    plane->SetPlaneOrientation(0);
    plane->SetSliceIndex(11);
  }
  this->Scene.Render();
  this->Mouse.Press(zvtest::Left, place);
  EXPECT_EQ(this->Widget->GetPlaneSelected(), 1);
  this->Mouse.Release(zvtest::Left);
  this->Widget->EnableXPlane(false);
  this->Mouse.Press(zvtest::Left, place);
  EXPECT_EQ(this->Widget->GetPlaneSelected(), 2);
  this->Mouse.Release(zvtest::Left);
}

TEST_F(ThreePlanes, AHiddenPlaneDoesNotKeepAClick)
{
  this->ShowAslant();
  const zvtest::Display place = this->Mouse.At({ { 18, 9, 12 } });
  this->Mouse.Press(zvtest::Left, place);
  const int first = this->Widget->GetPlaneSelected();
  EXPECT_EQ(first, 2);
  this->Mouse.Release(zvtest::Left);
  // Another plane clicked meanwhile keeps the y plane from the release that ends its click.
  this->Mouse.Press(zvtest::Left, this->Mouse.At({ { 11, 15, 12 } }));
  EXPECT_EQ(this->Widget->GetPlaneSelected(), 1);
  EXPECT_NE(this->Widget->PlaneY->GetClicked(), 0);
  this->Mouse.Release(zvtest::Left);
  this->Widget->EnableYPlane(false);
  this->Mouse.Press(zvtest::Left, place);
  EXPECT_NE(this->Widget->GetPlaneSelected(), 2);
  EXPECT_NE(this->Widget->GetPlaneSelected(), 0);
  this->Mouse.Release(zvtest::Left);
}

// ---- drags ----

TEST_F(ThreePlanes, ADragMovesTheSelectedPlaneOnly)
{
  this->ShowAslant();
  const Ints before = this->Slices();
  this->Mouse.Press(zvtest::Left, this->Mouse.At({ { 18, 9, 12 } }));
  ASSERT_EQ(this->Widget->GetPlaneSelected(), 2);
  EXPECT_EQ(this->Widget->GetState(), zvImagePlaneWidget::Pushing);
  EXPECT_EQ(this->Widget->State, zvImagePlaneWidget::Pushing);
  this->Mouse.MoveTo(this->Mouse.At({ { 18, 12.5, 12 } }));
  EXPECT_GT(this->Slices()[1], before[1]);
  EXPECT_EQ(this->Slices()[0], before[0]);
  EXPECT_EQ(this->Slices()[2], before[2]);
  this->Mouse.Release(zvtest::Left);
  EXPECT_EQ(this->Widget->GetState(), 0);
  EXPECT_EQ(this->Widget->GetPlaneSelected(), 2);
}

TEST_F(ThreePlanes, AMoveRefreshesTheSliceCounts)
{
  this->Show();
  double axis[3] = { 0.2, 0.5, 1 };
  double center[3] = { 11.5, 9.5, 7.5 };
  this->Widget->RotateX(25.0, axis, center);
  ASSERT_NE(this->Widget->PlaneX->GetNumberOfSlices(), 24);
  EXPECT_EQ(this->Widget->Dimension[0], 24);
  this->Mouse.MoveTo({ { 5, 5 } });
  EXPECT_EQ(this->Widget->Dimension[0], this->Widget->PlaneX->GetNumberOfSlices());
}

TEST_F(ThreePlanes, ALeftReleaseRefreshesTheSliceCounts)
{
  this->Show();
  double axis[3] = { 0.2, 0.5, 1 };
  double center[3] = { 11.5, 9.5, 7.5 };
  this->Widget->RotateX(25.0, axis, center);
  EXPECT_EQ(this->Widget->Dimension[0], 24);
  this->Mouse.Release(zvtest::Left, { { 5, 5 } });
  EXPECT_EQ(this->Widget->Dimension[0], this->Widget->PlaneX->GetNumberOfSlices());
}

TEST_F(ThreePlanes, TheReleaseTellsTheStartOfAnInteractionByDesign)
{
  this->ShowAslant();
  zvtest::EventRecorder events;
  Ints interactions;
  int state = -1;
  double rate = 0.0;
  events.Watch(this->Widget, zvtest::WidgetEvents,
    [&](const zvtest::RecordedEvent&)
    {
      interactions = this->Interactions();
      state = this->Widget->GetState();
      rate = this->Scene.Window()->GetDesiredUpdateRate();
    });
  this->Mouse.Press(zvtest::Left, this->Mouse.At({ { 18, 9, 12 } }), zvtest::Shift);
  this->Mouse.MoveTo(this->Mouse.At({ { 17, 9, 12 } }), zvtest::Shift);
  EXPECT_TRUE(events.Events().empty());
  this->Scene.Window()->SetDesiredUpdateRate(0.0001);
  this->Mouse.Release(zvtest::Left, zvtest::Shift);
  EXPECT_EQ(events.Names(), (std::vector<std::string>{ "StartInteractionEvent" }));
  EXPECT_FALSE(events.Events().front().HasData);
  // Told before the plane itself gets the release.
  EXPECT_EQ(interactions, (Ints{ 1, 1, 1 }));
  EXPECT_EQ(state, zvImagePlaneWidget::Cursoring);
  EXPECT_EQ(rate, this->Scene.Interactor()->GetDesiredUpdateRate());
}

TEST_F(ThreePlanes, TheRightReleaseHasNoEffect)
{
  this->ShowAlong(2);
  zvtest::EventRecorder events;
  events.WatchAll(this->Widget);
  const zvtest::Display place = this->Mouse.At({ { 5, 5, 7 } });
  this->Mouse.Press(zvtest::Right, place);
  EXPECT_EQ(this->States()[2], zvImagePlaneWidget::Cursoring);
  this->Mouse.Release(zvtest::Right);
  EXPECT_TRUE(events.Events().empty());
  EXPECT_EQ(this->LastClicked(), (Doubles{ 0, 0, 0, 0 }));
  EXPECT_EQ(this->Widget->GetPlaneSelected(), 0);
}

// ---- the last clicked voxel ----

TEST_F(ThreePlanes, AClickWithShiftReadsAVoxel)
{
  this->ShowAlong(2);
  this->Mouse.Press(zvtest::Left, this->Mouse.At({ { 5, 14, 7 } }), zvtest::Shift);
  EXPECT_EQ(this->Widget->GetState(), zvImagePlaneWidget::Cursoring);
  EXPECT_EQ(this->LastClicked(), (Doubles{ 0, 0, 0, 0 }));
  this->Mouse.Release(zvtest::Left, zvtest::Shift);
  EXPECT_EQ(this->LastClicked(), this->Reading({ { 5, 14, 7 } }));
}

TEST_F(ThreePlanes, TheVoxelIsTheOneUnderTheMouseAtTheRelease)
{
  this->ShowAlong(2);
  this->Mouse.Drag(zvtest::Left, this->Mouse.At({ { 5, 14, 7 } }), this->Mouse.At({ { 18, 3, 7 } }),
    zvtest::Control);
  EXPECT_EQ(this->LastClicked(), this->Reading({ { 18, 3, 7 } }));
}

TEST_F(ThreePlanes, APlainClickReadsNothing)
{
  this->ShowAlong(2);
  const zvtest::Display place = this->Mouse.At({ { 5, 14, 7 } });
  this->Mouse.Drag(zvtest::Left, place, place, zvtest::Shift);
  this->Mouse.Press(zvtest::Left, this->Mouse.At({ { 18, 3, 7 } }));
  this->Mouse.Release(zvtest::Left);
  EXPECT_EQ(this->LastClicked(), this->Reading({ { 5, 14, 7 } }));
}

TEST_F(ThreePlanes, ThePlanesBehindDoNotDisturbTheReading)
{
  this->ShowAslant();
  for (const zvtest::Index& index :
    std::vector<zvtest::Index>{ { { 11, 15, 12 } }, { { 18, 9, 12 } }, { { 18, 15, 7 } } })
  {
    const zvtest::Display place =
      this->Mouse.At({ { double(index[0]), double(index[1]), double(index[2]) } });
    this->Mouse.Press(zvtest::Left, place, zvtest::Shift);
    int clicked = 0;
    for (zvImagePlaneWidget* plane : this->Widget->Planes())
    {
      clicked += plane->GetClicked();
    }
    EXPECT_GT(clicked, 1);
    this->Mouse.Release(zvtest::Left, zvtest::Shift);
    EXPECT_EQ(this->LastClicked(), this->Reading(index));
  }
}

TEST_F(ThreePlanes, AReadingOfNothingButZerosDoesNotCountByDesign)
{
  this->ShowAlong(2);
  this->Widget->SetSliceZ(0);
  this->Scene.Render();
  const zvtest::Display first = this->Mouse.At({ { 5, 14, 0 } });
  this->Mouse.Drag(zvtest::Left, first, first, zvtest::Shift);
  EXPECT_EQ(this->LastClicked(), this->Reading({ { 5, 14, 0 } }));
  ASSERT_EQ(zvtest::IndexValue(this->Volume, { { 0, 0, 0 } }), 0.0);
  const zvtest::Display corner = this->Mouse.At({ { 0.3, 0.3, 0 } });
  this->Mouse.Press(zvtest::Left, corner, zvtest::Shift);
  EXPECT_EQ(this->Widget->GetState(), zvImagePlaneWidget::Cursoring);
  this->Mouse.Release(zvtest::Left, zvtest::Shift);
  EXPECT_EQ(this->LastClicked(), this->Reading({ { 5, 14, 0 } }));
}

TEST_F(ThreePlanes, TheFirstVoxelHasNoIntensityByDesign)
{
  this->Widget->SetRender(this->Scene.Renderer());
  this->Volume = zvtest::MakeConstantVolume(7, this->Brick());
  this->Widget->SetImage(this->Volume);
  ASSERT_TRUE(this->Widget->Create());
  this->Widget->Show();
  this->Widget->SetSliceZ(0);
  this->Scene.LookAlong(2);
  this->Scene.Render();
  const zvtest::Display other = this->Mouse.At({ { 5, 14, 0 } });
  this->Mouse.Drag(zvtest::Left, other, other, zvtest::Shift);
  EXPECT_EQ(this->LastClicked(), (Doubles{ 5, 14, 0, 7 }));
  const zvtest::Display corner = this->Mouse.At({ { 0.3, 0.3, 0 } });
  this->Mouse.Drag(zvtest::Left, corner, corner, zvtest::Shift);
  EXPECT_EQ(this->LastClicked(), (Doubles{ 0, 0, 0, 0 }));
}

TEST_F(ThreePlanes, AReadingByTheRightButtonDoesNotCount)
{
  this->ShowAlong(2);
  this->Mouse.Press(zvtest::Right, this->Mouse.At({ { 5, 14, 7 } }));
  ASSERT_EQ(this->States()[2], zvImagePlaneWidget::Cursoring);
  this->Mouse.Release(zvtest::Left);
  EXPECT_EQ(this->LastClicked(), (Doubles{ 0, 0, 0, 0 }));
}

TEST_F(ThreePlanes, AReleaseWithoutAPressReadsNothing)
{
  this->ShowAlong(2);
  const zvtest::Display place = this->Mouse.At({ { 5, 14, 7 } });
  this->Mouse.Drag(zvtest::Left, place, place, zvtest::Shift);
  zvtest::EventRecorder events;
  events.Watch(this->Widget, zvtest::WidgetEvents);
  this->Mouse.Release(zvtest::Left, { { 200, 200 } });
  EXPECT_EQ(this->LastClicked(), this->Reading({ { 5, 14, 7 } }));
  EXPECT_EQ(events.Count(vtkCommand::StartInteractionEvent), 1);
}

// ---- the end ----

namespace
{
// How far a host got before it deleted the object.
enum Stage
{
  Fresh,
  WithImage,
  WithRender,
  Made,
  Shown,
  Dragged
};

// Which parts of the view a host may let go of first.
using Drop = void (*)(zvtest::Scene&);

const Drop Drops[] = {
  [](zvtest::Scene&) {},
  [](zvtest::Scene& scene) { scene.DropInteractor(); },
  [](zvtest::Scene& scene) { scene.DropRenderers(); },
  [](zvtest::Scene& scene) { scene.DropWindow(); },
  [](zvtest::Scene& scene)
  {
    scene.DropRenderers();
    scene.DropInteractor();
    scene.DropWindow();
  },
};

class ThreePlanesEnd : public ThreePlanes
{
protected:
  void Reach(Stage stage)
  {
    this->Volume = zvtest::MakeIndexVolume(this->Brick());
    if (stage == WithImage || stage >= Made)
    {
      this->Widget->SetImage(this->Volume);
    }
    if (stage >= WithRender)
    {
      this->Widget->SetRender(this->Scene.Renderer());
    }
    if (stage >= Made)
    {
      ASSERT_TRUE(this->Widget->Create());
    }
    if (stage >= Shown)
    {
      this->Widget->Show();
      this->Scene.LookAlong(2);
      this->Scene.Render();
    }
    if (stage == Dragged)
    {
      this->Mouse.Press(zvtest::Left, this->Mouse.At({ { 12, 5, 7 } }));
      this->Mouse.MoveTo(this->Mouse.At({ { 12, 6, 7 } }));
      ASSERT_EQ(this->Widget->GetState(), zvImagePlaneWidget::Pushing);
    }
  }

  void UseMouseEverywhere()
  {
    for (zvtest::Button button : { zvtest::Left, zvtest::Right })
    {
      this->Mouse.MoveTo({ { 100, 100 } });
      this->Mouse.Press(button, { { 200, 150 } }, zvtest::Shift);
      this->Mouse.MoveTo({ { 210, 160 } });
      this->Mouse.Release(button);
    }
    this->Mouse.Type('r', zvtest::Shift);
  }
};
}

TEST_F(ThreePlanesEnd, DeletedAtAnyStageItLeavesNothingBehind)
{
  for (bool plain : { false, true })
  {
    for (Stage stage : { Fresh, WithImage, WithRender, Made, Shown, Dragged })
    {
      SCOPED_TRACE(::testing::Message() << "stage " << stage << (plain ? " by delete" : ""));
      const int references = this->Scene.Interactor()->GetReferenceCount();
      this->Reach(stage);
      vtkSmartPointer<vtkCommand> command = this->Widget->EventCallbackCommand;
      if (plain)
      {
        delete this->Widget;
      }
      else
      {
        this->Widget->Delete();
      }
      EXPECT_EQ(this->Alive, 0);
      for (unsigned long event : zvEvents::ThreePlanes)
      {
        EXPECT_FALSE(this->Scene.Interactor()->HasObserver(event, command));
      }
      EXPECT_EQ(this->Scene.Renderer()->GetViewProps()->GetNumberOfItems(), 0);
      EXPECT_EQ(this->Scene.Interactor()->GetReferenceCount(), references);
      EXPECT_EQ(this->Volume->GetReferenceCount(), 1);
      this->UseMouseEverywhere();
      this->Scene.Render();
      this->Widget = new OpenPlanes(&this->Alive);
    }
  }
}

TEST_F(ThreePlanesEnd, ItMayOutliveAnyPartOfTheView)
{
  for (bool plain : { false, true })
  {
    for (Stage stage : { WithRender, Made, Shown, Dragged })
    {
      for (Drop drop : Drops)
      {
        SCOPED_TRACE(::testing::Message() << "stage " << stage << (plain ? " by delete" : ""));
        zvtest::Scene view;
        auto* widget = new OpenPlanes(&this->Alive);
        auto volume = zvtest::MakeIndexVolume(this->Brick());
        widget->SetImage(volume);
        widget->SetRender(view.Renderer());
        if (stage >= Made)
        {
          EXPECT_TRUE(widget->Create());
        }
        if (stage >= Shown)
        {
          widget->Show();
        }
        if (stage == Dragged)
        {
          zvtest::Mouse(view).Press(zvtest::Left, { { 150, 220 } });
        }
        drop(view);
        if (view.Interactor())
        {
          view.Interactor()->InvokeEvent(vtkCommand::LeftButtonPressEvent);
          view.Interactor()->InvokeEvent(vtkCommand::MouseMoveEvent);
          view.Interactor()->InvokeEvent(vtkCommand::LeftButtonReleaseEvent);
        }
        widget->SetSliceX(4);
        widget->Enable3DPlanes(false);
        widget->Update();
        if (plain)
        {
          delete widget;
        }
        else
        {
          widget->Delete();
        }
        EXPECT_EQ(this->Alive, 1); // the fixture's
      }
    }
  }
}

TEST_F(ThreePlanesEnd, ItKnowsOfTheEndOfItsInteractor)
{
  this->Reach(Shown);
  this->Scene.DropRenderers();
  this->Scene.DropInteractor();
  this->Scene.DropWindow();
  EXPECT_EQ(this->Widget->GetInteractor(), nullptr);
  EXPECT_EQ(this->EnabledPlanes(), (Ints{ 0, 0, 0 }));
  EXPECT_EQ(this->Widget->GetRenderWindow(), nullptr);
}

TEST_F(ThreePlanesEnd, ItMayBeDeletedFromItsOwnObserver)
{
  this->Reach(Dragged);
  zvtest::EventRecorder events;
  events.Watch(this->Widget, { vtkCommand::StartInteractionEvent },
    [this](const zvtest::RecordedEvent&) { this->Release(); });
  this->Mouse.Release(zvtest::Left);
  EXPECT_EQ(this->Alive, 0);
  EXPECT_EQ(this->Scene.Renderer()->GetViewProps()->GetNumberOfItems(), 0);
  this->UseMouseEverywhere();
}

TEST_F(ThreePlanesEnd, ItMayBeDeletedWhileAPlaneRendersItsDrag)
{
  this->Reach(Shown);
  zvtest::EventRecorder renders;
  renders.Watch(this->Scene.Interactor(), { vtkCommand::RenderEvent },
    [this](const zvtest::RecordedEvent&)
    {
      if (this->Widget && this->Widget->GetState() == zvImagePlaneWidget::Pushing)
      {
        this->Release();
      }
    });
  this->Mouse.Press(zvtest::Left, this->Mouse.At({ { 12, 5, 7 } }));
  EXPECT_EQ(this->Alive, 0);
  this->UseMouseEverywhere();
  EXPECT_EQ(this->Scene.Renderer()->GetViewProps()->GetNumberOfItems(), 0);
}

TEST_F(ThreePlanesEnd, AnObserverMayTakeTheViewAwayInMidDrag)
{
  this->Reach(Dragged);
  zvtest::EventRecorder events;
  events.Watch(this->Widget, { vtkCommand::StartInteractionEvent },
    [this](const zvtest::RecordedEvent&) { this->Widget->SetRender(nullptr); });
  this->Mouse.Release(zvtest::Left);
  EXPECT_EQ(this->EnabledPlanes(), (Ints{ 0, 0, 0 }));
  EXPECT_EQ(this->Widget->GetInteractor(), nullptr);
  this->UseMouseEverywhere();
}

TEST_F(ThreePlanesEnd, AnObserverMayHideThePlanesInMidDrag)
{
  this->Reach(Dragged);
  zvtest::EventRecorder events;
  events.Watch(this->Widget, { vtkCommand::StartInteractionEvent },
    [this](const zvtest::RecordedEvent&) { this->Widget->Enable3DPlanes(false); });
  this->Mouse.Release(zvtest::Left);
  EXPECT_EQ(this->EnabledPlanes(), (Ints{ 0, 0, 0 }));
  this->UseMouseEverywhere();
  EXPECT_EQ(this->Widget->GetPlaneSelected(), 0);
}
