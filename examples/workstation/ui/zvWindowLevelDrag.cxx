#include "zvWindowLevelDrag.h"

#include <algorithm>

void zvWindowLevelDrag::Begin(
  const QPoint& position, const zvWindowValues& value, double fullWindow)
{
  this->Running = true;
  this->Start = position;
  this->StartValue = value;
  this->FullWindow = fullWindow;
}

zvWindowValues zvWindowLevelDrag::MoveTo(const QPoint& position, const QSize& view) const
{
  const QPoint way = position - this->Start;
  const double right = static_cast<double>(way.x()) / std::max(view.width(), 1);
  const double down = static_cast<double>(way.y()) / std::max(view.height(), 1);
  zvWindowValues value = this->StartValue;
  value.Window = std::max(value.Window + right * this->FullWindow, 0.001 * this->FullWindow);
  value.Level -= down * this->FullWindow;
  return value;
}
