#ifndef zvMarkedViewer_h
#define zvMarkedViewer_h

#include "zvImageViewerWidget.h"

#include "vtkSmartPointer.h"

#include <vector>

class vtk3DWidget;
class vtkImageData;

/// The library's slice viewer with a way to the tools that it owns, one by one. The viewer itself
/// offers its host the tool that was used last, and all of them together.
///
/// Nothing here renders.
class zvMarkedViewer : public zvImageViewerWidget
{
public:
  static zvMarkedViewer* New();
  vtkTypeMacro(zvMarkedViewer, zvImageViewerWidget)

  /// \name The tools of a kind, oldest first; a ruler that waits to be placed is among them
  ///@{
  std::vector<vtkSmartPointer<zvRulerWidget>> GetRulers();
  std::vector<vtkSmartPointer<zvAreaWidget>> GetAreas();
  std::vector<vtkSmartPointer<zvLassoWidget>> GetLassos();
  std::vector<vtkSmartPointer<zvTextNoteWidget>> GetNotes();
  ///@}

  ///@{
  /// The tool that the next operation or click works on, null for none.
  zvRulerWidget* GetCurrentRuler();
  void SetCurrentRuler(zvRulerWidget* ruler);
  zvAreaWidget* GetCurrentArea();
  void SetCurrentArea(zvAreaWidget* area);
  zvLassoWidget* GetCurrentLasso();
  void SetCurrentLasso(zvLassoWidget* lasso);
  zvTextNoteWidget* GetCurrentNote();
  void SetCurrentNote(zvTextNoteWidget* note);
  ///@}

  /// Whether a ruler waits for the click that places it, and the way back from there.
  bool IsRulerWaiting() const { return this->AddRulerMode; }
  void StopWaiting();

  /// Whether the last press has filled voxels that TakeBackFill restores.
  bool HasFill();

  /// Remember the voxels of the slice that a fill under the mouse would write.
  void KeepSlice();

  /// As UndoFill, which knows one value for all voxels, but each gets back the value that it had
  /// when KeepSlice was called, before the press.
  void TakeBackFill();

  /// Take a tool off the view and release it. One that is not the view's is left alone.
  void Remove(vtk3DWidget* tool);

protected:
  zvMarkedViewer() = default;
  ~zvMarkedViewer() override = default;

private:
  vtkSmartPointer<vtkImageData> KeptSlice;
};

#endif
