#include "bench/StudioDrag.h"

#include "tests/live/views/AccessibleTree.h"
#include "tests/live/views/Pointer.h"
#include "tests/support/WaitFor.h"

#include <chrono>
#include <cmath>
#include <optional>
#include <stdexcept>

namespace vornic {

namespace {

AccessibleTree::Node shown(const AccessibleTree& tree, const QString& name) {
    std::optional<AccessibleTree::Node> node;
    waitFor([&] { return (node = tree.showing("Vornic", name)).has_value(); });
    if (!node) {
        throw std::runtime_error(name.toStdString() + " is nowhere to be seen");
    }
    return *node;
}

} // namespace

StudioDrag::StudioDrag() {
    const AccessibleTree tree;
    for (const char* const name : {"Open Vornic…", "Sounds"}) {
        Pointer().click(shown(tree, name).place.center());
    }
    const QRect slider = shown(tree, "Drive").place;
    hand_ = std::jthread([slider](const std::stop_token& stop) {
        Pointer pointer;
        const auto at = [&](double part) {
            return QPoint(slider.left() + static_cast<int>(part * slider.width()),
                          slider.center().y());
        };
        pointer.press(at(0.5));
        for (int step = 0; !stop.stop_requested(); ++step) {
            pointer.move(at(0.5 + 0.4 * std::sin(step * 0.05)));
            std::this_thread::sleep_for(std::chrono::milliseconds(16));
        }
        pointer.release();
    });
}

} // namespace vornic
