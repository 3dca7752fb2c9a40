#include "platform/Folders.h"

#include <QDir>
#include <QFile>
#include <QStandardPaths>

namespace {

bool makeForOwnerOnly(const QString &folder) {
  return QDir(folder).exists() ||
         (QDir().mkpath(folder) &&
          QFile::setPermissions(folder, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
}

}  // namespace

Folders Folders::ofThisUser() {
  return {QStandardPaths::writableLocation(QStandardPaths::AppDataLocation)};
}

bool Folders::create() const {
  return makeForOwnerOnly(home) && makeForOwnerOnly(documents());
}
