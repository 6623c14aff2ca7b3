#ifndef zvMainWindow_h
#define zvMainWindow_h

#include "zvVolumeLoader.h"

#include <QMainWindow>

#include <memory>

class QLabel;
class zvContourPanel;
class zvContourTool;
class zvEditBar;
class zvHelpOverlay;
class zvLoadBar;
class zvMarkerTools;
class zvMaskControl;
class zvMeasurementList;
class zvMeasurementPanel;
class zvNoteDesk;
class zvNoticeBar;
class zvPresetMenu;
class zvSlicePanel;
class zvToolSet;
class zvTurnPanel;
class zvViewGrid;
class zvVolumeView;
struct zvVoxel;
class zvWindowPanel;

/// The window: the views, the panels beside them, the menus, and the loads. It puts the parts
/// together and holds no knowledge of its own about volumes, tools or marks.
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

  /// Load a volume of labels, to be offered as the mask of the one on the screen. It ends in the
  /// signal maskOpened or refused, or in none if it is cancelled; then the mask stays as it is.
  /// \param isWanted  whether the mask is switched on once the labels are there.
  void OpenMask(const QString& path, bool isWanted = false);

  /// Whether a refusal is told in a message box (default) or by the signal refused alone.
  void SetTellsRefusals(bool tells) { this->TellsRefusals = tells; }

  zvViewGrid* GetViews() const { return this->Views; }
  zvVolumeView* GetView() const; // the 3D one
  zvToolSet* GetTools() const { return this->Tools; }
  zvMarkerTools* GetMarkers() const { return this->Markers.get(); }
  zvMeasurementList* GetMeasurements() const { return this->Measurements; }
  zvMeasurementPanel* GetMeasurementPanel() const { return this->MeasurementPanel; }
  zvEditBar* GetEditBar() const { return this->Edit; }
  zvSlicePanel* GetSlicePanel() const { return this->Slices; }
  zvWindowPanel* GetWindowPanel() const { return this->Window; }
  zvTurnPanel* GetTurnPanel() const { return this->Turns; }
  zvPresetMenu* GetPresetMenu() const { return this->Presets; }
  zvContourPanel* GetContourPanel() const { return this->ContourPanel; }
  zvContourTool* GetContourTool() const { return this->Contour; }
  zvNoticeBar* GetNoticeBar() const { return this->Notices; }
  zvLoadBar* GetLoadBar() const { return this->LoadBar; }
  zvHelpOverlay* GetHelp() const { return this->Help; }
  QString GetStatusText() const;
  /// What the mouse does with the active tool.
  QString GetHintText() const;

public slots:
  /// \name What the menus ask for
  ///@{
  void AskForFile();
  void AskForFolder();
  void AskForMask();
  void ShowAbout();
  /// The key Esc: close the help, or cancel the loads, or leave a field with the number that it
  /// had, or leave the tool.
  void GoBack();
  ///@}

signals:
  /// A volume has come onto the screen.
  void shown();
  void maskOpened();
  /// A load has ended without one.
  void refused(const QString& path, const QString& reason);
  void cancelled();

protected:
  void keyPressEvent(QKeyEvent* event) override;

private:
  void BuildLayout();
  void BuildDocks();
  void BuildStatusBar();
  void ConnectLoaders();
  void ConnectLoader(zvVolumeLoader* loader);
  void ConnectViews();
  void ConnectPanels();
  void ConnectTools();
  void EndLoad();
  void ShowVolume(const zvVolume& volume);
  void BeginEditing(const zvVolume& volume);
  void ShowNotices(const zvVolume& volume);
  void ShowVoxel(const zvVoxel& voxel);
  void ShowSlices();
  void Tell(const QString& path, const QString& what, const QString& reason);

  bool TellsRefusals = true;
  zvVolumeLoader Loader;
  zvToolSet* Tools; // these are owned by Qt's tree of objects
  zvMeasurementList* Measurements;
  zvViewGrid* Views;
  zvSlicePanel* Slices;
  zvWindowPanel* Window;
  zvTurnPanel* Turns;
  zvNoticeBar* Notices;
  zvLoadBar* LoadBar;
  zvEditBar* Edit;
  zvMeasurementPanel* MeasurementPanel;
  zvContourPanel* ContourPanel;
  zvContourTool* Contour;
  zvPresetMenu* Presets;
  QLabel* Status;
  QLabel* Hint;
  zvHelpOverlay* Help = nullptr;
  std::unique_ptr<zvMaskControl> Mask;
  std::unique_ptr<zvNoteDesk> Notes;
  std::unique_ptr<zvMarkerTools> Markers;
};

#endif
