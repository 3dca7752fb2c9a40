#pragma once

#include <QByteArray>
#include <QString>
#include <QUrl>

#include <optional>

/// The URLs of the order service on one host.
class ServiceAddress {
 public:
  /// `host` is HOST or HOST:PORT.
  explicit ServiceAddress(const QString &host);

  /// The URL for the order lines of one delivery. Empty if `deliveryNumber` is not ASCII or
  /// contains a path segment "." or "..".
  [[nodiscard]] QUrl getorderpercarton(const QString &deliveryNumber) const;
  /// The URL for the whole catalogue.
  [[nodiscard]] QUrl getitems() const;
  /// The URL for sending pickings.
  [[nodiscard]] QUrl sendpick() const;

 private:
  QString m_prefix;
};

/// Percent-encodes spaces, control characters, `"#%<>[\]^{|}` and the grave accent in `text`; other
/// ASCII characters stay unchanged. Returns std::nullopt if a character is not ASCII.
std::optional<QByteArray> addingPercentEscapes(const QString &text);
