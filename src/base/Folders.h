#pragma once

#include <QString>

/// The application's own folders.
struct Folders {
  /// The application's home folder.
  QString home;

  /// The platform's folder for this user's data of this application.
  static Folders ofThisUser();

  /// Where the store and the exports live.
  [[nodiscard]] QString documents() const { return home + QStringLiteral("/Documents"); }

  /// Makes the folders that are missing, open to their owner alone, as the documents are made if
  /// they were not. False, with a line in the log, if that fails, and if the documents are not this
  /// user's own.
  [[nodiscard]] bool create() const;
};
