#pragma once

#include <cstdint>
#include <string>

namespace vornic {

/// What the environment says about the session. Thread: any, as everything here.
struct SessionEnvironment {
    /// $DISPLAY; empty when unset.
    std::string x11Display;
    /// $WAYLAND_DISPLAY; empty when unset.
    std::string waylandDisplay;
    /// $XDG_SESSION_TYPE; empty when unset.
    std::string sessionType;
};

/// This process's own. Call before threads that change the environment.
SessionEnvironment sessionEnvironment();

/// Where keys can be heard.
enum class KeySourceKind : std::uint8_t {
    none,
    /// An X server, which tells every client about all keys.
    x11,
    /// The kernel's keyboards.
    evdev,
};

struct KeySource {
    KeySourceKind kind = KeySourceKind::none;
    /// Why there is none and what to do about it, in one sentence; empty when there is one.
    std::string problem;
};

/// Chooses the source of keys for a session, once for the life of the program. In a Wayland session
/// an X display is only XWayland's, which hears the keys of some windows and not of others, so it
/// is never taken for a source, not even while keyboards may not be read.
KeySource chooseKeySource(const SessionEnvironment& session);

} // namespace vornic
