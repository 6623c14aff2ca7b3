#include "zvWindowLevel.h"

#include "vtkDataArray.h"
#include "vtkImageData.h"
#include "vtkLookupTable.h"
#include "vtkPointData.h"

#include <algorithm>
#include <cmath>

namespace
{
// No closer to zero than the limit; a value of exactly zero counts as positive.
double AwayFromZero(double value, double limit)
{
  if (std::fabs(value) >= limit || std::isnan(value))
  {
    return value;
  }
  return value < 0.0 ? -limit : limit;
}

// A motion of a quarter of the viewport changes a value by itself. The sign is turned back for a
// negative one, so that right and up add to it all the same.
double ChangeOf(double value, double motion)
{
  const double scale = std::fabs(value) > 0.01 ? value : (value < 0.0 ? -0.01 : 0.01);
  const double change = 4.0 * motion * scale;
  return value < 0.0 ? -change : change;
}

bool IsRange(const double range[2])
{
  return std::isfinite(range[0]) && std::isfinite(range[1]) && range[0] <= range[1];
}
}

void zvWindowLevel::GetRange(vtkImageData* image, double range[2])
{
  image->GetScalarRange(range);
  vtkDataArray* scalars = image->GetPointData()->GetScalars();
  if (!IsRange(range) && scalars)
  {
    scalars->GetFiniteRange(range, 0);
  }
  if (!IsRange(range))
  {
    range[0] = 0.0;
    range[1] = 1.0;
  }
}

zvWindowLevel::Values zvWindowLevel::FromRange(const double range[2])
{
  return { AwayFromZero(range[1] - range[0], 0.001),
    AwayFromZero(0.5 * (range[0] + range[1]), 0.001) };
}

zvWindowLevel::Values zvWindowLevel::Adopt(vtkImageData* image, vtkLookupTable* table)
{
  double range[2];
  GetRange(image, range);
  if (table)
  {
    table->SetTableRange(range);
    table->Build();
  }
  return FromRange(range);
}

zvWindowLevel::Values zvWindowLevel::Dragged(const Values& start, double x, double y)
{
  return { AwayFromZero(start.Window + ChangeOf(start.Window, x), 0.01),
    AwayFromZero(start.Level + ChangeOf(start.Level, y), 0.01) };
}

bool zvWindowLevel::HaveOppositeSigns(double a, double b)
{
  return (a < 0.0 && b > 0.0) || (a > 0.0 && b < 0.0);
}

bool zvWindowLevel::AreFinite(const Values& values)
{
  return std::isfinite(values.Window) && std::isfinite(values.Level);
}

void zvWindowLevel::SetTableRange(const Values& values, vtkLookupTable* table)
{
  const double width = std::fabs(values.Window);
  const double range[2] = { values.Level - 0.5 * width, values.Level - 0.5 * width + width };
  if (IsRange(range))
  {
    table->SetTableRange(range);
  }
}

void zvWindowLevel::Reverse(vtkLookupTable* table)
{
  const vtkIdType size = table->GetNumberOfTableValues();
  if (size < 1)
  {
    return;
  }
  vtkIdType index = size;
  for (vtkIdType count = 0; count < --index; ++count)
  {
    unsigned char* low = table->GetPointer(count);
    std::swap_ranges(low, low + 4, table->GetPointer(index));
  }
  // A table that is not told of values set by hand builds its ramp again.
  double first[4];
  table->GetTableValue(0, first);
  table->SetTableValue(0, first);
}
