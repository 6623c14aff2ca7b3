#ifndef zvLoadFailure_h
#define zvLoadFailure_h

#include <stdexcept>

/// Thrown by the readers, inside this library only: why a file is refused, as the end of the
/// sentence "<file>: <reason>".
class zvLoadRefusal : public std::runtime_error
{
public:
  using std::runtime_error::runtime_error;
};

/// Thrown inside this library when the caller has cancelled.
class zvLoadCancelled : public std::exception
{
public:
  const char* what() const noexcept override { return "cancelled"; }
};

#endif
