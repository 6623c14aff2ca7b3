#ifndef zvMainWindow_h
#define zvMainWindow_h

#include "zvLabelAtlas.h"
#include "zvVolumeLoader.h"
#include "zvWindowPresets.h"

#include <QMainWindow>

class QLabel;
class zvEditBar;
class zvLoadBar;
class zvNoticeBar;
class zvSlicePanel;
class zvTurnPanel;
class zvViewGrid;
class zvVolumeView;
struct zvVoxel;
class zvWindowPanel;

/// The window: the views, the panels beside them, the menus, and the loads. It puts the parts
/// together and holds no knowledge of its own about volumes.
class zvMainWindow : public QMainWindow
{
  Q_OBJECT

public:
  zvMainWindow();
  ~zvMainWindow() override;

  /// Load a file or folder; the volume on the screen stays until it is there, and for good if it is
  /// refused or cancelled.
  void Open(const QString& path);
  /// Load the example that the system brings, or else the built-in head.
  void OpenExample();
  void OpenPhantom(int side);
  void OpenPhantom();

  /// Whether a refusal is told in a message box (default) or by the signal refused alone.
  void SetTellsRefusals(bool tells) { this->TellsRefusals = tells; }

  /// Show a volume of labels as the mask of the one on the screen. False, after a refusal, if it
  /// cannot be read.
  bool OpenMask(const QString& path);

  zvViewGrid* GetViews() const { return this->Views; }
  zvVolumeView* GetView() const; // the 3D one
  zvEditBar* GetEditBar() const { return this->Edit; }
  zvSlicePanel* GetSlicePanel() const { return this->Slices; }
  zvWindowPanel* GetWindowPanel() const { return this->Window; }
  zvTurnPanel* GetTurnPanel() const { return this->Turns; }
  zvNoticeBar* GetNoticeBar() const { return this->Notices; }
  zvLoadBar* GetLoadBar() const { return this->LoadBar; }
  QString GetStatusText() const;

signals:
  /// A volume has come onto the screen.
  void shown();
  /// A load has ended without one.
  void refused(const QString& path, const QString& reason);
  void cancelled();

private:
  void BuildLayout();
  void BuildMenus();
  void AddFileActions();
  void AddViewActions();
  void AddHelpActions();
  void ConnectLoader();
  void ConnectPanels();
  void ConnectEditBar();
  void AskForMask();
  void BeginEditing(const zvVolume& volume);
  void ShowMask();
  void ShowVoxel(const zvVoxel& voxel);
  void AskForFile();
  void AskForFolder();
  void ShowVolume(const zvVolume& volume);
  void ShowRefusal(const QString& path, const QString& reason);
  void ShowSlices();

  bool TellsRefusals = true;
  zvVolumeLoader Loader;
  zvLabelAtlas Atlas; // empty until a mask is asked for
  QString AtlasPath;  // of the one that is offered
  zvViewGrid* Views;  // these are owned by Qt's tree of widgets
  zvSlicePanel* Slices;
  zvWindowPanel* Window;
  zvTurnPanel* Turns;
  zvNoticeBar* Notices;
  zvLoadBar* LoadBar;
  zvEditBar* Edit;
  QLabel* Status;
};

#endif
