#pragma once

#include <cstdint>
#include <filesystem>
#include <map>
#include <memory>
#include <random>
#include <string>
#include <string_view>
#include <vector>

/// A model of a disk that can lose power. Until a file is synced, any of its changes may or may not
/// be on the disk, in any order; a write can be there in part, in whole sectors. Until its folder
/// is synced, the creation or removal of a file may or may not be on the disk.
class DiskModel {
 public:
  using Path = std::filesystem::path;

  static constexpr std::size_t kSectorBytes = 512;

  explicit DiskModel(std::uint32_t seed) : m_random(seed) {}

  /// Starts with the files of `image` as what is on the disk in `folder`, even if the files visible
  /// there differ.
  void startFrom(const Path &image, const Path &folder);

  /// Adds a file with its visible contents, or an empty one after startFrom(). Does nothing if the
  /// file has already been added.
  void open(const Path &file);
  void write(const Path &file, std::uint64_t offset, std::string_view bytes);
  void truncate(const Path &file, std::uint64_t size);
  void remove(const Path &file);
  void syncFile(const Path &file);
  void syncNames();
  /// Simulates a failed sync. Changes that are not on the disk by then never reach it.
  void failSync(const Path &file);

  /// Writes to the empty `folder` a random one of the states that a power loss now could leave.
  void writeAfterPowerLoss(const Path &folder);
  /// Writes to `folder` everything that is certainly on the disk.
  void writeCertain(const Path &folder) const;

 private:
  /// A write, or a change of the file's size to `offset` if `bytes` is empty.
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
  /// The files that the program sees.
  Names m_names;
  /// The files that are certainly on the disk.
  Names m_certainNames;
};
