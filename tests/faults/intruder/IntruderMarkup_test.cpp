// A hostile order service sends markup in all texts. Every screen and the screen reader must
// present it as plain text, and the program must not fetch what it links to.

#include "store/ManagedObjectContext.h"
#include "support/TestClass.h"
#include "support/TestWindow.h"

#include <QAccessible>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QQuickItem>
#include <QTest>

#include <algorithm>

namespace {

constexpr auto kFetched = "/fetched";

/// Returns true if `item` can show texts from the service. Placeholders are the program's own
/// texts.
bool showsText(const QQuickItem *item) {
  return (item->inherits("QQuickText") && !item->inherits("QQuickPlaceholderText")) ||
         item->inherits("QQuickTextEdit");
}
bool isPlain(const QQuickItem *item) {
  return item->property("textFormat").toInt() == Qt::PlainText;
}

void choose(TestWindow &ui, int option) {
  ui.touch("btnOptions");
  QTRY_VERIFY(ui.shows("tableViewRow2"));
  ui.touch(QStringLiteral("tableViewRow%1").arg(option));
}

/// Returns the texts that a screen reader announces for `item`.
QString accessibleText(QQuickItem *item) {
  QAccessibleInterface *interface = QAccessible::queryAccessibleInterface(item);
  return interface == nullptr ? QString()
                              : interface->text(QAccessible::Name) + u'\n' +
                                    interface->text(QAccessible::Description) + u'\n' +
                                    interface->text(QAccessible::Value);
}

/// The program with an order service that sends markup in every text.
class HostileService {
 public:
  HostileService()
      : markup(QStringLiteral("<b>x</b><img src=\"http://%1%2\">&lt;i&gt;<a href='x'>y</a>")
                   .arg(ui.service.host(), kFetched)) {
    ui.service.answerWith(QJsonDocument(QJsonArray{line(6), line(2)}).toJson());
  }

  TestWindow ui;
  const QString markup;

  /// Fails if a visible text is not plain text. Also fails if the markup is shown or announced
  /// although `isShown` is false, or is missing although it is true.
  void check(const char *screen, bool isShown) const {
    ui.settle();
    bool isSeen = false;
    bool isAnnounced = false;
    for (QQuickItem *item : ui.visibleItems()) {
      const QString text = item->property("text").toString();
      if (showsText(item)) {
        QVERIFY2(isPlain(item), qPrintable(screen + u": "_qs + text));
        isSeen = isSeen || text.contains(markup);
      }
      isAnnounced = isAnnounced || accessibleText(item).contains(markup);
    }
    QVERIFY2(isSeen == isShown, screen);
    QVERIFY2(isAnnounced == isShown, screen);
  }

  [[nodiscard]] bool wasNothingFetched() const {
    const auto &requests = ui.service.requests();
    return std::none_of(requests.begin(), requests.end(),
                        [](const auto &request) { return request.target.startsWith(kFetched); });
  }

 private:
  [[nodiscard]] QJsonObject line(int qty) const {
    QJsonObject line{{"cdate", markup}, {"date", markup}, {"qty", qty}};
    for (const char *text :
         {"cusname", "brand", "doc", "ordernum", "item", "barcode", "descr", "carton"}) {
      line[QLatin1String(text)] = markup;
    }
    return line;
  }
};

}  // namespace

class IntruderMarkupTest : public QObject {
  Q_OBJECT

 private slots:
  void everyScreenShowsMarkupAsPlainText() {
    HostileService hostile;
    TestWindow &ui = hostile.ui;
    hostile.check("the start", false);
    ui.enterPicking();
    ui.touch("txtDeliveryNo");
    ui.type("4711");
    ui.touch("btnSearch");
    QTRY_VERIFY(ui.isEnabled("btnPicking") && !ui.shows("busy"));
    hostile.check("the delivery that was looked up", true);
    ui.touch("btnPicking");
    hostile.check("the boxes", true);
    ui.touch("tblBoxesRow0");
    hostile.check("the open box", true);
    ui.scan(hostile.markup);
    QTRY_VERIFY(ui.shows("txtNewQty"));
    hostile.check("the keypad", true);
    ui.confirm("3");
    hostile.check("the line that was saved", true);
    ui.scan(hostile.markup + 'z');
    QTRY_VERIFY(!ui.alerts().isEmpty());
    hostile.check("the alert of an unknown item", true);
    ui.touch("alertButton0");
    ui.touch("pill");
    QTRY_VERIFY(ui.shows("ScanTrailViewController"));
    hostile.check("the scan trail", true);
    ui.press(Qt::Key_Escape);
    QTRY_VERIFY(!ui.shows("ScanTrailViewController"));
    choose(ui, 0);
    QTRY_VERIFY(ui.shows("deliveryDetailsViewController"));
    hostile.check("the summary", true);
    ui.touch("deliveryDetailsViewController/btnClose");
    QTRY_VERIFY(!ui.shows("deliveryDetailsViewController"));
    choose(ui, 2);
    ui.service.answerWith(hostile.markup.toUtf8(), 500);
    ui.touch("alertButton1");
    QTRY_VERIFY(ui.alerts().join(u' ').contains(hostile.markup));
    hostile.check("the alert of a send that was refused", true);
    ui.touch("alertButton0");
    ui.touch("btnPicking");
    ui.touch("btnClose");
    ui.touch("alertButton0");
    ui.touch("btnSegueHistory");
    QTRY_VERIFY(ui.shows("tblHistoryOverviewRow0"));
    hostile.check("the history", true);
    ui.touch("tblHistoryOverviewRow0");
    QTRY_VERIFY(ui.shows("deliveryDetailsViewController"));
    hostile.check("the summary of an earlier delivery", true);
    QVERIFY(hostile.wasNothingFetched());
  }

  /// Proves that the other test can fail.
  void renderedMarkupIsDetected() {
    HostileService hostile;
    TestWindow &ui = hostile.ui;
    const QList<QQuickItem *> items = ui.visibleItems();
    const auto text = std::find_if(items.begin(), items.end(), showsText);
    QVERIFY(text != items.end());
    QVERIFY(isPlain(*text));
    // The answer is an image, so that the program accepts what it fetches.
    ui.service.answerWith(
        QByteArray::fromBase64("R0lGODlhAQABAIAAAAAAAP///yH5BAEAAAAALAAAAAABAAEAAAIBRAA7"));
    (*text)->setProperty("textFormat", Qt::RichText);
    (*text)->setProperty("text", hostile.markup);
    QVERIFY(!isPlain(*text));
    QTRY_VERIFY(!hostile.wasNothingFetched());
    ui.settle();
  }
};

CARTONPICK_WINDOW_TEST(IntruderMarkupTest);
#include "IntruderMarkup_test.moc"
