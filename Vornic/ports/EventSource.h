#pragma once

namespace vornic {

/// Something whose events are waited for by its file descriptor and then delivered. Thread: key, or
/// any one that waits.
class EventSource {
  public:
    EventSource() = default;
    EventSource(const EventSource&) = delete;
    EventSource& operator=(const EventSource&) = delete;
    virtual ~EventSource() = default;

    /// Readable when events wait; -1 when there is nothing to wait for. May change with every call
    /// of the source, so the waiting thread asks again before each wait.
    virtual int fileDescriptor() const = 0;

    /// Delivers every waiting event. A source whose other side is gone gives up its descriptor
    /// here, since that would stay readable for ever.
    virtual void dispatch() = 0;

    /// Overwrites what it still holds of events that it has delivered: asked for when nothing has
    /// come for a while. False when events came meanwhile, and it has to be asked again.
    virtual bool forget() { return true; }
};

} // namespace vornic
