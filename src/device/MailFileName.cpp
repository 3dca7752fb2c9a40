#include "device/MailFileName.h"

#include "device/MailHeader.h"

#include <algorithm>

namespace {

constexpr qsizetype kMaxBytes = 255;

QString withoutMiddle(const QString &name) {
  // What UTF-16 has in one unit takes up to three bytes of UTF-8.
  constexpr qsizetype kHalf = (kMaxBytes / 3 - 1) / 2;
  QString start = name.left(kHalf);
  QString end = name.right(kHalf);
  if (start.back().isHighSurrogate()) {
    start.chop(1);
  }
  if (end.front().isLowSurrogate()) {
    end.remove(0, 1);
  }
  return start + u'…' + end;
}

}  // namespace

QString attachmentFileName(QString name) {
  const auto isUnsafe = [](QChar c) { return c == u'/' || c == u'\\' || breaksLine(c); };
  std::replace_if(name.begin(), name.end(), isUnsafe, u'_');
  return name.toUtf8().size() <= kMaxBytes ? name : withoutMiddle(name);
}
