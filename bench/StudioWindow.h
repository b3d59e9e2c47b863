#pragma once

#include "tests/live/ChildProcess.h"
#include "tests/live/views/AccessibleTree.h"
#include "tests/live/views/Pointer.h"
#include "tests/support/ScratchFolder.h"

#include <QRect>
#include <QString>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace vornic {

/// The running program with its Studio open, and files of its own. Needs a Qt application. What
/// does not come up throws std::runtime_error. Thread: main.
class StudioWindow {
  public:
    /// What the environment of a program needs whose frames are counted.
    static ChildProcess::Environment environment();
    /// Waits until the program that writes `log` has written `text`.
    static void await(const std::filesystem::path& log, const std::string& text);

    StudioWindow();

    const ChildProcess& program() const { return *program_; }
    /// What the program says, its frames among it.
    std::filesystem::path log() const { return scratch_ / "vornic.log"; }
    /// How long the last rendering took, as the program says it.
    double lastRenderMillis();

    AccessibleTree::Node shown(const QString& name);
    void click(const QString& name) { pointer_.click(shown(name).place.center()); }
    /// Where it is on the screen.
    QRect place();
    /// What `wanted` accepts, once it has stopped moving: what was scrolled rolls on for a while.
    std::vector<AccessibleTree::Node>
    settled(const std::function<bool(const AccessibleTree::Node&)>& wanted);

  private:
    ChildProcess::Environment own() const;

    ScratchFolder scratch_;
    Pointer pointer_;
    AccessibleTree tree_;
    std::unique_ptr<ChildProcess> program_;
};

} // namespace vornic
