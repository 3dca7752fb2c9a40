#pragma once

#include "base/Folders.h"

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
  /// Whether the window fills the screen and has no frame.
  bool fullScreen = false;
  /// Whether to bring a keyboard onto the screen.
  bool onScreenKeyboard = false;

  /// The same, on the demo deliveries and with a home of their own: demo pickings have no business
  /// among the real ones.
  [[nodiscard]] CommandLine withDemo() const;
  /// The folders to work in.
  [[nodiscard]] Folders folders() const;

  /// Reads `arguments`, the program's name first, and the environment variables
  /// CARTONPICK_SERVICE_HOST and CARTONPICK_HOME; an option wins. Ends the process for --help,
  /// --version, and for what it does not understand.
  static CommandLine parse(const QStringList &arguments);
};
