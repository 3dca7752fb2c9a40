#include "picking/LookupMessages.h"

#include "base/Utf8.h"
#include "delivery/Delivery.h"

namespace {

const QString kAlreadySent = QStringLiteral("This picking has already been sent to the server");

bool isBlank(QChar c) {
  return c == u'\t' || c.category() == QChar::Separator_Space;
}

QStringView trimmedOfBlanks(QStringView text) {
  while (!text.isEmpty() && isBlank(text.front())) {
    text = text.sliced(1);
  }
  while (!text.isEmpty() && isBlank(text.back())) {
    text.chop(1);
  }
  return text;
}

bool saysAlreadySent(const QByteArray &body) {
  // Decodes only a body with this text; others can be large.
  return body.contains(kAlreadySent.toUtf8()) && utf8Text(body);
}

}  // namespace

std::optional<LookupMessage> objectionToNumber(const QString &number) {
  const QStringView trimmed = trimmedOfBlanks(number);
  if (trimmed.isEmpty()) {
    return LookupMessage{QStringLiteral("Please fill in data first"),
                         QStringLiteral("Delivery number is missing.")};
  }
  if (trimmed.size() < 2) {
    return LookupMessage{QStringLiteral("Please fill in additional data"),
                         QStringLiteral("Delivery number should be at least 2 characters.")};
  }
  return std::nullopt;
}

std::optional<LookupMessage> objectionToAnswer(const QByteArray &body,
                                               const std::optional<Delivery> &answer) {
  if (saysAlreadySent(body)) {
    return LookupMessage{
        kAlreadySent, QStringLiteral("You cannot proceed as this order has already been picked")};
  }
  if (!answer) {
    return LookupMessage{QStringLiteral("Could not fetch order details"),
                         QStringLiteral("Loading failed. Please try again.")};
  }
  if (answer->lines.empty()) {
    return LookupMessage{QStringLiteral("No order found"),
                         QStringLiteral("Please try again using different search criteria.")};
  }
  return std::nullopt;
}
