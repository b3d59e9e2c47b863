#include "Vornic/linux/reader/KeyReader.h"

#include "Vornic/linux/keys/KeyAccess.h"
#include "Vornic/reader/Admission.h"
#include "VornicCore/realtime/Forget.h"

#include <poll.h>
#include <sys/random.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstring>
#include <iterator>
#include <utility>

namespace vornic {

namespace {

using namespace std::chrono_literals;

constexpr auto idle = 30s;
constexpr auto longestSilence = 5s; // of a client that is not admitted yet
constexpr std::size_t mostClients = 8;
constexpr std::ptrdiff_t mostOfOneUser = 3;

} // namespace

KeyReader::KeyReader(int listening, std::string installed, uid_t owner)
    : listening_(listening), installed_(std::move(installed)), owner_(owner) {}

void KeyReader::run() {
    while (!clients_.empty() || Time::now() - latest_ < idle) {
        while (std::exchange(undecided_, false) || bus_.process()) {
            decide();
            removeGone();
        }
        wait();
        removeGone();
    }
}

void KeyReader::wait() {
    std::vector<pollfd> waiting;
    const auto watch = [&waiting](int descriptor) {
        waiting.push_back({.fd = descriptor, .events = POLLIN, .revents = 0});
    };
    // Who is too many waits until somebody has gone.
    watch(clients_.size() < mostClients ? listening_ : -1);
    watch(bus_.fileDescriptor());
    watch(devices_.fileDescriptor());
    std::ranges::for_each(clients_, watch, &Client::socket);
    for (const Keyboard& keyboard : keyboards_) {
        watch(keyboard.device->fileDescriptor());
    }
    const bool calm =
        !askAgain_ && !clients_.empty() && std::ranges::all_of(clients_, &Client::admitted);
    const int ready = ::poll(waiting.data(), waiting.size(), calm ? -1 : 1000);
    undecided_ = undecided_ || (ready == 0 && std::exchange(askAgain_, false));
    const auto firstClient = waiting.begin() + 3;
    const auto firstKeyboard = firstClient + std::ssize(clients_);
    // From behind: one that is unplugged leaves its place.
    for (auto place = std::ssize(keyboards_) - 1; place >= 0; --place) {
        if (firstKeyboard[place].revents != 0) {
            read(keyboards_.begin() + place);
        }
    }
    for (auto place = std::ssize(clients_) - 1; place >= 0; --place) {
        Client& client = clients_[static_cast<std::size_t>(place)];
        if (firstClient[place].revents != 0) {
            listenTo(client);
        }
        client.gone =
            client.gone || (!client.admitted && Time::now() - client.came > longestSilence);
    }
    undecided_ = undecided_ || devices_.changed();
    if (waiting.front().revents != 0) {
        letIn();
    }
}

void KeyReader::letIn() {
    Client client;
    client.socket = ::accept4(listening_, nullptr, nullptr, SOCK_CLOEXEC | SOCK_NONBLOCK);
    const int yes = 1;
    socklen_t length = sizeof client.process;
    const bool known =
        ::getsockopt(client.socket, SOL_SOCKET, SO_PEERCRED, &client.process, &length) == 0 &&
        ::setsockopt(client.socket, SOL_SOCKET, SO_PASSCRED, &yes, sizeof yes) == 0 &&
        ::getrandom(&client.challenge.number, sizeof client.challenge.number, 0) > 0;
    const auto user = [](const Client& one) { return one.process.uid; };
    const std::string why =
        !known ? "a process that cannot be known"
        : std::ranges::count(clients_, user(client), user) >= mostOfOneUser
            ? "one more of the same user"
            : whyRefused("/proc/" + std::to_string(client.process.pid), installed_, owner_);
    if (!why.empty()) {
        std::fprintf(stderr, "vornic-keys: refused %s\n", why.c_str());
        ::close(client.socket);
        return;
    }
    tell(client, client.challenge);
    clients_.push_back(client);
}

void KeyReader::listenTo(Client& client) {
    std::array<std::uint8_t, longestReaderPacket> packet{};
    alignas(cmsghdr) std::array<char, CMSG_SPACE(sizeof(ucred))> control{};
    iovec part{.iov_base = packet.data(), .iov_len = packet.size()};
    msghdr message{.msg_name = nullptr,
                   .msg_namelen = 0,
                   .msg_iov = &part,
                   .msg_iovlen = 1,
                   .msg_control = control.data(),
                   .msg_controllen = control.size(),
                   .msg_flags = 0};
    const ssize_t got = ::recvmsg(client.socket, &message, MSG_DONTWAIT);
    ucred sender{};
    const cmsghdr* const header = CMSG_FIRSTHDR(&message);
    if (got > 0 && header != nullptr && header->cmsg_type == SCM_CREDENTIALS) {
        std::memcpy(&sender, CMSG_DATA(header), sizeof sender);
    }
    // The socket may be another process's too, which it came from: only the one that was looked at
    // is believed. It has nothing else to say.
    const bool isAnswer = got > 0 && !client.admitted && sender.pid == client.process.pid &&
                          messageOf({packet.data(), static_cast<std::size_t>(got)}) ==
                              ReaderMessage(client.challenge);
    client.admitted = isAnswer;
    client.gone = !isAnswer;
    undecided_ = true;
}

void KeyReader::tell(Client& client, const ReaderMessage& message) {
    auto packet = packetOf(message);
    const ssize_t sent =
        ::send(client.socket, packet.data(), packet.size(), MSG_DONTWAIT | MSG_NOSIGNAL);
    std::ranges::for_each(packet, [](std::uint8_t& byte) { forget(byte); });
    // Who does not listen would take a missing release for a held key.
    client.gone = client.gone || sent != static_cast<ssize_t>(packet.size());
}

void KeyReader::tellHeard(const ReaderMessage& message) {
    const auto client = std::ranges::find(clients_, heard_, &Client::socket);
    if (client != clients_.end()) {
        tell(*client, message);
    }
}

void KeyReader::removeGone() {
    for (auto place = std::ssize(clients_) - 1; place >= 0; --place) {
        const auto client = clients_.begin() + place;
        if (!client->gone) {
            continue;
        }
        if (client->socket == heard_) {
            keyboards_.clear();
            heard_ = -1;
        }
        ::close(client->socket);
        clients_.erase(client);
        latest_ = Time::now();
        undecided_ = true;
    }
}

void KeyReader::decide() {
    std::vector<ReaderClient> facts;
    for (const Client& client : clients_) {
        const std::string seat = client.admitted ? bus_.seatOf(client.process.uid) : std::string();
        facts.push_back(
            {seat, !seat.empty() && bus_.allows(client.process.pid, client.process.uid)});
    }
    askAgain_ = bus_.missedAnswer();
    const std::vector<ReaderStanding> standings = standingsOf(facts);
    const auto place = static_cast<std::size_t>(
        std::ranges::find(standings, ReaderStanding::hearing) - standings.begin());
    const int hearing = place < clients_.size() ? clients_[place].socket : -1;
    if (hearing != heard_) {
        while (!keyboards_.empty()) {
            close(std::prev(keyboards_.end()));
        }
        devices_.unwatch();
        heard_ = hearing;
    }
    for (std::size_t one = 0; one < clients_.size(); ++one) {
        Client& client = clients_[one];
        if (client.admitted && std::exchange(client.told, standings[one]) != standings[one]) {
            tell(client, standings[one]);
        }
    }
    if (heard_ >= 0) {
        open(facts[place].seat);
    }
}

void KeyReader::open(const std::string& seat) {
    // Watching comes before listing, so that nothing plugged in between is missed.
    devices_.watch();
    std::vector<KeyboardDescription> present = devices_.keyboards();
    std::erase_if(present, [&](const auto& keyboard) { return keyboard.seat != seat; });
    for (auto place = std::ssize(keyboards_) - 1; place >= 0; --place) {
        const auto keyboard = keyboards_.begin() + place;
        if (std::ranges::find(present, keyboard->description) == present.end()) {
            close(keyboard);
        }
    }
    for (const KeyboardDescription& keyboard : present) {
        if (std::ranges::find(keyboards_, keyboard, &Keyboard::description) != keyboards_.end()) {
            continue;
        }
        if (auto device = EvdevDevice::open(keyboard.path)) {
            tellHeard(ReaderKeyboard{++numbers_, keyboard.bus, keyboard.vendor, keyboard.product,
                                     keyboard.name, keyboard.port, device->keysItHas()});
            keyboards_.push_back({keyboard, numbers_, std::move(device)});
        }
    }
}

void KeyReader::close(Keyboards::iterator keyboard) {
    tellHeard(ReaderKeyboardGone{keyboard->number});
    keyboards_.erase(keyboard);
}

void KeyReader::read(Keyboards::iterator keyboard) {
    const bool isThere = keyboard->device->read(keys_);
    constexpr std::int32_t repeat = 2;
    for (KernelKey& key : keys_) {
        if (key.value != repeat && isKeyOfAKeyboard(key.code)) {
            tellHeard(ReaderKey{keyboard->number, static_cast<std::uint16_t>(key.code),
                                key.value != 0, key.nanos});
        }
        forget(key);
    }
    keys_.clear();
    if (!isThere) {
        close(keyboard);
    }
}

} // namespace vornic
