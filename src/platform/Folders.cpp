#include "platform/Folders.h"

#include <QDir>
#include <QFile>
#include <QStandardPaths>

Folders Folders::ofThisUser() {
  return {QStandardPaths::writableLocation(QStandardPaths::AppDataLocation)};
}

bool Folders::create() const {
  constexpr QFile::Permissions kOwnerOnly = QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner;
  const QDir folder(documents());
  if (folder.exists()) {
    return true;
  }
  return QDir().mkpath(documents()) && QFile::setPermissions(home, kOwnerOnly) &&
         QFile::setPermissions(documents(), kOwnerOnly);
}
