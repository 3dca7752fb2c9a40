#pragma once

#include "base/Int32.h"

#include <QString>

#include <cstdint>
#include <utility>

/// A quantity: its numeric value and its text as received from the service.
class Quantity {
 public:
  Quantity() = default;
  Quantity(std::int32_t value) : m_value(value) {}

  /// A quantity received as `text`, for example " 7" or "2.5".
  static Quantity delivered(const QString &text) { return delivered(intValue(text), text); }
  static Quantity delivered(std::int32_t value, const QString &text) {
    return text == QString::number(value) ? Quantity(value) : Quantity(value, text);
  }

  [[nodiscard]] std::int32_t value() const { return m_value; }
  /// The text as received, or the decimal value if the quantity was calculated.
  [[nodiscard]] QString text() const { return m_text.isNull() ? QString::number(m_value) : m_text; }

  bool operator==(const Quantity &other) const {
    return m_value == other.m_value && text() == other.text();
  }

 private:
  Quantity(std::int32_t value, QString text) : m_value(value), m_text(std::move(text)) {}

  std::int32_t m_value = 0;
  /// Null if it equals the decimal value; saves memory in a large delivery.
  QString m_text;
};
