#pragma once

#include "tests/live/ChildProcess.h"
#include "tests/support/ScratchFolder.h"
#include "tests/support/WaitFor.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

namespace vornic {

/// Has the real key reader started by whoever connects to `socket` first; it lets in what is at
/// `installed`, asks the session's bus for the system's, and writes to `log`.
inline std::unique_ptr<ChildProcess> startKeyReader(const std::string& socket,
                                                    const std::string& installed,
                                                    const std::filesystem::path& log) {
    const std::string bus = std::getenv("DBUS_SESSION_BUS_ADDRESS");
    auto reader = std::make_unique<ChildProcess>(
        std::vector<std::string>{"systemd-socket-activate", "--seqpacket", "--listen", socket,
                                 "--setenv", "LD_PRELOAD", "--setenv", "UMOCKDEV_DIR", "--setenv",
                                 "DBUS_SYSTEM_BUS_ADDRESS=" + bus, VORNIC_KEYS, installed,
                                 std::to_string(::getuid())},
        ChildProcess::Environment{}, log.string());
    EXPECT_TRUE(waitFor([&] { return readBytes(log).find("Listening") != std::string::npos; }))
        << readBytes(log);
    return reader;
}

} // namespace vornic
