#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QString>

/// An email draft; the user adds the recipients and sends it.
struct MailDraft {
  QString subject;
  QString htmlBody;
  QByteArray attachment;
  QString attachmentMimeType;
  QString attachmentFileName;
  /// The time of writing, in the writer's time zone.
  QDateTime date = {};
};

/// Opens email drafts in the platform's mail program.
class MailComposer {
 public:
  virtual ~MailComposer() = default;
  [[nodiscard]] virtual bool canSendMail() const = 0;
  /// Opens `draft` for the user. Returns false if the platform cannot open it.
  virtual bool compose(const MailDraft &draft) = 0;
};
