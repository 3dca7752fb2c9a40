#pragma once

#include "base/Folders.h"
#include "delivery/PickingRules.h"

#include <QString>
#include <QStringList>

/// The program's options, from the command line and the environment.
struct CommandLine {
  /// HOST or HOST:PORT of the order service (IPv6 addresses in brackets); empty if none is given.
  QString serviceHost;
  /// The home folder; empty for the platform's default.
  QString home;
  PickingRules rules;
  /// Use the demo deliveries.
  bool demo = false;
  /// Show a frameless full-screen window.
  bool fullScreen = false;
  bool onScreenKeyboard = false;

  /// Returns the same options with the demo turned on and a separate home folder, which keeps demo
  /// pickings apart from real ones.
  [[nodiscard]] CommandLine withDemo() const;
  /// The folders for these options.
  [[nodiscard]] Folders folders() const;

  /// Parses `arguments`, which start with the program's name, and the environment variables
  /// CARTONPICK_SERVICE_HOST, CARTONPICK_HOME and CARTONPICK_RULES; an option overrides its
  /// variable. Ends the process after --help and --version and, with one line of the reason, on
  /// invalid arguments.
  static CommandLine parse(const QStringList &arguments);
};
