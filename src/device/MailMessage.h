#pragma once

#include "device/MailComposer.h"

/// Returns the content of an email file for `draft`, without sender and recipients.
///
/// The file is a multipart/mixed message (RFC 5322, RFC 2045, RFC 2046) in ASCII, with lines of at
/// most 78 characters ending in CR LF. The field "X-Unsent" marks it as a draft. Line-breaking
/// characters in the subject become spaces, and the attachment's name is that of
/// `attachmentFileName`. The body and the attachment are encoded as base64, which preserves all
/// their bytes.
QByteArray mailMessageOf(const MailDraft &draft);
