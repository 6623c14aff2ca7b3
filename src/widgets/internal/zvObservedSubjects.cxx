#include "zvObservedSubjects.h"

#include "vtkCommand.h"
#include "vtkObject.h"

#include <algorithm>

void zvObservedSubjects::Add(List& list, vtkObject* subject)
{
  list.erase(std::remove(list.begin(), list.end(), nullptr), list.end());
  if (subject && std::find(list.begin(), list.end(), subject) == list.end())
  {
    list.emplace_back(subject);
  }
}

void zvObservedSubjects::Release(List& list, vtkCommand* command)
{
  const List subjects(list);
  list.clear();
  for (vtkObject* subject : subjects)
  {
    if (subject)
    {
      subject->RemoveObserver(command);
    }
  }
}
