#pragma once

#include <QString>
#include <QStringList>

/// What the program was started with.
struct CommandLine {
  /// HOST or HOST:PORT of the order service; empty if none was given.
  QString serviceHost;
  /// The home folder; empty for the platform's own.
  QString home;
  /// Whether to run on the demo deliveries.
  bool demo = false;

  /// Reads `arguments`, the program's name first, and the environment variables
  /// CARTONPICK_SERVICE_HOST and CARTONPICK_HOME; an option wins. Ends the process for --help,
  /// --version, and for what it does not understand.
  static CommandLine parse(const QStringList &arguments);
};
