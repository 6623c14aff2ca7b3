#ifndef zvWidgets_h
#define zvWidgets_h

#include "zvWidgetsExport.h"

#include "vtk3DWidget.h"

/// Common base of the widgets with handles: a vtk3DWidget that can be taken off the event stream of
/// its interactor and put back without being disabled, and that can trace its operations.
///
/// A host uses the subclasses. They bring their own SetEnabled and handlers; a plain zvWidgets
/// keeps the empty SetEnabled of vtkInteractorObserver, so it cannot be enabled, observes nothing
/// and shows nothing.
///
/// Lifetime: a widget may be deleted at any moment, enabled, in mid-drag or from its own observer,
/// before or after its interactor, window and renderers.
///
/// Events invoked: EnableEvent (no call data) by AddObservers.
class ZVWIDGETS_EXPORT zvWidgets : public vtk3DWidget
{
public:
  vtkTypeMacro(zvWidgets, vtk3DWidget)

  /// A new widget with one reference, from the object factory if that knows the class.
  static zvWidgets* New();

  /// Write the fields of the parent, then a line each for Interaction and DebugMode.
  void PrintSelf(ostream& os, vtkIndent indent) override;

  /// Write the revision line "zvWidgets $Revision: 1.2 $".
  virtual void CollectRevisions(ostream& os);

  /// Go to another interactor, or to none. An enabled widget is disabled first. What AddObservers
  /// has attached to the former interactor is taken off it, whether the widget is enabled or not.
  void SetInteractor(vtkRenderWindowInteractor* interactor) override;

  ///@{
  /// Fit the widget to bounds in world millimetres (xmin, xmax, ymin, ymax, zmin, zmax). The first
  /// form does nothing here, subclasses give it a meaning; the other two work out bounds as
  /// vtk3DWidget does and end in the first.
  void PlaceWidget(double bounds[6]) override;
  void PlaceWidget() override;
  void PlaceWidget(
    double xmin, double xmax, double ymin, double ymax, double zmin, double zmax) override;
  ///@}

  /// Attach the widget to the interactor for mouse moves, the presses and releases of the three
  /// buttons and the wheel, at Priority. Invokes EnableEvent. Without an interactor: a generic
  /// warning "set interactor before adding observers...", and nothing is attached.
  virtual void AddObservers();

  /// Take the widget off the interactor's events. Invokes nothing; without an interactor it does
  /// nothing.
  void RemoveObservers();

  /// Attach (true) or detach (false) the widget without enabling or disabling it. Needs an
  /// interactor and an enabled widget, otherwise the generic warning "set interactor and Enabled
  /// before changing interaction..." is written and nothing changes. The value it already has
  /// changes nothing. Attaching goes through AddObservers, with its event; detaching invokes none.
  void SetInteraction(bool arg);

  /// Whether the widget is attached (default false, subclasses set their own).
  bool GetInteraction();

  zvWidgets(const zvWidgets&) = delete;
  zvWidgets& operator=(const zvWidgets&) = delete;

protected:
  zvWidgets();
  ~zvWidgets() override;

  ///@{
  /// How a handler ends that takes an event: set the abort flag, so that observers behind the
  /// widget do not see the event, invoke StartInteractionEvent, InteractionEvent or
  /// EndInteractionEvent, and render. Each step bears that an observer has disabled the widget or
  /// taken its interactor in the step before.
  void BeginInteraction();
  void TellMotion();
  void FinishInteraction();
  ///@}

  /// Operations write a trace line on the standard output while this is true. There is no setter:
  /// a subclass or a debugging build raises it.
  bool DebugMode = false;

  /// Whether the observers are attached while the widget is enabled.
  bool Interaction = false;
};

/// For an application's table of instantiators; the library itself never calls it.
ZVWIDGETS_EXPORT vtkObject* vtkInstantiatorzvWidgetsNew();

#endif
