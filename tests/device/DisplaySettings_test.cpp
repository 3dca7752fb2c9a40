#include "device/DisplaySettings.h"

#include "base/Folders.h"
#include "support/TestClass.h"

#include <QFile>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

namespace {

/// Settings in a temporary folder, on a system without a colour preference.
class Device {
 public:
  Device() { restart(); }

  void restart() {
    settings.reset();
    settings = std::make_unique<DisplaySettings>(
        Folders{m_home.path()}, std::make_unique<SystemColourScheme>(QDBusConnection(QString())));
  }
  void write(const QByteArray &text) {
    settings.reset();
    QFile file(this->file());
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(text);
    file.close();
    restart();
  }

  QString file() const { return m_home.filePath(QStringLiteral("display.ini")); }

  std::unique_ptr<DisplaySettings> settings;

 private:
  QTemporaryDir m_home;
};

}  // namespace

class DisplaySettingsTest : public QObject {
  Q_OBJECT

 private slots:
  void aNewDeviceFollowsTheSystemThemeWithNormalTextSize() {
    const Device device;
    QCOMPARE(device.settings->theme(), DisplaySettings::Theme::System);
    QVERIFY(!device.settings->isDark());
    QCOMPARE(device.settings->textSize(), 100);
    QCOMPARE(device.settings->textScale(), 1.0);
    QCOMPARE(device.settings->windowSize(), QSize(1280, 800));
    QVERIFY(!device.settings->isMaximized());
  }

  void settingsAreReadableByTheirOwnerOnly() {
    Device device;
    device.settings->setTextSize(150);
    device.settings->setTextSize(200);
    constexpr QFile::Permissions kOthers = QFile::ReadGroup | QFile::WriteGroup | QFile::ExeGroup |
                                           QFile::ReadOther | QFile::WriteOther | QFile::ExeOther;
    QCOMPARE(QFile::permissions(device.file()) & kOthers, QFile::Permissions());
    QVERIFY(QFile::exists(device.file()));
  }

  void settingsSurviveARestart() {
    Device device;
    device.settings->setTheme(DisplaySettings::Theme::Dark);
    device.settings->setTextSize(150);
    device.settings->setWindowSize({1100, 700});
    device.settings->setMaximized(true);
    device.restart();
    QCOMPARE(device.settings->theme(), DisplaySettings::Theme::Dark);
    QVERIFY(device.settings->isDark());
    QCOMPARE(device.settings->textScale(), 1.5);
    QCOMPARE(device.settings->windowSize(), QSize(1100, 700));
    QVERIFY(device.settings->isMaximized());
  }

  void onlyChangesAreSignalled() {
    const Device device;
    const QSignalSpy changed(device.settings.get(), &DisplaySettings::changed);
    device.settings->setTheme(DisplaySettings::Theme::Light);
    device.settings->setTheme(DisplaySettings::Theme::Light);
    QCOMPARE(changed.size(), 1);
  }

  void invalidSettingsReadAsDefaults() {
    Device device;
    device.write("[General]\ntheme=pink\ntextSize=99999\nwindowSize=wide\n");
    QCOMPARE(device.settings->theme(), DisplaySettings::Theme::System);
    QCOMPARE(device.settings->textSize(), 100);
    QCOMPARE(device.settings->windowSize(), QSize(1280, 800));
  }
};

CARTONPICK_TEST(DisplaySettingsTest);
#include "DisplaySettings_test.moc"
