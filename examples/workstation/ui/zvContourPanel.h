#ifndef zvContourPanel_h
#define zvContourPanel_h

#include "zvContourView.h"
#include "zvContourWalk.h"

#include <QDockWidget>
#include <QList>

#include <vector>

class QAction;
class QCheckBox;
class QComboBox;
class QDoubleSpinBox;
class QGridLayout;
class QLabel;
class QProgressBar;
class QPushButton;
class QSpinBox;

/// The controls of the active contour: what it is to do, by which parameters, and how far it is.
/// It holds values and emits wishes; what they mean is zvContourTool's.
class zvContourPanel : public QDockWidget
{
  Q_OBJECT

public:
  /// What can be asked for now.
  enum class State
  {
    Away,   // no volume
    Empty,  // there is no contour
    Ready,  // there is one to begin with
    Paused, // one is on its way, and waits
    Running
  };

  explicit zvContourPanel(QWidget* parent = nullptr);

  /// All parameters as they are set; the slices only where the contour is to go through the volume.
  zvWalkParameters GetParameters() const;
  bool IsInVolume() const;
  zvContourView::Gradient GetGradient() const;
  double GetRingRadius() const;
  int GetPointCount() const;
  bool IsMaskWanted() const;

  /// \param canReset  whether there is something to go back to.
  void ShowState(State state, bool canReset);
  /// "Axial, slice 90".
  void ShowPlace(const QString& place);
  void ShowMessage(const QString& message);
  QString GetMessage() const;
  /// 0 to 1.
  void ShowProgress(double fraction);
  /// The range of slices to choose from. Emits nothing. What was chosen stays where it fits, unless
  /// it is to be all of them.
  void ShowSlices(int count, bool chooseAll);
  /// Emits nothing.
  void ShowMaskWanted(bool isWanted);
  /// The forces as in the beginning.
  void ResetParameters();

  /// What the buttons and the check mark below do, for a menu and by keys; available as these are.
  /// All owned by the panel.
  QList<QAction*> GetActions() const;

  QPushButton* GetStartButton() const { return this->Start; }
  QPushButton* GetStepButton() const { return this->Step; }
  QPushButton* GetStopButton() const { return this->Stop; }
  QPushButton* GetResetButton() const { return this->Reset; }
  QPushButton* GetClearButton() const { return this->Clear; }
  QComboBox* GetExtentBox() const { return this->Extent; }
  QComboBox* GetGradientBox() const { return this->GradientBox; }
  QSpinBox* GetFirstBox() const { return this->First; }
  QSpinBox* GetLastBox() const { return this->Last; }
  QDoubleSpinBox* GetRadiusBox() const { return this->Radius; }
  QSpinBox* GetPointBox() const { return this->Points; }
  QCheckBox* GetMaskBox() const { return this->Mask; }
  QProgressBar* GetProgressBar() const { return this->Progress; }
  /// The box of a parameter by its name ("balloon"), null for none of that name.
  QDoubleSpinBox* GetBox(const QString& name) const;

signals:
  void startChosen();
  void stepChosen();
  void stopChosen();
  void resetChosen();
  void clearChosen();
  void extentChosen();
  void gradientChosen();
  void ringChosen();
  void maskChosen();

private:
  QWidget* BuildWhere();
  QWidget* BuildParameters();
  QWidget* BuildRun();
  void BuildActions();
  void Connect();

  // A button and the action that does the same.
  struct Command
  {
    QPushButton* Button;
    QAction* Action;
  };

  std::vector<QDoubleSpinBox*> Boxes; // as the table of parameters; owned by Qt's tree, as all
  QComboBox* Extent;
  QComboBox* GradientBox;
  QSpinBox* First;
  QSpinBox* Last;
  QSpinBox* Points;
  QDoubleSpinBox* Radius;
  QLabel* Place;
  QLabel* Message;
  QProgressBar* Progress;
  QPushButton* Start;
  QPushButton* Step;
  QPushButton* Stop;
  QPushButton* Reset;
  QPushButton* Clear;
  QPushButton* Defaults;
  QCheckBox* Mask;
  std::vector<Command> Commands;
  QAction* MaskAction = nullptr;
  QWidget* Values; // all that is fixed while it runs
};

#endif
