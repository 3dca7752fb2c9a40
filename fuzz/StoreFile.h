#pragma once

#include <QByteArray>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>

/// A store file in a temporary folder that contains nothing else.
class StoreFile {
 public:
  [[nodiscard]] QString path() const {
    return m_folder.filePath(QStringLiteral("QIR_Pick.sqlite"));
  }

  void removeAll() const {
    const QDir folder(m_folder.path());
    for (const QString &name : folder.entryList(QDir::Files)) {
      QFile::remove(folder.filePath(name));
    }
  }

  void write(const QByteArray &bytes) const {
    QFile file(path());
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size()) {
      qFatal("The temporary file %s cannot be written.", qUtf8Printable(path()));
    }
  }

 private:
  QTemporaryDir m_folder;
};
