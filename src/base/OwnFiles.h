#pragma once

#include <QByteArray>
#include <QString>

// The program uses only files and folders that belong to its user and that no other user can read.
// A file must be a regular file without a second hard link; symbolic links are rejected. Each
// function below returns an empty string on success; otherwise it returns the reason why it rejects
// `path`, as a clause such as "it belongs to another user".

/// Checks the file at `path` and sets its mode to 0600. Succeeds if there is no file, and does not
/// create one.
QString claimFile(const QString &path);

/// Claims the file at `path` and atomically replaces it with one that has `content` and mode 0600.
/// After a failure or crash, either the complete old file or the complete new one exists.
QString replaceFile(const QString &path, const QByteArray &content);

/// Creates the folder at `path` if it is missing, checks it and sets its mode to 0700.
QString claimFolder(const QString &path);
