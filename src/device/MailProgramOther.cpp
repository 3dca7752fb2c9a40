#include "device/MailProgram.h"

#include <QDesktopServices>
#include <QUrl>

bool hasMailProgram() {
  return true;
}

bool openInMailProgram(const QString &path) {
  return QDesktopServices::openUrl(QUrl::fromLocalFile(path));
}
