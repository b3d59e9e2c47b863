#pragma once

#include "Vornic/linux/keys/EvdevDevice.h"
#include "Vornic/linux/keys/UdevInputDevices.h"
#include "Vornic/linux/reader/SystemBus.h"
#include "Vornic/reader/ReaderMessages.h"

#include <sys/socket.h>
#include <sys/types.h>

#include <chrono>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace vornic {

/// Reads the keyboards of the active seat for the one client that may hear them. Keeps no key.
/// Thread: main.
class KeyReader {
  public:
    /// Serves those who connect to `listening`. `installed` is the program that is let in, which
    /// belongs to `owner`.
    KeyReader(int listening, std::string installed, uid_t owner);

    /// Serves until nobody has been here for half a minute; throws when the system bus is gone.
    void run();

  private:
    using Time = std::chrono::steady_clock;

    struct Client {
        int socket = -1;
        ucred process{};
        ReaderChallenge challenge;
        Time::time_point came = Time::now();
        bool admitted = false;
        bool gone = false;
        std::optional<ReaderStanding> told;
    };
    struct Keyboard {
        KeyboardDescription description;
        std::uint32_t number;
        std::unique_ptr<EvdevDevice> device;
    };

    using Keyboards = std::vector<Keyboard>;

    void wait();
    void letIn();
    void listenTo(Client& client);
    static void tell(Client& client, const ReaderMessage& message);
    void tellHeard(const ReaderMessage& message);
    void removeGone();
    void decide();
    void open(const std::string& seat);
    void close(Keyboards::iterator keyboard);
    void read(Keyboards::iterator keyboard);

    int listening_;
    std::string installed_;
    uid_t owner_;
    SystemBus bus_;
    UdevInputDevices devices_;
    std::vector<Client> clients_;
    Keyboards keyboards_;
    std::vector<KernelKey> keys_;
    int heard_ = -1; // the socket of the client that hears
    std::uint32_t numbers_ = 0;
    Time::time_point latest_ = Time::now(); // when anybody was here
    bool undecided_ = true;                 // who hears
    bool askAgain_ = false;                 // in a second, since somebody gave no answer
};

} // namespace vornic
