#pragma once

#include "base/Clock.h"
#include "base/Folders.h"
#include "device/DisplaySettings.h"
#include "device/HttpClient.h"
#include "device/MailComposer.h"
#include "device/SoundPlayer.h"
#include "device/WakeLock.h"
#include "view/AlertStack.h"
#include "view/BusyState.h"
#include "view/Storyboard.h"

#include <memory>

/// What the outside world does for the program. Built once, in `main`, and handed down; a test
/// builds one of its own.
struct Environment {
  std::unique_ptr<Clock> clock;
  std::unique_ptr<HttpClient> http;
  std::unique_ptr<SoundPlayer> sounds;
  std::unique_ptr<MailComposer> mail;
  std::unique_ptr<WakeLock> wakeLock;
  std::unique_ptr<DisplaySettings> display;
  Folders folders;
  /// HOST or HOST:PORT of the picking web service; empty if none is configured.
  QString serviceHost;
  AlertStack alerts = {};
  BusyState busy = {};
  Storyboard storyboard = {};
};
