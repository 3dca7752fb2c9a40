#pragma once

#include <QString>

/// Returns true if the desktop has a program for mail files (the MIME type message/rfc822).
///
/// On Linux and BSD desktops the program must be registered for exactly this type, which excludes
/// text editors. Other platforms offer no such query; there the result is always true.
bool hasMailProgram();

/// Opens the mail file at `path` in the mail program and does not wait for it to end. Returns false
/// if there is no such program or it cannot be started.
bool openInMailProgram(const QString &path);
