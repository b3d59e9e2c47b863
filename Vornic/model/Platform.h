#pragma once

#include "Vornic/platform/AudioOutput.h"
#include "Vornic/platform/Clock.h"
#include "Vornic/platform/HotKey.h"
#include "Vornic/platform/KeyTap.h"
#include "Vornic/platform/Log.h"
#include "Vornic/platform/MicrophoneInput.h"
#include "Vornic/platform/MicrophoneUse.h"
#include "Vornic/platform/Scheduler.h"
#include "Vornic/platform/SecureInput.h"

namespace vornic {

/// The services of one platform that the model runs on. All outlive it.
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
};

} // namespace vornic
