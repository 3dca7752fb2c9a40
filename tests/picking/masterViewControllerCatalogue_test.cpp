#include "support/StoredArticles.h"
#include "support/TestClass.h"
#include "support/TestProgram.h"

#include <QTest>

namespace {

const QByteArray kThreeArticles = R"([{"item":"X","barcode":"bx","descr":"An X"},
                                      {"item":"Y","barcode":"by","descr":"A Y"},
                                      {"item":"Z","barcode":"bz","descr":"A Z"}])";

/// A program whose picking screen is open.
class PickingProgram : public TestProgram {
 public:
  PickingProgram() { enterPicking(); }

  /// Touches "Reload Items" and waits until the program is no longer busy.
  void reloadItems() {
    master().btnReloadItemsTouched();
    QVERIFY(QTest::qWaitFor([this] { return !environment.busy.isActive(); }));
  }
  void reloadItems(const QByteArray &body) {
    service.answerWith(body);
    reloadItems();
  }
};

}  // namespace

class masterViewControllerCatalogueTest : public QObject {
  Q_OBJECT

 private slots:
  void aReloadReportsThatItemsHaveBeenLoaded() {
    PickingProgram program;
    program.reloadItems(kThreeArticles);
    QCOMPARE(program.environment.alerts.count(), 1);
    QCOMPARE(program.topAlert().title, "Saved");
    QCOMPARE(program.topAlert().message, "Items have been loaded");
    QCOMPARE(program.topAlert().buttons, QStringList("OK"));
    QVERIFY(!program.topAlert().delegate);
    QCOMPARE(articleCount(program.storePath()), 3);
  }

  void theRequestForbidsCachedAnswers() {
    PickingProgram program;
    program.reloadItems(kThreeArticles);
    QCOMPARE(program.service.requests().at(0).target, "/qir_pick/servicepick.svc/json/getitems");
    QCOMPARE(program.service.requests().at(0).headers.value("cache-control"), "no-cache");
  }

  void anEmptyCatalogueIsReportedTheSameWay() {
    PickingProgram program;
    program.reloadItems(kThreeArticles);
    program.reloadItems("[]");
    QCOMPARE(program.alertTitles(), QStringList({"Saved", "Saved"}));
    QCOMPARE(articleCount(program.storePath()), 0);
    QVERIFY(program.master().jsonResult());
    QVERIFY(program.master().jsonResult()->doc.isNull());
  }

  void anUnreachableServiceKeepsTheCatalogue() {
    PickingProgram program;
    program.reloadItems(kThreeArticles);
    program.environment.serviceHost = LoopbackService::unreachableHost();
    program.reloadItems();
    QCOMPARE(program.environment.alerts.count(), 2);
    QCOMPARE(program.topAlert().title, "Could not contact server");
    QCOMPARE(program.topAlert().message, "No connection could be opened to server");
    QCOMPARE(program.topAlert().buttons, QStringList("OK"));
    QCOMPARE(program.topAlert().delegate.get(), &program.master());
    QCOMPARE(articleCount(program.storePath()), 3);
  }

  void anInvalidAnswerKeepsTheCatalogue_data() {
    QTest::addColumn<QByteArray>("body");
    QTest::newRow("HTML page") << QByteArray("<html>Service unavailable</html>");
    QTest::newRow("object") << QByteArray("{}");
    QTest::newRow("text in the array") << QByteArray(R"([{"item":"A"},"B"])");
  }
  void anInvalidAnswerKeepsTheCatalogue() {
    QFETCH(const QByteArray, body);
    PickingProgram program;
    program.reloadItems(kThreeArticles);
    program.reloadItems(body);
    QCOMPARE(program.topAlert().title, "Could not contact server");
    QCOMPARE(articleCount(program.storePath()), 3);
    QVERIFY(!program.master().jsonResult());
  }

  void aCatalogueWithAnErrorStatusIsLoaded() {
    PickingProgram program;
    program.service.answerWith(kThreeArticles, 500);
    program.reloadItems();
    QCOMPARE(program.alertTitles(), QStringList("Saved"));
    QCOMPARE(articleCount(program.storePath()), 3);
  }

  void aPickingStartedAfterAReloadHasNoDeliveryNumber_data() {
    QTest::addColumn<QByteArray>("body");
    QTest::newRow("catalogue") << kThreeArticles;
    QTest::newRow("empty catalogue") << QByteArray("[]");
    QTest::newRow("not JSON") << QByteArray("no");
  }
  void aPickingStartedAfterAReloadHasNoDeliveryNumber() {
    QFETCH(const QByteArray, body);
    PickingProgram program;
    program.service.answerWith(deliveryJson({{"C1", "A", 5}}));
    program.lookUp("4711");
    QCOMPARE(program.master().jsonResult()->doc, "4711");
    program.reloadItems(body);
    program.master().btnPickingTouched();
    QVERIFY(program.detail().doc().isNull());
    QCOMPARE(program.session().pickList().size(), 1U);
  }

  void aLookupAfterAReloadRestoresTheDeliveryNumber() {
    PickingProgram program;
    program.reloadItems(kThreeArticles);
    program.startPicking({{"C1", "A", 5}});
    QCOMPARE(program.detail().doc(), "4711");
  }

  void aReloadDoesNotChangeTheShownDelivery() {
    PickingProgram program;
    program.service.answerWith(deliveryJson({{"C1", "A", 5}}));
    program.lookUp("4711");
    program.reloadItems(kThreeArticles);
    QCOMPARE(program.master().lblCustomerName->text(), "Customer: Corner Shop");
    QVERIFY(program.master().btnPicking->isEnabled());
    QVERIFY(!program.master().activityIndicator->isAnimating());
    QVERIFY(program.master().connectionDict().isEmpty());
  }

  void aLoadedArticleIsFoundByAScan() {
    PickingProgram program;
    program.reloadItems(R"([{"item":"X","barcode":"b","descr":"first"},
                            {"item":"X","barcode":"b","descr":"second"}])");
    program.startPicking({{"C1", "A", 5}});
    program.master().tblBoxes->touchRow(0);
    program.scan("b");
    QCOMPARE(program.session().pickList().size(), 2U);
    const auto *loose = std::get_if<LoosePick>(&program.session().pickList().back());
    QVERIFY(loose != nullptr);
    QCOMPARE(loose->descr, "first");
  }

  void thePaneCanBeDestroyedDuringAReload() {
    PickingProgram program;
    program.service.answerWith(
        [](const LoopbackService::Request &) { return LoopbackService::Answer::silence(); });
    program.master().btnReloadItemsTouched();
    QVERIFY(QTest::qWaitFor([&] { return program.service.requests().size() == 1; }));
    program.split().dismissViewController();
    QVERIFY(QTest::qWaitFor([&] { return !program.environment.busy.isActive(); }));
    program.service.answerSilentConnection(LoopbackService::Answer::http(kThreeArticles));
    QCoreApplication::processEvents();
    QCOMPARE(program.environment.alerts.count(), 0);
    QCOMPARE(articleCount(program.storePath()), 0);
  }
};

CARTONPICK_TEST(masterViewControllerCatalogueTest);
#include "masterViewControllerCatalogue_test.moc"
