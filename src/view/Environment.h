#pragma once

#include "base/Clock.h"
#include "base/Folders.h"
#include "delivery/PickingRules.h"
#include "device/DisplaySettings.h"
#include "device/HttpClient.h"
#include "device/MailComposer.h"
#include "device/SoundPlayer.h"
#include "device/WakeLock.h"
#include "view/AlertStack.h"
#include "view/BusyState.h"
#include "view/Storyboard.h"

#include <memory>

/// The services of the device and the state shared by all screens. `main` builds it once and passes
/// it down; tests build it with test doubles.
struct Environment {
  std::unique_ptr<Clock> clock;
  std::unique_ptr<HttpClient> http;
  std::unique_ptr<SoundPlayer> sounds;
  std::unique_ptr<MailComposer> mail;
  std::unique_ptr<WakeLock> wakeLock;
  std::unique_ptr<DisplaySettings> display;
  Folders folders;
  /// HOST or HOST:PORT of the order service; empty if none is configured.
  QString serviceHost;
  /// The set of rules that the warehouse has chosen.
  PickingRules rules = {};
  AlertStack alerts = {};
  BusyState busy = {};
  Storyboard storyboard = {};
};
