#include "zvInstanceManager.h"

#include "vtkImageData.h"

#include <type_traits>
#include <utility>

namespace
{
struct ReleaseAtExit
{
  ~ReleaseAtExit() { zvInstanceManager::Instance()->SetCurrentOutput(nullptr); }
};
}

zvInstanceManager* zvInstanceManager::Instance()
{
  // The manager has no destructor to run: whoever asks after the release still finds it, empty.
  static_assert(std::is_trivially_destructible<zvInstanceManager>::value, "must outlive statics");
  static zvInstanceManager manager;
  return &manager;
}

void zvInstanceManager::SetCurrentOutput(vtkImageData* image)
{
  static const ReleaseAtExit release;
  if (image)
  {
    image->Register(nullptr);
  }
  // The old image goes last: its observers may come back here when it dies.
  vtkImageData* old = std::exchange(this->CurrentOutput, image);
  if (old)
  {
    old->UnRegister(nullptr);
  }
}
