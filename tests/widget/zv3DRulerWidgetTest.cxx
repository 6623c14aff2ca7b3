// What the 3D ruler has of its own: its chain and the mouse have their own files, and what all
// markers promise alike is in zvMarkersTest.
#include "zv3DRulerFixture.h"

#include "vtkMapper.h"
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
using zvtest::Open3DRuler;
using zvtest::ThreeD;
using zvtest::X;
using zvtest::Y;
using zvtest::Z;

namespace
{
class ReplacedRuler : public zv3DRulerWidget
{
public:
  static ReplacedRuler* New() { return new ReplacedRuler; }
  vtkTypeMacro(ReplacedRuler, zv3DRulerWidget)
};

class Factory : public vtkObjectFactory
{
public:
  static Factory* New() { return new Factory; }
  vtkTypeMacro(Factory, vtkObjectFactory)
  const char* GetVTKSourceVersion() override { return VTK_SOURCE_VERSION; }
  const char* GetDescription() override { return "replaces zv3DRulerWidget"; }

private:
  static vtkObject* Make() { return ReplacedRuler::New(); }
  Factory()
  {
    this->RegisterOverride("zv3DRulerWidget", "ReplacedRuler", "for the test", 1, &Factory::Make);
  }
};

class Ruler3DWidget : public zvtest::Ruler3D
{
};

std::vector<double> ColorOf(vtkProperty* property)
{
  return { property->GetColor()[0], property->GetColor()[1], property->GetColor()[2] };
}
}

// ---- What it is, and how it starts

TEST_F(Ruler3DWidget, IsMadeByTheObjectFactoryWhenThatKnowsTheClass)
{
  vtkNew<Factory> factory;
  vtkObjectFactory::RegisterFactory(factory);
  vtkNew<zv3DRulerWidget> replaced;
  vtkObjectFactory::UnRegisterFactory(factory);
  vtkNew<zv3DRulerWidget> plain;
  EXPECT_STREQ(replaced->GetClassName(), "ReplacedRuler");
  EXPECT_STREQ(plain->GetClassName(), "zv3DRulerWidget");
}

TEST_F(Ruler3DWidget, StartsWithTheseDefaults)
{
  vtkNew<Open3DRuler> fresh;
  EXPECT_EQ(fresh->GetState(), zv3DRulerWidget::Start);
  EXPECT_EQ(fresh->GetEnabled(), 0);
  EXPECT_FALSE(fresh->DebugMode);
  EXPECT_EQ(fresh->ProjectionNormal, 0);
  EXPECT_EQ(fresh->ProjectionPosition, 0.0);
  EXPECT_EQ(fresh->ProjectToPlane, 0);
  EXPECT_EQ(fresh->PlaneSource, nullptr);
  EXPECT_EQ(fresh->CurrentHandle, nullptr);
  EXPECT_EQ(fresh->CurrentPoint, -1);
  EXPECT_EQ(fresh->CurrentLine, -1);
  EXPECT_EQ(fresh->GetPlaceFactor(), 1.0);
  EXPECT_THAT(fresh->InitialBounds, ElementsAre(-0.5, 0.5, -0.5, 0.5, -0.5, 0.5));
  EXPECT_DOUBLE_EQ(fresh->InitialLength, std::sqrt(3.0));
  EXPECT_THAT(fresh->LastPickPosition, ElementsAre(0.0, 0.0, 0.0));
  EXPECT_EQ(fresh->ValidPick, 0);
  for (vtkCellPicker* picker : { fresh->PointPicker.GetPointer(), fresh->LinePicker.GetPointer() })
  {
    EXPECT_EQ(picker->GetPickFromList(), 1);
    EXPECT_EQ(picker->GetPickList()->GetNumberOfItems(), 0);
  }
  EXPECT_EQ(fresh->PointPicker->GetTolerance(), 0.005);
  EXPECT_EQ(fresh->LinePicker->GetTolerance(), 0.01);
  for (vtkCollection* collection : { fresh->HandleActors.Get(), fresh->HandleSources.Get(),
         fresh->LineActors.Get(), fresh->LineSources.Get() })
  {
    EXPECT_EQ(collection->GetNumberOfItems(), 0);
  }
  for (vtkRenderer* view : { fresh->Renderer3D.GetPointer(), fresh->RendererX.GetPointer(),
         fresh->RendererY.GetPointer(), fresh->RendererZ.GetPointer(), fresh->CurrentRenderer })
  {
    EXPECT_EQ(view, nullptr);
  }
}

TEST_F(Ruler3DWidget, StartsWithABlankRedLabel)
{
  vtkNew<Open3DRuler> fresh;
  EXPECT_STREQ(fresh->TextSource->GetText(), " ");
  EXPECT_THAT(ColorOf(fresh->TextActor->GetProperty()), ElementsAre(1, 0, 0));
  const auto narrowed = static_cast<double>(static_cast<float>(0.01 * std::sqrt(3.0)));
  for (int axis = 0; axis < 3; ++axis)
  {
    EXPECT_EQ(fresh->TextActor->GetScale()[axis], narrowed);
  }
  EXPECT_EQ(fresh->TextActor->GetMapper()->GetInputAlgorithm(), fresh->TextSource.Get());
  EXPECT_EQ(fresh->TextActor->GetVisibility(), 1);
}

TEST_F(Ruler3DWidget, SegmentsAreYellowAndTheSelectedOneGreen)
{
  EXPECT_THAT(ColorOf(this->Widget->LineProperty), ElementsAre(1, 1, 0));
  EXPECT_THAT(ColorOf(this->Widget->SelectedLineProperty), ElementsAre(0, 1, 0.2));
  EXPECT_EQ(this->Widget->LineProperty->GetLineWidth(), 2.0f);
  EXPECT_EQ(this->Widget->SelectedLineProperty->GetLineWidth(), 2.0f);
  vtkSmartPointer<vtkProperty> kept = this->Widget->LineProperty;
  this->Widget->SelectedLineProperty = nullptr;
  this->Widget->CreateDefaultProperties();
  EXPECT_EQ(this->Widget->LineProperty, kept);
  EXPECT_THAT(ColorOf(this->Widget->SelectedLineProperty), ElementsAre(0, 1, 0.2));
}

// ---- Enabling

TEST_F(Ruler3DWidget, EnablingTellsAndRendersOnce)
{
  zvtest::EventRecorder recorder;
  this->Record(recorder);
  this->Widget->SetEnabled(1);
  EXPECT_EQ(this->Widget->GetEnabled(), 1);
  EXPECT_THAT(this->NamesOf(recorder), ElementsAre("EnableEvent", "X", "Y", "Z", "3"));
  EXPECT_FALSE(recorder.Events().front().HasData);
  this->AddThree();
  recorder.Clear();
  this->Widget->SetEnabled(1);
  EXPECT_THAT(recorder.Names(), IsEmpty());
  EXPECT_EQ(this->Looks(), "o-o=*");
}

TEST_F(Ruler3DWidget, DisablingTakesTheChainOutAndHidesTheLabel)
{
  this->Widget->SetEnabled(1);
  this->AddThree();
  zvtest::EventRecorder recorder;
  this->Record(recorder);
  this->Widget->SetEnabled(0);
  EXPECT_EQ(this->Widget->GetEnabled(), 0);
  EXPECT_THAT(this->NamesOf(recorder), ElementsAre("DisableEvent", "X", "Y", "Z", "3"));
  EXPECT_FALSE(recorder.Events().front().HasData);
  EXPECT_THAT(this->Where(), ElementsAre("", "", "", "", "", "label XYZ3"));
  EXPECT_EQ(this->Widget->TextActor->GetVisibility(), 0);
  EXPECT_EQ(this->Widget->CurrentHandle, nullptr);
  EXPECT_EQ(this->Widget->CurrentPoint, 2);
  EXPECT_EQ(this->Widget->CurrentLine, 1);
  EXPECT_EQ(this->Widget->GetCurrentRenderer(), this->Renderer(Z));
  recorder.Clear();
  this->Widget->SetEnabled(0);
  EXPECT_THAT(recorder.Names(), IsEmpty());
}

TEST_F(Ruler3DWidget, EnabledAgainAllIsBackAndNothingLooksSelected)
{
  this->Widget->SetEnabled(1);
  this->AddThree();
  this->Widget->SetEnabled(0);
  this->Sphere(0)->SetRadius(5);
  this->Widget->SetEnabled(1);
  EXPECT_THAT(this->Where(), ElementsAre("XYZ3", "XYZ3", "XYZ3", "XYZ3", "XYZ3", "label XYZ3"));
  EXPECT_EQ(this->Looks(), "o-o-o");
  EXPECT_EQ(this->Widget->TextActor->GetVisibility(), 1);
  EXPECT_LT(this->Sphere(0)->GetRadius(), 1);
  EXPECT_EQ(this->Widget->CurrentPoint, 2);
  EXPECT_EQ(this->Widget->CurrentLine, 1);
}

TEST_F(Ruler3DWidget, WhatIsAddedToADisabledRulerIsShownWithoutItsLabel)
{
  this->Widget->SetEnabled(1);
  this->Widget->SetEnabled(0);
  this->AddThree();
  EXPECT_THAT(this->Where(), ElementsAre("XYZ3", "XYZ3", "XYZ3", "XYZ3", "XYZ3", "label XYZ3"));
  EXPECT_EQ(this->Widget->TextActor->GetVisibility(), 0);
}

TEST_F(Ruler3DWidget, WithoutAnInteractorItIsSilentlyNeitherEnabledNorDisabled)
{
  this->Widget->SetInteractor(nullptr);
  zvtest::EventRecorder recorder;
  this->Record(recorder);
  this->Widget->SetEnabled(1);
  EXPECT_EQ(this->Widget->GetEnabled(), 0);
  this->Widget->SetCurrentRender(this->Renderer(Z));
  this->Widget->SetEnabled(1);
  EXPECT_EQ(this->Widget->GetEnabled(), 1);
  vtkSmartPointer<vtkRenderer> kept = this->Renderer(Z);
  this->In(Z).DropInteractor();
  recorder.Clear();
  this->Widget->SetEnabled(0);
  EXPECT_EQ(this->Widget->GetEnabled(), 1);
  EXPECT_THAT(recorder.Names(), IsEmpty());
  this->ExpectNoMessage();
}

TEST_F(Ruler3DWidget, EnablingLeavesTheCurrentViewAsItIs)
{
  this->Widget->SetCurrentRenderer(nullptr);
  this->Widget->SetEnabled(1);
  EXPECT_EQ(this->Widget->GetEnabled(), 1);
  EXPECT_EQ(this->Widget->GetCurrentRenderer(), nullptr);
}

// ---- Clearing

TEST_F(Ruler3DWidget, ClearRemovesEverythingAndCountsAsDisabled)
{
  this->Widget->SetEnabled(1);
  this->AddThree();
  zvtest::EventRecorder recorder;
  this->Record(recorder);
  this->Widget->Clear();
  EXPECT_THAT(this->NamesOf(recorder), ElementsAre("X", "Y", "Z", "3")); // no DisableEvent
  EXPECT_EQ(this->Widget->GetEnabled(), 0);
  EXPECT_THAT(this->CountProps(), Each(0));
  for (vtkCollection* collection :
    { this->Widget->HandleActors.Get(), this->Widget->HandleSources.Get(),
      this->Widget->LineActors.Get(), this->Widget->LineSources.Get() })
  {
    EXPECT_EQ(collection->GetNumberOfItems(), 0);
  }
  EXPECT_EQ(this->Widget->PointPicker->GetPickList()->GetNumberOfItems(), 0);
  EXPECT_EQ(this->Widget->LinePicker->GetPickList()->GetNumberOfItems(), 0);
  EXPECT_EQ(this->Widget->CurrentHandle, nullptr);
  EXPECT_EQ(this->Widget->CurrentPoint, 2);
  EXPECT_EQ(this->Widget->CurrentLine, 1);
  EXPECT_EQ(this->Widget->GetStringCoordinate(), " 2");
}

TEST_F(Ruler3DWidget, EnabledAfterClearEventsAreAnsweredTwiceByDesign)
{
  const auto countAnswers = [this](zvtest::View view)
  {
    zvtest::EventRecorder recorder;
    recorder.Watch(this->Interactor(X), { vtkCommand::RenderEvent });
    this->PointerIn(view).WheelForward({ { 3, 3 } });
    return recorder.Count(vtkCommand::RenderEvent);
  };
  this->Widget->SetEnabled(1);
  EXPECT_EQ(countAnswers(X), 1);
  EXPECT_EQ(countAnswers(Z), 2); // the current one
  for (int clears = 1; clears <= 2; ++clears)
  {
    this->Widget->Clear();
    EXPECT_EQ(countAnswers(X), clears); // still there
    this->Widget->SetEnabled(1);
    EXPECT_EQ(this->Widget->GetEnabled(), 1);
    EXPECT_EQ(countAnswers(X), 1 + clears);
    EXPECT_EQ(countAnswers(Y), 1 + clears);
    EXPECT_EQ(countAnswers(Z), 2 + 2 * clears);
    EXPECT_EQ(countAnswers(ThreeD), 0);
  }
  this->Widget->SetEnabled(0); // takes off all of them
  EXPECT_EQ(countAnswers(X), 0);
  EXPECT_EQ(countAnswers(Z), 0);
}

TEST_F(Ruler3DWidget, DeletedAfterClearItLeavesTheInteractors)
{
  this->Widget->SetEnabled(1);
  this->Widget->Clear();
  vtkSmartPointer<vtkCommand> command = this->Widget->EventCallbackCommand;
  this->Widget = nullptr;
  for (zvtest::View view : zvtest::AllViews)
  {
    EXPECT_FALSE(this->Interactor(view)->HasObserver(vtkCommand::MouseMoveEvent, command));
    this->PointerIn(view).Drag(zvtest::Left, { { 50, 50 } }, { { 90, 90 } });
  }
}

TEST_F(Ruler3DWidget, ClearWithoutACurrentViewTakesTheOneUnderThePointer)
{
  this->AddThree();
  this->Widget->SetCurrentRenderer(nullptr);
  this->Widget->Clear();
  EXPECT_EQ(this->Widget->GetCurrentRenderer(), this->Renderer(Z));
  EXPECT_THAT(this->CountProps(), Each(0));
}

TEST_F(Ruler3DWidget, ClearWithoutAnInteractorLeavesTheRulerToBeSeen)
{
  this->AddThree();
  this->Widget->SetInteractor(nullptr);
  this->Widget->Clear();
  EXPECT_EQ(this->CountPoints(), 0);
  EXPECT_THAT(this->CountProps(), Each(6));
  EXPECT_EQ(this->Widget->PointPicker->GetPickList()->GetNumberOfItems(), 3);
  EXPECT_NE(this->Widget->CurrentHandle, nullptr);
}

TEST_F(Ruler3DWidget, ClearCountsAsDisablingAlsoWithoutAnInteractor)
{
  this->Widget->SetEnabled(1);
  this->AddThree();
  vtkSmartPointer<vtkRenderer> kept = this->Renderer(Z);
  this->In(Z).DropInteractor();
  EXPECT_EQ(this->Widget->GetEnabled(), 1);
  this->Widget->Clear();
  EXPECT_EQ(this->Widget->GetEnabled(), 0);
  EXPECT_EQ(this->CountPoints(), 0);
}

TEST_F(Ruler3DWidget, WhatAClearLeftToBeSeenIsStillHitAndHarmless)
{
  this->AddThree();
  const zvtest::Display at = this->In(Z).At(this->PositionOf(1));
  this->Widget->SetInteractor(nullptr);
  this->Widget->Clear();
  this->Widget->SetCurrentRender(this->Renderer(Z));
  this->Widget->SetEnabled(1);
  this->PointerIn(Z).Press(zvtest::Left, at);
  EXPECT_EQ(this->Widget->GetState(), zv3DRulerWidget::Moving);
  EXPECT_EQ(this->Widget->CurrentPoint, -1);
  EXPECT_EQ(this->Widget->CurrentLine, -1);
  EXPECT_EQ(this->Widget->CurrentHandle, nullptr);
  this->PointerIn(Z).MoveTo({ { 10, 10 } });
  this->PointerIn(Z).Release(zvtest::Left, { { 10, 10 } });
  EXPECT_EQ(this->Widget->GetState(), zv3DRulerWidget::Start);
}

// ---- Traces

namespace
{
using Call = std::function<void(Open3DRuler*)>;
struct TraceRow
{
  const char* Name;
  Call Operation;
  std::vector<std::string> Signatures; // without the class
};

double Somewhere[3] = { 1, 2, 3 };
double Bounds[6] = { 0, 1, 0, 1, 0, 1 };
const char* const Label = "SetTextToActorPosition(vtkProp *prop)";
const char* const ByIndex = "HighlightHandle(int index)";

std::vector<TraceRow> MakeTraceRows()
{
  static std::ostringstream nowhere;
  return {
    { "PrintSelf", [](Open3DRuler* w) { w->PrintSelf(nowhere, vtkIndent()); },
      { "PrintSelf(ostream& os, vtkIndent indent)" } },
    { "PlaceWidget", [](Open3DRuler* w) { w->PlaceWidget(Bounds); },
      { "PlaceWidget(double bds[6])", "SizeHandles()" } },
    { "PlaceWidgetProjected",
      [](Open3DRuler* w)
      {
        w->ProjectToPlane = 1;
        w->PlaceWidget(Bounds);
      },
      { "PlaceWidget(double bds[6])", "ProjectPointsToPlane()", "ProjectPointsToOrthoPlane()",
        "SizeHandles()" } },
    { "SizeHandles", [](Open3DRuler* w) { w->SizeHandles(); }, { "SizeHandles()" } },
    { "SetProjectionPosition",
      [](Open3DRuler* w)
      {
        w->ProjectToPlane = 1;
        w->SetProjectionPosition(1);
      },
      { "SetProjectionPosition(double position))", "ProjectPointsToPlane()",
        "ProjectPointsToOrthoPlane()" } },
    { "SetPlaneSource", [](Open3DRuler* w) { w->SetPlaneSource(nullptr); },
      { "SetPlaneSource(vtkPlaneSource *plane)" } },
    { "SetRendererX", [](Open3DRuler* w) { w->SetRendererX(w->RendererX); },
      { "SetRendererX(vtkRenderer *render)" } },
    { "SetRendererY", [](Open3DRuler* w) { w->SetRendererY(w->RendererY); },
      { "SetRendererY(vtkRenderer *render)" } },
    { "SetRendererZ", [](Open3DRuler* w) { w->SetRendererZ(w->RendererZ); },
      { "SetRendererZ(vtkRenderer *render)" } },
    { "SetRenderer3D", [](Open3DRuler* w) { w->SetRenderer3D(w->Renderer3D); },
      { "Set3DRender(vtkRenderer *render)" } },
    { "SetCurrentRender", [](Open3DRuler* w) { w->SetCurrentRender(w->RendererX); },
      { "SetCurrentRender(vtkRenderer *render)" } },
    { "AddHandle", [](Open3DRuler* w) { w->AddHandle(Somewhere, 0); },
      { "AddHandle(double x[3])", Label, ByIndex, ByIndex, "HighlightLine(vtkProp *prop)",
        "HighlightHandle(vtkProp *prop)", "SizeHandles()" } },
    { "RemovePointSelected", [](Open3DRuler* w) { w->RemovePointSelected(); },
      { "RemovePointSelected()", "HighlightLine(int index)" } },
    { "Clear", [](Open3DRuler* w) { w->Clear(); }, { "Clear(void)" } },
    { "SetHandlePosition", [](Open3DRuler* w) { w->SetHandlePosition(0, Somewhere); },
      { "SetHandlePosition(int handle, double xyz[3])",
        "SetHandlePosition(int handle, double x, double y, double z)" } },
    { "SetHandlePositionProjected",
      [](Open3DRuler* w)
      {
        w->ProjectToPlane = 1;
        w->SetHandlePosition(0, 1, 2, 3);
      },
      { "SetHandlePosition(int handle, double x, double y, double z)", "ProjectPointsToPlane()",
        "ProjectPointsToOrthoPlane()" } },
    { "GetHandlePosition", [](Open3DRuler* w) { w->GetHandlePosition(0, Somewhere); },
      { "GetHandlePosition(int handle, double xyz[3])", "GetHandlePosition(int handle)" } },
    { "HighlightHandleByProp", [](Open3DRuler* w) { w->HighlightHandle(nullptr); },
      { "HighlightHandle(vtkProp *prop)" } },
    { "HighlightHandleByIndex", [](Open3DRuler* w) { w->HighlightHandle(1); }, { ByIndex } },
    { "HighlightLineByProp", [](Open3DRuler* w) { w->HighlightLine(nullptr); },
      { "HighlightLine(vtkProp *prop)" } },
    { "HighlightLineByIndex", [](Open3DRuler* w) { w->HighlightLine(1); },
      { "HighlightLine(int index)" } },
    { "SetCurrentActorIndex", [](Open3DRuler* w) { w->SetCurrentActorIndex(1); },
      { "SetCurrentActorIndex(int index)", ByIndex, Label, ByIndex, ByIndex } },
    { "SetCurrentActorIndexZero", [](Open3DRuler* w) { w->SetCurrentActorIndex(0); },
      { "SetCurrentActorIndex(int index)", ByIndex, Label, "HighlightLine(int index)", ByIndex } },
    { "SetCurrentActorIndexMinusOne", [](Open3DRuler* w) { w->SetCurrentActorIndex(-1); },
      { "SetCurrentActorIndex(int index)" } },
    { "SetTextToActorPosition",
      [](Open3DRuler* w) { w->SetTextToActorPosition(static_cast<vtkProp*>(nullptr)); },
      { Label } },
    { "UpdateScaleLabel", [](Open3DRuler* w) { w->UpdateScaleLabel(); }, {} },
    { "GetStringCoordinate", [](Open3DRuler* w) { w->GetStringCoordinate(); },
      { "GetStringCoordinate()" } },
    { "IsClicked", [](Open3DRuler* w) { w->IsClicked(); }, { "IsClicked()" } },
    { "IsLine", [](Open3DRuler* w) { w->IsLine(); }, { "IsLine()" } },
    { "GetState", [](Open3DRuler* w) { w->GetState(); }, { "GetState()" } },
    { "SetState", [](Open3DRuler* w) { w->SetState(0); }, { "SetState(int state)" } },
    { "MovePoint", [](Open3DRuler* w) { w->MovePoint(Somewhere, Somewhere); },
      { "MovePoint(double *p1, double *p2)", Label, ByIndex, ByIndex } },
    { "AddObservers", [](Open3DRuler* w) { w->AddObservers(); }, { "AddObservers(void)" } },
    { "CreateDefaultProperties", [](Open3DRuler* w) { w->CreateDefaultProperties(); },
      { "CreateDefaultProperties()" } },
    { "OnLeftButtonDown", [](Open3DRuler* w) { w->OnLeftButtonDown(); },
      { "OnLeftButtonDown()", ByIndex, "HighlightLine(int index)" } },
    { "OnLeftButtonUp", [](Open3DRuler* w) { w->OnLeftButtonUp(); }, { "OnLeftButtonUp()" } },
    { "OnMiddleButtonDown", [](Open3DRuler* w) { w->OnMiddleButtonDown(); },
      { "OnMiddleButtonDown()" } },
    { "OnMiddleButtonUp", [](Open3DRuler* w) { w->OnMiddleButtonUp(); }, { "OnMiddleButtonUp()" } },
    { "OnRightButtonDown", [](Open3DRuler* w) { w->OnRightButtonDown(); },
      { "OnRightButtonDown()" } },
    { "OnRightButtonUp", [](Open3DRuler* w) { w->OnRightButtonUp(); },
      { "OnRightButtonUp()", "SizeHandles()" } },
    { "OnMouseMove", [](Open3DRuler* w) { w->OnMouseMove(); }, {} },
    { "OnMouseWheelForward", [](Open3DRuler* w) { w->OnMouseWheelForward(); },
      { "OnMouseWheelForward()", "SizeHandles()" } },
    { "OnMouseWheelBackward", [](Open3DRuler* w) { w->OnMouseWheelBackward(); },
      { "OnMouseWheelBackward()", "SizeHandles()" } },
    { "Accessors",
      [](Open3DRuler* w)
      {
        w->SetProjectToPlane(1);
        w->ProjectToPlaneOn();
        w->ProjectToPlaneOff();
        w->GetProjectToPlane();
        w->SetProjectionNormal(1);
        w->GetProjectionNormal();
        w->GetProjectionPosition();
        w->SetHandleProperty(w->GetHandleProperty());
        w->SetSelectedHandleProperty(w->GetSelectedHandleProperty());
      },
      {} },
  };
}
}

TEST_F(Ruler3DWidget, EveryOperationTracesItsSignature)
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
      signatures.push_back("zv3DRulerWidget::" + signature);
    }
    this->ExpectTraces("zv3DRulerWidget", this->Widget, signatures);
  }
}

TEST_F(Ruler3DWidget, TheTraceOfAnInsertionNamesAnotherClassByDesign)
{
  this->AddThree();
  this->Widget->DebugMode = true;
  this->Widget->InsertHandleOnLine(Somewhere);
  this->Widget->DebugMode = false;
  this->ExpectTraces("zv3DRulerWidget", this->Widget,
    { "zvLassoWidget::InsertHandleOnLine(double coord[3])",
      "zv3DRulerWidget::HighlightHandle(vtkProp *prop)",
      "zv3DRulerWidget::SetTextToActorPosition(vtkProp *prop)",
      "zv3DRulerWidget::HighlightHandle(int index)", "zv3DRulerWidget::HighlightHandle(int index)",
      "zv3DRulerWidget::SizeHandles()" });
}

// ---- Life

TEST_F(Ruler3DWidget, ReleasesAllItsPartsWhenItIsDeleted)
{
  this->AddThree();
  const std::vector<vtkWeakPointer<vtkObject>> parts = { this->PointActor(0), this->Sphere(0),
    this->SegmentActor(0), this->Segment(0), this->Widget->TextActor.Get(),
    this->Widget->TextSource.Get(), this->Widget->PointPicker.GetPointer(),
    this->Widget->LinePicker.GetPointer(), this->Widget->HandleProperty.GetPointer(),
    this->Widget->SelectedHandleProperty.GetPointer(), this->Widget->LineProperty.GetPointer(),
    this->Widget->SelectedLineProperty.GetPointer() };
  this->Widget = nullptr;
  EXPECT_THAT(parts, Each(nullptr));
}
