#pragma once

#include <QString>

/// The actions on a picking. Each title is also the action's identifier.
inline const QString kViewSummary = QStringLiteral("View Summary");
inline const QString kSendEmail = QStringLiteral("Send Email");
inline const QString kCompleteAndSend = QStringLiteral("Complete and Send");
