#include "device/DesktopMailComposer.h"

#include "base/OwnFiles.h"
#include "device/MailMessage.h"
#include "device/MailProgram.h"

#include <QDebug>
#include <QDir>
#include <QTemporaryFile>

namespace {

/// Removes all drafts from the folder `path`; creates it, readable by its owner only, if it is
/// missing. Returns false and logs the reason if it is not a folder that belongs to this user.
bool clearDraftsFolder(const QString &path) {
  const QString objection = claimFolder(path);
  if (!objection.isEmpty()) {
    qWarning("Folder %s not used: %s.", qUtf8Printable(path), qUtf8Printable(objection));
    return false;
  }
  QDir folder(path);
  const QStringList oldDrafts = folder.entryList({QStringLiteral("*.eml")}, QDir::Files);
  for (const QString &name : oldDrafts) {
    folder.remove(name);
  }
  return true;
}

}  // namespace

bool DesktopMailComposer::canSendMail() const {
  return hasMailProgram();
}

bool DesktopMailComposer::compose(const MailDraft &draft) {
  if (!clearDraftsFolder(m_draftsFolder)) {
    return false;
  }
  const QByteArray message = mailMessageOf(draft);
  QTemporaryFile file(m_draftsFolder + QStringLiteral("/Mail-XXXXXX.eml"));
  const bool isHandedOver = file.open() && file.write(message) == message.size() && file.flush() &&
                            openInMailProgram(file.fileName());
  file.setAutoRemove(!isHandedOver);
  return isHandedOver;
}
