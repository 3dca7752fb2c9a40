#include "platform/Utf8.h"

#include <QStringDecoder>

std::optional<QString> utf8Text(const QByteArray &bytes) {
  QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
  const QString text = decoder(bytes);
  return decoder.hasError() ? std::nullopt : std::optional(text);
}
