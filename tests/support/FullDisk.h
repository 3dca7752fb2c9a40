#pragma once

#include <csignal>
#include <sys/resource.h>

/// During its lifetime no file of this process can grow, as on a full disk.
class FullDisk {
 public:
  FullDisk() {
    std::signal(SIGXFSZ, SIG_IGN);
    getrlimit(RLIMIT_FSIZE, &m_before);
    const rlimit none{0, m_before.rlim_max};
    setrlimit(RLIMIT_FSIZE, &none);
  }
  ~FullDisk() { setrlimit(RLIMIT_FSIZE, &m_before); }
  FullDisk(const FullDisk &) = delete;
  FullDisk &operator=(const FullDisk &) = delete;

 private:
  rlimit m_before{};
};
