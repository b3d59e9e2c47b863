#include "Vornic/commands/BoardCommands.h"
#include "Vornic/commands/SliceCommand.h"
#include "Vornic/commands/TypeCommand.h"
#include "Vornic/library/AppFolders.h"
#include "Vornic/linux/desktop/AutostartEntry.h"
#include "Vornic/linux/desktop/DBusRunningCopy.h"
#include "Vornic/linux/desktop/ThisProgram.h"
#include "Vornic/recording/DecoderProcess.h"
#include "Vornic/runModes.h"

#include <cstdio>
#include <cstdlib>
#include <exception>
#include <string>
#include <variant>

namespace vornic {
namespace {

int run(const TypeCommandRequest& request) {
    try {
        const TypeOutcome outcome = typeIntoFile(request.type);
        for (const std::string& remark : outcome.remarks) {
            std::fprintf(stderr, "vornic: %s\n", remark.c_str());
        }
        if (request.json) {
            std::puts(reportAsJson(outcome.report).c_str());
        }
        return EXIT_SUCCESS;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "vornic: %s\n", error.what());
        return EXIT_FAILURE;
    }
}

int run(const SliceCommandRequest& request) {
    try {
        SliceRequest asked = request.slice;
        asked.decoder = findDecoder(programPath());
        const SliceReport report = sliceFile(asked);
        for (const std::string& remark : report.remarks) {
            std::fprintf(stderr, "vornic: %s\n", remark.c_str());
        }
        if (request.json) {
            std::puts(reportAsJson(report).c_str());
        } else {
            std::fputs(reportAsText(report).c_str(), stdout);
        }
        return EXIT_SUCCESS;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "vornic: %s\n", error.what());
        return EXIT_FAILURE;
    }
}

int run(const BoardRequest& request) {
    try {
        BoardRequest asked = request;
        if (auto* const import = std::get_if<ImportBoard>(&asked.what)) {
            import->decoder = findDecoder(programPath());
        }
        const CommandOutcome outcome = runBoardCommand(asked);
        for (const std::string& remark : outcome.remarks) {
            std::fprintf(stderr, "vornic: %s\n", remark.c_str());
        }
        std::fputs(outcome.text.c_str(), stdout);
        return EXIT_SUCCESS;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "vornic: %s\n", error.what());
        return EXIT_FAILURE;
    }
}

int run(const ControlRequest& request) {
    const ControlAnswer answer = DBusRunningCopy().ask(request.words);
    if (!answer.text.empty()) {
        std::fprintf(answer.status == 0 ? stdout : stderr, "%s\n", answer.text.c_str());
    }
    return answer.status;
}

int run(const AutostartRequest& request) {
    AutostartEntry entry(AppFolders::autostartEntry(), programPath());
    if (request.on) {
        if (const std::error_code error = entry.setEnabled(*request.on)) {
            std::fprintf(stderr, "vornic: Couldn't change how Vornic starts: %s\n",
                         error.message().c_str());
            return EXIT_FAILURE;
        }
    }
    std::puts(entry.enabled() ? "on" : "off");
    return EXIT_SUCCESS;
}

int run(const PrintRequest& request) {
    std::fputs(request.text.c_str(), request.status == 0 ? stdout : stderr);
    return request.status;
}

int run(const DoctorRequest& request) {
    return runDoctor(request);
}

/// Running the program is not a command.
int run(const RunRequest& /*request*/) {
    return EXIT_FAILURE;
}

} // namespace

int runCommand(const CommandRequest& request) {
    return std::visit([](const auto& asked) { return run(asked); }, request);
}

} // namespace vornic
