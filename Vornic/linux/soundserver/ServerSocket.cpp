#include "Vornic/linux/soundserver/ServerSocket.h"

#include <pipewire/loop.h>
#include <sys/inotify.h>
#include <unistd.h>

#include <array>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <utility>

namespace vornic {

namespace {

std::string environment(const char* name) {
    const char* value = std::getenv(name);
    return value == nullptr ? std::string() : std::string(value);
}

std::string firstOf(std::initializer_list<std::string> candidates) {
    for (const std::string& candidate : candidates) {
        if (!candidate.empty()) {
            return candidate;
        }
    }
    return {};
}

} // namespace

std::filesystem::path ServerSocket::path(const std::string& remote) {
    const std::filesystem::path name =
        firstOf({remote, environment("PIPEWIRE_REMOTE"), "pipewire-0"});
    const std::filesystem::path folder =
        firstOf({environment("PIPEWIRE_RUNTIME_DIR"), environment("XDG_RUNTIME_DIR"),
                 environment("USERPROFILE")});
    return folder / name; // an absolute name stands for itself
}

ServerSocket::ServerSocket(pw_loop* loop, const std::string& remote, std::function<void()> appeared)
    : loop_(loop), appeared_(std::move(appeared)) {
    const std::filesystem::path socket = path(remote);
    name_ = socket.filename();
    const int events = inotify_init1(IN_NONBLOCK | IN_CLOEXEC);
    if (events < 0) {
        return;
    }
    if (inotify_add_watch(events, socket.parent_path().c_str(), IN_CREATE | IN_MOVED_TO) < 0) {
        close(events);
        return;
    }
    // The source closes the descriptor at its end.
    source_ = pw_loop_add_io(
        loop, events, SPA_IO_IN, true,
        [](void* self, int, std::uint32_t) { static_cast<ServerSocket*>(self)->readEvents(); },
        this);
}

ServerSocket::~ServerSocket() {
    if (source_ != nullptr) {
        pw_loop_destroy_source(loop_, source_);
    }
}

void ServerSocket::readEvents() const {
    alignas(inotify_event) std::array<char, 4096> bytes{};
    bool found = false;
    for (;;) {
        const ssize_t count = read(source_->fd, bytes.data(), bytes.size());
        if (count <= 0) {
            break;
        }
        for (std::size_t at = 0; at + sizeof(inotify_event) <= static_cast<std::size_t>(count);) {
            inotify_event event{};
            std::memcpy(&event, bytes.data() + at, sizeof event);
            const char* name = bytes.data() + at + sizeof event;
            found = found || (event.len > 0 && name_ == name);
            at += sizeof event + event.len;
        }
    }
    if (found) {
        appeared_();
    }
}

} // namespace vornic
