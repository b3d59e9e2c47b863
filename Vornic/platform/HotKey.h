#pragma once

#include <functional>

namespace vornic {

/// One global key combination, Option-Command-K (Alt+Super+K), heard whatever window is in front.
/// Its calls belong to the thread that waits for `fileDescriptor`.
class HotKey {
  public:
    HotKey() = default;
    HotKey(const HotKey&) = delete;
    HotKey& operator=(const HotKey&) = delete;
    virtual ~HotKey() = default;

    /// What the combination does.
    std::function<void()> onPress = [] {};

    /// False when the system refused the combination, for one because another program holds it.
    virtual bool registered() const = 0;

    /// Readable when a press waits; -1 when there is nothing to wait for.
    virtual int fileDescriptor() const = 0;

    /// Calls `onPress` for every waiting press.
    virtual void dispatch() = 0;
};

} // namespace vornic
