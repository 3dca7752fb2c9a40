#pragma once

#include "device/MailComposer.h"

/// `draft` as the file of a mail that is still to be addressed and sent: a multipart/mixed message
/// (RFC 5322, RFC 2045, RFC 2046) of ASCII lines that end in CR LF, without sender
/// and recipients, marked as unsent for the mail programs that know "X-Unsent". The file
/// name of the attachment is made safe by `attachmentFileName`.
QByteArray mailMessage(const MailDraft &draft);
