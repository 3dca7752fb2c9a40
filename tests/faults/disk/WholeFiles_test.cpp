#include "completion/PickingExport.h"
#include "support/TestProgram.h"

#include <QFile>
#include <QTest>

#include <csignal>
#include <sys/resource.h>

namespace {

QByteArray bytesOf(const QString &path) {
  QFile file(path);
  return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// While it lives, no file may become larger than `bytes`, as if the disk were full by then.
class LargestFile {
 public:
  explicit LargestFile(rlim_t bytes) : m_handler(std::signal(SIGXFSZ, SIG_IGN)) {
    getrlimit(RLIMIT_FSIZE, &m_before);
    const rlimit limit{bytes, m_before.rlim_max};
    setrlimit(RLIMIT_FSIZE, &limit);
  }
  ~LargestFile() {
    setrlimit(RLIMIT_FSIZE, &m_before);
    std::signal(SIGXFSZ, m_handler);
  }
  LargestFile(const LargestFile &) = delete;
  LargestFile &operator=(const LargestFile &) = delete;

 private:
  void (*m_handler)(int);
  rlimit m_before{};
};

}  // namespace

/// A file beside the store, where there is no room for a new one.
class WholeFilesTest : public QObject {
  Q_OBJECT

 private slots:
  void anExportIsTheOldOneOrTheNewOneWhole() {
    TestProgram program;
    program.enterPicking();
    program.startPicking({{"C1", "A", 5}, {"C1", "B", 3}});
    program.master().tblBoxes->touchRow(0);
    program.enterQuantity(0, QStringLiteral("5"));
    const QString path =
        program.environment.folders.documents() + QStringLiteral("/VardexExport.csv");
    const auto exportNow = [&] {
      exportPicking(program.environment, program.context(), QStringLiteral("4711"), {});
    };
    exportNow();
    const QByteArray old = bytesOf(path);
    program.enterQuantity(1, QStringLiteral("3"));
    const QByteArray next =
        exportText(*program.context().unsentPickings(QStringLiteral("4711")),
                   QTimeZone(program.environment.clock->localZone().offsetFromUtc(
                       program.environment.clock->now())))
            .toUtf8();
    QVERIFY(!old.isEmpty() && old.size() < next.size());
    for (rlim_t room = 0; room < static_cast<rlim_t>(next.size()); ++room) {
      const LargestFile limit(room);
      exportNow();
      QCOMPARE(bytesOf(path), old);
    }
    exportNow();
    QCOMPARE(bytesOf(path), next);
    QCOMPARE(QDir(program.environment.folders.documents())
                 .entryList({QStringLiteral("VardexExport.csv?*")}),
             QStringList());
  }
};

QTEST_GUILESS_MAIN(WholeFilesTest)
#include "WholeFiles_test.moc"
