#ifndef zvQVTKWidget_h
#define zvQVTKWidget_h

#include "zvWidgetsExport.h"

#include "QVTKInteractorAdapter.h"
#include "QVTKOpenGLNativeWidget.h"

class QKeyEvent;
class QMouseEvent;
class QWheelEvent;

/// The Qt view that shows a render window and decides which of the user's input reaches the
/// toolkit, that is the interactor of the window and the widgets that observe it, and which the
/// host is told of by signals only.
///
/// Forwarded means sent to the interactor, with the position in device pixels from the lower left
/// corner. A signal comes after the forwarding, in the same call.
///
/// Input                          forwarded                              signal
/// press of the left button       with Mode3D or VTKMoveMode             mouseEvent
/// press of the middle button     always                                 mouseEvent
/// press of the right button      with Shift                             mouseEvent
/// double click                   as a press of that button, with a      mouseEvent
///                                repeat count of 1
/// release of left and middle     as the press                           mouseEvent
/// release of the right button    always, deliberate: see below          mouseEvent
/// press, release of any other    never                                  mouseEvent
/// move, left button alone held   with Mode3D; with VTKMoveMode          mouseEvent
/// move, middle alone held        always; with VTKMoveMode once more     mouseEvent
/// move, right alone held         with Shift; with VTKMoveMode once more mouseEvent
/// any other move                 with VTKMoveMode                       mouseEvent
/// wheel                          with Shift, and then no signal         mouseWheelEvent
/// key press                      never                                  keyEvent
/// touch, gesture, hover          never                                  none
/// everything else (key release,  as QVTKOpenGLNativeWidget does         none
/// enter, leave, focus, ...)
///
/// mouseEvent is emitted only with QTMoveMode. Deliberate: the release of the right button always
/// goes on, so that a drag that began with Shift ends although Shift was let go; and a move that
/// its button sends on is sent once more with VTKMoveMode: left with Mode3D, middle, and right with
/// Shift. The second has no motion, as its last position is its position.
///
/// Set-up: before the QApplication is made,
/// QSurfaceFormat::setDefaultFormat(QVTKOpenGLNativeWidget::defaultFormat()). Then make the view,
/// add renderers to renderWindow(), show it. Nothing is drawn before the first paint; input is
/// forwarded from the start.
///
/// The view makes its own render window. Keep it: only with it may actors be shared with other
/// views, which the markers do. The default interactor style takes presses that no widget took;
/// hosts set vtkInteractorStyleUser where widgets must see everything.
///
/// Ownership is Qt's: a parent deletes its views. The view may be deleted at any time, before or
/// after the widgets in it, also from an observer of an event that it forwards.
class ZVWIDGETS_EXPORT zvQVTKWidget : public QVTKOpenGLNativeWidget
{
  Q_OBJECT

public:
  /// A hidden view without a parent, with an empty render window and its interactor.
  zvQVTKWidget();
  ~zvQVTKWidget() override;

  /// Whether this is a 3D view, where the left button goes to the toolkit (default false).
  void setMode3D(bool mode);

  /// Whether all moves and the left button go to the toolkit (default false).
  void setVTKMoveMode(bool mode);

  /// Whether mouse events are also told by mouseEvent (default true).
  void setQTMoveMode(bool mode);

  ///@{
  /// A mark for the host, which nothing here reads (default false).
  void SetActived(bool actived);
  bool GetActived();
  ///@}

Q_SIGNALS:
  ///@{
  /// The event as Qt delivered it, in Qt's coordinates; it is gone after the call.
  void mouseEvent(QMouseEvent* e);
  void mouseWheelEvent(QWheelEvent* e);
  void keyEvent(QKeyEvent* e);
  ///@}

protected:
  bool event(QEvent* e) override;
  void mousePressEvent(QMouseEvent* e) override;
  void mouseReleaseEvent(QMouseEvent* e) override;
  void mouseMoveEvent(QMouseEvent* e) override;
  void wheelEvent(QWheelEvent* e) override;
  void keyPressEvent(QKeyEvent* e) override;

private:
  Q_DISABLE_COPY(zvQVTKWidget)

  void Forward(QEvent* e);
  void ForwardDoubleClick(QMouseEvent* e);
  QPoint InDevicePixels(const QPoint& position) const;
  bool IsPressForwarded(QMouseEvent* e) const;
  bool IsMoveForwarded(QMouseEvent* e) const;

  bool Mode3D = false;
  bool VTKMoveMode = false;
  bool QTMoveMode = true;
  bool Actived = false;

  // The base has one too, but only from the first paint on, and gives it every event.
  QVTKInteractorAdapter Adapter;
};

#endif
