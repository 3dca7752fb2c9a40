// Feeds the burst detector keys at arbitrary times. A returned code must consist of exactly the
// characters typed since the detector last reported a new sequence, in order.

#include "FuzzInput.h"
#include "Property.h"
#include "scanner/BurstDetector.h"

#include <QStringList>

#include <array>

namespace {

/// The expected state of the detector: the current sequence of keys.
struct Typed {
  QStringList texts = {};
  std::uint64_t lastTime = 0;
};

std::uint64_t laterThan(std::uint64_t time, FuzzInput &input) {
  constexpr std::array<std::uint64_t, 12> kGaps = {0,  1,   4,   20,  34,  35,
                                                   36, 249, 250, 251, 999, 1000};
  if (input.onceIn(32)) {
    // Any time, earlier or later.
    return input.number();
  }
  return time + input.oneOf(kGaps);
}

QString keyOf(FuzzInput &input) {
  static const std::array<QString, 6> kKeys = {QStringLiteral("1"), QStringLiteral("2"),
                                               QStringLiteral("A"), QStringLiteral("-"),
                                               QStringLiteral(" "), QStringLiteral("😀")};
  return input.oneOf(kKeys);
}

void checkState(const BurstDetector &detector, const Typed &typed) {
  const qsizetype length = typed.texts.join(QString()).size();
  require(detector.isPossible() == (length >= BurstDetector::kShortestCode),
          "a possible code has at least the minimum length");
  require(detector.isCertain() == (length >= BurstDetector::kCertainLength),
          "a certain code has at least the certain length");
}

void type(BurstDetector &detector, Typed &typed, const QString &key, std::uint64_t time) {
  const std::uint64_t longestGap = detector.longestGap();
  const bool isInTime =
      !typed.texts.isEmpty() && time >= typed.lastTime && time - typed.lastTime <= longestGap;
  const bool goesOn = detector.type(key, time);
  require(goesOn == isInTime, "a key in time continues the sequence");
  if (!goesOn) {
    typed.texts.clear();
  }
  typed.texts.append(key);
  typed.lastTime = time;
}

void pressReturn(BurstDetector &detector, Typed &typed, std::uint64_t time) {
  const QString code = typed.texts.join(QString());
  const bool isInTime = time >= typed.lastTime && time - typed.lastTime <= detector.longestGap();
  const auto burst = detector.pressReturn(time);
  require(burst.has_value() == (isInTime && code.size() >= BurstDetector::kShortestCode),
          "a code that ends in time with Return comes from a scanner");
  require(!burst || burst->code == code, "a code has the typed characters");
  typed.texts.clear();
  require(!detector.pressReturn(time), "a code is returned once");
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
  FuzzInput input(data, size);
  BurstDetector detector;
  Typed typed;
  std::uint64_t time = 0;
  while (!input.isEmpty()) {
    const std::size_t choice = input.below(16);
    time = laterThan(time, input);
    if (choice == 0) {
      detector.interrupt();
      typed.texts.clear();
    } else if (choice <= 3) {
      pressReturn(detector, typed, time);
    } else {
      type(detector, typed, keyOf(input), time);
    }
    checkState(detector, typed);
  }
  return 0;
}
