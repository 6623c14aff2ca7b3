#include "zvMeasurementSource.h"

bool zvMeasurementSource::Edit(int)
{
  return false;
}

bool zvMeasurementSource::RemoveUnderMouse()
{
  return false;
}

QString zvMeasurementSource::Number(double number)
{
  return QString::number(number, 'f', 2);
}
