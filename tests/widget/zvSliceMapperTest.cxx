// The cutting mapper promises the picture of a stock mapper with the same clipping planes. Every
// test draws a textured plane by both.
#include "zvSliceMapper.h"

#include "zvDice.h"
#include "zvTestKit.h"

#include "vtkActor.h"
#include "vtkCellPicker.h"
#include "vtkHardwareSelector.h"
#include "vtkImageData.h"
#include "vtkNew.h"
#include "vtkPlane.h"
#include "vtkPlaneCollection.h"
#include "vtkPlaneSource.h"
#include "vtkPointData.h"
#include "vtkPoints.h"
#include "vtkPolyData.h"
#include "vtkProperty.h"
#include "vtkSelection.h"
#include "vtkSelectionNode.h"
#include "vtkTexture.h"
#include "vtkWeakPointer.h"

#include <gmock/gmock.h>

#include <functional>

using zvtest::Dice;
using zvtest::Picture;
using zvtest::World;

namespace
{
const zvtest::Color Black{ 0, 0, 0 };

class SliceMapper : public zvtest::QuietTest
{
protected:
  SliceMapper()
  {
    this->MakeTexture();
    this->Plane->SetOrigin(-10, -10, 0);
    this->Plane->SetPoint1(10, -10, 0);
    this->Plane->SetPoint2(-10, 10, 0);
    for (vtkPolyDataMapper* mapper : this->Both())
    {
      mapper->SetInputConnection(this->Plane->GetOutputPort());
    }
    this->Actor->SetMapper(this->Mapper);
    this->Actor->SetTexture(this->Texture);
    this->Actor->GetProperty()->LightingOff();
    this->Scene.Renderer()->AddActor(this->Actor);
    const double bounds[6] = { -10, 10, -10, 10, -10, 10 };
    this->Scene.LookAlong(2);
    this->Scene.ResetCamera(bounds);
  }

  std::vector<vtkPolyDataMapper*> Both() { return { this->Mapper, this->Stock }; }

  // Greys that tell every place of the plane from every other, none of them black.
  void MakeTexture()
  {
    vtkNew<vtkImageData> image;
    image->SetDimensions(16, 16, 1);
    image->AllocateScalars(VTK_UNSIGNED_CHAR, 4);
    for (int y = 0; y < 16; ++y)
    {
      for (int x = 0; x < 16; ++x)
      {
        auto* const texel = static_cast<unsigned char*>(image->GetScalarPointer(x, y, 0));
        texel[0] = static_cast<unsigned char>(50 + 12 * x);
        texel[1] = static_cast<unsigned char>(50 + 12 * y);
        texel[2] = 60;
        texel[3] = 255;
      }
    }
    this->Texture->SetInputData(image);
    this->Texture->InterpolateOn();
    this->Texture->SetColorModeToDirectScalars();
  }

  void CutAtBox(double size)
  {
    for (vtkPolyDataMapper* mapper : this->Both())
    {
      mapper->RemoveAllClippingPlanes();
    }
    for (int axis = 0; axis < 3; ++axis)
    {
      for (const double side : { -1.0, 1.0 })
      {
        double at[3] = { 0, 0, 0 };
        at[axis] = side * size;
        double inwards[3] = { 0, 0, 0 };
        inwards[axis] = -side;
        vtkNew<vtkPlane> plane;
        plane->SetOrigin(at);
        plane->SetNormal(inwards);
        for (vtkPolyDataMapper* mapper : this->Both())
        {
          mapper->AddClippingPlane(plane);
        }
      }
    }
  }

  Picture DrawBy(vtkPolyDataMapper* mapper)
  {
    this->Actor->SetMapper(mapper);
    return this->Scene.RenderAndLook();
  }

  // The cut goes through some pixels, few of which differ.
  void ExpectTheStockPicture(int seenAtLeast = 1000)
  {
    const Picture stock = this->DrawBy(this->Stock);
    const Picture ours = this->DrawBy(this->Mapper);
    EXPECT_GE(ours.CountOther(Black, this->Whole), seenAtLeast);
    EXPECT_LE(ours.CountDifferent(stock, 1), this->AlongTheCut);
  }

  zvtest::Scene Scene;
  const zvtest::Region Whole = { { { 0, 0 } }, { { 399, 399 } } };
  int AlongTheCut = 10;
  vtkNew<vtkPlaneSource> Plane;
  vtkNew<vtkTexture> Texture;
  vtkNew<vtkActor> Actor;
  vtkNew<zvSliceMapper> Mapper;
  vtkNew<vtkPolyDataMapper> Stock;
};
}

TEST_F(SliceMapper, WithoutPlanesItDrawsAsTheStockMapper)
{
  this->AlongTheCut = 0;
  this->ExpectTheStockPicture(50000);
}

TEST_F(SliceMapper, InsideTheBoxItDrawsAsTheStockMapperDoesWithoutPlanes)
{
  this->CutAtBox(10.5);
  this->AlongTheCut = 0;
  this->ExpectTheStockPicture(50000);
}

TEST_F(SliceMapper, ABoxCutsIt)
{
  this->CutAtBox(5);
  this->ExpectTheStockPicture(10000);
  const Picture picture = this->DrawBy(this->Mapper);
  EXPECT_EQ(picture.At(this->Scene.At({ { 5.5, 0, 0 } })), Black);
  EXPECT_EQ(picture.At(this->Scene.At({ { 0, -5.5, 0 } })), Black);
  EXPECT_NE(picture.At(this->Scene.At({ { 4.5, 0, 0 } })), Black);
  EXPECT_NE(picture.At(this->Scene.At({ { 0, -4.5, 0 } })), Black);
}

TEST_F(SliceMapper, ObliquePlanesAreCutAsTheStockMapperCutsThem)
{
  Dice dice(7);
  for (int i = 0; i < 30; ++i)
  {
    SCOPED_TRACE(i);
    const World direction = { { dice.Real(-1, 1), dice.Real(-1, 1), dice.Real(0.3, 1) } };
    this->CutAtBox(dice.Real(3, 7));
    this->Plane->SetCenter(dice.Real(-2, 2), dice.Real(-2, 2), dice.Real(-2, 2));
    this->Plane->SetNormal(direction[0], direction[1], direction[2]);
    this->ExpectTheStockPicture();
  }
}

TEST_F(SliceMapper, OutsideTheBoxNothingIsDrawn)
{
  this->CutAtBox(5);
  this->Plane->SetCenter(0, 0, 6);
  EXPECT_EQ(this->DrawBy(this->Mapper).CountOther(Black, this->Whole), 0);
  this->Plane->SetCenter(0, 0, 4);
  this->ExpectTheStockPicture(10000);
}

TEST_F(SliceMapper, FollowsItsPlanesAndItsInput)
{
  this->CutAtBox(5);
  this->ExpectTheStockPicture(10000);
  for (vtkPolyDataMapper* mapper : this->Both())
  {
    mapper->GetClippingPlanes()->GetItem(0)->SetOrigin(-2, 0, 0);
  }
  this->ExpectTheStockPicture(5000);
  EXPECT_EQ(this->DrawBy(this->Mapper).At(this->Scene.At({ { -3, 0, 0 } })), Black);
  for (vtkPolyDataMapper* mapper : this->Both())
  {
    mapper->RemoveAllClippingPlanes();
  }
  this->AlongTheCut = 0;
  this->ExpectTheStockPicture(50000);
  vtkNew<vtkPolyData> none;
  for (vtkPolyDataMapper* mapper : this->Both())
  {
    mapper->SetInputData(none);
  }
  EXPECT_EQ(this->DrawBy(this->Mapper).CountOther(Black, this->Whole), 0);
}

TEST_F(SliceMapper, WithoutAnInputItDrawsNothing)
{
  this->Mapper->SetInputConnection(nullptr);
  this->CutAtBox(5);
  this->Mapper->RenderPiece(this->Scene.Renderer(), this->Actor);
  this->Actor->SetMapper(this->Mapper);
  this->Actor->SetTexture(nullptr);
  EXPECT_EQ(this->Mapper->GetInput(), nullptr);
}

TEST_F(SliceMapper, ManyPolygonsAreDrawnTheStockWay)
{
  this->Plane->SetResolution(3, 2);
  this->CutAtBox(5);
  this->AlongTheCut = 0;
  this->ExpectTheStockPicture(10000);
}

TEST_F(SliceMapper, AMovedActorIsDrawnTheStockWay)
{
  this->CutAtBox(5);
  this->Actor->SetPosition(3, 2, 0);
  this->AlongTheCut = 0;
  this->ExpectTheStockPicture(10000);
  // And back again.
  this->Actor->SetPosition(0, 0, 0);
  this->AlongTheCut = 10;
  this->ExpectTheStockPicture(10000);
}

TEST_F(SliceMapper, ItIsLitAsTheStockMapperLightsIt)
{
  this->Actor->GetProperty()->LightingOn();
  this->CutAtBox(5);
  this->Plane->SetNormal(0.3, 0.2, 1);
  this->ExpectTheStockPicture(10000);
}

TEST_F(SliceMapper, KeepsItsInputPlanesAndBounds)
{
  this->CutAtBox(5);
  this->DrawBy(this->Mapper);
  EXPECT_EQ(this->Mapper->GetInputConnection(0, 0), this->Plane->GetOutputPort());
  EXPECT_EQ(this->Mapper->GetClippingPlanes()->GetNumberOfItems(), 6);
  EXPECT_THAT(std::vector<double>(this->Mapper->GetBounds(), this->Mapper->GetBounds() + 6),
    testing::ElementsAre(-10, 10, -10, 10, 0, 0));
}

TEST_F(SliceMapper, IsPickedInsideTheBoxOnly)
{
  this->CutAtBox(5);
  this->DrawBy(this->Mapper);
  vtkNew<vtkCellPicker> picker;
  const auto pick = [&](double x, double y)
  {
    const zvtest::Display at = this->Scene.At({ { x, y, 0 } });
    return picker->Pick(at[0], at[1], 0, this->Scene.Renderer());
  };
  EXPECT_EQ(pick(4, 4), 1);
  EXPECT_EQ(picker->GetActor(), this->Actor.Get());
  EXPECT_EQ(pick(6, 0), 0);
}

TEST_F(SliceMapper, IsFoundByAHardwareSelection)
{
  this->CutAtBox(5);
  this->DrawBy(this->Mapper);
  vtkNew<vtkHardwareSelector> selector;
  selector->SetRenderer(this->Scene.Renderer());
  const auto countAt = [&](double x, double y)
  {
    const zvtest::Display at = this->Scene.At({ { x, y, 0 } });
    const auto x0 = static_cast<unsigned int>(at[0]);
    const auto y0 = static_cast<unsigned int>(at[1]);
    selector->SetArea(x0, y0, x0 + 1, y0 + 1);
    return vtkSmartPointer<vtkSelection>::Take(selector->Select())->GetNumberOfNodes();
  };
  EXPECT_EQ(countAt(4, 4), 1U);
  EXPECT_EQ(countAt(6, 0), 0U);
}

TEST_F(SliceMapper, GoesFromWindowToWindow)
{
  this->CutAtBox(5);
  const Picture before = this->DrawBy(this->Mapper);
  {
    zvtest::Scene other;
    other.Renderer()->AddActor(this->Actor);
    other.ResetCamera();
    EXPECT_GT(other.RenderAndLook().CountOther(Black, this->Whole), 1000);
  }
  EXPECT_EQ(this->DrawBy(this->Mapper).CountDifferent(before, 0), 0);
  this->Mapper->ReleaseGraphicsResources(this->Scene.Window());
  EXPECT_EQ(this->DrawBy(this->Mapper).CountDifferent(before, 0), 0);
}

// A widget lets go of the plane before it lets go of the actor.
TEST_F(SliceMapper, LetsThePlaneGoWithItself)
{
  for (const bool isCut : { true, false })
  {
    vtkWeakPointer<vtkPlaneSource> watched;
    {
      vtkNew<vtkActor> actor;
      vtkNew<zvSliceMapper> mapper;
      actor->SetMapper(mapper);
      actor->SetTexture(this->Texture);
      auto plane = vtkSmartPointer<vtkPlaneSource>::New();
      watched = plane.Get();
      mapper->SetInputConnection(plane->GetOutputPort());
      if (isCut)
      {
        vtkNew<vtkPlane> across;
        across->SetNormal(1, 0, 0);
        mapper->AddClippingPlane(across);
      }
      this->Scene.Renderer()->AddActor(actor);
      this->Scene.Render();
      this->Scene.Renderer()->RemoveActor(actor);
      plane = nullptr;
      EXPECT_NE(watched, nullptr) << "the mapper holds it";
    }
    EXPECT_EQ(watched, nullptr) << isCut;
  }
}
