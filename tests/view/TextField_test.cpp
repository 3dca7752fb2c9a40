#include "view/outlets/TextField.h"

#include "support/TestClass.h"

#include <QSignalSpy>
#include <QTest>

#include <memory>

namespace {

/// Records the last edit, and accepts or refuses all edits.
class RecordingDelegate : public QObject, public TextFieldDelegate {
 public:
  bool textFieldShouldReturn(TextField &field) override {
    m_returned.append(field.text());
    return true;
  }
  bool shouldChangeCharactersInRange(const TextField & /*field*/, qsizetype location,
                                     qsizetype length, const QString &replacement) override {
    m_edit = QStringLiteral("%1+%2:%3")
                 .arg(QString::number(location), QString::number(length), replacement);
    return m_accepts;
  }

  void setAccepts(bool accepts) { m_accepts = accepts; }
  /// Returns the last edit as "location+length:replacement"; empty before the first edit.
  [[nodiscard]] QString edit() const { return m_edit; }
  [[nodiscard]] const QStringList &returned() const { return m_returned; }

 private:
  bool m_accepts = true;
  QString m_edit;
  QStringList m_returned;
};

}  // namespace

class TextFieldTest : public QObject {
  Q_OBJECT

 private slots:
  void anEditIsDescribedAsARange_data() {
    QTest::addColumn<QString>("before");
    QTest::addColumn<QString>("after");
    QTest::addColumn<int>("selectionStart");
    QTest::addColumn<int>("selectionEnd");
    QTest::addColumn<QString>("edit");
    QTest::newRow("first character") << ""
                                     << "1" << 0 << 0 << "0+0:1";
    QTest::newRow("appended") << "12"
                              << "123" << 2 << 2 << "2+0:3";
    QTest::newRow("inserted at the start") << "12"
                                           << "312" << 0 << 0 << "0+0:3";
    QTest::newRow("inserted in the middle") << "12"
                                            << "132" << 1 << 1 << "1+0:3";
    QTest::newRow("pasted") << "12"
                            << "1abc2" << 1 << 1 << "1+0:abc";
    QTest::newRow("backspace") << "123"
                               << "12" << 3 << 3 << "2+1:";
    QTest::newRow("deleted at the start") << "123"
                                          << "23" << 0 << 0 << "0+1:";
    QTest::newRow("deleted all") << "123"
                                 << "" << 0 << 3 << "0+3:";
    QTest::newRow("deleted selection") << "1234"
                                       << "14" << 1 << 3 << "1+2:";
    QTest::newRow("selection replaced") << "1234"
                                        << "1ab4" << 1 << 3 << "1+2:ab";
    QTest::newRow("all replaced by another text") << "12"
                                                  << "9" << 0 << 2 << "0+2:9";
    QTest::newRow("all replaced by its first character") << "12"
                                                         << "1" << 0 << 2 << "0+2:1";
    QTest::newRow("all replaced by its last character") << "12"
                                                        << "2" << 0 << 2 << "0+2:2";
    QTest::newRow("selection replaced by a longer text") << "12"
                                                         << "1xyz" << 1 << 2 << "1+1:xyz";
    QTest::newRow("pasted over all") << "12"
                                     << "1234" << 0 << 2 << "0+2:1234";
    QTest::newRow("edit away from the selection") << "123"
                                                  << "23" << 1 << 2 << "0+1:";
    QTest::newRow("repeated digit") << "11"
                                    << "111" << 1 << 1 << "2+0:1";
  }
  void anEditIsDescribedAsARange() {
    QFETCH(const QString, before);
    QFETCH(const QString, after);
    QFETCH(const int, selectionStart);
    QFETCH(const int, selectionEnd);
    QFETCH(const QString, edit);
    RecordingDelegate delegate;
    TextField field("txtNewQty", nullptr);
    field.setDelegate(&delegate);
    field.setText(before);
    QVERIFY(field.acceptsEdit(after, selectionStart, selectionEnd));
    QCOMPARE(delegate.edit(), edit);
    delegate.setAccepts(false);
    QVERIFY(!field.acceptsEdit(after, selectionStart, selectionEnd));
  }

  void theDelegateIsNotAskedAboutAnUnchangedText() {
    RecordingDelegate delegate;
    delegate.setAccepts(false);
    TextField field("txtNewQty", nullptr);
    field.setDelegate(&delegate);
    field.setText(QStringLiteral("12"));
    QVERIFY(field.acceptsEdit(QStringLiteral("12"), 0, 0));
    QCOMPARE(delegate.edit(), QString());
  }

  void aSelectionBeyondTheTextIsIgnored() {
    RecordingDelegate delegate;
    TextField field("txtNewQty", nullptr);
    field.setDelegate(&delegate);
    field.setText(QStringLiteral("12"));
    QVERIFY(field.acceptsEdit(QStringLiteral("1"), 1, 5));
    QCOMPARE(delegate.edit(), "1+1:");
  }

  void aFieldWithoutADelegateAcceptsEverything() {
    auto delegate = std::make_unique<RecordingDelegate>();
    delegate->setAccepts(false);
    TextField field("txtNewQty", nullptr);
    QVERIFY(field.acceptsEdit(QStringLiteral("1"), 0, 0));
    field.setDelegate(delegate.get());
    QVERIFY(!field.acceptsEdit(QStringLiteral("1"), 0, 0));
    delegate.reset();
    QVERIFY(field.acceptsEdit(QStringLiteral("1"), 0, 0));
  }

  void anEditChangesTheTextAndSignalsIt() {
    TextField field("txtBox", nullptr);
    const QSignalSpy changed(&field, &TextField::changed);
    const QSignalSpy edited(&field, &TextField::editingChanged);
    field.edit(QStringLiteral("C1"));
    QCOMPARE(field.text(), "C1");
    QCOMPARE(changed.size(), 1);
    QCOMPARE(edited.size(), 1);
  }

  void settingTheTextIsNotAnEdit() {
    TextField field("txtBox", nullptr);
    const QSignalSpy edited(&field, &TextField::editingChanged);
    field.setText(QStringLiteral("C1"));
    QCOMPARE(field.text(), "C1");
    QCOMPARE(edited.size(), 0);
  }

  void theReturnKeyGoesToTheDelegate() {
    RecordingDelegate delegate;
    TextField field("txtBox", nullptr);
    field.pressReturn();
    field.setDelegate(&delegate);
    field.setText(QStringLiteral("C1"));
    field.pressReturn();
    QCOMPARE(delegate.returned(), QStringList(QStringLiteral("C1")));
  }

  void becomingAndResigningFirstResponderIsSignalled() {
    TextField field("txtBox", nullptr);
    const QSignalSpy requested(&field, &TextField::keyboardRequested);
    const QSignalSpy resigned(&field, &TextField::keyboardResigned);
    field.becomeFirstResponder();
    QVERIFY(field.isFirstResponder());
    QCOMPARE(requested.size(), 1);
    field.resignFirstResponder();
    QVERIFY(!field.isFirstResponder());
    QCOMPARE(resigned.size(), 1);
  }

  void aRepeatedKeyboardRequestIsSignalledAgain() {
    TextField field("txtBox", nullptr);
    const QSignalSpy requested(&field, &TextField::keyboardRequested);
    field.becomeFirstResponder();
    field.becomeFirstResponder();
    QCOMPARE(requested.size(), 2);
  }

  void aFirstResponderSetByTheScreenRequestsNoKeyboard() {
    TextField field("txtBox", nullptr);
    const QSignalSpy changed(&field, &TextField::changed);
    const QSignalSpy requested(&field, &TextField::keyboardRequested);
    QVERIFY(field.setProperty("firstResponder", true));
    QVERIFY(field.isFirstResponder());
    QCOMPARE(changed.size(), 1);
    QCOMPARE(requested.size(), 0);
  }

  void disablingIsSignalled() {
    TextField field("txtBox", nullptr);
    const QSignalSpy changed(&field, &TextField::changed);
    QVERIFY(field.isEnabled());
    field.setEnabled(false);
    QCOMPARE(field.property("enabled"), false);
    QCOMPARE(changed.size(), 1);
  }
};

CARTONPICK_TEST(TextFieldTest);
#include "TextField_test.moc"
