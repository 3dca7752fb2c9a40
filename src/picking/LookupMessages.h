#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

struct Delivery;

/// What a picker is told of a lookup that finds no delivery to pick.
struct LookupMessage {
  QString title;
  QString message;
};

/// @returns why `number`, as typed, is not looked up, or nothing if it is
std::optional<LookupMessage> objectionToNumber(const QString &number);

/// @param answer  what was read from `body`; nothing if it could not be read
/// @returns why the answer is not imported, or nothing if it is
std::optional<LookupMessage> objectionToAnswer(const QByteArray &body,
                                               const std::optional<Delivery> &answer);
