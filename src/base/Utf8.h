#pragma once

#include <QByteArray>
#include <QString>

#include <optional>
#include <string_view>

/// Decodes `bytes`, which must be UTF-8. The result is never null and, unlike that of
/// QString::fromUtf8, keeps a leading U+FEFF: a stored code that starts with one would otherwise
/// not be found again.
QString textOfUtf8(std::string_view bytes);

/// Decodes `bytes`. Returns std::nullopt if they are not UTF-8.
std::optional<QString> utf8Text(const QByteArray &bytes);
