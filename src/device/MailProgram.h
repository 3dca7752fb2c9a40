#pragma once

#include <QString>

/// Whether the desktop has a program for mail files (the MIME type message/rfc822).
///
/// On the free desktops it must be registered for just this type, so that a text editor, which
/// opens mail files too, does not count. Elsewhere it shows only when a file is opened whether
/// there is one; the answer is always yes.
bool hasMailProgram();

/// Opens the mail file at `path` in that program, which goes on by itself. False if there is none
/// or if it could not be started.
bool openInMailProgram(const QString &path);
