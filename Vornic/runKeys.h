#pragma once

#include "Vornic/ports/Clock.h"
#include "Vornic/ports/HotKey.h"
#include "Vornic/ports/KeyTap.h"
#include "Vornic/ports/Keymap.h"
#include "Vornic/ports/Log.h"
#include "Vornic/qt/QtWatch.h"
#include "Vornic/typing/KeySource.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>

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

    /// What stands on the keys; empty where none is heard. Thread: main.
    std::unique_ptr<Keymap> keymap;

    SessionKeys();
    SessionKeys(SessionKeys&&) noexcept;
    SessionKeys& operator=(SessionKeys&&) noexcept;
    ~SessionKeys();
};

/// Makes the tap and the hot key of a session whose source is `kind`; with `none` no key is ever
/// heard. Thread: main.
SessionKeys makeSessionKeys(KeySourceKind kind, const Clock& clock);

/// Tells `show` what stands on the keys of the layout called `name`, else on the session's, as long
/// as the result lives; which session it is says `keys`. Thread: main.
std::unique_ptr<QtWatch> showLegends(const SessionKeys& keys,
                                     const std::optional<std::string>& name, Log& log,
                                     std::function<void(const KeyLegends&)> show);

} // namespace vornic
