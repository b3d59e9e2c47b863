#pragma once

#include "Vornic/linux/quiet/AccessibilityBus.h"
#include "Vornic/linux/quiet/AccessibilitySwitch.h"
#include "Vornic/linux/quiet/ScreenLock.h"
#include "Vornic/ports/SecureInput.h"

#include <QDBusConnection>

namespace vornic {

/// A password field with the focus, or a locked screen. Thread: main.
class LinuxSecureInput final : public SecureInput {
  public:
    explicit LinuxSecureInput(const QDBusConnection& session = QDBusConnection::sessionBus(),
                              const QDBusConnection& system = QDBusConnection::systemBus());

    void start() override;
    bool active() const override {
        return accessibility_.passwordFocused() || screenLock_.locked();
    }

    void noticeEverywhere(bool on) override { switch_.wish(on); }
    PasswordFields told() const override;

  private:
    AccessibilityBus accessibility_;
    AccessibilitySwitch switch_;
    ScreenLock screenLock_;
};

} // namespace vornic
