#include "zvLoadProgress.h"

#include "zvLoadFailure.h"

#include "vtkAlgorithm.h"
#include "vtkCallbackCommand.h"
#include "vtkNew.h"

#include <utility>

namespace
{
struct Span
{
  zvLoadProgress* Progress;
  const std::function<void(double)>* Report;
  double From;
  double To;
};

// No exception may pass through the algorithm's code, so a cancel only raises its abort flag here.
void OnProgress(vtkObject* caller, unsigned long, void* clientData, void* callData)
{
  const auto* span = static_cast<Span*>(clientData);
  if (span->Progress->IsCancelled())
  {
    static_cast<vtkAlgorithm*>(caller)->SetAbortExecute(1);
    return;
  }
  if (callData != nullptr && *span->Report)
  {
    const double part = *static_cast<double*>(callData);
    (*span->Report)(span->From + part * (span->To - span->From));
  }
}
}

zvLoadProgress::zvLoadProgress(std::function<void(double)> report)
  : Callback(std::move(report))
{
}

void zvLoadProgress::Report(double fraction)
{
  if (this->IsCancelled())
  {
    throw zvLoadCancelled();
  }
  if (this->Callback)
  {
    this->Callback(fraction);
    // The caller may cancel from inside.
    if (this->IsCancelled())
    {
      throw zvLoadCancelled();
    }
  }
}

void zvLoadProgress::Run(vtkAlgorithm* algorithm, double from, double to)
{
  this->Report(from);
  Span span{ this, &this->Callback, from, to };
  vtkNew<vtkCallbackCommand> command;
  command->SetCallback(OnProgress);
  command->SetClientData(&span);
  const unsigned long tag = algorithm->AddObserver(vtkCommand::ProgressEvent, command);
  algorithm->Update();
  algorithm->RemoveObserver(tag);
  this->Report(to);
}
