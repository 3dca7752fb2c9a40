#include "support/TestProgram.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTest>

QByteArray deliveryJson(const QList<TestLine> &lines) {
  QJsonArray elements;
  for (const TestLine &line : lines) {
    elements.append(QJsonObject{
        {QStringLiteral("cusname"), QStringLiteral("Corner Shop")},
        {QStringLiteral("brand"), QStringLiteral("Hearth")},
        {QStringLiteral("cdate"), QStringLiteral("03/25/2026")},
        {QStringLiteral("date"), QStringLiteral("04/01/2026")},
        {QStringLiteral("doc"), line.doc},
        {QStringLiteral("ordernum"), line.ordernum},
        {QStringLiteral("item"), line.item},
        {QStringLiteral("barcode"), line.barcode.isNull() ? u'b' + line.item : line.barcode},
        {QStringLiteral("descr"), QStringLiteral("Description of ") + line.item},
        {QStringLiteral("qty"), line.qty},
        {QStringLiteral("carton"), line.carton}});
  }
  return QJsonDocument(elements).toJson(QJsonDocument::Compact);
}

TestProgram::TestProgram(const PickingRules &rules)
    : TestEnvironment(rules), delegate(environment) {
  environment.serviceHost = service.host();
  delegate.didFinishLaunchingWithOptions();
}

startViewController &TestProgram::start() const {
  return *qobject_cast<startViewController *>(delegate.window()->rootViewController());
}

void TestProgram::enterPicking() {
  start().performSegueWithIdentifier(QStringLiteral("segueToSplitView"));
}

splitViewController &TestProgram::split() const {
  return *qobject_cast<splitViewController *>(start().presentedViewController());
}

masterViewController &TestProgram::master() const {
  return *qobject_cast<masterViewController *>(split().master());
}

detailViewController &TestProgram::detail() const {
  return *qobject_cast<detailViewController *>(split().detail());
}

PickingSession &TestProgram::session() const {
  return *split().findChild<PickingSession *>();
}

void TestProgram::restartPickingAs(const QString &doc) const {
  session().setJsonResult(JsonResult{doc});
  session().start();
  session().openBox(0);
}

changeQuantityViewController *TestProgram::keypad() const {
  return qobject_cast<changeQuantityViewController *>(detail().presentedViewController());
}

void TestProgram::lookUp(const QString &number) {
  master().txtDeliveryNo->edit(number);
  master().btnSearchOrderNoTouched();
  QTRY_VERIFY(!master().activityIndicator->isAnimating());
}

void TestProgram::startPicking(const QList<TestLine> &lines) {
  service.answerWith(deliveryJson(lines));
  lookUp(lines.front().doc);
  master().btnPickingTouched();
}

void TestProgram::enterQuantity(int row, const QString &quantity) {
  detail().tblItems->touchRow(row);
  keypad()->txtNewQty->edit(quantity);
  keypad()->btnOKTouched();
}

void TestProgram::scan(const QString &code) {
  detail().txtBarcode->edit(code);
  detail().txtBarcode->pressReturn();
}
