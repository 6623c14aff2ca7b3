#include "zvArguments.h"

#include <charconv>

namespace
{
// The word behind an option; false if there is none.
bool TakeValue(const std::vector<std::string>& words, std::size_t& at, std::string& value)
{
  if (at + 1 >= words.size())
  {
    return false;
  }
  value = words[++at];
  return true;
}

bool ParseMilliseconds(const std::string& text, int& value)
{
  const char* const end = text.data() + text.size();
  const auto answer = std::from_chars(text.data(), end, value);
  return answer.ec == std::errc() && answer.ptr == end && value >= 0;
}
}

zvArguments zvArguments::Parse(const std::vector<std::string>& words)
{
  zvArguments arguments;
  for (std::size_t at = 0; at < words.size() && arguments.Mistake.empty(); ++at)
  {
    const std::string word = words[at];
    std::string value;
    if (word == "--help" || word == "-h")
    {
      arguments.WantsHelp = true;
    }
    else if (word == "--shots")
    {
      arguments.Mistake =
        TakeValue(words, at, arguments.ShotsFolder) ? "" : "--shots needs a folder";
    }
    else if (word == "--quit-after")
    {
      const bool isGiven =
        TakeValue(words, at, value) && ParseMilliseconds(value, arguments.QuitAfter);
      arguments.Mistake = isGiven ? "" : "--quit-after needs a number of milliseconds";
    }
    else if (word.size() > 1 && word[0] == '-')
    {
      arguments.Mistake = "unknown option " + word;
    }
    else if (!arguments.Volume.empty())
    {
      arguments.Mistake = "one volume at a time";
    }
    else
    {
      arguments.Volume = word;
    }
  }
  return arguments;
}

const char* zvArguments::GetUsage()
{
  return "zv-workstation [VOLUME] [--shots DIR] [--quit-after MS]\n"
         "  VOLUME           a NIfTI, MetaImage, NRRD or DICOM file, or a DICOM folder;\n"
         "                   without it an example\n"
         "  --shots DIR      write pictures of a tour into DIR and end\n"
         "  --quit-after MS  end after so many milliseconds\n";
}
