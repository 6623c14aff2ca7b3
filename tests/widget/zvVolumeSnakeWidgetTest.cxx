#include "zvVolumeSnakeFixture.h"

#include "vtkLookupTable.h"
#include "vtkMapper.h"
#include "vtkMath.h"
#include "vtkObjectFactory.h"
#include "vtkProp3DCollection.h"
#include "vtkPropCollection.h"
#include "vtkProperty.h"
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
class ReplacedVolumeSnake : public zvVolumeSnakeWidget
{
public:
  static ReplacedVolumeSnake* New() { return new ReplacedVolumeSnake; }
  vtkTypeMacro(ReplacedVolumeSnake, zvVolumeSnakeWidget)
};

class Factory : public vtkObjectFactory
{
public:
  static Factory* New() { return new Factory; }
  vtkTypeMacro(Factory, vtkObjectFactory)
  const char* GetVTKSourceVersion() override { return VTK_SOURCE_VERSION; }
  const char* GetDescription() override { return "replaces zvVolumeSnakeWidget"; }

private:
  static vtkObject* Make() { return ReplacedVolumeSnake::New(); }
  Factory()
  {
    this->RegisterOverride(
      "zvVolumeSnakeWidget", "ReplacedVolumeSnake", "for the test", 1, &Factory::Make);
  }
};

class VolumeSnakeWidget : public zvtest::VolumeSnakeTest
{
protected:
  std::array<double, 3> ColorOf(vtkActor* actor)
  {
    std::array<double, 3> color;
    actor->GetProperty()->GetColor(color.data());
    return color;
  }

  /// Which of the live and the frozen gradient are in the slice view.
  std::pair<bool, bool> GradientsShown()
  {
    return { this->IsShown(this->Snake->GradientActor),
      this->IsShown(this->Snake->FreezeGradientActor) };
  }

  static constexpr std::pair<bool, bool> None{ false, false };
  static constexpr std::pair<bool, bool> Live{ true, false };
  static constexpr std::pair<bool, bool> Frozen{ false, true };
};
}

// ---- What it is, and how it starts

TEST_F(VolumeSnakeWidget, ReportsItsOwnNameAndItsAncestors)
{
  vtkNew<zvVolumeSnakeWidget> widget;
  EXPECT_STREQ(widget->GetClassName(), "zvVolumeSnakeWidget");
  for (const char* name : { "zvVolumeSnakeWidget", "zvSplineWidget", "zvWidgets", "vtk3DWidget",
         "vtkInteractorObserver", "vtkObject" })
  {
    EXPECT_EQ(widget->IsA(name), 1) << name;
  }
  EXPECT_EQ(widget->IsA("zvSnakeWidget"), 0);
  auto other = vtkSmartPointer<zvVolumeSnakeWidget>::Take(widget->NewInstance());
  EXPECT_STREQ(other->GetClassName(), "zvVolumeSnakeWidget");
}

TEST_F(VolumeSnakeWidget, IsMadeByTheObjectFactoryWhenThatKnowsTheClass)
{
  vtkNew<Factory> factory;
  vtkObjectFactory::RegisterFactory(factory);
  vtkNew<zvVolumeSnakeWidget> replaced;
  vtkObjectFactory::UnRegisterFactory(factory);
  vtkNew<zvVolumeSnakeWidget> plain;
  EXPECT_STREQ(replaced->GetClassName(), "ReplacedVolumeSnake");
  EXPECT_STREQ(plain->GetClassName(), "zvVolumeSnakeWidget");
}

TEST_F(VolumeSnakeWidget, TheInstantiatorMakesOneWithOneReference)
{
  auto made = vtkSmartPointer<vtkObject>::Take(vtkInstantiatorzvVolumeSnakeWidgetNew());
  EXPECT_STREQ(made->GetClassName(), "zvVolumeSnakeWidget");
  EXPECT_EQ(made->GetReferenceCount(), 1);
}

TEST_F(VolumeSnakeWidget, WritesItsRevisionAfterTheParentsAndPrintsNothingOfItsOwn)
{
  std::ostringstream revision;
  this->Snake->CollectRevisions(revision);
  EXPECT_EQ(revision.str(),
    "zvWidgets $Revision: 1.2 $\nzvSplineWidget $Revision: 1.2 $\n"
    "zvVolumeSnakeWidget $Revision: 1.2 $\n");
  std::ostringstream own;
  std::ostringstream parents;
  this->Snake->PrintSelf(own, vtkIndent(2));
  this->Snake->zvSplineWidget::PrintSelf(parents, vtkIndent(2));
  EXPECT_EQ(own.str(), parents.str());
  EXPECT_NE(own.str().find("  Resolution: 100\n"), std::string::npos); // that of the line
}

TEST_F(VolumeSnakeWidget, StartsWithTheseDefaults)
{
  vtkNew<zvtest::OpenVolumeSnake> fresh;
  EXPECT_EQ(fresh->GetState(), zvVolumeSnakeWidget::Start);
  EXPECT_FALSE(fresh->DebugMode);
  EXPECT_TRUE(fresh->GetInteraction());
  EXPECT_EQ(fresh->GetEnabled(), 0);
  EXPECT_TRUE(fresh->SphereHandleVisibility);
  EXPECT_EQ(fresh->MotionMode, 2);
  EXPECT_EQ(fresh->GetResolution(), 100);
  EXPECT_EQ(fresh->ParametricFunctionSource->GetUResolution(), 100);
  EXPECT_EQ(fresh->GetRadius(), 0.5);
  EXPECT_THAT(
    std::vector<double>(fresh->GetCenter(), fresh->GetCenter() + 3), ElementsAre(0, 0, 0));
  EXPECT_EQ(fresh->GetRenderer3D(), nullptr);
  EXPECT_THAT(fresh->Color, ElementsAre(0.0, 255.0, 0.0));
  EXPECT_EQ(fresh->GetGradientPointSize(), 1.0);
  EXPECT_EQ(fresh->GetZCoordinate(), 0.0);
  EXPECT_EQ(fresh->GetViewGradient(), 2);
  for (vtkPolyData* data : { fresh->GetSnake(), fresh->GetPrevSnake(), fresh->Snakes3D.Get(),
         fresh->GetGradient(), fresh->GetFreezeGradient() })
  {
    ASSERT_NE(data, nullptr);
    EXPECT_EQ(data->GetNumberOfPoints(), 0);
  }
}

TEST_F(VolumeSnakeWidget, ItsNumbersOfStatesAreThoseOfTheSpline)
{
  EXPECT_EQ(zvVolumeSnakeWidget::Start, 0);
  EXPECT_EQ(zvVolumeSnakeWidget::Moving, 1);
  EXPECT_EQ(zvVolumeSnakeWidget::Scaling, 2);
  EXPECT_EQ(zvVolumeSnakeWidget::Spinning, 3);
  EXPECT_EQ(zvVolumeSnakeWidget::Outside, 6);
}

TEST_F(VolumeSnakeWidget, PicksTheContourEasilyBesideTheHandles)
{
  EXPECT_EQ(this->Snake->HandlePicker->GetTolerance(), 0.05);
  EXPECT_EQ(this->Snake->HandlePicker->GetPickFromList(), 1);
  vtkPropCollection* list = this->Snake->HandlePicker->GetPickList();
  EXPECT_EQ(list->GetNumberOfItems(), 2);
  EXPECT_TRUE(list->IsItemPresent(this->Snake->HandleActor));
  EXPECT_TRUE(list->IsItemPresent(this->Snake->SnakeActor));
  EXPECT_EQ(this->Snake->LinePicker->GetTolerance(), 0.005);
}

// ---- Plain settings

TEST_F(VolumeSnakeWidget, SettingsAreStoredAndChangeNothingElse)
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
  this->Snake->SphereHandleVisibilityOff();
  ExpectNear(this->Center(), { { 1, 2, 3 } }, 0.0);
  EXPECT_EQ(this->Snake->GetResolution(), 7);
  EXPECT_EQ(this->Snake->ParametricFunctionSource->GetUResolution(), 100);
  EXPECT_EQ(this->Snake->GetRadius(), -3.5);
  EXPECT_EQ(this->Snake->GetGradientPointSize(), 4.25);
  EXPECT_EQ(this->Snake->GetRenderer3D(), nullptr);
  EXPECT_FALSE(this->Snake->SphereHandleVisibility);
  this->Snake->SphereHandleVisibilityOn();
  EXPECT_TRUE(this->Snake->SphereHandleVisibility);
  EXPECT_EQ(this->Snake->GetMTime(), modified);
  EXPECT_EQ(this->Snake->GetSnake()->GetMTime(), contour);
  EXPECT_EQ(this->Snake->GetSnake()->GetNumberOfPoints(), 100);
  EXPECT_THAT(recorder.Names(), IsEmpty());
}

TEST_F(VolumeSnakeWidget, AChangedZCoordinateIsAModification)
{
  const vtkMTimeType before = this->Snake->GetMTime();
  this->Snake->SetZCoordinate(0.0);
  EXPECT_EQ(this->Snake->GetMTime(), before);
  this->Snake->SetZCoordinate(-12.5);
  EXPECT_GT(this->Snake->GetMTime(), before);
  EXPECT_EQ(this->Snake->GetZCoordinate(), -12.5);
}

TEST_F(VolumeSnakeWidget, NothingIsSetByNull)
{
  this->Show();
  this->Snake->SetCenter(nullptr);
  this->ExpectGenericWarning("zvVolumeSnakeWidget", "set a center of three values...");
  this->Snake->SetColor(nullptr);
  this->ExpectGenericWarning("zvVolumeSnakeWidget", "set a color of three values...");
  this->Snake->SetSnake(nullptr);
  this->ExpectGenericWarning("zvVolumeSnakeWidget", "set poly data for the contour...");
  this->Snake->SetPrevSnake(nullptr);
  this->ExpectGenericWarning("zvVolumeSnakeWidget", "set poly data for the previous contour...");
  this->Snake->SetGradient(nullptr);
  this->ExpectGenericWarning("zvVolumeSnakeWidget", "set poly data for the gradient...");
  this->Snake->SetFreezeGradient(nullptr);
  this->ExpectGenericWarning("zvVolumeSnakeWidget", "set poly data for the frozen gradient...");
  this->Snake->SetSnakes3D(nullptr);
  this->ExpectGenericWarning("zvVolumeSnakeWidget", "set poly data for the 3D contours...");
  this->Snake->AddHandle(nullptr);
  this->ExpectGenericWarning("zvVolumeSnakeWidget", "give the handle a position...");
  EXPECT_EQ(this->Snake->GetNumberOfHandles(), 0);
  this->Snake->GetColor(nullptr);
  this->ExpectNoMessage();
  EXPECT_EQ(this->Snake->GetSnake()->GetNumberOfPoints(), 100);
  EXPECT_EQ(this->Snake->GetPrevSnake()->GetNumberOfPoints(), 100);
  EXPECT_THAT(this->Snake->Color, ElementsAre(0.0, 255.0, 0.0));
}

// ---- The ring

TEST_F(VolumeSnakeWidget, TheRingIsComputedFromAnAngleOfSinglePrecision)
{
  const std::vector<std::array<float, 3>> expected = { { { 25.5999985f, 0.699999988f, -2.5f } },
    { { 22.7020359f, 12.4574966f, -2.5f } }, { { 14.6720371f, 21.521492f, -2.5f } },
    { { 3.34957504f, 25.8155346f, -2.5f } }, { { -8.67150497f, 24.3559113f, -2.5f } },
    { { -18.6373272f, 17.4769993f, -2.5f } }, { { -24.2648315f, 6.75468063f, -2.5f } },
    { { -24.2648258f, -5.35469675f, -2.5f } }, { { -18.6373196f, -16.0770054f, -2.5f } },
    { { -8.67150688f, -22.9559097f, -2.5f } }, { { 3.34959149f, -24.4155312f, -2.5f } },
    { { 14.6720533f, -20.1214809f, -2.5f } }, { { 22.7020473f, -11.0574751f, -2.5f } } };
  double center[3] = { 0.3, 0.7, -2.5 };
  this->Snake->SetCenter(center);
  this->Snake->SetRadius(25.3);
  this->Snake->SetResolution(13);
  this->Snake->CreateInitialSnake();
  for (vtkPolyData* ring : { this->Snake->GetSnake(), this->Snake->GetPrevSnake() })
  {
    ASSERT_EQ(ring->GetNumberOfPoints(), 13);
    ASSERT_EQ(ring->GetNumberOfLines(), 13);
    EXPECT_EQ(ring->GetPoints()->GetDataType(), VTK_FLOAT);
    for (int i = 0; i < 13; ++i)
    {
      for (int axis = 0; axis < 3; ++axis)
      {
        EXPECT_EQ(ring->GetPoint(i)[axis], expected[i][axis]) << i << " axis " << axis;
      }
      vtkIdType count;
      const vtkIdType* ids;
      ring->GetLines()->GetCellAtId(i, count, ids);
      EXPECT_EQ(ids[0], i);
      EXPECT_EQ(ids[1], (i + 1) % 13);
    }
  }
  EXPECT_NE(this->Snake->GetSnake()->GetPoints(), this->Snake->GetPrevSnake()->GetPoints());
}

TEST_F(VolumeSnakeWidget, TheRingNeedsNeitherAViewNorInteraction)
{
  vtkNew<zvVolumeSnakeWidget> lonely;
  lonely->SetResolution(50);
  lonely->CreateInitialSnake();
  EXPECT_EQ(lonely->GetSnake()->GetNumberOfPoints(), 50);
  this->Snake->SetEnabled(1);
  this->Snake->SetInteraction(false);
  this->Snake->CreateInitialSnake();
  EXPECT_EQ(this->Snake->GetSnake()->GetNumberOfPoints(), 100);
}

TEST_F(VolumeSnakeWidget, ContoursStayAsTheyWereIfTheResolutionMakesNone)
{
  this->Show();
  for (int resolution : { 1, 0, -5, 8388609, std::numeric_limits<int>::max() })
  {
    this->Snake->SetResolution(resolution);
    this->Snake->CreateInitialSnake();
    this->ExpectGenericWarning(
      "zvVolumeSnakeWidget", "set a resolution from 2 to 8388608 points...");
    EXPECT_EQ(this->Snake->GetSnake()->GetNumberOfPoints(), 100);
    EXPECT_EQ(this->Snake->GetPrevSnake()->GetNumberOfPoints(), 100);
    double from[3] = { 0, 0, 0 };
    double to[3] = { 1, 0, 0 };
    this->Snake->Translate(from, to); // moves what there is to move: nothing, or one point
    this->Snake->Scale(from, to, 0, 0);
  }
  this->ExpectNoMessage();
}

// ---- What a host hands over

TEST_F(VolumeSnakeWidget, ContoursAreCopiedAndDrawnInTheirColours)
{
  auto square = Square();
  this->Snake->SetColor(0.0, 0.5, 255.0);
  this->Snake->SetSnake(square);
  this->Snake->SetPrevSnake(square);
  this->Snake->SetSnakes3D(square);
  square->GetPoints()->SetPoint(0, 99.0, 99.0, 99.0);
  struct Row
  {
    vtkPolyData* Data;
    vtkActor* Actor;
    std::array<double, 3> Color;
    float PointSize;
  };
  const Row rows[] = { { this->Snake->GetSnake(), this->Snake->SnakeActor, { { 0.0, 0.5, 255.0 } },
                         3.0f },
    { this->Snake->GetPrevSnake(), this->Snake->PrevSnakeActor, { { 255, 255, 0 } }, 3.0f },
    { this->Snake->Snakes3D, this->Snake->Snakes3DActor, { { 0.0, 0.5, 255.0 } }, 1.0f } };
  for (const Row& row : rows)
  {
    ExpectNear(PointOf(row.Data, 0), { { -5, -5, 0 } }, 0.0);
    EXPECT_EQ(row.Data->GetNumberOfLines(), 4);
    EXPECT_EQ(row.Actor->GetMapper()->GetInput(), row.Data);
    EXPECT_EQ(this->ColorOf(row.Actor), row.Color);
    EXPECT_EQ(row.Actor->GetProperty()->GetPointSize(), row.PointSize);
    EXPECT_EQ(row.Actor->GetProperty()->GetReferenceCount(), 1);
  }
}

TEST_F(VolumeSnakeWidget, ContoursSetToThemselvesStay)
{
  this->Snake->SetSnake(Square());
  this->Snake->SetPrevSnake(Square());
  vtkPolyData* contour = this->Snake->GetSnake();
  vtkPolyData* previous = this->Snake->GetPrevSnake();
  this->Snake->SetSnake(contour);
  this->Snake->SetPrevSnake(previous);
  EXPECT_EQ(this->Snake->GetSnake(), contour);
  EXPECT_EQ(contour->GetNumberOfLines(), 4);
  EXPECT_EQ(previous->GetNumberOfLines(), 4);
  this->Snake->SetPrevSnake(contour); // the step of a host
  EXPECT_EQ(previous->GetNumberOfLines(), 4);
}

TEST_F(VolumeSnakeWidget, AColourReachesTheContourAtOnceAndTheStackWhenItIsSet)
{
  this->Snake->SetSnakes3D(Square());
  double color[3] = { 255.0, 0.5, -1.0 };
  const vtkSmartPointer<vtkProperty> before = this->Snake->SnakeActor->GetProperty();
  this->Snake->SetColor(color);
  double read[3];
  this->Snake->GetColor(read);
  EXPECT_THAT(read, ElementsAre(255.0, 0.5, -1.0));
  EXPECT_NE(this->Snake->SnakeActor->GetProperty(), before);
  EXPECT_THAT(this->ColorOf(this->Snake->SnakeActor), ElementsAre(255.0, 0.5, -1.0));
  EXPECT_THAT(this->ColorOf(this->Snake->Snakes3DActor), ElementsAre(0.0, 255.0, 0.0));
  this->Snake->SetSnakes3D(this->Snake->Snakes3D);
  EXPECT_THAT(this->ColorOf(this->Snake->Snakes3DActor), ElementsAre(255.0, 0.5, -1.0));
}

TEST_F(VolumeSnakeWidget, TheLiveGradientIsColouredByItsScalarsFromBlueToRed)
{
  const vtkSmartPointer<vtkProperty> property = this->Snake->GradientActor->GetProperty();
  this->Snake->SetGradient(CloudOfValues({ { { 0, 0, 0 } }, { { 1, 0, 0 } } }, { 0.0f, 1.0f }));
  EXPECT_EQ(this->Snake->GradientActor->GetProperty(), property); // the default one stays
  vtkMapper* mapper = this->Snake->GradientActor->GetMapper();
  ASSERT_NE(mapper, nullptr);
  EXPECT_EQ(mapper->GetInput(), this->Snake->GetGradient());
  auto* table = vtkLookupTable::SafeDownCast(mapper->GetLookupTable());
  ASSERT_NE(table, nullptr);
  EXPECT_THAT(
    std::vector<double>(table->GetHueRange(), table->GetHueRange() + 2), ElementsAre(0.667, 0.0));
  double low[4];
  double high[4];
  table->GetTableValue(0, low);
  table->GetTableValue(table->GetNumberOfTableValues() - 1, high);
  EXPECT_THAT(low, ElementsAre(testing::Lt(0.02), 0.0, 1.0, 1.0));
  EXPECT_THAT(high, ElementsAre(1.0, 0.0, 0.0, 1.0));
}

TEST_F(VolumeSnakeWidget, TheFrozenGradientIsBlueAndTakesThePointSizeOfTheMoment)
{
  this->Snake->SetGradientPointSize(3.3);
  this->Snake->SetFreezeGradient(Cloud({ { { 1, 2, 3 } } }));
  vtkActor* actor = this->Snake->FreezeGradientActor;
  EXPECT_EQ(actor->GetProperty()->GetPointSize(), 3.3f);
  EXPECT_THAT(this->ColorOf(actor), ElementsAre(0.0, 0.0, 255.0));
  EXPECT_EQ(actor->GetMapper()->GetInput(), this->Snake->GetFreezeGradient());
  this->Snake->SetGradientPointSize(8.0);
  EXPECT_EQ(actor->GetProperty()->GetPointSize(), 3.3f);
  this->Snake->SetFreezeGradient(this->Snake->GetFreezeGradient());
  EXPECT_EQ(actor->GetProperty()->GetPointSize(), 8.0f);
  EXPECT_EQ(this->Snake->GetFreezeGradient()->GetNumberOfCells(), 1);
}

// ---- Which gradient is shown

TEST_F(VolumeSnakeWidget, OneGradientOrNoneIsShown)
{
  this->Snake->SetEnabled(1);
  EXPECT_EQ(this->GradientsShown(), Frozen);
  zvtest::EventRecorder recorder;
  this->Record(recorder);
  struct Row
  {
    int View;
    std::pair<bool, bool> Shown;
  };
  const Row rows[] = { { 1, Live }, { 2, Frozen }, { 0, None }, { 2, Frozen }, { 7, None },
    { 1, Live }, { -1, None } };
  for (const Row& row : rows)
  {
    this->Snake->SetViewGradient(row.View);
    EXPECT_EQ(this->Snake->GetViewGradient(), row.View);
    EXPECT_EQ(this->GradientsShown(), row.Shown) << row.View;
  }
  EXPECT_THAT(recorder.Names(), IsEmpty());
}

TEST_F(VolumeSnakeWidget, SwitchedOffAndOnTheGradientChosenBeforeComesBack)
{
  this->Snake->SetEnabled(1);
  struct Row
  {
    int View;
    std::pair<bool, bool> Shown;
  };
  for (const Row& row : { Row{ 1, Live }, Row{ 2, Frozen }, Row{ 0, None } })
  {
    this->Snake->SetViewGradient(row.View);
    this->Snake->EnableViewGradient(false);
    EXPECT_EQ(this->GradientsShown(), None);
    EXPECT_EQ(this->Snake->GetViewGradient(), row.View);
    this->Snake->EnableViewGradient(true);
    EXPECT_EQ(this->GradientsShown(), row.Shown);
  }
}

TEST_F(VolumeSnakeWidget, AGradientIsShownAlsoWhileDisabledAndGoesWithTheWidget)
{
  this->Snake->SetViewGradient(1);
  EXPECT_EQ(this->GradientsShown(), Live);
  this->Snake = nullptr;
  EXPECT_EQ(this->Scene.Renderer(0)->GetViewProps()->GetNumberOfItems(), 0);
  vtkNew<zvVolumeSnakeWidget> lonely;
  lonely->SetViewGradient(1);
  lonely->EnableViewGradient(true);
  EXPECT_EQ(lonely->GetViewGradient(), 1);
}

// ---- Reset

TEST_F(VolumeSnakeWidget, ResetDisablesAndStartsWithEmptyPolyData)
{
  this->ShowSquare();
  this->Snake->SetPrevSnake(Square());
  this->Snake->SetSnakes3D(Square());
  this->Snake->SetGradient(Square());
  this->Snake->SetFreezeGradient(Square());
  const vtkWeakPointer<vtkPolyData> former = this->Snake->GetSnake();
  zvtest::EventRecorder recorder;
  this->Record(recorder);
  this->Snake->Reset();
  EXPECT_EQ(this->Snake->GetEnabled(), 0);
  EXPECT_EQ(recorder.Names(), (Names{ "DisableEvent", "RenderEvent" }));
  EXPECT_EQ(former, nullptr);
  struct Row
  {
    vtkPolyData* Data;
    vtkActor* Actor;
  };
  for (const Row& row : { Row{ this->Snake->GetSnake(), this->Snake->SnakeActor },
         Row{ this->Snake->GetPrevSnake(), this->Snake->PrevSnakeActor },
         Row{ this->Snake->Snakes3D, this->Snake->Snakes3DActor },
         Row{ this->Snake->GetGradient(), this->Snake->GradientActor },
         Row{ this->Snake->GetFreezeGradient(), this->Snake->FreezeGradientActor } })
  {
    EXPECT_EQ(row.Data->GetNumberOfPoints(), 0);
    EXPECT_EQ(row.Actor->GetMapper()->GetInput(), row.Data);
  }
  EXPECT_EQ(this->Snake->GetResolution(), 4); // settings stay
}

TEST_F(VolumeSnakeWidget, ResetWithoutAnInteractorSaysSoAndEmptiesAllTheSame)
{
  vtkNew<zvVolumeSnakeWidget> lonely;
  lonely->CreateInitialSnake();
  lonely->Reset();
  this->ExpectVtkError("zvVolumeSnakeWidget", "zvVolumeSnakeWidget", lonely.Get(),
    "The interactor must be set prior to enabling/disabling widget");
  EXPECT_EQ(lonely->GetSnake()->GetNumberOfPoints(), 0);
}

TEST_F(VolumeSnakeWidget, AnObserverMayReleaseItWhileItIsReset)
{
  this->ShowSquare();
  zvtest::EventRecorder recorder;
  recorder.Watch(this->Snake, { vtkCommand::DisableEvent },
    [this](const zvtest::RecordedEvent&) { this->Snake = nullptr; });
  zvVolumeSnakeWidget* widget = this->Snake;
  widget->Reset();
  EXPECT_EQ(recorder.Count(vtkCommand::DisableEvent), 1);
}

// ---- Moving and scaling

TEST_F(VolumeSnakeWidget, TranslateMovesTheContourAndTheCenterAndKeepsTheShape)
{
  this->ShowSquare();
  double center[3] = { 1.0, 1.0, 1.0 };
  this->Snake->SetCenter(center);
  double from[3] = { 1.0, 2.0, 3.0 };
  double to[3] = { 3.0, 1.0, 3.5 };
  const vtkMTimeType modified = this->Snake->GetSnake()->GetMTime();
  this->Snake->Translate(from, to);
  this->ExpectPoints(Moved(SquarePlaces(), { { 2, -1, 0.5 } }));
  ExpectNear(this->Center(), { { 3, 0, 1.5 } }, 1e-12);
  EXPECT_GT(this->Snake->GetSnake()->GetMTime(), modified);
  // Not kept within the image.
  double away[3] = { 1000.0, 0.0, 0.0 };
  double origin[3] = { 0.0, 0.0, 0.0 };
  this->Snake->Translate(origin, away);
  EXPECT_NEAR(this->Center()[0], 1003.0, 1e-9);
}

TEST_F(VolumeSnakeWidget, OnlyAsManyPointsAsTheResolutionMoveByDesign)
{
  this->Snake->SetResolution(50);
  this->Snake->CreateInitialSnake();
  EXPECT_EQ(this->Snake->GetSnake()->GetNumberOfPoints(), 50);
  std::vector<World> places(60, World{ { 2, 3, 4 } });
  this->Snake->SetSnake(Contour(places));
  double from[3] = { 0.0, 0.0, 0.0 };
  double to[3] = { 1.0, 1.0, 1.0 };
  this->Snake->Translate(from, to);
  for (int i = 0; i < 60; ++i)
  {
    ExpectNear(PointOf(this->Snake->GetSnake(), i),
      i < 50 ? World{ { 3, 4, 5 } } : World{ { 2, 3, 4 } }, 1e-12);
  }
}

TEST_F(VolumeSnakeWidget, FewerPointsThanTheResolutionAllMove)
{
  this->Snake->SetSnake(Square()); // the resolution is 100
  double from[3] = { 0.0, 0.0, 0.0 };
  double to[3] = { 1.0, 0.0, 0.0 };
  this->Snake->Translate(from, to);
  this->ExpectPoints(Moved(SquarePlaces(), { { 1, 0, 0 } }));
  this->Snake->SetSnake(Square());
  this->Snake->SetResolution(std::numeric_limits<int>::max());
  to[0] = 0.1 * std::sqrt(50.0);
  this->Snake->Scale(from, to, 0, 1);
  this->ExpectPoints(Scaled(SquarePlaces(), 1.1));
}

TEST_F(VolumeSnakeWidget, AnEmptyContourIsMovedInSilence)
{
  double from[3] = { 0.0, 0.0, 0.0 };
  double to[3] = { 1.0, 0.0, 0.0 };
  this->Snake->Translate(from, to);
  ExpectNear(this->Center(), { { 1, 0, 0 } }, 0.0);
  this->Snake->SetRadius(7.0);
  this->Snake->Scale(from, to, 0, 0);
  EXPECT_EQ(this->Snake->GetRadius(), 7.0);
  EXPECT_EQ(this->Snake->GetSnake()->GetNumberOfPoints(), 0);
  this->ExpectNoMessage();
}

TEST_F(VolumeSnakeWidget, ScaleFollowsTheLengthOfTheMotionByItsPartOfTheMeanDistance)
{
  // From y = 100 to a current y of 101, 100 or 99. The corners are 7.07 from the middle.
  this->ShowSquare();
  this->Pointer.MoveTo({ { 100, 100 } });
  this->Pointer.MoveTo({ { 100, 100 } });
  double from[3] = { 1.0, 2.0, 3.0 };
  const double length = 0.25 * std::sqrt(50.0);
  double to[3] = { 1.0, 2.0 + 0.6 * length, 3.0 - 0.8 * length };
  struct Row
  {
    int Y;
    double Factor;
  };
  for (const Row& row : { Row{ 101, 1.25 }, Row{ 100, 0.75 }, Row{ 99, 0.75 } })
  {
    this->Snake->SetSnake(Square());
    const vtkMTimeType modified = this->Snake->GetSnake()->GetMTime();
    this->Snake->Scale(from, to, -7, row.Y);
    this->ExpectPoints(Scaled(SquarePlaces(), row.Factor));
    ExpectNear(this->Center(), { { 0, 0, 0 } }, 0.0);
    EXPECT_GT(this->Snake->GetSnake()->GetMTime(), modified);
  }
}

TEST_F(VolumeSnakeWidget, ScaleStoresTheRadiusThatTheContourHadBefore)
{
  this->ShowSquare();
  double center[3] = { -5.0, -2.0, 0.0 };
  this->Snake->SetCenter(center);
  double from[3] = { 0.0, 0.0, 0.0 };
  double to[3] = { 1.0, 0.0, 0.0 };
  this->Snake->Scale(from, to, 0, 0);
  EXPECT_DOUBLE_EQ(this->Snake->GetRadius(), 3.0);
  ExpectNear(this->Center(), { { -5, -2, 0 } }, 0.0);
}

TEST_F(VolumeSnakeWidget, TheMiddleIsThatOfAllPointsAlsoIfOnlySomeAreScaled)
{
  // The mean of the four is the origin; the two that are scaled are 5 and 3 away from it.
  this->Snake->SetSnake(
    Contour({ { { 5, 0, 0 } }, { { 0, 3, 0 } }, { { -5, 0, 0 } }, { { 0, -3, 0 } } }));
  this->Snake->SetResolution(2);
  double from[3] = { 0.0, 0.0, 0.0 };
  double to[3] = { 2.0, 0.0, 0.0 };
  this->Snake->Scale(from, to, 0, 1); // 2 of 4: grows by half
  this->ExpectPoints({ { { 7.5, 0, 0 } }, { { 0, 4.5, 0 } }, { { -5, 0, 0 } }, { { 0, -3, 0 } } });
}

TEST_F(VolumeSnakeWidget, WhereNothingCanBeScaledThePointsStay)
{
  const double NaN = std::numeric_limits<double>::quiet_NaN();
  double from[3] = { 0.0, 0.0, 0.0 };
  double to[3] = { 1.0, 0.0, 0.0 };
  double nowhere[3] = { NaN, 0.0, 0.0 };
  const std::vector<World> together(3, World{ { 2, 0, 0 } });
  this->Snake->SetSnake(Contour(together));
  this->Snake->Scale(from, to, 0, 0);
  this->ExpectPoints(together);
  EXPECT_DOUBLE_EQ(this->Snake->GetRadius(), 2.0);
  this->ShowSquare();
  this->Snake->Scale(from, nowhere, 0, 0);
  this->Snake->Translate(from, nowhere);
  this->ExpectPoints(SquarePlaces());
  ExpectNear(this->Center(), { { 0, 0, 0 } }, 0.0);
}

TEST_F(VolumeSnakeWidget, WithoutBothEndsOfAMotionNothingMovesOrScales)
{
  this->ShowSquare();
  double end[3] = { 1.0, 1.0, 0.0 };
  for (bool first : { true, false })
  {
    double* p1 = first ? nullptr : end;
    double* p2 = first ? end : nullptr;
    this->Snake->Translate(p1, p2);
    this->ExpectGenericWarning(
      "zvVolumeSnakeWidget", "give both ends of the motion before moving the contour...");
    this->Snake->Scale(p1, p2, 0, 0);
    this->ExpectGenericWarning(
      "zvVolumeSnakeWidget", "give both ends of the motion before scaling the contour...");
    this->ExpectPoints(SquarePlaces());
    ExpectNear(this->Center(), { { 0, 0, 0 } }, 0.0);
    EXPECT_EQ(this->Snake->GetRadius(), 0.5);
  }
}

TEST_F(VolumeSnakeWidget, WithoutAnInteractorNothingScales)
{
  vtkNew<zvVolumeSnakeWidget> lonely;
  lonely->CreateInitialSnake();
  lonely->SetRadius(9.0);
  double from[3] = { 0.0, 0.0, 0.0 };
  double to[3] = { 1.0, 0.0, 0.0 };
  lonely->Scale(from, to, 0, 0);
  this->ExpectGenericWarning("zvVolumeSnakeWidget", "set interactor before scaling the contour...");
  EXPECT_EQ(lonely->GetRadius(), 9.0);
  EXPECT_EQ(lonely->GetSnake()->GetPoint(0)[0], 0.5);
  lonely->Translate(from, to); // needs none
  EXPECT_EQ(lonely->GetSnake()->GetPoint(0)[0], 1.5);
}

// ---- Traces

TEST_F(VolumeSnakeWidget, TheseOperationsWriteATraceFirst)
{
  zvtest::OpenVolumeSnake* w = this->Snake;
  double p[3] = { 1, 2, 3 };
  auto square = Square();
  struct Row
  {
    const char* Signature;
    std::function<void()> Call;
  };
  const Row rows[] = {
    { "void zvVolumeSnakeWidget::GetResolution()", [&] { w->GetResolution(); } },
    { "void zvVolumeSnakeWidget::SetRadius(double arg)", [&] { w->SetRadius(1.0); } },
    { "double zvVolumeSnakeWidget::GetRadius()", [&] { w->GetRadius(); } },
    { "zvVolumeSnakeWidget::SetCenter(double *center)", [&] { w->SetCenter(p); } },
    { "double * zvVolumeSnakeWidget::GetCenter()", [&] { w->GetCenter(); } },
    { "void zvVolumeSnakeWidget::SetResolution(int arg)", [&] { w->SetResolution(5); } },
    { "zvVolumeSnakeWidget::SetGradient(vtkPolyData *gradient)", [&] { w->SetGradient(square); } },
    { "zvVolumeSnakeWidget::SetFreezeGradient(vtkPolyData *gradient)",
      [&] { w->SetFreezeGradient(square); } },
    { "vtkPolyData *zvVolumeSnakeWidget::GetGradient()", [&] { w->GetGradient(); } },
    { "vtkPolyData *zvVolumeSnakeWidget::GetFreezeGradient()", [&] { w->GetFreezeGradient(); } },
    { "zvVolumeSnakeWidget::SetSnake(vtkPolyData *snake)", [&] { w->SetSnake(square); } },
    { "vtkPolyData *zvVolumeSnakeWidget::GetSnake()", [&] { w->GetSnake(); } },
    { "zvVolumeSnakeWidget::SetPrevSnake(vtkPolyData *snake)", [&] { w->SetPrevSnake(square); } },
    { "void zvVolumeSnakeWidget::CreateInitialSnake()", [&] { w->CreateInitialSnake(); } },
    { "vtkPolyData *zvVolumeSnakeWidget::GetPrevSnake()", [&] { w->GetPrevSnake(); } },
    { "void zvVolumeSnakeWidget::SetRenderer3D(vtkRenderer *render)",
      [&] { w->SetRenderer3D(this->Scene.Renderer(1)); } },
    { "vtkRenderer * zvVolumeSnakeWidget::GetRenderer3D()", [&] { w->GetRenderer3D(); } },
    { "void zvVolumeSnakeWidget::SetSnakes3D(vtkPolyData *snake)",
      [&] { w->SetSnakes3D(square); } },
  };
  for (const Row& row : rows)
  {
    w->DebugMode = true;
    row.Call();
    w->DebugMode = false;
    const std::string output = this->TakeOutput();
    const std::string first = output.substr(0, output.find("\n\n") + 2);
    EXPECT_TRUE(zvtest::IsTrace(first, "zvVolumeSnakeWidget", w, row.Signature)) << output;
  }
}

TEST_F(VolumeSnakeWidget, TheseOperationsWriteNone)
{
  this->ShowSquare();
  zvtest::OpenVolumeSnake* w = this->Snake;
  std::ostringstream text;
  double color[3] = { 1.0, 0.0, 0.0 };
  double from[3] = { 0.0, 0.0, 0.0 };
  w->DebugMode = true;
  w->SetColor(color);
  w->GetColor(color);
  w->SetGradientPointSize(2.0);
  w->GetGradientPointSize();
  w->SetViewGradient(1);
  w->GetViewGradient();
  w->EnableViewGradient(true);
  w->SetZCoordinate(2.0);
  w->GetZCoordinate();
  w->SphereHandleVisibilityOff();
  w->SphereHandleVisibilityOn();
  w->Translate(from, color);
  w->BuildRepresentation();
  w->AddObservers();
  w->CollectRevisions(text);
  w->PrintSelf(text, vtkIndent());
  for (zvtest::Button button : { zvtest::Left, zvtest::Middle, zvtest::Right })
  {
    this->Pointer.Press(button, this->At({ { 0, 0, 0 } }));
    this->Pointer.Release(button);
  }
  this->Pointer.WheelForward(this->At({ { 0, 0, 0 } }));
  this->Pointer.WheelBackward(this->At({ { 0, 0, 0 } }));
  w->SetEnabled(0);
  w->DebugMode = false;
  EXPECT_EQ(this->TakeOutput(), "");
}
