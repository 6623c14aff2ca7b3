#include "zvSliceReslice.h"

#include <vtkObjectFactory.h>

vtkObjectFactoryNewMacro(zvSliceReslice);
