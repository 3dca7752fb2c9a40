#include "delivery/EqualLines.h"

#include "base/Int32.h"

#include <algorithm>

std::optional<std::size_t> firstLineOf(const QString &item, const std::vector<BoxLine> &lines) {
  const auto first = std::find_if(lines.begin(), lines.end(),
                                  [&](const BoxLine &line) { return line.item == item; });
  return first == lines.end() ? std::nullopt
                              : std::optional(static_cast<std::size_t>(first - lines.begin()));
}

std::size_t lineToFill(const QString &item, const std::vector<BoxLine> &lines) {
  std::size_t last = firstLineOf(item, lines).value();
  for (std::size_t i = last; i < lines.size(); ++i) {
    if (lines[i].item == item) {
      last = i;
      if (lines[i].pickqty.value() < lines[i].orderqty.value()) {
        break;
      }
    }
  }
  return last;
}

BoxLine sumOfLines(const QString &item, const std::vector<BoxLine> &lines) {
  const std::size_t first = firstLineOf(item, lines).value();
  BoxLine sum = lines[first];
  for (std::size_t i = first + 1; i < lines.size(); ++i) {
    if (lines[i].item == item) {
      sum.orderqty = wrappingAdd(sum.orderqty.value(), lines[i].orderqty.value());
      sum.pickqty = wrappingAdd(sum.pickqty.value(), lines[i].pickqty.value());
    }
  }
  return sum;
}
