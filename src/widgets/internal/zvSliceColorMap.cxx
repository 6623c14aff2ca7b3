#include "zvSliceColorMap.h"

#include <vtkObjectFactory.h>

vtkObjectFactoryNewMacro(zvSliceColorMap);
