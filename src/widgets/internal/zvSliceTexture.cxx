#include "zvSliceTexture.h"

#include <vtkObjectFactory.h>

vtkObjectFactoryNewMacro(zvSliceTexture);
