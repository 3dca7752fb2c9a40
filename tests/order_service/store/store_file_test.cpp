#include "store/store_file.h"

#include "store/sql_store.h"
#include "temporary_folder.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <sys/stat.h>

namespace cartonpick::orders {

namespace {

namespace fs = std::filesystem;

mode_t modeOf(const std::string &path) {
  struct stat file {};
  return ::lstat(path.c_str(), &file) == 0 ? file.st_mode & ALLPERMS : 0;
}

/// Sets what new files do not get, for as long as it lives.
class Umask {
 public:
  explicit Umask(mode_t mask) : m_before(::umask(mask)) {}
  Umask(const Umask &) = delete;
  Umask &operator=(const Umask &) = delete;
  ~Umask() { ::umask(m_before); }

 private:
  mode_t m_before;
};

std::string refusalOf(const std::string &path) {
  try {
    const SqlStore store{SqlAddress(path)};
    return "none";
  } catch (const std::runtime_error &error) {
    return error.what();
  }
}

}  // namespace

TEST(StoreFile, IsAccessibleToItsOwnerOnly) {
  for (const mode_t mask : {0U, 022U, 0777U}) {
    const TemporaryFolder folder;
    const Umask umask(mask);
    const std::string path = folder.path("store.sqlite");
    const SqlStore store{SqlAddress(path)};
    for (const char *beside : {"", "-wal", "-shm"}) {
      EXPECT_EQ(modeOf(path + beside), 0600U) << path << beside << " with umask " << mask;
    }
  }
}

TEST(StoreFile, IsNotAccessibleToOtherUsers) {
  const TemporaryFolder folder;
  const std::string path = folder.write("store.sqlite", "");
  for (const auto &[before, after] :
       {std::pair{0666U, 0660U}, {0644U, 0640U}, {0777U, 0660U}, {0600U, 0600U}}) {
    ASSERT_EQ(::chmod(path.c_str(), before), 0);
    claimStoreFile(path);
    EXPECT_EQ(modeOf(path), after);
  }
}

TEST(StoreFile, IsNotWrittenThroughALink) {
  for (const char *beside : {"", "-wal", "-shm", "-journal"}) {
    const TemporaryFolder folder;
    const std::string victim = folder.write("victim", "kept");
    const std::string path = folder.path("store.sqlite");
    fs::create_symlink(victim, path + beside);
    EXPECT_EQ(refusalOf(path),
              "the store " + path + beside + " can't be used: it is a symbolic link");
    EXPECT_EQ(fs::file_size(victim), 4U);
    fs::remove(path + beside);
    fs::create_hard_link(victim, path + beside);
    EXPECT_EQ(refusalOf(path), "the store " + path + beside +
                                   " can't be used: it is a file with more than one hard link");
    EXPECT_EQ(fs::file_size(victim), 4U);
  }
}

TEST(StoreFile, IsNotMadeThroughALinkToNothing) {
  const TemporaryFolder folder;
  const std::string path = folder.path("store.sqlite");
  fs::create_symlink(folder.path("nothing"), path);
  EXPECT_EQ(refusalOf(path), "the store " + path + " can't be used: it is a symbolic link");
  EXPECT_FALSE(fs::exists(folder.path("nothing")));
}

TEST(StoreFile, MustBeARegularFile) {
  const TemporaryFolder folder;
  const std::string pipe = folder.path("pipe");
  ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
  const std::string inside = folder.path("inside");
  fs::create_directory(inside);
  for (const std::string &path : {pipe, inside, std::string("/dev/null")}) {
    EXPECT_EQ(refusalOf(path), "the store " + path + " can't be used: it is not a regular file");
  }
}

TEST(StoreFile, MayBeInAFolderThatIsALink) {
  const TemporaryFolder folder;
  fs::create_directory(folder.path("disk"));
  fs::create_directory_symlink(folder.path("disk"), folder.path("link"));
  EXPECT_EQ(refusalOf(folder.path("link") + "/store.sqlite"), "none");
}

}  // namespace cartonpick::orders
