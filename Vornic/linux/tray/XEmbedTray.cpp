#include "Vornic/linux/tray/XEmbedTray.h"

#include "Vornic/linux/tray/TrayVisual.h"

#include <QImage>
#include <QPainter>
#include <algorithm>
#include <array>
#include <cstring>
#include <utility>

namespace vornic {

namespace {

constexpr std::uint32_t requestDock = 0;   // SYSTEM_TRAY_REQUEST_DOCK
constexpr std::uint32_t xembedVersion = 0; // of _XEMBED_INFO
constexpr std::uint32_t xembedMapped = 1;
constexpr std::uint32_t leastSizeGiven = 1U << 4U; // PMinSize of WM_SIZE_HINTS
/// Until the tray says how large its icons are.
constexpr int firstSide = 22;

/// What was drawn, over what lies below it: a tray without transparency shows its own ground.
QImage over(const QImage& icon, const xcb_get_image_reply_t* ground) {
    QImage image(icon.size(), QImage::Format_RGB32);
    image.fill(Qt::black);
    const auto bytes = static_cast<int>(image.sizeInBytes());
    if (ground != nullptr && xcb_get_image_data_length(ground) >= bytes) {
        std::memcpy(image.bits(), xcb_get_image_data(ground), static_cast<std::size_t>(bytes));
    }
    QPainter(&image).drawImage(0, 0, icon);
    return image;
}

QImage scaled(const TrayIcon::Picture& picture, int side) {
    QImage image(picture.size, picture.size, QImage::Format_ARGB32);
    auto byte = picture.argb.begin();
    for (int y = 0; y < picture.size; ++y) {
        for (int x = 0; x < picture.size; ++x, byte += 4) {
            image.setPixel(x, y, qRgba(byte[1], byte[2], byte[3], byte[0]));
        }
    }
    return image.scaled(side, side, Qt::KeepAspectRatio, Qt::SmoothTransformation)
        .convertToFormat(QImage::Format_ARGB32_Premultiplied);
}

} // namespace

XEmbedTray::XEmbedTray(std::string display) : display_(std::move(display)) {}

void XEmbedTray::connectToServer() {
    connection_.emplace(display_);
    if (!connection_->alive()) {
        return;
    }
    // A tray that starts says so to the root window.
    const std::uint32_t events = XCB_EVENT_MASK_STRUCTURE_NOTIFY;
    xcb_change_window_attributes(connection_->get(), connection_->root(), XCB_CW_EVENT_MASK,
                                 &events);
    xcb_flush(connection_->get());
    readable_ =
        std::make_unique<QSocketNotifier>(connection_->fileDescriptor(), QSocketNotifier::Read);
    connect(readable_.get(), &QSocketNotifier::activated, this, [this] { dispatch(); });
}

void XEmbedTray::setWanted(bool wanted) {
    if (wanted == wanted_) {
        return;
    }
    wanted_ = wanted;
    if (!connection_) {
        connectToServer();
    }
    if (!connection_->alive()) {
        return;
    }
    if (wanted_) {
        findTray();
    } else {
        leave();
    }
    dispatch();
}

void XEmbedTray::show(const Picture& picture, const std::string& line) {
    if (line != line_) {
        line_ = line;
        name();
    }
    if (!(picture == picture_)) {
        picture_ = picture;
        draw();
    }
    dispatch();
}

void XEmbedTray::dispatch() {
    if (!connection_) {
        return;
    }
    if (!connection_->alive()) {
        readable_.reset();
        setDocked(false);
        return;
    }
    connection_->forEachEvent([this](const xcb_generic_event_t& event) { handle(event); });
    xcb_flush(connection_->get());
}

void XEmbedTray::handle(const xcb_generic_event_t& event) {
    switch (event.response_type & 0x7fU) {
    case XCB_CLIENT_MESSAGE: {
        const auto& message = reinterpret_cast<const xcb_client_message_event_t&>(event);
        if (wanted_ && message.type == atom("MANAGER") &&
            message.data.data32[1] == atom("_NET_SYSTEM_TRAY_S0")) {
            findTray();
        }
        break;
    }
    case XCB_DESTROY_NOTIFY: {
        const auto gone = reinterpret_cast<const xcb_destroy_notify_event_t&>(event).window;
        if (gone == tray_) {
            tray_ = XCB_NONE;
            leave();
        } else if (gone == window_) {
            window_ = XCB_NONE;
            setDocked(false);
        }
        break;
    }
    case XCB_REPARENT_NOTIFY: {
        const auto& moved = reinterpret_cast<const xcb_reparent_notify_event_t&>(event);
        if (moved.window == window_) {
            setDocked(moved.parent != connection_->root());
        }
        break;
    }
    case XCB_CONFIGURE_NOTIFY: {
        const auto& configured = reinterpret_cast<const xcb_configure_notify_event_t&>(event);
        if (configured.window == window_) {
            side_ = std::min<int>(configured.width, configured.height);
            draw();
        }
        break;
    }
    case XCB_EXPOSE:
        draw();
        break;
    case XCB_BUTTON_PRESS: {
        const auto& press = reinterpret_cast<const xcb_button_press_event_t&>(event);
        // The wheel comes as further buttons.
        constexpr xcb_button_t up = 4;
        constexpr xcb_button_t down = 5;
        if (press.detail < up) {
            onActivate(press.root_x, press.root_y);
        } else if (press.detail <= down) {
            onScroll(press.detail == up ? 1.0 : -1.0);
        }
        break;
    }
    default:
        break;
    }
}

bool XEmbedTray::offered() {
    XEmbedTray look;
    look.connection_.emplace(look.display_);
    return look.connection_->alive() && look.trayWindow() != XCB_NONE;
}

xcb_window_t XEmbedTray::trayWindow() {
    xcb_connection_t* const x = connection_->get();
    const X11Owned<xcb_get_selection_owner_reply_t> owner(xcb_get_selection_owner_reply(
        x, xcb_get_selection_owner(x, atom("_NET_SYSTEM_TRAY_S0")), nullptr));
    return owner ? owner->owner : static_cast<xcb_window_t>(XCB_NONE);
}

void XEmbedTray::findTray() {
    xcb_connection_t* const x = connection_->get();
    tray_ = trayWindow();
    if (tray_ != XCB_NONE) {
        const std::uint32_t events = XCB_EVENT_MASK_STRUCTURE_NOTIFY;
        xcb_change_window_attributes(x, tray_, XCB_CW_EVENT_MASK, &events);
        dock();
    }
}

void XEmbedTray::dock() {
    leave();
    makeWindow();
    xcb_client_message_event_t message{};
    message.response_type = XCB_CLIENT_MESSAGE;
    message.format = 32;
    message.window = tray_;
    message.type = atom("_NET_SYSTEM_TRAY_OPCODE");
    message.data.data32[0] = XCB_CURRENT_TIME;
    message.data.data32[1] = requestDock;
    message.data.data32[2] = window_;
    xcb_send_event(connection_->get(), 0, tray_, XCB_EVENT_MASK_NO_EVENT,
                   reinterpret_cast<const char*>(&message));
    xcb_flush(connection_->get());
}

void XEmbedTray::makeWindow() {
    xcb_connection_t* const x = connection_->get();
    const TrayVisual visual = trayVisual(*connection_, tray_, atom("_NET_SYSTEM_TRAY_VISUAL"));
    depth_ = visual.depth;
    side_ = firstSide;
    window_ = xcb_generate_id(x);
    colours_ = xcb_generate_id(x);
    xcb_create_colormap(x, XCB_COLORMAP_ALLOC_NONE, colours_, connection_->root(), visual.id);
    // A ground of its own where it may be clear; else what the tray shows behind it.
    const bool clear = depth_ == 32;
    const std::array<std::uint32_t, 4> values{
        clear ? 0U : static_cast<std::uint32_t>(XCB_BACK_PIXMAP_PARENT_RELATIVE), 0,
        XCB_EVENT_MASK_EXPOSURE | XCB_EVENT_MASK_STRUCTURE_NOTIFY | XCB_EVENT_MASK_BUTTON_PRESS,
        colours_};
    xcb_create_window(x, depth_, window_, connection_->root(), 0, 0, firstSide, firstSide, 0,
                      XCB_WINDOW_CLASS_INPUT_OUTPUT, visual.id,
                      (clear ? XCB_CW_BACK_PIXEL : XCB_CW_BACK_PIXMAP) | XCB_CW_BORDER_PIXEL |
                          XCB_CW_EVENT_MASK | XCB_CW_COLORMAP,
                      values.data());
    const std::array<std::uint32_t, 2> info{xembedVersion, xembedMapped};
    const xcb_atom_t kind = atom("_XEMBED_INFO");
    xcb_change_property(x, XCB_PROP_MODE_REPLACE, window_, kind, kind, 32, info.size(),
                        info.data());
    // Some trays make no room for what does not ask for it (ICCCM 4.1.2.3).
    std::array<std::uint32_t, 18> hints{};
    hints[0] = leastSizeGiven;
    hints[5] = hints[6] = firstSide;
    xcb_change_property(x, XCB_PROP_MODE_REPLACE, window_, XCB_ATOM_WM_NORMAL_HINTS,
                        XCB_ATOM_WM_SIZE_HINTS, 32, hints.size(), hints.data());
    name();
}

void XEmbedTray::name() {
    if (window_ != XCB_NONE) {
        xcb_change_property(connection_->get(), XCB_PROP_MODE_REPLACE, window_,
                            atom("_NET_WM_NAME"), atom("UTF8_STRING"), 8,
                            static_cast<std::uint32_t>(line_.size()), line_.data());
    }
}

void XEmbedTray::leave() {
    if (window_ != XCB_NONE) {
        xcb_destroy_window(connection_->get(), window_);
        xcb_free_colormap(connection_->get(), colours_);
        window_ = XCB_NONE;
    }
    setDocked(false);
}

void XEmbedTray::setDocked(bool docked) {
    if (docked != docked_) {
        docked_ = docked;
        onVisibleChange();
    }
}

void XEmbedTray::draw() {
    if (!docked_ || window_ == XCB_NONE || picture_.size == 0 || side_ <= 0) {
        return;
    }
    xcb_connection_t* const x = connection_->get();
    const auto side = static_cast<std::uint16_t>(side_);
    QImage image = scaled(picture_, side_);
    xcb_clear_area(x, 0, window_, 0, 0, 0, 0);
    if (depth_ != 32) {
        const X11Owned<xcb_get_image_reply_t> ground(xcb_get_image_reply(
            x, xcb_get_image(x, XCB_IMAGE_FORMAT_Z_PIXMAP, window_, 0, 0, side, side, 0xffffffffU),
            nullptr));
        image = over(image, ground.get());
    }
    const xcb_gcontext_t context = xcb_generate_id(x);
    xcb_create_gc(x, context, window_, 0, nullptr);
    xcb_put_image(x, XCB_IMAGE_FORMAT_Z_PIXMAP, window_, context, side, side, 0, 0, 0, depth_,
                  static_cast<std::uint32_t>(image.sizeInBytes()), image.constBits());
    xcb_free_gc(x, context);
    xcb_flush(x);
}

xcb_atom_t XEmbedTray::atom(const std::string& name) {
    xcb_connection_t* const x = connection_->get();
    const X11Owned<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(
        x, xcb_intern_atom(x, 0, static_cast<std::uint16_t>(name.size()), name.data()), nullptr));
    return reply ? reply->atom : static_cast<xcb_atom_t>(XCB_ATOM_NONE);
}

} // namespace vornic
