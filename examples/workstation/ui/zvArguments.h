#ifndef zvArguments_h
#define zvArguments_h

#include <string>
#include <vector>

/// What the command line asks for.
struct zvArguments
{
  std::string Volume;      // empty for the example
  std::string ShotsFolder; // empty for no tour
  int QuitAfter = -1;      // milliseconds, negative for not at all
  bool WantsHelp = false;
  std::string Mistake; // what cannot be understood, empty if all can

  /// \param words  the command line without the program's name.
  static zvArguments Parse(const std::vector<std::string>& words);
  static const char* GetUsage();
};

#endif
