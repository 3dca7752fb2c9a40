#include "device/OneLine.h"

#include <algorithm>

QString inOneLine(QString text, QChar replacement) {
  const auto breaksLine = [](QChar c) {
    return c.category() == QChar::Other_Control || c == QChar::LineSeparator ||
           c == QChar::ParagraphSeparator;
  };
  if (std::none_of(text.cbegin(), text.cend(), breaksLine)) {
    return text;
  }
  std::replace_if(text.begin(), text.end(), breaksLine, replacement);
  return text;
}
