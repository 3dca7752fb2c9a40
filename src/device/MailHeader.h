#pragma once

#include <QByteArray>
#include <QString>

/// Whether `c` has no place within a line: a control character or a separator of lines.
bool breaksLine(QChar c);

/// `text` as the value of an unstructured header field: short plain ASCII as it is, anything else
/// as encoded words (RFC 2047), folded so that no line gets longer than 76 characters after a field
/// name of up to ten. Characters that break the line become blanks, so no text can begin another
/// field.
QByteArray encodedHeaderText(const QString &text);

/// The parameter `name` of a header field with the value `value`, as RFC 2231 has it: percent
/// encoded, in numbered pieces, each on a line of its own, with the separator before it.
QByteArray encodedHeaderParameter(const QByteArray &name, const QString &value);

/// The parameter `name` of a header field with a stand-in for `value` that every mail program
/// reads: plain ASCII, at most 60 characters, on a line of its own, with the separator before it.
QByteArray plainHeaderParameter(const QByteArray &name, const QString &value);
