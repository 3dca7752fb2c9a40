#include "picking/changeQuantityViewController.h"

#include "base/Int32.h"

#include <algorithm>
#include <array>

namespace {

constexpr qsizetype kMaxTypedLength = 4;
constexpr double kDigitBorder = 3.0;
constexpr double kMinusBorder = 1.0;

bool hasDigit(const QString &text) {
  return std::any_of(text.begin(), text.end(), [](QChar c) { return c >= u'0' && c <= u'9'; });
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
  txtNewQty->setText(txtNewQty->text() + key->title());
  textFieldDidChange();
}

void changeQuantityViewController::btnNegativeTouched() {
  if (txtNewQty->text().contains(u'-')) {
    return;
  }
  txtNewQty->setText(u'-' + txtNewQty->text());
  textFieldDidChange();
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
  const qsizetype before = field.text().size();
  return location + length <= before && hasDigit(replacement) &&
         before - length + replacement.size() <= kMaxTypedLength;
}

void changeQuantityViewController::btnOKTouched() {
  const std::int32_t current = intValue(lblCurrentQty->text());
  const std::int32_t added = intValue(txtNewQty->text());
  if (wrappingAdd(current, added) >= 1 && m_delegate) {
    m_delegate->CloseViewControllerWithGetQtyAtRow(m_row, current, added);
  }
  dismissViewController();
}

void changeQuantityViewController::btnCancelTouched() {
  dismissViewController();
}
