#include "view/outlets/EditValidator.h"

#include "support/TestClass.h"

#include <QTest>

namespace {

/// Accepts text of at most two characters.
class AtMostTwo : public QObject, public TextFieldDelegate {
 public:
  bool textFieldShouldReturn(TextField & /*field*/) override { return true; }
  bool shouldChangeCharactersInRange(const TextField &field, qsizetype /*location*/,
                                     qsizetype length, const QString &replacement) override {
    return field.text().size() - length + replacement.size() <= 2;
  }
};

QValidator::State stateOf(const EditValidator &validator, QString text) {
  int position = 0;
  return validator.validate(text, position);
}

}  // namespace

class EditValidatorTest : public QObject {
  Q_OBJECT

 private slots:
  void withoutAnOutletEveryTextIsAccepted() {
    const EditValidator validator;
    QCOMPARE(stateOf(validator, QStringLiteral("anything")), QValidator::Acceptable);
  }

  void theFieldsDelegateDecides() {
    AtMostTwo delegate;
    TextField field("txtNewQty", nullptr);
    field.setDelegate(&delegate);
    field.setText(QStringLiteral("1"));
    EditValidator validator;
    validator.setProperty("outlet", QVariant::fromValue(&field));
    QCOMPARE(stateOf(validator, QStringLiteral("12")), QValidator::Acceptable);
    QCOMPARE(stateOf(validator, QStringLiteral("123")), QValidator::Invalid);
    QCOMPARE(stateOf(validator, QString()), QValidator::Acceptable);
  }

  void theSelectionBeforeTheEditIsUsed() {
    class OnlyWholeText : public AtMostTwo {
     public:
      bool shouldChangeCharactersInRange(const TextField &field, qsizetype /*location*/,
                                         qsizetype length,
                                         const QString & /*replacement*/) override {
        return length == field.text().size();
      }
    };
    OnlyWholeText delegate;
    TextField field("txtNewQty", nullptr);
    field.setDelegate(&delegate);
    field.setText(QStringLiteral("12"));
    EditValidator validator;
    validator.setProperty("outlet", QVariant::fromValue(&field));
    QCOMPARE(stateOf(validator, QStringLiteral("1")), QValidator::Invalid);
    validator.setProperty("selectionStart", 0);
    validator.setProperty("selectionEnd", 2);
    QCOMPARE(stateOf(validator, QStringLiteral("1")), QValidator::Acceptable);
  }
};

CARTONPICK_TEST(EditValidatorTest);
#include "EditValidator_test.moc"
