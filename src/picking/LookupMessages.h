#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

struct Delivery;

/// The alert for a lookup that finds no delivery to pick.
struct LookupMessage {
  QString title;
  QString message;
};

/// Returns the reason why the typed `number` cannot be looked up; std::nullopt if it can.
std::optional<LookupMessage> objectionToNumber(const QString &number);

/// Returns the reason why an answer cannot be imported; std::nullopt if it can.
///
/// @param body    the answer's body
/// @param answer  the delivery parsed from `body`; std::nullopt if that failed
std::optional<LookupMessage> objectionToAnswer(const QByteArray &body,
                                               const std::optional<Delivery> &answer);
