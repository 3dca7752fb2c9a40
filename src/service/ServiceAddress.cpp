#include "service/ServiceAddress.h"

#include <QStringList>

#include <string_view>

namespace {

constexpr std::string_view kEscaped = " \"#%<>[\\]^`{|}";

bool needsEscape(char16_t c) {
  return c < 0x20 || c == 0x7F || kEscaped.find(static_cast<char>(c)) != std::string_view::npos;
}

/// Returns true if the path segments of `deliveryNumber` cannot leave the path of the lookup.
bool staysBelow(const QString &deliveryNumber) {
  const QStringList segments = deliveryNumber.section(u'?', 0, 0).split(u'/');
  return !segments.contains(QStringLiteral(".")) && !segments.contains(QStringLiteral(".."));
}

QUrl urlOf(const QString &address) {
  const auto escaped = addingPercentEscapes(address);
  return escaped ? QUrl::fromEncoded(*escaped, QUrl::StrictMode) : QUrl();
}

}  // namespace

std::optional<QByteArray> addingPercentEscapes(const QString &text) {
  QByteArray escaped;
  escaped.reserve(text.size());
  for (const QChar c : text) {
    const char16_t code = c.unicode();
    if (code > 0x7F) {
      return std::nullopt;
    }
    const char ascii = static_cast<char>(code);
    if (needsEscape(code)) {
      escaped += '%' + QByteArray(1, ascii).toHex().toUpper();
    } else {
      escaped += ascii;
    }
  }
  return escaped;
}

ServiceAddress::ServiceAddress(const QString &host)
    : m_prefix(QStringLiteral("http://") + host +
               QStringLiteral("/qir_pick/servicepick.svc/json/")) {}

QUrl ServiceAddress::getorderpercarton(const QString &deliveryNumber) const {
  return staysBelow(deliveryNumber)
             ? urlOf(m_prefix + QStringLiteral("getorderpercarton/") + deliveryNumber)
             : QUrl();
}

QUrl ServiceAddress::getitems() const {
  return urlOf(m_prefix + QStringLiteral("getitems"));
}

QUrl ServiceAddress::sendpick() const {
  return urlOf(m_prefix + QStringLiteral("sendpick"));
}
