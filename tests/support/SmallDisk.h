#pragma once

#include <sys/resource.h>

#include <csignal>

namespace vornic {

/// While it lives no file of this process grows beyond `bytes`: a write then fails as it does on a
/// full disk (with file_too_large), for root as well.
class SmallDisk {
  public:
    explicit SmallDisk(rlim_t bytes) {
        std::signal(SIGXFSZ, SIG_IGN);
        getrlimit(RLIMIT_FSIZE, &former_);
        const rlimit small{bytes, former_.rlim_max};
        setrlimit(RLIMIT_FSIZE, &small);
    }
    ~SmallDisk() { setrlimit(RLIMIT_FSIZE, &former_); }
    SmallDisk(const SmallDisk&) = delete;
    SmallDisk& operator=(const SmallDisk&) = delete;

  private:
    rlimit former_{};
};

} // namespace vornic
