#include "disk/DiskModel.h"

#include <algorithm>
#include <fstream>
#include <iterator>

namespace {

std::string bytesOf(const DiskModel::Path &file) {
  std::ifstream stream(file, std::ios::binary);
  return {std::istreambuf_iterator<char>(stream), {}};
}

void writeBytes(const DiskModel::Path &file, const std::string &bytes) {
  std::ofstream stream(file, std::ios::binary);
  stream.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
}

}  // namespace

void DiskModel::startFrom(const Path &image, const Path &folder) {
  m_isTold = true;
  for (const auto &entry : std::filesystem::directory_iterator(image)) {
    const Path file = folder / entry.path().filename();
    m_certainNames[file] = std::make_shared<Content>(Content{bytesOf(entry.path()), {}});
    if (std::filesystem::exists(file)) {
      m_names[file] = m_certainNames[file];
    }
  }
}

void DiskModel::open(const Path &file) {
  if (m_names.contains(file)) {
    return;
  }
  const auto content =
      std::make_shared<Content>(Content{m_isTold ? std::string() : bytesOf(file), {}});
  m_names[file] = content;
  // An empty file is new, and its folder has not been synced yet.
  if (!content->certain.empty()) {
    m_certainNames[file] = content;
  }
}

void DiskModel::write(const Path &file, std::uint64_t offset, std::string_view bytes) {
  m_names.at(file)->pending.push_back({offset, std::string(bytes)});
}

void DiskModel::truncate(const Path &file, std::uint64_t size) {
  m_names.at(file)->pending.push_back({size, {}});
}

void DiskModel::remove(const Path &file) {
  m_names.erase(file);
}

void DiskModel::syncFile(const Path &file) {
  Content &content = *m_names.at(file);
  for (const Change &change : content.pending) {
    apply(change, content.certain);
  }
  content.pending.clear();
}

void DiskModel::syncNames() {
  m_certainNames = m_names;
}

void DiskModel::failSync(const Path &file) {
  Content &content = *m_names.at(file);
  content.certain = afterPowerLoss(content);
  content.pending.clear();
}

void DiskModel::apply(const Change &change, std::string &bytes) {
  if (change.bytes.empty()) {
    bytes.resize(change.offset);
    return;
  }
  if (bytes.size() < change.offset + change.bytes.size()) {
    bytes.resize(change.offset + change.bytes.size());
  }
  bytes.replace(change.offset, change.bytes.size(), change.bytes);
}

void DiskModel::applyInPart(const Change &change, std::string &bytes) {
  for (std::size_t done = 0; done < change.bytes.size();) {
    const std::uint64_t offset = change.offset + done;
    const std::size_t length =
        std::min(kSectorBytes - offset % kSectorBytes, change.bytes.size() - done);
    if (flip()) {
      apply({offset, change.bytes.substr(done, length)}, bytes);
    }
    done += length;
  }
}

std::string DiskModel::afterPowerLoss(const Content &content) {
  std::string bytes = content.certain;
  std::vector<Change> changes = content.pending;
  if (flip()) {
    std::shuffle(changes.begin(), changes.end(), m_random);
  }
  enum Fate { Lost, Torn, Whole };
  for (const Change &change : changes) {
    switch (m_random() % 3) {
      case Lost:
        break;
      case Torn:
        applyInPart(change, bytes);
        break;
      case Whole:
        apply(change, bytes);
        break;
    }
  }
  return bytes;
}

void DiskModel::writeAfterPowerLoss(const Path &folder) {
  Names names = m_certainNames;
  for (const auto &[file, content] : m_names) {
    const auto certain = names.find(file);
    if (flip() || (certain != names.end() && certain->second == content)) {
      names[file] = content;
    }
  }
  for (const auto &[file, content] : names) {
    const bool isGone = !m_names.contains(file);
    if (!isGone || flip()) {
      writeBytes(folder / file.filename(), afterPowerLoss(*content));
    }
  }
}

void DiskModel::writeCertain(const Path &folder) const {
  for (const auto &[file, content] : m_certainNames) {
    writeBytes(folder / file.filename(), content->certain);
  }
}
