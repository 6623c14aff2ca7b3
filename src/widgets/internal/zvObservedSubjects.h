#ifndef zvObservedSubjects_h
#define zvObservedSubjects_h

#include "vtkWeakPointer.h"

#include <vector>

class vtkCommand;
class vtkObject;

/// Where a widget's command is attached. A widget whose host changes its interactor while it is not
/// enabled, or writes it directly, leaves its command on the old one; without this list nobody
/// could take the command off before the widget, which it refers to, is gone.
namespace zvObservedSubjects
{
using List = std::vector<vtkWeakPointer<vtkObject>>;

/// Note that a command was attached to \a subject. Null and repetitions are ignored.
void Add(List& list, vtkObject* subject);

/// Take \a command off all that are still there, and forget them.
void Release(List& list, vtkCommand* command);
}

#endif
