#pragma once

#include <QString>

/// `name` as the name of an attached file that can be saved anywhere: "_" stands for path
/// separators and for characters that break a line, and a name beyond 255 bytes of UTF-8, the most
/// that file systems take, has "…" for its middle. Some mail programs cannot open a draft
/// otherwise.
QString attachmentFileName(QString name);
