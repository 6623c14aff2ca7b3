#include "zvPolygonCut.h"

#include "vtkNew.h"
#include "vtkPlane.h"
#include "vtkPlaneCollection.h"

#include <gmock/gmock.h>

using ::testing::ElementsAre;
using zvPolygonCut::Corner;
using zvPolygonCut::Polygon;

namespace
{
class PolygonCut : public ::testing::Test
{
protected:
  void AddPlane(double x, double y, double z, double nx, double ny, double nz)
  {
    vtkNew<vtkPlane> plane;
    plane->SetOrigin(x, y, z);
    plane->SetNormal(nx, ny, nz);
    this->Planes->AddItem(plane);
  }

  Polygon Keep() { return zvPolygonCut::Keep(this->Square, this->Planes); }

  static void ExpectCorner(const Corner& corner, double x, double y, double s, double t)
  {
    EXPECT_THAT(corner.Point, ElementsAre(x, y, 3.0));
    EXPECT_THAT(corner.TexturePoint, ElementsAre(s, t));
  }

  void ExpectAllOfIt()
  {
    const Polygon kept = this->Keep();
    ASSERT_EQ(kept.size(), 4U);
    for (std::size_t i = 0; i < 4; ++i)
    {
      EXPECT_EQ(kept[i].Point, this->Square[i].Point) << i;
      EXPECT_EQ(kept[i].TexturePoint, this->Square[i].TexturePoint) << i;
    }
  }

  // Eight by eight, textured once.
  const Polygon Square = { { { { 0, 0, 3 } }, { { 0, 0 } } }, { { { 8, 0, 3 } }, { { 1, 0 } } },
    { { { 8, 8, 3 } }, { { 1, 1 } } }, { { { 0, 8, 3 } }, { { 0, 1 } } } };
  vtkNew<vtkPlaneCollection> Planes;
};
}

TEST_F(PolygonCut, WithoutPlanesAllOfItStays)
{
  this->ExpectAllOfIt();
}

TEST_F(PolygonCut, InsideAllOfItStays)
{
  this->AddPlane(-0.1, 0, 0, 1, 0, 0);
  this->AddPlane(8.1, 0, 0, -1, 0, 0);
  this->ExpectAllOfIt();
}

TEST_F(PolygonCut, APlaneThroughASideLeavesItWhole)
{
  this->AddPlane(0, 0, 0, 1, 0, 0);
  this->AddPlane(0, 0, 3, 0, 0, 1);
  this->ExpectAllOfIt();
}

TEST_F(PolygonCut, APlaneAcrossTakesTheTextureAlong)
{
  this->AddPlane(2, 0, 0, 1, 0, 0);
  const Polygon kept = this->Keep();
  ASSERT_EQ(kept.size(), 4U);
  ExpectCorner(kept[0], 2, 0, 0.25, 0);
  ExpectCorner(kept[1], 8, 0, 1, 0);
  ExpectCorner(kept[2], 8, 8, 1, 1);
  ExpectCorner(kept[3], 2, 8, 0.25, 1);
}

TEST_F(PolygonCut, ACornerCutOffBecomesTwo)
{
  this->AddPlane(4, 8, 3, -1, -1, 0); // keeps what is below the line from (4, 8) to (8, 4)
  const Polygon kept = this->Keep();
  ASSERT_EQ(kept.size(), 5U);
  ExpectCorner(kept[0], 0, 0, 0, 0);
  ExpectCorner(kept[1], 8, 0, 1, 0);
  ExpectCorner(kept[2], 8, 4, 1, 0.5);
  ExpectCorner(kept[3], 4, 8, 0.5, 1);
  ExpectCorner(kept[4], 0, 8, 0, 1);
}

TEST_F(PolygonCut, PlanesCutOneAfterTheOther)
{
  this->AddPlane(2, 0, 0, 1, 0, 0);
  this->AddPlane(0, 6, 0, 0, -1, 0);
  const Polygon kept = this->Keep();
  ASSERT_EQ(kept.size(), 4U);
  ExpectCorner(kept[0], 2, 0, 0.25, 0);
  ExpectCorner(kept[1], 8, 0, 1, 0);
  ExpectCorner(kept[2], 8, 6, 1, 0.75);
  ExpectCorner(kept[3], 2, 6, 0.25, 0.75);
}

TEST_F(PolygonCut, OutsideNoPolygonIsLeft)
{
  this->AddPlane(9, 0, 0, 1, 0, 0);
  EXPECT_LT(this->Keep().size(), 3U);
  this->Planes->RemoveAllItems();
  this->AddPlane(0, 0, 4, 0, 0, 1);
  this->AddPlane(2, 0, 0, 1, 0, 0);
  EXPECT_LT(this->Keep().size(), 3U);
}
