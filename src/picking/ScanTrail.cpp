#include "picking/ScanTrail.h"

#include <algorithm>

void ScanTrail::add(const Scan &scan) {
  m_scans.push_front(scan);
  if (m_scans.size() > kCapacity) {
    m_scans.pop_back();
  }
  emit changed();
}

void ScanTrail::bookLatestFound() {
  const auto found = std::find_if(m_scans.begin(), m_scans.end(), [](const Scan &scan) {
    return scan.outcome == ScanOutcome::Found;
  });
  if (found != m_scans.end()) {
    found->outcome = ScanOutcome::Booked;
    emit changed();
  }
}

void ScanTrail::clear() {
  m_scans.clear();
  emit changed();
}
