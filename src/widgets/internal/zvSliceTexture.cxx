#include "zvSliceTexture.h"

#include <vtkAlgorithm.h>
#include <vtkDataArray.h>
#include <vtkImageData.h>
#include <vtkObjectFactory.h>
#include <vtkPointData.h>
#include <vtkUnsignedCharArray.h>

#include <algorithm>

vtkObjectFactoryNewMacro(zvSliceTexture);

namespace
{
/// Which kinds of texels were met.
struct TexelKinds
{
  bool Transparent = false;
  bool Opaque = false;
  bool Between = false;
};

/// Look at the alpha of texels, by blocks that the compiler can take several texels at a time
/// through; a texel in between settles the matter.
TexelKinds FindKinds(const unsigned char* rgba, vtkIdType numberOfTexels)
{
  const vtkIdType blockSize = 4096;
  TexelKinds kinds;
  for (vtkIdType first = 0; first < numberOfTexels && !kinds.Between; first += blockSize)
  {
    const vtkIdType end = std::min(first + blockSize, numberOfTexels);
    unsigned char transparent = 0;
    unsigned char opaque = 0;
    unsigned char between = 0;
    for (vtkIdType i = first; i < end; ++i)
    {
      const unsigned char alpha = rgba[4 * i + 3];
      transparent |= alpha == 0;
      opaque |= alpha == 255;
      between |= alpha != 0 && alpha != 255;
    }
    kinds.Transparent |= transparent != 0;
    kinds.Opaque |= opaque != 0;
    kinds.Between |= between != 0;
  }
  return kinds;
}
}

//------------------------------------------------------------------------------
bool zvSliceTexture::IsAnswerFresh()
{
  vtkImageData* const input = this->GetInput();
  return this->GetMTime() <= this->TranslucentComputationTime &&
    (!input || input->GetMTime() <= this->TranslucentComputationTime);
}

//------------------------------------------------------------------------------
int zvSliceTexture::IsTranslucent()
{
  if (!this->ExternalTextureObject && this->GetInput() && !this->IsAnswerFresh())
  {
    this->GetInputAlgorithm()->Update();
    auto* const scalars =
      vtkUnsignedCharArray::SafeDownCast(this->GetInput()->GetPointData()->GetScalars());
    if (scalars && scalars->GetNumberOfComponents() == 4)
    {
      const TexelKinds kinds = FindKinds(scalars->GetPointer(0), scalars->GetNumberOfTuples());
      const bool blended = this->Interpolate && kinds.Transparent && kinds.Opaque;
      this->TranslucentCachedResult = kinds.Between || blended ? 1 : 0;
      this->TranslucentComputationTime.Modified();
    }
  }
  return this->Superclass::IsTranslucent();
}
