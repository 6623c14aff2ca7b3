#include "zvRawView.h"

#include "vtkCallbackCommand.h"
#include "vtkRenderWindow.h"
#include "vtkRenderWindowInteractor.h"
#include "vtkRenderer.h"

zvRawView::zvRawView(vtkObject* owner, const Fields& fields)
  : Owner(owner)
  , Widget(fields)
{
  this->DeleteCommand->SetCallback(zvRawView::OnDelete);
  this->DeleteCommand->SetClientData(this);
}

zvRawView::~zvRawView()
{
  this->ReleaseRenderer();
  this->Watch(this->WatchedInteractor, nullptr);
}

bool zvRawView::Write(vtkRenderer* renderer)
{
  vtkRenderWindow* window = renderer ? renderer->GetRenderWindow() : nullptr;
  if (!window)
  {
    return false;
  }
  vtkRenderer* held = this->RendererIsRaw ? nullptr : this->Widget.Renderer;
  this->Widget.Renderer = renderer;
  this->RendererIsRaw = true;
  this->Watch(this->WatchedRenderer, renderer);
  this->LeaveInteractor(window->GetInteractor());
  this->Widget.Interactor = window->GetInteractor();
  this->Watch(this->WatchedInteractor, this->Widget.Interactor);
  if (held)
  {
    held->UnRegister(this->Owner); // last: it may be the last reference
  }
  return true;
}

void zvRawView::ReleaseRenderer()
{
  if (this->RendererIsRaw)
  {
    this->RendererIsRaw = false;
    this->Widget.Renderer = nullptr;
    this->Watch(this->WatchedRenderer, nullptr);
  }
}

// Tags count from the start on each interactor: on another one they would be somebody else's.
void zvRawView::LeaveInteractor(vtkRenderWindowInteractor* next)
{
  vtkRenderWindowInteractor* left = this->Widget.Interactor;
  if (left && left != next)
  {
    left->RemoveObserver(this->Widget.CharObserverTag);
    left->RemoveObserver(this->Widget.DeleteObserverTag);
    this->Widget.CharObserverTag = 0;
    this->Widget.DeleteObserverTag = 0;
  }
}

void zvRawView::Watch(vtkWeakPointer<vtkObject>& watched, vtkObject* object)
{
  if (watched == object)
  {
    return;
  }
  if (watched)
  {
    watched->RemoveObserver(this->DeleteCommand);
  }
  watched = object;
  if (object)
  {
    object->AddObserver(vtkCommand::DeleteEvent, this->DeleteCommand);
  }
}

void zvRawView::OnDelete(
  vtkObject* caller, unsigned long vtkNotUsed(event), void* clientData, void* vtkNotUsed(callData))
{
  auto* self = static_cast<zvRawView*>(clientData);
  if (caller == self->WatchedRenderer)
  {
    self->ReleaseRenderer();
  }
  else if (caller == self->WatchedInteractor)
  {
    // The base watches an interactor that it was given, and takes its leave by itself.
    if (caller == self->Widget.Interactor && self->Widget.DeleteObserverTag == 0)
    {
      self->Widget.Interactor = nullptr;
    }
    self->Watch(self->WatchedInteractor, nullptr);
  }
}
