#pragma once

#include <QString>

/// Returns `name` as the name of an attached file that can be saved anywhere. "_" replaces path
/// separators and characters that break a line; "…" replaces the middle of a name beyond 255 bytes
/// of UTF-8, the most that file systems take. Some mail programs cannot open a draft otherwise.
QString attachmentFileName(QString name);

/// Returns a name like `name` for mail programs that read no encoded names: at most 40 printable
/// ASCII characters, none of them a quote or a backslash. "_" replaces all others, and the "?" of
/// what looks like an encoded word (RFC 2047).
QString plainFileName(const QString &name);
