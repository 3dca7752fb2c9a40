#pragma once

#include <QString>

/// Returns `text` with `replacement` for every character that has no place within a line: control
/// characters (U+0000 to U+001F, U+007F to U+009F), U+2028 and U+2029.
QString inOneLine(QString text, QChar replacement);
