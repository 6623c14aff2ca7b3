#include "zvPlacedNormal.h"

#include "vtkActor.h"
#include "vtkCellPicker.h"
#include "vtkObjectFactory.h"
#include "vtkPropCollection.h"

vtkStandardNewMacro(zvPlacedNormal);

// All three parts can be picked by then.
bool zvPlacedNormal::IsPlaced()
{
  return this->HandlePicker->GetPickList()->GetNumberOfItems() == 3;
}

// The widget gives its cones three handles' size.
void zvPlacedNormal::SetConeSize(double size)
{
  this->HandleSize = size / 3.0;
}

void zvPlacedNormal::SetVisible(bool visible)
{
  for (vtkActor* actor : { this->Cone1Actor.Get(), this->LineActor.Get(), this->Cone2Actor.Get() })
  {
    actor->SetVisibility(visible ? 1 : 0);
    actor->SetPickable(visible ? 1 : 0);
  }
}
