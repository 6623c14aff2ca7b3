#include "zvHeadPhantom.h"
#include "zvLoadProgress.h"
#include "zvPatientGrid.h"
#include "zvSliceGaps.h"
#include "zvVolumeReader.h"
#include "zvWindowPresets.h"

#include "zvDice.h"
#include "zvIndexedVolume.h"
#include "zvQuietTest.h"

#include "vtkMath.h"
#include "vtkNew.h"
#include "vtkTransform.h"

#include <algorithm>
#include <limits>

class WorkstationData : public zvtest::QuietTest
{
protected:
  // A raw volume of indexed voxels.
  static zvRawVolume MakeRaw(const std::array<int, 3>& dimensions)
  {
    zvRawVolume raw;
    raw.Voxels = zvtest::MakeIndexedVolume(dimensions);
    raw.Name = "raw";
    raw.IsOrientationKnown = true;
    return raw;
  }

  zvVolume Straighten(const zvRawVolume& raw)
  {
    return zvPatientGrid::Straighten(raw, this->Progress, 0.0, 1.0);
  }

  // The sentence with which a volume is refused, empty if it is not.
  std::string RefusalOf(const zvRawVolume& raw)
  {
    try
    {
      this->Straighten(raw);
    }
    catch (const std::exception& refusal)
    {
      return refusal.what();
    }
    return std::string();
  }

  zvLoadProgress Progress;
};

namespace
{
constexpr int Orders[6][3] = { { 0, 1, 2 }, { 0, 2, 1 }, { 1, 0, 2 }, { 1, 2, 0 }, { 2, 0, 1 },
  { 2, 1, 0 } };

// Voxel axis a runs along patient axis order[a], backwards if the bit a of flips is set.
void FillSignedPermutation(
  vtkMatrix4x4* matrix, const int order[3], int flips, const double spacing[3])
{
  matrix->Zero();
  matrix->SetElement(3, 3, 1.0);
  for (int a = 0; a < 3; ++a)
  {
    matrix->SetElement(order[a], a, (flips >> a & 1) ? -spacing[a] : spacing[a]);
  }
}

// Turn a raw volume by so many degrees about an axis through the world's origin.
void Turn(zvRawVolume& raw, double degrees, const std::array<double, 3>& axis)
{
  vtkNew<vtkTransform> turn;
  turn->RotateWXYZ(degrees, axis.data());
  vtkMatrix4x4::Multiply4x4(turn->GetMatrix(), raw.IndexToPatient, raw.IndexToPatient);
}

void SetSpacing(zvRawVolume& raw, const std::array<double, 3>& spacing)
{
  for (int a = 0; a < 3; ++a)
  {
    raw.IndexToPatient->SetElement(a, a, spacing[a]);
  }
}

// Voxels that grow evenly along the world's axes, which linear interpolation gives back exactly.
void FillWithRamp(zvRawVolume& raw)
{
  int dimensions[3];
  raw.Voxels->GetDimensions(dimensions);
  raw.Voxels->AllocateScalars(VTK_DOUBLE, 1);
  auto* voxel = static_cast<double*>(raw.Voxels->GetScalarPointer());
  for (vtkIdType id = 0; id < raw.Voxels->GetNumberOfPoints(); ++id)
  {
    const double index[4] = { double(id % dimensions[0]),
      double(id / dimensions[0] % dimensions[1]), double(id / dimensions[0] / dimensions[1]), 1.0 };
    double world[4];
    raw.IndexToPatient->MultiplyPoint(index, world);
    *voxel++ = 1000.0 + world[0] - 2.0 * world[1] + 3.0 * world[2];
  }
}

// The indices in the old grid of a point of the new one.
std::array<double, 4> OldIndexOf(const zvRawVolume& raw, const double point[3])
{
  vtkNew<vtkMatrix4x4> inverse;
  vtkMatrix4x4::Invert(raw.IndexToPatient, inverse);
  const double in[4] = { point[0], point[1], point[2], 1.0 };
  std::array<double, 4> out;
  inverse->MultiplyPoint(in, out.data());
  return out;
}

bool IsWithin(const zvRawVolume& raw, const std::array<double, 4>& index, double margin)
{
  const int* dimensions = raw.Voxels->GetDimensions();
  for (int a = 0; a < 3; ++a)
  {
    if (index[a] < margin || index[a] > dimensions[a] - 1 - margin)
    {
      return false;
    }
  }
  return true;
}

zvVolume MakeVolume(int type, const std::vector<double>& values)
{
  zvVolume volume;
  volume.Image = vtkSmartPointer<vtkImageData>::New();
  volume.Image->SetDimensions(static_cast<int>(values.size()), 1, 1);
  volume.Image->AllocateScalars(type, 1);
  for (std::size_t i = 0; i < values.size(); ++i)
  {
    volume.Image->SetScalarComponentFromDouble(static_cast<int>(i), 0, 0, 0, values[i]);
  }
  return volume;
}

const zvWindowPreset* Find(const std::vector<zvWindowPreset>& presets, const std::string& name)
{
  const auto found = std::find_if(presets.begin(), presets.end(),
    [&name](const zvWindowPreset& preset) { return preset.Name == name; });
  return found == presets.end() ? nullptr : &*found;
}
}

TEST_F(WorkstationData, EverySignedPermutationKeepsEveryVoxelsValueAndPlace)
{
  zvtest::Dice dice(4711);
  for (const auto& order : Orders)
  {
    for (int flips = 0; flips < 8; ++flips)
    {
      const std::array<int, 3> dimensions = { { dice.Int(2, 9), dice.Int(2, 9), dice.Int(2, 9) } };
      zvRawVolume raw = MakeRaw(dimensions);
      const double spacing[3] = { dice.Real(0.2, 3.0), dice.Real(0.2, 3.0), dice.Real(0.2, 3.0) };
      FillSignedPermutation(raw.IndexToPatient, order, flips, spacing);
      for (int row = 0; row < 3; ++row)
      {
        raw.IndexToPatient->SetElement(row, 3, dice.Real(-300.0, 300.0));
      }
      const zvVolume volume = this->Straighten(raw);
      EXPECT_TRUE(zvtest::HasEveryVoxelInPlace(volume.Image, dimensions, raw.IndexToPatient));
      EXPECT_EQ(volume.Image->GetScalarType(), VTK_SHORT);
      EXPECT_TRUE(volume.Notices.empty());
    }
  }
}

TEST_F(WorkstationData, AStraightVolumeIsNotCopied)
{
  zvRawVolume raw = MakeRaw({ { 4, 5, 6 } });
  SetSpacing(raw, { { 1.0, 2.0, 3.0 } });
  const zvVolume volume = this->Straighten(raw);
  EXPECT_EQ(volume.Image->GetScalarPointer(), raw.Voxels->GetScalarPointer());
  EXPECT_TRUE(zvtest::HasEveryVoxelInPlace(volume.Image, { { 4, 5, 6 } }, raw.IndexToPatient));
}

TEST_F(WorkstationData, EveryScalarTypeIsPermutedByItsBytes)
{
  const int order[3] = { 2, 0, 1 };
  const double spacing[3] = { 1.0, 1.0, 1.0 };
  for (const int type : { VTK_CHAR, VTK_SIGNED_CHAR, VTK_UNSIGNED_CHAR, VTK_SHORT,
         VTK_UNSIGNED_SHORT, VTK_INT, VTK_UNSIGNED_INT, VTK_FLOAT, VTK_DOUBLE })
  {
    zvRawVolume raw;
    raw.Voxels = vtkSmartPointer<vtkImageData>::New();
    raw.Voxels->SetDimensions(3, 2, 4);
    raw.Voxels->AllocateScalars(type, 1);
    for (int i = 0; i < 24; ++i)
    {
      raw.Voxels->GetPointData()->GetScalars()->SetComponent(i, 0, i);
    }
    FillSignedPermutation(raw.IndexToPatient, order, 1, spacing);
    const zvVolume volume = this->Straighten(raw);
    ASSERT_EQ(volume.Image->GetScalarType(), type);
    // Old i runs down the new z, old j along x, old k along y.
    EXPECT_EQ(volume.Image->GetScalarComponentAsDouble(0, 0, 0, 0), 2.0);
    EXPECT_EQ(volume.Image->GetScalarComponentAsDouble(1, 0, 0, 0), 5.0);
    EXPECT_EQ(volume.Image->GetScalarComponentAsDouble(0, 3, 2, 0), 18.0);
  }
}

TEST_F(WorkstationData, WholeNumbersOf64BitsBecomeDouble)
{
  for (const int type : { VTK_LONG, VTK_UNSIGNED_LONG, VTK_LONG_LONG, VTK_UNSIGNED_LONG_LONG })
  {
    zvRawVolume raw;
    raw.Voxels = vtkSmartPointer<vtkImageData>::New();
    raw.Voxels->SetDimensions(2, 2, 2);
    raw.Voxels->AllocateScalars(type, 1);
    for (int i = 0; i < 8; ++i)
    {
      raw.Voxels->GetPointData()->GetScalars()->SetComponent(i, 0, 1.0e10 + i);
    }
    SetSpacing(raw, { { -1.0, 1.0, 1.0 } });
    const zvVolume volume = this->Straighten(raw);
    EXPECT_EQ(volume.Image->GetScalarType(), VTK_DOUBLE);
    EXPECT_EQ(volume.Image->GetScalarComponentAsDouble(0, 1, 1, 0), 1.0e10 + 7.0);
  }
}

TEST_F(WorkstationData, ALeanWithinTheToleranceCountsAsStraight)
{
  zvRawVolume raw = MakeRaw({ { 9, 9, 9 } });
  Turn(raw, vtkMath::DegreesFromRadians(0.9e-3), { { 0.0, 0.0, 1.0 } });
  const zvVolume volume = this->Straighten(raw);
  EXPECT_TRUE(volume.Notices.empty());
  // Half the diagonal away from the centre a thousandth of it may be off.
  EXPECT_TRUE(
    zvtest::HasEveryVoxelInPlace(volume.Image, { { 9, 9, 9 } }, raw.IndexToPatient, 7.0e-3));
}

TEST_F(WorkstationData, ALeanBeyondTheToleranceIsResampledWithANotice)
{
  zvRawVolume raw = MakeRaw({ { 9, 9, 9 } });
  Turn(raw, vtkMath::DegreesFromRadians(1.2e-3), { { 0.0, 0.0, 1.0 } });
  const zvVolume volume = this->Straighten(raw);
  ASSERT_EQ(volume.Notices.size(), 1u);
  EXPECT_EQ(volume.Notices.front(),
    "The slices lean by 0.0688 degrees: resampled to 10 x 10 x 9 voxels of 1 x 1 x 1 mm along the "
    "patient's axes.");
}

TEST_F(WorkstationData, AnObliqueVolumeKeepsItsValuesInTheWorld)
{
  zvtest::Dice dice(815);
  for (int run = 0; run < 20; ++run)
  {
    zvRawVolume raw = MakeRaw({ { 20, 24, 16 } });
    SetSpacing(raw, { { 0.8, 1.1, 2.5 } });
    Turn(raw, dice.Real(5.0, 175.0),
      { { dice.Real(-1.0, 1.0), dice.Real(-1.0, 1.0), dice.Real(0.1, 1.0) } });
    FillWithRamp(raw);
    const zvVolume volume = this->Straighten(raw);
    EXPECT_TRUE(volume.Image->GetDirectionMatrix()->IsIdentity());
    const double lowest = raw.Voxels->GetScalarRange()[0];
    int inside = 0, outside = 0;
    for (vtkIdType id = 0; id < volume.Image->GetNumberOfPoints(); ++id)
    {
      double point[3];
      volume.Image->GetPoint(id, point);
      const double value = volume.Image->GetPointData()->GetScalars()->GetComponent(id, 0);
      const auto index = OldIndexOf(raw, point);
      if (IsWithin(raw, index, 1.0e-3))
      {
        ++inside;
        ASSERT_NEAR(value, 1000.0 + point[0] - 2.0 * point[1] + 3.0 * point[2], 1.0e-3);
      }
      else if (!IsWithin(raw, index, -0.51))
      {
        ++outside;
        ASSERT_EQ(value, lowest);
      }
    }
    EXPECT_GT(inside, 1000);
    EXPECT_GT(outside, 1000);
  }
}

TEST_F(WorkstationData, ResamplingIsAtLeastAsFineAsTheOldGridAndHoldsAllOfIt)
{
  zvtest::Dice dice(2);
  for (int run = 0; run < 50; ++run)
  {
    zvRawVolume raw = MakeRaw({ { 6, 7, 8 } });
    SetSpacing(raw, { { dice.Real(0.3, 1.0), dice.Real(0.3, 3.0), dice.Real(1.0, 5.0) } });
    Turn(raw, dice.Real(2.0, 178.0),
      { { dice.Real(-1.0, 1.0), dice.Real(-1.0, 1.0), dice.Real(0.1, 1.0) } });
    const zvVolume volume = this->Straighten(raw);
    double origin[3], bounds[6];
    volume.Image->GetOrigin(origin);
    volume.Image->GetBounds(bounds);
    const auto start = OldIndexOf(raw, origin);
    for (int a = 0; a < 3; ++a)
    {
      double next[3] = { origin[0], origin[1], origin[2] };
      next[a] += volume.Image->GetSpacing()[a];
      const auto step = OldIndexOf(raw, next);
      const double way[3] = { step[0] - start[0], step[1] - start[1], step[2] - start[2] };
      EXPECT_LE(vtkMath::Norm(way), 1.0 + 1.0e-9);
    }
    for (int corner = 0; corner < 8; ++corner)
    {
      const double index[4] = { (corner & 1) * 5.0, (corner >> 1 & 1) * 6.0,
        (corner >> 2 & 1) * 7.0, 1.0 };
      double world[4];
      raw.IndexToPatient->MultiplyPoint(index, world);
      for (int a = 0; a < 3; ++a)
      {
        EXPECT_GE(world[a], bounds[2 * a] - 1.0e-5);
        EXPECT_LE(world[a], bounds[2 * a + 1] + 1.0e-5);
      }
    }
  }
}

TEST_F(WorkstationData, AShearedVolumeIsResampled)
{
  zvRawVolume raw = MakeRaw({ { 20, 20, 20 } });
  raw.IndexToPatient->SetElement(1, 2, 0.4); // a tilted gantry
  FillWithRamp(raw);
  const zvVolume volume = this->Straighten(raw);
  EXPECT_EQ(volume.Notices.size(), 1u);
  const int* dimensions = volume.Image->GetDimensions();
  const int middle[3] = { dimensions[0] / 2, dimensions[1] / 2, dimensions[2] / 2 };
  double point[3];
  volume.Image->GetPoint(volume.Image->ComputePointId(const_cast<int*>(middle)), point);
  EXPECT_NEAR(volume.Image->GetScalarComponentAsDouble(middle[0], middle[1], middle[2], 0),
    1000.0 + point[0] - 2.0 * point[1] + 3.0 * point[2], 1.0e-3);
}

TEST_F(WorkstationData, AMatrixThatPlacesNothingIsRefused)
{
  zvRawVolume raw = MakeRaw({ { 4, 4, 4 } });
  raw.IndexToPatient->SetElement(2, 2, 0.0);
  EXPECT_EQ(this->RefusalOf(raw),
    "its header gives the voxels no room: an axis is missing or two coincide");
  raw.IndexToPatient->SetElement(2, 2, std::numeric_limits<double>::quiet_NaN());
  EXPECT_EQ(this->RefusalOf(raw), "its header places the voxels nowhere: a number is not finite");
  raw.IndexToPatient->SetElement(2, 2, 1.0);
  raw.IndexToPatient->SetElement(0, 3, std::numeric_limits<double>::infinity());
  EXPECT_EQ(this->RefusalOf(raw), "its header places the voxels nowhere: a number is not finite");
}

TEST_F(WorkstationData, SideLettersFollowThePatientsFrame)
{
  EXPECT_STREQ(zvSideLetter(0, true), "L");
  EXPECT_STREQ(zvSideLetter(0, false), "R");
  EXPECT_STREQ(zvSideLetter(1, true), "P");
  EXPECT_STREQ(zvSideLetter(1, false), "A");
  EXPECT_STREQ(zvSideLetter(2, true), "S");
  EXPECT_STREQ(zvSideLetter(2, false), "I");
}

TEST_F(WorkstationData, ThePhantomHasTheHeadsValuesAndPlaces)
{
  const zvVolume head = zvHeadPhantom::Make(64, this->Progress);
  vtkImageData* image = head.Image;
  EXPECT_EQ(image->GetScalarType(), VTK_SHORT);
  EXPECT_DOUBLE_EQ(image->GetBounds()[0], -126.0);
  EXPECT_DOUBLE_EQ(image->GetBounds()[5], 126.0);
  const auto at = [image](double x, double y, double z)
  {
    return image->GetScalarComponentAsDouble(int(std::lround((x + 126.0) / 4.0)),
      int(std::lround((y + 126.0) / 4.0)), int(std::lround((z + 126.0) / 4.0)), 0);
  };
  EXPECT_EQ(at(-120.0, 0.0, 0.0), 0.0);    // air
  EXPECT_EQ(at(0.0, -116.0, 0.0), 1000.0); // the skull in front
  EXPECT_EQ(at(0.0, 114.0, 0.0), 200.0);   // the brain reaches further back
  EXPECT_EQ(at(0.0, 0.0, 0.0), 200.0);     // between the ventricles
  EXPECT_EQ(at(30.0, 0.0, 0.0), 0.0);      // the left ventricle
  EXPECT_EQ(at(-30.0, 0.0, 0.0), 0.0);     // the right one
  EXPECT_EQ(at(0.0, -48.0, -20.0), 300.0); // the lesion in front
  EXPECT_EQ(at(0.0, -12.0, 32.0), 300.0);  // a small one above
  EXPECT_EQ(image->GetScalarRange()[0], 0.0);
  EXPECT_EQ(image->GetScalarRange()[1], 1000.0);
}

TEST_F(WorkstationData, ThePhantomIsShortAndOf256VoxelsASideByDefault)
{
  zvLoadProgress progress;
  const zvLoadResult result = zvVolumeReader::MakePhantom(zvHeadPhantom::UsualSide, progress);
  ASSERT_EQ(result.Ending, zvLoadResult::Outcome::Loaded);
  EXPECT_EQ(result.Volume.Image->GetDimensions()[0], 256);
  EXPECT_EQ(result.Volume.Image->GetDimensions()[2], 256);
  EXPECT_EQ(result.Volume.Image->GetSpacing()[1], 1.0);
  EXPECT_TRUE(result.Volume.IsOrientationKnown);
}

TEST_F(WorkstationData, MakingThePhantomCanBeCancelled)
{
  int reports = 0;
  zvLoadProgress* running = nullptr;
  zvLoadProgress progress(
    [&](double)
    {
      if (++reports == 5)
      {
        running->Cancel();
      }
    });
  running = &progress;
  const zvLoadResult result = zvVolumeReader::MakePhantom(32, progress);
  EXPECT_EQ(result.Ending, zvLoadResult::Outcome::Cancelled);
  EXPECT_EQ(reports, 5);
}

TEST_F(WorkstationData, EvenSlicesHaveNoGap)
{
  EXPECT_EQ(zvSliceGaps::Describe({}), "");
  EXPECT_EQ(zvSliceGaps::Describe({ 0.0, 7.0 }), "");
  EXPECT_EQ(zvSliceGaps::Describe({ 0.0, 3.0, 6.02, 9.0 }), "");
  EXPECT_EQ(zvSliceGaps::Describe({ 9.0, 6.0, 3.0, 0.0 }), "");
}

TEST_F(WorkstationData, AGapIsToldWithItsPlace)
{
  EXPECT_EQ(zvSliceGaps::Describe({ 0.0, 3.0, 9.0, 12.0 }),
    "The slices are not evenly spaced: 3 mm as a rule, but 6 mm between slices 2 and 3. They are "
    "shown 4 mm apart, so lengths across them are not exact.");
  EXPECT_EQ(zvSliceGaps::Describe({ 0.0, 3.0, 9.0, 12.0, 15.0, 21.0 }),
    "The slices are not evenly spaced: 3 mm as a rule, but 6 mm between slices 2 and 3 and "
    "elsewhere. They are shown 4.2 mm apart, so lengths across them are not exact.");
  EXPECT_EQ(zvSliceGaps::Describe({ 0.0, 2.0, 6.0 }),
    "The slices are not evenly spaced: 2 mm as a rule, but 4 mm between slices 2 and 3. They are "
    "shown 3 mm apart, so lengths across them are not exact.");
}

TEST_F(WorkstationData, PercentilesOfWholeNumbersAreExact)
{
  std::vector<double> values;
  for (int i = 0; i < 200; ++i)
  {
    values.push_back(i - 50);
  }
  const zvVolume volume = MakeVolume(VTK_SHORT, values);
  const auto found = zvWindowPresets::Percentiles(volume.Image, { 0.0, 0.01, 0.5, 0.99, 1.0 });
  EXPECT_EQ(found, (std::vector<double>{ -50.0, -49.0, 49.0, 147.0, 149.0 }));
}

TEST_F(WorkstationData, PercentilesOfFractionsLeaveOutWhatIsNotFinite)
{
  const double nan = std::numeric_limits<double>::quiet_NaN();
  const double infinity = std::numeric_limits<double>::infinity();
  const zvVolume volume =
    MakeVolume(VTK_FLOAT, { nan, 0.0, 0.25, 0.5, 0.75, 1.0, infinity, -infinity });
  const auto found = zvWindowPresets::Percentiles(volume.Image, { 0.2, 0.6, 1.0 });
  EXPECT_NEAR(found[0], 0.0, 1.0e-4);
  EXPECT_NEAR(found[1], 0.5, 1.0e-4);
  EXPECT_NEAR(found[2], 1.0, 1.0e-4);
}

TEST_F(WorkstationData, PresetsBeginWithThePercentiles)
{
  std::vector<double> values(900, 0.0);
  for (int i = 0; i < 100; ++i)
  {
    values.push_back(i + 1);
  }
  const auto presets = zvWindowPresets::For(MakeVolume(VTK_UNSIGNED_CHAR, values));
  ASSERT_EQ(presets.size(), 3u);
  EXPECT_EQ(presets[0].Name, "1 to 99 %");
  EXPECT_EQ(presets[0].Value.Window, 90.0);
  EXPECT_EQ(presets[0].Value.Level, 45.0);
  EXPECT_EQ(presets[1].Name, "Full range");
  EXPECT_EQ(presets[1].Value.Window, 100.0);
  EXPECT_EQ(presets[1].Value.Level, 50.0);
  // Brighter than the mean (5.05) are 6 to 100; their 1st percentile is 6, their 97th 98.
  EXPECT_EQ(presets[2].Name, "Brain");
  EXPECT_EQ(presets[2].Value.Window, 92.0);
  EXPECT_EQ(presets[2].Value.Level, 52.0);
}

TEST_F(WorkstationData, AVolumeOfOneValueStillHasAWindow)
{
  for (const int type : { VTK_SHORT, VTK_FLOAT })
  {
    for (const auto& preset : zvWindowPresets::For(MakeVolume(type, { 7.0, 7.0, 7.0 })))
    {
      EXPECT_EQ(preset.Value.Window, 1.0) << preset.Name;
      EXPECT_EQ(preset.Value.Level, 7.0) << preset.Name;
    }
  }
}

TEST_F(WorkstationData, TomographyGetsTheWindowsOfItsOrgans)
{
  zvVolume volume = MakeVolume(VTK_SHORT, { -1024.0, 0.0, 40.0, 1500.0 });
  EXPECT_TRUE(zvWindowPresets::LooksLikeCt(volume));
  const auto presets = zvWindowPresets::For(volume);
  EXPECT_EQ(presets.front().Name, "1 to 99 %");
  EXPECT_EQ(presets[1].Name, "Soft tissue");
  EXPECT_LE(presets.size(), 9u) << "one for each number key";
  EXPECT_EQ(presets[1].Value.Window, 400.0);
  EXPECT_EQ(presets[1].Value.Level, 40.0);
  const zvWindowPreset* brain = Find(presets, "Brain");
  ASSERT_NE(brain, nullptr);
  EXPECT_EQ(brain->Value.Window, 80.0);
  EXPECT_NE(Find(presets, "Lung"), nullptr);
  EXPECT_NE(Find(presets, "Bone"), nullptr);
  EXPECT_NE(Find(presets, "Full range"), nullptr);
}

TEST_F(WorkstationData, TheModalityDecidesWhatIsTomography)
{
  zvVolume air = MakeVolume(VTK_SHORT, { -1024.0, 1500.0 });
  air.Modality = "MR";
  EXPECT_FALSE(zvWindowPresets::LooksLikeCt(air));
  zvVolume tissue = MakeVolume(VTK_SHORT, { 0.0, 100.0 });
  EXPECT_FALSE(zvWindowPresets::LooksLikeCt(tissue));
  tissue.Modality = "CT";
  EXPECT_TRUE(zvWindowPresets::LooksLikeCt(tissue));
}
