#pragma once

#include "Vornic/linux/soundserver/PipeWireHandles.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

namespace vornic {

/// The property `key`; empty when there is none.
std::string_view lookUp(const spa_dict* properties, const char* key);

/// Is told of every object of the server that comes and goes. Thread: any that holds the server's
/// loop.
class RegistryWatch {
  public:
    using Added =
        std::function<void(std::uint32_t id, const char* type, const spa_dict* properties)>;
    using Removed = std::function<void(std::uint32_t id)>;

    RegistryWatch(pw_core* core, Added added, Removed removed);
    RegistryWatch(const RegistryWatch&) = delete;
    RegistryWatch& operator=(const RegistryWatch&) = delete;
    ~RegistryWatch() = default;

    /// Null where the server has none to give.
    pw_registry* get() const { return registry_.get(); }

  private:
    Added added_;
    Removed removed_;
    RegistryHandle registry_;
    Listener listener_;
};

/// Follows what a session manager has chosen: the names of the default sink and source. One for all
/// of a connection, bound before anything else is made from it: until the session manager has
/// answered that, the server listens to no more from this connection; and while that waits for a
/// stream of this connection to answer it, both would wait for ever. Thread: any that holds the
/// server's loop.
class DefaultNames {
  public:
    /// `changed` is called when an answer below may have become another.
    DefaultNames(pw_core* core, std::function<void()> changed);
    DefaultNames(const DefaultNames&) = delete;
    DefaultNames& operator=(const DefaultNames&) = delete;
    ~DefaultNames() = default;

    /// Whether somebody chooses at all: a session manager is running.
    bool areChosen() const { return metadata_ != nullptr; }

    /// The nodes' names; empty while nothing is chosen.
    const std::string& sink() const { return sink_; }
    const std::string& source() const { return source_; }

    /// Asks once more: a server sends no changes to anybody while it answers somebody who asks for
    /// all of them, so the word of one can get lost. Not while a stream is made.
    void askAgain();

  private:
    void add(std::uint32_t id, const char* type, const spa_dict* properties);
    void remove(std::uint32_t id);
    void bind();
    void set(const char* key, const char* value);

    std::function<void()> changed_;
    RegistryWatch registry_; // its object below goes before it
    std::uint32_t id_ = SPA_ID_INVALID;
    MetadataHandle metadata_;
    std::unique_ptr<Listener> listener_;
    std::string sink_;
    std::string source_;
};

/// Waits until the server has answered so many questions, one after the other: then it has told
/// what it had to tell, and what was asked on that. Thread: any that holds the server's loop.
class RoundTrips {
  public:
    /// `done` is called once.
    RoundTrips(pw_core* core, int count, std::function<void()> done);
    RoundTrips(const RoundTrips&) = delete;
    RoundTrips& operator=(const RoundTrips&) = delete;
    ~RoundTrips() = default;

    bool areDone() const { return left_ == 0; }

  private:
    void note(int number);

    pw_core* core_;
    int left_;
    std::function<void()> done_;
    Listener listener_;
    int awaited_ = 0;
};

} // namespace vornic
