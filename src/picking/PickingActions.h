#pragma once

#include <QString>

/// The actions on a picking: the titles in the action list, by which they are told apart too.
inline const QString kViewSummary = QStringLiteral("View Summary");
inline const QString kSendEmail = QStringLiteral("Send Email");
inline const QString kCompleteAndSend = QStringLiteral("Complete and Send");
