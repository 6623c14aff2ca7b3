#ifndef zvWindowsMapper_h
#define zvWindowsMapper_h

#include "vtkPolyDataMapper.h"
#include "vtkSmartPointer.h"
#include "vtkWeakPointer.h"

#include <vector>

class vtkWindow;

/// The mapper of an actor that stands in several windows. A stock mapper keeps what it has uploaded
/// for one window only: in turn it frees and builds all of it anew at every window. This one holds
/// a stock mapper for each window that it draws in, which takes its input and its settings from
/// here.
///
/// It is picked, measured and modified as a stock mapper is. Releasing the resources of a window
/// leaves those of the others; a window may die at any time. What is said to the stock mapper of
/// the rendering backend alone (shader replacements, vertex attributes) is not carried over.
class zvWindowsMapper : public vtkPolyDataMapper
{
public:
  static zvWindowsMapper* New();
  vtkTypeMacro(zvWindowsMapper, vtkPolyDataMapper)

  void Render(vtkRenderer* renderer, vtkActor* actor) override;
  void RenderPiece(vtkRenderer* renderer, vtkActor* actor) override;

  /// Release what was uploaded for \a window, or for all windows if that is null.
  void ReleaseGraphicsResources(vtkWindow* window) override;

  bool GetSupportsSelection() override { return true; }
  void ProcessSelectorPixelBuffers(
    vtkHardwareSelector* selector, std::vector<unsigned int>& pixelOffsets, vtkProp* prop) override;

  /// For how many windows something is kept.
  int GetNumberOfWindows() const { return static_cast<int>(this->Parts.size()); }

  zvWindowsMapper(const zvWindowsMapper&) = delete;
  zvWindowsMapper& operator=(const zvWindowsMapper&) = delete;

protected:
  zvWindowsMapper();
  ~zvWindowsMapper() override;

private:
  struct Part
  {
    vtkWeakPointer<vtkWindow> Window;
    vtkSmartPointer<vtkPolyDataMapper> Mapper;
    vtkMTimeType CopiedAt; // this mapper's time when the part took its settings
  };

  /// The stock mapper for the renderer's window, with the settings of now.
  vtkPolyDataMapper* MapperFor(vtkRenderer* renderer);

  /// Forget windows that are gone.
  void DropDeadParts();

  std::vector<Part> Parts;
};

#endif
