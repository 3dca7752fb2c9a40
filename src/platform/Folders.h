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

  /// Makes the folders that are missing, open to their owner alone. False if that fails.
  [[nodiscard]] bool create() const;
};
