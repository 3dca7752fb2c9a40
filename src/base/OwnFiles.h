#pragma once

#include <QByteArray>
#include <QString>

/// What the program keeps is its user's own: ordinary files without a second name, and folders,
/// that nobody else has put there and nobody else can read. These functions return why that is not
/// so of `path`, in words that go on from its name and a verb; no text if it is, or is now.

/// Makes the file at `path`, if there is one, its owner's alone. A file that is missing is no
/// objection, and is not made.
QString claimFile(const QString &path);

/// Puts a file of `content`, its owner's alone, in the place of the one at `path` if that may be
/// claimed: the old one or the new one is there whole, whatever happens meanwhile.
QString replaceFile(const QString &path, const QByteArray &content);

/// Makes the folder at `path`, if it is missing, and makes it its owner's alone.
QString claimFolder(const QString &path);
