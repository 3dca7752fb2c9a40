// A replacement for libFuzzer's main() that works with any compiler: runs the fuzz target on every
// file in the given folders and on a given number of reproducible mutations of them.

#include "Property.h"

#include <algorithm>
#include <charconv>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <random>
#include <string>
#include <string_view>
#include <unistd.h>
#include <utility>
#include <vector>

namespace {

namespace fs = std::filesystem;

using Bytes = std::vector<std::uint8_t>;

constexpr std::size_t kMaxBytes = 1U << 16U;

struct Options {
  std::size_t mutations = 0;
  std::uint32_t seed = 1;
  fs::path running = "replay-input";
  std::vector<fs::path> inputs;
};

Bytes contentOf(const fs::path &file) {
  std::ifstream stream(file, std::ios::binary);
  return {std::istreambuf_iterator<char>(stream), {}};
}

/// Returns `path` itself or, if it is a folder, the sorted files under it; an empty list if it does
/// not exist.
std::vector<fs::path> filesIn(const fs::path &path) {
  if (!fs::is_directory(path)) {
    return fs::exists(path) ? std::vector{path} : std::vector<fs::path>();
  }
  std::vector<fs::path> files;
  for (const auto &entry : fs::recursive_directory_iterator(path)) {
    if (entry.is_regular_file()) {
      files.push_back(entry.path());
    }
  }
  std::sort(files.begin(), files.end());
  return files;
}

/// Makes small changes to inputs. It uses the random engine without distributions, so the changes
/// are the same on every platform.
class Mutator {
 public:
  Mutator(const std::vector<Bytes> &inputs, std::uint32_t seed)
      : m_inputs(inputs), m_random(seed) {}

  Bytes next() {
    constexpr std::size_t kMaxChanges = 4;
    Bytes bytes = anyInput();
    for (std::size_t changes = 1 + below(kMaxChanges); changes > 0; --changes) {
      change(bytes);
    }
    bytes.resize(std::min(bytes.size(), kMaxBytes));
    return bytes;
  }

 private:
  std::size_t below(std::size_t end) { return end == 0 ? 0 : m_random() % end; }
  const Bytes &anyInput() { return m_inputs[below(m_inputs.size())]; }

  void change(Bytes &bytes) {
    enum Change { kFlipBit, kSetByte, kInsertByte, kErase, kRepeat, kSplice, kChanges };
    const std::size_t at = below(bytes.size());
    const auto place = bytes.begin() + static_cast<std::ptrdiff_t>(at);
    const std::size_t count = 1 + below(std::min<std::size_t>(bytes.size() - at, 32));
    switch (bytes.empty() ? kInsertByte : static_cast<Change>(below(kChanges))) {
      case kFlipBit:
        *place ^= static_cast<std::uint8_t>(1U << below(8));
        break;
      case kSetByte:
        *place = anyByte();
        break;
      case kInsertByte:
        bytes.insert(place, anyByte());
        break;
      case kErase:
        bytes.erase(place, place + static_cast<std::ptrdiff_t>(std::min(count, bytes.size() - at)));
        break;
      case kRepeat: {
        const Bytes part(place,
                         place + static_cast<std::ptrdiff_t>(std::min(count, bytes.size() - at)));
        bytes.insert(place, part.begin(), part.end());
        break;
      }
      default: {
        const Bytes &other = anyInput();
        const auto from = other.begin() + static_cast<std::ptrdiff_t>(below(other.size()));
        bytes.erase(place, bytes.end());
        bytes.insert(bytes.end(), from, other.end());
      }
    }
  }

  /// Returns a random byte, often one with a meaning in text formats.
  std::uint8_t anyByte() {
    constexpr std::string_view kSigns = "\"\\[]{},:;'-+.0123456789eEnt%&=?/ \r\n\t\xEF\xFF";
    return static_cast<std::uint8_t>(below(2) == 0 ? kSigns[below(kSigns.size())] : below(256));
  }

  const std::vector<Bytes> &m_inputs;
  std::mt19937 m_random;
};

/// The file with the current input. It is kept if the input crashes the process.
class RunningInput {
 public:
  explicit RunningInput(fs::path file)
      : m_path(std::move(file)),
        m_descriptor(::open(m_path.c_str(), O_CREAT | O_WRONLY | O_CLOEXEC, 0600)) {}
  ~RunningInput() {
    ::close(m_descriptor);
    fs::remove(m_path);
  }
  RunningInput(const RunningInput &) = delete;
  RunningInput &operator=(const RunningInput &) = delete;

  void set(const Bytes &input) const {
    const bool isKept = ::pwrite(m_descriptor, input.data(), input.size(), 0) ==
                            static_cast<ssize_t>(input.size()) &&
                        ::ftruncate(m_descriptor, static_cast<off_t>(input.size())) == 0;
    require(isKept, "the current input can be written");
  }

 private:
  fs::path m_path;
  int m_descriptor;
};

void run(const Bytes &input, const RunningInput &running) {
  running.set(input);
  // A copy of exactly this size lets a sanitizer detect reads beyond the end.
  const Bytes copy(input.begin(), input.end());
  LLVMFuzzerTestOneInput(copy.data(), copy.size());
}

template <class Number>
bool readNumber(std::string_view text, Number &number) {
  const char *const end = text.data() + text.size();
  const auto [rest, error] = std::from_chars(text.data(), end, number);
  return error == std::errc() && rest == end;
}

bool read(int count, char **arguments, Options &options) {
  for (int i = 1; i < count; ++i) {
    const std::string_view argument = arguments[i];
    if (!argument.starts_with("--")) {
      options.inputs.emplace_back(argument);
      continue;
    }
    if (++i == count) {
      return false;
    }
    const bool isRead =
        (argument == "--mutations" && readNumber(arguments[i], options.mutations)) ||
        (argument == "--seed" && readNumber(arguments[i], options.seed)) ||
        (argument == "--running" && !(options.running = arguments[i]).empty());
    if (!isRead) {
      return false;
    }
  }
  return !options.inputs.empty();
}

}  // namespace

int main(int count, char **arguments) {
  Options options;
  if (!read(count, arguments, options)) {
    std::cerr << "usage: " << arguments[0]
              << " [--mutations N] [--seed S] [--running FILE] FOLDER...\n";
    return 2;
  }
  std::vector<Bytes> inputs = {{}};
  for (const fs::path &path : options.inputs) {
    for (const fs::path &file : filesIn(path)) {
      inputs.push_back(contentOf(file));
    }
  }
  if (inputs.size() == 1) {
    std::cerr << "replay: there are no seeds\n";
    return 1;
  }
  const RunningInput running(options.running);
  for (const Bytes &input : inputs) {
    run(input, running);
  }
  Mutator mutator(inputs, options.seed);
  for (std::size_t i = 0; i < options.mutations; ++i) {
    run(mutator.next(), running);
  }
  std::cout << "replay: " << inputs.size() << " inputs and " << options.mutations
            << " mutations of them with the seed " << options.seed << ", no finding\n";
  return 0;
}
