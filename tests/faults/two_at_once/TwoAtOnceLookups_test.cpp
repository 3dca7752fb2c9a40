// Two lookups at once, with their events in every possible order. The imported delivery is the one
// that the shared-buffer rule below predicts; an unregistered lookup never imports one.

#include "support/TestClass.h"
#include "support/TestProgram.h"

#include <QTest>

#include <algorithm>
#include <array>
#include <string>

namespace {

/// A client whose connections replay the events scripted by the test.
class ScriptedClient : public HttpClient {
 public:
  HttpConnection *start(const HttpRequest & /*request*/,
                        WeakDelegate<HttpConnectionDelegate> delegate, QObject *owner) override {
    m_delegates.push_back(delegate);
    m_connections.push_back(new HttpConnection(owner));
    return m_connections.back();
  }

  void respond(std::size_t lookup) {
    m_delegates[lookup]->didReceiveResponse(*m_connections[lookup]);
  }
  void send(std::size_t lookup, const QByteArray &data) {
    m_delegates[lookup]->didReceiveData(*m_connections[lookup], data);
  }
  void finish(std::size_t lookup) {
    m_delegates[lookup]->connectionDidFinishLoading(*m_connections[lookup]);
  }

 private:
  std::vector<WeakDelegate<HttpConnectionDelegate>> m_delegates;
  std::vector<HttpConnection *> m_connections;
};

/// The shared-buffer rule: all data goes into one buffer, which every response clears. The buffer
/// is read when the first lookup, which is the registered one, finishes.
class Rule {
 public:
  void respond() { m_buffer.clear(); }
  void send(const QByteArray &data) { m_buffer += data; }
  void finishFirst() { m_read = m_buffer; }
  [[nodiscard]] const QByteArray &read() const { return m_read; }

 private:
  QByteArray m_buffer;
  QByteArray m_read;
};

QByteArray answerOf(const QString &box) {
  return deliveryJson({{.carton = box, .item = "A", .qty = 5}});
}

void search(TestProgram &program) {
  program.master().txtDeliveryNo->edit("4711");
  program.master().btnSearchOrderNoTouched();
}

}  // namespace

class TwoAtOnceLookupsTest : public QObject {
  Q_OBJECT

 private slots:
  void everyOrderOfEventsFollowsTheSharedBufferRule() {
    // The lookup that each event belongs to. Each lookup has four events: a response, two pieces of
    // data, and its end.
    std::string order = "00001111";
    int imports = 0;
    int refusals = 0;
    do {
      run(order) ? ++imports : ++refusals;
      if (QTest::currentTestFailed()) {
        return;
      }
    } while (std::next_permutation(order.begin(), order.end()));
    QCOMPARE(imports + refusals, 70);
    QVERIFY(imports > 0 && refusals > 0);
    qInfo("70 orders: %d deliveries imported, %d answers refused", imports, refusals);
  }

 private:
  /// Returns true if a delivery was imported.
  static bool run(const std::string &order) {
    TestProgram program;
    auto owned = std::make_unique<ScriptedClient>();
    ScriptedClient &client = *owned;
    program.environment.http = std::move(owned);
    program.enterPicking();
    search(program);
    search(program);
    const std::array<QByteArray, 2> answers{answerOf("first"), answerOf("second")};
    std::array<int, 2> arrived{};
    Rule rule;
    for (const char digit : order) {
      const std::size_t lookup = digit - '0';
      arrive(client, rule, lookup, arrived.at(lookup)++, answers.at(lookup));
    }
    const QStringList alerts = program.alertTitles();
    const bool isImported = program.detail().arrayPick() != nullptr;
    const auto expected = std::find(answers.begin(), answers.end(), rule.read());
    check(isImported == (expected != answers.end()), order);
    check(alerts.contains("Could not fetch order details") != isImported, order);
    if (isImported && expected != answers.end()) {
      check(boxOf(program.detail().arrayPick()->at(0)) ==
                (expected == answers.begin() ? "first" : "second"),
            order);
    }
    check(program.master().connectionDict().isEmpty(), order);
    return isImported;
  }

  static void arrive(ScriptedClient &client, Rule &rule, std::size_t lookup, int what,
                     const QByteArray &answer) {
    const qsizetype half = answer.size() / 2;
    switch (what) {
      case 0:
        rule.respond();
        client.respond(lookup);
        break;
      case 1:
      case 2:
        rule.send(what == 1 ? answer.first(half) : answer.sliced(half));
        client.send(lookup, what == 1 ? answer.first(half) : answer.sliced(half));
        break;
      default:
        if (lookup == 0) {
          rule.finishFirst();
        }
        client.finish(lookup);
        break;
    }
  }

  static void check(bool holds, const std::string &order) {
    QVERIFY2(holds, ("in the order " + order).c_str());
  }
};

CARTONPICK_TEST(TwoAtOnceLookupsTest);
#include "TwoAtOnceLookups_test.moc"
