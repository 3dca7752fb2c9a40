// Sends arbitrary touches, keys, pastes and selections to the keypad: its total must always be the
// sum of what it shows, nothing must be booked before OK, and OK must book that sum.

#include "FuzzInput.h"
#include "Property.h"
#include "base/Int32.h"
#include "delivery/Quantity.h"
#include "picking/changeQuantityViewController.h"
#include "view/Environment.h"
#include "view/outlets/EditValidator.h"

#include <QRegularExpression>

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <optional>

namespace {

struct Booking {
  std::int32_t row = 0;
  std::int32_t currentQty = 0;
  std::int32_t addQty = 0;
};

class BookingRecorder : public QObject, public ChangeQuantityDelegate {
 public:
  void CloseViewControllerWithGetQtyAtRow(std::int32_t row, std::int32_t currentQty,
                                          std::int32_t addQty) override {
    require(!last, "OK books once");
    last = Booking{row, currentQty, addQty};
  }

  std::optional<Booking> last;
};

QString textOf(FuzzInput &input) {
  static const std::array<QString, 14> kPieces = {
      QStringLiteral("0"),     QStringLiteral("9"),          QStringLiteral("12"),
      QStringLiteral("-"),     QStringLiteral("+"),          QStringLiteral(" "),
      QStringLiteral("2.5"),   QStringLiteral("2147483647"), QStringLiteral("a"),
      QStringLiteral("٣"),     QStringLiteral("\u00A0"),     QStringLiteral("😀"),
      QStringLiteral("99999"), QStringLiteral("-2147483648")};
  QString text;
  for (std::size_t count = input.below(4); count > 0; --count) {
    text += input.oneOf(kPieces);
  }
  return text;
}

bool isDigit(QChar c) {
  return c >= u'0' && c <= u'9';
}

bool hasDigit(const QString &text) {
  return std::any_of(text.begin(), text.end(), isDigit);
}

/// The number at the start of `text`, computed differently from the program.
std::int32_t numberOf(const QString &text) {
  using Limits = std::numeric_limits<std::int32_t>;
  qsizetype begin = 0;
  while (begin < text.size() && text[begin].isSpace()) {
    ++begin;
  }
  static const QRegularExpression kNumber(QStringLiteral("^[+-]?[0-9]+"));
  const double value = kNumber.match(text.mid(begin)).captured().toDouble();
  return static_cast<std::int32_t>(std::clamp<double>(value, Limits::min(), Limits::max()));
}

void checkNumbers(const QString &text) {
  require(intValue(text) == numberOf(text), "the value of a text is the number at its start");
  const Quantity quantity = Quantity::delivered(text);
  require(quantity.value() == intValue(text), "the value of a quantity is that of its text");
  require(quantity.text() == text || (text.isNull() && quantity.text() == u"0"),
          "a quantity keeps its text");
  require(intValue(QString::number(quantity.value())) == quantity.value(),
          "a number survives the conversion to text and back");
}

/// Replaces a selection in the field, possibly empty, with a string.
void edit(changeQuantityViewController &keypad, FuzzInput &input) {
  constexpr qsizetype kMaxLength = 4;
  TextField &field = *keypad.txtNewQty;
  const QString before = field.text();
  const auto length = static_cast<std::size_t>(std::min<qsizetype>(before.size(), 1000));
  const auto start = static_cast<qsizetype>(input.below(length + 1));
  const auto end =
      start + static_cast<qsizetype>(input.below(length - static_cast<std::size_t>(start) + 1));
  const QString typed = textOf(input);
  QString after = before;
  after.replace(start, end - start, typed);
  EditValidator validator;
  validator.setProperty("outlet", QVariant::fromValue(&field));
  validator.setProperty("selectionStart", static_cast<int>(start));
  validator.setProperty("selectionEnd", static_cast<int>(end));
  int position = 0;
  if (validator.validate(after, position) == QValidator::Acceptable) {
    require(after == before || (after.size() <= kMaxLength && hasDigit(typed)),
            "an accepted edit adds a digit and leaves at most four characters");
    field.edit(after);
  }
}

Button *digitKey(const changeQuantityViewController &keypad, std::size_t digit) {
  const std::array digits{keypad.btn0, keypad.btn1, keypad.btn2, keypad.btn3, keypad.btn4,
                          keypad.btn5, keypad.btn6, keypad.btn7, keypad.btn8, keypad.btn9};
  return digits.at(digit);
}

std::int32_t totalOf(const changeQuantityViewController &keypad) {
  return wrappingAdd(numberOf(keypad.lblCurrentQty->text()), numberOf(keypad.txtNewQty->text()));
}

void touchOk(changeQuantityViewController &keypad, const BookingRecorder &bookings) {
  const std::int32_t total = totalOf(keypad);
  keypad.btnOKTouched();
  require(bookings.last.has_value() == (total >= 1), "OK books totals of at least 1 only");
  if (bookings.last) {
    require(bookings.last->row == keypad.row() &&
                wrappingAdd(bookings.last->currentQty, bookings.last->addQty) == total,
            "OK books the total for the row of the keypad");
  }
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
  static Environment environment;
  FuzzInput input(data, size);
  changeQuantityViewController keypad(environment);
  BookingRecorder bookings;
  keypad.setDelegate(&bookings);
  keypad.loadViewIfNeeded();
  keypad.setRow(static_cast<std::int32_t>(input.byte()));
  const QString current = textOf(input);
  keypad.setDisplayValues(QString(), QString(), QString(), current, QString());
  checkNumbers(current);
  checkNumbers(textOf(input));
  while (!input.isEmpty()) {
    constexpr std::size_t kDigits = 10;
    const std::size_t choice = input.below(16);
    if (choice < kDigits) {
      keypad.btnNumTouched(digitKey(keypad, choice));
    } else if (choice == kDigits) {
      keypad.btnNegativeTouched();
    } else if (choice == kDigits + 1) {
      keypad.txtNewQty->pressReturn();
    } else {
      edit(keypad, input);
    }
    require(keypad.lblTotalQty->text() == QString::number(totalOf(keypad)) ||
                keypad.txtNewQty->text().isEmpty(),
            "the total is the sum of the current and the entered quantity");
    require(!bookings.last, "only OK books");
  }
  checkNumbers(keypad.txtNewQty->text());
  touchOk(keypad, bookings);
  return 0;
}
