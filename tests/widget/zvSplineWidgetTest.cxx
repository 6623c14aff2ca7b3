#include "zvSplineWidget.h"

#include "zvCurveFixture.h"
#include "zvEvents.h"
#include "zvParametricSpline.h"

#include "vtkMapper.h"
#include "vtkParametricFunctionSource.h"
#include "vtkPropCollection.h"
#include "vtkProperty.h"

#include <gmock/gmock.h>

#include <cmath>
#include <sstream>

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using zvtest::World;

namespace
{
class SplineWidget : public zvtest::CurveTest<zvSplineWidget>
{
};
}

// ---- What it is, and how it starts

TEST_F(SplineWidget, WritesItsRevisionAfterTheParents)
{
  vtkNew<zvSplineWidget> widget;
  std::ostringstream text;
  widget->CollectRevisions(text);
  EXPECT_EQ(text.str(), "zvWidgets $Revision: 1.2 $\nzvSplineWidget $Revision: 1.2 $\n");
}

TEST_F(SplineWidget, StartsWithTheseDefaults)
{
  EXPECT_EQ(this->Curve->GetState(), zvSplineWidget::Start);
  EXPECT_EQ(this->Curve->GetProjectionNormal(), 0);
  EXPECT_EQ(this->Curve->GetProjectionPosition(), 0.0);
  EXPECT_EQ(this->Curve->GetProjectToPlane(), 0);
  EXPECT_EQ(this->Curve->GetNumberOfHandles(), 0);
  EXPECT_EQ(this->Curve->GetClosed(), 0);
  EXPECT_EQ(this->Curve->GetResolution(), 500);
  EXPECT_EQ(this->Curve->CurrentHandleIndex, -1);
  EXPECT_FALSE(this->Curve->CurveGrabbed);
  EXPECT_EQ(this->Curve->GetEnabled(), 0);
  EXPECT_FALSE(this->Curve->GetInteraction());
  EXPECT_THAT(this->Curve->Centroid, ElementsAre(0.0, 0.0, 0.0));
  EXPECT_THAT(this->Curve->LastPickPosition, ElementsAre(0.0, 0.0, 0.0));
  EXPECT_THAT(this->Curve->InitialBounds, ElementsAre(-0.5, 0.5, -0.5, 0.5, -0.5, 0.5));
  EXPECT_DOUBLE_EQ(this->Curve->InitialLength, std::sqrt(3.0));
  EXPECT_EQ(this->Curve->PlaceFactor, 1.0);
  EXPECT_EQ(this->Curve->HandlePolyData->GetNumberOfPoints(), 0);
  EXPECT_EQ(this->Curve->ParametricFunctionSource->GetUResolution(), 500);
  EXPECT_EQ(this->Curve->ParametricFunctionSource->GetGenerateTextureCoordinates(), 0);
  EXPECT_EQ(this->Curve->ParametricFunctionSource->GetScalarMode(),
    vtkParametricFunctionSource::SCALAR_NONE);
  EXPECT_EQ(this->Curve->GetParametricSpline()->GetPoints()->GetDataType(), VTK_DOUBLE);
  EXPECT_EQ(vtkMapper::GetResolveCoincidentTopology(), VTK_RESOLVE_POLYGON_OFFSET);
}

TEST_F(SplineWidget, ItsNumbersOfStatesAreFixed)
{
  EXPECT_EQ(zvSplineWidget::Start, 0);
  EXPECT_EQ(zvSplineWidget::Moving, 1);
  EXPECT_EQ(zvSplineWidget::Scaling, 2);
  EXPECT_EQ(zvSplineWidget::Spinning, 3);
  EXPECT_EQ(zvSplineWidget::Placing, 4);
  EXPECT_EQ(zvSplineWidget::Outside, 6);
}

TEST_F(SplineWidget, PicksOnlyItsOwnActors)
{
  for (vtkCellPicker* picker : { this->Curve->HandlePicker.Get(), this->Curve->LinePicker.Get() })
  {
    EXPECT_EQ(picker->GetTolerance(), 0.005);
    EXPECT_EQ(picker->GetPickFromList(), 1);
    ASSERT_EQ(picker->GetPickList()->GetNumberOfItems(), 1);
  }
  EXPECT_EQ(this->Curve->HandlePicker->GetPickList()->GetLastProp(), this->Curve->HandleActor);
  EXPECT_EQ(this->Curve->LinePicker->GetPickList()->GetLastProp(), this->Curve->LineActor);
}

TEST_F(SplineWidget, HasTheseProperties)
{
  vtkProperty* handle = this->Curve->GetHandleProperty();
  EXPECT_THAT(
    std::vector<double>(handle->GetColor(), handle->GetColor() + 3), ElementsAre(1.0, 0.0, 0.0));
  EXPECT_EQ(handle->GetPointSize(), 7.5f);
  EXPECT_EQ(handle->GetAmbient(), 0.0);

  vtkProperty* selectedHandle = this->Curve->GetSelectedHandleProperty();
  EXPECT_THAT(std::vector<double>(selectedHandle->GetColor(), selectedHandle->GetColor() + 3),
    ElementsAre(1.0, 0.0, 0.0));
  EXPECT_EQ(selectedHandle->GetAmbient(), 1.0);
  EXPECT_EQ(selectedHandle->GetDiffuse(), 0.0);

  vtkProperty* line = this->Curve->GetLineProperty();
  EXPECT_EQ(line->GetRepresentation(), VTK_WIREFRAME);
  EXPECT_THAT(
    std::vector<double>(line->GetColor(), line->GetColor() + 3), ElementsAre(0.0, 1.0, 1.0));
  EXPECT_EQ(line->GetAmbient(), 1.0);
  EXPECT_EQ(line->GetDiffuse(), 0.0);
  EXPECT_EQ(line->GetLineWidth(), 2.0f);
  EXPECT_EQ(line->GetPointSize(), 5.5f);

  vtkProperty* selectedLine = this->Curve->GetSelectedLineProperty();
  EXPECT_EQ(selectedLine->GetRepresentation(), VTK_WIREFRAME);
  EXPECT_THAT(
    std::vector<double>(selectedLine->GetAmbientColor(), selectedLine->GetAmbientColor() + 3),
    ElementsAre(0.0, 1.0, 0.0));
  EXPECT_EQ(selectedLine->GetAmbient(), 1.0);
  EXPECT_EQ(selectedLine->GetDiffuse(), 0.0);
  EXPECT_EQ(selectedLine->GetLineWidth(), 2.0f);
}

TEST_F(SplineWidget, PrintsItsFieldsAfterThoseOfTheParent)
{
  const auto text = [this]
  {
    std::ostringstream stream;
    this->Curve->PrintSelf(stream, vtkIndent(2));
    return stream.str().substr(stream.str().find("  DebugMode: Off\n"));
  };
  const auto pointer = [](const void* object)
  {
    std::ostringstream stream;
    stream << object;
    return stream.str();
  };
  EXPECT_EQ(text(),
    "  DebugMode: Off\n"
    "  Handle Property: " +
      pointer(this->Curve->GetHandleProperty()) +
      "\n"
      "  Selected Handle Property: " +
      pointer(this->Curve->GetSelectedHandleProperty()) +
      "\n"
      "  Line Property: " +
      pointer(this->Curve->GetLineProperty()) +
      "\n"
      "  Selected Line Property: " +
      pointer(this->Curve->GetSelectedLineProperty()) +
      "\n"
      "  ParametricSpline: " +
      pointer(this->Curve->GetParametricSpline()) +
      "\n"
      "  Project To Plane: Off\n"
      "  Projection Normal: 0\n"
      "  Projection Position: 0\n"
      "  Resolution: 500\n"
      "  Number Of Handles: 0\n"
      "  Closed: Off\n");

  this->Show(Square(), true);
  this->Curve->SetHandleProperty(nullptr);
  this->Curve->SetSelectedHandleProperty(nullptr);
  this->Curve->SetLineProperty(nullptr);
  this->Curve->SetSelectedLineProperty(nullptr);
  this->Curve->SetParametricSpline(nullptr);
  this->Curve->SetProjectionNormal(2);
  this->Curve->SetProjectionPosition(1.5);
  this->Curve->ProjectToPlaneOn();
  this->Curve->SetResolution(40);
  EXPECT_EQ(text(),
    "  DebugMode: Off\n"
    "  Handle Property: (none)\n"
    "  Selected Handle Property: (none)\n"
    "  Line Property: (none)\n"
    "  Selected Line Property: (none)\n"
    "  ParametricSpline: (none)\n"
    "  Project To Plane: On\n"
    "  Projection Normal: 2\n"
    "  Projection Position: 1.5\n"
    "  Resolution: 40\n"
    "  Number Of Handles: 4\n"
    "  Closed: On\n");
}

// ---- Setters

TEST_F(SplineWidget, PropertiesAreReplacedWithAReference)
{
  struct Row
  {
    void (zvSplineWidget::*Set)(vtkProperty*);
    vtkProperty* (zvSplineWidget::*Get)();
  };
  const Row rows[] = {
    { &zvSplineWidget::SetHandleProperty, &zvSplineWidget::GetHandleProperty },
    { &zvSplineWidget::SetSelectedHandleProperty, &zvSplineWidget::GetSelectedHandleProperty },
    { &zvSplineWidget::SetLineProperty, &zvSplineWidget::GetLineProperty },
    { &zvSplineWidget::SetSelectedLineProperty, &zvSplineWidget::GetSelectedLineProperty },
  };
  for (const Row& row : rows)
  {
    vtkNew<vtkProperty> property;
    vtkMTimeType before = this->Curve->GetMTime();
    (this->Curve->*row.Set)(property);
    EXPECT_EQ((this->Curve->*row.Get)(), property);
    EXPECT_EQ(property->GetReferenceCount(), 2);
    EXPECT_GT(this->Curve->GetMTime(), before);
    before = this->Curve->GetMTime();
    (this->Curve->*row.Set)(property);
    EXPECT_EQ(this->Curve->GetMTime(), before);
    (this->Curve->*row.Set)(nullptr);
    EXPECT_EQ((this->Curve->*row.Get)(), nullptr);
    EXPECT_EQ(property->GetReferenceCount(), 1);
  }
}

// ---- Enabling

TEST_F(SplineWidget, EnablingShowsAndAttachesItAndTellsBeforeItRenders)
{
  this->Curve->InitializeHandles(PointsOf(Square()));
  zvtest::EventRecorder recorder;
  this->RecordWithRenders(recorder);
  this->Curve->SetEnabled(1);
  EXPECT_EQ(this->Curve->GetEnabled(), 1);
  EXPECT_EQ(recorder.Names(), (Names{ "EnableEvent", "RenderEvent" }));
  EXPECT_FALSE(recorder.Events().front().HasData);
  EXPECT_EQ(this->Curve->GetCurrentRenderer(), this->Scene.Renderer());
  EXPECT_TRUE(this->IsShown(this->Curve->LineActor));
  EXPECT_TRUE(this->IsShown(this->Curve->HandleActor));
  EXPECT_EQ(this->Curve->LineActor->GetProperty(), this->Curve->GetLineProperty());
  EXPECT_EQ(this->Curve->HandleActor->GetProperty(), this->Curve->GetHandleProperty());
  for (unsigned long event : zvEvents::Handle)
  {
    EXPECT_TRUE(this->Scene.Interactor()->HasObserver(event, this->Curve->EventCallbackCommand));
  }
  recorder.Clear();
  this->Curve->SetEnabled(1);
  EXPECT_THAT(recorder.Names(), IsEmpty());
}

TEST_F(SplineWidget, DisablingTakesItOutAndTellsBeforeItRenders)
{
  this->Show(Square());
  zvtest::EventRecorder recorder;
  this->RecordWithRenders(recorder);
  this->Curve->SetEnabled(0);
  EXPECT_EQ(this->Curve->GetEnabled(), 0);
  EXPECT_EQ(recorder.Names(), (Names{ "DisableEvent", "RenderEvent" }));
  EXPECT_EQ(this->Curve->GetCurrentRenderer(), nullptr);
  EXPECT_FALSE(this->IsShown(this->Curve->LineActor));
  EXPECT_FALSE(this->IsShown(this->Curve->HandleActor));
  for (unsigned long event : zvEvents::Handle)
  {
    EXPECT_FALSE(this->Scene.Interactor()->HasObserver(event, this->Curve->EventCallbackCommand));
  }
  recorder.Clear();
  this->Curve->SetEnabled(0);
  EXPECT_THAT(recorder.Names(), IsEmpty());
}

TEST_F(SplineWidget, InteractionOnAttachesOnceMoreAndOffDetachesAllByDesign)
{
  this->Show(Square());
  zvtest::EventRecorder recorder;
  this->RecordWithRenders(recorder);
  EXPECT_FALSE(this->Curve->GetInteraction()); // enabling does not touch it
  this->Curve->SetInteraction(true);
  EXPECT_THAT(recorder.Names(), IsEmpty());
  this->Pointer.WheelForward({ { 100, 100 } });
  EXPECT_EQ(recorder.Count(vtkCommand::RenderEvent), 2);
  this->Curve->SetInteraction(false);
  recorder.Clear();
  this->Pointer.WheelForward({ { 100, 100 } });
  EXPECT_THAT(recorder.Names(), IsEmpty());
  EXPECT_EQ(this->Curve->GetEnabled(), 1);
}

TEST_F(SplineWidget, HasNoTracesOfItsOwn)
{
  this->Curve->DebugMode = true;
  this->Show(Square());
  this->Curve->AddObservers();
  this->Pointer.Drag(zvtest::Left, this->Pointer.At({ { 6, 6, 0 } }), { { 200, 200 } });
  this->Pointer.Drag(zvtest::Middle, this->Pointer.At({ { 6, -6, 0 } }), { { 200, 200 } });
  this->Pointer.WheelForward({ { 100, 100 } });
  this->Curve->EraseHandle(1);
  this->Curve->SetEnabled(0);
  EXPECT_EQ(this->TakeOutput(), "");
}

// ---- Placing and projecting

TEST_F(SplineWidget, PlacingWithoutBoundsGoesThroughTheParent)
{
  this->Curve->SetNumberOfHandles(2);
  this->Curve->SetProp3D(this->Curve->HandleActor);
  this->Curve->SetHandlePosition(0, 1.0, 1.0, 1.0);
  this->Curve->SetHandlePosition(1, 3.0, 5.0, 7.0);
  this->Curve->SetHandlePosition(0, 3.0, 5.0, 1.0);
  this->Curve->PlaceWidget();
  this->ExpectHandles({ { { 3, 5, 1 } }, { { 3, 5, 7 } } });
  EXPECT_THAT(this->Curve->InitialBounds, ElementsAre(3, 3, 5, 5, 1, 7));
}
