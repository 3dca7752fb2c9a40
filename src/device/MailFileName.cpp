#include "device/MailFileName.h"

#include "device/OneLine.h"

#include <algorithm>

namespace {

constexpr qsizetype kMaxBytes = 255;

QString withoutMiddle(const QString &name) {
  // One UTF-16 code unit takes up to three bytes in UTF-8.
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
  name = inOneLine(name, u'_').replace(u'/', u'_').replace(u'\\', u'_');
  return name.toUtf8().size() <= kMaxBytes ? name : withoutMiddle(name);
}

QString plainFileName(const QString &name) {
  constexpr qsizetype kMaxLength = 40;
  QString plain =
      name.size() <= kMaxLength ? name : name.left(kMaxLength / 2) + name.right(kMaxLength / 2);
  const auto needsEncoding = [](QChar c) {
    return c < u' ' || c > u'~' || c == u'"' || c == u'\\';
  };
  std::replace_if(plain.begin(), plain.end(), needsEncoding, u'_');
  return plain.replace(QLatin1String("=?"), QLatin1String("=_"));
}
