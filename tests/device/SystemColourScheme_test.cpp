#include "device/SystemColourScheme.h"

#include "support/SessionBus.h"
#include "support/TestClass.h"

#include <QDBusContext>
#include <QDBusMessage>
#include <QGuiApplication>
#include <QPalette>
#include <QSignalSpy>
#include <QTest>

namespace {

const QString kGroup = QStringLiteral("org.freedesktop.appearance");
const QString kKey = QStringLiteral("color-scheme");

}  // namespace

/// The D-Bus service that provides the desktop's settings to programs.
class SettingsPortal : public QObject, protected QDBusContext {
  Q_OBJECT
  Q_CLASSINFO("D-Bus Interface", "org.freedesktop.portal.Settings")

 public:
  SettingsPortal(QDBusConnection bus, uint scheme) : m_bus(std::move(bus)), m_scheme(scheme) {
    if (!m_bus.registerObject(QStringLiteral("/org/freedesktop/portal/desktop"), this,
                              QDBusConnection::ExportAllSlots) ||
        !m_bus.registerService(QStringLiteral("org.freedesktop.portal.Desktop"))) {
      qFatal("The desktop cannot be reached.");
    }
  }

  void set(const QString &group, const QString &key, uint value) {
    QDBusMessage changed = QDBusMessage::createSignal(
        QStringLiteral("/org/freedesktop/portal/desktop"),
        QStringLiteral("org.freedesktop.portal.Settings"), QStringLiteral("SettingChanged"));
    changed << group << key << QVariant::fromValue(QDBusVariant(value));
    m_bus.send(changed);
  }

 public slots:
  QDBusVariant Read(const QString &group, const QString &key) {
    if (group != kGroup || key != kKey) {
      sendErrorReply(QStringLiteral("org.freedesktop.portal.Error.NotFound"));
      return {};
    }
    // The portal wraps the value in two variants.
    return QDBusVariant(QVariant::fromValue(QDBusVariant(m_scheme)));
  }

 private:
  QDBusConnection m_bus;
  uint m_scheme;
};

class SystemColourSchemeTest : public QObject {
  Q_OBJECT

 private slots:
  void theSystemsDarkPreferenceIsFollowed() {
    SessionBus bus;
    const SettingsPortal portal(bus.connect(), 1);
    const SystemColourScheme scheme(bus.connect());
    QTRY_VERIFY(scheme.isDark());
  }

  void changesOfThePreferenceAreFollowed() {
    SessionBus bus;
    SettingsPortal portal(bus.connect(), 1);
    const SystemColourScheme scheme(bus.connect());
    QSignalSpy changed(&scheme, &SystemColourScheme::changed);
    QTRY_VERIFY(scheme.isDark());
    portal.set(kGroup, kKey, 0);
    QTRY_VERIFY(!scheme.isDark());
    portal.set(kGroup, kKey, 1);
    QTRY_VERIFY(scheme.isDark());
    QCOMPARE(changed.size(), 3);
  }

  void otherSettingsAreIgnored() {
    SessionBus bus;
    SettingsPortal portal(bus.connect(), 1);
    const SystemColourScheme scheme(bus.connect());
    QTRY_VERIFY(scheme.isDark());
    portal.set(kGroup, QStringLiteral("contrast"), 0);
    portal.set(QStringLiteral("org.gnome.desktop.interface"), kKey, 0);
    // Signals arrive in order: this one arrives after the two above.
    portal.set(kGroup, kKey, 2);
    const QSignalSpy changed(&scheme, &SystemColourScheme::changed);
    QTRY_VERIFY(!scheme.isDark());
    QCOMPARE(changed.size(), 1);
  }

  void withoutAPreferenceThePaletteDecides() {
    SessionBus bus;
    SettingsPortal portal(bus.connect(), 1);
    const SystemColourScheme scheme(bus.connect());
    QTRY_VERIFY(scheme.isDark());
    portal.set(kGroup, kKey, 0);
    QTRY_VERIFY(!scheme.isDark());
    const QPalette before = QGuiApplication::palette();
    QGuiApplication::setPalette(QPalette(Qt::white, Qt::black, Qt::white, Qt::black, Qt::gray,
                                         Qt::white, Qt::white, Qt::black, Qt::black));
    QTRY_VERIFY(scheme.isDark());
    QGuiApplication::setPalette(before);
    QTRY_VERIFY(!scheme.isDark());
  }

  void withoutAPortalTheSchemeIsLight() {
    SessionBus bus;
    const SystemColourScheme scheme(bus.connect());
    QVERIFY(!scheme.isDark());
    const SystemColourScheme withoutBus(QDBusConnection(QStringLiteral("nowhere")));
    QVERIFY(!withoutBus.isDark());
  }
};

CARTONPICK_WINDOW_TEST(SystemColourSchemeTest);
#include "SystemColourScheme_test.moc"
