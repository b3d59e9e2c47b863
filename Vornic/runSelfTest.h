#pragma once

#include "Vornic/commands/CommandLine.h"
#include "Vornic/linux/soundserver/SoundServer.h"
#include "Vornic/selftest/SelfTest.h"

#include <memory>

namespace vornic {

class QuietKeys;

/// The self-test with what it needs from this platform. Thread: main.
class RunningSelfTest {
  public:
    /// Starts it; all four outlive this object. Needs a QGuiApplication.
    RunningSelfTest(AppModel& model, const Platform& platform, SoundServer& server,
                    QuietKeys& quietKeys, bool withMicrophone);
    ~RunningSelfTest();
    RunningSelfTest(const RunningSelfTest&) = delete;
    RunningSelfTest& operator=(const RunningSelfTest&) = delete;

  private:
    struct Parts;
    std::unique_ptr<Parts> parts_;
};

} // namespace vornic
