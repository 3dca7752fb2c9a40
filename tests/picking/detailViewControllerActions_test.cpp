#include "picking/actionPickerViewController.h"
#include "summary/deliveryDetailsViewController.h"
#include "support/TestClass.h"
#include "support/TestProgram.h"
#include "support/Views.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QPointer>
#include <QSignalSpy>
#include <QTest>

namespace {

const QString kViewSummary = QStringLiteral("View Summary");
const QString kSendEmail = QStringLiteral("Send Email");
const QString kCompleteAndSend = QStringLiteral("Complete and Send");
const QString kQuestion =
    QStringLiteral("Picking Completed?|Are you sure that picking is completed?|NO|YES");

/// A program whose open box has one picked line.
class PickedBox : public TestProgram {
 public:
  PickedBox() {
    enterPicking();
    startPicking({{"C1", "A", 5}, {"C2", "B", 2}});
    master().tblBoxes->touchRow(0);
    enterQuantity(0, QStringLiteral("3"));
    service.answerWith(R"("0")");
  }

  /// Opens the action list and touches row `row`.
  void chooseAction(int row) const {
    detail().btnOptionsTouched();
    detail().actionPicker()->tableView->touchRow(row);
  }

  [[nodiscard]] int requestsToSend() const {
    return static_cast<int>(service.requests().size()) - 1;
  }
};

/// Returns "<screen> to <screen> from left" for each flip; "own" is the pane itself.
QStringList flipsOf(const QSignalSpy &flips) {
  const auto nameOf = [](const QVariant &controller) {
    const auto *view = controller.value<ViewController *>();
    return view == nullptr ? QStringLiteral("own") : view->identifier();
  };
  QStringList texts;
  for (const QVariantList &flip : flips) {
    texts << QStringLiteral("%1 to %2 from %3")
                 .arg(nameOf(flip.at(0)), nameOf(flip.at(1)),
                      flip.at(2).toBool() ? QStringLiteral("left") : QStringLiteral("right"));
  }
  return texts;
}

const QString kIn = QStringLiteral("own to deliveryDetailsViewController from left");
const QString kOut = QStringLiteral("deliveryDetailsViewController to own from right");

}  // namespace

/// The action list and its actions.
class detailViewControllerActionsTest : public QObject {
  Q_OBJECT

 private slots:
  void theOptionsOpenInAPopoverAtTheirButton() {
    const PickedBox program;
    program.detail().btnOptionsTouched();
    QCOMPARE(program.detail().presentedViewController(), program.detail().actionPicker());
    QCOMPARE(program.detail().presentationStyleName(), "popover");
    QCOMPARE(program.detail().popoverSource(), program.detail().btnOptions);
  }

  void choosingAnOptionTakesTheFocusFromTheScanField() {
    const PickedBox program;
    QVERIFY(program.detail().txtBarcode->isFirstResponder());
    program.chooseAction(2);
    QCOMPARE(program.detail().presentedViewController(), nullptr);
    QVERIFY(!program.detail().txtBarcode->isFirstResponder());
  }

  void theActionListIsReused() {
    const PickedBox program;
    const QPointer<actionPickerViewController> list = program.detail().actionPicker();
    program.chooseAction(2);
    program.detail().btnOptionsTouched();
    QCOMPARE(program.detail().presentedViewController(), list.data());
    list->dismissViewController();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QVERIFY(!list.isNull());
  }

  void theActionListKeepsItsSelection() {
    const PickedBox program;
    program.chooseAction(2);
    program.detail().btnOptionsTouched();
    QCOMPARE(program.detail().actionPicker()->tableView->selectedRow(), 2);
  }

  void completingAsksForConfirmation() {
    PickedBox program;
    program.chooseAction(2);
    QCOMPARE(textsOf(program.environment.alerts), QStringList(kQuestion));
    QCOMPARE(program.topAlert().tag, 199);
    QCOMPARE(program.topAlert().cancelButtonIndex, 0);
    QVERIFY(!program.environment.busy.isActive());
  }

  void answeringNoSendsNothing() {
    PickedBox program;
    program.chooseAction(2);
    program.answerTopAlert(0);
    QCOMPARE(program.environment.alerts.count(), 0);
    QVERIFY(!program.environment.busy.isActive());
    QCOMPARE(program.requestsToSend(), 0);
    QCOMPARE(program.context().unsentPickings(QStringLiteral("4711"))->size(), 1U);
  }

  void answeringYesSendsThePicking() {
    PickedBox program;
    program.chooseAction(2);
    program.answerTopAlert(1);
    QTRY_COMPARE(textsOf(program.environment.alerts), QStringList("Picking was sent||OK"));
    QCOMPARE(program.requestsToSend(), 1);
    QVERIFY(program.context().unsentPickings(QStringLiteral("4711"))->empty());
  }

  void onlyTheYesButtonOfTheConfirmationSends() {
    const PickedBox program;
    program.detail().clickedButtonAtIndex({.buttons = {"NO", "YES"}, .tag = 0}, 1);
    program.detail().clickedButtonAtIndex(
        {.buttons = {"YES", "NO"}, .cancelButtonIndex = 1, .tag = 199}, 1);
    QVERIFY(!program.environment.busy.isActive());
    program.detail().clickedButtonAtIndex(
        {.buttons = {"YES", "NO"}, .cancelButtonIndex = 1, .tag = 199}, 0);
    QVERIFY(program.environment.busy.isActive());
  }

  void answeringTheAlertAfterASendDoesNothing() {
    PickedBox program;
    program.detail().sendPickingToServer();
    QTRY_COMPARE(program.environment.alerts.count(), 1);
    QCOMPARE(program.topAlert().tag, 0);
    QCOMPARE(program.topAlert().delegate.get(),
             static_cast<AlertViewDelegate *>(&program.detail()));
    program.answerTopAlert(0);
    QCOMPARE(program.environment.alerts.count(), 0);
    QVERIFY(!program.environment.busy.isActive());
  }

  void withoutADeliveryThereIsNothingToSend() {
    TestProgram program;
    program.enterPicking();
    program.detail().sendPickingToServer();
    QCOMPARE(textsOf(program.environment.alerts), QStringList("No picking to send||OK"));
  }

  void theDeliveryToSendIsThatOfTheFirstLine() {
    PickedBox program;
    program.restartPickingAs(QStringLiteral("the pane's"));
    program.detail().sendPickingToServer();
    QTRY_COMPARE(program.requestsToSend(), 1);
    const auto lines = QJsonDocument::fromJson(program.service.requests().last().body).array();
    QCOMPARE(lines.first().toObject().value("doc"), "4711");
  }

  void unknownActionTitlesDoNothing_data() {
    QTest::addColumn<QString>("title");
    QTest::newRow("other case") << QStringLiteral("complete and send");
    QTest::newRow("trailing space") << QStringLiteral("View Summary ");
    QTest::newRow("leading space") << QStringLiteral(" Send Email");
    QTest::newRow("empty") << QString();
  }
  void unknownActionTitlesDoNothing() {
    QFETCH(QString, title);
    const PickedBox program;
    program.detail().selectedAction(title);
    QCOMPARE(program.environment.alerts.count(), 0);
    QCOMPARE(program.detail().overlay(), nullptr);
    QVERIFY(program.mail->drafts().empty());
    QVERIFY(!program.environment.busy.isActive());
  }

  void sendEmailComposesAnEmail() {
    const PickedBox program;
    program.chooseAction(1);
    QCOMPARE(program.mail->drafts().size(), 1U);
    QCOMPARE(program.environment.alerts.count(), 0);
    QCOMPARE(program.detail().overlay(), nullptr);
  }

  void theMailedDeliveryIsThatOfTheFirstLine() {
    const PickedBox program;
    program.restartPickingAs(QStringLiteral("the pane's"));
    program.chooseAction(1);
    QCOMPARE(program.mail->drafts().size(), 1U);
    QCOMPARE(program.mail->drafts().front().subject, "Vardex File 4711");
  }

  void viewSummaryShowsTheSummaryOverThePane() {
    const PickedBox program;
    QSignalSpy flips(&program.detail(), &ViewController::flipped);
    program.chooseAction(0);
    const deliveryDetailsViewController *summary = program.detail().deliveryDetailsVC();
    QVERIFY(summary != nullptr);
    QCOMPARE(program.detail().overlay(), summary);
    QCOMPARE(program.detail().presentedViewController(), nullptr);
    QCOMPARE(summary->arrayItems().get(), program.detail().arrayItems().get());
    QVERIFY(summary->frame().isEmpty());
    QCOMPARE(summary->lblDelivery->text(), "Summary for Delivery: 4711");
    QCOMPARE(textsOf({summary->txtQtyPicked, summary->txtQtyOrder, summary->txtQtyDiff}),
             QStringList({"3", "7", "-4"}));
    QCOMPARE(flipsOf(flips), QStringList(kIn));
  }

  void viewingTheSummaryAgainFlipsItOutAndInWithTheCurrentLines() {
    const PickedBox program;
    program.detail().selectedAction(kViewSummary);
    const deliveryDetailsViewController *summary = program.detail().deliveryDetailsVC();
    const auto lines = std::make_shared<ItemLines>();
    lines->push_back({.doc = QStringLiteral("0815"), .orderqty = 9});
    program.session().setArrayItems(lines);
    QSignalSpy flips(&program.detail(), &ViewController::flipped);
    program.detail().selectedAction(kViewSummary);
    QCOMPARE(program.detail().deliveryDetailsVC(), summary);
    QCOMPARE(program.detail().overlay(), summary);
    QCOMPARE(summary->lblDelivery->text(), "Summary for Delivery: 0815");
    QCOMPARE(flipsOf(flips), QStringList({kOut, kIn}));
    program.detail().deliveryDetailsVC()->btnCloseTouched();
    QCOMPARE(program.detail().overlay(), nullptr);
  }

  void aClosedSummaryIsReplacedByANewOne() {
    const PickedBox program;
    program.detail().selectedAction(kViewSummary);
    const QPointer<deliveryDetailsViewController> first = program.detail().deliveryDetailsVC();
    first->btnCloseTouched();
    QCOMPARE(program.detail().deliveryDetailsVC(), first.data());
    program.detail().selectedAction(kViewSummary);
    QVERIFY(program.detail().deliveryDetailsVC() != first.data());
    QCOMPARE(program.detail().overlay(), program.detail().deliveryDetailsVC());
    QTRY_VERIFY(first.isNull());
  }

  void withoutItemLinesTheSummaryIsEmpty() {
    TestProgram program;
    program.enterPicking();
    program.detail().selectedAction(kViewSummary);
    const deliveryDetailsViewController *summary = program.detail().deliveryDetailsVC();
    QCOMPARE(program.detail().overlay(), summary);
    QCOMPARE(summary->tblPicking->rowCount(), 0);
  }

  void theActionListHasTheTitlesOfTheThreeActions() {
    const PickedBox program;
    QCOMPARE(program.detail().actionPicker()->actionNames(),
             QStringList({kViewSummary, kSendEmail, kCompleteAndSend}));
  }
};

CARTONPICK_TEST(detailViewControllerActionsTest);
#include "detailViewControllerActions_test.moc"
