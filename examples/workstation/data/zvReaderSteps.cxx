#include "zvReaderSteps.h"

#include "zvLoadFailure.h"
#include "zvLoadProgress.h"

#include "vtkDataArray.h"
#include "vtkErrorCode.h"
#include "vtkImageReader2.h"
#include "vtkPointData.h"

#include <cstdio>
#include <string>

namespace
{
// The one line of a message that a person can use.
std::string FirstLine(const std::string& message)
{
  return message.substr(0, message.find('\n'));
}

// A header's number, which need not be a whole or even a finite one.
std::string InWords(double number)
{
  char text[32];
  std::snprintf(text, sizeof(text), "%g", number);
  return text;
}

void RequireSilence(vtkImageReader2* reader, const zvMessageTrap::Listener& messages)
{
  const auto said = messages.GetMessages();
  if (!said.empty())
  {
    throw zvLoadRefusal("it cannot be read: " + FirstLine(said.front()));
  }
  if (reader->GetErrorCode() != vtkErrorCode::NoError)
  {
    throw zvLoadRefusal(std::string("it cannot be read: ") +
      vtkErrorCode::GetStringFromErrorCode(reader->GetErrorCode()));
  }
}

// A reader may take a short first axis for the components of a voxel; the header knows better, and
// the values stand in the same order either way.
vtkSmartPointer<vtkImageData> Regrouped(vtkImageData* read, const std::array<double, 3>& dimensions)
{
  vtkDataArray* values = read->GetPointData()->GetScalars();
  const double wanted = dimensions[0] * dimensions[1] * dimensions[2];
  if (values == nullptr || static_cast<double>(values->GetNumberOfValues()) != wanted)
  {
    throw zvLoadRefusal("it cannot be read: its voxels do not match its header");
  }
  auto scalars = vtkSmartPointer<vtkDataArray>::Take(values->NewInstance());
  scalars->ShallowCopy(values);
  scalars->SetNumberOfComponents(1);
  scalars->SetNumberOfTuples(values->GetNumberOfValues());
  auto voxels = vtkSmartPointer<vtkImageData>::New();
  voxels->SetDimensions(static_cast<int>(dimensions[0]), static_cast<int>(dimensions[1]),
    static_cast<int>(dimensions[2]));
  voxels->SetSpacing(read->GetSpacing());
  voxels->GetPointData()->SetScalars(scalars);
  return voxels;
}
}

void zvReaderSteps::ReadVoxels(vtkImageReader2* reader, const std::array<double, 3>& dimensions,
  zvMessageTrap::Listener& messages, zvLoadProgress& progress, zvRawVolume& volume)
{
  progress.Run(reader, 0.0, ReadingShare);
  RequireSilence(reader, messages);
  volume.Voxels = Regrouped(reader->GetOutput(), dimensions);
}

void zvReaderSteps::RequireOneValueEach(double components)
{
  if (components != 1.0)
  {
    throw zvLoadRefusal("it has " + InWords(components) +
      " values a voxel (colours or vectors); only single values can be shown");
  }
}

void zvReaderSteps::RequireThreeDimensions(double dimensions)
{
  if (dimensions != 3.0)
  {
    throw zvLoadRefusal("it has " + InWords(dimensions) + " dimensions; a volume has 3");
  }
}

void zvReaderSteps::Place(zvRawVolume& volume, const std::array<double, 9>& directions,
  const std::array<double, 3>& spacing, const std::array<double, 3>& origin)
{
  for (int row = 0; row < 3; ++row)
  {
    for (int column = 0; column < 3; ++column)
    {
      volume.IndexToPatient->SetElement(
        row, column, directions[3 * column + row] * spacing[column]);
    }
    volume.IndexToPatient->SetElement(row, 3, origin[row]);
  }
}

void zvReaderSteps::ExchangeRasAndLps(vtkMatrix4x4* matrix)
{
  for (int row = 0; row < 2; ++row)
  {
    for (int column = 0; column < 4; ++column)
    {
      matrix->SetElement(row, column, -matrix->GetElement(row, column));
    }
  }
}
