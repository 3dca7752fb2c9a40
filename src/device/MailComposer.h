#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QString>

/// A mail for the user to address and send.
struct MailDraft {
  QString subject;
  QString htmlBody;
  QByteArray attachment;
  QString attachmentMimeType;
  QString attachmentFileName;
  /// When the mail was written, in the zone of its writer.
  QDateTime date = {};
};

/// Hands mails over to the platform.
class MailComposer {
 public:
  virtual ~MailComposer() = default;
  [[nodiscard]] virtual bool canSendMail() const = 0;
  /// Opens `draft` for the user. False if the platform did not take it.
  virtual bool compose(const MailDraft &draft) = 0;
};
