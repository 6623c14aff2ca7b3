#ifndef zvRenderGroup_h
#define zvRenderGroup_h

#include "vtkWeakPointer.h"

#include <QEvent>
#include <QPointer>

#include <list>
#include <memory>

class QVTKOpenGLNativeWidget;
class vtkRenderWindowInteractor;

/// The views that change together. While a zvOneRender lives, what they are asked to render is
/// only noted; when the last one ends, each view that was asked renders once. Views that are
/// hidden do not render: show them, then ask them.
class zvRenderGroup
{
public:
  zvRenderGroup() = default;
  ~zvRenderGroup();
  zvRenderGroup(const zvRenderGroup&) = delete;
  void operator=(const zvRenderGroup&) = delete;

  void Add(QVTKOpenGLNativeWidget* view);

private:
  friend class zvOneRender;
  struct Member
  {
    QPointer<QVTKOpenGLNativeWidget> View;
    vtkWeakPointer<vtkRenderWindowInteractor> Interactor;
    unsigned long Observer = 0;
    bool IsAsked = false;
    void Note() { this->IsAsked = true; }
  };

  void Begin();
  void End();

  int Depth = 0;
  std::list<Member> Members; // observers hold their addresses
};

/// Holds the pictures of a group still for as long as it lives. May be nested; null holds nothing.
class zvOneRender
{
public:
  explicit zvOneRender(std::shared_ptr<zvRenderGroup> group);
  /// For the duration of a view's event: holds for what a user does, and for nothing else. A paint
  /// renders itself.
  zvOneRender(std::shared_ptr<zvRenderGroup> group, const QEvent* event);
  ~zvOneRender();
  zvOneRender(const zvOneRender&) = delete;
  void operator=(const zvOneRender&) = delete;

private:
  std::shared_ptr<zvRenderGroup> Group; // outlives a view that is deleted in its own event
};

#endif
