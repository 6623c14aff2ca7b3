#include "zvPolyDataActor.h"

#include "vtkActor.h"
#include "vtkNew.h"
#include "vtkPolyData.h"
#include "vtkPolyDataMapper.h"
#include "vtkProperty.h"

namespace zvPolyDataActor
{
void Copy(vtkPolyData* own, vtkPolyData* given)
{
  if (own != given)
  {
    own->DeepCopy(given); // of itself it would lose its cells
  }
}

void Draw(vtkActor* actor, vtkPolyData* data)
{
  vtkNew<vtkPolyDataMapper> mapper;
  mapper->SetInputData(data);
  actor->SetMapper(mapper);
}

void SetColor(vtkActor* actor, const double color[3])
{
  vtkNew<vtkProperty> property;
  property->SetColor(color[0], color[1], color[2]);
  actor->SetProperty(property);
}

void SetColor(vtkActor* actor, const double color[3], double pointSize)
{
  SetColor(actor, color);
  actor->GetProperty()->SetPointSize(static_cast<float>(pointSize));
}
}
