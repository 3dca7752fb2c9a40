#pragma once

#include <QString>

/// What the program keeps is its user's own: ordinary files without a second name, and folders,
/// that nobody else has put there and nobody else can read. Both functions return why `path` is
/// none of those, in words that go on from its name; no text if it is, or is now.

/// Makes the file at `path`, if there is one, its owner's alone. A file that is missing is no
/// objection, and is not made.
QString claimFile(const QString &path);

/// Makes the folder at `path`, if it is missing, and makes it its owner's alone.
QString claimFolder(const QString &path);
