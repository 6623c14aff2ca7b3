#include "zvVolumeLoader.h"

#include "zvFileFacts.h"
#include "zvLabelAtlas.h"
#include "zvLoadProgress.h"

#include <QMetaObject>

#include <algorithm>

zvVolumeLoader::zvVolumeLoader(QObject* parent)
  : QObject(parent)
{
}

zvVolumeLoader::~zvVolumeLoader()
{
  for (const auto& job : this->Jobs)
  {
    job->Progress->Cancel();
  }
  for (const auto& job : this->Jobs)
  {
    job->Thread.join();
  }
}

void zvVolumeLoader::Load(const QString& path)
{
  this->Start(path,
    [file = path.toStdString()](zvLoadProgress& progress)
    { return zvVolumeReader::Read(file, progress); });
}

void zvVolumeLoader::LoadPhantom(int side)
{
  this->Start(tr("head phantom"),
    [side](zvLoadProgress& progress) { return zvVolumeReader::MakePhantom(side, progress); });
}

void zvVolumeLoader::LoadLabels(const QString& path)
{
  this->Start(path,
    [file = path.toStdString()](zvLoadProgress& progress)
    { return zvVolumeReader::ReadLabels(file, progress); });
}

void zvVolumeLoader::Start(const QString& path, const Work& work)
{
  this->Cancel();
  auto job = std::make_unique<Job>();
  Job* const running = job.get();
  // The thread's news travel as events, so that they arrive here and not there.
  job->Progress = std::make_shared<zvLoadProgress>(
    [this, running](double fraction)
    {
      QMetaObject::invokeMethod(
        this, [this, running, fraction] { this->ShowProgress(running, fraction); },
        Qt::QueuedConnection);
    });
  job->Path = path;
  this->Current = running;
  this->Jobs.push_back(std::move(job));
  emit started(QString::fromStdString(zvFileFacts::NameOf(path.toStdString())));
  running->Thread = std::thread(
    [this, running, work]
    {
      running->Result = work(*running->Progress);
      QMetaObject::invokeMethod(
        this, [this, running] { this->Finish(running); }, Qt::QueuedConnection);
    });
}

void zvVolumeLoader::Cancel()
{
  if (this->Current != nullptr)
  {
    this->Current->Progress->Cancel();
    this->Current = nullptr;
    emit cancelled();
  }
}

void zvVolumeLoader::ShowProgress(const Job* job, double fraction)
{
  if (job == this->Current)
  {
    emit progressed(fraction);
  }
}

void zvVolumeLoader::Finish(Job* job)
{
  job->Thread.join();
  const auto place = std::find_if(this->Jobs.begin(), this->Jobs.end(),
    [job](const std::unique_ptr<Job>& other) { return other.get() == job; });
  const std::unique_ptr<Job> ended = std::move(*place);
  this->Jobs.erase(place);
  if (job == this->Current)
  {
    this->Current = nullptr;
    this->Tell(*ended);
  }
}

void zvVolumeLoader::Tell(const Job& job)
{
  switch (job.Result.Ending)
  {
    case zvLoadResult::Outcome::Loaded:
      if (job.Result.Labels)
      {
        emit labelsLoaded(*job.Result.Labels);
        break;
      }
      emit loaded(job.Result.Volume);
      break;
    case zvLoadResult::Outcome::Refused:
      emit refused(job.Path, QString::fromStdString(job.Result.Reason));
      break;
    case zvLoadResult::Outcome::Cancelled:
      emit cancelled();
      break;
  }
}
