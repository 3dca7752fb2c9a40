#pragma once

#include "base/WeakDelegate.h"
#include "picking/ChangeQuantityDelegate.h"
#include "view/ViewController.h"
#include "view/outlets/Button.h"
#include "view/outlets/Label.h"
#include "view/outlets/TextField.h"

/// The keypad: takes a quantity to add to, or subtract from, the picked quantity of a line.
class changeQuantityViewController : public ViewController, public TextFieldDelegate {
  Q_OBJECT
  QML_NAMED_ELEMENT(ChangeQuantityViewController)
  QML_UNCREATABLE("Controllers come from the storyboard")
  OUTLET(TextField, txtNewQty)
  OUTLET(Label, lblItemCode)
  OUTLET(Label, lblItemBarcode)
  OUTLET(Label, lblItemDescription)
  OUTLET(Label, lblCurrentQty)
  OUTLET(Label, lblTotalQty)
  OUTLET(Label, lblOrderQty)
  OUTLET(Button, btn0)
  OUTLET(Button, btn1)
  OUTLET(Button, btn2)
  OUTLET(Button, btn3)
  OUTLET(Button, btn4)
  OUTLET(Button, btn5)
  OUTLET(Button, btn6)
  OUTLET(Button, btn7)
  OUTLET(Button, btn8)
  OUTLET(Button, btn9)
  OUTLET(Button, btnNegative)
  OUTLET(Button, btnDelete)

 public:
  explicit changeQuantityViewController(Environment &environment, QObject *parent = nullptr);

  void viewDidLoad() override;

  /// Sets the strings to show, all unchanged, and clears the typed quantity. The total is initially
  /// `qty`.
  void setDisplayValues(const QString &itemCode, const QString &barcode, const QString &descr,
                        const QString &qty, const QString &orderqty);
  void setDelegate(WeakDelegate<ChangeQuantityDelegate> delegate) { m_delegate = delegate; }

  /// The row of the pick table that the keypad was opened for.
  [[nodiscard]] std::int32_t row() const { return m_row; }
  void setRow(std::int32_t row) { m_row = row; }

  Q_INVOKABLE void btnNumTouched(Button *key);
  Q_INVOKABLE void btnNegativeTouched();
  /// Deletes the last character of the entry.
  Q_INVOKABLE void btnDeleteTouched();
  Q_INVOKABLE void btnOKTouched();
  Q_INVOKABLE void btnCancelTouched();
  Q_INVOKABLE void stepperValueChanged() {}

  void textFieldDidChange();
  void textFieldDidBeginEditing(TextField & /*field*/) {}
  /// Ignores the Return key: the one that ends a scanned code must not confirm the quantity.
  bool textFieldShouldReturn(TextField & /*field*/) override { return true; }
  /// Accepts an edit that inserts at least one digit and results in at most four characters. This
  /// excludes deleting; the user replaces or cancels a wrong entry. If the rules guard quantities,
  /// it accepts an edit that deletes or inserts only digits and results in at most five digits.
  bool shouldChangeCharactersInRange(const TextField &field, qsizetype location, qsizetype length,
                                     const QString &replacement) override;

 private:
  /// Returns true if the rules allow the entry `entry`.
  [[nodiscard]] bool isShortEnough(const QString &entry) const;
  /// Reports the quantity if the total is at least 1, and closes the keypad.
  void book(std::int32_t current, std::int32_t added);

  std::int32_t m_row = 0;
  WeakDelegate<ChangeQuantityDelegate> m_delegate;
};
