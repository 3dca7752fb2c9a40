#include "view/Storyboard.h"

#include "support/TestClass.h"
#include "support/TestEnvironment.h"

#include <QTest>

#include <memory>

namespace {

Storyboard::Scene sceneOf(const QString &identifier) {
  return [identifier](Environment &environment, QObject *owner) {
    return new ViewController(identifier, environment, owner);
  };
}

}  // namespace

class StoryboardTest : public QObject {
  Q_OBJECT

 private slots:
  void everyInstantiationCreatesANewControllerForItsOwner() {
    TestEnvironment test;
    Storyboard storyboard;
    storyboard.addScene(QStringLiteral("history"), sceneOf(QStringLiteral("history")));
    QObject owner;
    auto *first =
        storyboard.instantiateViewController(QStringLiteral("history"), test.environment, &owner);
    auto *second =
        storyboard.instantiateViewController(QStringLiteral("history"), test.environment, &owner);
    QVERIFY(first != nullptr);
    QVERIFY(first != second);
    QCOMPARE(first->identifier(), "history");
    QCOMPARE(first->parent(), &owner);
  }

  void anUnknownSceneReturnsNull() {
    TestEnvironment test;
    const Storyboard storyboard;
    QCOMPARE(storyboard.instantiateViewController(QStringLiteral("x"), test.environment, nullptr),
             nullptr);
  }

  void aSegueHasItsDestinationScene() {
    Storyboard storyboard;
    storyboard.addSegue(QStringLiteral("segueHistory"), QStringLiteral("history"));
    QCOMPARE(storyboard.destinationOfSegue(QStringLiteral("segueHistory")), "history");
    QVERIFY(!storyboard.isReturnSegue(QStringLiteral("segueHistory")));
  }

  void aReturnSegueHasNoDestinationScene() {
    Storyboard storyboard;
    storyboard.addReturnSegue(QStringLiteral("back"));
    QVERIFY(storyboard.isReturnSegue(QStringLiteral("back")));
    QCOMPARE(storyboard.destinationOfSegue(QStringLiteral("back")), QString());
  }

  void anUnknownSegueHasNoDestination() {
    const Storyboard storyboard;
    QVERIFY(!storyboard.isReturnSegue(QStringLiteral("x")));
    QCOMPARE(storyboard.destinationOfSegue(QStringLiteral("x")), QString());
  }
};

CARTONPICK_TEST(StoryboardTest);
#include "Storyboard_test.moc"
