#pragma once

#include "tests/live/ChildProcess.h"

#include <filesystem>
#include <memory>
#include <string>

namespace vornic {

/// A PipeWire server of a test's own, with a session manager, which the test may stop and start
/// without disturbing anybody.
class PrivateSoundServer {
  public:
    /// Makes the folders; nothing runs yet.
    PrivateSoundServer();
    ~PrivateSoundServer();
    PrivateSoundServer(const PrivateSoundServer&) = delete;
    PrivateSoundServer& operator=(const PrivateSoundServer&) = delete;

    /// The path of the server's socket, to be used as the name of a remote.
    std::string remote() const;

    /// Starts the server alone, and waits until it answers.
    void startServer();
    /// Starts the session manager.
    void startSessionManager();
    /// Both.
    void start();

    /// Ends both at once, as in a crash.
    void kill();

    /// Stops the server where it stands; it answers nobody until `thaw`.
    void freeze();
    void thaw();

    /// Makes a sink that swallows all sound; `properties` as "key=value key=value".
    void addSink(const std::string& name, const std::string& properties = {});
    /// Makes a silent microphone.
    void addSource(const std::string& name);
    /// Takes a sink away.
    void removeSink(const std::string& name);
    /// Chooses the default sink, as the user does in the settings.
    void chooseSink(const std::string& name);
    /// Waits until the default sink is `name`; false when it does not become it.
    bool waitForDefaultSink(const std::string& name);
    /// The same of the default source.
    bool waitForDefaultSource(const std::string& name);

    /// How many connections this process has to the server.
    int ownClients() const;

  private:
    /// Runs a tool against this server; its output when it succeeded, else an empty text.
    std::string run(std::vector<std::string> command) const;
    ChildProcess::Environment environment() const;
    bool waitForDefault(const std::string& key, const std::string& name) const;

    std::filesystem::path folder_;
    std::unique_ptr<ChildProcess> server_;
    std::unique_ptr<ChildProcess> manager_;
};

} // namespace vornic
