#include "Vornic/linux/tray/TrayVisual.h"

#include <cstring>

namespace vornic {

TrayVisual trayVisual(const X11Connection& connection, xcb_window_t tray, xcb_atom_t property) {
    xcb_connection_t* const x = connection.get();
    xcb_screen_t* const screen = xcb_setup_roots_iterator(xcb_get_setup(x)).data;
    const X11Owned<xcb_get_property_reply_t> reply(xcb_get_property_reply(
        x, xcb_get_property(x, 0, tray, property, XCB_ATOM_VISUALID, 0, 1), nullptr));
    if (reply && reply->format == 32 && xcb_get_property_value_length(reply.get()) >= 4) {
        xcb_visualid_t wanted = 0;
        std::memcpy(&wanted, xcb_get_property_value(reply.get()), sizeof wanted);
        for (auto depths = xcb_screen_allowed_depths_iterator(screen); depths.rem > 0;
             xcb_depth_next(&depths)) {
            for (auto visuals = xcb_depth_visuals_iterator(depths.data);
                 depths.data->depth == 32 && visuals.rem > 0; xcb_visualtype_next(&visuals)) {
                if (visuals.data->visual_id == wanted) {
                    return {wanted, depths.data->depth};
                }
            }
        }
    }
    return {screen->root_visual, screen->root_depth};
}

} // namespace vornic
