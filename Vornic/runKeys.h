#pragma once

#include "Vornic/ports/Clock.h"
#include "Vornic/ports/HotKey.h"
#include "Vornic/ports/KeyTap.h"
#include "Vornic/typing/KeySource.h"

#include <memory>

namespace vornic {

class GlobalShortcut;
class InputDevices;
class ReaderKeyboards;

/// What hears keys in this session. Tap and hot key belong to the key thread once the model has
/// them.
struct SessionKeys {
    /// What the tap reads, directly or through the key reader; empty in an X session.
    std::unique_ptr<InputDevices> devices;
    std::unique_ptr<ReaderKeyboards> reader;
    std::unique_ptr<HotKey> hotKey;
    std::unique_ptr<KeyTap> tap;
    /// The desktop's own matching of the hot key; empty in an X session. Not asked yet: the desktop
    /// may show a question, for which somebody has to sit before a running program. Thread: main.
    std::unique_ptr<GlobalShortcut> shortcut;

    SessionKeys();
    SessionKeys(SessionKeys&&) noexcept;
    SessionKeys& operator=(SessionKeys&&) noexcept;
    ~SessionKeys();
};

/// Makes the tap and the hot key of a session whose source is `kind`; with `none` no key is ever
/// heard. Thread: main.
SessionKeys makeSessionKeys(KeySourceKind kind, const Clock& clock);

} // namespace vornic
