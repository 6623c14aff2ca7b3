#include "zvPlanePlace.h"

#include <QCoreApplication>

#include "vtkMath.h"

#include <cmath>

bool zvPlanePlace::IsSameSlice(const zvPlanePlace& other) const
{
  constexpr double parallel = 1.0 - 1.0e-9; // the cosine of what counts as no angle
  constexpr double half = 0.5 + 1.0e-6;     // of a step
  const double cosine = vtkMath::Dot(this->GetNormal().data(), other.GetNormal().data());
  return this->Axis == other.Axis && cosine > parallel &&
    std::fabs(this->Offset - other.Offset) <= half * this->Step;
}

QString zvPlanePlace::Describe() const
{
  return this->IsUpright
    ? QString::number(this->Slice)
    : QCoreApplication::translate("zvPlanePlace", "oblique %1").arg(this->Slice);
}
