#pragma once

#include <QByteArray>
#include <QString>

#include <optional>
#include <string_view>

/// All of `bytes`, which are UTF-8, as text, which is never null. To QString::fromUtf8 a U+FEFF at
/// the beginning is no part of the text: a code that has one would not be found again.
QString textOfUtf8(std::string_view bytes);

/// `bytes` as text; nothing if they are not UTF-8.
std::optional<QString> utf8Text(const QByteArray &bytes);
