#include "Vornic/commands/AutostartCommandLine.h"

#include <CLI/CLI.hpp>

namespace vornic {

AutostartCommandLine::AutostartCommandLine(CLI::App& app)
    : command_(app.add_subcommand("autostart", "Says or sets whether Vornic starts with you")) {
    // Not "on" and "off", which are commands of their own.
    command_->add_option("CHANGE", change_, "enable or disable")
        ->check(CLI::IsMember({"enable", "disable"}));
}

std::optional<AutostartRequest> AutostartCommandLine::request() const {
    if (!command_->parsed()) {
        return std::nullopt;
    }
    return AutostartRequest{change_.empty() ? std::nullopt : std::optional(change_ == "enable")};
}

} // namespace vornic
