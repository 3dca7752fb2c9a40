#pragma once

#include "base/Folders.h"

#include <QString>
#include <QStringList>

/// The options of the program.
struct CommandLine {
  /// HOST or HOST:PORT of the order service, an IPv6 address in brackets; empty if none is given.
  QString serviceHost;
  /// The home folder; empty for the platform's default.
  QString home;
  /// Use the demo deliveries.
  bool demo = false;
  /// Fill the screen with a window without a frame.
  bool fullScreen = false;
  bool onScreenKeyboard = false;

  /// Returns the same options with the demo turned on and a separate home folder, which keeps demo
  /// pickings apart from real ones.
  [[nodiscard]] CommandLine withDemo() const;
  /// The folders for these options.
  [[nodiscard]] Folders folders() const;

  /// Parses `arguments`, which start with the program's name, and the environment variables
  /// CARTONPICK_SERVICE_HOST and CARTONPICK_HOME; an option overrides its variable. Ends the
  /// process after --help and --version and, with one line of the reason, on invalid arguments.
  static CommandLine parse(const QStringList &arguments);
};
