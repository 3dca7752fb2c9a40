#include "device/SoundPlayer.h"

#include <QAudioDevice>
#include <QMediaDevices>
#include <QSoundEffect>

DeviceSoundPlayer::DeviceSoundPlayer() = default;
DeviceSoundPlayer::~DeviceSoundPlayer() = default;

void DeviceSoundPlayer::playSystemSound(int identifier) {
  if (identifier != kErrorTone || QMediaDevices::defaultAudioOutput().isNull()) {
    return;
  }
  if (!m_errorTone) {
    // QSoundEffect closes its sink, which discards what is not played yet, when it has read the
    // file. The sound files therefore end with a second of silence.
    m_errorTone = std::make_unique<QSoundEffect>();
    m_errorTone->setSource(QUrl(QStringLiteral("qrc:/sounds/%1.wav").arg(identifier)));
  }
  m_errorTone->play();
}
