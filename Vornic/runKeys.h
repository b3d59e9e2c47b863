#pragma once

#include "Vornic/platform/Clock.h"
#include "Vornic/platform/HotKey.h"
#include "Vornic/platform/KeySource.h"
#include "Vornic/platform/KeyTap.h"

#include <memory>

namespace vornic {

class InputDevices;

/// What hears keys in this session. Belongs to the key thread once the model has it.
struct SessionKeys {
    /// What the tap reads; empty in an X session.
    std::unique_ptr<InputDevices> devices;
    std::unique_ptr<HotKey> hotKey;
    std::unique_ptr<KeyTap> tap;

    SessionKeys();
    SessionKeys(SessionKeys&&) noexcept;
    SessionKeys& operator=(SessionKeys&&) noexcept;
    ~SessionKeys();
};

/// Makes the tap and the hot key of a session whose source is `kind`, which is not `none`.
SessionKeys makeSessionKeys(KeySourceKind kind, const Clock& clock);

} // namespace vornic
