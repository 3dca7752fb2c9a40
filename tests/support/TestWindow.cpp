#include "support/TestWindow.h"

#include "app/TouchGuard.h"
#include "scanner/ScanGuard.h"

#include <QAccessible>
#include <QDir>
#include <QGuiApplication>
#include <QInputMethodEvent>
#include <QJSValue>
#include <QQmlContext>
#include <QQmlEngine>
#include <QQmlExpression>
#include <QQuickItem>
#include <QQuickWindow>
#include <QRegularExpression>
#include <QTest>

#include <algorithm>
#include <utility>

namespace {

QtMessageHandler previousHandler = nullptr;

/// Returns true if a message is about the platform plugin, which has no screen in tests.
bool isAboutThePlatform(const QMessageLogContext &context, const QString &message) {
  return QByteArray(context.category).startsWith("qt.qpa") ||
         message.contains(QStringLiteral("propagateSizeHints"));
}

void failOnWarnings(QtMsgType type, const QMessageLogContext &context, const QString &message) {
  const bool isWarning = type == QtWarningMsg || type == QtCriticalMsg;
  if (isWarning && !isAboutThePlatform(context, message)) {
    QTest::qFail(qPrintable(message), context.file, context.line);
    return;
  }
  previousHandler(type, context, message);
}

QPointingDevice *finger() {
  static QPointingDevice *device = QTest::createTouchDevice();
  return device;
}

void collect(QQuickItem *item, QList<QQuickItem *> &items) {
  if (!item->isVisible()) {
    return;
  }
  items.append(item);
  QList<QQuickItem *> children = item->childItems();
  std::stable_sort(children.begin(), children.end(),
                   [](const QQuickItem *a, const QQuickItem *b) { return a->z() < b->z(); });
  for (QQuickItem *child : std::as_const(children)) {
    collect(child, items);
  }
}

/// Returns the visible area of `item`, or an empty one while a flip rotates it.
QRectF placeOf(QQuickItem *item) {
  if (item == nullptr || item->itemTransform(nullptr, nullptr).type() > QTransform::TxTranslate) {
    return {};
  }
  return TestWindow::visiblePart(item);
}

/// Returns the timestamp of the next typed key in milliseconds, far from those of other events.
quint64 nextTypingTime() {
  static quint64 time = 1'000'000'000;
  return time += 120;
}

QKeyEvent *keyEvent(QEvent::Type type, QChar c) {
  const int key = c == u'\r' ? int{Qt::Key_Return} : c.toUpper().unicode();
  return new QKeyEvent(type, key, Qt::NoModifier, QString(c));
}

}  // namespace

TestWindow::TestWindow(QSize size, bool onScreenKeyboard, const PickingRules &rules)
    : TestEnvironment(rules), m_size(size), m_onScreenKeyboard(onScreenKeyboard) {
  QAccessible::setActive(true);
  previousHandler = qInstallMessageHandler(failOnWarnings);
  environment.serviceHost = service.host();
  launch();
}

TestWindow::~TestWindow() {
  if (QTest::currentTestFailed()) {
    const QString file =
        QDir::temp().filePath(QStringLiteral("%1-%2.png")
                                  .arg(QCoreApplication::applicationName(),
                                       QString::fromLatin1(QTest::currentTestFunction())));
    window().grabWindow().save(file);
    qInfo("The window at the end: %s", qUtf8Printable(file));
  }
  close();
  qInstallMessageHandler(previousHandler);
}

void TestWindow::launch() {
  m_delegate = std::make_unique<vekAppDelegate>(environment);
  m_delegate->didFinishLaunchingWithOptions();
  m_delegate->window()->onScreenKeyboard = m_onScreenKeyboard;
  m_screens = std::make_unique<Screens>(*m_delegate->window());
  if (m_screens->quickWindow() == nullptr) {
    qFatal("The screens could not be loaded.");
  }
  window().resize(m_size);
  window().requestActivate();
  if (!QTest::qWaitForWindowActive(&window())) {
    qFatal("The window does not come up.");
  }
}

void TestWindow::close() {
  m_screens.reset();
  m_delegate.reset();
}

void TestWindow::restart() {
  close();
  launch();
}

void TestWindow::touch(const QString &name) {
  tapAt(reach(name));
}

void TestWindow::touchAt(QPoint place) {
  passQuietTime();
  tapAt(place);
}

void TestWindow::tapAt(QPoint place) {
  QTest::touchEvent(&window(), finger()).press(0, place);
  QTest::touchEvent(&window(), finger()).release(0, place);
}

void TestWindow::click(const QString &name) {
  QTest::mouseClick(&window(), Qt::LeftButton, {}, reach(name));
}

void TestWindow::passQuietTime() {
  drawChanges();
  clock->advance(TouchGuard::kQuietTime);
}

void TestWindow::drawChanges() const {
  if (!QTest::qWaitFor([&] { return !m_screens->touchGuard().isWaitingForFrame(); })) {
    QTest::qFail("No frame is drawn.", __FILE__, __LINE__);
  }
}

void TestWindow::type(const QString &text) {
  for (const QChar c : text) {
    for (const QEvent::Type type : {QEvent::KeyPress, QEvent::KeyRelease}) {
      const std::unique_ptr<QKeyEvent> event(keyEvent(type, c));
      event->setTimestamp(nextTypingTime());
      QCoreApplication::sendEvent(&window(), event.get());
    }
  }
  if (!QTest::qWaitFor([&] { return !m_screens->scanGuard().isHolding(); })) {
    QTest::qFail("The keys are held back.", __FILE__, __LINE__);
  }
}

void TestWindow::press(Qt::Key key, Qt::KeyboardModifiers modifiers) {
  QTest::keyClick(&window(), key, modifiers);
}

void TestWindow::tabTo(const QString &name, Qt::Key tab) {
  constexpr int kMaxStops = 40;
  // Lists create their rows when a frame is drawn.
  settle();
  for (int i = 0; i < kMaxStops && focusStop() != name; ++i) {
    press(tab);
  }
  QCOMPARE(focusStop(), name);
}

void TestWindow::pressByKeys(const QString &name, Qt::Key tab) {
  tabTo(name, tab);
  press(Qt::Key_Space);
}

void TestWindow::scan(const QString &code) {
  scanPart(code + u'\r');
}

void TestWindow::scanPart(const QString &keys) {
  for (const QChar c : keys) {
    QCoreApplication::postEvent(&window(), keyEvent(QEvent::KeyPress, c));
    QCoreApplication::postEvent(&window(), keyEvent(QEvent::KeyRelease, c));
  }
  QCoreApplication::processEvents();
}

void TestWindow::commitByInputMethod(const QString &text) {
  QInputMethodEvent event;
  event.setCommitString(text);
  QCoreApplication::sendEvent(window().activeFocusItem(), &event);
}

void TestWindow::switchToAnotherWindowAndBack() {
  {
    QWindow other;
    other.show();
    other.requestActivate();
    QVERIFY(QTest::qWaitForWindowActive(&other));
    QTRY_VERIFY(!window().isActive());
  }
  window().requestActivate();
  QVERIFY(QTest::qWaitForWindowActive(&window()));
}

QList<QQuickItem *> TestWindow::visibleItems(QQuickItem *root) const {
  QList<QQuickItem *> items;
  collect(root == nullptr ? window().contentItem() : root, items);
  return items;
}

QRectF TestWindow::visiblePart(QQuickItem *item) {
  QRectF part = item->mapRectToScene(item->boundingRect());
  for (const QQuickItem *outer = item->parentItem(); outer != nullptr;
       outer = outer->parentItem()) {
    if (outer->clip()) {
      part &= outer->mapRectToScene(outer->clipRect());
    }
  }
  return part;
}

QQuickItem *TestWindow::item(const QString &name) const {
  QQuickItem *found = nullptr;
  const QStringList steps = name.split(u'/');
  for (const QString &step : steps) {
    const QList<QQuickItem *> items = visibleItems(found);
    const auto match = std::find_if(items.crbegin(), items.crend(), [&](const QQuickItem *item) {
      return item->objectName() == step && item != found;
    });
    if (match == items.crend()) {
      return nullptr;
    }
    found = *match;
  }
  return found;
}

QPoint TestWindow::reach(const QString &name) {
  QRectF before;
  const bool isStill = QTest::qWaitFor([&] {
    // Items get their place when a frame is drawn.
    if (m_screens->touchGuard().isWaitingForFrame()) {
      return false;
    }
    const QRectF now = placeOf(item(name));
    return !now.isEmpty() && now == std::exchange(before, now);
  });
  if (!isStill) {
    QTest::qFail(qPrintable(QStringLiteral("Cannot reach ") + name), __FILE__, __LINE__);
  }
  clock->advance(TouchGuard::kQuietTime);
  return before.center().toPoint();
}

void TestWindow::settle() const {
  QList<QRectF> before;
  const bool isStill = QTest::qWaitFor([&] {
    // Layouts are updated when a frame is drawn.
    window().grabWindow();
    QList<QRectF> now;
    for (QQuickItem *item : visibleItems()) {
      now.append(placeOf(item));
    }
    return now == std::exchange(before, now);
  });
  if (!isStill) {
    QTest::qFail("The items in the window keep moving.", __FILE__, __LINE__);
  }
}

QString TestWindow::text(const QString &name) const {
  const QQuickItem *shown = item(name);
  return shown == nullptr ? QString() : shown->property("text").toString();
}

QStringList TestWindow::texts(const QStringList &names) const {
  QStringList shown;
  for (const QString &name : names) {
    shown.append(text(name));
  }
  return shown;
}

bool TestWindow::isEnabled(const QString &name) const {
  const QQuickItem *shown = item(name);
  return shown != nullptr && shown->isEnabled();
}

QColor TestWindow::colour(const QString &name) const {
  const QQuickItem *shown = item(name);
  return shown == nullptr ? QColor() : shown->property("color").value<QColor>();
}

QVariantMap TestWindow::themeColours(const QString &property) const {
  QQmlExpression theme(qmlContext(&window()), &window(), QStringLiteral("Theme.") + property);
  const QVariant colours = theme.evaluate();
  return colours.canConvert<QJSValue>() ? colours.value<QJSValue>().toVariant().toMap()
                                        : colours.toMap();
}

QColor TestWindow::ink(const QString &colourName) const {
  return themeColours(QStringLiteral("ink")).value(colourName).value<QColor>();
}

QColor TestWindow::ground(const QString &colourName) const {
  return themeColours(QStringLiteral("ground")).value(colourName).value<QColor>();
}

QStringList TestWindow::column(const QString &table, const QString &column) const {
  QStringList cells;
  for (int row = 0; shows(QStringLiteral("%1Row%2").arg(table).arg(row)); ++row) {
    cells.append(text(QStringLiteral("%1Row%2/%3").arg(table).arg(row).arg(column)));
  }
  return cells;
}

QStringList TestWindow::alerts() const {
  QStringList shown;
  for (QQuickItem *alert : visibleItems()) {
    if (alert->objectName() != QStringLiteral("alert")) {
      continue;
    }
    QStringList parts{QString(), QString()};
    for (const QQuickItem *part : visibleItems(alert)) {
      const QString shownText = part->property("text").toString();
      if (part->objectName() == QStringLiteral("alertTitle")) {
        parts[0] = shownText;
      } else if (part->objectName() == QStringLiteral("alertMessage")) {
        parts[1] = shownText;
      } else if (part->objectName().startsWith(QStringLiteral("alertButton"))) {
        parts.append(shownText);
      }
    }
    shown.append(parts.join(u'|'));
  }
  return shown;
}

QStringList TestWindow::fieldsWithKeyboard() const {
  QStringList names;
  for (const QQuickItem *item : visibleItems()) {
    if (item->inherits("QQuickTextInput") && item->hasActiveFocus()) {
      names.append(item->objectName());
    }
  }
  return names;
}

QString TestWindow::keyboard() const {
  const QQuickItem *item = window().activeFocusItem();
  return item == nullptr ? QString() : item->objectName();
}

QString TestWindow::focusStop() const {
  static const QRegularExpression row(QStringLiteral("Row\\d+$"));
  return keyboard().remove(row);
}

void TestWindow::enterPicking() {
  touch(QStringLiteral("btnSegueToSplitView"));
  QTRY_COMPARE(fieldsWithKeyboard(), QStringList("txtDeliveryNo"));
}

void TestWindow::lookUp(const QList<TestLine> &lines) {
  service.answerWith(deliveryJson(lines));
  touch(QStringLiteral("txtDeliveryNo"));
  press(Qt::Key_A, Qt::ControlModifier);
  type(lines.front().doc);
  touch(QStringLiteral("btnSearch"));
  QTRY_VERIFY(isEnabled(QStringLiteral("btnPicking")) && !shows(QStringLiteral("busy")));
}

void TestWindow::startPicking(const QList<TestLine> &lines) {
  enterPicking();
  lookUp(lines);
  touch(QStringLiteral("btnPicking"));
  QTRY_COMPARE(fieldsWithKeyboard(), QStringList("txtBox"));
}

void TestWindow::openBox(const QList<TestLine> &lines, int row) {
  startPicking(lines);
  touch(QStringLiteral("tblBoxesRow%1").arg(row));
  QTRY_COMPARE(fieldsWithKeyboard(), QStringList("txtBarcode"));
}

void TestWindow::openKeypad(int row) {
  touch(QStringLiteral("tblItemsRow%1").arg(row));
  QTRY_COMPARE(fieldsWithKeyboard(), QStringList("txtNewQty"));
}

void TestWindow::confirm(const QString &quantity) {
  for (const QChar key : quantity) {
    touch(key == u'-' ? QStringLiteral("btnNegative") : QStringLiteral("btn") + key);
  }
  touch(QStringLiteral("btnOK"));
  QTRY_VERIFY(!shows(QStringLiteral("txtNewQty")));
}
