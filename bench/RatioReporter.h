#pragma once

// A console reporter that also keeps the time of every benchmark, so that a
// program can print the ratios between its own runs at the end.

#include <algorithm>
#include <map>
#include <string>
#include <vector>

#include <benchmark/benchmark.h>

// Prints as usual and keeps the CPU time per iteration of each run, or the
// median the library reports when it reports aggregates only.
class RatioReporter : public benchmark::ConsoleReporter {
 public:
  void ReportRuns(const std::vector<Run>& runs) override {
    ConsoleReporter::ReportRuns(runs);
    for (const Run& run : runs) {
      if (run.error_occurred) continue;
      const std::string name = run.run_name.function_name;
      if (run.run_type == Run::RT_Iteration) times[name].push_back(run.GetAdjustedCPUTime());
      if (run.run_type == Run::RT_Aggregate && run.aggregate_name == "median") medians[name] = run.GetAdjustedCPUTime();
    }
  }
  // The median time of benchmark `name`; 0 when it did not run.
  double median(const std::string& name) {
    std::vector<double>& t = times[name];
    if (t.empty()) return medians.count(name) ? medians[name] : 0.0;
    std::sort(t.begin(), t.end());
    return t.size() % 2 ? t[t.size() / 2] : (t[t.size() / 2 - 1] + t[t.size() / 2]) / 2;
  }

 private:
  std::map<std::string, std::vector<double>> times;
  std::map<std::string, double> medians;
};
