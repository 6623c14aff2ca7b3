#include "zvCollections.h"

#include "zvTestKit.h"

#include "vtkActor.h"
#include "vtkNew.h"
#include "vtkPoints.h"

#include <gmock/gmock.h>

#include <utility>

using ::testing::ElementsAre;

namespace
{
// Two actors about something else.
class Collections : public zvtest::QuietTest
{
protected:
  Collections()
  {
    this->Items->AddItem(this->First);
    this->Items->AddItem(this->Points);
    this->Items->AddItem(this->Last);
  }

  vtkNew<vtkActor> First;
  vtkNew<vtkPoints> Points;
  vtkNew<vtkActor> Last;
  vtkNew<vtkCollection> Items;
};
}

TEST_F(Collections, ItemsOfAClassAreHeldInOrder)
{
  const int references = this->First->GetReferenceCount();
  const auto items = zvCollections::ItemsOf<vtkActor>(this->Items);
  EXPECT_THAT(items, ElementsAre(this->First.Get(), this->Last.Get()));
  this->Items->RemoveAllItems();
  EXPECT_EQ(this->First->GetReferenceCount(), references);
}

TEST_F(Collections, AWalkTellsTheItemsOfAClassWithTheirPlaces)
{
  std::vector<std::pair<vtkActor*, int>> seen;
  zvCollections::ForEach<vtkActor>(
    this->Items, [&seen](vtkActor* item, int index) { seen.emplace_back(item, index); });
  EXPECT_THAT(
    seen, ElementsAre(std::make_pair(this->First.Get(), 0), std::make_pair(this->Last.Get(), 2)));
}

TEST_F(Collections, AWalkOverACollectionOfOneClassTellsAll)
{
  this->Items->RemoveItem(this->Points);
  std::vector<std::pair<vtkActor*, int>> seen;
  zvCollections::ForEachOwn<vtkActor>(
    this->Items, [&seen](vtkActor* item, int index) { seen.emplace_back(item, index); });
  EXPECT_THAT(
    seen, ElementsAre(std::make_pair(this->First.Get(), 0), std::make_pair(this->Last.Get(), 1)));
  this->Items->RemoveAllItems();
  zvCollections::ForEachOwn<vtkActor>(this->Items, [](vtkActor*, int) { FAIL(); });
}

TEST_F(Collections, AnItemIsFoundByItsPlaceAndItsClass)
{
  EXPECT_EQ(zvCollections::ItemAt<vtkActor>(this->Items, 2), this->Last.Get());
  EXPECT_EQ(zvCollections::ItemAt<vtkPoints>(this->Items, 1), this->Points.Get());
  EXPECT_EQ(zvCollections::ItemAt<vtkActor>(this->Items, 1), nullptr);
  EXPECT_EQ(zvCollections::ItemAt<vtkActor>(this->Items, 3), nullptr);
  EXPECT_EQ(zvCollections::ItemAt<vtkActor>(this->Items, -1), nullptr);
}

TEST_F(Collections, APlaceIsFoundByItsItem)
{
  EXPECT_EQ(zvCollections::IndexOf(this->Items, this->First), 0);
  EXPECT_EQ(zvCollections::IndexOf(this->Items, this->Last), 2);
  vtkNew<vtkActor> stranger;
  EXPECT_EQ(zvCollections::IndexOf(this->Items, stranger), -1);
  EXPECT_EQ(zvCollections::IndexOf(this->Items, nullptr), -1);
}

TEST_F(Collections, TheLastIsTheOneAddedLast)
{
  EXPECT_EQ(zvCollections::LastOf<vtkActor>(this->Items), this->Last.Get());
  EXPECT_EQ(zvCollections::LastOf<vtkPoints>(this->Items), nullptr);
  vtkNew<vtkCollection> empty;
  EXPECT_EQ(zvCollections::LastOf<vtkActor>(empty), nullptr);
}
