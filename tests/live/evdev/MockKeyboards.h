#pragma once

#include "tests/support/ScratchFolder.h"

#include <linux/input.h>
#include <umockdev.h>

#include <cstdint>
#include <filesystem>
#include <memory>
#include <span>
#include <string>

namespace vornic {

/// Keyboards of the kernel that exist only for programs started with umockdev's library: nodes,
/// the device manager's records of them and its announcements.
class MockKeyboards {
  public:
    /// Throws where the library is not preloaded.
    MockKeyboards();

    /// Makes /dev/input/event<number> and announces it.
    void plug(int number, bool isVirtual = false);

    /// Takes it away and announces that.
    void unplug(int number);

    /// Whether others than root may read it.
    void setReadable(int number, bool readable);

    /// Where its node really lies, as those who have it open see it.
    std::filesystem::path place(int number) const;

    /// One key event as the kernel would tell it, stamped `nanos`, cut to microseconds.
    void send(int number, std::uint16_t code, std::int32_t value, std::uint64_t nanos);

    /// Says that events were lost, and a press of `code` among what is still there. Asked then, the
    /// keyboard says that no key is down.
    void overrun(int number, std::uint16_t code, std::uint64_t nanos);

  private:
    void write(int number, std::span<const input_event> events);

    struct Release {
        void operator()(UMockdevTestbed* testbed) const { g_object_unref(testbed); }
    };

    std::filesystem::path folder() const;
    std::string systemPath(int number) const;
    static std::string node(int number);

    ScratchFolder folder_;
    std::unique_ptr<UMockdevTestbed, Release> testbed_;
    std::uint64_t virtualNumbers_ = 0; // a bit for each
};

} // namespace vornic
