#pragma once

#include "Vornic/linux/soundserver/PipeWireHandles.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <string>

namespace vornic {

/// Follows one of the choices that a session manager makes, such as "default.audio.sink": the name
/// of a node. Everything on the loop's thread.
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

} // namespace vornic
