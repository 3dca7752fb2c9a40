#include "SampleData.h"

#include "store/ManagedObjectContext.h"

#include <array>
#include <random>
#include <stdexcept>

namespace {

constexpr unsigned kSeed = 4711;
constexpr std::array kAdjectives{"WHITE", "VINTAGE ROSE", "BLUE STRIPE", "RUSTIC", "SET OF 6"};
constexpr std::array kNouns{"HANGING HEART HOLDER", "STONEWARE BOWL 16CM", "TEA TOWEL",
                            "METAL LANTERN", "NESTING BOXES"};

/// A random number generator. It uses the standard engine without distributions, so the numbers are
/// the same on every platform.
class Rng {
 public:
  std::size_t below(std::size_t end) { return m_engine() % end; }

 private:
  std::mt19937 m_engine{kSeed};
};

QByteArray description(Rng &rng) {
  return QByteArray(kAdjectives.at(rng.below(kAdjectives.size()))) + ' ' +
         kNouns.at(rng.below(kNouns.size()));
}

QString box(std::size_t index) {
  return QStringLiteral("C%1").arg(index + 1, 6, 10, QLatin1Char('0'));
}

/// Returns the index of the box that contains the line `line`.
std::size_t boxOfLine(std::size_t line, const sample::DeliverySize &size) {
  return line * size.boxes / size.lines;
}

/// Returns the article of the line `line`. Every third line repeats another line's article.
std::size_t articleOfLine(std::size_t line) {
  return line % 3 == 2 ? line / 2 : line;
}

QByteArray text(const char *key, const QByteArray &value) {
  return QByteArray("\"") + key + "\":\"" + value + "\",";
}

void saveOrThrow(ManagedObjectContext &context) {
  if (context.save()) {
    throw std::runtime_error("the sample data cannot be stored");
  }
}

}  // namespace

namespace sample {

QString itemCode(std::size_t index) {
  return QStringLiteral("%1%2").arg(index + 10'000).arg(QChar('A' + static_cast<char>(index % 26)));
}

QString barcode(std::size_t index) {
  const QString digits = QStringLiteral("50%1").arg(index, 10, 10, QLatin1Char('0'));
  int sum = 0;
  for (qsizetype i = 0; i < digits.size(); ++i) {
    sum += digits[i].digitValue() * (i % 2 == 0 ? 1 : 3);
  }
  return digits + QString::number((10 - sum % 10) % 10);
}

QByteArray catalogueJson(std::size_t articles) {
  constexpr qsizetype kBytesOfAnArticle = 110;
  Rng rng;
  QByteArray json("[");
  json.reserve(kBytesOfAnArticle * static_cast<qsizetype>(articles));
  for (std::size_t i = 0; i < articles; ++i) {
    json += i == 0 ? "{" : ",\n{";
    json += text("item", itemCode(i).toLatin1()) + text("barcode", barcode(i).toLatin1()) +
            text("descr", description(rng)) + R"("brand":"HEARTHSIDE"})";
  }
  return json + ']';
}

QByteArray deliveryJson(const DeliverySize &size) {
  Rng rng;
  QByteArray json("[");
  for (std::size_t i = 0; i < size.lines; ++i) {
    const std::size_t article = articleOfLine(i);
    json += i == 0 ? "{" : ",\n{";
    json += text("doc", "4711") + text("ordernum", "A1") + text("cusname", "Rosie's Kitchen") +
            text("brand", "HEARTHSIDE") + text("cdate", "03/02/2026") + text("date", "03/05/2026") +
            text("item", itemCode(article).toLatin1()) +
            text("barcode", barcode(article).toLatin1()) + text("descr", description(rng)) +
            text("carton", box(boxOfLine(i, size)).toLatin1()) +
            "\"qty\":" + QByteArray::number(1 + static_cast<qulonglong>(rng.below(40))) + '}';
  }
  return json + ']';
}

void storePicks(ManagedObjectContext &context, const DeliverySize &size, std::size_t picks) {
  for (std::size_t i = 0; i < picks; ++i) {
    const std::size_t line = i * size.lines / picks;
    const std::size_t article = articleOfLine(line);
    context.insert(Picking{.barcode = barcode(article),
                           .box = box(boxOfLine(line, size)),
                           .datepicked = QDateTime::fromSecsSinceEpoch(1'770'000'000 + qint64(i)),
                           .descr = QStringLiteral("A description"),
                           .doc = QStringLiteral("4711"),
                           .item = itemCode(article),
                           .ordernum = QStringLiteral("A1"),
                           .orderqty = 6,
                           .pickqty = 3});
  }
  saveOrThrow(context);
}

void storeHistory(ManagedObjectContext &context, std::size_t picks, std::size_t deliveries) {
  Rng rng;
  for (std::size_t i = 0; i < picks; ++i) {
    const std::size_t delivery = i * deliveries / picks;
    context.insert(Picking{
        .barcode = barcode(i % 1000),
        .box = box(i % 20),
        .datepicked = QDateTime::fromSecsSinceEpoch(1'700'000'000 + qint64(rng.below(70'000'000))),
        .descr = QStringLiteral("A description"),
        .doc = QString::number(100'000 + delivery),
        .item = itemCode(i % 1000),
        .ordernum = QStringLiteral("A1"),
        .orderqty = 6,
        .pickqty = 6,
        .sent = static_cast<std::int32_t>(delivery % 2)});
  }
  saveOrThrow(context);
}

}  // namespace sample
