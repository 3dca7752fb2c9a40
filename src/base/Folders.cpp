#include "base/Folders.h"

#include "base/OwnFiles.h"

#include <QDebug>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>

namespace {

bool claim(const QString &folder) {
  const QString objection = claimFolder(folder);
  if (!objection.isEmpty()) {
    qWarning("Folder %s not used: %s.", qUtf8Printable(folder), qUtf8Printable(objection));
  }
  return objection.isEmpty();
}

/// Creates a missing folder, and those on the way to it, for this user only.
bool makeFolder(const QString &folder) {
  return QDir(folder).exists() || (makeFolder(QFileInfo(folder).path()) && claim(folder));
}

/// Creates a missing home folder for this user only. An existing one can be a symbolic link or
/// belong to another user; only the folders in it must belong to this user.
bool makeHome(const QString &home) {
  if (!QDir(home).exists()) {
    return makeFolder(QDir::cleanPath(home));
  }
  if (QFile::permissions(home).testFlag(QFile::WriteOther)) {
    qWarning("The folder %s is writable by every user.", qUtf8Printable(home));
  }
  return true;
}

}  // namespace

Folders Folders::ofThisUser() {
  return {QStandardPaths::writableLocation(QStandardPaths::AppDataLocation)};
}

bool Folders::create() const {
  return makeHome(home) && claim(documents());
}
