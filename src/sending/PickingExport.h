#pragma once

#include "base/WeakDelegate.h"
#include "device/MailComposer.h"
#include "store/Picking.h"
#include "view/AlertStack.h"

#include <QTimeZone>

#include <vector>

class ManagedObjectContext;
struct Environment;

/// The export of `rows`: one line a row, ten fields in alphabetical order of their names, separated
/// by semicolons, each line ended by a carriage return. Nothing is quoted; a text that a row lacks
/// is "(null)". Pick times are local times of `zone`, "yyyy-MM-dd HH:mm:ss".
QString exportText(const std::vector<Picking> &rows, const QTimeZone &zone);

/// The mail, written at `date`, that carries the export `text` of the delivery `doc`.
MailDraft exportMail(const QString &doc, const QString &text, const QDateTime &date);

/// Writes what was picked of the delivery `doc` and not sent yet to the file "VardexExport.csv" and
/// opens a mail with it. The store stays as it is.
void exportPicking(Environment &environment, ManagedObjectContext &context, const QString &doc,
                   WeakDelegate<AlertViewDelegate> alertDelegate);
