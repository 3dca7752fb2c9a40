#include "network/ProcessFigures.h"

#include <QByteArray>
#include <QDirIterator>
#include <QFile>

QStringList openDescriptors() {
  QDirIterator descriptors(QStringLiteral("/proc/self/fd"),
                           QDir::AllEntries | QDir::System | QDir::NoDotAndDotDot);
  QStringList targets;
  while (descriptors.hasNext()) {
    descriptors.next();
    const QString target = QFile::symLinkTarget(descriptors.filePath());
    if (!target.endsWith(QStringLiteral(".sqlite"))) {
      targets.append(target);
    }
  }
  return targets;
}

qsizetype networkThreads() {
  QDirIterator threads(QStringLiteral("/proc/self/task"), QDir::Dirs | QDir::NoDotAndDotDot);
  qsizetype count = 0;
  while (threads.hasNext()) {
    QFile name(threads.next() + QStringLiteral("/comm"));
    // The thread may have ended in the meantime.
    const bool isThere = name.open(QIODevice::ReadOnly);
    count += isThere && name.readAll().startsWith("QNetworkAccess") ? 1 : 0;
  }
  return count;
}

qint64 peakMemory() {
  constexpr qint64 kKibibyte = 1024;
  QFile status(QStringLiteral("/proc/self/status"));
  if (!status.open(QIODevice::ReadOnly)) {
    qFatal("The memory in use cannot be read.");
  }
  const QByteArray text = status.readAll();
  const QByteArray line = text.sliced(text.indexOf("VmHWM:"));
  return line.first(line.indexOf(" kB")).sliced(6).trimmed().toLongLong() * kKibibyte;
}

void forgetPeakMemory() {
  QFile peak(QStringLiteral("/proc/self/clear_refs"));
  if (!peak.open(QIODevice::WriteOnly) || peak.write("5") != 1) {
    qFatal("The peak of the memory in use cannot be forgotten.");
  }
}
