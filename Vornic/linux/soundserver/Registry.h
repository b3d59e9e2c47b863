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

/// Follows one of the choices that a session manager makes, such as "default.audio.sink": the name
/// of a node. Thread: any that holds the server's loop.
class DefaultName {
  public:
    /// `changed` is called when the name may have become another.
    DefaultName(std::string key, std::function<void()> changed);
    DefaultName(const DefaultName&) = delete;
    DefaultName& operator=(const DefaultName&) = delete;
    ~DefaultName() = default;

    /// To be told of every object of the registry; true for the one that holds the choices.
    bool add(pw_registry* registry, std::uint32_t id, const char* type, const spa_dict* properties);
    /// True when that object goes.
    bool remove(std::uint32_t id);

    /// Whether somebody chooses at all: a session manager is running.
    bool isChosenBySomebody() const { return metadata_ != nullptr; }

    /// Empty while nothing is chosen.
    const std::string& name() const { return name_; }

    /// Asks once more: the word of a change can get lost.
    void askAgain();

  private:
    void bind();
    void set(const char* key, const char* value);

    std::string key_;
    std::function<void()> changed_;
    pw_registry* registry_ = nullptr;
    std::uint32_t id_ = SPA_ID_INVALID;
    MetadataHandle metadata_;
    std::unique_ptr<Listener> listener_;
    std::string name_;
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
