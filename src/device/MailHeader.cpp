#include "device/MailHeader.h"

#include <QByteArrayList>

#include <algorithm>
#include <vector>

namespace {

constexpr qsizetype kPlainLength = 60;

bool isPrintableAscii(QChar c) {
  return c >= u' ' && c <= u'~';
}

bool needsNoEncoding(const QString &text) {
  return text.size() <= kPlainLength && std::all_of(text.begin(), text.end(), isPrintableAscii) &&
         !text.contains(QLatin1String("=?")) && text == text.simplified();
}

/// The UTF-8 of `text` in pieces of at most `maxBytes`, none of which ends within a character.
std::vector<QByteArray> utf8Pieces(const QString &text, qsizetype maxBytes) {
  const QByteArray bytes = text.toUtf8();
  const auto isWithinCharacter = [&bytes](qsizetype position) {
    return position < bytes.size() &&
           (static_cast<unsigned char>(bytes[position]) & 0xC0U) == 0x80U;
  };
  std::vector<QByteArray> pieces;
  for (qsizetype start = 0; start < bytes.size();) {
    qsizetype end = std::min(start + maxBytes, bytes.size());
    while (isWithinCharacter(end)) {
      --end;
    }
    pieces.push_back(bytes.sliced(start, end - start));
    start = end;
  }
  return pieces;
}

}  // namespace

bool breaksLine(QChar c) {
  return c.category() == QChar::Other_Control || c == QChar::LineSeparator ||
         c == QChar::ParagraphSeparator;
}

QByteArray encodedHeaderText(const QString &text) {
  constexpr qsizetype kWordBytes = 39;
  QString oneLine = text;
  std::replace_if(oneLine.begin(), oneLine.end(), breaksLine, u' ');
  if (needsNoEncoding(oneLine)) {
    return oneLine.toLatin1();
  }
  QByteArrayList words;
  for (const QByteArray &piece : utf8Pieces(oneLine, kWordBytes)) {
    words.append("=?UTF-8?B?" + piece.toBase64() + "?=");
  }
  return words.join("\r\n ");
}

QByteArray encodedHeaderParameter(const QByteArray &name, const QString &value) {
  constexpr qsizetype kPieceBytes = 18;
  QByteArray parameter;
  int number = 0;
  for (const QByteArray &piece : utf8Pieces(value, kPieceBytes)) {
    parameter += ";\r\n " + name + '*' + QByteArray::number(number) +
                 (number == 0 ? "*=UTF-8''" : "*=") + piece.toPercentEncoding();
    ++number;
  }
  return parameter;
}

QByteArray plainHeaderParameter(const QByteArray &name, const QString &value) {
  QString plain = value.size() <= kPlainLength
                      ? value
                      : value.left(kPlainLength / 2) + value.right(kPlainLength / 2);
  std::replace_if(
      plain.begin(), plain.end(),
      [](QChar c) { return !isPrintableAscii(c) || c == u'"' || c == u'\\'; }, u'_');
  return ";\r\n " + name + "=\"" + plain.toLatin1() + '"';
}
