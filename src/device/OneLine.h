#pragma once

#include <QString>

/// Returns `text` with every control character (U+0000 to U+001F, U+007F to U+009F) and line
/// separator (U+2028, U+2029) replaced by `replacement`.
QString inOneLine(QString text, QChar replacement);
