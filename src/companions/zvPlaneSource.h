#ifndef zvPlaneSource_h
#define zvPlaneSource_h

#include "vtkPolyDataAlgorithm.h"
#include "zvGraphicsExport.h"

/// A rectangle or parallelogram in space, given by its origin and the ends of its two axes, as a
/// textured quad or a grid of quads.
///
/// It speaks like vtkPlaneSource, and its output is the same, with one difference that widgets
/// live on: normal and centre follow every change of a point at once, without an Update(), also
/// after a change of the origin alone. A plane that passes through a degenerate state, because its
/// three points are changed one after the other, does so silently.
///
/// Points, distances and the centre are in world millimetres. The getters without an argument give
/// a pointer to three values inside the object, valid as long as the object and up to date until
/// its next change. Arguments that are pointers must not be null. Setters call Modified() if they
/// change something; none runs the pipeline.
///
/// Starts as the unit square about the world's origin with its normal along z:
/// origin (-0.5, -0.5, 0), point 1 (0.5, -0.5, 0), point 2 (-0.5, 0.5, 0), resolutions 1.
class ZVGRAPHICS_EXPORT zvPlaneSource : public vtkPolyDataAlgorithm
{
public:
  static zvPlaneSource* New();
  vtkTypeMacro(zvPlaneSource, vtkPolyDataAlgorithm)
  void PrintSelf(ostream& os, vtkIndent indent) override;

  // Deliberate: these virtual operations stay in this order, right behind those of the base class.
  // Callers that were built against an older library find them by their place.

  /// The number of quads along the first axis (default 1); less than 1 counts as 1.
  virtual void SetXResolution(int resolution);
  virtual int GetXResolution();

  /// The number of quads along the second axis (default 1); less than 1 counts as 1.
  virtual void SetYResolution(int resolution);
  virtual int GetYResolution();

  /// The corner from which both axes start. Setting it leaves both axis ends where they are.
  virtual void SetOrigin(double x, double y, double z);
  virtual void SetOrigin(double* point);
  virtual double* GetOrigin();
  virtual void GetOrigin(double* point);

  /// The end of the first axis.
  virtual double* GetPoint1();
  virtual void GetPoint1(double* point);

  /// The end of the second axis.
  virtual double* GetPoint2();
  virtual void GetPoint2(double* point);

  /// The middle of the plane, halfway between both axis ends.
  virtual double* GetCenter();
  virtual void GetCenter(double* center);

  /// The unit normal: first axis cross second axis. (0, 0, 0) while the axes span no area.
  virtual double* GetNormal();
  virtual void GetNormal(double* normal);

  /// Set the end of one axis. Setting it leaves the origin and the other end where they are.
  void SetPoint1(double x, double y, double z);
  void SetPoint1(double* point);
  void SetPoint2(double x, double y, double z);
  void SetPoint2(double* point);

  /// Set both resolutions.
  void SetResolution(int xResolution, int yResolution);
  void GetResolution(int& xResolution, int& yResolution);

  /// The vectors from the origin to the ends of the axes.
  void GetAxis1(double* axis);
  void GetAxis2(double* axis);

  /// Translate the plane so that its middle is \a center. GetCenter() then gives exactly that
  /// point, and setting the same centre again changes nothing.
  void SetCenter(double x, double y, double z);
  void SetCenter(double* center);

  /// Turn the plane about its centre, the shortest way, until its normal has the given direction
  /// (of any length). The VTK error "A plane cannot be turned to a normal of no length" or "A plane
  /// that spans no area cannot be turned to a normal" says why nothing was done.
  void SetNormal(double x, double y, double z);
  void SetNormal(double* normal);

  /// Translate the plane along its normal by \a distance, against it if that is negative. Nothing
  /// happens for 0 and while the axes span no area.
  void Push(double distance);

  /// Turn the plane about its centre by \a angle degrees, right-handed around the direction
  /// \a rotationAxis (of any length; nothing happens for no length).
  void Rotate(double angle, double* rotationAxis);

  /// Precision of the output's points: vtkAlgorithm::SINGLE_PRECISION (default) or
  /// DOUBLE_PRECISION. Clipping planes that meet the plane should have the same.
  virtual void SetOutputPointsPrecision(int precision);
  virtual int GetOutputPointsPrecision();

protected:
  zvPlaneSource();
  ~zvPlaneSource() override = default;

  /// Fills the output: points row by row along the first axis, quads, the normal at each point, and
  /// texture coordinates from 0 to 1 along the two axes.
  int RequestData(
    vtkInformation* request, vtkInformationVector** inputs, vtkInformationVector* outputs) override;

private:
  zvPlaneSource(const zvPlaneSource&) = delete;
  void operator=(const zvPlaneSource&) = delete;

  void ChangePoint(double* point, double x, double y, double z);
  void Translate(const double* shift);
  void Turn(double radians, const double* unitAxis);
  void UpdateNormal();
  void UpdateCenter();

  int XResolution = 1;
  int YResolution = 1;
  double Origin[3] = { -0.5, -0.5, 0.0 };
  double Point1[3] = { 0.5, -0.5, 0.0 };
  double Point2[3] = { -0.5, 0.5, 0.0 };
  // Follow the three points at every change.
  double Center[3] = { 0.0, 0.0, 0.0 };
  double Normal[3] = { 0.0, 0.0, 1.0 };
  int OutputPointsPrecision = vtkAlgorithm::SINGLE_PRECISION;
};

#endif
