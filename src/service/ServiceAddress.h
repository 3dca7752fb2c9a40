#pragma once

#include <QByteArray>
#include <QString>
#include <QUrl>

#include <optional>

/// The addresses of the picking web service at one host.
class ServiceAddress {
 public:
  /// `host` is HOST or HOST:PORT.
  explicit ServiceAddress(const QString &host);

  /// The order lines of one delivery. Empty if `deliveryNumber` cannot stand in an address.
  [[nodiscard]] QUrl getorderpercarton(const QString &deliveryNumber) const;
  /// The whole catalogue.
  [[nodiscard]] QUrl getitems() const;
  /// Where pickings are sent to.
  [[nodiscard]] QUrl sendpick() const;

 private:
  QString m_prefix;
};

/// `text` with the percent escapes that make an address of it: blanks, `"#%<>[\]^` and the grave
/// accent, `{|}` and control characters are escaped, other ASCII characters stand as they are.
/// Nothing if a character is not ASCII.
std::optional<QByteArray> addingPercentEscapes(const QString &text);
