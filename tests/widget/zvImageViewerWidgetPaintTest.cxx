#include "zvImageBytes.h"
#include "zvImageViewerFixture.h"

#include "vtkDataArray.h"
#include "vtkPointData.h"

#include <functional>

using zvtest::World;

namespace
{
using Voxel = std::array<double, 3>;

// A fill as it is defined: by recursion through the image's own accessors.
struct PlainFill
{
  vtkImageData* Image;
  int Orientation;
  double Cursor[3];
  int Dimensions[2];
  int Value;
  int OldValue = 0;
  std::vector<Voxel> Filled;

  void Visit(int x, int y)
  {
    if (x < 0 || x > this->Dimensions[0] - 1 || y < 0 || y > this->Dimensions[1] - 1)
    {
      return;
    }
    const Voxel voxels[3] = { { { this->Cursor[0], double(x), double(y) } },
      { { double(x), this->Cursor[1], double(y) } },
      { { double(x), double(y), this->Cursor[2] } } };
    const Voxel& at = voxels[this->Orientation];
    const int i = static_cast<int>(at[0]), j = static_cast<int>(at[1]), k = static_cast<int>(at[2]);
    const int* e = this->Image->GetExtent();
    if (i < e[0] || i > e[1] || j < e[2] || j > e[3] || k < e[4] || k > e[5])
    {
      return;
    }
    const double old = this->Image->GetScalarComponentAsDouble(i, j, k, 0);
    if (old == static_cast<double>(this->Value))
    {
      return;
    }
    this->OldValue = static_cast<int>(old);
    this->Image->SetScalarComponentFromDouble(i, j, k, 0, this->Value);
    this->Filled.push_back(at);
    this->Visit(x + 1, y);
    this->Visit(x - 1, y);
    this->Visit(x, y + 1);
    this->Visit(x, y - 1);
  }
};
}

class ImageViewerFill : public ImageViewerViewTest
{
protected:
  void SetCursor(double i, double j, double k)
  {
    this->Viewer->CurrentCursorPosition[0] = i;
    this->Viewer->CurrentCursorPosition[1] = j;
    this->Viewer->CurrentCursorPosition[2] = k;
  }

  vtkSmartPointer<vtkImageData> Copy()
  {
    auto copy = vtkSmartPointer<vtkImageData>::New();
    copy->DeepCopy(this->Volume);
    return copy;
  }

  std::vector<Voxel> Filled()
  {
    std::vector<Voxel> list(this->Viewer->FilledPoints->GetNumberOfPoints());
    for (std::size_t i = 0; i < list.size(); ++i)
    {
      this->Viewer->FilledPoints->GetPoint(static_cast<vtkIdType>(i), list[i].data());
    }
    return list;
  }

  double At(int i, int j, int k) { return this->Volume->GetScalarComponentAsDouble(i, j, k, 0); }

  // Draw a line of voxels in the slice k.
  void Draw(int i0, int i1, int j0, int j1, int k, double value)
  {
    for (int j = j0; j <= j1; ++j)
    {
      for (int i = i0; i <= i1; ++i)
      {
        this->Volume->SetScalarComponentFromDouble(i, j, k, 0, value);
      }
    }
  }
};

// ---- fill ----

TEST_F(ImageViewerFill, IsThatOfTheRecursionInEveryOrientation)
{
  zvtest::Dice dice(3);
  for (const auto& options : { zvtest::UnequalVolume(), zvtest::ShiftedExtentVolume(),
         zvtest::NegativeSpacingVolume(), zvtest::MultiComponentVolume(3) })
  {
    for (int orientation : { 0, 1, 2 })
    {
      for (int n = 0; n < 20; ++n)
      {
        this->Volume = zvtest::MakeVolume(
          options, [&dice](int, int, int, int) { return dice.Chance(0.3) ? 7 : dice.Int(0, 3); });
        this->Viewer->SetInput(this->Volume);
        this->Viewer->SetPlaneOrientation(orientation);
        this->Viewer->FilledPoints->Reset();
        PlainFill plain;
        const auto expected = this->Copy();
        plain.Image = expected;
        plain.Orientation = orientation;
        for (int a = 0; a < 3; ++a)
        {
          plain.Cursor[a] =
            options.First[a] + dice.Int(0, options.Dimensions[a] - 1) + (n % 2 ? 0.75 : 0.0);
        }
        this->SetCursor(plain.Cursor[0], plain.Cursor[1], plain.Cursor[2]);
        plain.Dimensions[0] = this->Viewer->Dimensions[0];
        plain.Dimensions[1] = this->Viewer->Dimensions[1];
        plain.Value = 7;
        const int x = dice.Int(-1, plain.Dimensions[0]);
        const int y = dice.Int(-1, plain.Dimensions[1]);
        this->Viewer->FillOldValue = plain.OldValue = 99;
        plain.Visit(x, y);
        this->Viewer->floodFill(x, y, 7);
        ASSERT_TRUE(zvtest::HaveSameBytes(expected, this->Volume)) << orientation << ", " << n;
        ASSERT_EQ(this->Filled(), plain.Filled) << orientation << ", " << n;
        ASSERT_EQ(this->Viewer->FillOldValue, plain.OldValue) << orientation << ", " << n;
        this->Viewer->UndoFill();
      }
    }
  }
}

TEST_F(ImageViewerFill, NeverReachesTheLastRowAndColumnByDesign)
{
  this->Volume = zvtest::MakeConstantVolume(1.0, this->Cube(5));
  this->Viewer->SetInput(this->Volume);
  this->Viewer->SetPlaneOrientation(2);
  this->SetCursor(0, 0, 3);
  this->Viewer->floodFill(2, 2, 9);
  EXPECT_EQ(this->Filled().size(), 16u);
  for (int n = 0; n < 5; ++n)
  {
    EXPECT_EQ(this->At(n, 4, 3), 1.0);
    EXPECT_EQ(this->At(4, n, 3), 1.0);
    EXPECT_EQ(this->At(n, n, 2), 1.0) << "another slice";
  }
  EXPECT_EQ(this->At(3, 3, 3), 9.0);
  this->Viewer->floodFill(4, 2, 9);
  this->Viewer->floodFill(2, 4, 9);
  this->Viewer->floodFill(-1, 2, 9);
  EXPECT_EQ(this->Filled().size(), 16u);
}

TEST_F(ImageViewerFill, OfAVoxelThatHoldsTheValueDoesNothing)
{
  this->Volume = zvtest::MakeConstantVolume(9.0, this->Cube(5));
  this->Viewer->SetInput(this->Volume);
  this->Viewer->SetPlaneOrientation(2);
  this->Viewer->FillOldValue = 5;
  this->Viewer->floodFill(1, 1, 9);
  EXPECT_TRUE(this->Filled().empty());
  EXPECT_EQ(this->Viewer->FillOldValue, 5);
}

TEST_F(ImageViewerFill, StopsAtAClosedContourAndOverwritesAnythingInside)
{
  this->Volume = zvtest::MakeVolume(
    this->Cube(12), [](int i, int j, int, int) { return 10 + (i * 7 + j * 3) % 5; });
  this->Viewer->SetInput(this->Volume);
  this->Viewer->SetPlaneOrientation(2);
  this->Draw(2, 8, 2, 2, 6, 50);
  this->Draw(2, 8, 7, 7, 6, 50);
  this->Draw(2, 2, 2, 7, 6, 50);
  this->Draw(8, 8, 2, 7, 6, 50);
  const auto before = this->Copy();
  this->SetCursor(5, 5, 6);
  this->Viewer->floodFill(5, 5, 50);
  EXPECT_EQ(this->Filled().size(), 20u);
  for (int j = 0; j < 12; ++j)
  {
    for (int i = 0; i < 12; ++i)
    {
      const bool isInside = i > 2 && i < 8 && j > 2 && j < 7;
      EXPECT_EQ(this->At(i, j, 6), isInside ? 50.0 : before->GetScalarComponentAsDouble(i, j, 6, 0))
        << i << ", " << j;
    }
  }
}

TEST_F(ImageViewerFill, OfAValueThatTheScalarsCannotHoldEndsLikeAnyOther)
{
  zvtest::VolumeOptions options = this->Cube(6);
  options.ScalarType = VTK_UNSIGNED_CHAR;
  this->Volume = zvtest::MakeConstantVolume(1.0, options);
  this->Viewer->SetInput(this->Volume);
  this->Viewer->SetPlaneOrientation(2);
  this->Viewer->floodFill(2, 2, 300);
  EXPECT_EQ(this->Filled().size(), 25u);
  EXPECT_EQ(this->At(2, 2, 0), 44.0);
}

TEST_F(ImageViewerFill, OfALargeOpenSliceNeedsNoStack)
{
  zvtest::VolumeOptions options;
  options.Dimensions = { { 1501, 1501, 2 } };
  options.ScalarType = VTK_UNSIGNED_CHAR;
  this->Volume = vtkSmartPointer<vtkImageData>::New();
  this->Volume->SetDimensions(options.Dimensions.data());
  this->Volume->AllocateScalars(VTK_UNSIGNED_CHAR, 1);
  this->Volume->GetPointData()->GetScalars()->Fill(3.0);
  this->Viewer->SetInput(this->Volume);
  this->Viewer->SetPlaneOrientation(2);
  this->Viewer->floodFill(700, 800, 9);
  EXPECT_EQ(this->Viewer->FilledPoints->GetNumberOfPoints(), 1500 * 1500);
  EXPECT_EQ(this->Viewer->FillOldValue, 3);
  this->Viewer->UndoFill();
  EXPECT_EQ(this->Volume->GetScalarRange()[0], 3.0);
  EXPECT_EQ(this->At(0, 0, 0), 3.0);
  EXPECT_EQ(this->At(1499, 1499, 0), 3.0);
}

TEST_F(ImageViewerFill, OnAnObliquePlaneGoesByTheOrientationItStartedFrom)
{
  this->Volume = zvtest::MakeConstantVolume(1.0, this->Cube(6));
  this->Viewer->SetInput(this->Volume);
  this->Viewer->SetPlaneOrientation(1);
  this->Viewer->UpdatePlane();
  World axis{ { 1, 0, 0 } };
  World center{ { 2.5, 2.5, 2.5 } };
  this->Viewer->Rotate(20.0, axis.data(), center.data());
  this->SetCursor(0, 3, 0);
  this->Viewer->floodFill(2, 2, 9);
  EXPECT_EQ(this->Filled().size(), 25u);
  EXPECT_EQ(this->At(0, 3, 4), 9.0);
  EXPECT_EQ(this->At(0, 2, 4), 1.0);
}

TEST_F(ImageViewerFill, ACursorOutsideTheImageFillsNothing)
{
  this->Volume = zvtest::MakeConstantVolume(1.0, this->Cube(6));
  this->Viewer->SetInput(this->Volume);
  this->Viewer->SetPlaneOrientation(2);
  for (double k : { 6.0, -1.0, 1e300, -1e300 })
  {
    this->SetCursor(0, 0, k);
    this->Viewer->floodFill(2, 2, 9);
  }
  EXPECT_TRUE(this->Filled().empty());
  EXPECT_EQ(this->Volume->GetScalarRange()[1], 1.0);
}

TEST_F(ImageViewerFill, OfAnImageThatWasTurnedAfterwardsIsRefusedWithAnError)
{
  this->Place(this->Cube(6), 2);
  const auto before = this->Copy();
  this->Volume->SetDirectionMatrix(0, -1, 0, 1, 0, 0, 0, 0, 1);
  this->Viewer->floodFill(2, 2, 9);
  const auto messages = this->TakeMessages();
  ASSERT_EQ(messages.size(), 1u);
  EXPECT_TRUE(zvtest::IsVtkError(messages[0], "zvImageViewerWidget", "zvImageViewerWidget",
    this->Viewer,
    "The image's direction matrix is not the identity, so no voxel is written. Reorient it first: "
    "permute and flip its axes exactly, or resample it."))
    << messages[0];
  EXPECT_TRUE(this->Filled().empty());
  this->Volume->SetDirectionMatrix(1, 0, 0, 0, 1, 0, 0, 0, 1);
  EXPECT_TRUE(zvtest::HaveSameBytes(before, this->Volume));
}

TEST_F(ImageViewerFill, ShowsNothingUntilTheNextUpdate)
{
  this->Show(zvtest::MakeConstantVolume(0.0, this->Cube(9)), 2);
  this->Viewer->SetLinesEnabled(0);
  this->Viewer->SetWindowLevel(100.0, 50.0);
  this->Viewer->SetSliceIndex(4);
  this->Scene.Render();
  this->SetCursor(0, 0, 4);
  const auto imageTime = this->Volume->GetMTime();
  this->Viewer->floodFill(2, 2, 100);
  EXPECT_EQ(this->Volume->GetMTime(), imageTime);
  const World at{ { 3.5, 3.5, 4 } };
  this->Scene.Render();
  EXPECT_EQ(this->Scene.ColorAt(at), zvtest::Color::Grey(0));
  this->Refresh();
  this->Scene.Render();
  EXPECT_EQ(this->Scene.ColorAt(at), zvtest::Color::Grey(255));
}

// ---- undo ----

TEST_F(ImageViewerFill, UndoTakesTheLastFillBackAndRenders)
{
  this->Show(zvtest::MakeConstantVolume(20.0, this->Cube(9)), 2);
  this->Viewer->SetLinesEnabled(0);
  this->Viewer->SetWindowLevel(100.0, 50.0);
  this->Viewer->SetSliceIndex(4);
  this->Scene.Render();
  const World at{ { 3.5, 3.5, 4 } };
  const zvtest::Color before = this->Scene.ColorAt(at);
  const auto image = this->Copy();
  this->SetCursor(0, 0, 4);
  this->Viewer->floodFill(2, 2, 100);
  this->Refresh();
  this->Scene.Render();
  EXPECT_NE(this->Scene.ColorAt(at), before);
  zvtest::EventRecorder recorder;
  recorder.Watch(this->Scene.Interactor(), { vtkCommand::RenderEvent });
  this->Viewer->UndoFill();
  EXPECT_EQ(recorder.Count(vtkCommand::RenderEvent), 1);
  EXPECT_EQ(this->Scene.ColorAt(at), before);
  EXPECT_TRUE(zvtest::HaveSameBytes(image, this->Volume));
  EXPECT_TRUE(this->Filled().empty());
  EXPECT_EQ(this->Viewer->LastUpdateMTime, this->Viewer->GetMTime());
}

TEST_F(ImageViewerFill, UndoTwiceOnlyRefreshesTheSecondTime)
{
  this->Show(zvtest::MakeConstantVolume(20.0, this->Cube(9)), 2);
  this->Viewer->floodFill(2, 2, 100);
  this->Viewer->UndoFill();
  const auto image = this->Copy();
  const auto before = this->Viewer->GetMTime();
  zvtest::EventRecorder recorder;
  recorder.Watch(this->Scene.Interactor(), { vtkCommand::RenderEvent });
  this->Viewer->UndoFill();
  EXPECT_TRUE(zvtest::HaveSameBytes(image, this->Volume));
  EXPECT_GT(this->Viewer->GetMTime(), before);
  EXPECT_EQ(recorder.Count(vtkCommand::RenderEvent), 1);
}

TEST_F(ImageViewerFill, UndoWritesOneValueToAllByDesign)
{
  this->Volume =
    zvtest::MakeVolume(this->Cube(9), [](int i, int, int, int) { return i < 4 ? 10 : 20; });
  this->Viewer->SetInput(this->Volume);
  this->Viewer->SetPlaneOrientation(2);
  this->Viewer->floodFill(2, 2, 50);
  const int old = this->Viewer->FillOldValue;
  EXPECT_TRUE(old == 10 || old == 20);
  this->Viewer->UndoFill();
  for (int i = 0; i < 8; ++i)
  {
    EXPECT_EQ(this->At(i, 3, 0), old);
  }
  EXPECT_EQ(this->At(8, 3, 0), 20.0) << "it was not filled";
}

TEST_F(ImageViewerFill, UndoTakesSeveralFillsBackWithTheLastOldValue)
{
  this->Volume = zvtest::MakeConstantVolume(10.0, this->Cube(9));
  this->Viewer->SetInput(this->Volume);
  this->Viewer->SetPlaneOrientation(2);
  this->SetCursor(0, 0, 2);
  this->Viewer->floodFill(1, 1, 50);
  this->Viewer->floodFill(1, 1, 60);
  EXPECT_EQ(this->Filled().size(), 128u);
  EXPECT_EQ(this->Viewer->FillOldValue, 50);
  this->SetCursor(0, 0, 5);
  this->Viewer->floodFill(1, 1, 60);
  EXPECT_EQ(this->Viewer->FillOldValue, 10);
  this->Viewer->UndoFill();
  EXPECT_EQ(this->Volume->GetScalarRange()[0], 10.0);
  EXPECT_EQ(this->At(3, 3, 2), 10.0);
  EXPECT_EQ(this->At(3, 3, 5), 10.0);
}

TEST_F(ImageViewerFill, AResetOfTheRecordForgetsTheFill)
{
  this->Volume = zvtest::MakeConstantVolume(10.0, this->Cube(9));
  this->Viewer->SetInput(this->Volume);
  this->Viewer->SetPlaneOrientation(2);
  this->Viewer->floodFill(1, 1, 50);
  this->Viewer->FilledPoints->Reset(); // as a press does
  this->Viewer->UndoFill();
  EXPECT_EQ(this->At(1, 1, 0), 50.0);
  this->SetCursor(0, 0, 3);
  this->Viewer->floodFill(1, 1, 60);
  this->Viewer->UndoFill();
  EXPECT_EQ(this->At(1, 1, 3), 10.0);
  EXPECT_EQ(this->At(1, 1, 0), 50.0);
}

TEST_F(ImageViewerFill, UndoOnAnotherImageIsHarmless)
{
  this->Volume = zvtest::MakeConstantVolume(10.0, this->Cube(9));
  this->Viewer->SetInput(this->Volume);
  this->Viewer->SetPlaneOrientation(2);
  this->SetCursor(0, 0, 7);
  this->Viewer->floodFill(1, 1, 50);
  this->Volume = zvtest::MakeConstantVolume(30.0, this->Cube(3));
  this->Viewer->SetInput(this->Volume);
  this->Viewer->UndoFill();
  EXPECT_EQ(this->Volume->GetScalarRange()[0], 30.0);
  this->Viewer->SetInput(nullptr);
  this->Viewer->UndoFill();
  EXPECT_TRUE(this->Filled().empty());
}

// ---- mask ----

class ImageViewerMask : public ImageViewerViewTest
{
protected:
  // A mask that is 0 where a condition on the index holds, else 1.
  static vtkSmartPointer<vtkImageData> MakeMask(
    const zvtest::VolumeOptions& options, const std::function<bool(int, int, int)>& isZero)
  {
    return zvtest::MakeVolume(
      options, [&isZero](int i, int j, int k, int) { return isZero(i, j, k) ? 0 : 1; });
  }

  bool IsShown()
  {
    return this->Viewer->MaskActor &&
      this->Scene.Renderer()->HasViewProp(this->Viewer->MaskActor) != 0;
  }

  // A grey slice in the middle of a cube of 17, without lines.
  void ShowGrey(int orientation = 2)
  {
    this->Show(zvtest::MakeConstantVolume(50.0, this->Cube(17)), orientation);
    this->Viewer->SetResliceInterpolate(VTK_NEAREST_RESLICE);
    this->Viewer->TextureInterpolateOff();
    this->Viewer->Texture->SetInterpolate(0);
    this->Viewer->SetWindowLevel(100.0, 50.0);
    this->Viewer->SetLinesEnabled(0);
    this->Viewer->SetSliceIndex(8);
    this->Scene.Render();
    this->Grey = this->Scene.ColorAt({ { 8.3, 8.3, 8.3 } });
  }

  // Whether red is over the grey at a place.
  bool IsRed(const zvtest::Picture& picture, const World& at)
  {
    const zvtest::Color color = picture.At(this->Scene.At(at));
    const double alpha = 0.3;
    const zvtest::Color red{ static_cast<int>(
                               std::lround(this->Grey.Red * (1 - alpha) + 255 * alpha)),
      static_cast<int>(std::lround(this->Grey.Green * (1 - alpha))),
      static_cast<int>(std::lround(this->Grey.Blue * (1 - alpha))) };
    EXPECT_TRUE(color.IsNear(red, 3) || color.IsNear(this->Grey, 1))
      << color << " at " << at[0] << ", " << at[1] << ", " << at[2];
    return color.IsNear(red, 3);
  }

  zvtest::Color Grey;
};

TEST_F(ImageViewerMask, BeforeAnyThereIsNothingToEnable)
{
  this->Show(this->Cube(5), 2);
  this->Viewer->SetEnableImageMask(1);
  this->Viewer->SetEnableImageMask(0);
  this->Viewer->SetImageMask(nullptr);
  EXPECT_EQ(this->Viewer->MaskActor.GetPointer(), nullptr);
}

TEST_F(ImageViewerMask, OpacityIsClampedAndGoesToTheTable)
{
  for (const auto& row : std::vector<std::array<double, 2>>{ { { -0.2, 0.0 } }, { { 0.0, 0.0 } },
         { { 0.4, 0.4 } }, { { 1.0, 1.0 } }, { { 1.5, 1.0 } } })
  {
    this->Viewer->SetOpacityMask(row[0]);
    EXPECT_EQ(this->Viewer->GetOpacityMask(), row[1]);
    double color[4];
    this->Viewer->MaskLookupTable->GetTableValue(0, color);
    EXPECT_EQ(color[0], 1.0);
    EXPECT_EQ(color[1], 0.0);
    EXPECT_EQ(color[2], 0.0);
    EXPECT_NEAR(color[3], row[1], 1.0 / 255);
  }
  this->Viewer->SetOpacityMask(std::nan(""));
  EXPECT_GE(this->Viewer->GetOpacityMask(), 0.0);
  EXPECT_LE(this->Viewer->GetOpacityMask(), 1.0);
}

TEST_F(ImageViewerMask, IsBuiltFromACopyWithTheSettingsOfTheSlice)
{
  this->Show(zvtest::UnequalVolume(), 0);
  this->Viewer->SetImageResolutionFactor(2);
  this->Viewer->SetResliceInterpolate(VTK_CUBIC_RESLICE);
  this->Viewer->SetSliceIndex(3);
  auto mask = zvtest::MakeConstantVolume(1.0, zvtest::UnequalVolume());
  this->Viewer->SetImageMask(mask);
  OpenViewer* v = this->Viewer;
  EXPECT_EQ(mask->GetReferenceCount(), 1) << "it is the host's own";
  ASSERT_NE(v->ImageMask.GetPointer(), nullptr);
  EXPECT_TRUE(zvtest::HaveSameBytes(mask, v->ImageMask));
  EXPECT_NE(v->ImageMask->GetScalarPointer(), mask->GetScalarPointer());
  EXPECT_EQ(v->MaskReslice->GetInput(), v->ImageMask);
  vtkImageReslice* reslice = v->Reslice;
  EXPECT_NE(v->MaskReslice->GetResliceAxes(), reslice->GetResliceAxes());
  EXPECT_TRUE(std::equal(reslice->GetResliceAxes()->GetData(),
    reslice->GetResliceAxes()->GetData() + 16, v->MaskReslice->GetResliceAxes()->GetData()));
  EXPECT_EQ(v->MaskReslice->GetInterpolationMode(), VTK_RESLICE_CUBIC);
  EXPECT_TRUE(IsPoint(v->MaskReslice->GetOutputSpacing(), ToWorld(reslice->GetOutputSpacing()), 0));
  EXPECT_TRUE(IsPoint(v->MaskReslice->GetOutputOrigin(), ToWorld(reslice->GetOutputOrigin()), 0));
  EXPECT_TRUE(std::equal(
    reslice->GetOutputExtent(), reslice->GetOutputExtent() + 6, v->MaskReslice->GetOutputExtent()));

  EXPECT_EQ(v->MaskLookupTable->GetNumberOfTableValues(), 2);
  EXPECT_EQ(v->MaskLookupTable->GetTableRange()[0], 0.0);
  EXPECT_EQ(v->MaskLookupTable->GetTableRange()[1], 0.0);
  const double colors[2][4] = { { 1, 0, 0, 0.3 }, { 0, 0, 0, 0 } };
  for (int entry : { 0, 1 })
  {
    double color[4];
    v->MaskLookupTable->GetTableValue(entry, color);
    for (int c = 0; c < 4; ++c)
    {
      EXPECT_NEAR(color[c], colors[entry][c], 1.0 / 255) << entry;
    }
  }
  EXPECT_EQ(v->MaskColorMap->GetInputAlgorithm(), v->MaskReslice.Get());
  EXPECT_EQ(v->MaskColorMap->GetLookupTable(), v->MaskLookupTable.Get());
  EXPECT_EQ(v->MaskColorMap->GetPassAlphaToOutput(), 1);
  EXPECT_EQ(v->MaskTexture->GetInputAlgorithm(), v->MaskColorMap.Get());
  EXPECT_EQ(v->MaskTexture->GetQuality(), VTK_TEXTURE_QUALITY_32BIT);
  EXPECT_EQ(v->MaskTexture->GetInterpolate(), v->Texture->GetInterpolate());
  EXPECT_EQ(v->MaskTexture->GetRepeat(), 0);
  EXPECT_EQ(v->MaskTexture->GetLookupTable(), v->MaskLookupTable.Get());
  ASSERT_NE(v->MaskActor.GetPointer(), nullptr);
  EXPECT_EQ(v->MaskActor->GetTexture(), v->MaskTexture.Get());
  EXPECT_EQ(v->MaskActor->GetPickable(), 1);
  EXPECT_EQ(v->MaskActor->GetMapper()->GetInputAlgorithm(), v->PlaneSource);
  EXPECT_TRUE(this->IsShown());
}

TEST_F(ImageViewerMask, FollowsTheInterpolationOfTheTexture)
{
  this->Show(this->Cube(5), 2);
  for (int interpolate : { 0, 1 })
  {
    this->Viewer->Texture->SetInterpolate(interpolate);
    this->Viewer->SetImageMask(zvtest::MakeConstantVolume(1.0, this->Cube(5)));
    EXPECT_EQ(this->Viewer->MaskTexture->GetInterpolate(), interpolate);
  }
}

TEST_F(ImageViewerMask, ASecondOneReplacesTheFirstAndIsShown)
{
  this->Show(this->Cube(5), 2);
  this->Viewer->SetImageMask(zvtest::MakeConstantVolume(1.0, this->Cube(5)));
  vtkSmartPointer<vtkActor> first = this->Viewer->MaskActor;
  this->Viewer->SetEnableImageMask(0);
  EXPECT_FALSE(this->IsShown());
  auto second = zvtest::MakeConstantVolume(0.0, this->Cube(4));
  this->Viewer->SetImageMask(second);
  EXPECT_NE(this->Viewer->MaskActor, first);
  EXPECT_FALSE(this->Scene.Renderer()->HasViewProp(first));
  EXPECT_EQ(first->GetReferenceCount(), 1);
  EXPECT_TRUE(this->IsShown());
  EXPECT_TRUE(zvtest::HaveSameBytes(second, this->Viewer->ImageMask));
}

TEST_F(ImageViewerMask, NullOnlyHidesIt)
{
  this->Show(this->Cube(5), 2);
  this->Viewer->SetImageMask(zvtest::MakeConstantVolume(1.0, this->Cube(5)));
  this->Viewer->SetImageMask(nullptr);
  EXPECT_FALSE(this->IsShown());
  EXPECT_NE(this->Viewer->MaskActor.GetPointer(), nullptr);
  EXPECT_NE(this->Viewer->ImageMask.GetPointer(), nullptr);
  this->Viewer->SetEnableImageMask(1);
  EXPECT_TRUE(this->IsShown());
}

TEST_F(ImageViewerMask, TheViewersOwnCopyMayBeSetAgain)
{
  this->Show(this->Cube(5), 2);
  auto mask = zvtest::MakeIndexVolume(this->Cube(5));
  this->Viewer->SetImageMask(mask);
  this->Viewer->SetImageMask(this->Viewer->ImageMask);
  EXPECT_TRUE(zvtest::HaveSameBytes(mask, this->Viewer->ImageMask));
  EXPECT_TRUE(this->IsShown());
}

TEST_F(ImageViewerMask, MayBeOfEveryScalarType)
{
  this->ShowGrey();
  for (int type : zvtest::AllScalarTypes())
  {
    for (int interpolation : { VTK_NEAREST_RESLICE, VTK_LINEAR_RESLICE, VTK_CUBIC_RESLICE })
    {
      zvtest::VolumeOptions options = this->Cube(17);
      options.ScalarType = type;
      this->Viewer->SetResliceInterpolate(interpolation);
      this->Viewer->Texture->SetInterpolate(0);
      this->Viewer->SetImageMask(this->MakeMask(options, [](int i, int, int) { return i < 8; }));
      const zvtest::Picture picture = this->Scene.RenderAndLook();
      EXPECT_TRUE(this->IsRed(picture, { { 4.5, 4.5, 8 } })) << zvtest::ScalarTypeName(type);
      EXPECT_FALSE(this->IsRed(picture, { { 11.5, 4.5, 8 } })) << zvtest::ScalarTypeName(type);
    }
  }
}

TEST_F(ImageViewerMask, TheHostMayGoOnWithItsMask)
{
  this->ShowGrey();
  auto mask = MakeMask(this->Cube(17), [](int, int, int) { return true; });
  this->Viewer->SetImageMask(mask);
  mask->GetPointData()->GetScalars()->Fill(1.0);
  mask->Modified();
  mask = nullptr;
  this->Scene.Render();
  EXPECT_TRUE(this->IsRed(this->Scene.Look(), { { 4.5, 4.5, 8 } }));
}

TEST_F(ImageViewerMask, WhatIsNoMaskIsRefusedAndTheOldOneStays)
{
  this->Show(this->Cube(5), 2);
  auto mask = zvtest::MakeConstantVolume(1.0, this->Cube(5));
  this->Viewer->SetImageMask(mask);
  vtkSmartPointer<vtkActor> actor = this->Viewer->MaskActor;
  auto bare = vtkSmartPointer<vtkImageData>::New();
  bare->SetDimensions(3, 3, 3);
  auto empty = vtkSmartPointer<vtkImageData>::New();
  empty->AllocateScalars(VTK_SHORT, 1);
  const auto colours = zvtest::MakeIndexVolume(zvtest::MultiComponentVolume(3));
  for (const auto& refused : { bare, empty, colours })
  {
    this->Viewer->SetImageMask(refused);
    this->ExpectVtkError("zvImageViewerWidget", "zvImageViewerWidget", this->Viewer,
      "The mask has to be an image with scalars of one component. It is not shown.");
  }
  this->Viewer->SetImageMask(zvtest::MakeIndexVolume(zvtest::TurnedVolume()));
  this->ExpectVtkError("zvImageViewerWidget", "zvImageViewerWidget", this->Viewer,
    "The mask's direction matrix is not the identity, so the mask is not shown. Reorient it first: "
    "permute and flip its axes exactly, or resample it.");
  EXPECT_TRUE(zvtest::HaveSameBytes(mask, this->Viewer->ImageMask));
  EXPECT_EQ(this->Viewer->MaskActor, actor);
  EXPECT_TRUE(this->IsShown());
}

TEST_F(ImageViewerMask, SetBeforeAnyImageIsHarmless)
{
  this->Viewer->SetImageMask(zvtest::MakeConstantVolume(0.0, this->Cube(5)));
  this->Enable();
  this->Scene.LookAlong(2);
  this->Scene.Render();
  this->Viewer->SetOpacityMask(0.7);
  this->Scene.Render();
  EXPECT_NE(this->Viewer->MaskActor.GetPointer(), nullptr);
}

TEST_F(ImageViewerMask, ShowsRedWhereItIsZeroAndNowhereElse)
{
  for (int orientation : { 0, 1, 2 })
  {
    this->ShowGrey(orientation);
    // A different corner of each slice.
    const auto isZero = [orientation](int i, int j, int k)
    {
      const int index[3] = { i, j, k };
      return index[orientation] == 8 && index[(orientation + 1) % 3] < 6 &&
        index[(orientation + 2) % 3] >= 11;
    };
    this->Viewer->SetImageMask(this->MakeMask(this->Cube(17), isZero));
    const zvtest::Picture picture = this->Scene.RenderAndLook();
    int reds = 0;
    for (int a = 0; a < 16; ++a)
    {
      for (int b = 0; b < 16; ++b)
      {
        World at;
        at[orientation] = 8;
        at[(orientation + 1) % 3] = a + 0.5;
        at[(orientation + 2) % 3] = b + 0.5;
        const bool isRed = this->IsRed(picture, at);
        EXPECT_EQ(isRed, a < 6 && b >= 11) << orientation << ": " << a << ", " << b;
        reds += isRed;
      }
    }
    EXPECT_EQ(reds, 30);
    this->Viewer->SetEnabled(0);
  }
}

TEST_F(ImageViewerMask, LiesWhereItsOwnOriginAndSpacingPutIt)
{
  this->ShowGrey();
  // A coarse little mask, whose zeros are from 4 to 6.5 and 6 to 9; beside it there is no mask.
  zvtest::VolumeOptions options;
  options.Dimensions = { { 5, 4, 5 } };
  options.Spacing = { { 2.5, 3.0, 4.0 } };
  options.Origin = { { 1.5, 3.0, 0.0 } };
  this->Viewer->SetImageMask(
    this->MakeMask(options, [](int i, int j, int) { return i == 2 && j == 2; }));
  const zvtest::Picture picture = this->Scene.RenderAndLook();
  // Voxel (2, 2) is centred on (6.5, 9), 2.5 by 3 wide. A texel of the slice is a voxel of the
  // image whose lower corner it is sampled at.
  int reds = 0;
  for (int a = 0; a < 16; ++a)
  {
    for (int b = 0; b < 16; ++b)
    {
      const bool isRed = this->IsRed(picture, { { a + 0.5, b + 0.5, 8 } });
      const bool isZero = std::abs(a - 6.5) < 1.25 && std::abs(b - 9.0) < 1.5;
      EXPECT_EQ(isRed, isZero) << a << ", " << b;
      reds += isRed;
    }
  }
  EXPECT_EQ(reds, 6);
}

TEST_F(ImageViewerMask, AMaskOfNegativeSpacingAndShiftedExtentLiesWhereTheWorldPutsIt)
{
  this->ShowGrey();
  zvtest::VolumeOptions options;
  options.Dimensions = { { 17, 17, 17 } };
  options.First = { { 4, -3, 2 } };
  options.Spacing = { { -1.0, 1.0, 1.0 } };
  options.Origin = { { 20.0, 3.0, -2.0 } }; // x = 20 - i, y = 3 + j, z = k - 2
  this->Viewer->SetImageMask(this->MakeMask(
    options, [](int i, int j, int k) { return k == 10 && 20 - i == 3 && 3 + j >= 12; }));
  const zvtest::Picture picture = this->Scene.RenderAndLook();
  for (int a = 0; a < 16; ++a)
  {
    for (int b = 0; b < 16; ++b)
    {
      EXPECT_EQ(this->IsRed(picture, { { a + 0.5, b + 0.5, 8 } }), a == 3 && b >= 12)
        << a << ", " << b;
    }
  }
}

TEST_F(ImageViewerMask, IsOpaqueAndInvisibleAtTheEndsOfTheOpacity)
{
  this->ShowGrey();
  this->Viewer->SetImageMask(this->MakeMask(this->Cube(17), [](int i, int, int) { return i < 8; }));
  const World zero{ { 4.5, 4.5, 8 } };
  const World one{ { 11.5, 4.5, 8 } };
  this->Viewer->SetOpacityMask(1.0);
  this->Scene.Render();
  EXPECT_TRUE(this->Scene.ColorAt(zero).IsNear({ 255, 0, 0 }, 2));
  EXPECT_TRUE(this->Scene.ColorAt(one).IsNear(this->Grey, 1));
  this->Viewer->SetOpacityMask(0.0);
  this->Scene.Render();
  EXPECT_TRUE(this->Scene.ColorAt(zero).IsNear(this->Grey, 1));
  EXPECT_TRUE(this->Scene.ColorAt(one).IsNear(this->Grey, 1));
}

TEST_F(ImageViewerMask, DoesNotFollowTheSliceUntilItIsSetAgain)
{
  this->ShowGrey();
  const auto mask =
    this->MakeMask(this->Cube(17), [](int i, int, int k) { return k == 8 ? i < 8 : i >= 8; });
  this->Viewer->SetImageMask(mask);
  const World low{ { 4.5, 4.5, 9 } };
  const World high{ { 11.5, 4.5, 9 } };
  this->Viewer->SetSliceIndex(9);
  zvtest::Picture picture = this->Scene.RenderAndLook();
  EXPECT_TRUE(this->IsRed(picture, low)) << "it moves along with the plane, as it is";
  EXPECT_FALSE(this->IsRed(picture, high));
  this->Viewer->SetImageMask(mask);
  picture = this->Scene.RenderAndLook();
  EXPECT_FALSE(this->IsRed(picture, low));
  EXPECT_TRUE(this->IsRed(picture, high));
}

TEST_F(ImageViewerMask, LiesOverAnObliquePlaneToo)
{
  this->ShowGrey();
  World axis{ { 0, 0, 1 } };
  World center{ { 8, 8, 8 } };
  this->Viewer->Rotate(30.0, axis.data(), center.data());
  zvtest::VolumeOptions options = this->Cube(17);
  options.Origin = { { -8.0, -8.0, 0.0 } };
  options.Dimensions = { { 33, 33, 17 } };
  this->Viewer->SetImageMask(this->MakeMask(options, [](int, int, int) { return true; }));
  this->LookAlongNormal(2);
  const zvtest::Picture picture = this->Scene.RenderAndLook();
  EXPECT_TRUE(this->IsRed(picture, { { 4.5, 4.5, 8 } }));
  EXPECT_TRUE(this->IsRed(picture, { { 15.5, 15.5, 8 } }));
}

TEST_F(ImageViewerMask, IsHiddenAndShownInThePicture)
{
  this->ShowGrey();
  this->Viewer->SetImageMask(this->MakeMask(this->Cube(17), [](int, int, int) { return true; }));
  const World at{ { 4.5, 4.5, 8 } };
  EXPECT_TRUE(this->IsRed(this->Scene.RenderAndLook(), at));
  this->Viewer->SetEnableImageMask(0);
  EXPECT_FALSE(this->IsRed(this->Scene.RenderAndLook(), at));
  this->Viewer->SetEnableImageMask(1);
  EXPECT_TRUE(this->IsRed(this->Scene.RenderAndLook(), at));
}
