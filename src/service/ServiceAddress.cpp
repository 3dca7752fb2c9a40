#include "service/ServiceAddress.h"

#include <QStringList>

#include <string_view>

namespace {

const QString kPath = QStringLiteral("/qir_pick/servicepick.svc/json/");
constexpr int kDefaultPort = 80;
constexpr std::string_view kEscaped = " \"#%<>[\\]^`{|}";

bool needsEscape(char16_t c) {
  return c < 0x20 || c == 0x7F || kEscaped.find(static_cast<char>(c)) != std::string_view::npos;
}

/// Returns true if the path segments of `deliveryNumber` cannot lead out of the lookup's path.
bool staysBelow(const QString &deliveryNumber) {
  const QStringList segments = deliveryNumber.section(u'?', 0, 0).split(u'/');
  return !segments.contains(QStringLiteral(".")) && !segments.contains(QStringLiteral(".."));
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

ServiceAddress::ServiceAddress(const QString &host) : m_host(host) {}

std::optional<QString> ServiceAddress::objectionTo(const QString &host) {
  if (host.contains(QStringLiteral("://"))) {
    return QStringLiteral("it has to be without \"http://\"");
  }
  if (host.contains(u'@')) {
    return QStringLiteral("it has to be without a user name");
  }
  QUrl url;
  url.setScheme(QStringLiteral("http"));
  url.setAuthority(host, QUrl::StrictMode);
  if (!url.isValid() || url.host().isEmpty()) {
    return QStringLiteral("it is not HOST or HOST:PORT, with an IPv6 address in brackets");
  }
  if (url.port(kDefaultPort) == 0 || host.endsWith(u':')) {
    return QStringLiteral("the port is not a number from 1 to 65535");
  }
  return std::nullopt;
}

QUrl ServiceAddress::urlOf(const QString &operation) const {
  const auto path = addingPercentEscapes(kPath + operation);
  return path ? QUrl::fromEncoded("http://" + m_host.toUtf8() + *path, QUrl::StrictMode) : QUrl();
}

QUrl ServiceAddress::getorderpercarton(const QString &deliveryNumber) const {
  return staysBelow(deliveryNumber) ? urlOf(QStringLiteral("getorderpercarton/") + deliveryNumber)
                                    : QUrl();
}

QUrl ServiceAddress::getitems() const {
  return urlOf(QStringLiteral("getitems"));
}

QUrl ServiceAddress::sendpick() const {
  return urlOf(QStringLiteral("sendpick"));
}
