#ifndef zvSliceMarks_h
#define zvSliceMarks_h

#include "zvMeasurementSource.h"
#include "zvPlanePlace.h"

#include <QPoint>

#include "vtkSmartPointer.h"
#include "vtkWeakPointer.h"

#include <array>
#include <functional>
#include <vector>

class QColor;
class QWidget;
class vtk3DWidget;
class vtkRenderer;
class zvLassoWidget;
class zvMarkedViewer;
class zvRulerWidget;
class zvTextNoteWidget;

/// The marks of one slice view: rulers, areas, lassos and notes. It drives the viewer's own modes
/// and operations so that a click or a drag with a tool makes a mark, and remembers for each mark
/// the slice that it was made on: a mark is seen on its slice only.
///
/// with the tool  the left button
/// Ruler          drags a ruler from end to end, or sets its ends by two clicks
/// Area           sets points; a click on the first one, a double click or Enter closes the contour
/// Lasso          the same, or draws by a drag; the release closes it
/// Note           asks for a note at the place of a click, or for another text of the note there
/// any            on a mark drags its end, its handle or the note
///
/// What is not finished is dropped with the tool and with the slice.
///
/// The view tells every mouse event of the left button: BeforePress, then the toolkit, then After.
/// Nothing here renders, except through the toolkit's own operations.
class zvSliceMarks : public zvMeasurementSource
{
  Q_OBJECT

public:
  using Vector = std::array<double, 3>;
  enum class Kind
  {
    Ruler,
    Area,
    Lasso,
    Note
  };
  /// What the left button makes.
  enum class Tool
  {
    None, // nothing; marks can be moved
    Ruler,
    Area,
    Lasso,
    Note
  };

  /// \param view  that shows the slice; outlives this object, as viewer and renderer do.
  /// \param click  lets the view act as on a click at a position of its own.
  zvSliceMarks(zvMarkedViewer* viewer, vtkRenderer* renderer, const QWidget* view,
    const QString& viewName, std::function<void(const QPoint&)> click);
  ~zvSliceMarks() override;

  /// Take up a tool. What is not finished is dropped.
  void SetTool(Tool tool);

  /// Show the marks of the slice that the plane is on now, and no others.
  void Follow(const zvPlanePlace& place);

  /// Bring labels and handles to their size on the screen after the camera's scale has changed.
  void Resize();

  /// \name Told by the view
  ///@{
  void BeforePress();
  void AfterPress(const QPoint& position);
  void AfterMove(const QPoint& position, bool isHeld);
  /// Of any button.
  void AfterRelease(const QPoint& position);
  /// Whether the mouse is in the view at all.
  void SetHovered(bool hovered) { this->Hovered = hovered; }
  ///@}

  /// Close the contour that is being drawn, if it has three points or more.
  bool Close();
  /// Whether a contour or a ruler is being drawn.
  bool IsDrawing() const;
  /// The id of the mark under the pointer of the view's interactor, 0 for none.
  int FindUnderPointer() const;
  /// Whether the mark under the pointer follows a drag by the middle button.
  bool IsMovedByMiddle() const;

  /// Make a note where the last click of the tool was. \return its id.
  /// \param size  the height of a capital in millimetres.
  int AddNote(const QString& text, const QColor& color, double size);
  /// \name A note of this view; ids of other marks are ignored
  ///@{
  void ChangeNote(int id, const QString& text, const QColor& color, double size);
  QString GetNoteText(int id) const;
  QColor GetNoteColor(int id) const;
  double GetNoteSize(int id) const;
  ///@}

  int GetCount() const { return static_cast<int>(this->Marks.size()); }

  std::vector<zvMeasurement> Read() const override;
  void GoTo(int id) override;
  void SetHidden(int id, bool hidden) override;
  void Remove(int id) override;
  void RemoveAll() override;
  bool Edit(int id) override;
  bool RemoveUnderMouse() override;

signals:
  /// The views have to show a mark's slice.
  void goToWanted(const zvPlanePlace& place);
  /// The user has clicked where a note is to be.
  void noteWanted();
  /// The user wants to change a note.
  void editWanted(int id);

private:
  struct Mark
  {
    int Id;
    Kind MarkKind;
    vtkSmartPointer<vtk3DWidget> Widget;
    zvPlanePlace Place;
    bool IsHidden;
    bool IsShown;
  };

  void SetModes();
  void DropUnfinished();
  void BeginRuler();
  void BrightenLabels();
  void ReleaseRuler();
  void FinishRuler();
  void FinishLasso(zvLassoWidget* lasso);
  void SettleContours();
  void SendClick(const QPoint& position);
  vtk3DWidget* FindOpenContour() const;
  void Adopt();
  void Adopt(Kind kind, vtk3DWidget* widget);
  void ShowWhereDue();
  void Show(Mark& mark, bool shown);
  static void Size(const Mark& mark);
  void MoveNote();
  static bool IsUnderPointer(const Mark& mark);
  const Mark* Find(int id) const;
  zvTextNoteWidget* FindNote(int id) const;
  zvMeasurement Measure(const Mark& mark) const;
  double GetScreenLength(zvRulerWidget* ruler) const;
  Vector GetPointOnSlice() const;
  bool IsOverSlice() const;
  QPoint ToView(const double world[3]) const;
  void Render();

  zvMarkedViewer* Viewer; // these three are not owned
  vtkRenderer* Renderer;
  const QWidget* View;
  QString ViewName;
  std::function<void(const QPoint&)> Click;
  Tool ActiveTool = Tool::None;
  zvPlanePlace Place;
  std::vector<Mark> Marks;
  int LastId = 0;
  bool Hovered = false;
  vtkWeakPointer<zvRulerWidget> Drawn; // the ruler whose second end is not set yet
  bool IsFollowing = false;            // whether that end follows the mouse between two clicks
  vtkWeakPointer<zvTextNoteWidget> Dragged;
  Vector NotePoint{ { 0.0, 0.0, 0.0 } };
  QPoint Pressed;         // where the last press was
  bool IsSending = false; // while a click of its own is under way
  int FreehandPoints = 0; // that the present drag has set
  int Clicked = 0;        // the mark that the last press was on
};

#endif
