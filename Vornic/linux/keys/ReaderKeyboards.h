#pragma once

#include "Vornic/linux/keys/InputDevices.h"
#include "Vornic/reader/ReaderMessages.h"

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace vornic {

/// The keyboards of the key reader (`vornic-keys`), where it is installed and hands keys to this
/// program, and `otherwise` where it does not. Nothing is asked of it but to be heard: whether the
/// permission is there it says by itself, and when that changes. Thread: key.
class ReaderKeyboards final : public InputDevices {
  public:
    /// Where the service listens.
    static constexpr const char* installedSocket = "/run/vornic/keys";

    ReaderKeyboards(std::string socket, InputDevices& otherwise);
    ~ReaderKeyboards() override;
    ReaderKeyboards(const ReaderKeyboards&) = delete;
    ReaderKeyboards& operator=(const ReaderKeyboards&) = delete;

    /// Also connects anew where the reader has gone; waits two seconds at most for its first
    /// answer.
    void watch() override;
    void unwatch() override;
    int fileDescriptor() const override { return waiting_; }
    bool changed() override;
    std::vector<KeyboardDescription> keyboards() override;
    bool mayRead(const std::string& path) const override;
    std::unique_ptr<InputDevice> open(const std::string& path) override;
    std::string way() const override;

    /// Whether the reader hands out keys to this program or another copy of it, be it that nobody
    /// types for it just now.
    bool granted() const;

    /// Whether another copy of this program hears them now.
    bool taken() const { return standing_ == ReaderStanding::taken; }

  private:
    class Keyboard;
    struct Heard {
        KeyboardDescription description;
        std::vector<KernelKey> waiting;
    };

    bool connect();
    void disconnect();
    void receive();
    void take(const ReaderMessage& message);
    void answer(const ReaderMessage& message);

    std::string path_;
    InputDevices& otherwise_;
    int waiting_ = -1; // an epoll descriptor, -1 while not watching
    int socket_ = -1;
    bool refused_ = false; // until watched anew
    bool asked_ = false;   // by the reader, who this is
    bool changed_ = false;
    std::optional<ReaderStanding> standing_;
    std::map<std::uint32_t, Heard> heard_;
};

} // namespace vornic
