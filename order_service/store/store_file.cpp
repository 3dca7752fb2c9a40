#include "store/store_file.h"

#include <fcntl.h>
#include <stdexcept>
#include <string_view>
#include <sys/stat.h>
#include <unistd.h>

namespace cartonpick::orders {

namespace {

constexpr mode_t kOwner = S_IRUSR | S_IWUSR;

/// The group is left to what the administrator chose: another of its users may load and export.
constexpr mode_t kOwnerAndGroup = kOwner | S_IRGRP | S_IWGRP;

[[noreturn]] void refuse(const std::string &path, const char *reason) {
  throw std::runtime_error("the store " + path + " can't be used: it is " + reason);
}

void claim(const std::string &path) {
  struct stat file {};
  if (::lstat(path.c_str(), &file) != 0) {
    return;
  }
  if (S_ISLNK(file.st_mode)) {
    refuse(path, "a symbolic link");
  }
  if (!S_ISREG(file.st_mode)) {
    refuse(path, "not a regular file");
  }
  if (file.st_nlink > 1) {
    refuse(path, "a file with more than one hard link");
  }
  if ((file.st_mode & ALLPERMS & ~kOwnerAndGroup) != 0) {
    // Only its owner can; for other users the mode stays as it is.
    static_cast<void>(::chmod(path.c_str(), file.st_mode & kOwnerAndGroup));
  }
}

}  // namespace

void claimStoreFile(const std::string &path) {
  for (const std::string_view beside : {"", "-wal", "-shm", "-journal"}) {
    claim(path + std::string(beside));
  }
  const int made = ::open(path.c_str(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, kOwner);
  if (made >= 0) {
    static_cast<void>(::fchmod(made, kOwner));
    ::close(made);
  }
}

}  // namespace cartonpick::orders
