#include "DurableUpsert.h"
#include "ProcessMemory.h"
#include "SampleData.h"
#include "Samples.h"
#include "store/ManagedObjectContext.h"
#include "support/StoredArticles.h"
#include "support/TestWindow.h"
#include "view/outlets/TableView.h"

#include <QMetaProperty>
#include <QMouseEvent>
#include <QProcess>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickWindow>
#include <QTest>

#include <algorithm>

namespace {

/// Returns the lines of a delivery, each with a different item code.
QList<TestLine> deliveryOf(int lines, int linesOfABox) {
  QList<TestLine> delivery;
  delivery.reserve(lines);
  for (int i = 0; i < lines; ++i) {
    const auto article = static_cast<std::size_t>(i);
    delivery.append({.carton = QStringLiteral("C%1").arg(i / linesOfABox + 1),
                     .item = sample::itemCode(article),
                     .qty = 2 + i % 40,
                     .barcode = sample::barcode(article)});
  }
  return delivery;
}

/// Draws a pending frame now instead of at the next screen refresh.
void drawFrame(QQuickWindow &window) {
  QEvent update(QEvent::UpdateRequest);
  QCoreApplication::sendEvent(&window, &update);
}

void drawEverything(QQuickWindow &window) {
  QCoreApplication::processEvents();
  drawFrame(window);
}

void send(QQuickWindow &window, QEvent::Type type, QPointF place) {
  const Qt::MouseButtons held = type == QEvent::MouseButtonPress ? Qt::LeftButton : Qt::NoButton;
  QMouseEvent event(type, place, window.mapToGlobal(place), Qt::LeftButton, held, Qt::NoModifier);
  QCoreApplication::sendEvent(&window, &event);
}

QPointF centreOf(const TestWindow &ui, const QString &name) {
  const QQuickItem *item = ui.item(name);
  return item == nullptr ? QPointF() : item->mapRectToScene(item->boundingRect()).center();
}

void click(TestWindow &ui, const QString &name) {
  const QPointF place = centreOf(ui, name);
  ui.passQuietTime();
  send(ui.window(), QEvent::MouseButtonPress, place);
  send(ui.window(), QEvent::MouseButtonRelease, place);
}

/// A compiled QML component of the benchmarks.
class Part {
 public:
  Part(const TestWindow &ui, const QString &name)
      : m_window(ui.window()),
        m_component(qmlEngine(&m_window),
                    QUrl(QStringLiteral("qrc:/qt/qml/CartonPick/Bench/%1.qml").arg(name))) {
    if (!m_component.isReady()) {
      qFatal("%s", qPrintable(m_component.errorString()));
    }
  }

  [[nodiscard]] std::unique_ptr<QObject> make(const QVariantMap &properties = {}) {
    return std::unique_ptr<QObject>(
        m_component.createWithInitialProperties(properties, qmlContext(&m_window)));
  }

 private:
  QQuickWindow &m_window;
  QQmlComponent m_component;
};

/// A child process that serves a catalogue over HTTP.
class CatalogueService {
 public:
  explicit CatalogueService(int articles) {
    const QString calls = m_folder.filePath(QStringLiteral("qir_pick/servicepick.svc/json"));
    const QByteArray body = sample::catalogueJson(static_cast<std::size_t>(articles));
    m_bodyBytes = static_cast<double>(body.size());
    QFile file(calls + QStringLiteral("/getitems"));
    if (!QDir().mkpath(calls) || !file.open(QIODevice::WriteOnly) || file.write(body) < 0) {
      qFatal("The catalogue cannot be written.");
    }
    file.close();
    m_process.start(QStringLiteral("python3"), {"-u", "-m", "http.server", "--bind", "127.0.0.1",
                                                "--directory", m_folder.path(), "0"});
    if (!m_process.waitForReadyRead()) {
      qFatal("The catalogue is not served.");
    }
    m_host = QString::fromUtf8(m_process.readAllStandardOutput()).section(u'/', 2, 2);
  }
  ~CatalogueService() {
    m_process.terminate();
    m_process.waitForFinished();
  }
  CatalogueService(const CatalogueService &) = delete;
  CatalogueService &operator=(const CatalogueService &) = delete;

  [[nodiscard]] QString host() const { return m_host; }
  [[nodiscard]] double bodyBytes() const { return m_bodyBytes; }

 private:
  QTemporaryDir m_folder;
  QProcess m_process;
  QString m_host;
  double m_bodyBytes = 0;
};

/// Redraws a window continuously, as during an animation, and records the longest time between two
/// frames.
class LongestGap {
 public:
  explicit LongestGap(QQuickWindow &window) {
    QObject::connect(&window, &QQuickWindow::frameSwapped, &m_receiver, [this, &window] {
      const auto now = Samples::Clock::now();
      m_longest = std::max(m_longest, now - std::exchange(m_last, now));
      window.update();
    });
    window.update();
  }
  [[nodiscard]] Samples::Clock::duration longest() const { return m_longest; }

 private:
  Samples::Clock::time_point m_last = Samples::Clock::now();
  Samples::Clock::duration m_longest{};
  QObject m_receiver;
};

/// Clicks the button and waits for the final alert.
void reloadItems(TestWindow &ui) {
  click(ui, QStringLiteral("btnReloadItems"));
  QVERIFY(QTest::qWaitFor([&] { return ui.alerts().size() == 1; }, 120'000));
}

QString nameOf(const char *work, const char *way, int size) {
  return QStringLiteral("%1/%2/%3").arg(QLatin1String(work), QLatin1String(way)).arg(size);
}

}  // namespace

/// Measures the user-visible delays in the program's window, without a display.
class WindowBench : public QObject {
  Q_OBJECT

 private slots:
  static void aReload_data() { addSizes({10'000, 100'000, 1'000'000}); }

  void aReload() {
    QFETCH(const int, size);
    const CatalogueService service(size);
    TestWindow ui;
    ui.environment.serviceHost = service.host();
    ui.enterPicking();
    ui.settle();
    const double before = process_memory::now();
    process_memory::forgetMost();
    const LongestGap gap(ui.window());
    reloadItems(ui);
    m_samples.addTime(nameOf("reload frames", "CartonPick", size), gap.longest());
    const double most = process_memory::most();
    QCOMPARE(articleCount(ui.storePath()), size);
    constexpr double kRoom = 64.0 * 1024 * 1024;
    m_samples.addMemory(nameOf("reload memory", "CartonPick", size), most - before);
    m_samples.addMemory(nameOf("reload memory", "floor: the body and 64 MiB", size),
                        service.bodyBytes() + kRoom);
  }

  static void aConfirmedQuantity_data() { addSizes({100, 1'000, 10'000}); }

  void aConfirmedQuantity() {
    QFETCH(const int, size);
    const int repetitions = std::min(size, 300);
    const QList<TestLine> lines = deliveryOf(size, 1);
    TestWindow ui;
    ui.startPicking(lines);
    auto *boxes = ui.item(QStringLiteral("tblBoxes"))->property("outlet").value<TableView *>();
    BareUpsert bare;
    QtUpsert qt;
    for (int i = 0; i < repetitions; ++i) {
      const std::string item = lines[i].item.toStdString();
      // Every measurement follows a drawn frame, so all start with the processor cache in a similar
      // state.
      boxes->touchRow(i);
      drawEverything(ui.window());
      m_samples.time(nameOf("confirm", "floor: one bare upsert", size), [&] { bare(item, 1); });
      ui.scanPart(lines[i].item + u'\r');
      drawEverything(ui.window());
      m_samples.time(nameOf("confirm", "peer: an upsert with Qt SQL", size), [&] { qt(item, 1); });
      watchText(ui.item(QStringLiteral("lblSaved")));
      watchText(ui.item(QStringLiteral("lblBoxesIncompleteValue")));
      click(ui, QStringLiteral("btn1"));
      const QPointF place = centreOf(ui, QStringLiteral("btnOK"));
      ui.passQuietTime();
      send(ui.window(), QEvent::MouseButtonPress, place);
      drawEverything(ui.window());
      const auto begin = Samples::Clock::now();
      send(ui.window(), QEvent::MouseButtonRelease, place);
      m_samples.addTime(nameOf("confirm", "CartonPick", size), m_textChanged - begin);
      drawEverything(ui.window());
      QVERIFY(ui.text("lblSaved").contains(lines[i].item));
      QCOMPARE(ui.text("lblBoxesIncompleteValue"), QString::number(i + 1));
    }
    QCOMPARE(ui.store().pickings("4711")->size(), static_cast<std::size_t>(repetitions));
  }

  void theKeypadsFirstFrame() {
    constexpr int kRepetitions = 100;
    constexpr int kLines = 20;
    const QList<TestLine> lines = deliveryOf(kLines, kLines);
    TestWindow ui;
    ui.openBox(lines);
    Part emptySheet(ui, QStringLiteral("EmptySheet"));
    for (int i = 0; i < kRepetitions; ++i) {
      std::unique_ptr<QObject> sheet;
      m_samples.time(nameOf("keypad", "floor: an empty sheet", kLines), [&] {
        sheet = emptySheet.make({{"parent", QVariant::fromValue(ui.window().contentItem())}});
        drawFrame(ui.window());
      });
      sheet.reset();
      drawEverything(ui.window());
      ui.type(lines[i % kLines].item);
      drawEverything(ui.window());
      QKeyEvent key(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier, QStringLiteral("\r"));
      m_samples.time(nameOf("keypad", "CartonPick", kLines), [&] {
        QCoreApplication::sendEvent(&ui.window(), &key);
        drawFrame(ui.window());
      });
      QCOMPARE(ui.text("lblItemCode"), lines[i % kLines].item);
      click(ui, QStringLiteral("btnCancel"));
      drawEverything(ui.window());
      QVERIFY(!ui.shows("lblItemCode"));
    }
  }

  static void scrollingLines_data() { addSizes({1'000, 10'000, 100'000}); }

  void scrollingLines() {
    QFETCH(const int, size);
    TestWindow ui;
    ui.openBox(deliveryOf(size, size));
    scroll(ui, QStringLiteral("tblItems"), "scroll lines", size,
           {"item", "barcode", "descr", "pickqty", "orderqty", "diffqty"});
  }

  static void scrollingBoxes_data() { addSizes({100, 1'000, 10'000}); }

  void scrollingBoxes() {
    QFETCH(const int, size);
    TestWindow ui;
    ui.startPicking(deliveryOf(size * 2, 2));
    scroll(ui, QStringLiteral("tblBoxes"), "scroll boxes", size,
           {"lblBox", "lblPickQty", "lblOrderQty", "state"});
  }

  void cleanupTestCase() { QVERIFY(m_samples.write(qEnvironmentVariable("CARTONPICK_SAMPLES"))); }

 private:
  /// From now on, records the time of each text change of `item` in `m_textChanged`.
  void watchText(QQuickItem *item) {
    const QMetaObject &type = *item->metaObject();
    const QMetaProperty text = type.property(type.indexOfProperty("text"));
    const QMetaObject &own = *metaObject();
    connect(item, text.notifySignal(), this, own.method(own.indexOfMethod("noteTextChange()")),
            Qt::UniqueConnection);
  }

  Q_INVOKABLE void noteTextChange() { m_textChanged = Samples::Clock::now(); }

  static void addSizes(std::initializer_list<int> sizes) {
    QTest::addColumn<int>("size");
    for (const int size : sizes) {
      QTest::addRow("%d", size) << size;
    }
  }

  /// Scrolls `list` by about three rows per frame.
  void scrollList(QQuickWindow &window, QQuickItem *list, const QString &name) {
    constexpr int kFrames = 1'000;
    constexpr double kPixelsAFrame = 160;
    const double end = list->property("contentHeight").toDouble() - list->height();
    double y = 0;
    for (int i = 0; i < kFrames; ++i) {
      y = y + kPixelsAFrame > end ? 0 : y + kPixelsAFrame;
      m_samples.time(name, [&] {
        list->setProperty("contentY", y);
        drawFrame(window);
      });
    }
  }

  void scroll(TestWindow &ui, const QString &table, const char *work, int size,
              const QStringList &parts) {
    QQuickItem *list = ui.item(table);
    QVERIFY(list != nullptr);
    QCOMPARE(list->property("count").toInt(), size);
    drawEverything(ui.window());
    const double before = process_memory::now();
    scrollList(ui.window(), list, nameOf(work, "CartonPick", size));
    if (table == QStringLiteral("tblItems")) {
      m_samples.addMemory(nameOf("scroll memory", "CartonPick", size),
                          process_memory::now() - before);
    }
    Part plainTexts(ui, QStringLiteral("PlainTexts"));
    const auto plain = plainTexts.make({{"model", list->property("model")},
                                        {"parts", parts},
                                        {"rowHeight", list->property("rowHeight")},
                                        {"width", list->width()},
                                        {"height", list->height()}});
    auto *plainList = qobject_cast<QQuickItem *>(plain.get());
    plainList->setParentItem(list->parentItem());
    plainList->setPosition(list->position());
    list->setVisible(false);
    drawEverything(ui.window());
    scrollList(ui.window(), plainList, nameOf(work, "floor: the same texts, plain", size));
  }

  Samples m_samples;
  Samples::Clock::time_point m_textChanged;
};

QTEST_MAIN(WindowBench)
#include "window_bench.moc"
