#pragma once

#include <QByteArray>
#include <QString>

#include <optional>
#include <string_view>

/// Decodes `bytes`, which must be UTF-8. The result is never null, and unlike the result of
/// QString::fromUtf8 it keeps a U+FEFF at the beginning: a stored code with one would otherwise not
/// be found again.
QString textOfUtf8(std::string_view bytes);

/// Decodes `bytes`. Returns std::nullopt if they are not UTF-8.
std::optional<QString> utf8Text(const QByteArray &bytes);
