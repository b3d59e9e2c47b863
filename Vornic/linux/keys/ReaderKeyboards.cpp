#include "Vornic/linux/keys/ReaderKeyboards.h"

#include "Vornic/linux/keys/KeyAccess.h"
#include "VornicCore/realtime/Forget.h"

#include <poll.h>
#include <sys/epoll.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <utility>
#include <variant>

namespace vornic {

namespace {

constexpr int firstAnswerMillis = 2000;

std::string pathOf(std::uint32_t number) {
    return "key reader: " + std::to_string(number);
}

void waitFor(int waiting, int descriptor) {
    if (descriptor >= 0) {
        epoll_event event{};
        event.events = EPOLLIN;
        ::epoll_ctl(waiting, EPOLL_CTL_ADD, descriptor, &event);
    }
}

} // namespace

/// A keyboard whose keys come through the reader's socket.
class ReaderKeyboards::Keyboard final : public InputDevice {
  public:
    Keyboard(ReaderKeyboards& all, std::uint32_t number) : all_(all), number_(number) {}
    // The one socket is waited for already.
    int fileDescriptor() const override { return -1; }
    // The reader tells of what happens, not of what has happened.
    std::vector<std::uint32_t> keysDown() const override { return {}; }
    bool read(std::vector<KernelKey>& keys) override {
        all_.receive();
        const auto heard = all_.heard_.find(number_);
        if (heard == all_.heard_.end()) {
            return false;
        }
        for (KernelKey& key : heard->second.waiting) {
            keys.push_back(key);
            forget(key);
        }
        heard->second.waiting.clear();
        return true;
    }

  private:
    ReaderKeyboards& all_;
    std::uint32_t number_;
};

ReaderKeyboards::ReaderKeyboards(std::string socket, InputDevices& otherwise)
    : path_(std::move(socket)), otherwise_(otherwise) {}

ReaderKeyboards::~ReaderKeyboards() {
    unwatch();
}

void ReaderKeyboards::watch() {
    const bool begins = waiting_ < 0;
    if (begins) {
        waiting_ = ::epoll_create1(EPOLL_CLOEXEC);
        otherwise_.watch();
        waitFor(waiting_, otherwise_.fileDescriptor());
    }
    if (socket_ < 0 && !refused_ && connect()) {
        waitFor(waiting_, socket_);
        // Who starts wants to know how things are.
        pollfd answer{.fd = socket_, .events = POLLIN, .revents = 0};
        while (begins && socket_ >= 0 && !standing_ && ::poll(&answer, 1, firstAnswerMillis) > 0) {
            receive();
        }
    }
}

void ReaderKeyboards::unwatch() {
    disconnect();
    if (waiting_ >= 0) {
        otherwise_.unwatch();
        ::close(waiting_);
        waiting_ = -1;
    }
    refused_ = false;
    changed_ = false;
}

bool ReaderKeyboards::connect() {
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    if (path_.empty() || path_.size() >= sizeof address.sun_path) {
        return false;
    }
    std::ranges::copy(path_, address.sun_path);
    socket_ = ::socket(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC | SOCK_NONBLOCK, 0);
    if (::connect(socket_, reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0) {
        disconnect();
        return false;
    }
    return true;
}

void ReaderKeyboards::disconnect() {
    if (socket_ >= 0) {
        ::close(socket_);
        socket_ = -1;
    }
    asked_ = false;
    standing_.reset();
    heard_.clear();
    changed_ = true;
}

void ReaderKeyboards::receive() {
    std::array<std::uint8_t, longestReaderPacket> packet{};
    while (socket_ >= 0) {
        const ssize_t got = ::recv(socket_, packet.data(), packet.size(), MSG_DONTWAIT);
        if (got < 0 && (errno == EAGAIN || errno == EINTR)) {
            break;
        }
        const auto message =
            got > 0 ? messageOf({packet.data(), static_cast<std::size_t>(got)}) : std::nullopt;
        if (!message) {
            // One that does not even ask is not for this program, and will not be before the next
            // start.
            refused_ = !asked_;
            disconnect();
            break;
        }
        take(*message);
    }
    forget(packet);
}

void ReaderKeyboards::take(const ReaderMessage& message) {
    if (std::holds_alternative<ReaderChallenge>(message)) {
        asked_ = true;
        answer(message);
    } else if (const auto* const standing = std::get_if<ReaderStanding>(&message)) {
        standing_ = *standing;
        changed_ = true;
    } else if (const auto* const keyboard = std::get_if<ReaderKeyboard>(&message)) {
        heard_[keyboard->number].description = {.path = pathOf(keyboard->number),
                                                .name = keyboard->name,
                                                .isVirtual = isMadeByAProgram(keyboard->port),
                                                .port = keyboard->port,
                                                .bus = keyboard->bus,
                                                .vendor = keyboard->vendor,
                                                .product = keyboard->product};
        changed_ = true;
    } else if (const auto* const gone = std::get_if<ReaderKeyboardGone>(&message)) {
        heard_.erase(gone->number);
        changed_ = true;
    } else if (const auto* const key = std::get_if<ReaderKey>(&message)) {
        if (const auto heard = heard_.find(key->keyboard); heard != heard_.end()) {
            heard->second.waiting.push_back(
                {.nanos = key->nanos, .code = key->code, .value = key->down ? 1 : 0});
        }
    }
}

void ReaderKeyboards::answer(const ReaderMessage& message) {
    const auto packet = packetOf(message);
    if (::send(socket_, packet.data(), packet.size(), MSG_DONTWAIT | MSG_NOSIGNAL) < 0) {
        disconnect();
    }
}

bool ReaderKeyboards::changed() {
    const bool others = waiting_ >= 0 && otherwise_.changed();
    receive();
    return std::exchange(changed_, false) || others;
}

bool ReaderKeyboards::granted() const {
    return standing_ && *standing_ != ReaderStanding::notAllowed;
}

std::string ReaderKeyboards::way() const {
    if (taken()) {
        return ", read by vornic-keys for another copy of Vornic";
    }
    return granted() ? ", read by vornic-keys" : "";
}

std::vector<KeyboardDescription> ReaderKeyboards::keyboards() {
    if (!granted()) {
        return otherwise_.keyboards();
    }
    std::vector<KeyboardDescription> found;
    found.reserve(heard_.size());
    for (const auto& [number, heard] : heard_) {
        found.push_back(heard.description);
    }
    return found;
}

bool ReaderKeyboards::mayRead(const std::string& path) const {
    return granted() || otherwise_.mayRead(path);
}

std::unique_ptr<InputDevice> ReaderKeyboards::open(const std::string& path) {
    for (const auto& [number, heard] : heard_) {
        if (heard.description.path == path) {
            return std::make_unique<Keyboard>(*this, number);
        }
    }
    return granted() ? nullptr : otherwise_.open(path);
}

} // namespace vornic
