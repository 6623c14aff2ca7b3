#ifndef zvVolumeLoader_h
#define zvVolumeLoader_h

#include "zvMessageTrap.h"
#include "zvVolumeReader.h"

#include <QObject>
#include <QString>

#include <functional>
#include <list>
#include <memory>
#include <thread>

class zvLoadProgress;

/// Loads volumes on a thread of its own, one at a time, while the window stays alive.
///
/// Each load ends in exactly one of the signals loaded, labelsLoaded, refused and cancelled, from
/// the thread of this object. A cancel is answered at once; a reader that cannot stop in the middle
/// of a file goes on unseen, and is waited for by the destructor.
class zvVolumeLoader : public QObject
{
  Q_OBJECT

public:
  explicit zvVolumeLoader(QObject* parent = nullptr);
  ~zvVolumeLoader() override;

  /// Begin to load a file or folder, or the built-in head with so many voxels a side. A load that
  /// still runs is cancelled first.
  void Load(const QString& path);
  void LoadPhantom(int side);
  /// The same for a volume of labels.
  void LoadLabels(const QString& path);

  bool IsLoading() const { return this->Current != nullptr; }

public slots:
  /// Give up the running load, if there is one.
  void Cancel();

signals:
  void started(const QString& name);
  /// \param fraction  the part done, 0 to 1.
  void progressed(double fraction);
  void loaded(const zvVolume& volume);
  void labelsLoaded(const zvLabelAtlas& labels);
  void refused(const QString& path, const QString& reason);
  void cancelled();

private:
  // One load: its thread, and what both threads share.
  struct Job
  {
    zvMessageTrap Trap; // in place before the thread starts and until it has ended
    std::shared_ptr<zvLoadProgress> Progress;
    zvLoadResult Result;
    QString Path;
    std::thread Thread;
  };
  using Work = std::function<zvLoadResult(zvLoadProgress&)>;

  void Start(const QString& path, const Work& work);
  void ShowProgress(const Job* job, double fraction);
  void Finish(Job* job);
  void Tell(const Job& job);

  std::list<std::unique_ptr<Job>> Jobs;
  Job* Current = nullptr; // the one whose end is told; not owned
};

#endif
