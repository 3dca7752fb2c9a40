#include "device/SoundPlayer.h"

#include "support/SessionBus.h"
#include "support/TestClass.h"

#include <QAudioDevice>
#include <QFile>
#include <QMediaDevices>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

#include <fcntl.h>

namespace {

const QByteArray kSinkName = "tablet";

/// A PipeWire server whose one device writes the samples that it plays to a pipe. %1 is the folder
/// of its sockets and the pipe. The format is that of the sounds, so samples are not converted.
const QString kServer = QStringLiteral(R"(
context.properties = {
  core.daemon = true
  core.name = pipewire-0
  default.clock.rate = 22050
  default.clock.allowed-rates = [ 22050 ]
}
context.spa-libs = {
  audio.convert.* = audioconvert/libspa-audioconvert
  support.* = support/libspa-support
}
context.modules = [
  { name = libpipewire-module-protocol-native }
  { name = libpipewire-module-metadata }
  { name = libpipewire-module-spa-node-factory }
  { name = libpipewire-module-client-node }
  { name = libpipewire-module-client-device }
  { name = libpipewire-module-access }
  { name = libpipewire-module-adapter }
  { name = libpipewire-module-link-factory }
  { name = libpipewire-module-session-manager }
  { name = libpipewire-module-protocol-pulse
    args = { server.address = [ "unix:%1/pulse-server" ] } }
  { name = libpipewire-module-pipe-tunnel
    args = {
      tunnel.mode = sink
      pipe.filename = "%1/samples"
      audio.format = S16LE
      audio.rate = 22050
      audio.channels = 1
      audio.position = [ MONO ]
      stream.props = { node.name = tablet }
    } }
]
context.objects = [
  { factory = metadata args = { metadata.name = default } }
  { factory = spa-node-factory
    args = {
      factory.name = support.node.driver
      node.name = Dummy-Driver
      node.group = pipewire.dummy
      priority.driver = 20000
    } }
]
)");

/// A sound server for this process.
class SoundServer {
 public:
  SoundServer() {
    QFile configuration(m_folder.filePath(QStringLiteral("server.conf")));
    if (!configuration.open(QIODevice::WriteOnly)) {
      qFatal("The configuration of the sound server cannot be written.");
    }
    configuration.write(kServer.arg(m_folder.path()).toUtf8());
    configuration.close();
    qputenv("XDG_RUNTIME_DIR", m_folder.path().toUtf8());
    qputenv("PULSE_SERVER", "unix:" + m_folder.path().toUtf8() + "/pulse-server");
    qputenv("DBUS_SESSION_BUS_ADDRESS", m_bus.address().toUtf8());
    start(m_server, QStringLiteral("pipewire"), {QStringLiteral("-c"), configuration.fileName()});
    if (!QTest::qWaitFor([this] { return exists("pulse-server") && exists("samples"); })) {
      qFatal("The sound server does not start: %s", m_server.readAllStandardError().constData());
    }
    // Connects players to the device.
    start(m_manager, QStringLiteral("wireplumber"), {});
    m_samples.setFileName(m_folder.filePath(QStringLiteral("samples")));
    const int pipe = open(qPrintable(m_samples.fileName()), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    m_samples.open(pipe, QIODevice::ReadOnly | QIODevice::Unbuffered, QFile::AutoCloseHandle);
  }
  ~SoundServer() {
    for (QProcess *process : {&m_manager, &m_server}) {
      process->terminate();
      process->waitForFinished();
    }
  }
  SoundServer(const SoundServer &) = delete;
  SoundServer &operator=(const SoundServer &) = delete;

  /// All samples played so far.
  const QByteArray &played() {
    m_played += m_samples.readAll();
    return m_played;
  }

 private:
  [[nodiscard]] bool exists(const char *name) const {
    return QFile::exists(m_folder.filePath(QString::fromLatin1(name)));
  }

  static void start(QProcess &process, const QString &program, const QStringList &arguments) {
    process.start(program, arguments);
    if (!process.waitForStarted()) {
      qFatal("%s does not start.", qPrintable(program));
    }
  }

  QTemporaryDir m_folder;
  SessionBus m_bus;
  QProcess m_server;
  QProcess m_manager;
  QFile m_samples;
  QByteArray m_played;
};

/// `samples` without those that are zero. A server that gets samples too late plays zeros
/// meanwhile.
QByteArray withoutSilence(const QByteArray &samples) {
  QByteArray audible;
  for (qsizetype i = 0; i + 1 < samples.size(); i += 2) {
    if (const QByteArray sample = samples.sliced(i, 2); sample != QByteArray(2, '\0')) {
      audible += sample;
    }
  }
  return audible;
}

/// The samples in the file of the error tone.
QByteArray errorTone() {
  constexpr int kHeaderBytes = 44;
  QFile file(QStringLiteral(":/sounds/1005.wav"));
  return file.open(QIODevice::ReadOnly) ? file.readAll().sliced(kHeaderBytes) : QByteArray();
}

}  // namespace

class SoundPlayerTest : public QObject {
  Q_OBJECT

 private slots:
  void theErrorToneReachesTheSoundServerCompletely() {
    SoundServer server;
    QTRY_COMPARE(QMediaDevices::defaultAudioOutput().id(), kSinkName);
    const QByteArray tone = withoutSilence(errorTone());
    QVERIFY(!tone.isEmpty());
    DeviceSoundPlayer player;
    player.playSystemSound(1005);
    QTRY_COMPARE(withoutSilence(server.played()), tone);
  }
};

CARTONPICK_TEST(SoundPlayerTest);
#include "SoundPlayer_test.moc"
