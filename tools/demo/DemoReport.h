#pragma once

// Timing and progress reporting for the demo's stages.

#include <chrono>
#include <cstdio>
#include <string>
#include <vector>

namespace zedemo {

/// The stages run so far and the time each took.
class StageTimer {
 public:
  /// Starts timing a stage called `name` and announces it.
  void begin(const char* name) {
    std::printf("\n== %s\n", name);
    _name = name;
    _start = std::chrono::steady_clock::now();
  }
  /// Ends the current stage and records its time.
  void end() {
    const std::chrono::duration<double, std::milli> elapsed = std::chrono::steady_clock::now() - _start;
    _stages.push_back({_name, elapsed.count()});
  }
  /// Milliseconds the last stage ended took.
  double lastMilliseconds() const { return _stages.empty() ? 0.0 : _stages.back().milliseconds; }
  /// Prints every stage with its time, and the total.
  void print() const {
    double total = 0;
    for (const Stage& stage : _stages) {
      std::printf("  %-44s %9.1f ms\n", stage.name.c_str(), stage.milliseconds);
      total += stage.milliseconds;
    }
    std::printf("  %-44s %9.1f ms\n", "total", total);
  }

 private:
  struct Stage {
    std::string name;
    double milliseconds;
  };
  std::string _name;
  std::chrono::steady_clock::time_point _start;
  std::vector<Stage> _stages;
};

/// A one-line progress report in tenths, for loops long enough to need one.
class Progress {
 public:
  /// Reports on `total` steps of work called `name`; short work reports nothing.
  Progress(const char* name, unsigned long total)
      : _name(name), _total(total), _shown(total >= kWorthShowing ? 0 : 10) {}
  /// Notes that `done` steps are finished.
  void update(unsigned long done) {
    if (_shown >= 10) return;
    const unsigned long tenths = done * 10 / _total;
    if (tenths <= _shown) return;
    if (_shown == 0) std::printf("  %s:", _name);
    _shown = tenths;
    std::printf(" %lu%%", tenths * 10);
    if (_shown >= 10) std::printf("\n");
    std::fflush(stdout);
  }

 private:
  static constexpr unsigned long kWorthShowing = 50000;
  const char* _name;
  unsigned long _total;
  unsigned long _shown;
};

}  // namespace zedemo
