#pragma once

#include <QString>

#include <chrono>
#include <utility>
#include <vector>

/// A collection of single measurements. A name has the form "work/way/size".
class Samples {
 public:
  using Clock = std::chrono::steady_clock;

  void addTime(const QString &name, Clock::duration time) {
    add(name, std::chrono::duration<double, std::milli>(time).count(), QStringLiteral("ms"));
  }
  void addMemory(const QString &name, double bytes) {
    constexpr double kMebibyte = 1024 * 1024;
    add(name, bytes / kMebibyte, QStringLiteral("MiB"));
  }
  /// Calls `work` and adds its duration.
  template <class Work>
  void time(const QString &name, const Work &work) {
    const auto begin = Clock::now();
    work();
    addTime(name, Clock::now() - begin);
  }

  /// Writes all samples to the file `path`, in the JSON format of Google Benchmark. Returns false
  /// if the file cannot be written.
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
