#pragma once

#include <QString>

#include <chrono>
#include <utility>
#include <vector>

/// What was measured one by one, each under a name of the form "work/way/size".
class Samples {
 public:
  using Clock = std::chrono::steady_clock;

  void addTime(const QString &name, Clock::duration time) {
    add(name, std::chrono::duration<double, std::milli>(time).count(), QStringLiteral("ms"));
  }
  /// `bytes` of memory.
  void addMemory(const QString &name, double bytes) {
    constexpr double kMebibyte = 1024 * 1024;
    add(name, bytes / kMebibyte, QStringLiteral("MiB"));
  }
  /// Calls `work` and adds the time it takes.
  template <class Work>
  void time(const QString &name, const Work &work) {
    const auto begin = Clock::now();
    work();
    addTime(name, Clock::now() - begin);
  }

  /// Writes all samples in the form of Google Benchmark. Returns whether that went well.
  [[nodiscard]] bool write(const QString &path) const;

 private:
  struct Sample {
    QString name;
    double value = 0;
    QString unit;
  };

  void add(const QString &name, double value, const QString &unit) {
    m_samples.push_back({name, value, unit});
  }

  std::vector<Sample> m_samples;
};
