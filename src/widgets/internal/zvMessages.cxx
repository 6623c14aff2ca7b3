#include "zvMessages.h"

#include <iostream>

namespace
{
void WriteWhere(const char* kind, const char* file, int line, const void* speaker)
{
  std::cout << kind << ": In " << file << ", line " << line << "\n (" << speaker << "): ";
}
}

void zvMessages::WriteTrace(const char* file, int line, const void* speaker, const char* signature)
{
  WriteWhere("Info", file, line, speaker);
  std::cout << "  >> \"" << signature << "\"\n\n" << std::flush;
}

void zvMessages::WritePlain(
  const char* kind, const char* file, int line, const void* speaker, const char* message)
{
  WriteWhere(kind, file, line, speaker);
  std::cout << message << "\n\n" << std::flush;
}
