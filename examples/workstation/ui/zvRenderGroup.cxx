#include "zvRenderGroup.h"

#include "QVTKOpenGLNativeWidget.h"

#include "vtkCommand.h"
#include "vtkRenderWindowInteractor.h"

#include <utility>

zvRenderGroup::~zvRenderGroup()
{
  for (Member& member : this->Members)
  {
    if (member.Interactor)
    {
      member.Interactor->RemoveObserver(member.Observer);
    }
  }
}

void zvRenderGroup::Add(QVTKOpenGLNativeWidget* view)
{
  this->Members.emplace_back();
  Member& member = this->Members.back();
  member.View = view;
  member.Interactor = view->interactor();
  // Told at every wish to render, also while rendering is off.
  member.Observer =
    view->interactor()->AddObserver(vtkCommand::RenderEvent, &member, &Member::Note);
}

void zvRenderGroup::Begin()
{
  if (this->Depth++ > 0)
  {
    return;
  }
  for (Member& member : this->Members)
  {
    member.IsAsked = false;
    if (member.Interactor)
    {
      member.Interactor->EnableRenderOff();
    }
  }
}

void zvRenderGroup::End()
{
  if (--this->Depth > 0)
  {
    return;
  }
  for (Member& member : this->Members)
  {
    if (!member.Interactor)
    {
      continue;
    }
    member.Interactor->EnableRenderOn();
    if (member.IsAsked && member.View && member.View->isVisible())
    {
      member.Interactor->Render();
    }
  }
}

namespace
{
bool IsInput(const QEvent* event)
{
  switch (event->type())
  {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
    case QEvent::MouseMove:
    case QEvent::Wheel:
    case QEvent::KeyPress:
      return true;
    default:
      return false;
  }
}
}

zvOneRender::zvOneRender(std::shared_ptr<zvRenderGroup> group, const QEvent* event)
  : zvOneRender(IsInput(event) ? std::move(group) : nullptr)
{
}

zvOneRender::zvOneRender(std::shared_ptr<zvRenderGroup> group)
  : Group(std::move(group))
{
  if (this->Group)
  {
    this->Group->Begin();
  }
}

zvOneRender::~zvOneRender()
{
  if (this->Group)
  {
    this->Group->End();
  }
}
