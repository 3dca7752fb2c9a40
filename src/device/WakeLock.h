#pragma once

/// Keeps the device's screen on.
class WakeLock {
 public:
  virtual ~WakeLock() = default;
  virtual void acquire() = 0;
  /// Allows the screen to turn off again. Does nothing if the lock is not held.
  virtual void release() = 0;
};
