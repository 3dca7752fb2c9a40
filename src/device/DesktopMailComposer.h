#pragma once

#include "base/Folders.h"
#include "device/MailComposer.h"

/// Passes an email to the desktop's mail program as a draft file that only its owner can read.
///
/// The file stays under the home folder until the next email is composed, because the mail program
/// does not report when it has read the file.
class DesktopMailComposer : public MailComposer {
 public:
  explicit DesktopMailComposer(const Folders &folders)
      : m_draftsFolder(folders.home + QStringLiteral("/Drafts")) {}

  [[nodiscard]] bool canSendMail() const override;
  bool compose(const MailDraft &draft) override;

 private:
  QString m_draftsFolder;
};
