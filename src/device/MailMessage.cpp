#include "device/MailMessage.h"

#include "device/MailFileName.h"
#include "device/MailHeader.h"

namespace {

// Base64 has no "_": the line that separates the parts cannot occur within one.
constexpr auto kBoundary = "=_CartonPick_part";

QByteArray field(const QByteArray &name, const QByteArray &value) {
  return name + ": " + value + "\r\n";
}

QByteArray base64Lines(const QByteArray &content) {
  constexpr qsizetype kLineLength = 76;
  const QByteArray encoded = content.toBase64();
  QByteArray lines;
  for (qsizetype start = 0; start < encoded.size(); start += kLineLength) {
    lines += encoded.mid(start, kLineLength) + "\r\n";
  }
  return lines;
}

QByteArray part(const QByteArray &fields, const QByteArray &content) {
  return QByteArray("--") + kBoundary + "\r\n" + fields +
         field("Content-Transfer-Encoding", "base64") + "\r\n" + base64Lines(content);
}

QByteArray bodyPart(const MailDraft &draft) {
  return part(field("Content-Type", "text/html; charset=UTF-8"), draft.htmlBody.toUtf8());
}

QByteArray attachmentPart(const MailDraft &draft) {
  const QString fileName = attachmentFileName(draft.attachmentFileName);
  // Mail programs that cannot read the encoded name take the one of the content type.
  return part(
      field("Content-Type",
            draft.attachmentMimeType.toLatin1() + plainHeaderParameter("name", fileName)) +
          field("Content-Disposition", "attachment" + encodedHeaderParameter("filename", fileName)),
      draft.attachment);
}

}  // namespace

QByteArray mailMessage(const MailDraft &draft) {
  return field("X-Unsent", "1") + field("Date", draft.date.toString(Qt::RFC2822Date).toLatin1()) +
         field("Subject", encodedHeaderText(draft.subject)) + field("MIME-Version", "1.0") +
         field("Content-Type", QByteArray("multipart/mixed;\r\n boundary=\"") + kBoundary + '"') +
         "\r\n" + bodyPart(draft) + attachmentPart(draft) + "--" + kBoundary + "--\r\n";
}
