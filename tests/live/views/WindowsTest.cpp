// The real windows on a real display: found by their accessibility tree, clicked by the X server's
// mouse, and what that did asked of the running program.

#include "tests/live/ProgramFixture.h"
#include "tests/live/QtLoop.h"
#include "tests/live/views/AccessibleTree.h"
#include "tests/live/views/Pointer.h"

#include <nlohmann/json.hpp>

#include <optional>
#include <set>

namespace vornic {
namespace {

class WindowsTest : public ProgramFixture {
  protected:
    void SetUp() override {
        qputenv("QT_LINUX_ACCESSIBILITY_ALWAYS_ON", "1");
        scratch.write("config/Vornic/settings.json", R"({"welcomed": true})");
        program = startListening();
        tree.emplace();
    }

    nlohmann::json status() { return nlohmann::json::parse(run({"status", "--json"}).output); }

    std::optional<AccessibleTree::Node> appears(const QString& name) {
        std::optional<AccessibleTree::Node> node;
        loop.waitFor([&] { return (node = tree->showing("Vornic", name)).has_value(); });
        EXPECT_TRUE(node) << name.toStdString() << " is nowhere to be seen";
        return node;
    }
    void click(const QString& name) {
        if (const auto node = appears(name)) {
            pointer.click(node->place.center());
        }
    }
    bool becomes(const std::function<bool(const nlohmann::json&)>& state) {
        return waitFor([&] { return state(status()); });
    }

    QtLoop loop;
    std::unique_ptr<ChildProcess> program;
    std::optional<AccessibleTree> tree;
    Pointer pointer;
};

TEST_F(WindowsTest, clicksChangeWhatTheProgramDoes) {
    // The panel.
    click("Close");
    EXPECT_TRUE(becomes([](const auto& now) {
        return now["status"].template get<std::string>().ends_with("· Close");
    }));
    click("Sounds on or off (Alt+Super+K)");
    EXPECT_TRUE(becomes([](const auto& now) { return now["silence"] == "off"; }));
    click("Sounds on or off (Alt+Super+K)");
    EXPECT_TRUE(becomes([](const auto& now) { return now["silence"].is_null(); }));

    // The simple window.
    click("Open Vornic…");
    ASSERT_TRUE(appears("Pick a keyboard"));
    if (const auto slider = appears("Volume")) {
        const int middle = slider->place.center().y();
        pointer.drag({slider->place.left() + slider->place.width() * 7 / 10, middle},
                     {slider->place.left() + slider->place.width() / 4, middle});
    }
    EXPECT_TRUE(becomes([](const auto& now) {
        const double volume = now["volume"];
        return volume > 0.15 && volume < 0.35;
    })) << status()["volume"];

    // From there the settings, and from there the Studio.
    click("Settings");
    click("Show the advanced editor");
    click("Open Studio");
    ASSERT_TRUE(appears("Built in · editing makes your own copy"));
    EXPECT_EQ(status()["board"]["id"], "spring");
    click("Hear keys come up");
    EXPECT_TRUE(becomes([](const auto& now) { return now["board"]["id"] != "spring"; }))
        << "the first edit makes a copy";
    ASSERT_TRUE(appears("Yours"));
    click("Undo");
    click("Sounds");
    EXPECT_TRUE(loop.waitFor([&] { return !tree->showing("Vornic", "Hear keys come up"); }));
}

TEST_F(WindowsTest, aScreenReaderFindsANameOnEverythingThatTakesTheKeyboard) {
    click("Settings");
    ASSERT_TRUE(appears("Show the advanced editor"));
    const auto nameless = [&] {
        return tree->all("Vornic", [](const AccessibleTree::Node& node) {
            return node.showing && node.focusable && node.name.isEmpty();
        });
    };
    const auto controls = tree->all(
        "Vornic", [](const AccessibleTree::Node& node) { return node.showing && node.focusable; });
    EXPECT_GT(controls.size(), 10U);
    for (const AccessibleTree::Node& node : nameless()) {
        ADD_FAILURE() << node.path.toStdString() << " of role " << node.role;
    }
}

} // namespace
} // namespace vornic
