#pragma once

#include "Vornic/recording/HelperTalk.h"

#include <sys/types.h>

#include <cstddef>
#include <filesystem>
#include <span>
#include <stop_token>

namespace vornic {

/// The helper program at work: it gets files as descriptors, one after the other, and has nothing
/// else of this process. Thread: any, one at a time.
class HelperProcess {
  public:
    /// Starts `program`; where that fails, nothing can be asked of it.
    explicit HelperProcess(const std::filesystem::path& program);
    /// Ends it, whatever it is doing.
    ~HelperProcess();
    HelperProcess(const HelperProcess&) = delete;
    HelperProcess& operator=(const HelperProcess&) = delete;

    /// Gives it the next file. False where it has gone.
    bool give(HelperDuty duty, int descriptor);

    /// Fills `bytes` as far as there is anything; how much that was. Less than asked for at the
    /// end, after an error, when stopped, and when the helper is silent for too long.
    std::size_t read(std::span<std::byte> bytes, const std::stop_token& stop) const;

    /// The same for one value, as it lies in memory; false where it did not come whole.
    template <typename Value>
    bool readValue(Value& value, const std::stop_token& stop) const {
        return read(std::as_writable_bytes(std::span(&value, 1)), stop) == sizeof(Value);
    }

    /// What it was given last has been answered whole: it can be given the next file.
    bool isFree() const { return isFree_; }
    void setFree() { isFree_ = true; }

  private:
    bool waitForOutput(const std::stop_token& stop) const;

    pid_t process_ = -1;
    int requests_ = -1;
    int output_ = -1;
    bool isFree_ = false;
};

} // namespace vornic
