#pragma once

#include <QString>

/// The folders that the application uses.
struct Folders {
  QString home;

  /// The folders in the platform's data folder for this user and application, the default home.
  static Folders ofThisUser();

  /// The folder of the store and the exports.
  [[nodiscard]] QString documents() const { return home + QStringLiteral("/Documents"); }

  /// Creates the home and documents folders and those on the way to them, if missing, with mode
  /// 0700, and restricts an existing documents folder to that mode. Returns false and logs the
  /// reason if a folder cannot be created, or if the documents folder is a symbolic link or belongs
  /// to another user.
  [[nodiscard]] bool create() const;
};
