#ifndef zvBenchmarkVolumes_h
#define zvBenchmarkVolumes_h

class vtkImageData;

/// The volumes that the benchmarks share. Each is made when first asked for and kept until the
/// program ends.
namespace zvBenchmarkVolumes
{
/// A volume of short voxels with the smooth structures and the noise of a scan, spacing 0.7, 0.7,
/// 1.2. The values go from about -1100 to 1200.
vtkImageData* GetScan(int sizeX, int sizeY, int sizeZ);
}

#endif
