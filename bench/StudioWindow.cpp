#include "bench/StudioWindow.h"

#include "bench/FrameLog.h"
#include "tests/support/ClickPack.h"
#include "tests/support/WaitFor.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <chrono>
#include <optional>
#include <stdexcept>
#include <thread>
#include <utility>

namespace vornic {

using namespace std::chrono_literals;

ChildProcess::Environment StudioWindow::environment() {
    ChildProcess::Environment all = FrameLog::environment();
    all.emplace_back("QT_LINUX_ACCESSIBILITY_ALWAYS_ON", "1");
    return all;
}

void StudioWindow::await(const std::filesystem::path& log, const std::string& text) {
    if (!waitFor([&] { return readBytes(log).find(text) != std::string::npos; })) {
        throw std::runtime_error("a program did not start:\n" + readBytes(log));
    }
}

StudioWindow::StudioWindow() {
    writeClickPack(scratch_ / "packs");
    scratch_.write("config/Vornic/settings.json", R"({"advanced": true, "welcomed": true})");
    program_ = std::make_unique<ChildProcess>(
        std::vector<std::string>{VORNIC_PROGRAM, "--packs", (scratch_ / "packs").string()}, own(),
        log().string());
    await(log(), "Vornic is listening");
    click("Open Vornic…");
    shown("A / B");
}

ChildProcess::Environment StudioWindow::own() const {
    ChildProcess::Environment all = environment();
    all.emplace_back("XDG_CONFIG_HOME", (scratch_ / "config").string());
    all.emplace_back("XDG_DATA_HOME", (scratch_ / "data").string());
    return all;
}

double StudioWindow::lastRenderMillis() {
    const auto answer = scratch_ / "status.json";
    ChildProcess({VORNIC_PROGRAM, "status", "--json"}, own(), answer.string()).wait();
    return nlohmann::json::parse(readBytes(answer))["lastRenderMillis"];
}

AccessibleTree::Node StudioWindow::shown(const QString& name) {
    std::optional<AccessibleTree::Node> node;
    waitFor([&] { return (node = tree_.showing("Vornic", name)).has_value(); });
    if (!node) {
        throw std::runtime_error(name.toStdString() + " is nowhere to be seen");
    }
    return *node;
}

QRect StudioWindow::place() {
    // A choice in it has the same name.
    QRect largest;
    for (const AccessibleTree::Node& node :
         tree_.all("Vornic", [](const auto& each) { return each.name == "Studio"; })) {
        if (node.place.width() > largest.width()) {
            largest = node.place;
        }
    }
    return largest;
}

std::vector<AccessibleTree::Node>
StudioWindow::settled(const std::function<bool(const AccessibleTree::Node&)>& wanted) {
    std::vector<AccessibleTree::Node> nodes = tree_.all("Vornic", wanted);
    waitFor([&] {
        const std::vector<AccessibleTree::Node> before = std::exchange(nodes, {});
        std::this_thread::sleep_for(100ms);
        nodes = tree_.all("Vornic", wanted);
        return std::ranges::equal(nodes, before, {}, &AccessibleTree::Node::place,
                                  &AccessibleTree::Node::place);
    });
    return nodes;
}

} // namespace vornic
