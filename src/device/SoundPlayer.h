#pragma once

#include <QObject>

#include <memory>

class QSoundEffect;

/// Plays the system's short sounds.
class SoundPlayer {
 public:
  /// The sound of an error.
  static constexpr int kErrorTone = 1005;

  virtual ~SoundPlayer() = default;
  /// Starts the sound `identifier` and returns at once.
  virtual void playSystemSound(int identifier) = 0;
};

/// Plays the sounds that come with the program; silent where there is no audio device.
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
