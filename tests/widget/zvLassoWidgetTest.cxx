#include "zvLassoFixture.h"

#include "zvEvents.h"
#include "zvParametricSpline.h"

#include "vtkMapper.h"
#include "vtkParametricFunctionSource.h"
#include "vtkPlaneSource.h"
#include "vtkPropCollection.h"
#include "vtkProperty.h"
#include "vtkWeakPointer.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <cmath>
#include <functional>
#include <sstream>

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using zvtest::World;

namespace
{
class LassoWidget : public zvtest::LassoTest
{
};

std::vector<double> ColorOf(vtkProperty* property)
{
  return std::vector<double>(property->GetColor(), property->GetColor() + 3);
}
}

// ---- What it is, and how it starts

TEST_F(LassoWidget, WritesOneRevision)
{
  std::ostringstream text;
  this->Curve->CollectRevisions(text);
  EXPECT_EQ(text.str(), "zvLassoWidget $Revision: 1.2 $\n");
}

TEST_F(LassoWidget, StartsWithTheseDefaults)
{
  EXPECT_EQ(this->Curve->GetState(), zvLassoWidget::Start);
  EXPECT_EQ(this->Curve->GetProjectionNormal(), 0);
  EXPECT_EQ(this->Curve->GetProjectionPosition(), 0.0);
  EXPECT_EQ(this->Curve->GetProjectToPlane(), 0);
  EXPECT_EQ(this->Curve->GetNumberOfHandles(), 0);
  EXPECT_THAT(this->Curve->Handle, IsEmpty());
  EXPECT_THAT(this->Curve->HandleGeometry, IsEmpty());
  EXPECT_EQ(this->Curve->GetClosed(), 0);
  EXPECT_EQ(this->Curve->GetResolution(), 500);
  EXPECT_EQ(this->Curve->CurrentHandle, nullptr);
  EXPECT_EQ(this->Curve->CurrentHandleIndex, -1);
  EXPECT_FALSE(this->Curve->CurveGrabbed);
  EXPECT_FALSE(this->Curve->DebugMode);
  EXPECT_EQ(this->Curve->GetEnabled(), 0);
  EXPECT_THAT(this->Curve->Centroid, ElementsAre(0.0, 0.0, 0.0));
  EXPECT_THAT(this->Curve->LastPickPosition, ElementsAre(0.0, 0.0, 0.0));
  EXPECT_THAT(this->Curve->InitialBounds, ElementsAre(-0.5, 0.5, -0.5, 0.5, -0.5, 0.5));
  EXPECT_DOUBLE_EQ(this->Curve->InitialLength, std::sqrt(3.0));
  EXPECT_EQ(this->Curve->PlaceFactor, 1.0);
  EXPECT_EQ(this->Curve->ParametricFunctionSource->GetUResolution(), 500);
  EXPECT_EQ(this->Curve->ParametricFunctionSource->GetGenerateTextureCoordinates(), 0);
  EXPECT_EQ(this->Curve->ParametricFunctionSource->GetScalarMode(),
    vtkParametricFunctionSource::SCALAR_NONE);
  EXPECT_EQ(this->Curve->GetParametricSpline()->GetPoints()->GetDataType(), VTK_DOUBLE);
  EXPECT_EQ(vtkMapper::GetResolveCoincidentTopology(), VTK_RESOLVE_POLYGON_OFFSET);
}

TEST_F(LassoWidget, ItsNumbersOfStatesAreFixed)
{
  EXPECT_EQ(zvLassoWidget::Start, 0);
  EXPECT_EQ(zvLassoWidget::Moving, 1);
  EXPECT_EQ(zvLassoWidget::Scaling, 2);
  EXPECT_EQ(zvLassoWidget::Spinning, 3);
  EXPECT_EQ(zvLassoWidget::Placing, 4);
  EXPECT_EQ(zvLassoWidget::Outside, 6);
  EXPECT_EQ(zvLassoWidget::Locked, 7);
}

TEST_F(LassoWidget, PicksOnlyItsLineAndEachOfItsHandles)
{
  this->Curve->InitializeHandles(PointsOf(Square()));
  for (vtkCellPicker* picker : { this->Curve->HandlePicker.Get(), this->Curve->LinePicker.Get() })
  {
    EXPECT_EQ(picker->GetTolerance(), 0.005);
    EXPECT_EQ(picker->GetPickFromList(), 1);
  }
  ASSERT_EQ(this->Curve->LinePicker->GetPickList()->GetNumberOfItems(), 1);
  EXPECT_EQ(this->Curve->LinePicker->GetPickList()->GetLastProp(), this->Curve->LineActor);
  vtkPropCollection* handles = this->Curve->HandlePicker->GetPickList();
  ASSERT_EQ(handles->GetNumberOfItems(), 4);
  for (int i = 0; i < 4; ++i)
  {
    EXPECT_EQ(handles->GetItemAsObject(i), this->Curve->Handle[i]);
  }
}

TEST_F(LassoWidget, HasTheseProperties)
{
  vtkProperty* handle = this->Curve->GetHandleProperty();
  EXPECT_THAT(ColorOf(handle), ElementsAre(1.0, 0.0, 0.0));
  EXPECT_EQ(handle->GetPointSize(), 1.0f);
  EXPECT_EQ(handle->GetAmbient(), 0.0);
  EXPECT_EQ(handle->GetOpacity(), 1.0);

  vtkProperty* selectedHandle = this->Curve->GetSelectedHandleProperty();
  EXPECT_THAT(ColorOf(selectedHandle), ElementsAre(1.0, 0.0, 0.0));
  EXPECT_EQ(selectedHandle->GetAmbient(), 1.0);

  vtkProperty* closedHandle = this->Curve->GetClosedHandleProperty();
  EXPECT_THAT(ColorOf(closedHandle), ElementsAre(1.0, 1.0, 1.0));
  EXPECT_EQ(closedHandle->GetOpacity(), 0.01);

  vtkProperty* line = this->Curve->GetLineProperty();
  EXPECT_EQ(line->GetRepresentation(), VTK_WIREFRAME);
  EXPECT_THAT(ColorOf(line), ElementsAre(0.0, 1.0, 1.0));
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

TEST_F(LassoWidget, PrintsItsFieldsAfterThoseOfTheParent)
{
  const auto text = [this]
  {
    std::ostringstream stream;
    this->Curve->PrintSelf(stream, vtkIndent(2));
    return stream.str().substr(stream.str().find("  Handle Property: "));
  };
  const auto pointer = [](const void* object)
  {
    std::ostringstream stream;
    stream << object;
    return stream.str() + "\n";
  };
  EXPECT_EQ(text(),
    "  Handle Property: " + pointer(this->Curve->GetHandleProperty()) +
      "  Selected Handle Property: " + pointer(this->Curve->GetSelectedHandleProperty()) +
      "  Closeed Handle Property: " + pointer(this->Curve->GetClosedHandleProperty()) +
      "  Line Property: " + pointer(this->Curve->GetLineProperty()) +
      "  Selected Line Property: " + pointer(this->Curve->GetSelectedLineProperty()) +
      "  ParametricSpline: " + pointer(this->Curve->GetParametricSpline()) +
      "  Project To Plane: Off\n"
      "  Projection Normal: 0\n"
      "  Projection Position: 0\n"
      "  Resolution: 500\n"
      "  Number Of Handles: 0\n"
      "  Closed: Off\n");

  this->Show(Square(), true);
  this->Curve->SetHandleProperty(nullptr);
  this->Curve->SetSelectedHandleProperty(nullptr);
  this->Curve->SetClosedHandleProperty(nullptr);
  this->Curve->SetLineProperty(nullptr);
  this->Curve->SetSelectedLineProperty(nullptr);
  this->Curve->SetParametricSpline(nullptr);
  this->Curve->SetProjectionNormal(2);
  this->Curve->SetProjectionPosition(1.5);
  this->Curve->ProjectToPlaneOn();
  this->Curve->SetResolution(40);
  EXPECT_EQ(text(),
    "  Handle Property: (none)\n"
    "  Selected Handle Property: (none)\n"
    "  Closeed Handle Property: (none)\n"
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

TEST_F(LassoWidget, PropertiesAreReplacedWithAReference)
{
  struct Row
  {
    void (zvLassoWidget::*Set)(vtkProperty*);
    vtkProperty* (zvLassoWidget::*Get)();
  };
  const Row rows[] = {
    { &zvLassoWidget::SetHandleProperty, &zvLassoWidget::GetHandleProperty },
    { &zvLassoWidget::SetSelectedHandleProperty, &zvLassoWidget::GetSelectedHandleProperty },
    { &zvLassoWidget::SetClosedHandleProperty, &zvLassoWidget::GetClosedHandleProperty },
    { &zvLassoWidget::SetLineProperty, &zvLassoWidget::GetLineProperty },
    { &zvLassoWidget::SetSelectedLineProperty, &zvLassoWidget::GetSelectedLineProperty },
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

TEST_F(LassoWidget, DefaultPropertiesReplaceOnlyWhatIsMissing)
{
  vtkProperty* line = this->Curve->GetLineProperty();
  this->Curve->SetHandleProperty(nullptr);
  this->Curve->SetClosedHandleProperty(nullptr);
  this->Curve->CreateDefaultProperties();
  EXPECT_EQ(this->Curve->GetLineProperty(), line);
  EXPECT_THAT(ColorOf(this->Curve->GetHandleProperty()), ElementsAre(1.0, 0.0, 0.0));
  EXPECT_EQ(this->Curve->GetClosedHandleProperty()->GetOpacity(), 0.01);
}

// ---- Enabling

TEST_F(LassoWidget, EnablingShowsAndAttachesItAndTellsBeforeItRenders)
{
  this->Curve->InitializeHandles(PointsOf(Square()));
  this->Curve->SetHandleVisibility(0);
  zvtest::EventRecorder recorder;
  this->RecordWithRenders(recorder);
  this->Curve->SetEnabled(1);
  EXPECT_EQ(this->Curve->GetEnabled(), 1);
  EXPECT_EQ(recorder.Names(), (Names{ "EnableEvent", "RenderEvent" }));
  EXPECT_FALSE(recorder.Events().front().HasData);
  EXPECT_EQ(this->Curve->GetCurrentRenderer(), this->Scene.Renderer());
  EXPECT_TRUE(this->IsShown(this->Curve->LineActor));
  EXPECT_EQ(this->Curve->LineActor->GetProperty(), this->Curve->GetLineProperty());
  for (vtkActor* handle : this->Curve->Handle)
  {
    EXPECT_TRUE(this->IsShown(handle));
  }
  EXPECT_TRUE(this->AllHandlesHave(this->Curve->GetHandleProperty()));
  for (unsigned long event : zvEvents::Handle)
  {
    EXPECT_TRUE(this->Scene.Interactor()->HasObserver(event, this->Curve->EventCallbackCommand));
  }
  recorder.Clear();
  this->Curve->SetEnabled(1);
  EXPECT_THAT(recorder.Names(), IsEmpty());
}

TEST_F(LassoWidget, DisablingTakesItOutAndTellsBeforeItRenders)
{
  this->Show(Square());
  this->Curve->HighlightHandle(this->Curve->Handle[1]);
  zvtest::EventRecorder recorder;
  this->RecordWithRenders(recorder);
  this->Curve->SetEnabled(0);
  EXPECT_EQ(this->Curve->GetEnabled(), 0);
  EXPECT_EQ(recorder.Names(), (Names{ "DisableEvent", "RenderEvent" }));
  EXPECT_EQ(this->Curve->GetCurrentRenderer(), nullptr);
  EXPECT_EQ(this->Curve->CurrentHandle, nullptr);
  EXPECT_FALSE(this->IsShown(this->Curve->LineActor));
  for (vtkActor* handle : this->Curve->Handle)
  {
    EXPECT_FALSE(this->IsShown(handle));
  }
  for (unsigned long event : zvEvents::Handle)
  {
    EXPECT_FALSE(this->Scene.Interactor()->HasObserver(event, this->Curve->EventCallbackCommand));
  }
  recorder.Clear();
  this->Curve->SetEnabled(0);
  EXPECT_THAT(recorder.Names(), IsEmpty());
}

// ---- Handles are spheres

TEST_F(LassoWidget, EachHandleIsASphereOfItsOwn)
{
  this->Show(Square());
  ASSERT_EQ(this->Curve->HandleGeometry.size(), 4u);
  for (int i = 0; i < 4; ++i)
  {
    vtkSphereSource* sphere = this->Curve->HandleGeometry[i];
    EXPECT_EQ(sphere->GetThetaResolution(), 16);
    EXPECT_EQ(sphere->GetPhiResolution(), 8);
    EXPECT_EQ(this->Curve->GetHandlePosition(i), sphere->GetCenter());
    World center;
    this->Curve->Handle[i]->GetCenter(); // of what was last made, without a render
    sphere->GetOutput()->GetCenter(center.data());
    EXPECT_NEAR(center[0], Square()[i][0], 1e-3);
    EXPECT_NEAR(center[1], Square()[i][1], 1e-3);
  }
}

TEST_F(LassoWidget, AChangeOfTheNumberSpreadsAllHandlesAnewAndRenders)
{
  this->Show(Square());
  const std::vector<vtkWeakPointer<vtkActor>> former(
    this->Curve->Handle.begin(), this->Curve->Handle.end());
  const int props = this->Scene.Renderer()->GetViewProps()->GetNumberOfItems();
  this->Curve->SetHandleVisibility(0);
  zvtest::EventRecorder recorder;
  this->RecordWithRenders(recorder);
  this->Curve->SetNumberOfHandles(4);
  EXPECT_THAT(recorder.Names(), IsEmpty());
  this->Curve->SetNumberOfHandles(3);
  EXPECT_EQ(recorder.Names(), (Names{ "RenderEvent" }));
  EXPECT_EQ(std::count(former.begin(), former.end(), nullptr), 1);
  EXPECT_EQ(this->Scene.Renderer()->GetViewProps()->GetNumberOfItems(), props - 1);
  EXPECT_TRUE(this->AllHandlesHave(this->Curve->GetHandleProperty()));
  EXPECT_EQ(this->Curve->HandlePicker->GetPickList()->GetNumberOfItems(), 3);
  // Spread along the curve as it was.
  EXPECT_EQ(this->HandleAt(0), Square()[0]);
  for (int axis = 0; axis < 3; ++axis)
  {
    EXPECT_NEAR(this->HandleAt(2)[axis], Square()[3][axis], 1e-9);
  }
  this->Curve->SetNumberOfHandles(1);
  EXPECT_EQ(this->HandleAt(0), Square()[0]);
  this->Curve->SetNumberOfHandles(-2);
  EXPECT_EQ(this->Curve->GetNumberOfHandles(), 0);
  EXPECT_EQ(this->Scene.Renderer()->GetViewProps()->GetNumberOfItems(), props - 4);
}

TEST_F(LassoWidget, AddingInsertingAndErasingLeaveTheOtherHandlesAsTheyAre)
{
  this->Draw(Square());
  std::vector<vtkMTimeType> made;
  std::vector<vtkActor*> actors;
  const auto remember = [&]
  {
    made.clear();
    actors.clear();
    for (std::size_t i = 0; i < this->Curve->Handle.size(); ++i)
    {
      made.push_back(this->Curve->HandleGeometry[i]->GetOutput()->GetMTime());
      actors.push_back(this->Curve->Handle[i]);
    }
  };
  const auto expectKept = [&](std::size_t before, std::size_t now)
  {
    EXPECT_EQ(this->Curve->Handle[now].Get(), actors[before]) << before;
    EXPECT_EQ(this->Curve->HandleGeometry[now]->GetOutput()->GetMTime(), made[before]) << before;
  };
  const auto expectAllShownAndPickedInOrder = [&]
  {
    vtkPropCollection* list = this->Curve->HandlePicker->GetPickList();
    ASSERT_EQ(list->GetNumberOfItems(), this->Curve->GetNumberOfHandles());
    for (int i = 0; i < this->Curve->GetNumberOfHandles(); ++i)
    {
      EXPECT_EQ(list->GetItemAsObject(i), this->Curve->Handle[i]);
      EXPECT_TRUE(this->IsShown(this->Curve->Handle[i]));
    }
    EXPECT_EQ(this->Scene.Renderer()->GetViewProps()->GetNumberOfItems(),
      this->Curve->GetNumberOfHandles() + 1); // the line
  };

  remember();
  World added{ { 0, 0, 0 } };
  this->Curve->AddHandle(added.data());
  ASSERT_EQ(this->Curve->GetNumberOfHandles(), 5);
  for (std::size_t i = 0; i < 4; ++i)
  {
    expectKept(i, i);
  }
  expectAllShownAndPickedInOrder();

  remember();
  this->Curve->EraseHandle(1);
  ASSERT_EQ(this->Curve->GetNumberOfHandles(), 4);
  expectKept(0, 0);
  expectKept(2, 1);
  expectKept(3, 2);
  expectKept(4, 3);
  EXPECT_FALSE(this->IsShown(actors[1]));
  expectAllShownAndPickedInOrder();

  this->Scene.Render();
  remember();
  this->Pointer.Press(zvtest::Left, this->Pointer.At(this->OnLine(0.5)));
  ASSERT_EQ(this->Curve->GetNumberOfHandles(), 5);
  ASSERT_EQ(this->Curve->CurrentHandleIndex, 2);
  expectKept(0, 0);
  expectKept(1, 1);
  expectKept(2, 3);
  expectKept(3, 4);
  expectAllShownAndPickedInOrder();
}

TEST_F(LassoWidget, NoFrameShowsAHandleElsewhereWhileOneIsAdded)
{
  this->Draw(Square());
  int frames = 0;
  zvtest::EventRecorder recorder;
  recorder.Watch(this->Scene.Interactor(), { vtkCommand::RenderEvent },
    [this, &frames](const zvtest::RecordedEvent&)
    {
      ++frames;
      this->ExpectHandles({ Square()[0], Square()[1], Square()[2], Square()[3], { { 2, 1, 0 } } });
    });
  World added{ { 2, 1, 0 } };
  this->Curve->AddHandle(added.data());
  EXPECT_EQ(frames, 2);
}

TEST_F(LassoWidget, WithoutAnInteractorHandlesAreOfHalfTheSizeAndInNoView)
{
  vtkNew<zvtest::OpenLasso> widget;
  widget->SetNumberOfHandles(2);
  EXPECT_DOUBLE_EQ(
    widget->HandleGeometry[0]->GetRadius(), 0.5 * widget->HandleSize * widget->InitialLength);
  EXPECT_EQ(widget->GetCurrentRenderer(), nullptr);
  widget->SizeHandles();
  EXPECT_DOUBLE_EQ(
    widget->HandleGeometry[1]->GetRadius(), 0.7 * widget->HandleSize * widget->InitialLength);
}

TEST_F(LassoWidget, WithoutASplineNewHandlesStartAtTheOrigin)
{
  this->Curve->SetParametricSpline(nullptr);
  this->Curve->SetNumberOfHandles(2);
  this->ExpectHandles({ { { 0, 0, 0 } }, { { 0, 0, 0 } } });
}

TEST_F(LassoWidget, InitializeTakesTheHandlesOutOfTheViewAndThePicker)
{
  this->Show(Square());
  std::vector<vtkSmartPointer<vtkActor>> handles = this->Curve->Handle;
  this->Curve->Initialize();
  EXPECT_EQ(this->Curve->GetNumberOfHandles(), 0);
  EXPECT_EQ(this->Curve->HandlePicker->GetPickList()->GetNumberOfItems(), 0);
  for (vtkActor* handle : handles)
  {
    EXPECT_FALSE(this->IsShown(handle));
  }
  EXPECT_THAT(this->Curve->Handle, IsEmpty());
  EXPECT_THAT(this->Curve->HandleGeometry, IsEmpty());
  EXPECT_TRUE(this->IsShown(this->Curve->LineActor));
  this->Curve->Initialize();
  this->Curve->InitializeHandles(PointsOf(Square()));
  this->ExpectHandles(Square());
}

TEST_F(LassoWidget, ErasingLeavesNoStaleHandle)
{
  this->Show(Square());
  const int props = this->Scene.Renderer()->GetViewProps()->GetNumberOfItems();
  this->Curve->EraseHandle(1);
  this->ExpectHandles({ { { -6, -6, 0 } }, { { 6, 6, 0 } }, { { -6, 6, 0 } } });
  EXPECT_EQ(this->Curve->GetNumberOfHandles(), 3);
  EXPECT_EQ(this->Curve->Handle.size(), 3u);
  EXPECT_EQ(this->Curve->HandlePicker->GetPickList()->GetNumberOfItems(), 3);
  EXPECT_EQ(this->Scene.Renderer()->GetViewProps()->GetNumberOfItems(), props - 1);
  const zvtest::Picture picture = this->Scene.RenderAndLook();
  EXPECT_FALSE(picture.HasNear(Red, this->Scene.At({ { 6, -6, 0 } }), 5, 80));
}

TEST_F(LassoWidget, HandleVisibilityChangesPropertiesOnly)
{
  this->Show(Square());
  zvtest::EventRecorder recorder;
  this->RecordWithRenders(recorder);
  struct Row
  {
    int Visibility;
    vtkProperty* Property;
  };
  for (const Row& row :
    { Row{ 0, this->Curve->GetClosedHandleProperty() }, Row{ 1, this->Curve->GetHandleProperty() },
      Row{ 2, this->Curve->GetClosedHandleProperty() } })
  {
    this->Curve->SetHandleVisibility(row.Visibility);
    EXPECT_TRUE(this->AllHandlesHave(row.Property)) << row.Visibility;
    EXPECT_EQ(this->Curve->Handle[0]->GetVisibility(), 1);
  }
  EXPECT_THAT(recorder.Names(), IsEmpty());
}

TEST_F(LassoWidget, HighlightingAHandleSelectsItAndTakesItsDepth)
{
  this->Show({ { { -6, -6, 3 } }, { { 6, -6, 3 } }, { { 6, 6, 3 } } });
  const zvtest::Display at = this->Pointer.At({ { 6, 6, 3 } });
  this->Scene.Interactor()->SetEventPosition(at[0], at[1]);
  ASSERT_EQ(this->Curve->IsClicked(), 1);
  EXPECT_EQ(this->Curve->HighlightHandle(this->Curve->Handle[2]), 2);
  EXPECT_EQ(this->Curve->CurrentHandle.Get(), this->Curve->Handle[2].Get());
  EXPECT_EQ(this->Curve->ValidPick, 1);
  EXPECT_NEAR(this->Curve->LastPickPosition[0], 6.0, this->PixelSize());
  EXPECT_NEAR(this->Curve->LastPickPosition[2], 3.0, 2.0 * this->RadiusOf(2));
  EXPECT_EQ(this->Curve->Handle[2]->GetProperty(), this->Curve->GetSelectedHandleProperty());

  EXPECT_EQ(this->Curve->HighlightHandle(this->Curve->Handle[0]), 0);
  EXPECT_EQ(this->Curve->Handle[2]->GetProperty(), this->Curve->GetHandleProperty());
  EXPECT_EQ(this->Curve->Handle[0]->GetProperty(), this->Curve->GetSelectedHandleProperty());

  EXPECT_EQ(this->Curve->HighlightHandle(nullptr), -1);
  EXPECT_EQ(this->Curve->CurrentHandle, nullptr);
  EXPECT_EQ(this->Curve->Handle[0]->GetProperty(), this->Curve->GetHandleProperty());
}

TEST_F(LassoWidget, HighlightingAForeignActorKeepsItByDesign)
{
  this->Show(Square());
  vtkNew<vtkActor> foreign;
  EXPECT_EQ(this->Curve->HighlightHandle(foreign), -1);
  EXPECT_EQ(this->Curve->CurrentHandle.Get(), foreign.Get());
  EXPECT_NE(foreign->GetProperty(), this->Curve->GetSelectedHandleProperty());
  EXPECT_EQ(this->Curve->ValidPick, 0);
  EXPECT_EQ(this->Curve->HighlightHandle(nullptr), -1);
  EXPECT_EQ(foreign->GetProperty(), this->Curve->GetHandleProperty());
}

TEST_F(LassoWidget, AHighlightedActorThatDiesIsForgotten)
{
  this->Show(Square());
  {
    vtkNew<vtkActor> foreign;
    this->Curve->HighlightHandle(foreign);
  }
  EXPECT_EQ(this->Curve->CurrentHandle, nullptr);
  this->Curve->HighlightHandle(this->Curve->Handle[1]);
  this->Curve->EraseHandle(1);
  EXPECT_EQ(this->Curve->CurrentHandle, nullptr);
  this->Curve->SetState(zvLassoWidget::Moving);
  this->Pointer.MoveTo({ { 210, 210 } });
}

// ---- Traces

TEST_F(LassoWidget, EachOperationWritesItsTraceFirst)
{
  this->Show(Square());
  this->Scene.Render();
  double p[3] = { 1, 2, 3 };
  double q[3] = { 1, 2, 4 };
  double bounds[6] = { -1, 1, -1, 1, -1, 1 };
  vtkNew<vtkPolyData> copy;
  std::ostringstream print;
  zvtest::OpenLasso* w = this->Curve;
  struct Row
  {
    const char* Signature;
    std::function<void()> Call;
  };
  const Row rows[] = {
    { "zvLassoWidget::SizeHandles()", [&] { w->SizeHandles(); } },
    { "zvLassoWidget::PrintSelf(ostream& os, vtkIndent indent)",
      [&] { w->PrintSelf(print, vtkIndent()); } },
    { "zvLassoWidget::SetParametricSpline(zvParametricSpline* spline)",
      [&] { w->SetParametricSpline(w->GetParametricSpline()); } },
    { "zvLassoWidget::GetHandlePosition(int handle)", [&] { w->GetHandlePosition(0); } },
    { "zvLassoWidget::GetHandlePosition(int handle, double xyz[3])",
      [&] { w->GetHandlePosition(0, p); } },
    { "zvLassoWidget::AddObservers(void)", [&] { w->AddObservers(); } },
    { "zvLassoWidget::ProjectPointsToObliquePlane()", [&] { w->ProjectPointsToObliquePlane(); } },
    { "zvLassoWidget::ProjectPointsToOrthoPlane()", [&] { w->ProjectPointsToOrthoPlane(); } },
    { "zvLassoWidget::ProjectPointsToPlane()", [&] { w->ProjectPointsToPlane(); } },
    { "zvLassoWidget::PlaceWidget(double bds[6])", [&] { w->PlaceWidget(bounds); } },
    { "zvLassoWidget::SetEnabled(int enabling)", [&] { w->SetEnabled(1); } },
    { "zvLassoWidget::SetHandlePosition(int handle, double x, double y, double z)",
      [&] { w->SetHandlePosition(0, 1.0, 2.0, 3.0); } },
    { "zvLassoWidget::SetHandlePosition(int handle, double xyz[3])",
      [&] { w->SetHandlePosition(0, p); } },
    { "zvLassoWidget::SetClosed(int closed)", [&] { w->SetClosed(1); } },
    { "zvLassoWidget::HighlightHandle(vtkProp *prop)", [&] { w->HighlightHandle(nullptr); } },
    { "zvLassoWidget::HighlightLine(int highlight)", [&] { w->HighlightLine(0); } },
    { "zvLassoWidget::OnLeftButtonDown()", [&] { w->OnLeftButtonDown(); } },
    { "zvLassoWidget::OnLeftButtonUp()", [&] { w->OnLeftButtonUp(); } },
    { "zvLassoWidget::OnMiddleButtonDown()", [&] { w->OnMiddleButtonDown(); } },
    { "zvLassoWidget::OnMiddleButtonUp()", [&] { w->OnMiddleButtonUp(); } },
    { "zvLassoWidget::OnRightButtonDown()", [&] { w->OnRightButtonDown(); } },
    { "zvLassoWidget::OnRightButtonUp()", [&] { w->OnRightButtonUp(); } },
    { "zvLassoWidget::OnMouseWheelForward()", [&] { w->OnMouseWheelForward(); } },
    { "zvLassoWidget::OnMouseWheelBackward()", [&] { w->OnMouseWheelBackward(); } },
    { "zvLassoWidget::MovePoint(double *p1, double *p2)",
      [&]
      {
        w->CurrentHandleIndex = 0;
        w->MovePoint(p, q);
      } },
    { "zvLassoWidget::Translate(double *p1, double *p2)", [&] { w->Translate(p, q); } },
    { "zvLassoWidget::Scale(double *p1, double *p2, int vtkNotUsed(X), int Y)",
      [&] { w->Scale(p, q, 0, 0); } },
    { "zvLassoWidget::Spin(double *p1, double *p2, double *vpn)", [&] { w->Spin(p, q, p); } },
    { "zvLassoWidget::CreateDefaultProperties()", [&] { w->CreateDefaultProperties(); } },
    { "zvLassoWidget::SetProjectionPosition(double position)",
      [&] { w->SetProjectionPosition(1.0); } },
    { "zvLassoWidget::SetPlaneSource(vtkPlaneSource* plane)", [&] { w->SetPlaneSource(nullptr); } },
    { "zvLassoWidget::SetResolution(int resolution)", [&] { w->SetResolution(100); } },
    { "zvLassoWidget::GetPolyData(vtkPolyData *pd)", [&] { w->GetPolyData(copy); } },
    { "zvLassoWidget::GetSummedLength()", [&] { w->GetSummedLength(); } },
    { "zvLassoWidget::CalculateCentroid()", [&] { w->CalculateCentroid(); } },
    { "zvLassoWidget::EraseHandle(const int& index)", [&] { w->EraseHandle(99); } },
    { "zvLassoWidget::InsertHandleOnLine(double* pos)", [&] { w->InsertHandleOnLine(p); } },
    { "zvLassoWidget::IsClosed()", [&] { w->IsClosed(); } },
    { "zvLassoWidget::GetState()", [&] { w->GetState(); } },
    { "zvLassoWidget::SetState(int state)", [&] { w->SetState(0); } },
    { "zvLassoWidget::IsClicked()", [&] { w->IsClicked(); } },
    { "zvLassoWidget::SetHandleVisibility(int visibility)", [&] { w->SetHandleVisibility(1); } },
    { "zvLassoWidget::InitializeHandles(vtkPoints* points)",
      [&] { w->InitializeHandles(PointsOf({})); } },
    { "zvLassoWidget::SetNumberOfHandles(int npts)", [&] { w->SetNumberOfHandles(1); } },
    { "zvLassoWidget::Initialize(void)", [&] { w->Initialize(); } },
    { "zvLassoWidget::AddHandle(double x[3])", [&] { w->AddHandle(p); } },
    { "zvLassoWidget::~zvLassoWidget()", [this] { this->Curve = nullptr; } },
  };
  for (const Row& row : rows)
  {
    this->Scene.Interactor()->SetEventPosition(10, 10); // beside all
    w->DebugMode = true;
    row.Call();
    if (this->Curve)
    {
      w->DebugMode = false;
    }
    const std::string output = this->TakeOutput();
    const std::string first = output.substr(0, output.find("\n\n") + 2);
    EXPECT_TRUE(zvtest::IsTrace(first, "zvLassoWidget", w, row.Signature)) << output;
    // The only complaint: there is no plane to project to.
    this->TakeMessages();
  }
}

TEST_F(LassoWidget, AskingForAPositionIsOneOperation)
{
  this->Show(Square());
  double position[3];
  this->Curve->DebugMode = true;
  this->Curve->GetHandlePosition(2, position);
  this->ExpectTrace(
    "zvLassoWidget", this->Curve, "zvLassoWidget::GetHandlePosition(int handle, double xyz[3])");
  this->Curve->GetHandlePosition(2);
  this->ExpectTrace("zvLassoWidget", this->Curve, "zvLassoWidget::GetHandlePosition(int handle)");
  this->Curve->DebugMode = false;
}

TEST_F(LassoWidget, MovesAccessorsAndRebuildsWriteNoTrace)
{
  this->Show(Square());
  this->Curve->SetState(zvLassoWidget::Placing);
  this->Curve->DebugMode = true;
  this->Pointer.MoveTo({ { 30, 30 } });
  this->Curve->BuildRepresentation();
  this->Curve->GetClosed();
  this->Curve->GetNumberOfHandles();
  this->Curve->GetResolution();
  this->Curve->SetProjectionNormal(2);
  this->Curve->ProjectToPlaneOff();
  this->Curve->SetHandleProperty(this->Curve->GetHandleProperty());
  this->Curve->DebugMode = false;
  EXPECT_EQ(this->TakeOutput(), "");
}
