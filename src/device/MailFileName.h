#pragma once

#include <QString>

/// Makes `name` valid as the name of an attached file: replaces path separators and line-breaking
/// characters with "_", and the middle of a name longer than 255 bytes in UTF-8, the limit of file
/// systems, with "…". Some mail programs cannot open a draft otherwise.
QString attachmentFileName(QString name);

/// Simplifies `name` for mail programs that do not support encoded names: shortens it to 40
/// characters and replaces everything but printable ASCII, quotes, backslashes, and the "?" of
/// what looks like an encoded word (RFC 2047) with "_".
QString plainFileName(const QString &name);
