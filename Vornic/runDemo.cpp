#include "Vornic/commands/TypeCommand.h"
#include "Vornic/runModes.h"
#include "Vornic/typing/PreviewPhrase.h"

#include <QStandardPaths>
#include <cstdlib>
#include <exception>
#include <filesystem>

namespace vornic {

int playDemo(const RunRequest& request, const std::string& problem, Log& log) {
    TypeRequest demo;
    demo.board = request.board;
    request.stage.applyTo(demo.stage);
    demo.outputKind = request.outputKind.value_or(demo.outputKind);
    demo.volume = request.volume.value_or(demo.volume);
    demo.packs = request.packs;
    const std::filesystem::path folder =
        QStandardPaths::writableLocation(QStandardPaths::GenericCacheLocation).toStdString();
    demo.out = folder / "Vornic" / "demo.wav";
    log.warning(problem);
    try {
        std::filesystem::create_directories(demo.out.parent_path());
        playIntoFile(demo, previewPhrase());
        log.info("Until then, hear what it sounds like: " + demo.out.string());
    } catch (const std::exception& error) {
        log.warning(std::string("There is nothing to hear yet: ") + error.what());
    }
    return EXIT_SUCCESS;
}

} // namespace vornic
