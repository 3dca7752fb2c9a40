// An order service, or whoever answers in its place, that sends markup for texts: every screen
// shows it as it is, a screen reader hears it as it is, and nothing that it names is fetched.

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

/// Whether `item` shows texts that may be anybody's; whether only as they are. What stands in an
/// empty field is the program's own.
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

QString heard(QQuickItem *item) {
  QAccessibleInterface *interface = QAccessible::queryAccessibleInterface(item);
  return interface == nullptr ? QString()
                              : interface->text(QAccessible::Name) + u'\n' +
                                    interface->text(QAccessible::Description) + u'\n' +
                                    interface->text(QAccessible::Value);
}

/// The program, before an order service in which every text is markup.
class HostileService {
 public:
  HostileService()
      : markup(QStringLiteral("<b>x</b><img src=\"http://%1%2\">&lt;i&gt;<a href='x'>y</a>")
                   .arg(ui.service.host(), kFetched)) {
    ui.service.answerWith(QJsonDocument(QJsonArray{line(6), line(2)}).toJson());
  }

  TestWindow ui;
  const QString markup;

  /// Fails if anything in sight is more than plain text, and if `isShown` and the markup is neither
  /// to be read nor to be heard.
  void check(const char *screen, bool isShown) const {
    ui.settle();
    bool isSeen = false;
    bool isHeard = false;
    for (QQuickItem *item : ui.visibleItems()) {
      const QString text = item->property("text").toString();
      if (showsText(item)) {
        QVERIFY2(isPlain(item), qPrintable(screen + u": "_qs + text));
        isSeen = isSeen || text.contains(markup);
      }
      isHeard = isHeard || heard(item).contains(markup);
    }
    QVERIFY2(isSeen == isShown, screen);
    QVERIFY2(isHeard == isShown, screen);
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
  void markupIsTextOnEveryScreen() {
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

  /// As a proof that it would be seen if anything were markup.
  void aTextThatIsMarkupIsFound() {
    HostileService hostile;
    TestWindow &ui = hostile.ui;
    const QList<QQuickItem *> items = ui.visibleItems();
    const auto text = std::find_if(items.begin(), items.end(), showsText);
    QVERIFY(text != items.end());
    QVERIFY(isPlain(*text));
    // An image, so that what is fetched is taken.
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
