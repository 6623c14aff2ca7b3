#include "zvSnakeWidget.h"

#include "zvSnakeFixture.h"
#include "zvUtils.h"

#include "vtkFollower.h"
#include "vtkMapper.h"
#include "vtkObjectFactory.h"
#include "vtkPicker.h"
#include "vtkProp3DCollection.h"
#include "vtkPropCollection.h"
#include "vtkProperty.h"
#include "vtkVectorText.h"
#include "vtkVersion.h"
#include "vtkWeakPointer.h"

#include <gmock/gmock.h>

#include <functional>
#include <limits>
#include <sstream>

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using zvtest::World;

namespace
{
class ReplacedSnake : public zvSnakeWidget
{
public:
  static ReplacedSnake* New() { return new ReplacedSnake; }
  vtkTypeMacro(ReplacedSnake, zvSnakeWidget)
};

class Factory : public vtkObjectFactory
{
public:
  static Factory* New() { return new Factory; }
  vtkTypeMacro(Factory, vtkObjectFactory)
  const char* GetVTKSourceVersion() override { return VTK_SOURCE_VERSION; }
  const char* GetDescription() override { return "replaces zvSnakeWidget"; }

private:
  static vtkObject* Make() { return ReplacedSnake::New(); }
  Factory()
  {
    this->RegisterOverride("zvSnakeWidget", "ReplacedSnake", "for the test", 1, &Factory::Make);
  }
};

class SnakeWidget : public zvtest::SnakeTest<zvtest::OpenSnake>
{
protected:
  std::string Label() { return this->Snake->AreaText->GetText(); }

  std::array<double, 3> ColorOf(vtkActor* actor)
  {
    std::array<double, 3> color;
    actor->GetProperty()->GetColor(color.data());
    return color;
  }
};
}

// ---- What it is, and how it starts

TEST_F(SnakeWidget, ReportsItsOwnNameAndItsAncestors)
{
  vtkNew<zvSnakeWidget> widget;
  EXPECT_STREQ(widget->GetClassName(), "zvSnakeWidget");
  for (const char* name :
    { "zvSnakeWidget", "zvWidgets", "vtk3DWidget", "vtkInteractorObserver", "vtkObject" })
  {
    EXPECT_EQ(widget->IsA(name), 1) << name;
  }
  EXPECT_EQ(widget->IsA("zvSplineWidget"), 0);
  auto other = vtkSmartPointer<zvSnakeWidget>::Take(widget->NewInstance());
  EXPECT_STREQ(other->GetClassName(), "zvSnakeWidget");
}

TEST_F(SnakeWidget, IsMadeByTheObjectFactoryWhenThatKnowsTheClass)
{
  vtkNew<Factory> factory;
  vtkObjectFactory::RegisterFactory(factory);
  vtkNew<zvSnakeWidget> replaced;
  vtkObjectFactory::UnRegisterFactory(factory);
  vtkNew<zvSnakeWidget> plain;
  EXPECT_STREQ(replaced->GetClassName(), "ReplacedSnake");
  EXPECT_STREQ(plain->GetClassName(), "zvSnakeWidget");
}

TEST_F(SnakeWidget, TheInstantiatorMakesOneWithOneReference)
{
  auto made = vtkSmartPointer<vtkObject>::Take(vtkInstantiatorzvSnakeWidgetNew());
  EXPECT_STREQ(made->GetClassName(), "zvSnakeWidget");
  EXPECT_EQ(made->GetReferenceCount(), 1);
}

TEST_F(SnakeWidget, WritesItsOwnRevisionAloneAndPrintsNothingOfItsOwnByDesign)
{
  std::ostringstream revision;
  this->Snake->CollectRevisions(revision);
  EXPECT_EQ(revision.str(), "zvSnakeWidget $Revision: 1.2 $\n");
  std::ostringstream own;
  std::ostringstream grandparents;
  this->Snake->PrintSelf(own, vtkIndent(2));
  this->Snake->vtk3DWidget::PrintSelf(grandparents, vtkIndent(2));
  EXPECT_EQ(own.str(), grandparents.str());
}

TEST_F(SnakeWidget, StartsWithTheseDefaults)
{
  vtkNew<zvtest::OpenSnake> fresh;
  EXPECT_EQ(fresh->GetState(), zvSnakeWidget::Start);
  EXPECT_FALSE(fresh->DebugMode);
  EXPECT_TRUE(fresh->GetInteraction());
  EXPECT_EQ(fresh->GetEnabled(), 0);
  EXPECT_EQ(fresh->MotionMode, 2);
  EXPECT_EQ(fresh->GetResolution(), 100);
  EXPECT_EQ(fresh->GetRadius(), 0.5);
  EXPECT_THAT(
    std::vector<double>(fresh->GetCenter(), fresh->GetCenter() + 3), ElementsAre(0, 0, 0));
  EXPECT_EQ(fresh->GetCurrentRender(), nullptr);
  EXPECT_EQ(fresh->GetRenderer3D(), nullptr);
  EXPECT_FALSE(fresh->ViewArea);
  EXPECT_EQ(fresh->Area, 0.0);
  EXPECT_THAT(fresh->Color, ElementsAre(0.0, 255.0, 0.0));
  EXPECT_EQ(fresh->GetGradientPointSize(), 1.0);
  for (vtkPolyData* data : { fresh->GetSnake(), fresh->GetSnakes3D(), fresh->GetGradient() })
  {
    ASSERT_NE(data, nullptr);
    EXPECT_EQ(data->GetNumberOfPoints(), 0);
    EXPECT_EQ(data->GetNumberOfCells(), 0);
  }
}

TEST_F(SnakeWidget, ItsNumbersOfStatesAreFixed)
{
  EXPECT_EQ(zvSnakeWidget::Start, 0);
  EXPECT_EQ(zvSnakeWidget::Moving, 1);
  EXPECT_EQ(zvSnakeWidget::Scaling, 4);
  EXPECT_EQ(zvSnakeWidget::Outside, 5);
}

TEST_F(SnakeWidget, PicksOnlyItsContour)
{
  EXPECT_EQ(this->Snake->SnakePicker->GetTolerance(), 0.0005);
  EXPECT_EQ(this->Snake->SnakePicker->GetPickFromList(), 1);
  ASSERT_EQ(this->Snake->SnakePicker->GetPickList()->GetNumberOfItems(), 1);
  EXPECT_EQ(this->Snake->SnakePicker->GetPickList()->GetLastProp(), this->Snake->SnakeActor);
}

TEST_F(SnakeWidget, TheLabelStartsBlankInTheContoursColourAndSmall)
{
  vtkNew<zvtest::OpenSnake> fresh;
  EXPECT_STREQ(fresh->AreaText->GetText(), " ");
  ASSERT_NE(fresh->AreaActor->GetMapper(), nullptr);
  EXPECT_THAT(this->ColorOf(fresh->AreaActor), ElementsAre(0.0, 255.0, 0.0));
  const double scale = 0.017f; // of a handle, in single precision
  for (int axis = 0; axis < 3; ++axis)
  {
    EXPECT_EQ(fresh->AreaActor->GetScale()[axis], scale);
  }
}

// ---- Plain settings

TEST_F(SnakeWidget, SettingsAreStoredAndChangeNothingElse)
{
  this->Show();
  const vtkMTimeType modified = this->Snake->GetMTime();
  const vtkMTimeType contour = this->Snake->GetSnake()->GetMTime();
  zvtest::EventRecorder recorder;
  this->Record(recorder);
  double center[3] = { 1.0, 2.0, 3.0 };
  this->Snake->SetCenter(center);
  this->Snake->SetResolution(7);
  this->Snake->SetRadius(-3.5);
  this->Snake->SetGradientPointSize(4.25);
  this->Snake->SetRenderer3D(nullptr);
  this->ExpectNear(this->Center(), { { 1, 2, 3 } }, 0.0);
  EXPECT_EQ(this->Snake->GetResolution(), 7);
  EXPECT_EQ(this->Snake->GetRadius(), -3.5);
  EXPECT_EQ(this->Snake->GetGradientPointSize(), 4.25);
  EXPECT_EQ(this->Snake->GetRenderer3D(), nullptr);
  EXPECT_EQ(this->Snake->GetMTime(), modified);
  EXPECT_EQ(this->Snake->GetSnake()->GetMTime(), contour);
  EXPECT_EQ(this->Snake->GetSnake()->GetNumberOfPoints(), 100);
  EXPECT_TRUE(this->IsShown(this->Snake->Snakes3DActor, 1));
  EXPECT_THAT(recorder.Names(), IsEmpty());
}

TEST_F(SnakeWidget, GivesItsOwnCenterAndPolyData)
{
  EXPECT_EQ(this->Snake->GetCenter(), this->Snake->GetCenter());
  vtkPolyData* contour = this->Snake->GetSnake();
  vtkPolyData* contours = this->Snake->GetSnakes3D();
  vtkPolyData* gradient = this->Snake->GetGradient();
  this->Snake->SetSnake(Square());
  this->Snake->SetSnakes3D(Square());
  this->Snake->SetGradient(Square());
  EXPECT_EQ(this->Snake->GetSnake(), contour);
  EXPECT_EQ(this->Snake->GetSnakes3D(), contours);
  EXPECT_EQ(this->Snake->GetGradient(), gradient);
  EXPECT_EQ(contour->GetNumberOfPoints(), 4);
  EXPECT_EQ(contours->GetNumberOfPoints(), 4);
  EXPECT_EQ(gradient->GetNumberOfPoints(), 4);
}

TEST_F(SnakeWidget, NothingIsSetByNull)
{
  this->Show();
  const double color[3] = { 0.0, 255.0, 0.0 };
  const int props = this->Scene.Renderer(0)->GetViewProps()->GetNumberOfItems();
  this->Snake->SetCenter(nullptr);
  this->ExpectGenericWarning("zvSnakeWidget", "set a center of three values...");
  this->Snake->SetColor(nullptr);
  this->ExpectGenericWarning("zvSnakeWidget", "set a color of three values...");
  this->Snake->SetSnake(nullptr);
  this->ExpectGenericWarning("zvSnakeWidget", "set poly data for the contour...");
  this->Snake->SetGradient(nullptr);
  this->ExpectGenericWarning("zvSnakeWidget", "set poly data for the gradient...");
  this->Snake->SetSnakes3D(nullptr);
  this->ExpectGenericWarning("zvSnakeWidget", "set poly data for the 3D contours...");
  this->Snake->SetCurrentRender(nullptr);
  this->ExpectGenericWarning("zvSnakeWidget", "set a renderer that is in a render window...");
  this->Snake->GetColor(nullptr);
  this->ExpectNoMessage();
  EXPECT_EQ(this->Snake->GetSnake()->GetNumberOfPoints(), 100);
  EXPECT_EQ(this->Snake->GetCurrentRender(), this->Scene.Renderer(0));
  EXPECT_TRUE(std::equal(color, color + 3, this->Snake->Color));
  EXPECT_EQ(this->Scene.Renderer(0)->GetViewProps()->GetNumberOfItems(), props);
}

TEST_F(SnakeWidget, PlacingDoesNothing)
{
  this->Show({ { 1, 2, 0 } });
  double bounds[6] = { 0, 9, 0, 9, 0, 9 };
  this->Snake->PlaceWidget(bounds);
  this->Snake->PlaceWidget(0, 9, 0, 9, 0, 9);
  this->Snake->PlaceWidget();
  this->ExpectNear(this->Center(), { { 1, 2, 0 } }, 0.0);
  this->ExpectCircle({ { 1, 2, 0 } }, 5.0);
  this->ExpectNoMessage();
}

// ---- The ring

TEST_F(SnakeWidget, TheRingIsComputedInDoubleAndNarrowedAtEachStep)
{
  // Both coordinates would end in another digit with one rounding, or with an angle of single
  // precision.
  const std::vector<std::array<float, 3>> expected = { { { 0.800000012f, -0.200000003f, 7.5f } },
    { { 0.536442876f, 0.347282052f, 7.5f } }, { { -0.0557646081f, 0.482449532f, 7.5f } },
    { { -0.530678153f, 0.103718713f, 7.5f } }, { { -0.530678213f, -0.503718555f, 7.5f } },
    { { -0.0557646975f, -0.882449508f, 7.5f } }, { { 0.536442697f, -0.747282147f, 7.5f } } };
  double center[3] = { 0.1, -0.2, 7.5 };
  this->Snake->SetCenter(center);
  this->Snake->SetRadius(0.7);
  this->Snake->SetResolution(7);
  this->Snake->CreateInitialSnake();
  vtkPolyData* ring = this->Snake->GetSnake();
  ASSERT_EQ(ring->GetNumberOfPoints(), 7);
  EXPECT_EQ(ring->GetPoints()->GetDataType(), VTK_FLOAT);
  for (int i = 0; i < 7; ++i)
  {
    for (int axis = 0; axis < 3; ++axis)
    {
      EXPECT_EQ(ring->GetPoint(i)[axis], expected[i][axis]) << i << " axis " << axis;
    }
  }
  ASSERT_EQ(ring->GetNumberOfLines(), 7);
  vtkIdType count;
  const vtkIdType* ids;
  ring->GetLines()->GetCellAtId(6, count, ids);
  EXPECT_EQ(count, 2);
  EXPECT_EQ(ids[0], 6);
  EXPECT_EQ(ids[1], 0);
}

TEST_F(SnakeWidget, TwoPointsAreJoinedThereAndBack)
{
  this->Snake->SetResolution(2);
  this->Snake->CreateInitialSnake();
  vtkPolyData* ring = this->Snake->GetSnake();
  ASSERT_EQ(ring->GetNumberOfPoints(), 2);
  ASSERT_EQ(ring->GetNumberOfLines(), 2);
  for (vtkIdType i = 0; i < 2; ++i)
  {
    vtkIdType count;
    const vtkIdType* ids;
    ring->GetLines()->GetCellAtId(i, count, ids);
    EXPECT_EQ(ids[0], i);
    EXPECT_EQ(ids[1], 1 - i);
  }
  EXPECT_EQ(this->Snake->Area, 0.0);
  this->ExpectNoMessage();
}

TEST_F(SnakeWidget, TheContourStaysAsItWasIfTheResolutionMakesNone)
{
  this->Show();
  for (int resolution : { 1, 0, -5, 8388609, std::numeric_limits<int>::max() })
  {
    this->Snake->SetResolution(resolution);
    this->Snake->CreateInitialSnake();
    this->ExpectGenericWarning("zvSnakeWidget", "set a resolution from 2 to 8388608 points...");
    EXPECT_EQ(this->Snake->GetResolution(), resolution);
    EXPECT_EQ(this->Snake->GetSnake()->GetNumberOfPoints(), 100);
  }
}

TEST_F(SnakeWidget, WithInteractionOffNoRingIsMade)
{
  this->Show();
  this->Snake->SetInteraction(false);
  this->Snake->SetSnake(Square());
  this->Snake->CreateInitialSnake();
  EXPECT_EQ(this->Snake->GetSnake()->GetNumberOfPoints(), 4);
  this->Snake->SetInteraction(true);
  this->Snake->CreateInitialSnake();
  EXPECT_EQ(this->Snake->GetSnake()->GetNumberOfPoints(), 100);
}

// ---- What a host hands over

TEST_F(SnakeWidget, AContourIsCopiedColouredAndMeasured)
{
  auto square = Square();
  this->Snake->SetColor(0.0, 0.0, 255.0);
  const vtkSmartPointer<vtkProperty> first = this->Snake->SnakeActor->GetProperty();
  this->Snake->SetSnake(square);
  square->GetPoints()->SetPoint(0, 99.0, 99.0, 99.0);
  this->ExpectNear(PointOf(this->Snake->GetSnake(), 0), { { -5, -5, 0 } }, 0.0);
  EXPECT_NE(this->Snake->SnakeActor->GetProperty(), first);
  EXPECT_THAT(this->ColorOf(this->Snake->SnakeActor), ElementsAre(0.0, 0.0, 255.0));
  ASSERT_NE(this->Snake->SnakeActor->GetMapper(), nullptr);
  EXPECT_EQ(this->Snake->SnakeActor->GetMapper()->GetInput(), this->Snake->GetSnake());
  EXPECT_NEAR(this->Snake->Area, 100.0, 1e-9);
  const vtkWeakPointer<vtkMapper> mapper = this->Snake->SnakeActor->GetMapper();
  this->Snake->SetSnake(Square());
  EXPECT_EQ(mapper, nullptr); // another one is in its place
}

TEST_F(SnakeWidget, AContourSetToItselfStays)
{
  this->Snake->SetSnake(Square());
  this->Snake->SetSnake(this->Snake->GetSnake());
  EXPECT_EQ(this->Snake->GetSnake()->GetNumberOfPoints(), 4);
  EXPECT_EQ(this->Snake->GetSnake()->GetNumberOfLines(), 4);
  EXPECT_NEAR(this->Snake->Area, 100.0, 1e-9);
}

TEST_F(SnakeWidget, AnEmptyContourIsTakenInSilence)
{
  this->Show();
  this->Snake->ViewAreaOn();
  vtkNew<vtkPolyData> empty;
  this->Snake->SetSnake(empty);
  EXPECT_EQ(this->Snake->GetSnake()->GetNumberOfPoints(), 0);
  EXPECT_EQ(this->Snake->GetSnake()->GetNumberOfLines(), 0);
  EXPECT_EQ(this->Snake->Area, 0.0);
  EXPECT_EQ(this->Label(), "    0.0000 mm");
  this->Scene.Render();
  this->ExpectNoMessage();
}

TEST_F(SnakeWidget, TheGradientIsCopiedAndTakesThePointSizeOfTheMoment)
{
  this->Snake->SetGradientPointSize(3.3);
  this->Snake->SetGradient(Cloud({ { { 1, 2, 3 } } }));
  EXPECT_EQ(this->Snake->GradientActor->GetProperty()->GetPointSize(), 3.3f);
  EXPECT_THAT(this->ColorOf(this->Snake->GradientActor), ElementsAre(0.0, 0.0, 255.0));
  EXPECT_EQ(this->Snake->GradientActor->GetMapper()->GetInput(), this->Snake->GetGradient());
  this->Snake->SetGradientPointSize(8.0);
  EXPECT_EQ(this->Snake->GradientActor->GetProperty()->GetPointSize(), 3.3f);
  const vtkSmartPointer<vtkProperty> before = this->Snake->GradientActor->GetProperty();
  this->Snake->SetGradient(this->Snake->GetGradient());
  EXPECT_EQ(this->Snake->GradientActor->GetProperty()->GetPointSize(), 8.0f);
  EXPECT_NE(this->Snake->GradientActor->GetProperty(), before);
  EXPECT_EQ(this->Snake->GetGradient()->GetNumberOfCells(), 1);
}

TEST_F(SnakeWidget, TheContoursIn3DTakeTheColourOfTheMoment)
{
  this->Snake->SetSnakes3D(Square());
  EXPECT_THAT(this->ColorOf(this->Snake->Snakes3DActor), ElementsAre(0.0, 255.0, 0.0));
  EXPECT_EQ(this->Snake->Snakes3DActor->GetMapper()->GetInput(), this->Snake->GetSnakes3D());
  this->Snake->SetColor(255.0, 0.0, 0.0);
  EXPECT_THAT(this->ColorOf(this->Snake->Snakes3DActor), ElementsAre(0.0, 255.0, 0.0));
  this->Snake->SetSnakes3D(this->Snake->GetSnakes3D());
  EXPECT_THAT(this->ColorOf(this->Snake->Snakes3DActor), ElementsAre(255.0, 0.0, 0.0));
  EXPECT_EQ(this->Snake->GetSnakes3D()->GetNumberOfLines(), 4);
}

TEST_F(SnakeWidget, AColourIsStoredAsGivenAndReachesTheLabelAtItsNextUpdate)
{
  this->Snake->ViewAreaOn();
  double color[3] = { 255.0, 0.5, -1.0 };
  const vtkSmartPointer<vtkProperty> before = this->Snake->SnakeActor->GetProperty();
  this->Snake->SetColor(color);
  double read[3];
  this->Snake->GetColor(read);
  EXPECT_THAT(read, ElementsAre(255.0, 0.5, -1.0));
  EXPECT_NE(this->Snake->SnakeActor->GetProperty(), before);
  EXPECT_EQ(this->Snake->SnakeActor->GetProperty()->GetReferenceCount(), 1);
  EXPECT_THAT(this->ColorOf(this->Snake->SnakeActor), ElementsAre(255.0, 0.5, -1.0));
  EXPECT_THAT(this->ColorOf(this->Snake->AreaActor), ElementsAre(0.0, 255.0, 0.0));
  this->Snake->UpdateAreaLabel();
  EXPECT_THAT(this->ColorOf(this->Snake->AreaActor), ElementsAre(255.0, 0.5, -1.0));
}

// ---- The area and its label

TEST_F(SnakeWidget, TheAreaIsThatOfThePolygon)
{
  this->Snake->SetRadius(4.0);
  for (int resolution : { 3, 4, 17, 100 })
  {
    this->Snake->SetResolution(resolution);
    this->Snake->CreateInitialSnake();
    const double angle = 2.0 * 3.141592653589793 / resolution;
    EXPECT_NEAR(this->Snake->Area, 0.5 * resolution * 16.0 * std::sin(angle), 1e-4) << resolution;
  }
}

TEST_F(SnakeWidget, WhatEnclosesNothingHasNoArea)
{
  this->Snake->CalculateArea();
  EXPECT_EQ(this->Snake->Area, 0.0);
  this->Snake->SetSnake(Cloud({ { { 0, 0, 0 } }, { { 1, 0, 0 } }, { { 0, 1, 0 } } }));
  EXPECT_EQ(this->Snake->Area, 0.0);
  this->ExpectNoMessage();
  auto open = Square();
  vtkNew<vtkCellArray> lines;
  lines->InsertNextCell({ 0, 1 });
  lines->InsertNextCell({ 1, 2 });
  open->SetLines(lines);
  this->Snake->SetSnake(open);
  EXPECT_EQ(this->Snake->Area, 0.0);
  this->ExpectGenericWarning("src/companions/zvUtils", "CalculateArea: the contour is not closed");
}

TEST_F(SnakeWidget, TheAreaIsComputedWhetherOrNotItIsShown)
{
  this->Snake->SetSnake(Square());
  this->Snake->GetSnake()->GetPoints()->SetPoint(0, -15.0, -5.0, 0.0);
  EXPECT_NEAR(this->Snake->Area, 100.0, 1e-9);
  this->Snake->UpdateAreaLabel();
  EXPECT_NEAR(this->Snake->Area, 150.0, 1e-9);
  EXPECT_EQ(this->Label(), " ");
  EXPECT_FALSE(this->IsShown(this->Snake->AreaActor));
}

TEST_F(SnakeWidget, TheLabelSaysTheAreaWithFourDecimalsInMillimetresByDesign)
{
  this->Snake->SetSnake(Square());
  this->Snake->ViewAreaOn();
  EXPECT_TRUE(this->Snake->ViewArea);
  EXPECT_EQ(this->Label(), "  100.0000 mm");
  this->Snake->SetSnake(
    Contour({ { { 0, 0, 0 } }, { { 5e3, 0, 0 } }, { { 5e3, 1e3, 0 } }, { { 0, 1e3, 0 } } }));
  EXPECT_EQ(this->Label(), "5000000.0000 mm"); // longer than its place
  this->Snake->ViewAreaOff();
  EXPECT_FALSE(this->Snake->ViewArea);
  EXPECT_EQ(this->Label(), " ");
}

TEST_F(SnakeWidget, TheLabelFitsTheViewAndStandsBelowTheCenter)
{
  double center[3] = { 1.0, 2.0, 3.0 };
  this->Snake->SetCenter(center);
  this->Snake->SetSnake(Square());
  this->Snake->SetColor(0.0, 0.0, 1.0);
  this->Snake->ViewAreaOn();
  // The view is 40 by 40 millimetres, the size of a handle a hundredth of its diagonal.
  const double scale = static_cast<float>(40.0 * std::sqrt(2.0) * 1.5 * 0.01);
  for (int axis = 0; axis < 3; ++axis)
  {
    EXPECT_NEAR(this->Snake->AreaActor->GetScale()[axis], scale, 1e-6);
    EXPECT_EQ(this->Snake->AreaActor->GetScale()[axis],
      static_cast<float>(this->Snake->AreaActor->GetScale()[axis]));
  }
  EXPECT_THAT(std::vector<double>(
                this->Snake->AreaActor->GetPosition(), this->Snake->AreaActor->GetPosition() + 3),
    ElementsAre(1.0, 2.0, 2.5));
  EXPECT_THAT(this->ColorOf(this->Snake->AreaActor), ElementsAre(0.0, 0.0, 1.0));
  this->Snake->SetHandleSize(0.02);
  this->Snake->UpdateAreaLabel();
  EXPECT_NEAR(this->Snake->AreaActor->GetScale()[0], 2.0 * scale, 1e-6);
  this->Scene.Renderer(0)->GetActiveCamera()->Zoom(4.0);
  this->Snake->UpdateAreaLabel();
  EXPECT_NEAR(this->Snake->AreaActor->GetScale()[0], 0.5 * scale, 1e-6);
}

TEST_F(SnakeWidget, TheDepthAtWhichTheLabelIsSizedIsThatOfTheLastPick)
{
  vtkCamera* camera = this->Scene.Renderer(0)->GetActiveCamera();
  camera->ParallelProjectionOff();
  camera->SetPosition(0.0, 0.0, 100.0);
  camera->SetFocalPoint(0.0, 0.0, 0.0);
  camera->SetViewAngle(90.0);
  camera->SetClippingRange(1.0, 200.0);
  this->Snake->ViewAreaOn();
  EXPECT_NEAR(this->Snake->AreaActor->GetScale()[0], 200.0 * std::sqrt(2.0) * 0.015, 1e-4);
  this->Snake->LastPickPosition[2] = 50.0;
  this->Snake->UpdateAreaLabel();
  EXPECT_NEAR(this->Snake->AreaActor->GetScale()[0], 100.0 * std::sqrt(2.0) * 0.015, 1e-4);
}

TEST_F(SnakeWidget, TheLabelIsPutIntoTheViewAlsoWhileDisabled)
{
  EXPECT_EQ(this->Snake->GetEnabled(), 0);
  zvtest::EventRecorder recorder;
  this->Record(recorder);
  this->Snake->ViewAreaOn();
  EXPECT_TRUE(this->IsShown(this->Snake->AreaActor));
  EXPECT_THAT(recorder.Names(), IsEmpty());
  this->Snake->ViewAreaOff();
  EXPECT_TRUE(this->IsShown(this->Snake->AreaActor)); // blank
  this->Snake = nullptr;
  EXPECT_EQ(this->Scene.Renderer(0)->GetViewProps()->GetNumberOfItems(), 0);
}

TEST_F(SnakeWidget, WithoutAViewTheLabelKeepsItsSize)
{
  vtkNew<zvtest::OpenSnake> lonely;
  lonely->ViewAreaOn();
  lonely->SetSnake(Square());
  EXPECT_STREQ(lonely->AreaText->GetText(), "  100.0000 mm");
  EXPECT_EQ(lonely->AreaActor->GetScale()[0], 0.017f);
  EXPECT_EQ(lonely->AreaActor->GetPosition()[2], -0.5);
  this->Snake->ViewAreaOn();
  const double scale = this->Snake->AreaActor->GetScale()[0];
  this->Scene.DropRenderers(); // still held by the widget
  this->Snake->UpdateAreaLabel();
  EXPECT_EQ(this->Snake->AreaActor->GetScale()[0], scale);
}

// ---- Moving and scaling

TEST_F(SnakeWidget, MovingTakesTheCenterAlongAllAxesWithinTheImageInTwo)
{
  double from[3] = { 1.0, 1.0, 1.0 };
  struct Row
  {
    World Motion;
    World Center;
  };
  const Row rows[] = { { { { 2, -3, 4 } }, { { 2, -3, 4 } } },
    { { { 100, 1, 0 } }, { { 20, 1, 0 } } }, { { { -100, 1, 0 } }, { { -20, 1, 0 } } },
    { { { 1, 100, 0 } }, { { 1, 15, 0 } } }, { { { 1, -100, -100 } }, { { 1, -15, -100 } } } };
  for (const Row& row : rows)
  {
    World center{ { 0, 0, 0 } };
    this->Snake->SetCenter(center.data());
    double to[3] = { 1.0 + row.Motion[0], 1.0 + row.Motion[1], 1.0 + row.Motion[2] };
    this->Snake->SetSnake(Square()); // the host's deformation is lost
    this->Snake->Move(from, to, -1, -1);
    this->ExpectNear(this->Center(), row.Center, 1e-12);
    this->ExpectCircle(row.Center, 0.5);
  }
}

TEST_F(SnakeWidget, WithInteractionOffOnlyCenterAndRadiusFollow)
{
  this->Show();
  this->Snake->SetInteraction(false);
  double from[3] = { 0.0, 0.0, 0.0 };
  double to[3] = { 3.0, 0.0, 0.0 };
  this->Snake->Move(from, to, 0, 0);
  this->ExpectNear(this->Center(), { { 3, 0, 0 } }, 0.0);
  this->ExpectCircle({ { 0, 0, 0 } }, 5.0);
  this->Snake->Scale(from, to, 0, std::numeric_limits<int>::max());
  EXPECT_DOUBLE_EQ(this->Snake->GetRadius(), 8.0);
  this->ExpectCircle({ { 0, 0, 0 } }, 5.0);
}

TEST_F(SnakeWidget, WithoutBothEndsOfAMotionNothingMovesOrScales)
{
  this->Show();
  double end[3] = { 1.0, 1.0, 0.0 };
  for (bool first : { true, false })
  {
    double* p1 = first ? nullptr : end;
    double* p2 = first ? end : nullptr;
    this->Snake->Move(p1, p2, 0, 0);
    this->ExpectGenericWarning(
      "zvSnakeWidget", "give both ends of the motion before moving the snake...");
    this->Snake->Scale(p1, p2, 0, 0);
    this->ExpectGenericWarning(
      "zvSnakeWidget", "give both ends of the motion before scaling the snake...");
    this->ExpectNear(this->Center(), { { 0, 0, 0 } }, 0.0);
    EXPECT_EQ(this->Snake->GetRadius(), 5.0);
    this->ExpectCircle({ { 0, 0, 0 } }, 5.0);
  }
}

TEST_F(SnakeWidget, WithoutACurrentImageNothingMovesOrScales)
{
  this->Show();
  double from[3] = { 0.0, 0.0, 0.0 };
  double to[3] = { 1.0, 1.0, 0.0 };
  const auto empty = vtkSmartPointer<vtkImageData>::New();
  for (vtkImageData* image : { static_cast<vtkImageData*>(nullptr), empty.Get() })
  {
    zvInstanceManager::Instance()->SetCurrentOutput(image);
    this->Snake->Move(from, to, 0, 0);
    this->ExpectGenericWarning("zvSnakeWidget", "set the current image before moving the snake...");
    this->Snake->Scale(from, to, 0, 0);
    this->ExpectGenericWarning(
      "zvSnakeWidget", "set the current image before scaling the snake...");
    this->ExpectNear(this->Center(), { { 0, 0, 0 } }, 0.0);
    EXPECT_EQ(this->Snake->GetRadius(), 5.0);
    this->ExpectCircle({ { 0, 0, 0 } }, 5.0);
  }
}

TEST_F(SnakeWidget, WithoutAnInteractorNothingScales)
{
  vtkNew<zvtest::OpenSnake> lonely;
  double from[3] = { 0.0, 0.0, 0.0 };
  double to[3] = { 1.0, 1.0, 0.0 };
  lonely->Scale(from, to, 0, 0);
  this->ExpectGenericWarning("zvSnakeWidget", "set interactor before scaling the snake...");
  EXPECT_EQ(lonely->GetRadius(), 0.5);
  EXPECT_EQ(lonely->GetSnake()->GetNumberOfPoints(), 0);
  lonely->Move(from, to, 0, 0); // needs none
  EXPECT_EQ(lonely->GetCenter()[0], 1.0);
}

TEST_F(SnakeWidget, TheRadiusFollowsTheLengthOfTheMotionWithinTheImage)
{
  // From y = 100 to a current y of 101, 100 or 99; the image is 40 by 30 by 2 millimetres.
  this->Pointer.MoveTo({ { 100, 100 } });
  this->Pointer.MoveTo({ { 100, 100 } });
  double from[3] = { 1.0, 2.0, 3.0 };
  struct Row
  {
    int Y;
    double Length;
    double Radius;
  };
  const Row rows[] = { { 101, 2.0, 7.0 }, { 101, 0.0, 5.0 }, { 100, 2.0, 3.0 }, { 99, 2.0, 3.0 },
    { 101, 10.0, 15.0 }, { 101, 1000.0, 15.0 }, { 99, 4.999, 0.001 }, { 99, 5.0, 0.03 },
    { 99, 50.0, 0.03 } };
  for (const Row& row : rows)
  {
    this->Snake->SetRadius(5.0);
    this->Snake->SetSnake(Square());
    double to[3] = { 1.0, 2.0 + row.Length * 0.6, 3.0 - row.Length * 0.8 };
    this->Snake->Scale(from, to, 500, row.Y);
    EXPECT_NEAR(this->Snake->GetRadius(), row.Radius, 1e-9) << row.Y << " " << row.Length;
    this->ExpectCircle({ { 0, 0, 0 } }, row.Radius);
  }
}

TEST_F(SnakeWidget, TheSmallerSideInXAndYLimitsTheRadius)
{
  double from[3] = { 0.0, 0.0, 0.0 };
  double to[3] = { 1000.0, 0.0, 0.0 };
  struct Row
  {
    zvtest::Index Dimensions;
    double Largest;
    double Smallest;
  };
  const Row rows[] = { { { { 41, 31, 3 } }, 15.0, 0.03 }, { { { 21, 31, 301 } }, 10.0, 0.02 },
    { { { 11, 11, 2 } }, 5.0, 0.01 }, { { { 11, 1, 5 } }, 0.0, 0.0 } };
  for (const Row& row : rows)
  {
    zvtest::VolumeOptions options;
    options.Dimensions = row.Dimensions;
    zvInstanceManager::Instance()->SetCurrentOutput(zvtest::MakeConstantVolume(0.0, options));
    this->Pointer.MoveTo({ { 100, 100 } });
    this->Pointer.MoveTo({ { 100, 100 } });
    this->Snake->SetRadius(3.0);
    this->Snake->Scale(from, to, 0, 101);
    EXPECT_DOUBLE_EQ(this->Snake->GetRadius(), row.Largest);
    this->Snake->Scale(from, to, 0, 99);
    EXPECT_DOUBLE_EQ(this->Snake->GetRadius(), row.Smallest);
  }
}

TEST_F(SnakeWidget, RadiiAndMotionsThatAreNoNumbersLeaveASnakeThatCanBeUsed)
{
  const double NaN = std::numeric_limits<double>::quiet_NaN();
  double from[3] = { 0.0, 0.0, 0.0 };
  double to[3] = { 1.0, 0.0, 0.0 };
  double nowhere[3] = { NaN, NaN, NaN };
  for (double radius : { 0.0, NaN })
  {
    this->Snake->SetRadius(radius);
    this->Snake->Scale(from, to, 0, 1);
    EXPECT_DOUBLE_EQ(this->Snake->GetRadius(), 0.03);
  }
  this->Snake->Scale(from, nowhere, 0, 1);
  EXPECT_DOUBLE_EQ(this->Snake->GetRadius(), 0.03);
  this->Snake->Move(from, nowhere, 0, 0);
  this->ExpectNear(this->Center(), { { 0, 0, 0 } }, 0.0);
  this->ExpectCircle({ { 0, 0, 0 } }, 0.03);
}

// ---- Traces

TEST_F(SnakeWidget, EachOperationWritesItsTraceFirst)
{
  this->Show();
  zvtest::OpenSnake* w = this->Snake;
  double p[3] = { 1, 2, 3 };
  double q[3] = { 1, 2, 4 };
  double bounds[6] = { -1, 1, -1, 1, -1, 1 };
  std::ostringstream print;
  auto square = Square();
  vtkRenderer* view = this->Scene.Renderer(0);
  struct Row
  {
    const char* Signature;
    std::function<void()> Call;
  };
  const Row rows[] = {
    { "zvSnakeWidget::PrintSelf(ostream& os, vtkIndent indent)",
      [&] { w->PrintSelf(print, vtkIndent()); } },
    { "void zvSnakeWidget::PlaceWidget(double bds[6])", [&] { w->PlaceWidget(bounds); } },
    { "void zvSnakeWidget::PlaceWidget(double bds[6])", [&] { w->PlaceWidget(); } },
    { "void zvSnakeWidget::PlaceWidget(double bds[6])", [&] { w->PlaceWidget(0, 1, 0, 1, 0, 1); } },
    { "zvSnakeWidget::AddObservers(void)", [&] { w->AddObservers(); } },
    { "void zvSnakeWidget::SetEnabled(int enabling)", [&] { w->SetEnabled(1); } },
    { "zvSnakeWidget::OnRightButtonDown()", [&] { w->OnRightButtonDown(); } },
    { "zvSnakeWidget::OnRightButtonUp()", [&] { w->OnRightButtonUp(); } },
    { "zvSnakeWidget::IsClicked()", [&] { w->IsClicked(); } },
    { "zvSnakeWidget::SetCurrentRender(vtkRenderer *render)", [&] { w->SetCurrentRender(view); } },
    { "zvSnakeWidget::GetCurrentRender()", [&] { w->GetCurrentRender(); } },
    { "zvSnakeWidget::SetCenter(double *center)", [&] { w->SetCenter(p); } },
    { "double * zvSnakeWidget::GetCenter()", [&] { w->GetCenter(); } },
    { "void zvSnakeWidget::SetResolution(int arg)", [&] { w->SetResolution(9); } },
    { "void zvSnakeWidget::GetResolution()", [&] { w->GetResolution(); } },
    { "void zvSnakeWidget::SetRadius(double arg)", [&] { w->SetRadius(2.0); } },
    { "double zvSnakeWidget::GetRadius()", [&] { w->GetRadius(); } },
    { "int zvSnakeWidget::GetState()", [&] { w->GetState(); } },
    { "zvSnakeWidget::SetGradient(vtkPolyData *gradient)", [&] { w->SetGradient(square); } },
    { "vtkPolyData *zvSnakeWidget::GetGradient()", [&] { w->GetGradient(); } },
    { "vtkPolyData *zvSnakeWidget::GetSnake()", [&] { w->GetSnake(); } },
    { "void zvSnakeWidget::SetRenderer3D(vtkRenderer *render)", [&] { w->SetRenderer3D(view); } },
    { "vtkRenderer * zvSnakeWidget::GetRenderer3D()", [&] { w->GetRenderer3D(); } },
    { "void zvSnakeWidget::SetSnakes3D(vtkPolyData *snake)", [&] { w->SetSnakes3D(square); } },
    { "vtkPolyData *zvSnakeWidget::GetSnakes3D()", [&] { w->GetSnakes3D(); } },
    { "void zvSnakeWidget::CalculateArea()", [&] { w->CalculateArea(); } },
    { "void zvSnakeWidget::UpdateAreaLabel()", [&] { w->UpdateAreaLabel(); } },
    { "zvSnakeWidget::SetSnake(vtkPolyData *snake)", [&] { w->SetSnake(square); } },
    { "void zvSnakeWidget::CreateInitialSnake()", [&] { w->CreateInitialSnake(); } },
    { "void zvSnakeWidget::Move(double *p1, double *p2, int vtkNotUsed(X), int Y)",
      [&] { w->Move(p, q, 0, 0); } },
    { "void zvSnakeWidget::Scale(double *p1, double *p2, int vtkNotUsed(X), int Y)",
      [&] { w->Scale(p, q, 0, 0); } },
    { "zvSnakeWidget::OnMouseWheelBackward()", [&] { w->OnMouseWheelBackward(); } },
    { "zvSnakeWidget::OnMouseWheelForward()", [&] { w->OnMouseWheelForward(); } },
    { "zvSnakeWidget::OnMouseMove()", [&] { w->OnMouseMove(); } },
    { "zvSnakeWidget::OnMiddleButtonUp()", [&] { w->OnMiddleButtonUp(); } },
    { "zvSnakeWidget::OnMiddleButtonDown()", [&] { w->OnMiddleButtonDown(); } },
    { "zvSnakeWidget::OnLeftButtonUp()", [&] { w->OnLeftButtonUp(); } },
    { "zvSnakeWidget::OnLeftButtonDown()", [&] { w->OnLeftButtonDown(); } },
    { "zvSnakeWidget::~zvSnakeWidget()", [this] { this->Snake = nullptr; } },
  };
  for (const Row& row : rows)
  {
    w->DebugMode = true;
    row.Call();
    if (this->Snake)
    {
      w->DebugMode = false;
    }
    const std::string output = this->TakeOutput();
    const std::string first = output.substr(0, output.find("\n\n") + 2);
    EXPECT_TRUE(zvtest::IsTrace(first, "zvSnakeWidget", w, row.Signature)) << output;
  }
}

TEST_F(SnakeWidget, TheseOperationsWriteNoTrace)
{
  this->Snake->DebugMode = true;
  std::ostringstream revision;
  double color[3];
  this->Snake->CollectRevisions(revision);
  this->Snake->SetColor(1.0, 0.0, 0.0);
  this->Snake->GetColor(color);
  this->Snake->SetGradientPointSize(2.0);
  this->Snake->GetGradientPointSize();
  EXPECT_EQ(this->TakeOutput(), "");
  this->Snake->ViewAreaOn(); // those of what it calls
  this->Snake->DebugMode = false;
  const std::string output = this->TakeOutput();
  EXPECT_NE(output.find("UpdateAreaLabel()"), std::string::npos);
  EXPECT_EQ(output.find("ViewAreaOn"), std::string::npos);
}
