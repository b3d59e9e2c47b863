#pragma once

#include <xcb/xcb.h>

#include <cstdlib>
#include <functional>
#include <memory>
#include <string>

namespace vornic {

struct FreeX11 {
    void operator()(void* memory) const { std::free(memory); }
};

/// A reply, an event or an error that xcb allocated.
template <typename Type>
using X11Owned = std::unique_ptr<Type, FreeX11>;

/// A connection to an X server. Thread: any, one for all calls.
class X11Connection {
  public:
    /// Connects to `display`, or to $DISPLAY if that is empty.
    explicit X11Connection(const std::string& display);
    ~X11Connection();
    X11Connection(const X11Connection&) = delete;
    X11Connection& operator=(const X11Connection&) = delete;

    /// False when the server was not reached, has gone, or has ended the connection.
    bool alive() const { return xcb_connection_has_error(connection_) == 0; }

    /// The root window of the first screen. Needs a connection that was alive once.
    xcb_window_t root() const {
        return xcb_setup_roots_iterator(xcb_get_setup(connection_)).data->root;
    }

    int fileDescriptor() const { return xcb_get_file_descriptor(connection_); }

    /// Waits until the server has answered a request without a reply; true when it agreed.
    bool succeeded(xcb_void_cookie_t request) const;

    /// Hands over every event that has arrived. Has to be called after requests with an answer too,
    /// not only when the descriptor is readable: events that came in with the answer wait in
    /// memory.
    void forEachEvent(const std::function<void(const xcb_generic_event_t&)>& handle);

    /// For the functions of xcb.
    xcb_connection_t* get() const { return connection_; }

  private:
    xcb_connection_t* connection_;
};

} // namespace vornic
