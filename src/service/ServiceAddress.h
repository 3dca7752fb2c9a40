#pragma once

#include <QByteArray>
#include <QString>
#include <QUrl>

#include <optional>

/// The URLs of the order service on one host.
class ServiceAddress {
 public:
  /// `host` is HOST or HOST:PORT, with IPv6 addresses in brackets.
  explicit ServiceAddress(const QString &host);

  /// Returns why `host` cannot be used, or std::nullopt if it can.
  static std::optional<QString> objectionTo(const QString &host);

  /// The URL for a delivery's order lines. Empty if `deliveryNumber` is not ASCII or contains a
  /// path segment "." or "..".
  [[nodiscard]] QUrl getorderpercarton(const QString &deliveryNumber) const;
  /// The URL for the whole catalogue.
  [[nodiscard]] QUrl getitems() const;
  /// The URL for sending pickings.
  [[nodiscard]] QUrl sendpick() const;

 private:
  [[nodiscard]] QUrl urlOf(const QString &operation) const;

  QString m_host;
};

/// Percent-encodes spaces, control characters, `"#%<>[\]^{|}` and the grave accent in `text`; other
/// ASCII characters stay unchanged. Returns std::nullopt if a character is not ASCII.
std::optional<QByteArray> addingPercentEscapes(const QString &text);
