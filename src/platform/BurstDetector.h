#pragma once

#include <QString>

#include <cstdint>
#include <optional>

/// Tells a scanner in keyboard mode from a person by the time between its keys: a scanner sends the
/// characters of a code and a Return closer together than a person types.
class BurstDetector {
 public:
  /// The longest time between two keys of a scanner, in milliseconds. Scanners need 1 to 20, over a
  /// radio up to 30; of a person's keys now and then two come closer, never a row that a Return
  /// ends.
  static constexpr std::uint64_t kLongestGap = 35;
  /// The fewest characters that a scanner sends. One character and Return can be two fingers.
  static constexpr qsizetype kShortestCode = 2;

  /// A key that typed `text` was pressed at `time`, in milliseconds from any beginning. Whether it
  /// may go on what was typed before; otherwise a person typed that.
  bool type(const QString &text, std::uint64_t time);
  /// Return was pressed at `time`: the code, if a scanner sent it. Ends the burst.
  std::optional<QString> pressReturn(std::uint64_t time);
  /// Something else happened: what comes next begins anew.
  void interrupt() { m_code.clear(); }

 private:
  [[nodiscard]] bool isInTime(std::uint64_t time) const;

  QString m_code;
  std::uint64_t m_lastTime = 0;
};
