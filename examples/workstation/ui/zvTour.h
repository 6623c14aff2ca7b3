#ifndef zvTour_h
#define zvTour_h

#include <QString>

class zvMainWindow;

/// Shows the program to nobody: uses its window by mouse events and writes a picture of it at every
/// station, first of a volume and then of the built-in head. The pictures of the example are named
/// mri-..., those of another volume volume-..., those of the head phantom-....
class zvTour
{
public:
  /// \param folder  where the pictures go; made if it is not there.
  zvTour(zvMainWindow& window, const QString& folder);

  /// \param path  the volume, empty for the example.
  /// \return the exit status: 0, or 1 after a line on the standard error stream.
  int Run(const QString& path);

private:
  bool ShowVolume(const QString& path);
  void ShowPhantom();
  bool VisitAll(const QString& prefix);
  bool VisitContour(const QString& prefix);
  void DragSlice();
  void DragWindowLevel();
  void TurnPlanes();
  void ReadVoxel();
  void DragCross();
  void TurnLine();
  void DrawRulers();
  void DrawContours();
  void WriteNotes();
  void UseList();
  void ShowHelp();
  void ShowMask();
  void PlaceMarkers();
  void PlaceNormalAndBox();
  void PaintAndFill();
  void Tidy();
  bool Write(const QString& name);
  bool Fail(const QString& what, const QString& reason);

  zvMainWindow& Window;
  QString Folder;
  double Tissue = 1.0; // the value of the voxel that was read
};

#endif
