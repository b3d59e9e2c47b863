#include "Vornic/commands/ControlCommandLine.h"

#include <CLI/CLI.hpp>

namespace vornic {

ControlCommandLine::ControlCommandLine(CLI::App& app) {
    add(app, "on", "Switches the sounds of the running Vornic on");
    add(app, "off", "Switches them off");
    add(app, "toggle", "Switches them on or off");
    add(app, "board", "Says the board of the running Vornic or chooses one")
        ->add_option("BOARD", board_, "next, previous, or the id of a board");
    add(app, "volume", "Says the volume of the running Vornic or sets it")
        ->add_option("VOLUME", volume_, "From 0 to 1");
    add(app, "status", "Says how the running Vornic is doing")
        ->add_flag("--json", json_, "As JSON");
    add(app, "relaunch", "Starts the running Vornic anew, with the arguments it was started with");
}

CLI::App* ControlCommandLine::add(CLI::App& app, const std::string& name, const std::string& help) {
    commands_.push_back(app.add_subcommand(name, help));
    return commands_.back();
}

std::optional<ControlRequest> ControlCommandLine::request() const {
    for (const CLI::App* const command : commands_) {
        if (!command->parsed()) {
            continue;
        }
        ControlRequest request{{command->get_name()}};
        for (const std::string& argument : {board_, volume_}) {
            if (!argument.empty()) {
                request.words.push_back(argument);
            }
        }
        if (json_) {
            request.words.emplace_back("--json");
        }
        return request;
    }
    return std::nullopt;
}

} // namespace vornic
