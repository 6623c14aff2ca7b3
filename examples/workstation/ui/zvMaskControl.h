#ifndef zvMaskControl_h
#define zvMaskControl_h

#include "zvLabelAtlas.h"
#include "zvVolumeLoader.h"

#include <QObject>

class zvEditBar;
class zvViewGrid;

/// The mask over the slices: which labels there are, which of them are shown, and the load that
/// brings them, on a thread of its own, when they are first asked for.
class zvMaskControl : public QObject
{
  Q_OBJECT

public:
  /// Both outlive this object.
  zvMaskControl(zvEditBar* bar, zvViewGrid* views);

  /// Begin with a volume's file: its labels are those that lie beside it, if there are any.
  void Begin(const std::string& volumeFile);

  /// Load other labels, and show them if a mask is wanted. Those before stay until they are there,
  /// and for good if the load is refused or cancelled.
  /// \param isWanted  whether a mask is wanted from then on.
  void Open(const QString& path, bool isWanted = false);

  /// The name of the region at a place in the patient's frame, empty for none.
  QString GetNameAt(const double position[3]) const;

  zvVolumeLoader* GetLoader() { return &this->Loader; }

signals:
  /// Labels have been loaded.
  void opened();

private:
  void Take(const zvLabelAtlas& labels);
  void GiveUp();
  void Show();

  zvEditBar* Bar;
  zvViewGrid* Views;
  zvVolumeLoader Loader;
  zvLabelAtlas Atlas;        // empty until a mask is asked for
  QString Path;              // of the labels that are offered
  QString Loading;           // of those that are under way
  bool IsWantedThen = false; // once those are there
  bool IsShown = false;      // the views have a mask of these labels
};

#endif
