// Performs one fixed picking on a disk that fails or loses power, for disk_campaign.py.
//
// Prints a line for each action of the picker and its result on the screen; for a failing operation
// ("fault NUMBER OPERATION"); for a folder with the files after a power loss ("power-loss FOLDER");
// with --list, for every operation ("operation NUMBER KIND"); and for a normal end ("end").

#include "disk/FaultyVfs.h"
#include "disk/PickingRun.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QDir>

#include <csignal>
#include <filesystem>
#include <optional>
#include <random>
#include <sys/resource.h>

namespace {

const QString kHome = QStringLiteral("home");
const QString kFailAt = QStringLiteral("fail-at");
const QString kFault = QStringLiteral("fault");
const QString kDiskAtFault = QStringLiteral("disk-at-fault");
const QString kDisk = QStringLiteral("disk");
const QString kList = QStringLiteral("list");
const QString kPowerLosses = QStringLiteral("power-losses");
const QString kChance = QStringLiteral("chance");
const QString kSeed = QStringLiteral("seed");
const QString kPages = QStringLiteral("pages-between-checkpoints");
const QString kNoSync = QStringLiteral("no-sync");

void addOptions(QCommandLineParser &options) {
  options.addOptions({
      {kHome, QStringLiteral("The program's home folder."), QStringLiteral("DIR")},
      {kFailAt, QStringLiteral("Let the operation of that number fail."), QStringLiteral("N")},
      {kFault, QStringLiteral("How it fails."), QStringLiteral("once|for-good|full")},
      {kDiskAtFault, QStringLiteral("Where to write what is on the disk when it fails."),
       QStringLiteral("DIR")},
      {kDisk, QStringLiteral("What is on the disk, whatever can be seen of it."),
       QStringLiteral("DIR")},
      {kList, QStringLiteral("Say every operation.")},
      {kPowerLosses, QStringLiteral("Where to write what power losses leave."),
       QStringLiteral("DIR")},
      {kChance, QStringLiteral("One power loss in so many operations."), QStringLiteral("N"),
       QStringLiteral("1")},
      {kSeed, QStringLiteral("Of the power losses."), QStringLiteral("N"), QStringLiteral("1")},
      {kPages, QStringLiteral("Pages of the log between two checkpoints."), QStringLiteral("N")},
      {kNoSync, QStringLiteral("Confirm what is not on disk yet.")},
  });
}

std::filesystem::path pathOf(const QString &name) {
  return name.toStdString();
}

FaultyVfs::Fault faultOf(const QString &word) {
  if (word == QStringLiteral("once")) {
    return FaultyVfs::Fault::Once;
  }
  return word == QStringLiteral("full") ? FaultyVfs::Fault::DiskFull : FaultyVfs::Fault::ForGood;
}

/// The program's disk, configured by the options.
class Disk {
 public:
  explicit Disk(const QCommandLineParser &options)
      : m_options(options),
        m_model(options.value(kSeed).toUInt()),
        m_random(options.value(kSeed).toUInt()) {
    m_vfs.setDisk(&m_model);
    m_vfs.failAt(options.value(kFailAt).toLongLong(), faultOf(options.value(kFault)));
    m_vfs.setFaultObserver([this](std::int64_t number, FaultyVfs::Operation operation) {
      reportFault(number, operation);
    });
    const auto documents = pathOf(options.value(kHome) + QStringLiteral("/Documents"));
    m_model.startFrom(options.isSet(kDisk) ? pathOf(options.value(kDisk)) : documents,
                      std::filesystem::canonical(documents));
    if (options.isSet(kList)) {
      m_vfs.setObserver([](std::int64_t number, FaultyVfs::Operation operation) {
        report(QStringLiteral("operation"), number, operation);
      });
    } else if (options.isSet(kPowerLosses)) {
      m_vfs.setObserver(
          [this](std::int64_t number, FaultyVfs::Operation) { maybeLosePower(number); });
    }
  }

 private:
  static void report(const QString &what, std::int64_t number, FaultyVfs::Operation operation) {
    PickingRun::say(QStringLiteral("%1 %2 %3")
                        .arg(what)
                        .arg(number)
                        .arg(QString::fromLatin1(FaultyVfs::nameOf(operation))));
  }

  void reportFault(std::int64_t number, FaultyVfs::Operation operation) {
    report(QStringLiteral("fault"), number, operation);
    if (m_options.isSet(kDiskAtFault)) {
      m_model.writeCertain(pathOf(m_options.value(kDiskAtFault)));
    }
  }

  void maybeLosePower(std::int64_t number) {
    if (m_random() % m_options.value(kChance).toUInt() != 0) {
      return;
    }
    const QString folder =
        m_options.value(kPowerLosses) + QStringLiteral("/%1").arg(number, 6, 10, QChar(u'0'));
    QDir().mkpath(folder);
    m_model.writeAfterPowerLoss(pathOf(folder));
    PickingRun::say(QStringLiteral("power-loss ") + folder);
  }

  const QCommandLineParser &m_options;
  DiskModel m_model;
  FaultyVfs m_vfs;
  std::mt19937 m_random;
};

void work(const QCommandLineParser &options) {
  PickingRun run(options.value(kHome));
  if (options.isSet(kPages)) {
    run.setPagesBetweenCheckpoints(options.value(kPages).toInt());
  }
  if (options.isSet(kNoSync)) {
    run.forgetToSynchronise();
  }
  run.work();
}

}  // namespace

int main(int argc, char *argv[]) {
  const QCoreApplication application(argc, argv);
  const rlimit none{0, 0};
  setrlimit(RLIMIT_CORE, &none);
  QCommandLineParser options;
  addOptions(options);
  options.process(application);
  std::optional<Disk> disk;
  if (options.isSet(kFailAt) || options.isSet(kList) || options.isSet(kPowerLosses)) {
    disk.emplace(options);
  }
  work(options);
  PickingRun::say(QStringLiteral("end"));
  return EXIT_SUCCESS;
}
