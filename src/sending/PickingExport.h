#pragma once

#include "base/WeakDelegate.h"
#include "device/MailComposer.h"
#include "store/Picking.h"
#include "view/AlertStack.h"

#include <QTimeZone>

#include <vector>

class ManagedObjectContext;
struct Environment;

/// Returns the export of `rows`: one line per row, terminated by a carriage return, with ten fields
/// in alphabetical order of their names, separated by semicolons. Nothing is quoted; a missing
/// value is written as "(null)". Pick times are local times in `zone`, "yyyy-MM-dd HH:mm:ss".
QString exportText(const std::vector<Picking> &rows, const QTimeZone &zone);

/// Returns an email dated `date` with the export `text` of the delivery `doc` as its attachment.
MailDraft exportMail(const QString &doc, const QString &text, const QDateTime &date);

/// Exports the unsent picks of the delivery `doc` to the file "VardexExport.csv" and opens an email
/// with the export. Does not change the store. If there are no such picks or the store cannot be
/// read, shows an alert with `alertDelegate`; other failures are logged.
void exportPicking(Environment &environment, ManagedObjectContext &context, const QString &doc,
                   WeakDelegate<AlertViewDelegate> alertDelegate);
