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

/// Call \a action(item, index) for the items of a class, in order. It must leave the collection as
/// it is: nothing is held, which makes this the quicker walk.
template <typename Item, typename Action>
void ForEach(vtkCollection* collection, const Action& action)
{
  vtkCollectionSimpleIterator at;
  collection->InitTraversal(at);
  for (int index = 0; vtkObject* object = collection->GetNextItemAsObject(at); ++index)
  {
    if (Item* item = Item::SafeDownCast(object))
    {
      action(item, index);
    }
  }
}

/// The same for a collection that holds nothing else than items of the class, or derived from it:
/// asking each for its class would take longer than most actions.
template <typename Item, typename Action>
void ForEachOwn(vtkCollection* collection, const Action& action)
{
  vtkCollectionSimpleIterator at;
  collection->InitTraversal(at);
  for (int index = 0; vtkObject* object = collection->GetNextItemAsObject(at); ++index)
  {
    action(static_cast<Item*>(object), index);
  }
}

/// The item at \a index if it is there and of the class, or null.
template <typename Item>
Item* ItemAt(vtkCollection* collection, int index)
{
  return Item::SafeDownCast(collection->GetItemAsObject(index));
}

/// The place of \a object, or -1.
inline int IndexOf(vtkCollection* collection, vtkObject* object)
{
  return collection->IsItemPresent(object) - 1;
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
