#pragma once

#include "Vornic/ports/AudioOutput.h"
#include "Vornic/ports/Clock.h"
#include "Vornic/ports/HotKey.h"
#include "Vornic/ports/KeyTap.h"
#include "Vornic/ports/Log.h"
#include "Vornic/ports/MicrophoneInput.h"
#include "Vornic/ports/MicrophoneUse.h"
#include "Vornic/ports/Scheduler.h"
#include "Vornic/ports/SecureInput.h"
#include "Vornic/quiet/QuietRules.h"

#include <vector>

namespace vornic {

/// The services of one platform that the model runs on. All outlive it. Thread: main.
struct Platform {
    AudioOutput& output;
    KeyTap& tap;
    HotKey& hotKey;
    MicrophoneUse& microphone;
    MicrophoneInput& microphoneInput;
    SecureInput& secureInput;
    Clock& clock;
    Scheduler& scheduler;
    Log& log;
    /// Further reasons to be silent, beside the microphone and passwords.
    std::vector<WatchedReason> quiet = {};
};

} // namespace vornic
