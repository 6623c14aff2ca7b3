// Runs the benchmarks with repetitions in random order, so that a machine that gets slower or
// faster meanwhile treats all alike, and prints how ours compare with the others.
//
// Names are <side>/<work>/<class>/<volume>; the side is "zv" for ours, "peer" for a stock widget
// and "plain" for the same pipeline as ours made of stock filters. Works of the same name on the
// same volume are compared.
#include "zvBenchmarkDisplay.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdio>
#include <map>
#include <string>
#include <vector>

namespace
{
struct Name
{
  std::string Side;
  std::string Work; // with the volume
  std::string Class;
};

/// Take a name apart; everything empty if it is not of our form.
Name ParseName(const std::string& text)
{
  std::vector<std::string> parts;
  std::size_t from = 0;
  for (std::size_t to = text.find('/'); to != std::string::npos; to = text.find('/', from))
  {
    parts.push_back(text.substr(from, to - from));
    from = to + 1;
  }
  parts.push_back(text.substr(from));
  if (parts.size() < 4)
  {
    return {};
  }
  return { parts[0], parts[1] + "/" + parts[3], parts[2] };
}

/// The value below which a share of all values lies, between two of them if need be.
double GetQuantile(std::vector<double> values, double share)
{
  std::sort(values.begin(), values.end());
  const double place = share * static_cast<double>(values.size() - 1);
  const auto below = static_cast<std::size_t>(place);
  const std::size_t above = std::min(below + 1, values.size() - 1);
  return values[below] + (place - static_cast<double>(below)) * (values[above] - values[below]);
}

double GetMedian(const std::vector<double>& values)
{
  return GetQuantile(values, 0.5);
}

/// How a share of our times compares with the same share of another's.
double GetRatio(const std::vector<double>& ours, const std::vector<double>& others, double share)
{
  return GetQuantile(ours, share) / GetQuantile(others, share);
}

/// Prints the medians as they come and keeps the time of every run, in milliseconds.
class Recorder : public benchmark::ConsoleReporter
{
public:
  void ReportRuns(const std::vector<Run>& runs) override
  {
    std::vector<Run> medians;
    for (const Run& run : runs)
    {
      if (run.run_type == Run::RT_Iteration && !run.error_occurred)
      {
        const double seconds = run.real_accumulated_time / static_cast<double>(run.iterations);
        this->Times[run.run_name.function_name].push_back(1000.0 * seconds);
      }
      if (run.error_occurred || run.aggregate_name == "median")
      {
        medians.push_back(run);
      }
    }
    this->ConsoleReporter::ReportRuns(medians);
  }

  void PrintComparison() const
  {
    // Others on the machine only ever add time, so where the columns disagree the lower quartile
    // and the fastest runs tell more than the medians.
    std::printf("\n%-36s %-18s %9s  %-24s %9s %7s %9s %8s\n", "work/volume", "ours", "ms", "beside",
      "ms", "ratio", "quartile", "fastest");
    for (const auto& [text, times] : this->Times)
    {
      const Name name = ParseName(text);
      if (name.Side == "zv" && name.Work.find("update_unchanged") != 0)
      {
        this->PrintPeers(name, times);
      }
    }
    this->PrintUnchanged();
  }

private:
  void PrintPeers(const Name& ours, const std::vector<double>& ourTimes) const
  {
    for (const auto& [text, times] : this->Times)
    {
      const Name other = ParseName(text);
      if (other.Work == ours.Work && other.Side != "zv")
      {
        std::printf("%-36s %-18s %9.4f  %-24s %9.4f %7.2f %9.2f %8.2f\n", ours.Work.c_str(),
          ours.Class.c_str(), GetMedian(ourTimes), (other.Side + " " + other.Class).c_str(),
          GetMedian(times), GetRatio(ourTimes, times, 0.5), GetRatio(ourTimes, times, 0.25),
          GetRatio(ourTimes, times, 0.0));
      }
    }
  }

  /// An update with nothing to do stands apart: it is too quick for milliseconds, and what the
  /// stock widget offers in its place places the plane anew, so that a ratio would say nothing.
  void PrintUnchanged() const
  {
    const double nanosecondsPerMillisecond = 1e6;
    for (const auto& [text, times] : this->Times)
    {
      const Name name = ParseName(text);
      if (name.Work.find("update_unchanged") == 0)
      {
        std::printf("%-36s %-24s %9.1f ns, fastest %.1f ns\n", name.Work.c_str(),
          (name.Side + " " + name.Class).c_str(), nanosecondsPerMillisecond * GetMedian(times),
          nanosecondsPerMillisecond * GetQuantile(times, 0.0));
      }
    }
  }

  std::map<std::string, std::vector<double>> Times;
};
}

int main(int argc, char** argv)
{
  if (!zvGetBenchmarkDisplay())
  {
    std::fprintf(stderr,
      "The benchmarks draw, but there is no display: DISPLAY is not set or cannot be opened. "
      "On a machine without a screen, run them by xvfb-run.\n");
    return 1;
  }
  // Many short repetitions rather than few long ones: some of them find the machine at rest. What
  // is given on the command line comes later and wins.
  std::vector<std::string> arguments{ argv[0], "--benchmark_repetitions=15",
    "--benchmark_enable_random_interleaving=true", "--benchmark_min_time=0.02" };
  arguments.insert(arguments.end(), argv + 1, argv + argc);
  std::vector<char*> pointers;
  for (std::string& argument : arguments)
  {
    pointers.push_back(argument.data());
  }
  int count = static_cast<int>(pointers.size());
  benchmark::Initialize(&count, pointers.data());
  if (benchmark::ReportUnrecognizedArguments(count, pointers.data()))
  {
    return 1;
  }
  Recorder recorder;
  benchmark::RunSpecifiedBenchmarks(&recorder);
  recorder.PrintComparison();
  benchmark::Shutdown();
  return 0;
}
