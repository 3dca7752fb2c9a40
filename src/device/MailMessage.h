#pragma once

#include "device/MailComposer.h"

/// Returns `draft` as the file of a mail that is still to be addressed and sent.
///
/// The file is a multipart/mixed message (RFC 5322, RFC 2045, RFC 2046) of ASCII lines of at most
/// 78 characters that end in CR LF. It has no sender and no recipients and is marked as unsent for
/// the mail programs that know "X-Unsent". Characters that break a line are blanks in the subject;
/// `attachmentFileName` makes the name of the attachment safe. Body and attachment are in base64,
/// so that all their bytes arrive.
QByteArray mailMessageOf(const MailDraft &draft);
