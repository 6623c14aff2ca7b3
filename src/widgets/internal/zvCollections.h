#ifndef zvCollections_h
#define zvCollections_h

#include "vtkCollection.h"
#include "vtkSmartPointer.h"

#include <vector>

/// Walks over a vtkCollection, which is a linked list: by index they would be quadratic.
namespace zvCollections
{
/// The items of a class, in order, held so that a walk survives whatever is done to the collection.
template <typename Item>
std::vector<vtkSmartPointer<Item>> ItemsOf(vtkCollection* collection)
{
  std::vector<vtkSmartPointer<Item>> items;
  items.reserve(collection->GetNumberOfItems());
  vtkCollectionSimpleIterator at;
  collection->InitTraversal(at);
  while (vtkObject* object = collection->GetNextItemAsObject(at))
  {
    if (Item* item = Item::SafeDownCast(object))
    {
      items.emplace_back(item);
    }
  }
  return items;
}

/// The item added last, or null.
template <typename Item>
Item* LastOf(vtkCollection* collection)
{
  return Item::SafeDownCast(collection->GetItemAsObject(collection->GetNumberOfItems() - 1));
}

/// Release the reference with which each item was made, then empty the collection.
inline void ReleaseAll(vtkCollection* collection)
{
  const auto items = ItemsOf<vtkObject>(collection);
  collection->RemoveAllItems();
  for (const auto& item : items)
  {
    item->Delete();
  }
}
}

#endif
