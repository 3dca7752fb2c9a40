#pragma once

#include "base/Folders.h"
#include "device/MailComposer.h"

/// Hands a mail to the desktop's mail program, as a draft file that is its owner's alone.
///
/// The file stays below the home folder, since nothing tells when the mail program has read it; the
/// next mail removes it.
class DesktopMailComposer : public MailComposer {
 public:
  explicit DesktopMailComposer(const Folders &folders)
      : m_draftsFolder(folders.home + QStringLiteral("/Drafts")) {}

  [[nodiscard]] bool canSendMail() const override;
  bool compose(const MailDraft &draft) override;

 private:
  QString m_draftsFolder;
};
