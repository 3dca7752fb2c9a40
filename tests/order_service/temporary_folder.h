#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace cartonpick::orders {

/// A new empty folder that is removed in the end, with what is in it.
class TemporaryFolder {
 public:
  TemporaryFolder();
  TemporaryFolder(const TemporaryFolder &) = delete;
  TemporaryFolder &operator=(const TemporaryFolder &) = delete;
  ~TemporaryFolder();

  /// The path of a file in the folder.
  std::string path(std::string_view name) const { return m_path / name; }

  /// Writes a file and returns its path.
  std::string write(std::string_view name, std::string_view text) const;

 private:
  std::filesystem::path m_path;
};

}  // namespace cartonpick::orders
