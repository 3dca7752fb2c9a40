#include "store/ManagedObjectModel.h"

#include "support/TestClass.h"

#include <QTest>

#include <algorithm>

namespace {

/// Returns the attributes of entity `name` as "name TYPE", in alphabetical order.
QStringList attributesOf(const ManagedObjectModel &model, const QString &name) {
  QStringList attributes;
  for (const auto &entity : model.entities()) {
    if (entity.name == name) {
      for (const auto &attribute : entity.attributes) {
        attributes.append(attribute.name + u' ' + attribute.type);
      }
    }
  }
  attributes.sort();
  return attributes;
}

}  // namespace

class ManagedObjectModelTest : public QObject {
  Q_OBJECT

 private slots:
  void theBundledModelHasThreeEntities() {
    const ManagedObjectModel model(ManagedObjectModel::bundledUrl());
    QVERIFY(model.version() >= 1);
    QCOMPARE(model.entities().size(), 3U);
    QCOMPARE(attributesOf(model, QStringLiteral("Picking")).join(u", "),
             "barcode TEXT, box TEXT, datepicked INTEGER, descr TEXT, doc TEXT, item TEXT, "
             "ordernum TEXT, orderqty INTEGER, pickqty INTEGER, sent INTEGER");
    QCOMPARE(attributesOf(model, QStringLiteral("Orders")),
             attributesOf(model, QStringLiteral("Picking")));
    QCOMPARE(attributesOf(model, QStringLiteral("Items")).join(u", "),
             "barcode TEXT, descr TEXT, item TEXT");
  }

  void everyIndexUsesAttributesOfItsEntity() {
    const ManagedObjectModel model(ManagedObjectModel::bundledUrl());
    int columns = 0;
    for (const auto &entity : model.entities()) {
      for (const QStringList &index : entity.indexes) {
        for (const QString &column : index) {
          ++columns;
          QVERIFY2(std::any_of(entity.attributes.begin(), entity.attributes.end(),
                               [&](const auto &attribute) { return attribute.name == column; }),
                   qPrintable(entity.name + u'.' + column));
        }
      }
    }
    QVERIFY(columns > 0);
  }

  void aMissingResourceGivesAnEmptyModel() {
    const ManagedObjectModel model(QStringLiteral(":/nothing.momd"));
    QCOMPARE(model.version(), 0);
    QVERIFY(model.entities().empty());
  }
};

CARTONPICK_TEST(ManagedObjectModelTest);
#include "ManagedObjectModel_test.moc"
