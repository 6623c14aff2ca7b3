#include "zvWindowsMapper.h"

#include "zvFourViewsFixture.h"
#include "zvViewPicker.h"

#include "vtkActor.h"
#include "vtkCellArray.h"
#include "vtkCellPicker.h"
#include "vtkDoubleArray.h"
#include "vtkHardwareSelector.h"
#include "vtkNew.h"
#include "vtkPlane.h"
#include "vtkPointData.h"
#include "vtkPoints.h"
#include "vtkPolyData.h"
#include "vtkProperty.h"
#include "vtkSelection.h"
#include "vtkSphereSource.h"

#include <gmock/gmock.h>

#include <functional>

using ::testing::Each;
using ::testing::ElementsAreArray;
using zvtest::ThreeD;
using zvtest::World;
using zvtest::X;
using zvtest::Y;
using zvtest::Z;

namespace
{
const zvtest::Color Black{ 0, 0, 0 };
const zvtest::Region Whole = { { { 0, 0 } }, { { 199, 199 } } };

// A ball, drawn by our mapper and by a stock one.
class WindowsMapper : public zvtest::FourViews
{
protected:
  WindowsMapper()
  {
    this->Ball->SetRadius(5);
    this->Ball->SetThetaResolution(20);
    this->Ball->SetPhiResolution(20);
    for (vtkPolyDataMapper* mapper :
      { static_cast<vtkPolyDataMapper*>(this->Mapper), this->Stock.Get() })
    {
      mapper->SetInputConnection(this->Ball->GetOutputPort());
    }
    this->Actor->SetMapper(this->Mapper);
  }

  void AddToAll()
  {
    for (zvtest::View view : zvtest::AllViews)
    {
      this->Renderer(view)->AddActor(this->Actor);
    }
  }

  std::vector<int> CountSeen()
  {
    std::vector<int> seen;
    for (zvtest::View view : zvtest::AllViews)
    {
      seen.push_back(this->In(view).RenderAndLook().CountOther(Black, Whole));
    }
    return seen;
  }

  /// What all views show, once by each mapper.
  void ExpectTheSamePicturesAsTheStockMappers()
  {
    for (zvtest::View view : zvtest::AllViews)
    {
      this->Actor->SetMapper(this->Mapper);
      const zvtest::Picture ours = this->In(view).RenderAndLook();
      this->Actor->SetMapper(this->Stock);
      const zvtest::Picture stock = this->In(view).RenderAndLook();
      this->Actor->SetMapper(this->Mapper);
      EXPECT_GT(ours.CountOther(Black, Whole), 100) << view;
      EXPECT_EQ(ours.CountDifferent(stock, 0), 0) << view;
    }
  }

  vtkNew<vtkSphereSource> Ball;
  vtkNew<zvWindowsMapper> Mapper;
  vtkNew<vtkPolyDataMapper> Stock;
  vtkNew<vtkActor> Actor;
};
}

TEST_F(WindowsMapper, DrawsInEveryWindowWhatAStockMapperDraws)
{
  this->AddToAll();
  this->ExpectTheSamePicturesAsTheStockMappers();
  EXPECT_EQ(this->Mapper->GetNumberOfWindows(), 4);
  this->Ball->SetCenter(3, -2, 1);
  this->Actor->GetProperty()->SetColor(1, 0.5, 0);
  this->ExpectTheSamePicturesAsTheStockMappers();
  this->Ball->SetRadius(2);
  this->Actor->SetPosition(-1, 1, 0);
  this->ExpectTheSamePicturesAsTheStockMappers();
  EXPECT_EQ(this->Mapper->GetNumberOfWindows(), 4);
}

TEST_F(WindowsMapper, FollowsItsSettings)
{
  vtkNew<vtkPoints> points;
  points->InsertNextPoint(-5, -5, -4);
  points->InsertNextPoint(5, -5, 5);
  points->InsertNextPoint(0, 6, -6);
  vtkNew<vtkCellArray> triangles;
  triangles->InsertNextCell({ 0, 1, 2 });
  vtkNew<vtkDoubleArray> heights;
  heights->InsertNextValue(0.0);
  heights->InsertNextValue(1.0);
  heights->InsertNextValue(2.0);
  vtkNew<vtkPolyData> data;
  data->SetPoints(points);
  data->SetPolys(triangles);
  data->GetPointData()->SetScalars(heights);
  this->AddToAll();
  const auto both = [this](const std::function<void(vtkPolyDataMapper*)>& change)
  {
    change(this->Mapper);
    change(this->Stock);
    this->ExpectTheSamePicturesAsTheStockMappers();
  };
  both([&data](vtkPolyDataMapper* mapper) { mapper->SetInputData(data); });
  both([](vtkPolyDataMapper* mapper) { mapper->SetScalarRange(0.0, 2.0); });
  both([](vtkPolyDataMapper* mapper) { mapper->ScalarVisibilityOff(); });
  vtkNew<vtkPlane> plane;
  plane->SetNormal(1, 0, 0);
  both([&plane](vtkPolyDataMapper* mapper) { mapper->AddClippingPlane(plane); });
  both([](vtkPolyDataMapper* mapper) { mapper->RemoveAllClippingPlanes(); });
  points->SetPoint(2, 3, 4, 5);
  points->Modified();
  this->ExpectTheSamePicturesAsTheStockMappers();
  both(
    [this](vtkPolyDataMapper* mapper) { mapper->SetInputConnection(this->Ball->GetOutputPort()); });
}

TEST_F(WindowsMapper, WithoutInputNothingIsDrawn)
{
  this->AddToAll();
  this->Mapper->SetInputData(nullptr);
  this->Mapper->RemoveAllInputConnections(0);
  double bounds[6];
  this->Mapper->GetBounds(bounds);
  EXPECT_GT(bounds[0], bounds[1]); // none
  this->TakeMessages();
}

TEST_F(WindowsMapper, HasTheBoundsOfAStockMapper)
{
  const auto expectSame = [this]()
  {
    double ours[6];
    double stock[6];
    this->Mapper->GetBounds(ours);
    this->Stock->GetBounds(stock);
    EXPECT_THAT(ours, ElementsAreArray(stock));
  };
  expectSame();
  this->Ball->SetCenter(1, 2, 3);
  expectSame();
  vtkNew<vtkPoints> points;
  points->InsertNextPoint(0, 0, 0);
  points->InsertNextPoint(1, 1, 1);
  points->InsertNextPoint(9, 9, 9); // of no cell
  vtkNew<vtkCellArray> lines;
  lines->InsertNextCell({ 0, 1 });
  vtkNew<vtkPolyData> data;
  data->SetPoints(points);
  data->SetLines(lines);
  this->Mapper->SetInputData(data);
  this->Stock->SetInputData(data);
  expectSame();
  points->SetPoint(1, 2, 2, 2);
  points->Modified();
  expectSame();
  vtkNew<vtkPolyData> empty;
  this->Mapper->SetInputData(empty);
  this->Stock->SetInputData(empty);
  expectSame();
  this->Mapper->RemoveAllInputConnections(0);
  this->Stock->RemoveAllInputConnections(0);
  expectSame();
}

TEST_F(WindowsMapper, IsPickedAsAStockMapperIs)
{
  vtkNew<vtkCellPicker> picker;
  picker->SetTolerance(0.005);
  picker->PickFromListOn();
  picker->AddPickList(this->Actor);
  this->AddToAll();
  for (bool isRendered : { false, true })
  {
    for (zvtest::View view : zvtest::AllViews)
    {
      for (int x = 55; x < 150; x += 9)
      {
        this->Actor->SetMapper(this->Stock);
        const int expected = picker->Pick(x, 95, 0, this->Renderer(view));
        World position;
        picker->GetPickPosition(position.data());
        const vtkIdType cell = picker->GetCellId();
        this->Actor->SetMapper(this->Mapper);
        EXPECT_EQ(picker->Pick(x, 95, 0, this->Renderer(view)), expected) << view << " " << x;
        EXPECT_THAT(picker->GetPickPosition()[0], position[0]);
        EXPECT_THAT(picker->GetPickPosition()[2], position[2]);
        EXPECT_EQ(picker->GetCellId(), cell);
        EXPECT_EQ(picker->GetMapper(), expected ? this->Mapper.Get() : nullptr);
      }
      if (isRendered)
      {
        this->In(view).Render();
      }
    }
  }
}

TEST_F(WindowsMapper, IsSelectedByTheHardwareAsAStockMapperIs)
{
  this->AddToAll();
  EXPECT_TRUE(this->Mapper->GetSupportsSelection());
  for (zvtest::View view : { Z, X })
  {
    this->In(view).Render();
    vtkNew<vtkHardwareSelector> selector;
    selector->SetRenderer(this->Renderer(view));
    selector->SetArea(100, 100, 101, 101);
    selector->SetFieldAssociation(vtkDataObject::FIELD_ASSOCIATION_CELLS);
    const auto ours = vtkSmartPointer<vtkSelection>::Take(selector->Select());
    EXPECT_EQ(ours->GetNumberOfNodes(), 1u) << view;
  }
}

TEST_F(WindowsMapper, ReleasesOneWindowAndKeepsTheOthers)
{
  this->AddToAll();
  const std::vector<int> seen = this->CountSeen();
  this->Renderer(Y)->RemoveActor(this->Actor);
  EXPECT_EQ(this->Mapper->GetNumberOfWindows(), 3);
  std::vector<int> fewer = seen;
  fewer[Y] = 0;
  EXPECT_EQ(this->CountSeen(), fewer);
  this->Renderer(Y)->AddActor(this->Actor);
  EXPECT_EQ(this->CountSeen(), seen);
  EXPECT_EQ(this->Mapper->GetNumberOfWindows(), 4);
  this->Mapper->ReleaseGraphicsResources(nullptr); // of all
  EXPECT_EQ(this->Mapper->GetNumberOfWindows(), 0);
  EXPECT_EQ(this->CountSeen(), seen);
}

TEST_F(WindowsMapper, SurvivesWindowsThatDieAndServesNewOnes)
{
  this->AddToAll();
  const std::vector<int> seen = this->CountSeen();
  for (int round = 0; round < 3; ++round)
  {
    this->Scenes[Y].reset();
    this->Scenes[ThreeD].reset();
    EXPECT_EQ(this->In(X).RenderAndLook().CountOther(Black, Whole), seen[X]);
    this->MakeViews();
    this->AddToAll();
    EXPECT_EQ(this->CountSeen(), seen);
    EXPECT_EQ(this->Mapper->GetNumberOfWindows(), 4);
  }
}

TEST_F(WindowsMapper, AnActorMayOutliveAllWindowsAndDieLast)
{
  this->AddToAll();
  this->CountSeen();
  for (auto& scene : this->Scenes)
  {
    scene.reset();
  }
  this->Ball->SetRadius(3);
  double bounds[6];
  this->Mapper->GetBounds(bounds);
  EXPECT_NEAR(bounds[5], 3, 1e-5);
  this->Mapper->ReleaseGraphicsResources(nullptr);
}

TEST_F(WindowsMapper, AnActorMayDieWhileItsWindowsLive)
{
  {
    vtkNew<zvWindowsMapper> mapper;
    mapper->SetInputConnection(this->Ball->GetOutputPort());
    vtkNew<vtkActor> actor;
    actor->SetMapper(mapper);
    for (zvtest::View view : zvtest::AllViews)
    {
      this->Renderer(view)->AddActor(actor);
      this->In(view).Render();
      this->Renderer(view)->RemoveActor(actor);
    }
    this->Renderer(Z)->AddActor(actor);
    this->In(Z).Render();
  }
  this->Renderer(Z)->RemoveAllViewProps();
  EXPECT_THAT(this->CountSeen(), Each(0));
}

TEST_F(WindowsMapper, DrawsInTwoRenderersOfOneWindow)
{
  zvtest::SceneOptions options;
  options.Viewports = 2;
  zvtest::Scene scene(options);
  for (int viewport : { 0, 1 })
  {
    scene.Renderer(viewport)->AddActor(this->Actor);
    scene.LookAlong(2, viewport);
  }
  const zvtest::Picture picture = scene.RenderAndLook();
  EXPECT_GT(picture.CountOther(Black, { { { 0, 0 } }, { { 199, 399 } } }), 100);
  EXPECT_GT(picture.CountOther(Black, { { { 200, 0 } }, { { 399, 399 } } }), 100);
  EXPECT_EQ(this->Mapper->GetNumberOfWindows(), 1);
}

TEST_F(WindowsMapper, WithoutAWindowNothingIsDrawn)
{
  vtkNew<vtkRenderer> windowless;
  this->Mapper->Render(nullptr, this->Actor);
  this->Mapper->Render(windowless, this->Actor);
  this->Mapper->RenderPiece(windowless, this->Actor);
  EXPECT_EQ(this->Mapper->GetNumberOfWindows(), 0);
}
