#pragma once

#include <QString>

#include <cstdint>
#include <optional>

/// What a scanner sent.
struct Burst {
  QString code;
  /// Whether nothing was typed for a while before it, so that what stands in a field by then is
  /// older and not its beginning.
  bool isAfterPause = false;
};

/// Tells a scanner in keyboard mode from a person by the time between its keys: a scanner sends the
/// characters of a code and a Return closer together than a person types.
class BurstDetector {
 public:
  /// The longest time between two keys of a scanner, in milliseconds. Scanners need 1 to 20, over a
  /// radio up to 30; of a person's keys now and then two come closer, never a row that a Return
  /// ends.
  static constexpr std::uint64_t kLongestGap = 35;
  /// So many keys in a row are a scanner's for certain ...
  static constexpr qsizetype kCertainLength = 4;
  /// ... which may then stop for so long, in milliseconds, on its way through radio and network.
  static constexpr std::uint64_t kLongestStop = 250;
  /// The fewest characters that a scanner sends. One character and Return can be two fingers.
  static constexpr qsizetype kShortestCode = 2;
  /// After so many milliseconds without a key a code is no continuation of what was typed before.
  static constexpr std::uint64_t kPause = 1000;

  /// A key that typed `text` was pressed at `time`, in milliseconds from any beginning. Whether it
  /// may go on what was typed before; otherwise a person typed that.
  bool type(const QString &text, std::uint64_t time);
  /// Return was pressed at `time`: the code, if a scanner sent it.
  std::optional<Burst> pressReturn(std::uint64_t time);
  /// Something else happened: what comes next begins anew.
  void interrupt() { m_code.clear(); }

  /// Whether what was typed last can be the beginning of a code.
  [[nodiscard]] bool isPossible() const { return m_code.size() >= kShortestCode; }
  /// Whether what was typed last is a scanner's for certain, even without its Return.
  [[nodiscard]] bool isCertain() const { return m_code.size() >= kCertainLength; }
  /// How long the next key may take to go on what was typed last, in milliseconds.
  [[nodiscard]] std::uint64_t longestGap() const {
    return isCertain() ? kLongestStop : kLongestGap;
  }

 private:
  /// The milliseconds since the last key; nothing after a Return, or if the clock ran back.
  [[nodiscard]] std::optional<std::uint64_t> sinceLastKey(std::uint64_t time) const;

  QString m_code;
  bool m_isAfterPause = true;
  std::optional<std::uint64_t> m_lastTime;
};
