#include "platform/DesktopMailComposer.h"

#include "platform/MailMessage.h"
#include "platform/MailProgram.h"

#include <QDir>
#include <QTemporaryFile>

namespace {

/// Leaves `path` an empty folder, open to its owner alone.
void clearDraftsFolder(const QString &path) {
  QDir().mkdir(path, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
  QDir folder(path);
  const QStringList oldDrafts = folder.entryList({QStringLiteral("*.eml")}, QDir::Files);
  for (const QString &name : oldDrafts) {
    folder.remove(name);
  }
}

}  // namespace

bool DesktopMailComposer::canSendMail() const {
  return hasMailProgram();
}

bool DesktopMailComposer::compose(const MailDraft &draft) {
  clearDraftsFolder(m_draftsFolder);
  const QByteArray message = mailMessage(draft);
  QTemporaryFile file(m_draftsFolder + QStringLiteral("/Mail-XXXXXX.eml"));
  const bool isHandedOver = file.open() && file.write(message) == message.size() && file.flush() &&
                            openInMailProgram(file.fileName());
  file.setAutoRemove(!isHandedOver);
  return isHandedOver;
}
