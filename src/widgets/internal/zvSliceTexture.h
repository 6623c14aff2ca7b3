#ifndef zvSliceTexture_h
#define zvSliceTexture_h

#include <vtkOpenGLTexture.h>

/// A texture for image slices that decides quickly whether it is translucent.
///
/// The stock texture asks each texel for its alpha by a virtual call, once per new image, which
/// for a slice of 512 x 512 costs as much as half a frame. This one reads the alpha bytes in a
/// plain loop when its input is RGBA of unsigned char, gives the same answer, and leaves every
/// other kind of input to the stock class.
class zvSliceTexture : public vtkOpenGLTexture
{
public:
  static zvSliceTexture* New();
  vtkTypeMacro(zvSliceTexture, vtkOpenGLTexture)

  /// True if a texel is neither opaque nor transparent, or if, with interpolation on, there are
  /// both kinds, for the blend between them is seen. Updates the input where the stock class does
  /// and keeps the answer until the texture or its input changes.
  int IsTranslucent() override;

  zvSliceTexture(const zvSliceTexture&) = delete;
  zvSliceTexture& operator=(const zvSliceTexture&) = delete;

protected:
  zvSliceTexture() = default;
  ~zvSliceTexture() override = default;

private:
  /// Whether the answer of an earlier call still holds.
  bool IsAnswerFresh();
};

#endif
