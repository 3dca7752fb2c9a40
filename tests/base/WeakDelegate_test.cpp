#include "base/WeakDelegate.h"

#include "support/TestClass.h"

#include <QTest>

#include <memory>

namespace {

class Protocol {
 public:
  virtual ~Protocol() = default;
  [[nodiscard]] virtual int answer() const = 0;
};

class Adopter : public QObject, public Protocol {
 public:
  [[nodiscard]] int answer() const override { return 42; }
};

}  // namespace

class WeakDelegateTest : public QObject {
  Q_OBJECT

 private slots:
  void aNewDelegateIsNull() {
    const WeakDelegate<Protocol> delegate;
    QVERIFY(!delegate);
    QCOMPARE(delegate.get(), nullptr);
  }

  void aDelegateReachesItsAdopter() {
    Adopter adopter;
    const WeakDelegate<Protocol> delegate(&adopter);
    QVERIFY(static_cast<bool>(delegate));
    QCOMPARE(delegate->answer(), 42);
    QCOMPARE(delegate.get(), &adopter);
  }

  void aDelegateIsNullAfterItsAdopterIsDestroyed() {
    auto adopter = std::make_unique<Adopter>();
    const WeakDelegate<Protocol> delegate(adopter.get());
    WeakDelegate<Protocol> copy;
    copy = delegate;
    adopter.reset();
    QVERIFY(!delegate);
    QVERIFY(!copy);
    QCOMPARE(delegate.get(), nullptr);
  }
};

CARTONPICK_TEST(WeakDelegateTest);
#include "WeakDelegate_test.moc"
