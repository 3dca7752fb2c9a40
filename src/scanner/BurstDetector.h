#pragma once

#include <QString>

#include <cstdint>
#include <optional>

/// A code sent by a scanner.
struct Burst {
  QString code;
  /// True if no key was pressed for `kPause` before the code, so text already in the field is not
  /// part of it.
  bool isAfterPause = false;
};

/// Distinguishes a scanner in keyboard mode from a person by the time between keys: a scanner sends
/// the characters of a code and a Return faster than a person types.
class BurstDetector {
 public:
  /// The maximum time between two keys of a scanner, in milliseconds. Scanners need 1 to 20, radio
  /// scanners up to 30. A person sometimes presses two keys this fast, but not a whole sequence
  /// that ends with Return.
  static constexpr std::uint64_t kLongestGap = 35;
  /// This number of fast characters in a row certainly comes from a scanner.
  static constexpr qsizetype kCertainLength = 4;
  /// The maximum time between two keys after `kCertainLength` characters, in milliseconds: a radio
  /// link or network can delay the rest of a code.
  static constexpr std::uint64_t kLongestStop = 250;
  /// The minimum length of a code. A person can press one character and Return this fast.
  static constexpr qsizetype kShortestCode = 2;
  /// A code that starts this many milliseconds after the last key does not continue typed text.
  static constexpr std::uint64_t kPause = 1000;

  /// Records a key press that typed `text` at `time`, in milliseconds since an arbitrary epoch.
  /// Returns true if it continues the current sequence, false if it starts a new one.
  bool type(const QString &text, std::uint64_t time);
  /// Records a Return at `time` and ends the sequence. Returns the code if a scanner sent it.
  std::optional<Burst> pressReturn(std::uint64_t time);
  /// Ends the current sequence.
  void interrupt() { m_code.clear(); }

  /// Returns true if the current sequence could be the beginning of a code.
  [[nodiscard]] bool isPossible() const { return m_code.size() >= kShortestCode; }
  /// Returns true if the current sequence certainly comes from a scanner, even without a Return.
  [[nodiscard]] bool isCertain() const { return m_code.size() >= kCertainLength; }
  /// The maximum time until the next key of the current sequence, in milliseconds.
  [[nodiscard]] std::uint64_t longestGap() const {
    return isCertain() ? kLongestStop : kLongestGap;
  }

 private:
  /// The milliseconds since the last key; std::nullopt after a Return or if time went backwards.
  [[nodiscard]] std::optional<std::uint64_t> sinceLastKey(std::uint64_t time) const;

  QString m_code;
  bool m_isAfterPause = true;
  std::optional<std::uint64_t> m_lastTime;
};
