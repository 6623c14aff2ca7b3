// The slice texture promises the answers and the picture of the stock texture.
#include "zvSliceTexture.h"
#include "zvDice.h"
#include "zvTestKit.h"

#include <vtkActor.h>
#include <vtkFloatArray.h>
#include <vtkImageData.h>
#include <vtkNew.h>
#include <vtkOpenGLTexture.h>
#include <vtkPlaneSource.h>
#include <vtkPolyDataMapper.h>
#include <vtkProperty.h>
#include <vtkRenderWindow.h>
#include <vtkRenderer.h>
#include <vtkSmartPointer.h>
#include <vtkTrivialProducer.h>
#include <vtkUnsignedCharArray.h>

#include <vector>

namespace
{
using zvtest::Dice;

class SliceTexture : public zvtest::QuietTest
{
};

unsigned char DrawAlpha(Dice& dice, int kind)
{
  switch (kind)
  {
    case 0:
      return 255;
    case 1:
      return 0;
    case 2:
      return dice.Chance(0.5) ? 0 : 255;
    default:
      return static_cast<unsigned char>(dice.Int(0, 255));
  }
}

/// An image whose texels are opaque, transparent, either, or anything, with one exception at times.
vtkSmartPointer<vtkImageData> DrawImage(Dice& dice)
{
  const auto image = vtkSmartPointer<vtkImageData>::New();
  const std::vector<int> sizes{ 1, 2, 15, 64, 100 };
  image->SetDimensions(dice.Pick(sizes), dice.Pick(sizes), 1);
  const int components = dice.Chance(0.7) ? 4 : dice.Int(1, 4);
  image->AllocateScalars(VTK_UNSIGNED_CHAR, components);
  auto* const bytes = static_cast<unsigned char*>(image->GetScalarPointer());
  const vtkIdType texels = image->GetNumberOfPoints();
  const int kind = dice.Int(0, 3);
  for (vtkIdType i = 0; i < texels * components; ++i)
  {
    const bool isAlpha = i % components == components - 1;
    bytes[i] = isAlpha ? DrawAlpha(dice, kind) : static_cast<unsigned char>(dice.Int(0, 255));
  }
  if (dice.Chance(0.5))
  {
    const int texel = dice.Int(0, static_cast<int>(texels) - 1);
    bytes[texel * components + components - 1] =
      static_cast<unsigned char>(dice.Pick<int>({ 0, 1, 128, 254, 255 }));
  }
  return image;
}

/// A window that shows a square with a texture and nothing else.
class TexturedSquare
{
public:
  explicit TexturedSquare(vtkTexture* texture)
  {
    this->Mapper->SetInputConnection(this->Plane->GetOutputPort());
    this->Actor->SetMapper(this->Mapper);
    this->Actor->SetTexture(texture);
    this->Actor->GetProperty()->SetAmbient(1.0);
    this->Actor->GetProperty()->SetDiffuse(0.0);
    this->Renderer->SetBackground(0.2, 0.4, 0.6);
    this->Renderer->AddActor(this->Actor);
    this->Window->SetOffScreenRendering(1);
    this->Window->SetMultiSamples(0);
    this->Window->SetSize(120, 120);
    this->Window->AddRenderer(this->Renderer);
    this->Renderer->ResetCamera();
  }

  std::vector<unsigned char> Render()
  {
    this->Window->Render();
    vtkNew<vtkUnsignedCharArray> pixels;
    this->Window->GetPixelData(0, 0, 119, 119, 1, pixels);
    return { pixels->GetPointer(0), pixels->GetPointer(0) + pixels->GetNumberOfValues() };
  }

private:
  vtkNew<vtkPlaneSource> Plane;
  vtkNew<vtkPolyDataMapper> Mapper;
  vtkNew<vtkActor> Actor;
  vtkNew<vtkRenderer> Renderer;
  vtkNew<vtkRenderWindow> Window;
};
}

TEST_F(SliceTexture, AnswersAsTheStockTextureDoes)
{
  for (unsigned int seed = 0; seed < 3000; ++seed)
  {
    Dice dice(seed);
    const auto image = DrawImage(dice);
    vtkNew<vtkOpenGLTexture> stock;
    vtkNew<zvSliceTexture> quick;
    const bool interpolate = dice.Chance(0.5);
    stock->SetInputData(image);
    quick->SetInputData(image);
    stock->SetInterpolate(interpolate);
    quick->SetInterpolate(interpolate);
    ASSERT_EQ(quick->IsTranslucent(), stock->IsTranslucent()) << "with seed " << seed;
  }
}

TEST_F(SliceTexture, AnswersAsTheStockTextureDoesWhileThingsChange)
{
  Dice dice(77);
  vtkNew<vtkTrivialProducer> producer;
  vtkSmartPointer<vtkImageData> image = DrawImage(dice);
  producer->SetOutput(image);
  vtkNew<vtkOpenGLTexture> stock;
  vtkNew<zvSliceTexture> quick;
  stock->SetInputConnection(producer->GetOutputPort());
  quick->SetInputConnection(producer->GetOutputPort());
  for (int step = 0; step < 4000; ++step)
  {
    switch (dice.Int(0, 4))
    {
      case 0:
        image = DrawImage(dice);
        producer->SetOutput(image);
        break;
      case 1: // a texel written without a word to anybody: the old answer stands
        *(static_cast<unsigned char*>(image->GetScalarPointer()) +
          image->GetNumberOfScalarComponents() - 1) = static_cast<unsigned char>(dice.Int(0, 255));
        break;
      case 2:
        image->Modified();
        break;
      case 3:
        stock->SetInterpolate(1 - stock->GetInterpolate());
        quick->SetInterpolate(1 - quick->GetInterpolate());
        break;
      default:
        stock->Modified();
        quick->Modified();
        break;
    }
    ASSERT_EQ(quick->IsTranslucent(), stock->IsTranslucent()) << "at step " << step;
  }
}

TEST_F(SliceTexture, OtherScalarsAreLeftToTheStockRule)
{
  vtkNew<vtkImageData> image;
  image->SetDimensions(3, 3, 1);
  image->AllocateScalars(VTK_FLOAT, 4);
  for (int i = 0; i < 36; ++i)
  {
    static_cast<float*>(image->GetScalarPointer())[i] = 0.25F * static_cast<float>(i % 5);
  }
  vtkNew<vtkOpenGLTexture> stock;
  vtkNew<zvSliceTexture> quick;
  stock->SetInputData(image);
  quick->SetInputData(image);
  EXPECT_EQ(quick->IsTranslucent(), stock->IsTranslucent());
}

TEST_F(SliceTexture, WithoutInputOrScalarsItIsNotTranslucent)
{
  vtkNew<zvSliceTexture> bare;
  EXPECT_EQ(bare->IsTranslucent(), 0);
  vtkNew<vtkImageData> blank;
  blank->SetDimensions(4, 4, 1);
  bare->SetInputData(blank);
  EXPECT_EQ(bare->IsTranslucent(), 0);
}

TEST_F(SliceTexture, DrawsThePictureOfTheStockTexture)
{
  for (unsigned int seed = 0; seed < 12; ++seed)
  {
    Dice dice(seed);
    vtkNew<vtkOpenGLTexture> stock;
    vtkNew<zvSliceTexture> quick;
    TexturedSquare expected(stock);
    TexturedSquare actual(quick);
    for (int step = 0; step < 3; ++step)
    {
      const auto image = DrawImage(dice);
      stock->SetInputData(image);
      quick->SetInputData(image);
      ASSERT_EQ(actual.Render(), expected.Render()) << "with seed " << seed;
    }
  }
}

TEST_F(SliceTexture, HalfTransparentTexelsLetTheBackgroundThrough)
{
  vtkNew<vtkImageData> image;
  image->SetDimensions(8, 8, 1);
  image->AllocateScalars(VTK_UNSIGNED_CHAR, 4);
  auto* const bytes = static_cast<unsigned char*>(image->GetScalarPointer());
  for (int i = 0; i < 64; ++i)
  {
    bytes[4 * i] = bytes[4 * i + 1] = bytes[4 * i + 2] = 255;
    bytes[4 * i + 3] = 128;
  }
  vtkNew<zvSliceTexture> quick;
  quick->SetInputData(image);
  TexturedSquare picture(quick);
  const auto pixels = picture.Render();
  const std::size_t centre = 3 * (60 * 120 + 60);
  EXPECT_NEAR(pixels[centre], 153, 2);
  EXPECT_NEAR(pixels[centre + 1], 179, 2);
  EXPECT_NEAR(pixels[centre + 2], 204, 2);
}
