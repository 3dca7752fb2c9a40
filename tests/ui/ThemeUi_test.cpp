#include "support/TestClass.h"
#include "support/TestWindow.h"

#include <QImage>
#include <QQmlContext>
#include <QQmlExpression>
#include <QQuickWindow>
#include <QTest>

#include <algorithm>
#include <cmath>
#include <memory>

namespace {

/// The contrast ratios that the Web Content Accessibility Guidelines require at level AA.
constexpr double kText = 4.5;
constexpr double kGraphics = 3.0;

QColor themeColour(const TestWindow &ui, const QString &name) {
  QQmlExpression colour(qmlContext(&ui.window()), &ui.window(), QStringLiteral("Theme.") + name);
  return colour.evaluate().value<QColor>();
}

double linear(double channel) {
  return channel <= 0.04045 ? channel / 12.92 : std::pow((channel + 0.055) / 1.055, 2.4);
}

double luminance(const QColor &colour) {
  return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF()) +
         0.0722 * linear(colour.blueF());
}

double contrast(const QColor &a, const QColor &b) {
  const double ratio = (luminance(a) + 0.05) / (luminance(b) + 0.05);
  return std::max(ratio, 1 / ratio);
}

/// Foreground colours on a background, all with the same required contrast.
struct Pairs {
  QString ground;
  QStringList inks;
  double required;
};

QList<Pairs> everyPair() {
  return {
      // Text.
      {"window", {"text", "textMuted", "ink.green", "ink.red"}, kText},
      {"surface", {"text", "textMuted", "accent", "ink.red", "ink.green", "ink.yellow"}, kText},
      {"surfaceShaded", {"text", "textMuted", "textDisabled", "ink.red", "ink.green"}, kText},
      {"accentSoft", {"text", "textMuted", "ink.red", "ink.green", "ink.yellow"}, kText},
      {"ground.red", {"text", "textMuted", "ink.red"}, kText},
      {"ground.green", {"text", "textMuted", "ink.green"}, kText},
      {"ground.yellow", {"text", "textMuted", "ink.yellow"}, kText},
      {"bar", {"barText"}, kText},
      {"header", {"headerText"}, kText},
      {"accent", {"accentText"}, kText},
      {"ink.red", {"accentText"}, kText},
      // Graphics: edges, the focus ring, progress bars.
      {"window", {"accent", "fieldLine", "focus", "ink.red"}, kGraphics},
      {"surface", {"accent", "fieldLine", "focus", "ink.black"}, kGraphics},
      {"surfaceShaded", {"focus", "textMuted"}, kGraphics},
      {"bar", {"focus"}, kGraphics},
      {"accentSoft", {"accent", "focus"}, kGraphics},
      {"ground.red", {"focus", "accent"}, kGraphics},
      {"ground.green", {"focus", "accent"}, kGraphics},
      {"ground.yellow", {"focus", "accent"}, kGraphics},
  };
}

QColor cornerOf(const TestWindow &ui) {
  const QImage image = ui.window().grabWindow();
  return image.pixelColor(image.width() - 20, image.height() - 20);
}

}  // namespace

class ThemeUiTest : public QObject {
  Q_OBJECT

 private slots:
  void everyColourHasEnoughContrastWithItsBackground_data() {
    QTest::addColumn<DisplaySettings::Theme>("theme");
    QTest::newRow("light") << DisplaySettings::Theme::Light;
    QTest::newRow("dark") << DisplaySettings::Theme::Dark;
  }

  void everyColourHasEnoughContrastWithItsBackground() {
    QFETCH(const DisplaySettings::Theme, theme);
    TestWindow ui;
    ui.environment.display->setTheme(theme);
    QStringList tooWeak;
    for (const Pairs &pairs : everyPair()) {
      const QColor ground = themeColour(ui, pairs.ground);
      QVERIFY2(ground.isValid(), qPrintable(pairs.ground));
      for (const QString &name : pairs.inks) {
        const QColor ink = themeColour(ui, name);
        QVERIFY2(ink.isValid(), qPrintable(name));
        if (contrast(ink, ground) < pairs.required) {
          tooWeak.append(QStringLiteral("%1 on %2: %3")
                             .arg(name, pairs.ground)
                             .arg(contrast(ink, ground), 0, 'f', 2));
        }
      }
    }
    QVERIFY2(tooWeak.isEmpty(), qPrintable(tooWeak.join(u'\n')));
  }

  void aButtonsBackgroundOrEdgeHasEnoughContrastWithTheBar_data() {
    everyColourHasEnoughContrastWithItsBackground_data();
  }

  void aButtonsBackgroundOrEdgeHasEnoughContrastWithTheBar() {
    QFETCH(const DisplaySettings::Theme, theme);
    TestWindow ui;
    ui.environment.display->setTheme(theme);
    const QColor bar = themeColour(ui, "bar");
    QVERIFY(std::max(contrast(themeColour(ui, "surface"), bar),
                     contrast(themeColour(ui, "accent"), bar)) >= kGraphics);
  }

  void blackOnWhiteHasTheMaximumContrast() {
    QCOMPARE(contrast(Qt::black, Qt::white), 21.0);
    QCOMPARE(contrast(Qt::white, Qt::white), 1.0);
  }

  void changingTheThemeRepaintsTheRunningProgram() {
    TestWindow ui;
    ui.environment.display->setTheme(DisplaySettings::Theme::Light);
    const QColor before = cornerOf(ui);
    QCOMPARE(before, themeColour(ui, "window"));
    ui.touch("btnDisplay");
    ui.touch("segmTheme2");
    ui.touch("btnDone");
    QTRY_VERIFY(!ui.shows("btnDone"));
    QTRY_VERIFY(cornerOf(ui) != before);
    QTRY_COMPARE(cornerOf(ui), themeColour(ui, "window"));
  }

  void theChosenThemeAndTextSizeSurviveARestart() {
    TestWindow ui;
    ui.touch("btnDisplay");
    ui.touch("segmTheme2");
    ui.touch("segmTextSize3");
    ui.touch("btnDone");
    ui.restart();
    const DisplaySettings kept(ui.environment.folders,
                               std::make_unique<SystemColourScheme>(QDBusConnection(QString())));
    QCOMPARE(kept.theme(), DisplaySettings::Theme::Dark);
    QCOMPARE(kept.textSize(), 200);
    QCOMPARE(cornerOf(ui), themeColour(ui, "window"));
    QVERIFY(luminance(cornerOf(ui)) < 0.1);
  }
};

CARTONPICK_WINDOW_TEST(ThemeUiTest);
#include "ThemeUi_test.moc"
