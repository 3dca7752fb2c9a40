#include "picking/actionPickerViewController.h"

#include "support/TestClass.h"
#include "support/TestEnvironment.h"

#include <QTest>

#include <memory>

namespace {

/// Presents the list and records the chosen actions.
class Opener : public ViewController, public ActionPickerDelegate {
 public:
  explicit Opener(Environment &environment) : ViewController({}, environment) {}

  void selectedAction(const QString &title) override {
    chosen << title;
    wasOpenAtChoice = presentedViewController() != nullptr;
  }

  QStringList chosen;
  bool wasOpenAtChoice = false;
};

class OpenList : public TestEnvironment {
 public:
  OpenList() : opener(environment), list(environment) {
    list.keepAfterDismissal();
    list.setDelegate(&opener);
    opener.presentViewController(&list, ViewController::PresentationStyle::Popover);
  }

  /// Returns the titles in the table.
  [[nodiscard]] QStringList rows() const {
    QStringList rows;
    for (int row = 0; row < list.tableView->rowCount(); ++row) {
      rows << list.tableView->data(list.tableView->index(row), TableView::CellRole).toString();
    }
    return rows;
  }

  Opener opener;
  actionPickerViewController list;
};

}  // namespace

class actionPickerViewControllerTest : public QObject {
  Q_OBJECT

 private slots:
  void listsTheThreeActions() {
    const OpenList open;
    const QStringList titles{"View Summary", "Send Email", "Complete and Send"};
    QCOMPARE(open.list.actionNames(), titles);
    QCOMPARE(open.rows(), titles);
  }

  void hasOneSection() {
    OpenList open;
    QCOMPARE(open.list.numberOfSectionsInTableView(*open.list.tableView), 1);
    QCOMPARE(open.list.numberOfRowsInSection(*open.list.tableView, 0), 3);
  }

  void hasAPreferredSize() {
    const OpenList open;
    QCOMPARE(open.list.preferredContentSize(), QSizeF(200, 135));
  }

  void aTouchNotifiesTheDelegateAndThenClosesTheList_data() {
    QTest::addColumn<int>("row");
    QTest::addColumn<QString>("title");
    QTest::newRow("first") << 0 << QStringLiteral("View Summary");
    QTest::newRow("second") << 1 << QStringLiteral("Send Email");
    QTest::newRow("third") << 2 << QStringLiteral("Complete and Send");
  }
  void aTouchNotifiesTheDelegateAndThenClosesTheList() {
    QFETCH(int, row);
    const OpenList open;
    open.list.tableView->touchRow(row);
    QTEST(open.opener.chosen.join(u'+'), "title");
    QVERIFY(open.opener.wasOpenAtChoice);
    QCOMPARE(open.opener.presentedViewController(), nullptr);
  }

  void withoutADelegateATouchOnlyClosesTheList() {
    OpenList open;
    auto delegate = std::make_unique<Opener>(open.environment);
    open.list.setDelegate(delegate.get());
    delegate.reset();
    open.list.tableView->touchRow(0);
    QVERIFY(open.opener.chosen.isEmpty());
    QCOMPARE(open.opener.presentedViewController(), nullptr);
  }

  void otherActionsCanBeListed() {
    OpenList open;
    open.list.setActionNames({QStringLiteral("One")});
    QCOMPARE(open.rows(), QStringList("One"));
    open.list.tableView->touchRow(0);
    QCOMPARE(open.opener.chosen, QStringList("One"));
  }
};

CARTONPICK_TEST(actionPickerViewControllerTest);
#include "actionPickerViewController_test.moc"
