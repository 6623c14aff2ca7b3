#ifndef zvBoxWidget_h
#define zvBoxWidget_h

#include "zvWidgetsExport.h"

#include "vtkBoxWidget.h"
#include "vtkSmartPointer.h"

class vtkRenderWindowInteractor;
class vtkRenderer;

/// The stock box widget with two additions: it tells the bounds of the box, and it leaves most
/// presses to the host. Everything that is seen, and what a drag does, is vtkBoxWidget's: the
/// spheres on the faces move one face, the one in the middle moves the box, a drag of a face turns
/// it.
///
/// A host sets the interactor, places the box (SetPlaceFactor, PlaceWidget) and enables it.
///
/// press                              Clicked  what vtkBoxWidget does
/// left on a sphere                   1        moves a face or the box
/// left elsewhere, with Shift         1        moves the box; beside it, nothing
/// left elsewhere                     as it is nothing, the press is not seen
/// middle, with Shift                 1        moves the box; beside it, nothing
/// right, with Shift                  1        scales the box; beside it, nothing
/// middle or right                    as it is nothing, the press is not seen
/// left, outside the viewport         as it is State is Outside
///
/// release                            Clicked  what vtkBoxWidget does
/// left or middle                     0        ends the drag
/// right, with Shift                  0        ends the drag
/// right                              as it is nothing
///
/// Deliberate: the right button without Shift belongs to the host's menu, in releases too. So a
/// right drag whose Shift key is let go first lasts until the next release that counts, of any
/// button.
///
/// Events are those of vtkBoxWidget: StartInteractionEvent, InteractionEvent, EndInteractionEvent,
/// EnableEvent and DisableEvent, without call data. The bounds are calculated before a move changes
/// the box, so that in observers only the getters tell the box as it is.
///
/// The class has no New: make it with a plain new, release it with Delete or delete. It reports the
/// class name of its base, "vtkBoxWidget", and so do its errors.
///
/// Lifetime: the widget may be deleted at any moment, enabled, in mid-drag or from its own observer
/// (there by Delete), before or after its interactor, window and renderers. An observer may disable
/// it or take its interactor away, which happens when the event's handler has ended. A drag that is
/// cut off by disabling is over.
class ZVWIDGETS_EXPORT zvBoxWidget : public vtkBoxWidget
{
public:
  zvBoxWidget();
  ~zvBoxWidget() override;

  /// Show the box and let it answer the mouse (1), or hide it (0), as vtkBoxWidget does.
  void SetEnabled(int enabling) override;

  /// Go to another interactor, or to none. An enabled box is disabled first.
  void SetInteractor(vtkRenderWindowInteractor* interactor) override;

  /// Choose the view to be shown in, before the box is enabled. Null disables an enabled box.
  void SetCurrentRenderer(vtkRenderer* renderer) override;

  ///@{
  /// The bounds of the box as it is now, in world millimetres: least and greatest x, y and z. A box
  /// that was placed at positions that are not numbers has the least above the greatest.
  virtual double GetBound0();
  virtual double GetBound1();
  virtual double GetBound2();
  virtual double GetBound3();
  virtual double GetBound4();
  virtual double GetBound5();
  ///@}

  /// Take the bounds of the box as it is now. Presses, moves and releases that count do so before
  /// they change it.
  virtual void CalculateBounds();

  /// 1 from a press that counts to its release, otherwise 0 (see the tables above).
  int GetClicked() { return this->Clicked; }

  ///@{
  /// The handlers of the mouse events, see the tables above. Harmless without an interactor or a
  /// renderer.
  void OnMouseMove() override;
  void OnLeftButtonDown() override;
  void OnLeftButtonUp() override;
  void OnMiddleButtonDown() override;
  void OnMiddleButtonUp() override;
  void OnRightButtonDown() override;
  void OnRightButtonUp() override;
  ///@}

  zvBoxWidget(const zvBoxWidget&) = delete;
  zvBoxWidget& operator=(const zvBoxWidget&) = delete;

protected:
  /// Keeps the widget alive while the base class dispatches an event to its handlers.
  static void ProcessEvents(
    vtkObject* object, unsigned long event, void* clientdata, void* calldata);

  /// The bounds at the last calculation.
  double Bounds[6] = { 0.0, 0.0, 0.0, 0.0, 0.0, 0.0 };

  int Clicked = 0;

private:
  class StockCode;

  bool HasView();
  bool HasShift();
  void AcceptPress();
  void EndDrag();
  double BoundNow(int index);

  /// How many stock operations are under way, and the interactor that is to be set after them.
  int StockDepth = 0;
  bool HasNextInteractor = false;
  vtkSmartPointer<vtkRenderWindowInteractor> NextInteractor;
};

#endif
