#pragma once

// Timing and progress reporting for the demo's stages.

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <string>
#include <utility>
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

/// The time of each stage of a loop that runs once per frame: stages are
/// timed back to back, each from the end of the one before. On a shared
/// machine the median and the least time say more than the mean.
class FrameStages {
 public:
  /// Stages called `names`, in the order each frame runs them, for up to
  /// `frames` frames (room for them is taken here, not while timing).
  FrameStages(std::vector<std::string> names, std::size_t frames) : _names(std::move(names)), _frame(_names.size()) {
    _times.reserve(frames * _names.size());
  }
  /// Starts a frame.
  void beginFrame() {
    std::fill(_frame.begin(), _frame.end(), 0.0);
    _last = std::chrono::steady_clock::now();
  }
  /// Ends stage `stage` of this frame: it took the time since the previous
  /// lap, or since beginFrame.
  void lap(std::size_t stage) {
    const std::chrono::steady_clock::time_point now = std::chrono::steady_clock::now();
    _frame[stage] += std::chrono::duration<double, std::micro>(now - _last).count();
    _last = now;
  }
  /// Ends the frame.
  void endFrame() { _times.insert(_times.end(), _frame.begin(), _frame.end()); }
  /// The median over the frames of stage `stage`'s time, in microseconds.
  double median(std::size_t stage) const { return statistics(stage).median; }
  /// Prints each stage's median, least and mean time per frame.
  void print() const {
    std::printf("  %-30s %11s %11s %11s\n", "per frame, microseconds", "median", "least", "mean");
    Statistics all{0, 0, 0};
    for (std::size_t i = 0; i < _names.size(); ++i) {
      const Statistics s = statistics(i);
      std::printf("  %-30s %11.2f %11.2f %11.2f\n", _names[i].c_str(), s.median, s.least, s.mean);
      all.median += s.median, all.least += s.least, all.mean += s.mean;
    }
    std::printf("  %-30s %11.2f %11.2f %11.2f\n", "all stages (sums)", all.median, all.least, all.mean);
  }

 private:
  struct Statistics {
    double median, least, mean;
  };
  Statistics statistics(std::size_t stage) const {
    std::vector<double> t;
    for (std::size_t i = stage; i < _times.size(); i += _names.size()) t.push_back(_times[i]);
    if (t.empty()) return {0, 0, 0};
    std::sort(t.begin(), t.end());
    double sum = 0;
    for (double x : t) sum += x;
    const std::size_t n = t.size();
    return {n % 2 ? t[n / 2] : 0.5 * (t[n / 2 - 1] + t[n / 2]), t.front(), sum / double(n)};
  }

  std::vector<std::string> _names;
  std::vector<double> _frame;  ///< this frame's time per stage
  std::vector<double> _times;  ///< every frame's, stage after stage
  std::chrono::steady_clock::time_point _last;
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
