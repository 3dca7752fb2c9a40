#include "base/Utf8.h"

#include <QStringDecoder>

QString textOfUtf8(std::string_view bytes) {
  if (bytes.empty()) {
    return QStringLiteral("");
  }
  constexpr std::string_view kMark = "\xEF\xBB\xBF";
  const QString text = QString::fromUtf8(bytes.data(), static_cast<qsizetype>(bytes.size()));
  return bytes.starts_with(kMark) ? QChar::ByteOrderMark + text : text;
}

std::optional<QString> utf8Text(const QByteArray &bytes) {
  QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
  const QString text = decoder(bytes);
  return decoder.hasError() ? std::nullopt : std::optional(text);
}
