#include "picking/changeQuantityViewController.h"

#include "base/Int32.h"
#include "picking/PickingAlerts.h"
#include "view/Environment.h"

#include <QPointer>

#include <algorithm>
#include <array>

namespace {

constexpr qsizetype kMaxTypedLength = 4;
constexpr qsizetype kMaxDigits = 5;
constexpr double kDigitBorder = 3.0;
constexpr double kMinusBorder = 1.0;

qsizetype digitsIn(const QString &text) {
  return std::count_if(text.begin(), text.end(), [](QChar c) { return c >= u'0' && c <= u'9'; });
}

}  // namespace

changeQuantityViewController::changeQuantityViewController(Environment &environment,
                                                           QObject *parent)
    : ViewController(QStringLiteral("changeQuantityViewController"), environment, parent) {}

void changeQuantityViewController::viewDidLoad() {
  txtNewQty->setDelegate(this);
  txtNewQty->setTakesScans(false);
  txtNewQty->becomeFirstResponder();
  connect(txtNewQty, &TextField::editingChanged, this,
          &changeQuantityViewController::textFieldDidChange);
  const std::array digits{btn0, btn1, btn2, btn3, btn4, btn5, btn6, btn7, btn8, btn9};
  for (std::size_t digit = 0; digit < digits.size(); ++digit) {
    digits.at(digit)->setTitle(QString::number(digit));
    digits.at(digit)->setBorderWidth(kDigitBorder);
  }
  btnNegative->setTitle(QStringLiteral("Minus"));
  btnNegative->setBorderWidth(kMinusBorder);
  btnDelete->setTitle(QStringLiteral("Delete"));
  btnDelete->setBorderWidth(kMinusBorder);
  btnDelete->setEnabled(environment().rules.guardsQuantities);
}

void changeQuantityViewController::setDisplayValues(const QString &itemCode, const QString &barcode,
                                                    const QString &descr, const QString &qty,
                                                    const QString &orderqty) {
  lblItemCode->setText(itemCode);
  lblItemBarcode->setText(barcode);
  lblItemDescription->setText(descr);
  lblCurrentQty->setText(qty);
  txtNewQty->setText(QString());
  lblTotalQty->setText(qty);
  lblOrderQty->setText(orderqty);
}

void changeQuantityViewController::btnNumTouched(Button *key) {
  const QString entry = txtNewQty->text() + key->title();
  if (isShortEnough(entry)) {
    txtNewQty->setText(entry);
    textFieldDidChange();
  }
}

void changeQuantityViewController::btnNegativeTouched() {
  if (txtNewQty->text().contains(u'-')) {
    return;
  }
  txtNewQty->setText(u'-' + txtNewQty->text());
  textFieldDidChange();
}

void changeQuantityViewController::btnDeleteTouched() {
  txtNewQty->setText(txtNewQty->text().chopped(std::min<qsizetype>(1, txtNewQty->text().size())));
  textFieldDidChange();
}

bool changeQuantityViewController::isShortEnough(const QString &entry) const {
  return !environment().rules.guardsQuantities || digitsIn(entry) <= kMaxDigits;
}

void changeQuantityViewController::textFieldDidChange() {
  const std::int32_t total =
      wrappingAdd(intValue(lblCurrentQty->text()), intValue(txtNewQty->text()));
  lblTotalQty->setText(QString::number(total));
}

bool changeQuantityViewController::shouldChangeCharactersInRange(const TextField &field,
                                                                 qsizetype location,
                                                                 qsizetype length,
                                                                 const QString &replacement) {
  if (location + length > field.text().size()) {
    return false;
  }
  const QString entry = QString(field.text()).replace(location, length, replacement);
  return environment().rules.guardsQuantities
             ? digitsIn(replacement) == replacement.size() && isShortEnough(entry)
             : digitsIn(replacement) > 0 && entry.size() <= kMaxTypedLength;
}

void changeQuantityViewController::btnOKTouched() {
  const std::int32_t current = intValue(lblCurrentQty->text());
  const std::int32_t added = intValue(txtNewQty->text());
  const std::int32_t total = wrappingAdd(current, added);
  const std::int32_t ordered = intValue(lblOrderQty->text());
  if (environment().rules.guardsQuantities && added > 0 && total > ordered) {
    environment().alerts.show(
        moreThanOrderedQuestion(total, ordered, [self = QPointer(this), current, added] {
          if (!self.isNull()) {
            self->book(current, added);
          }
        }));
  } else {
    book(current, added);
  }
}

void changeQuantityViewController::book(std::int32_t current, std::int32_t added) {
  if (wrappingAdd(current, added) >= 1 && m_delegate) {
    m_delegate->CloseViewControllerWithGetQtyAtRow(m_row, current, added);
  }
  dismissViewController();
}

void changeQuantityViewController::btnCancelTouched() {
  dismissViewController();
}
