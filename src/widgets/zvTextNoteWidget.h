#ifndef zvTextNoteWidget_h
#define zvTextNoteWidget_h

#include "zvWidgetsExport.h"

#include "vtk3DWidget.h"
#include "vtkNew.h"
#include "vtkWeakPointer.h"

#include <memory>
#include <vector>

class vtkFollower;
class vtkPicker;
class vtkVectorText;
class zvRawView;

/// A short text in a slice view: it faces the camera, and the user drags it within the plane of the
/// slice. It has no handles.
///
/// A host gives it a text (SetText, of at most GetMaximumTextLength() characters), a plane and a
/// place (SetPlane, SetLocation) and a view: SetInteractor, or SetCurrentRender with a renderer
/// that is in a window. Then it calls AddObservers and SetEnabled(1), both: enabling shows the note
/// and leaves the mouse alone. All positions are world positions in millimetres.
///
/// State    event                                        next      tells observers
/// any      left press on the note                       Moving    StartInteractionEvent
/// any      left press beside it or outside the view     Outside   -
/// any      middle press in the view, also beside it     Moving    StartInteractionEvent
/// any      the same with the control key                Start     StartInteractionEvent
/// any      middle press outside the view                Outside   -
/// Moving   mouse move: the note jumps to the pointer    Moving    InteractionEvent
/// Moving   left or middle release                       Start     EndInteractionEvent
/// any      right press                                  the same  -
/// any      right release, wheel                         the same  - (renders)
///
/// Each row with an event sets the abort flag, so that observers behind the widget do not see the
/// mouse event, and ends in a render. Outside is left by the next press.
///
/// Other events: EnableEvent by SetEnabled(1) and once more by AddObservers, DisableEvent by
/// SetEnabled(0). No event has call data.
///
/// Lifetime: the widget may be deleted at any moment, enabled, in mid-drag or from its own
/// observer, before or after its interactor, window and renderers. An observer may disable it, take
/// its interactor away or release it. A renderer or interactor that SetCurrentRender wrote and that
/// dies counts as not set. Deleted, the note is taken out of the view.
class ZVWIDGETS_EXPORT zvTextNoteWidget : public vtk3DWidget
{
public:
  vtkTypeMacro(zvTextNoteWidget, vtk3DWidget)

  /// A new widget with one reference, from the object factory if that knows the class.
  static zvTextNoteWidget* New();

  /// The values of State; the numbers are fixed.
  enum WidgetState
  {
    Start = 0,
    Moving = 1,
    Outside = 4
  };

  /// Write the fields of the parent; this class adds none.
  void PrintSelf(ostream& os, vtkIndent indent) override;

  /// "zvTextNoteWidget $Revision: 1.2 $".
  virtual void CollectRevisions(ostream& os);

  /// Show the note (1), or take it out of the view and off the interactor (0). Enabling it once
  /// more writes the line "Return in method SetEnabled())" to the standard output, in the form of
  /// a trace. Without a renderer, the one under the last event position is taken; if there is none,
  /// the widget stays disabled, silently. Invokes EnableEvent or DisableEvent and renders.
  void SetEnabled(int enabling) override;

  /// Go to another interactor, or to none. An enabled widget is disabled first.
  void SetInteractor(vtkRenderWindowInteractor* interactor) override;

  ///@{
  /// The first form does nothing: a note is placed by SetLocation. The others work out bounds as
  /// vtk3DWidget does and end there, too.
  void PlaceWidget(double bounds[6]) override;
  void PlaceWidget() override;
  void PlaceWidget(
    double xmin, double xmax, double ymin, double ymax, double zmin, double zmax) override;
  ///@}

  /// The length of the longest text that SetText takes: 99 characters (bytes).
  static int GetMaximumTextLength();

  /// Set the text, its colour (red, green, blue from 0 to 1) and its size, the height of a capital
  /// in millimetres. A text that is longer than GetMaximumTextLength() stops the program. Null for
  /// text or colour: a generic warning, and nothing changes. Renders nothing.
  void SetText(const char* text, double* color, double size);

  /// The text; null before the first SetText. Owned by the note.
  const char* GetText();

  /// The three components of the colour; owned by the note.
  double* GetColor();

  /// The size that was set, 1.0 before.
  double GetFontSize();

  /// Put the lower left corner of the text at a world position. Renders nothing.
  void SetLocation(double x, double y, double z);

  /// The world axis whose coordinate a drag keeps: 0 x, 1 y, 2 z (default 2). With any other value
  /// a drag moves nothing. Does not call Modified.
  void SetPlane(int plane);

  /// Does nothing: a note always faces the camera.
  void SetOrientation();

  /// Whether the note is at the interactor's event position: 1 or 0. Changes no state; 0 without an
  /// interactor or a renderer.
  int IsClicked();

  ///@{
  /// The renderer. Setting it writes the renderer and the interactor of its window into the widget:
  /// no reference is taken, what was attached to another interactor stays there, and a note that is
  /// shown stays where it is until it is enabled again. Null or a renderer without a window: a
  /// generic warning, and nothing changes.
  void SetCurrentRender(vtkRenderer* render);
  vtkRenderer* GetCurrentRender();
  ///@}

  /// Set the renderer with a reference, as SetEnabled does.
  void SetCurrentRenderer(vtkRenderer* renderer) override;

  /// Attach the widget to the interactor's mouse events at Priority and invoke EnableEvent. Called
  /// twice, each event is answered twice. Without an interactor: the generic warning "set
  /// interactor before adding observers...".
  void AddObservers();

  ///@{
  /// The handlers of the mouse events, see the table above. Harmless without an interactor or a
  /// renderer.
  void OnLeftButtonDown();
  void OnLeftButtonUp();
  void OnMiddleButtonDown();
  void OnMiddleButtonUp();
  void OnRightButtonDown();
  void OnRightButtonUp();
  void OnMouseMove();
  void OnMouseWheelForward();
  void OnMouseWheelBackward();
  ///@}

  /// Calls the handler for an interactor event; \a clientdata is the widget.
  static void ProcessEvents(
    vtkObject* object, unsigned long event, void* clientdata, void* calldata);

  zvTextNoteWidget(const zvTextNoteWidget&) = delete;
  zvTextNoteWidget& operator=(const zvTextNoteWidget&) = delete;

protected:
  zvTextNoteWidget();
  ~zvTextNoteWidget() override;

  /// Pick at the event position; \return whether the note was hit.
  bool PickText();

  ///@{
  /// What SetEnabled is made of.
  void Show();
  void Hide();
  ///@}

  /// Both releases do the same.
  void FinishDrag();

  ///@{
  /// Set the abort flag, tell, render. Each step bears that an observer has disabled the widget or
  /// taken its interactor in the step before.
  void BeginInteraction();
  void TellMotion();
  void FinishInteraction();
  ///@}

  int State = Start;

  /// Its list holds TextActor: nothing else can be hit.
  vtkNew<vtkPicker> TextPicker;
  vtkNew<vtkVectorText> TextSource;

  /// Without a mapper until the first SetText.
  vtkNew<vtkFollower> TextActor;

  /// Whether operations write a trace; nothing but a subclass raises it.
  bool DebugMode = false;

  int Plane = 2;

private:
  /// The account of what SetCurrentRender wrote.
  std::unique_ptr<zvRawView> RawView;

  /// Where the note was last put; after SetCurrentRender that is not the current renderer.
  vtkWeakPointer<vtkRenderer> ShownIn;

  /// Every interactor that the event command was attached to.
  std::vector<vtkWeakPointer<vtkObject>> Observed;
};

/// For an application's table of instantiators; the library itself never calls it.
ZVWIDGETS_EXPORT vtkObject* vtkInstantiatorzvTextNoteWidgetNew();

#endif
