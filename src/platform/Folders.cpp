#include "platform/Folders.h"

#include <QDir>
#include <QFile>
#include <QStandardPaths>

namespace {

bool setForOwnerOnly(const QString &folder) {
  return QFile::setPermissions(folder, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
}

}  // namespace

Folders Folders::ofThisUser() {
  return {QStandardPaths::writableLocation(QStandardPaths::AppDataLocation)};
}

bool Folders::create() const {
  // A home that is there already may be anybody's; what is below it is ours.
  const bool isHomeThere = QDir(home).exists() || (QDir().mkpath(home) && setForOwnerOnly(home));
  return isHomeThere && QDir().mkpath(documents()) && setForOwnerOnly(documents());
}
