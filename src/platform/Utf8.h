#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

/// `bytes` as text; nothing if they are not UTF-8.
std::optional<QString> utf8Text(const QByteArray &bytes);
