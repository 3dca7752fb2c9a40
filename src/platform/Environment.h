#pragma once

#include "platform/AlertStack.h"
#include "platform/BusyState.h"
#include "platform/Clock.h"
#include "platform/DisplaySettings.h"
#include "platform/Folders.h"
#include "platform/HttpClient.h"
#include "platform/MailComposer.h"
#include "platform/ScanTrail.h"
#include "platform/SoundPlayer.h"
#include "platform/Storyboard.h"
#include "platform/WakeLock.h"

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
  ScanTrail scans = {};
  Storyboard storyboard = {};
};
