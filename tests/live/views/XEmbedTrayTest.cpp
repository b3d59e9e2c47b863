// The icon in a real tray of the older kind.

#include "Vornic/linux/tray/XEmbedTray.h"

#include "tests/live/ChildProcess.h"
#include "tests/live/QtLoop.h"
#include "tests/live/views/Pointer.h"
#include "tests/support/ScratchFolder.h"

#include <gtest/gtest.h>

#include <csignal>
#include <memory>

namespace vornic {
namespace {

class XEmbedTrayTest : public ::testing::Test {
  protected:
    std::unique_ptr<ChildProcess> startPanel() {
        return std::make_unique<ChildProcess>(
            std::vector<std::string>{"trayer", "--edge", "top", "--align", "left", "--widthtype",
                                     "pixel", "--width", "200", "--heighttype", "pixel", "--height",
                                     "32", "--tint", "0x000000"},
            ChildProcess::Environment{}, (scratch / "trayer.log").string());
    }

    /// A square of one colour.
    static TrayIcon::Picture square(std::uint8_t red, std::uint8_t green, std::uint8_t blue) {
        TrayIcon::Picture picture{.size = 48, .argb = {}};
        for (int pixel = 0; pixel < 48 * 48; ++pixel) {
            picture.argb.insert(picture.argb.end(), {255, red, green, blue});
        }
        return picture;
    }

    /// The middle of a patch of that colour, 16 pixels wide, at the screen's upper edge; a null
    /// point where there is none.
    QPoint find(std::uint32_t rgb) {
        constexpr std::uint16_t width = 220;
        constexpr std::uint16_t height = 40;
        const X11Owned<xcb_get_image_reply_t> image(
            xcb_get_image_reply(x.get(),
                                xcb_get_image(x.get(), XCB_IMAGE_FORMAT_Z_PIXMAP, x.root(), 0, 0,
                                              width, height, 0xffffffffU),
                                nullptr));
        if (!image) {
            return {};
        }
        const auto* const pixels =
            reinterpret_cast<const std::uint32_t*>(xcb_get_image_data(image.get()));
        const auto has = [&](int column, int row) {
            return (pixels[row * width + column] & 0xffffffU) == rgb;
        };
        for (int y = 0; y + 16 < height; ++y) {
            for (int left = 0; left + 16 < width; ++left) {
                if (has(left, y) && has(left + 15, y + 15)) {
                    return {left + 8, y + 8};
                }
            }
        }
        return {};
    }

    ScratchFolder scratch;
    QtLoop loop;
    X11Connection x{{}};
    Pointer pointer;
};

TEST_F(XEmbedTrayTest, theIconIsSeenClickedAndComesBackWithTheTray) {
    XEmbedTray tray;
    int clicks = 0;
    tray.onActivate = [&](int, int) { ++clicks; };
    tray.show(square(255, 0, 0), "Vornic");
    tray.setWanted(true);
    EXPECT_FALSE(tray.visible()) << "there is no tray yet";

    auto panel = startPanel();
    ASSERT_TRUE(loop.waitFor([&] { return tray.visible(); }))
        << "a tray that starts later is found";
    // The tray may still be making room for it.
    EXPECT_TRUE(loop.waitFor([&] {
        if (const QPoint place = find(0xff0000); !place.isNull()) {
            pointer.click(place);
        }
        return clicks > 0;
    }));

    tray.show(square(0, 0, 255), "Vornic: off");
    EXPECT_TRUE(loop.waitFor([&] { return !find(0x0000ff).isNull(); }));

    panel->end(SIGTERM);
    EXPECT_TRUE(loop.waitFor([&] { return !tray.visible(); }));
    panel = startPanel();
    EXPECT_TRUE(loop.waitFor([&] { return tray.visible() && !find(0x0000ff).isNull(); }));

    tray.setWanted(false);
    EXPECT_FALSE(tray.visible());
    EXPECT_TRUE(loop.waitFor([&] { return find(0x0000ff).isNull(); }));
}

TEST_F(XEmbedTrayTest, withoutAServerItStaysAway) {
    XEmbedTray tray(":9999");
    tray.setWanted(true);
    tray.show(square(255, 0, 0), "Vornic");
    EXPECT_FALSE(tray.visible());
}

} // namespace
} // namespace vornic
