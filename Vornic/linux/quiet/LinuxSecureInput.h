#pragma once

#include "Vornic/linux/quiet/AccessibilityBus.h"
#include "Vornic/linux/quiet/ScreenLock.h"
#include "Vornic/ports/SecureInput.h"

#include <QDBusConnection>

namespace vornic {

/// A password field with the focus, or a locked screen.
class LinuxSecureInput final : public SecureInput {
  public:
    explicit LinuxSecureInput(const QDBusConnection& session = QDBusConnection::sessionBus(),
                              const QDBusConnection& system = QDBusConnection::systemBus());

    void start() override;
    bool active() const override {
        return accessibility_.passwordFocused() || screenLock_.locked();
    }

  private:
    AccessibilityBus accessibility_;
    ScreenLock screenLock_;
};

} // namespace vornic
