#pragma once

#include "Vornic/linux/soundserver/PipeWireHandles.h"

#include <spa/monitor/device.h>

#include <atomic>
#include <cstdint>
#include <string>

namespace vornic {

/// A sound card that exists only in the server's list of objects: it has a socket in use, and makes
/// no sound.
class FakeSoundCard {
  public:
    /// `remote` is the server; `profileDevice` is which of the card's sinks uses the socket.
    FakeSoundCard(const std::string& remote, std::int32_t profileDevice, std::string portType);
    ~FakeSoundCard();
    FakeSoundCard(const FakeSoundCard&) = delete;
    FakeSoundCard& operator=(const FakeSoundCard&) = delete;

    /// The number that the server gave the card; waits for it.
    std::uint32_t id() const;

    /// Something else is plugged in.
    void plug(std::string portType);

  private:
    void tellInfo(spa_hook_list* listeners) const;
    int tellRoute(int sequence, std::uint32_t parameter, std::uint32_t start);

    const std::int32_t profileDevice_;
    std::string portType_;
    bool changed_ = false;
    spa_device device_{};
    spa_hook_list listeners_{};
    std::atomic<std::uint32_t> id_{SPA_ID_INVALID};
    LoopHandle loop_;
    ContextHandle context_;
    CoreHandle core_;
    ProxyHandle proxy_;
    Listener proxyListener_;
};

} // namespace vornic
