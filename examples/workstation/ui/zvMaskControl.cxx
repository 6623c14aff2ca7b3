#include "zvMaskControl.h"

#include "zvEditBar.h"
#include "zvViewGrid.h"

#include <QAction>

zvMaskControl::zvMaskControl(zvEditBar* bar, zvViewGrid* views)
  : Bar(bar)
  , Views(views)
{
  connect(bar, &zvEditBar::maskChosen, this, &zvMaskControl::Show);
  connect(bar, &zvEditBar::opacityChosen, this,
    [this] { this->Views->SetMaskOpacity(this->Bar->GetOpacity()); });
  connect(&this->Loader, &zvVolumeLoader::labelsLoaded, this, &zvMaskControl::Take);
  connect(&this->Loader, &zvVolumeLoader::refused, this, &zvMaskControl::GiveUp);
  connect(&this->Loader, &zvVolumeLoader::cancelled, this, &zvMaskControl::GiveUp);
}

void zvMaskControl::Begin(const std::string& volumeFile)
{
  this->Loader.Cancel();
  this->Atlas = zvLabelAtlas();
  this->Path = QString::fromStdString(zvLabelAtlas::FindBeside(volumeFile));
  this->Bar->ShowAtlas(!this->Path.isEmpty(), this->Atlas);
}

void zvMaskControl::Open(const QString& path, bool isWanted)
{
  this->IsWantedThen = isWanted;
  this->Loading = path;
  this->Loader.LoadLabels(path);
}

void zvMaskControl::Take(const zvLabelAtlas& labels)
{
  this->Path = this->Loading;
  this->Atlas = labels;
  this->Bar->ShowAtlas(true, this->Atlas);
  if (this->IsWantedThen)
  {
    this->Bar->GetMaskAction()->setChecked(true);
  }
  this->Show();
  emit opened();
}

// A mask that was asked for and does not come is not shown as on.
void zvMaskControl::GiveUp()
{
  if (this->Atlas.IsEmpty())
  {
    this->Bar->GetMaskAction()->setChecked(false);
  }
}

// The labels are read when they are first asked for.
void zvMaskControl::Show()
{
  const bool isWanted = this->Bar->IsMaskWanted();
  if (isWanted && this->Atlas.IsEmpty())
  {
    if (!this->Loader.IsLoading())
    {
      this->Open(this->Path);
    }
    return;
  }
  // What somebody else shows as a mask stays.
  if (!isWanted && !this->IsShown)
  {
    return;
  }
  this->IsShown = isWanted;
  const auto mask = isWanted ? this->Atlas.MakeMask(this->Bar->GetRegion()) : nullptr;
  this->Views->SetMask(mask, this->Bar->GetOpacity());
}

QString zvMaskControl::GetNameAt(const double position[3]) const
{
  return QString::fromStdString(this->Atlas.GetName(this->Atlas.GetNumberAt(position)));
}
