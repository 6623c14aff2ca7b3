// The fill of a slice of 2048 x 2048 and its undo, and the second mask of a viewer.
//
// Only the work itself is timed: every run gets a slice that is as it was.
#include "zvBenchmarkVolumes.h"
#include "zvFloodFill.h"
#include "zvImageViewerWidget.h"

#include <vtkDataArray.h>
#include <vtkImageData.h>
#include <vtkNew.h>
#include <vtkPointData.h>
#include <vtkPoints.h>
#include <vtkSmartPointer.h>

#include <benchmark/benchmark.h>

#include <malloc.h>
#include <pthread.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <random>
#include <string>
#include <vector>

namespace
{
constexpr int Size = 2048;
constexpr int Voxels = Size * Size;
constexpr int FillValue = 7;

/// A slice of short voxels, of which a share are obstacles.
struct Field
{
  explicit Field(double obstacles)
    : Start(Voxels)
  {
    std::minstd_rand dice(11);
    const double bound = obstacles * static_cast<double>(std::minstd_rand::max());
    for (short& voxel : this->Start)
    {
      voxel = dice() < bound ? FillValue : static_cast<short>(dice() % 5);
    }
    this->Start[Voxels / 2 + Size / 2] = 0; // where the fill begins
    this->Image->SetDimensions(Size, Size, 1);
    this->Image->AllocateScalars(VTK_SHORT, 1);
    this->Reset();
  }

  void Reset() { std::copy(this->Start.begin(), this->Start.end(), this->Begin()); }

  short* Begin() { return static_cast<short*>(this->Image->GetScalarPointer()); }

  zvFloodFill::Slice GetSlice()
  {
    zvFloodFill::Slice slice;
    slice.Image = this->Image;
    slice.Width = Size;
    slice.Height = Size;
    return slice;
  }

  zvFloodFill::Region Fill(vtkPoints* record)
  {
    int oldValue = 0;
    return zvFloodFill::Fill(this->GetSlice(), Size / 2, Size / 2, FillValue, record, oldValue);
  }

  std::vector<short> Start;
  vtkNew<vtkImageData> Image;
};

vtkSmartPointer<vtkPoints> MakeRecord()
{
  auto record = vtkSmartPointer<vtkPoints>::New();
  record->SetDataTypeToDouble();
  return record;
}

/// The fill as anyone would write it at first.
struct Recursion
{
  vtkImageData* Image;
  vtkPoints* Record;

  void Visit(int x, int y)
  {
    if (x < 0 || x >= Size || y < 0 || y >= Size ||
      this->Image->GetScalarComponentAsDouble(x, y, 0, 0) == FillValue)
    {
      return;
    }
    this->Image->SetScalarComponentFromDouble(x, y, 0, 0, FillValue);
    this->Record->InsertNextPoint(x, y, 0.0);
    this->Visit(x + 1, y);
    this->Visit(x - 1, y);
    this->Visit(x, y + 1);
    this->Visit(x, y - 1);
  }

  /// In a thread of its own, since a usual stack does not hold a tenth of it.
  void Run()
  {
    pthread_attr_t attributes;
    pthread_attr_init(&attributes);
    pthread_attr_setstacksize(&attributes, std::size_t(1) << 30);
    pthread_t thread;
    pthread_create(
      &thread, &attributes,
      [](void* self) -> void*
      {
        static_cast<Recursion*>(self)->Visit(Size / 2, Size / 2);
        return nullptr;
      },
      this);
    pthread_join(thread, nullptr);
    pthread_attr_destroy(&attributes);
  }
};

/// What no fill can do without: write each voxel and record it.
void WriteAndRecord(Field& field, vtkPoints* record)
{
  record->SetNumberOfPoints(Voxels);
  double* point = static_cast<double*>(record->GetVoidPointer(0));
  short* voxel = field.Begin();
  for (int y = 0; y < Size; ++y)
  {
    for (int x = 0; x < Size; ++x)
    {
      *voxel++ = FillValue;
      *point++ = x;
      *point++ = y;
      *point++ = 0.0;
    }
  }
}

template <typename Work>
double Time(Work work)
{
  const auto start = std::chrono::steady_clock::now();
  work();
  return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

/// Times work(field, record) with a record that has no memory yet, or has it from the run before.
template <typename Work>
void TimeFill(benchmark::State& state, double obstacles, bool keepsRecord, Work work)
{
  Field field(obstacles);
  auto record = MakeRecord();
  work(field, record);
  for (auto _ : state)
  {
    field.Reset();
    if (keepsRecord)
    {
      record->Reset();
    }
    else
    {
      record = MakeRecord();
    }
    state.SetIterationTime(Time([&] { work(field, record); }));
  }
  state.counters["filled"] = static_cast<double>(record->GetNumberOfPoints());
}

/// A line of the process's status in bytes.
double GetStatus(const std::string& name)
{
  std::ifstream status("/proc/self/status");
  std::string line;
  while (std::getline(status, line))
  {
    if (line.compare(0, name.size(), name) == 0)
    {
      return 1024.0 * std::stod(line.substr(name.size() + 1));
    }
  }
  return -1.0;
}

/// The most memory that a fill takes beside its record, in bytes a voxel of the slice.
double MeasureMemory(double obstacles)
{
  Field field(obstacles);
  const auto record = MakeRecord();
  malloc_trim(0);                                // or it would be found in what is free already
  std::ofstream("/proc/self/clear_refs") << "5"; // the peak counts from here
  const double before = GetStatus("VmRSS");
  const zvFloodFill::Region region = field.Fill(record);
  const double taken = GetStatus("VmHWM") - before;
  return (taken - 3.0 * sizeof(double) * static_cast<double>(region.Count)) / Voxels;
}

void FillOurs(benchmark::State& state, double obstacles, bool keepsRecord)
{
  TimeFill(state, obstacles, keepsRecord,
    [](Field& field, vtkPoints* record) { benchmark::DoNotOptimize(field.Fill(record)); });
  state.counters["bytes_a_voxel"] = MeasureMemory(obstacles);
}

void FillByRecursion(benchmark::State& state, double obstacles, bool keepsRecord)
{
  TimeFill(state, obstacles, keepsRecord,
    [](Field& field, vtkPoints* record) {
      Recursion{ field.Image, record }.Run();
    });
}

void FillByLoop(benchmark::State& state, bool keepsRecord)
{
  TimeFill(state, 0.0, keepsRecord, WriteAndRecord);
}

//------------------------------------------------------------------------------
void UndoOurs(benchmark::State& state)
{
  Field field(0.0);
  const auto record = MakeRecord();
  const zvFloodFill::Region region = field.Fill(record);
  int value = 0;
  for (auto _ : state)
  {
    value = (value + 1) % 100;
    state.SetIterationTime(Time([&] { zvFloodFill::Restore(region, field.Image, value); }));
  }
}

void UndoByVoxelAccess(benchmark::State& state)
{
  Field field(0.0);
  const auto record = MakeRecord();
  field.Fill(record);
  int value = 0;
  for (auto _ : state)
  {
    value = (value + 1) % 100;
    state.SetIterationTime(Time(
      [&]
      {
        for (vtkIdType n = 0; n < record->GetNumberOfPoints(); ++n)
        {
          const double* at = record->GetPoint(n);
          field.Image->SetScalarComponentFromDouble(
            static_cast<int>(at[0]), static_cast<int>(at[1]), static_cast<int>(at[2]), 0, value);
        }
      }));
  }
}

//------------------------------------------------------------------------------
vtkSmartPointer<vtkImageData> MakeMask(vtkImageData* scan)
{
  auto mask = vtkSmartPointer<vtkImageData>::New();
  mask->CopyStructure(scan);
  mask->AllocateScalars(VTK_UNSIGNED_CHAR, 1);
  const auto* voxel = static_cast<const short*>(scan->GetScalarPointer());
  auto* label = static_cast<unsigned char*>(mask->GetScalarPointer());
  for (vtkIdType n = 0; n < scan->GetNumberOfPoints(); ++n)
  {
    label[n] = voxel[n] > 300 ? 0 : 1;
  }
  return mask;
}

void MaskAgain(benchmark::State& state)
{
  vtkImageData* const scan = zvBenchmarkVolumes::GetScan(512, 512, 200);
  const vtkSmartPointer<vtkImageData> mask = MakeMask(scan);
  vtkNew<zvImageViewerWidget> viewer;
  viewer->SetInput(scan);
  viewer->SetPlaneOrientation(2);
  viewer->SetSliceIndex(100);
  viewer->SetImageMask(mask);
  for (auto _ : state)
  {
    viewer->SetImageMask(mask);
  }
}

void CopyFreshly(benchmark::State& state)
{
  const vtkSmartPointer<vtkImageData> mask = MakeMask(zvBenchmarkVolumes::GetScan(512, 512, 200));
  auto copy = vtkSmartPointer<vtkImageData>::New();
  for (auto _ : state)
  {
    copy = vtkSmartPointer<vtkImageData>::New();
    copy->DeepCopy(mask);
  }
}

//------------------------------------------------------------------------------
void RegisterFills(const std::string& work, double obstacles, bool keepsRecord)
{
  const auto add = [](const std::string& name, auto run)
  {
    benchmark::RegisterBenchmark(name.c_str(), run)->UseManualTime()->Unit(benchmark::kMillisecond);
  };
  add("zv/" + work + "/zvFloodFill/2048",
    [=](benchmark::State& state) { FillOurs(state, obstacles, keepsRecord); });
  add("plain/" + work + "/recursion/2048",
    [=](benchmark::State& state) { FillByRecursion(state, obstacles, keepsRecord); });
  if (obstacles == 0.0)
  {
    add("plain/" + work + "/write_and_record/2048",
      [=](benchmark::State& state) { FillByLoop(state, keepsRecord); });
  }
}

bool RegisterAll()
{
  RegisterFills("fill_open", 0.0, false);
  RegisterFills("fill_open_again", 0.0, true);
  RegisterFills("fill_obstacles", 0.3, false);
  RegisterFills("fill_obstacles_again", 0.3, true);
  benchmark::RegisterBenchmark("zv/fill_undo/zvFloodFill/2048", UndoOurs)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);
  benchmark::RegisterBenchmark("plain/fill_undo/voxel_access/2048", UndoByVoxelAccess)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);
  benchmark::RegisterBenchmark("zv/mask_again/zvImageViewerWidget/512", MaskAgain)
    ->UseRealTime()
    ->Unit(benchmark::kMillisecond);
  benchmark::RegisterBenchmark("plain/mask_again/fresh_copy/512", CopyFreshly)
    ->UseRealTime()
    ->Unit(benchmark::kMillisecond);
  return true;
}

const bool Registered = RegisterAll();
}
