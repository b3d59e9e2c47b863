#pragma once

#include "Vornic/app/AppModel.h"
#include "Vornic/ports/RunningCopy.h"
#include "Vornic/ports/Scheduler.h"
#include "VornicCore/base/Lifetime.h"

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace vornic {

/// Does what others ask of the running copy: "on", "off", "toggle", "board" [next|previous|ID],
/// "volume" [0 to 1], "status" [--json], and what a second start of the program says: "activate",
/// and "open" with the path of a board file. What changes a setting or the board is answered when
/// the disk has it. Thread: main.
class Control {
  public:
    /// Model and scheduler outlive it. `activate` is called for the words of a second start.
    Control(AppModel& model, Scheduler& scheduler, std::function<void()> activate);
    Control(const Control&) = delete;
    Control& operator=(const Control&) = delete;

    void run(const RunningCopy::Words& words, const RunningCopy::Reply& reply);

  private:
    using Words = RunningCopy::Words;

    ControlAnswer answer(const Words& words);
    ControlAnswer chooseBoard(const Words& words);
    ControlAnswer setVolume(const Words& words);
    ControlAnswer switchSounds(bool on);
    const Board* wanted(const std::string& word) const;
    void open(const std::string& file, const RunningCopy::Reply& reply);
    void settle();
    void answerWhenWritten();

    AppModel& model_;
    Scheduler& scheduler_;
    std::function<void()> activate_;
    /// The board asked for last, which becomes current in a moment: of many in a row each would
    /// cost the drawing of all windows, and only the last is wanted.
    std::optional<std::string> chosen_;
    /// What has been answered and waits for the disk.
    struct Waiting {
        ControlAnswer answer;
        RunningCopy::Reply reply;
    };
    std::vector<Waiting> waiting_;
    Lifetime lifetime_;
};

/// The state of the program as a JSON object. Thread: main.
std::string statusAsJson(const AppModel& model);

} // namespace vornic
