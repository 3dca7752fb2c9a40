#pragma once

#include "platform/Int32.h"

#include <QString>

#include <cstdint>
#include <utility>

/// A quantity: the number that it counts as and the form in which it was delivered, which is the
/// form in which it is shown where no number format is asked for.
class Quantity {
 public:
  Quantity() = default;
  Quantity(std::int32_t value) : m_value(value), m_text(QString::number(value)) {}

  /// As delivered, for example " 7" or "2.5".
  static Quantity delivered(const QString &text) { return {intValue(text), text}; }
  static Quantity delivered(std::int32_t value, const QString &text) { return {value, text}; }

  [[nodiscard]] std::int32_t value() const { return m_value; }
  [[nodiscard]] QString text() const { return m_text; }

  bool operator==(const Quantity &) const = default;

 private:
  Quantity(std::int32_t value, QString text) : m_value(value), m_text(std::move(text)) {}

  std::int32_t m_value = 0;
  QString m_text = QStringLiteral("0");
};
