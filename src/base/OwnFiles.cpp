#include "base/OwnFiles.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

#include <filesystem>
#include <system_error>
#ifdef Q_OS_UNIX
#include <unistd.h>
#endif

namespace {

constexpr QFile::Permissions kFile = QFile::ReadOwner | QFile::WriteOwner;
constexpr QFile::Permissions kFolder = kFile | QFile::ExeOwner;
constexpr QFile::Permissions kAll = kFolder | QFile::ReadGroup | QFile::WriteGroup |
                                    QFile::ExeGroup | QFile::ReadOther | QFile::WriteOther |
                                    QFile::ExeOther;

bool isThisUsers(const QFileInfo &file) {
#ifdef Q_OS_UNIX
  return file.ownerId() == ::geteuid();
#else
  return true;
#endif
}

bool hasSecondName(const QString &path) {
  std::error_code failure;
  const auto names = std::filesystem::hard_link_count(path.toStdU16String(), failure);
  return !failure && names > 1;
}

bool setFor(const QString &path, QFile::Permissions owner) {
  return (QFile::permissions(path) & kAll) == owner || QFile::setPermissions(path, owner);
}

}  // namespace

QString claimFile(const QString &path) {
  const QFileInfo file(path);
  if (file.isSymLink()) {
    return QStringLiteral("it is a symbolic link");
  }
  if (!file.exists()) {
    return {};
  }
  if (!file.isFile()) {
    return QStringLiteral("it is not a regular file");
  }
  if (!isThisUsers(file)) {
    return QStringLiteral("it belongs to another user");
  }
  if (hasSecondName(path)) {
    return QStringLiteral("it has more than one hard link");
  }
  // A failure is ignored: some file systems do not support permissions.
  setFor(path, kFile);
  return {};
}

QString replaceFile(const QString &path, const QByteArray &content) {
  if (QString objection = claimFile(path); !objection.isEmpty()) {
    return objection;
  }
  QSaveFile file(path);
  if (!file.open(QIODevice::WriteOnly)) {
    return file.errorString();
  }
  file.setPermissions(kFile);
  // commit() does not detect a full disk while it writes buffered data, so flush first.
  const bool isWhole = file.write(content) == content.size() && file.flush();
  return isWhole && file.commit() ? QString()
                                  : QStringLiteral("it could not be written to the disk");
}

QString claimFolder(const QString &path) {
  QDir().mkdir(path, kFolder);
  const QFileInfo folder(path);
  if (folder.isSymLink()) {
    return QStringLiteral("it is a symbolic link");
  }
  if (!folder.isDir()) {
    return folder.exists() ? QStringLiteral("it is not a folder")
                           : QStringLiteral("it cannot be created");
  }
  if (!isThisUsers(folder)) {
    return QStringLiteral("it belongs to another user");
  }
  return setFor(path, kFolder) ? QString() : QStringLiteral("its permissions cannot be restricted");
}
