#ifndef zvInstanceManager_h
#define zvInstanceManager_h

#include "zvCommonExport.h"

class vtkImageData;

/// The one place where the process says which image it is working on.
///
/// The widgets that clamp to the image (seeds, 3D rulers, trees, snakes) read it at each motion, so
/// a host sets the current image before it uses one of them, and again when it loads another. For
/// use on the interactor's thread only.
class ZVCOMMON_EXPORT zvInstanceManager
{
public:
  /// The only instance, never null. It lasts to the very end of the process, so that an object that
  /// dies late may still ask.
  static zvInstanceManager* Instance();

  /// The image that is current, or null: none was set yet, or the process is ending.
  vtkImageData* GetCurrentOutput() const { return this->CurrentOutput; }

  /// Make \a image current and hold a reference to it; null lets go of the present one. What is
  /// still held when the process ends is released then. Tells nobody and renders nothing.
  void SetCurrentOutput(vtkImageData* image);

  zvInstanceManager(const zvInstanceManager&) = delete;
  void operator=(const zvInstanceManager&) = delete;

private:
  zvInstanceManager() = default;

  vtkImageData* CurrentOutput = nullptr; // one reference
};

#endif
