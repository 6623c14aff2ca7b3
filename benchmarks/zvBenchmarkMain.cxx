// Runs the benchmarks with repetitions in random order, so that a machine that gets slower or
// faster meanwhile treats all alike, and prints how ours compare with the others.
//
// Names are <side>/<work>/<class>/<volume>; the side is "zv" for ours, "peer" for a stock widget
// and "plain" for the same pipeline as ours made of stock filters. Works of the same name on the
// same volume are compared.
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

double GetMedian(std::vector<double> values)
{
  std::sort(values.begin(), values.end());
  const std::size_t middle = values.size() / 2;
  return values.size() % 2 == 1 ? values[middle] : 0.5 * (values[middle - 1] + values[middle]);
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
    // On a busy machine the fastest runs tell more than the medians.
    std::printf("\n%-36s %-20s %9s  %-27s %9s %7s %10s\n", "work/volume", "ours", "ms", "beside",
      "ms", "ratio", "of fastest");
    for (const auto& [text, times] : this->Times)
    {
      const Name name = ParseName(text);
      if (name.Side == "zv")
      {
        this->PrintPeers(name, times);
      }
    }
  }

private:
  void PrintPeers(const Name& ours, const std::vector<double>& ourTimes) const
  {
    for (const auto& [text, times] : this->Times)
    {
      const Name other = ParseName(text);
      if (other.Work == ours.Work && other.Side != "zv")
      {
        const double fastest = *std::min_element(ourTimes.begin(), ourTimes.end()) /
          *std::min_element(times.begin(), times.end());
        std::printf("%-36s %-20s %9.4f  %-27s %9.4f %7.2f %10.2f\n", ours.Work.c_str(),
          ours.Class.c_str(), GetMedian(ourTimes), (other.Side + " " + other.Class).c_str(),
          GetMedian(times), GetMedian(ourTimes) / GetMedian(times), fastest);
      }
    }
  }

  std::map<std::string, std::vector<double>> Times;
};
}

int main(int argc, char** argv)
{
  // What is given on the command line comes later and wins.
  std::vector<std::string> arguments{ argv[0], "--benchmark_repetitions=5",
    "--benchmark_enable_random_interleaving=true", "--benchmark_min_time=0.5" };
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
