#include "Vornic/linux/keys/EvdevKeyCodes.h"

#include "VornicCore/keys/KnownKeys.h"

namespace vornic {

std::int64_t virtualKeyCode(std::uint32_t evdevCode) {
    return keyCodeOfEvdev(evdevCode);
}

} // namespace vornic
