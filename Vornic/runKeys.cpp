#include "Vornic/runKeys.h"

#include "Vornic/linux/hotkey/GlobalShortcut.h"
#include "Vornic/linux/hotkey/ReadHotKey.h"
#include "Vornic/linux/hotkey/X11HotKey.h"
#include "Vornic/linux/keymap/WaylandKeymap.h"
#include "Vornic/linux/keymap/X11Keymap.h"
#include "Vornic/linux/keys/EvdevKeyTap.h"
#include "Vornic/linux/keys/ReaderKeyboards.h"
#include "Vornic/linux/keys/UdevInputDevices.h"
#include "Vornic/linux/keys/X11KeyTap.h"
#include "Vornic/linux/permission/KeyGrant.h"

#include <cstdlib>
#include <string>
#include <utility>

namespace vornic {

namespace {

/// Keys that nobody presses.
class NoKeys final : public KeyTap {
  public:
    bool start() override { return true; }
    void stop() override {}
    TapState refresh() override { return TapState::listening; }
    int fileDescriptor() const override { return -1; }
    void dispatch() override {}
    std::string description() const override { return "nowhere"; }
};

/// Whoever names another one gains nothing: it can only be made to sound by keys of his own.
std::string readerSocket() {
    const char* const named = std::getenv("VORNIC_KEY_READER");
    return named == nullptr ? ReaderKeyboards::installedSocket : named;
}

class NoHotKey final : public HotKey {
  public:
    // Nobody has refused it.
    bool registered() const override { return true; }
    int fileDescriptor() const override { return -1; }
    void dispatch() override {}
};

} // namespace

SessionKeys::SessionKeys() = default;
SessionKeys::SessionKeys(SessionKeys&&) noexcept = default;
SessionKeys& SessionKeys::operator=(SessionKeys&&) noexcept = default;
SessionKeys::~SessionKeys() = default;

SessionKeys makeSessionKeys(KeySourceKind kind, const Clock& clock) {
    SessionKeys keys;
    if (kind == KeySourceKind::none) {
        keys.hotKey = std::make_unique<NoHotKey>();
        keys.tap = std::make_unique<NoKeys>();
        return keys;
    }
    if (kind == KeySourceKind::x11) {
        keys.hotKey = std::make_unique<X11HotKey>();
        keys.tap = std::make_unique<X11KeyTap>(clock);
        keys.keymap = std::make_unique<X11Keymap>();
        return keys;
    }
    keys.keymap = std::make_unique<WaylandKeymap>();
    auto hotKey = std::make_unique<ReadHotKey>();
    keys.devices = std::make_unique<UdevInputDevices>();
    auto reader = std::make_unique<ReaderKeyboards>(readerSocket(), *keys.devices);
    keys.tap = std::make_unique<EvdevKeyTap>(
        clock, *reader, [&reader = *reader] { return reader.granted() || KeyGrant().given(); },
        hotKey.get(), configuredForm());
    keys.reader = std::move(reader);
    keys.shortcut = std::make_unique<GlobalShortcut>();
    keys.shortcut->onPress = [&read = *hotKey] { read.pressedElsewhere(); };
    keys.shortcut->onBound = [&read = *hotKey](bool bound) { read.leaveToOthers(bound); };
    keys.hotKey = std::move(hotKey);
    return keys;
}

std::unique_ptr<QtWatch> showLegends(const SessionKeys& keys,
                                     const std::optional<std::string>& name, Log& log,
                                     std::function<void(const KeyLegends&)> show) {
    if (name) {
        const std::optional<KeyLegends> legends = legendsOfLayout(*name);
        if (!legends) {
            log.warning("No keyboard layout is called \"" + *name + "\"");
        }
        show(legends.value_or(KeyLegends()));
        return nullptr;
    }
    if (!keys.keymap) {
        return nullptr;
    }
    keys.keymap->onLegends = std::move(show);
    return std::make_unique<QtWatch>(*keys.keymap);
}

} // namespace vornic
