#pragma once

#include <cstdint>
#include <filesystem>
#include <map>
#include <memory>
#include <random>
#include <string>
#include <string_view>
#include <vector>

/// What has really reached a disk. Until a file is synchronised, each of its changes may have, or
/// not, and later ones before earlier ones; a write may have reached it in part, in whole sectors.
/// A name that is new or gone may be so on the disk or not until its folder is synchronised.
class DiskModel {
 public:
  using Path = std::filesystem::path;

  static constexpr std::size_t kSectorBytes = 512;

  explicit DiskModel(std::uint32_t seed) : m_random(seed) {}

  /// The disk has the files of `image` in the place of `folder`, whatever can be seen there.
  void startFrom(const Path &image, const Path &folder);

  /// Does nothing for a file that is known. Otherwise the disk has what is in the file, unless it
  /// is told what it starts from.
  void open(const Path &file);
  void write(const Path &file, std::uint64_t offset, std::string_view bytes);
  void truncate(const Path &file, std::uint64_t size);
  void remove(const Path &file);
  void syncFile(const Path &file);
  void syncNames();
  /// A synchronisation failed: what had not reached the disk by then never will.
  void failSync(const Path &file);

  /// Writes into `folder`, which is empty, what a loss of power at this moment may leave.
  void writeAfterPowerLoss(const Path &folder);
  /// Writes into `folder` what is on the disk for certain.
  void writeCertain(const Path &folder) const;

 private:
  /// A write, or a change of the file's size where there are no bytes.
  struct Change {
    std::uint64_t offset;
    std::string bytes;
  };
  struct Content {
    std::string certain;
    std::vector<Change> pending;
  };
  using Names = std::map<Path, std::shared_ptr<Content>>;

  [[nodiscard]] bool flip() { return (m_random() & 1U) != 0; }
  void apply(const Change &change, std::string &bytes);
  void applyInPart(const Change &change, std::string &bytes);
  [[nodiscard]] std::string afterPowerLoss(const Content &content);

  std::mt19937 m_random;
  bool m_isTold = false;
  /// What the program sees.
  Names m_names;
  /// What the disk has for certain.
  Names m_certainNames;
};
