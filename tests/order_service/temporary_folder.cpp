#include "temporary_folder.h"

#include <cstdlib>
#include <fstream>
#include <system_error>

namespace cartonpick::orders {

TemporaryFolder::TemporaryFolder() {
  std::string path = std::filesystem::temp_directory_path() / "cartonpick-XXXXXX";
  if (::mkdtemp(path.data()) == nullptr) {
    throw std::system_error(errno, std::generic_category(), path);
  }
  m_path = path;
}

TemporaryFolder::~TemporaryFolder() {
  std::error_code ignored;
  std::filesystem::remove_all(m_path, ignored);
}

std::string TemporaryFolder::write(std::string_view name, std::string_view text) const {
  std::ofstream(path(name), std::ios::binary) << text;
  return path(name);
}

}  // namespace cartonpick::orders
