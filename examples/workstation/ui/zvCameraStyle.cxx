#include "zvCameraStyle.h"

#include "vtkObjectFactory.h"
#include "vtkRenderWindowInteractor.h"

vtkStandardNewMacro(zvCameraStyle);

bool zvCameraStyle::FindRendererUnderMouse()
{
  const int* position = this->Interactor->GetEventPosition();
  this->FindPokedRenderer(position[0], position[1]);
  return this->CurrentRenderer != nullptr;
}

void zvCameraStyle::OnLeftButtonDown()
{
  const bool isModified = this->Interactor->GetShiftKey() || this->Interactor->GetControlKey();
  if (!isModified && this->FindRendererUnderMouse())
  {
    this->StartRotate();
  }
}

void zvCameraStyle::OnLeftButtonUp()
{
  this->EndMotion();
}

void zvCameraStyle::OnMiddleButtonDown()
{
  if (!this->FindRendererUnderMouse())
  {
    return;
  }
  if (this->Interactor->GetShiftKey())
  {
    this->StartPan();
  }
  else if (this->Interactor->GetControlKey())
  {
    this->StartDolly();
  }
  else
  {
    this->StartRotate();
  }
}

void zvCameraStyle::OnMiddleButtonUp()
{
  this->EndMotion();
}

void zvCameraStyle::EndMotion()
{
  switch (this->State)
  {
    case VTKIS_ROTATE:
      this->EndRotate();
      break;
    case VTKIS_PAN:
      this->EndPan();
      break;
    case VTKIS_DOLLY:
      this->EndDolly();
      break;
    default:
      break;
  }
}
