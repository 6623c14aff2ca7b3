#include "zvVoxelText.h"

#include "zvVolume.h"
#include "zvVolumeView.h"

#include <QCoreApplication>
#include <QStringList>

#include <cmath>

QString zvVoxelText::Describe(const zvVoxel& voxel, bool isOrientationKnown)
{
  QStringList place;
  for (int axis = 0; axis < 3; ++axis)
  {
    const double position = voxel.Position[static_cast<std::size_t>(axis)];
    place += isOrientationKnown ? QString("%1 %2")
                                    .arg(zvSideLetter(axis, position >= 0.0))
                                    .arg(std::fabs(position), 0, 'f', 1)
                                : QString("%1").arg(position, 0, 'f', 1);
  }
  QStringList parts;
  if (!voxel.View.isEmpty())
  {
    parts += voxel.View;
  }
  parts += QCoreApplication::translate("zvVoxelText", "Voxel %1 %2 %3     %4 mm     value %5")
             .arg(voxel.Index[0])
             .arg(voxel.Index[1])
             .arg(voxel.Index[2])
             .arg(place.join("  "))
             .arg(voxel.Value);
  if (!voxel.Label.isEmpty())
  {
    parts += voxel.Label;
  }
  return parts.join("     ");
}

QString zvVoxelText::Hint()
{
  return QCoreApplication::translate("zvVoxelText",
    "The voxel under the mouse is told here; in 3D, Shift + left click on a plane reads one");
}
