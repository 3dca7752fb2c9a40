#include "device/MailMessage.h"

#include "device/MailFileName.h"
#include "device/OneLine.h"

#include <QByteArrayList>

#include <algorithm>
#include <gmime/gmime.h>
#include <memory>

namespace {

struct Release {
  void operator()(gpointer object) const { g_object_unref(object); }
  void operator()(GMimeFormatOptions *options) const { g_mime_format_options_free(options); }
  void operator()(char *text) const { g_free(text); }
};

template <typename Object>
using Owned = std::unique_ptr<Object, Release>;

/// Splits `text` into UTF-8 chunks of at most `maxBytes`, never splitting a character.
QByteArrayList utf8Pieces(const QString &text, qsizetype maxBytes) {
  constexpr qsizetype kMaxCharacterBytes = 4;
  const QByteArray bytes = text.toUtf8();
  QByteArrayList pieces;
  for (const char byte : bytes) {
    const bool beginsCharacter = (static_cast<unsigned char>(byte) & 0xC0U) != 0x80U;
    if (pieces.isEmpty() ||
        (beginsCharacter && pieces.back().size() > maxBytes - kMaxCharacterBytes)) {
      pieces.emplace_back();
    }
    pieces.back() += byte;
  }
  return pieces;
}

bool isPlain(const QString &text) {
  constexpr qsizetype kMaxLength = 60;
  return text.size() <= kMaxLength &&
         std::all_of(text.begin(), text.end(), [](QChar c) { return c >= u' ' && c <= u'~'; }) &&
         !text.contains(QLatin1String("=?")) && text == text.simplified();
}

/// Returns `text` unchanged if it is plain, otherwise as encoded words (RFC 2047).
///
/// GMime encodes only non-ASCII characters: mail programs would decode ASCII text that looks like
/// an encoded word, and drop spaces at its ends. Its words can be longer than RFC 2047 allows.
QByteArray subjectValue(const QString &text) {
  constexpr qsizetype kWordBytes = 39;
  if (isPlain(text)) {
    return text.toLatin1();
  }
  QByteArrayList words;
  for (const QByteArray &piece : utf8Pieces(text, kWordBytes)) {
    words.append("=?UTF-8?B?" + piece.toBase64() + "?=");
  }
  return words.join(' ');
}

/// Returns the Content-Disposition value for an attached file named `fileName` (RFC 2231).
///
/// GMime can split a long name inside a character, which mail programs that decode each piece
/// separately cannot read.
QByteArray attachmentDisposition(const QString &fileName) {
  constexpr qsizetype kPieceBytes = 18;
  QByteArray value = " attachment";
  int number = 0;
  for (const QByteArray &piece : utf8Pieces(fileName, kPieceBytes)) {
    value += ";\n filename*" + QByteArray::number(number) + (number == 0 ? "*=UTF-8''" : "*=") +
             piece.toPercentEncoding();
    ++number;
  }
  return value + '\n';
}

/// Returns a part of the content type `type` with `content` encoded as base64.
Owned<GMimePart> partOf(const QByteArray &type, const QByteArray &content) {
  const Owned<GMimeContentType> contentType(g_mime_content_type_parse(nullptr, type.constData()));
  const Owned<GMimeStream> stream(
      g_mime_stream_mem_new_with_buffer(content.constData(), content.size()));
  const Owned<GMimeDataWrapper> wrapper(
      g_mime_data_wrapper_new_with_stream(stream.get(), GMIME_CONTENT_ENCODING_DEFAULT));
  Owned<GMimePart> part(g_mime_part_new());
  g_mime_object_set_content_type(GMIME_OBJECT(part.get()), contentType.get());
  g_mime_part_set_content(part.get(), wrapper.get());
  g_mime_part_set_content_encoding(part.get(), GMIME_CONTENT_ENCODING_BASE64);
  return part;
}

Owned<GMimePart> attachmentPart(const MailDraft &draft) {
  const QString fileName = attachmentFileName(draft.attachmentFileName);
  Owned<GMimePart> part = partOf(draft.attachmentMimeType.toLatin1(), draft.attachment);
  GMimeObject *object = GMIME_OBJECT(part.get());
  // Mail programs that cannot read the encoded name use this one. It must be short, because GMime
  // folds some lines only after 80 characters.
  g_mime_object_set_content_type_parameter(object, "name",
                                           plainFileName(fileName).toLatin1().constData());
  g_mime_object_set_disposition(object, GMIME_DISPOSITION_ATTACHMENT);
  GMimeHeader *disposition =
      g_mime_header_list_get_header(g_mime_object_get_header_list(object), "Content-Disposition");
  g_mime_header_set_raw_value(disposition, attachmentDisposition(fileName).constData());
  return part;
}

QByteArray textOf(GMimeMessage *message) {
  const Owned<GMimeFormatOptions> options(g_mime_format_options_new());
  g_mime_format_options_set_newline_format(options.get(), GMIME_NEWLINE_FORMAT_DOS);
  const Owned<char> text(g_mime_object_to_string(GMIME_OBJECT(message), options.get()));
  return text.get();
}

}  // namespace

QByteArray mailMessageOf(const MailDraft &draft) {
  // Only the first call has an effect. After g_mime_shutdown() GMime could not be used again.
  g_mime_init();
  const Owned<GMimeMultipart> parts(g_mime_multipart_new_with_subtype("mixed"));
  const Owned<GMimePart> body = partOf("text/html; charset=UTF-8", draft.htmlBody.toUtf8());
  const Owned<GMimePart> attachment = attachmentPart(draft);
  g_mime_multipart_add(parts.get(), GMIME_OBJECT(body.get()));
  g_mime_multipart_add(parts.get(), GMIME_OBJECT(attachment.get()));

  const Owned<GMimeMessage> message(g_mime_message_new(FALSE));
  const auto setField = [&message](const char *name, const QByteArray &value) {
    g_mime_object_set_header(GMIME_OBJECT(message.get()), name, value.constData(), nullptr);
  };
  setField("X-Unsent", "1");
  setField("Date", draft.date.toString(Qt::RFC2822Date).toLatin1());
  setField("Subject", subjectValue(inOneLine(draft.subject, u' ')));
  g_mime_message_set_mime_part(message.get(), GMIME_OBJECT(parts.get()));
  return textOf(message.get());
}
