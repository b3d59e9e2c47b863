#include "tests/live/PrivateXServer.h"

#include "tests/support/WaitFor.h"

#include <csignal>
#include <fstream>
#include <stdexcept>
#include <vector>

namespace vornic {

PrivateXServer::PrivateXServer() {
    const std::string announced = folder_ / "display";
    // The server picks a free number and writes it to its third descriptor.
    const std::vector<std::string> command{
        "sh", "-c", "exec Xvfb -displayfd 3 -screen 0 640x480x24 -noreset -nolisten tcp 3>\"$0\"",
        announced};
    server_ = std::make_unique<ChildProcess>(command, ChildProcess::Environment{},
                                             folder_ / "server.log");
    if (!waitFor([&] {
            std::string number;
            std::ifstream stream(announced);
            std::getline(stream, number);
            display_ = ":" + number;
            // A line without its end is one that is still being written.
            return !number.empty() && !stream.eof();
        })) {
        throw std::runtime_error("the private X server does not start");
    }
}

void PrivateXServer::kill() {
    server_->end(SIGKILL);
}

} // namespace vornic
