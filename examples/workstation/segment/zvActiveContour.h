#ifndef zvActiveContour_h
#define zvActiveContour_h

#include "zvContour.h"
#include "zvContourForces.h"
#include "zvContourSmoother.h"

#include <memory>
#include <string>

/// How a contour is moved. The defaults suit a ring that grows from inside an object.
struct zvContourParameters
{
  /// The pull between neighbouring points.
  double Elasticity = 0.05;
  /// The resistance against bending.
  double Stiffness = 0.5;
  /// The pressure along the normal: positive grows, negative shrinks, up to about 1.
  double Balloon = 1.0;
  /// How strongly edges attract.
  double EdgePull = 1.0;
  /// Which values are like those that the contour started in, in spreads of these: there the
  /// balloon drives on, elsewhere it drives back. 0: it drives everywhere.
  double TissueRange = 2.0;
  /// The furthest that a point moves in a step, in voxels.
  double StepLength = 0.5;
  /// After so many steps it has to be enough.
  int MostSteps = 800;
  zvForceParameters Forces;
};

/// Which values a contour takes for its own side.
struct zvTissue
{
  double Middle = 0.0;
  double Reach = 0.0; // up to which distance from the middle; 0 for all values
};

/// A contour that moves to the edges of a slice, step by step.
///
/// Each step moves the points along their normals by the sum of the balloon and of the edges' pull,
/// draws them together by the internal forces, keeps them in the slice, cuts off loops and spaces
/// the points evenly again. Their number and the contour's sense of rotation stay.
///
/// It never gives away a contour: what cannot be used leaves the one before in its place.
class zvActiveContour
{
public:
  enum class State
  {
    Idle,    // nothing to move
    Moving,  // the next step goes on
    Settled, // it does not move any more
    OutOfSteps,
    AtBorder, // it does not move any more since most of it lies on the slice's border
    Vanished, // it shrank to nothing, and is the one from the beginning again
    Broken,   // a step failed, and the one before it stands
    Refused,  // the contour or the slice is no good, and nothing has been moved
  };

  /// Those of the forces are for whoever makes these; all others act from the next step on.
  void SetParameters(const zvContourParameters& parameters);
  const zvContourParameters& GetParameters() const { return this->Parameters; }

  /// Begin in a slice, with a contour of any sense of rotation.
  /// \param tissue  as it was measured elsewhere; null measures it here.
  /// \return Moving, or Refused with a message.
  State Begin(std::shared_ptr<const zvContourForces> forces, const zvContour& contour,
    const zvTissue* tissue = nullptr);

  /// Go on with a contour that was changed meanwhile, as from the beginning of the step count.
  State Take(const zvContour& contour);

  /// One step. In any state but Moving nothing is done.
  State Step();

  State GetState() const { return this->Now; }
  /// A sentence on why it does not move, empty in Idle, Moving and Settled.
  const std::string& GetMessage() const { return this->Message; }
  const zvContour& GetContour() const { return this->Contour; }
  const zvTissue& GetTissue() const { return this->Tissue; }
  const zvContourForces* GetForces() const { return this->Forces.get(); }
  int GetStepCount() const { return this->StepCount; }

private:
  State End(State state, const std::string& message);
  void MeasureTissue();
  void MakeSmoother();
  double GetLeastArea() const;
  zvContour MoveAlongNormals() const;
  double GetPush(const zvContourPoint& point, const zvContourPoint& normal) const;
  zvContourPoint Clamp(const zvContourPoint& point) const;
  bool IsMostlyAtBorder() const;
  bool HasSettled();

  zvContourParameters Parameters;
  std::shared_ptr<const zvContourForces> Forces;
  zvContourSmoother Smoother;
  zvTissue Tissue;
  zvContour Contour;
  zvContour Start;  // to go back to
  zvContour Marker; // how it lay some steps ago
  State Now = State::Idle;
  std::string Message;
  int StepCount = 0;
};

#endif
