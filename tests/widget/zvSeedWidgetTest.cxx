// What the widget is, its views, enabling and life; its seeds and the mouse have files of their
// own.
#include "zvSeedFixture.h"

#include "vtkCamera.h"
#include "vtkNew.h"
#include "vtkObjectFactory.h"
#include "vtkPropCollection.h"
#include "vtkVersion.h"

#include <gmock/gmock.h>

#include <cmath>
#include <functional>
#include <sstream>

using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using zvtest::OpenSeeds;
using zvtest::ThreeD;
using zvtest::World;
using zvtest::X;
using zvtest::Y;
using zvtest::Z;

namespace
{
class ReplacedSeeds : public zvSeedWidget
{
public:
  static ReplacedSeeds* New() { return new ReplacedSeeds; }
  vtkTypeMacro(ReplacedSeeds, zvSeedWidget)
};

class Factory : public vtkObjectFactory
{
public:
  static Factory* New() { return new Factory; }
  vtkTypeMacro(Factory, vtkObjectFactory)
  const char* GetVTKSourceVersion() override { return VTK_SOURCE_VERSION; }
  const char* GetDescription() override { return "replaces zvSeedWidget"; }

private:
  static vtkObject* Make() { return ReplacedSeeds::New(); }
  Factory()
  {
    this->RegisterOverride("zvSeedWidget", "ReplacedSeeds", "for the test", 1, &Factory::Make);
  }
};

class SeedWidget : public zvtest::Seeds
{
};
}

// ---- What it is, and how it starts

TEST_F(SeedWidget, IsMadeByTheObjectFactoryWhenThatKnowsTheClass)
{
  vtkNew<Factory> factory;
  vtkObjectFactory::RegisterFactory(factory);
  vtkNew<zvSeedWidget> replaced;
  vtkObjectFactory::UnRegisterFactory(factory);
  vtkNew<zvSeedWidget> plain;
  EXPECT_STREQ(replaced->GetClassName(), "ReplacedSeeds");
  EXPECT_STREQ(plain->GetClassName(), "zvSeedWidget");
}

TEST_F(SeedWidget, StartsWithTheseDefaults)
{
  vtkNew<OpenSeeds> fresh;
  EXPECT_EQ(fresh->GetState(), zvSeedWidget::Start);
  EXPECT_EQ(fresh->GetEnabled(), 0);
  EXPECT_FALSE(fresh->DebugMode);
  EXPECT_EQ(fresh->ProjectionNormal, 0);
  EXPECT_EQ(fresh->ProjectionPosition, 0.0);
  EXPECT_EQ(fresh->ProjectToPlane, 0);
  EXPECT_EQ(fresh->PlaneSource, nullptr);
  EXPECT_EQ(fresh->CurrentHandle, nullptr);
  EXPECT_EQ(fresh->CurrentActorIndex, -1);
  EXPECT_EQ(fresh->GetPlaceFactor(), 1.0);
  EXPECT_THAT(fresh->InitialBounds, ElementsAre(-0.5, 0.5, -0.5, 0.5, -0.5, 0.5));
  EXPECT_DOUBLE_EQ(fresh->InitialLength, std::sqrt(3.0));
  EXPECT_THAT(fresh->LastPickPosition, ElementsAre(0.0, 0.0, 0.0));
  EXPECT_EQ(fresh->ValidPick, 0);
  EXPECT_EQ(fresh->HandlePicker->GetTolerance(), 0.005);
  EXPECT_EQ(fresh->HandlePicker->GetPickFromList(), 1);
  EXPECT_EQ(fresh->HandlePicker->GetPickList()->GetNumberOfItems(), 0);
  for (vtkCollection* collection : { fresh->HandleActors.Get(), fresh->HandleSources.Get(),
         fresh->HandleActors3D.Get(), fresh->HandleSources3D.Get() })
  {
    EXPECT_EQ(collection->GetNumberOfItems(), 0);
  }
  for (vtkRenderer* view : { fresh->Renderer3D.GetPointer(), fresh->RendererX.GetPointer(),
         fresh->RendererY.GetPointer(), fresh->RendererZ.GetPointer(), fresh->CurrentRenderer })
  {
    EXPECT_EQ(view, nullptr);
  }
  EXPECT_EQ(fresh->Interactor3D, nullptr);
  EXPECT_EQ(fresh->InteractorX, nullptr);
  EXPECT_EQ(fresh->InteractorY, nullptr);
  EXPECT_EQ(fresh->InteractorZ, nullptr);
}

// ---- Looks

TEST_F(SeedWidget, ANewPropertyShowsWhenTheSelectionChanges)
{
  this->AddThree();
  vtkNew<vtkProperty> property;
  this->Widget->SetHandleProperty(property);
  EXPECT_EQ(this->Looks(), "??*");
  this->Widget->SetCurrentActorIndex(1);
  EXPECT_EQ(this->Looks(), ".*.");
}

TEST_F(SeedWidget, WithoutPropertiesSeedsAreDrawnInTheDefaultLook)
{
  this->Widget->SetHandleProperty(nullptr);
  this->Widget->SetSelectedHandleProperty(nullptr);
  this->AddThree();
  this->Widget->SetEnabled(1);
  this->Widget->SetCurrentActorIndex(0);
  const zvtest::Picture picture = this->In(Z).Look();
  EXPECT_GT(picture.CountOther({ 0, 0, 0 }, { { { 0, 0 } }, { { 199, 199 } } }), 5);
}

// ---- Enabling

TEST_F(SeedWidget, EnablingTellsAndRendersOnce)
{
  zvtest::EventRecorder recorder;
  this->Record(recorder);
  this->Widget->SetEnabled(1);
  EXPECT_EQ(this->Widget->GetEnabled(), 1);
  EXPECT_THAT(this->NamesOf(recorder), ElementsAre("EnableEvent", "X", "Y", "Z", "3"));
  EXPECT_FALSE(recorder.Events().front().HasData);
  recorder.Clear();
  this->AddThree();
  recorder.Clear();
  this->Widget->SetEnabled(1);
  EXPECT_THAT(recorder.Names(), IsEmpty());
  EXPECT_THAT(this->Where(), ElementsAre("XYZ 3", "XYZ 3", "XYZ 3"));
  EXPECT_EQ(this->Looks(), "..*");
}

TEST_F(SeedWidget, DisablingTakesAllOutAndTellsOnce)
{
  this->Widget->SetEnabled(1);
  this->AddThree();
  zvtest::EventRecorder recorder;
  this->Record(recorder);
  this->Widget->SetEnabled(0);
  EXPECT_EQ(this->Widget->GetEnabled(), 0);
  EXPECT_THAT(this->NamesOf(recorder), ElementsAre("DisableEvent", "X", "Y", "Z", "3"));
  EXPECT_FALSE(recorder.Events().front().HasData);
  EXPECT_THAT(this->Where(), ElementsAre(" ", " ", " "));
  EXPECT_EQ(this->Widget->CurrentHandle, nullptr);
  EXPECT_EQ(this->Widget->CurrentActorIndex, 2);
  EXPECT_EQ(this->Widget->GetCurrentRenderer(), this->Renderer(Z));
  recorder.Clear();
  this->Widget->SetEnabled(0);
  EXPECT_THAT(recorder.Names(), IsEmpty());
}

TEST_F(SeedWidget, EnabledAgainAllSeedsAreBackAndNoneLooksSelected)
{
  this->Widget->SetEnabled(1);
  this->AddThree();
  this->Widget->SetEnabled(0);
  this->Widget->SetEnabled(1);
  EXPECT_THAT(this->Where(), ElementsAre("XYZ 3", "XYZ 3", "XYZ 3"));
  EXPECT_EQ(this->Looks(), "...");
  EXPECT_EQ(this->Widget->CurrentActorIndex, 2);
  EXPECT_EQ(this->Widget->CurrentHandle, nullptr);
}

TEST_F(SeedWidget, EnablingSizesTheSpheres)
{
  this->AddThree();
  this->SliceSource(0)->SetRadius(5);
  this->Widget->SetEnabled(1);
  EXPECT_LT(this->SliceSource(0)->GetRadius(), 1);
}

TEST_F(SeedWidget, SeedsAreShownWhetherOrNotTheWidgetIsEnabled)
{
  this->AddThree();
  EXPECT_EQ(this->Widget->GetEnabled(), 0);
  EXPECT_THAT(this->Where(), Each(std::string("XYZ 3")));
}

TEST_F(SeedWidget, WithoutACurrentViewTheOneUnderThePointerIsTaken)
{
  this->Widget->SetCurrentRenderer(nullptr);
  this->Widget->SetEnabled(1);
  EXPECT_EQ(this->Widget->GetCurrentRenderer(), this->Renderer(Z));
  EXPECT_EQ(this->Widget->GetEnabled(), 1);
}

TEST_F(SeedWidget, WithoutACurrentViewAndItsInteractorItStaysDisabled)
{
  this->Widget->SetCurrentRenderer(nullptr);
  this->Widget->SetInteractor(nullptr);
  zvtest::EventRecorder recorder;
  this->Record(recorder);
  this->Widget->SetEnabled(1);
  this->ExpectGenericWarning("zvSeedWidget", "set CurrentRenderer before enabling the widget...");
  EXPECT_EQ(this->Widget->GetEnabled(), 0);
  EXPECT_THAT(recorder.Names(), IsEmpty());
}

TEST_F(SeedWidget, WithoutAnInteractorTheSliceViewsAreObserved)
{
  this->Widget->SetInteractor(nullptr);
  this->Widget->SetEnabled(1);
  EXPECT_EQ(this->Widget->GetEnabled(), 1);
  EXPECT_TRUE(this->Interactor(X)->HasObserver(
    vtkCommand::MouseMoveEvent, this->Widget->EventCallbackCommand));
  this->PointerIn(X).Drag(zvtest::Left, { { 10, 10 } }, { { 50, 50 } });
  this->PointerIn(X).WheelForward({ { 50, 50 } });
  EXPECT_EQ(this->Widget->IsClicked(), 0);
}

TEST_F(SeedWidget, AnObserverOfTheEnablingMayDisableAgain)
{
  this->AddThree();
  zvtest::EventRecorder recorder;
  recorder.Watch(this->Widget, { vtkCommand::EnableEvent },
    [this](const zvtest::RecordedEvent&) { this->Widget->SetEnabled(0); });
  this->Widget->SetEnabled(1);
  EXPECT_EQ(this->Widget->GetEnabled(), 0);
  EXPECT_THAT(this->Where(), Each(std::string(" ")));
}

// ---- Traces

namespace
{
using Call = std::function<void(OpenSeeds*)>;
struct TraceRow
{
  const char* Name;
  Call Operation;
  std::vector<std::string> Signatures; // without the class
};

double Somewhere[3] = { 1, 2, 3 };
double Bounds[6] = { 0, 1, 0, 1, 0, 1 };

std::vector<TraceRow> MakeTraceRows()
{
  static std::ostringstream nowhere;
  return {
    { "PrintSelf", [](OpenSeeds* w) { w->PrintSelf(nowhere, vtkIndent()); },
      { "PrintSelf(ostream& os, vtkIndent indent)" } },
    { "PlaceWidget", [](OpenSeeds* w) { w->PlaceWidget(Bounds); },
      { "PlaceWidget(double bds[6])", "SizeHandles()" } },
    { "PlaceWidgetByNumbers", [](OpenSeeds* w) { w->PlaceWidget(0, 1, 0, 1, 0, 1); },
      { "PlaceWidget(double bds[6])", "SizeHandles()" } },
    { "PlaceWidgetProjected",
      [](OpenSeeds* w)
      {
        w->ProjectToPlane = 1;
        w->PlaceWidget(Bounds);
      },
      { "PlaceWidget(double bds[6])", "ProjectPointsToPlane()", "ProjectPointsToOrthoPlane()",
        "SizeHandles()" } },
    { "SizeHandles", [](OpenSeeds* w) { w->SizeHandles(); }, { "SizeHandles()" } },
    { "SetProjectionPosition", [](OpenSeeds* w) { w->SetProjectionPosition(1); },
      { "SetProjectionPosition(double position))" } },
    { "SetProjectionPositionProjected",
      [](OpenSeeds* w)
      {
        w->ProjectToPlane = 1;
        w->SetProjectionPosition(1);
      },
      { "SetProjectionPosition(double position))", "ProjectPointsToPlane()",
        "ProjectPointsToOrthoPlane()" } },
    { "SetPlaneSource", [](OpenSeeds* w) { w->SetPlaneSource(nullptr); },
      { "SetPlaneSource(vtkPlaneSource *plane)" } },
    { "SetRendererX", [](OpenSeeds* w) { w->SetRendererX(w->RendererX); },
      { "SetRendererX(vtkRenderer *render)" } },
    { "SetRendererY", [](OpenSeeds* w) { w->SetRendererY(w->RendererY); },
      { "SetRendererY(vtkRenderer *render)" } },
    { "SetRendererZ", [](OpenSeeds* w) { w->SetRendererZ(w->RendererZ); },
      { "SetRendererZ(vtkRenderer *render)" } },
    { "Set3DRender", [](OpenSeeds* w) { w->Set3DRender(w->Renderer3D); },
      { "Set3DRender(vtkRenderer *render)" } },
    { "SetCurrentRender", [](OpenSeeds* w) { w->SetCurrentRender(w->RendererX); },
      { "SetCurrentRender(vtkRenderer *render)" } },
    { "AddHandle", [](OpenSeeds* w) { w->AddHandle(Somewhere, 0); },
      { "AddHandle(double x[3])", "HighlightHandle(vtkProp *prop)" } },
    { "EraseHandle", [](OpenSeeds* w) { w->EraseHandle(); }, { "EraseHandle()" } },
    { "Clear", [](OpenSeeds* w) { w->Clear(); }, { "Initialize(void)" } },
    { "SetHandlePosition", [](OpenSeeds* w) { w->SetHandlePosition(0, 1, 2, 3); },
      { "SetHandlePosition(int handle, double x, double y, double z)" } },
    { "SetHandlePositionAsArray", [](OpenSeeds* w) { w->SetHandlePosition(0, Somewhere); },
      { "SetHandlePosition(int handle, double xyz[3])",
        "SetHandlePosition(int handle, double x, double y, double z)" } },
    { "SetHandlePositionProjected",
      [](OpenSeeds* w)
      {
        w->ProjectToPlane = 1;
        w->SetHandlePosition(0, 1, 2, 3);
      },
      { "SetHandlePosition(int handle, double x, double y, double z)", "ProjectPointsToPlane()",
        "ProjectPointsToOrthoPlane()" } },
    { "GetHandlePosition", [](OpenSeeds* w) { w->GetHandlePosition(0); },
      { "GetHandlePosition(int handle)" } },
    { "GetHandlePositionAsArray", [](OpenSeeds* w) { w->GetHandlePosition(0, Somewhere); },
      { "GetHandlePosition(int handle, double xyz[3])", "GetHandlePosition(int handle)" } },
    { "HighlightHandleByProp", [](OpenSeeds* w) { w->HighlightHandle(nullptr); },
      { "HighlightHandle(vtkProp *prop)" } },
    { "HighlightHandleByIndex", [](OpenSeeds* w) { w->HighlightHandle(1); },
      { "HighlightHandle(int index)" } },
    { "SetCurrentActorIndex", [](OpenSeeds* w) { w->SetCurrentActorIndex(0); },
      { "SetCurrentActorIndex(int index)", "HighlightHandle(int index)" } },
    { "SetCurrentActorIndexMinusOne", [](OpenSeeds* w) { w->SetCurrentActorIndex(-1); },
      { "SetCurrentActorIndex(int index)" } },
    { "IsClicked", [](OpenSeeds* w) { w->IsClicked(); }, { "IsClicked()" } },
    { "GetState", [](OpenSeeds* w) { w->GetState(); }, { "GetState()" } },
    { "SetState", [](OpenSeeds* w) { w->SetState(0); }, { "SetState(int state)" } },
    { "MovePoint", [](OpenSeeds* w) { w->MovePoint(Somewhere, Somewhere); },
      { "MovePoint(double *p1, double *p2)" } },
    { "ProjectPointsToPlane", [](OpenSeeds* w) { w->ProjectPointsToPlane(); },
      { "ProjectPointsToPlane()", "ProjectPointsToOrthoPlane()" } },
    { "AddObservers", [](OpenSeeds* w) { w->AddObservers(); }, { "AddObservers(void)" } },
    { "CreateDefaultProperties", [](OpenSeeds* w) { w->CreateDefaultProperties(); },
      { "CreateDefaultProperties()" } },
    { "OnLeftButtonDown", [](OpenSeeds* w) { w->OnLeftButtonDown(); }, { "OnLeftButtonDown()" } },
    { "OnLeftButtonUp", [](OpenSeeds* w) { w->OnLeftButtonUp(); }, { "OnLeftButtonUp()" } },
    { "OnMiddleButtonDown", [](OpenSeeds* w) { w->OnMiddleButtonDown(); },
      { "OnMiddleButtonDown()" } },
    { "OnMiddleButtonUp", [](OpenSeeds* w) { w->OnMiddleButtonUp(); }, { "OnMiddleButtonUp()" } },
    { "OnRightButtonDown", [](OpenSeeds* w) { w->OnRightButtonDown(); },
      { "OnRightButtonDown()" } },
    { "OnRightButtonUp", [](OpenSeeds* w) { w->OnRightButtonUp(); },
      { "OnRightButtonUp()", "SizeHandles()" } },
    { "OnMouseMove", [](OpenSeeds* w) { w->OnMouseMove(); }, {} },
    { "OnMouseWheelForward", [](OpenSeeds* w) { w->OnMouseWheelForward(); },
      { "OnMouseWheelForward()", "SizeHandles()" } },
    { "OnMouseWheelBackward", [](OpenSeeds* w) { w->OnMouseWheelBackward(); },
      { "OnMouseWheelBackward()", "SizeHandles()" } },
    { "Accessors",
      [](OpenSeeds* w)
      {
        w->SetProjectToPlane(1);
        w->ProjectToPlaneOn();
        w->ProjectToPlaneOff();
        w->GetProjectToPlane();
        w->SetProjectionNormal(1);
        w->GetProjectionNormal();
        w->GetProjectionNormalMinValue();
        w->GetProjectionNormalMaxValue();
        w->GetProjectionPosition();
        w->SetHandleProperty(w->GetHandleProperty());
        w->SetSelectedHandleProperty(w->GetSelectedHandleProperty());
      },
      {} },
  };
}

}

TEST_F(SeedWidget, EveryOperationTracesItsSignature)
{
  for (const TraceRow& row : MakeTraceRows())
  {
    SCOPED_TRACE(row.Name);
    this->MakeWidget();
    this->AddThree();
    this->ExpectNoMessage(); // quiet by default
    this->Widget->DebugMode = true;
    row.Operation(this->Widget);
    this->Widget->DebugMode = false;
    std::vector<std::string> signatures;
    for (const std::string& signature : row.Signatures)
    {
      signatures.push_back("zvSeedWidget::" + signature);
    }
    this->ExpectTraces("zvSeedWidget", this->Widget, signatures);
  }
}

// ---- Life

TEST_F(SeedWidget, ReleasesAllItsPartsWhenItIsDeleted)
{
  this->AddThree();
  const std::vector<vtkWeakPointer<vtkObject>> parts = { this->SliceActor(0), this->Actor3D(0),
    this->SliceSource(0), this->Source3D(0), this->Widget->HandlePicker.GetPointer(),
    this->Widget->HandleProperty.GetPointer(), this->Widget->SelectedHandleProperty.GetPointer() };
  this->Widget = nullptr;
  EXPECT_THAT(parts, Each(nullptr));
}
