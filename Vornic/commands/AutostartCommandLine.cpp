#include "Vornic/commands/AutostartCommandLine.h"

namespace vornic {

AutostartCommandLine::AutostartCommandLine(CLI::App& app)
    : command_(app.add_subcommand("autostart", "Says or sets whether Vornic starts with you")) {
    command_->add_option("STATE", state_, "on or off")->check(CLI::IsMember({"on", "off"}));
}

std::optional<AutostartRequest> AutostartCommandLine::request() const {
    if (!command_->parsed()) {
        return std::nullopt;
    }
    return AutostartRequest{state_.empty() ? std::nullopt : std::optional(state_ == "on")};
}

} // namespace vornic
