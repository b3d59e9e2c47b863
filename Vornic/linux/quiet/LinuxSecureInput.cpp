#include "Vornic/linux/quiet/LinuxSecureInput.h"

namespace vornic {

LinuxSecureInput::LinuxSecureInput(const QDBusConnection& session, const QDBusConnection& system)
    : accessibility_(session, [this] { onChange(); }), switch_(session),
      screenLock_(session, system, [this] { onChange(); }) {}

void LinuxSecureInput::start() {
    accessibility_.start();
    switch_.start();
    screenLock_.start();
}

PasswordFields LinuxSecureInput::told() const {
    if (!accessibility_.connected()) {
        return PasswordFields::unknown;
    }
    return switch_.on().value_or(false) ? PasswordFields::allThatCanTell : PasswordFields::someTell;
}

} // namespace vornic
