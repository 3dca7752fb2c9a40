#pragma once

/// Keeps the device's screen on.
class WakeLock {
 public:
  virtual ~WakeLock() = default;
  /// From now on the screen stays on.
  virtual void acquire() = 0;
  /// From now on the screen may go dark.
  virtual void release() = 0;
};
