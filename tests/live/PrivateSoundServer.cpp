#include "tests/live/PrivateSoundServer.h"

#include "tests/support/WaitFor.h"

#include <pipewire/keys.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <utility>

namespace vornic {

namespace fs = std::filesystem;

namespace {

/// Every question starts a program, and the machine may be busy with others.
constexpr std::chrono::seconds patience{60};

} // namespace

PrivateSoundServer::PrivateSoundServer() {
    std::string name = (fs::temp_directory_path() / "vornic-sound-XXXXXX").string();
    if (mkdtemp(name.data()) == nullptr) {
        throw std::runtime_error("no folder for a sound server");
    }
    folder_ = name;
    fs::create_directories(folder_ / "run");
    fs::permissions(folder_ / "run", fs::perms::owner_all);
}

PrivateSoundServer::~PrivateSoundServer() {
    kill();
    std::error_code ignored;
    fs::remove_all(folder_, ignored);
}

std::string PrivateSoundServer::remote() const {
    return folder_ / "run" / "pipewire-0";
}

ChildProcess::Environment PrivateSoundServer::environment() const {
    return {{"XDG_RUNTIME_DIR", folder_ / "run"},    {"PIPEWIRE_RUNTIME_DIR", folder_ / "run"},
            {"PIPEWIRE_REMOTE", "pipewire-0"},       {"HOME", folder_},
            {"XDG_CONFIG_HOME", folder_ / "config"}, {"XDG_STATE_HOME", folder_ / "state"},
            {"XDG_CACHE_HOME", folder_ / "cache"}};
}

std::string PrivateSoundServer::run(std::vector<std::string> command) const {
    const fs::path output = folder_ / "output";
    fs::remove(output);
    ChildProcess tool(std::move(command), environment(), output);
    if (tool.wait() != 0) {
        return {};
    }
    std::ifstream stream(output);
    return {std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
}

void PrivateSoundServer::startServer() {
    server_ = std::make_unique<ChildProcess>(std::vector<std::string>{"pipewire"}, environment(),
                                             folder_ / "server.log");
    if (!waitFor([this] { return fs::exists(remote()) && !run({"pw-cli", "info", "0"}).empty(); },
                 patience)) {
        throw std::runtime_error("the private sound server does not start");
    }
}

void PrivateSoundServer::startSessionManager() {
    // Its Bluetooth monitor would end it on a machine without logind, such as a container.
    const fs::path settings = folder_ / "config" / "wireplumber" / "bluetooth.lua.d";
    fs::create_directories(settings);
    std::ofstream(settings / "80-none.lua") << "bluez_monitor.enabled = false\n";
    manager_ = std::make_unique<ChildProcess>(std::vector<std::string>{"wireplumber"},
                                              environment(), folder_ / "manager.log");
}

void PrivateSoundServer::start() {
    startServer();
    startSessionManager();
}

void PrivateSoundServer::kill() {
    if (server_ != nullptr) {
        server_->end(SIGKILL);
    }
    // The session manager ends by itself with its server, in its own time.
    if (manager_ != nullptr) {
        manager_->end(SIGKILL);
    }
    server_.reset();
    manager_.reset();
    // What a crashed server leaves behind, a restarted one replaces; here it goes at once, so that
    // its return shows.
    fs::remove(remote());
    fs::remove(remote() + ".lock");
}

void PrivateSoundServer::freeze() {
    server_->send(SIGSTOP);
}

void PrivateSoundServer::thaw() {
    server_->send(SIGCONT);
}

void PrivateSoundServer::addSink(const std::string& name, const std::string& properties) {
    run({"pw-cli", "create-node", "adapter",
         "{ factory.name=support.null-audio-sink node.name=" + name + " node.description=" + name +
             " media.class=Audio/Sink audio.position=[FL FR] object.linger=true " + properties +
             " }"});
}

void PrivateSoundServer::addSource(const std::string& name) {
    run({"pw-cli", "create-node", "adapter",
         "{ factory.name=support.null-audio-sink node.name=" + name +
             " media.class=Audio/Source/Virtual audio.position=[MONO] object.linger=true }"});
}

void PrivateSoundServer::removeSink(const std::string& name) {
    run({"pw-cli", "destroy", name});
}

void PrivateSoundServer::chooseSink(const std::string& name) {
    run({"pw-metadata", "-n", "default", "0", "default.configured.audio.sink",
         R"({ "name": ")" + name + R"(" })", "Spa:String:JSON"});
}

bool PrivateSoundServer::waitForDefaultSink(const std::string& name) {
    return waitForDefault("default.audio.sink", name);
}

bool PrivateSoundServer::waitForDefaultSource(const std::string& name) {
    return waitForDefault("default.audio.source", name);
}

int PrivateSoundServer::ownClients() const {
    const std::string clients = run({"pw-cli", "ls", "Client"});
    const std::string own = PW_KEY_SEC_PID " = \"" + std::to_string(getpid()) + "\"";
    int count = 0;
    for (auto at = clients.find(own); at != std::string::npos; at = clients.find(own, at + 1)) {
        ++count;
    }
    return count;
}

bool PrivateSoundServer::waitForDefault(const std::string& key, const std::string& name) const {
    return waitFor(
        [&] {
            return run({"pw-metadata", "-n", "default", "0", key}).find("\"" + name + "\"") !=
                   std::string::npos;
        },
        patience);
}

} // namespace vornic
