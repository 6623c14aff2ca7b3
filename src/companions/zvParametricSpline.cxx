#include "zvParametricSpline.h"

#include "vtkObjectFactory.h"
#include "vtkPoints.h"
#include "zvSplineCurve.h"

vtkObjectFactoryNewMacro(zvParametricSpline)

  zvParametricSpline::zvParametricSpline()
  : Curve(std::make_unique<zvSplineCurve>())
  , ClosedCurve(std::make_unique<zvSplineCurve>())
{
  this->DerivativesAvailable = 0;
}

zvParametricSpline::~zvParametricSpline() = default;

void zvParametricSpline::SetPoints(vtkPoints* points)
{
  if (points != this->Points)
  {
    this->Points = points;
    this->Modified();
  }
}

vtkPoints* zvParametricSpline::GetPoints()
{
  return this->Points;
}

void zvParametricSpline::SetClosed(int closed)
{
  if ((closed != 0) != this->Closed)
  {
    this->Closed = closed != 0;
    this->Modified();
  }
}

int zvParametricSpline::GetClosed()
{
  return this->Closed ? 1 : 0;
}

void zvParametricSpline::Evaluate(double uvw[3], double pt[3], double*)
{
  this->FittedCurve().Evaluate(uvw[0], pt);
}

double zvParametricSpline::EvaluateScalar(double uvw[3], double*, double*)
{
  return uvw[0];
}

double zvParametricSpline::GetClosedLength()
{
  return this->FittedClosedCurve().Length();
}

int zvParametricSpline::GetIndex(int n, double length)
{
  // An open curve is shorter, but callers know only the closed length and ask for a fraction of it.
  const double place =
    this->Closed ? length : length / this->GetClosedLength() * this->FittedCurve().Length();
  const int index = this->FittedCurve().HandleBefore(place);
  return index < n - 1 ? index : -1;
}

zvSplineCurve& zvParametricSpline::FittedCurve()
{
  if (this->CurveTime < this->GetMTime())
  {
    this->Curve->Fit(this->Points, this->Closed);
    this->CurveTime.Modified();
  }
  return *this->Curve;
}

zvSplineCurve& zvParametricSpline::FittedClosedCurve()
{
  if (this->Closed)
  {
    return this->FittedCurve();
  }
  if (this->ClosedCurveTime < this->GetMTime())
  {
    this->ClosedCurve->Fit(this->Points, true);
    this->ClosedCurveTime.Modified();
  }
  return *this->ClosedCurve;
}

void zvParametricSpline::PrintSelf(ostream& os, vtkIndent indent)
{
  this->Superclass::PrintSelf(os, indent);
  os << indent << "Points: " << this->Points.Get() << "\n";
  os << indent << "Closed: " << (this->Closed ? "On\n" : "Off\n");
}
