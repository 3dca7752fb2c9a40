#pragma once

#include <memory>

class QSoundEffect;

/// Plays short sounds by number.
class SoundPlayer {
 public:
  static constexpr int kErrorTone = 1005;

  virtual ~SoundPlayer() = default;
  /// Starts the sound `identifier` and returns immediately. Ignores an unknown identifier.
  virtual void playSystemSound(int identifier) = 0;
};

/// Plays the program's built-in sounds. Silent without an audio device.
class DeviceSoundPlayer : public SoundPlayer {
 public:
  DeviceSoundPlayer();
  ~DeviceSoundPlayer() override;
  DeviceSoundPlayer(const DeviceSoundPlayer &) = delete;
  DeviceSoundPlayer &operator=(const DeviceSoundPlayer &) = delete;

  void playSystemSound(int identifier) override;

 private:
  std::unique_ptr<QSoundEffect> m_errorTone;
};
