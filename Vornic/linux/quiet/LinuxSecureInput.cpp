#include "Vornic/linux/quiet/LinuxSecureInput.h"

namespace vornic {

LinuxSecureInput::LinuxSecureInput(const QDBusConnection& session, const QDBusConnection& system)
    : accessibility_(session, [this] { onChange(); }),
      screenLock_(session, system, [this] { onChange(); }) {}

void LinuxSecureInput::start() {
    accessibility_.start();
    screenLock_.start();
}

} // namespace vornic
