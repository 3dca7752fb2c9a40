#pragma once

#include <cstdint>
#include <filesystem>
#include <map>
#include <memory>
#include <random>
#include <string>
#include <string_view>
#include <vector>

/// A model of a disk that can lose power. Until a file is synchronised, each of its changes may or
/// may not be on the disk, in any order; a write may be there in part, in whole sectors. Until its
/// folder is synchronised, a new or removed name may or may not be on the disk.
class DiskModel {
 public:
  using Path = std::filesystem::path;

  static constexpr std::size_t kSectorBytes = 512;

  explicit DiskModel(std::uint32_t seed) : m_random(seed) {}

  /// Starts with the files of `image` as the disk's contents of `folder`, whatever `folder` has.
  void startFrom(const Path &image, const Path &folder);

  /// Adds a file with its current contents, or an empty one after startFrom(). Does nothing if the
  /// file is known.
  void open(const Path &file);
  void write(const Path &file, std::uint64_t offset, std::string_view bytes);
  void truncate(const Path &file, std::uint64_t size);
  void remove(const Path &file);
  void syncFile(const Path &file);
  void syncNames();
  /// Marks a failed synchronisation. Changes that are not on the disk by then never reach it.
  void failSync(const Path &file);

  /// Writes into the empty `folder` a random state in which a power loss now may leave the disk.
  void writeAfterPowerLoss(const Path &folder);
  /// Writes into `folder` everything that is certainly on the disk.
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
