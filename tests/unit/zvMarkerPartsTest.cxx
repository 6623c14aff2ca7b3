#include "zvMarkerParts.h"

#include "zvTestKit.h"

#include "vtkActor.h"
#include "vtkCellPicker.h"
#include "vtkCollection.h"
#include "vtkMapper.h"
#include "vtkNew.h"
#include "vtkPolyData.h"
#include "vtkPropCollection.h"
#include "vtkProperty.h"
#include "vtkRenderer.h"
#include "vtkSphereSource.h"

#include <gmock/gmock.h>

#include <cmath>
#include <sstream>

using ::testing::ElementsAre;
using ::testing::IsNan;

namespace
{
constexpr double Origin[3] = { 0, 0, 0 };

class MarkerParts : public zvtest::QuietTest
{
protected:
  vtkSphereSource* SphereAt(int i)
  {
    return vtkSphereSource::SafeDownCast(this->Spheres->GetItemAsObject(i));
  }
  vtkActor* ActorAt(int i) { return vtkActor::SafeDownCast(this->Actors->GetItemAsObject(i)); }

  void Fill(int count)
  {
    for (int i = 0; i < count; ++i)
    {
      const auto sphere = zvMarkerParts::MakeSphere(Origin, 1.0);
      this->Spheres->AddItem(sphere);
      this->Actors->AddItem(zvMarkerParts::MakeActor(sphere, this->Normal));
    }
  }

  std::string Looks()
  {
    std::string looks;
    for (int i = 0; i < this->Actors->GetNumberOfItems(); ++i)
    {
      looks += this->ActorAt(i)->GetProperty() == this->Selected.Get() ? "*"
        : this->ActorAt(i)->GetProperty() == this->Normal.Get()        ? "."
                                                                       : "?";
    }
    return looks;
  }

  vtkNew<vtkCollection> Spheres;
  vtkNew<vtkCollection> Actors;
  vtkNew<vtkProperty> Normal;
  vtkNew<vtkProperty> Selected;
};
}

TEST_F(MarkerParts, ASphereIsSmoothAndInItsPlace)
{
  const double center[3] = { 1, -2, 3 };
  const auto sphere = zvMarkerParts::MakeSphere(center, 0.5);
  EXPECT_EQ(sphere->GetThetaResolution(), 20);
  EXPECT_EQ(sphere->GetPhiResolution(), 20);
  EXPECT_EQ(sphere->GetRadius(), 0.5);
  sphere->Update();
  const double* bounds = sphere->GetOutput()->GetBounds();
  EXPECT_NEAR(bounds[0], 0.5, 0.01); // flat between its corners
  EXPECT_NEAR(bounds[4], 2.5, 1e-5); // a pole
}

TEST_F(MarkerParts, AnActorDrawsItsSourceInItsLook)
{
  const auto sphere = zvMarkerParts::MakeSphere(Origin, 2.0);
  const auto actor = zvMarkerParts::MakeActor(sphere, this->Normal);
  EXPECT_EQ(actor->GetProperty(), this->Normal.Get());
  EXPECT_EQ(actor->GetMapper()->GetInputAlgorithm(), sphere);
  EXPECT_NEAR(actor->GetBounds()[5], 2.0, 1e-5);
}

TEST_F(MarkerParts, APickerHasAnEmptyListAndUsesIt)
{
  const auto picker = zvMarkerParts::MakePicker(0.007);
  EXPECT_EQ(picker->GetTolerance(), 0.007);
  EXPECT_EQ(picker->GetPickFromList(), 1);
  EXPECT_EQ(picker->GetPickList()->GetNumberOfItems(), 0);
}

TEST_F(MarkerParts, APropertyHasItsColourAndIsElseTheDefault)
{
  const auto property = zvMarkerParts::MakeProperty(0.25, 0.5, 1.0);
  EXPECT_THAT(
    std::vector<double>(property->GetColor(), property->GetColor() + 3), ElementsAre(0.25, 0.5, 1));
  EXPECT_EQ(property->GetAmbient(), this->Normal->GetAmbient());
  EXPECT_EQ(property->GetDiffuse(), this->Normal->GetDiffuse());
}

TEST_F(MarkerParts, EverySphereGetsTheRadius)
{
  zvMarkerParts::SetRadius(this->Spheres, 3.0); // none
  this->Fill(3);
  zvMarkerParts::SetRadius(this->Spheres, 3.0);
  for (int i = 0; i < 3; ++i)
  {
    EXPECT_EQ(this->SphereAt(i)->GetRadius(), 3.0);
  }
}

TEST_F(MarkerParts, SpheresSpreadFromTheLowToTheHighCorner)
{
  const double bounds[6] = { -2, 2, 0, 8, 10, 20 };
  zvMarkerParts::Spread(this->Spheres, bounds); // none
  this->Fill(5);
  zvMarkerParts::Spread(this->Spheres, bounds);
  for (int i = 0; i < 5; ++i)
  {
    EXPECT_THAT(
      std::vector<double>(this->SphereAt(i)->GetCenter(), this->SphereAt(i)->GetCenter() + 3),
      ElementsAre(-2.0 + i, 2.0 * i, 10.0 + 2.5 * i));
  }
}

TEST_F(MarkerParts, ASingleSphereSpreadsNowhereByDesign)
{
  const double bounds[6] = { -2, 2, 0, 8, 10, 20 };
  this->Fill(1);
  zvMarkerParts::Spread(this->Spheres, bounds);
  EXPECT_THAT(this->SphereAt(0)->GetCenter()[0], IsNan());
  EXPECT_THAT(this->SphereAt(0)->GetCenter()[2], IsNan());
}

TEST_F(MarkerParts, OneActorLooksSelectedOrNone)
{
  zvMarkerParts::Highlight(this->Actors, 0, this->Normal, this->Selected); // none
  this->Fill(3);
  zvMarkerParts::Highlight(this->Actors, 1, this->Normal, this->Selected);
  EXPECT_EQ(this->Looks(), ".*.");
  zvMarkerParts::Highlight(this->Actors, 2, this->Normal, this->Selected);
  EXPECT_EQ(this->Looks(), "..*");
  for (int index : { -1, 3 })
  {
    zvMarkerParts::Highlight(this->Actors, 0, this->Normal, this->Selected);
    zvMarkerParts::Highlight(this->Actors, index, this->Normal, this->Selected);
    EXPECT_EQ(this->Looks(), "...");
  }
}

TEST_F(MarkerParts, ALookThatStaysIsNoChange)
{
  this->Fill(3);
  zvMarkerParts::Highlight(this->Actors, 1, this->Normal, this->Selected);
  const vtkMTimeType before = this->ActorAt(0)->GetMTime();
  const vtkMTimeType selected = this->ActorAt(1)->GetMTime();
  zvMarkerParts::Highlight(this->Actors, 1, this->Normal, this->Selected);
  EXPECT_EQ(this->ActorAt(0)->GetMTime(), before);
  EXPECT_EQ(this->ActorAt(1)->GetMTime(), selected);
}

TEST_F(MarkerParts, ActorsAreTakenOutOfAllTheirViews)
{
  vtkNew<vtkRenderer> one;
  vtkNew<vtkRenderer> two;
  vtkNew<vtkActor> other;
  this->Fill(3);
  for (int i = 0; i < 3; ++i)
  {
    one->AddActor(this->ActorAt(i));
    two->AddActor(this->ActorAt(i));
  }
  two->AddActor(other);
  zvMarkerParts::TakeOut(this->Actors);
  EXPECT_EQ(one->GetViewProps()->GetNumberOfItems(), 0);
  EXPECT_EQ(two->GetViewProps()->GetNumberOfItems(), 1);
}

TEST_F(MarkerParts, PrintsOneLineAField)
{
  std::ostringstream text;
  zvMarkerParts::Print(text, vtkIndent(2), { this->Normal, nullptr, 1, 0, -1.5 });
  std::ostringstream expected;
  expected << "  Handle Property: " << this->Normal.Get() << "\n"
           << "  Selected Handle Property: (none)\n  Project To Plane: On\n"
           << "  Projection Normal: 0\n  Projection Position: -1.5\n";
  EXPECT_EQ(text.str(), expected.str());
}
