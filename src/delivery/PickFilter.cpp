#include "delivery/PickFilter.h"

namespace {

bool isShown(int segment, const BoxLine &line) {
  const bool isMatching = line.orderqty.value() == line.pickqty.value();
  switch (segment) {
    case AllLines:
      return true;
    case NotPickedLines:
      return line.pickqty.value() == 0;
    case DifferentLines:
      return !isMatching;
    default:
      return isMatching;
  }
}

}  // namespace

std::vector<std::size_t> linesShownBy(int segment, const std::vector<BoxLine> &lines) {
  std::vector<std::size_t> shown;
  for (std::size_t i = 0; i < lines.size(); ++i) {
    if (isShown(segment, lines[i])) {
      shown.push_back(i);
    }
  }
  return shown;
}
