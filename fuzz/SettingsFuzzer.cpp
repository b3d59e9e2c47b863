#include "Vornic/app/SettingsFile.h"
#include "VornicCore/realtime/Fatal.h"

#include "fuzz/FuzzFolder.h"
#include "fuzz/JsonMutator.h"

extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t* data, std::size_t size,
                                               std::size_t largest, unsigned int seed) {
    return vornic::mutateJson(data, size, largest, seed);
}

/// Whatever the file holds, there are settings; a change of one is kept, and the others with it.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const vornic::FuzzFolder folder;
    const auto path = folder.put("settings.json", data, size);
    vornic::SettingsFile file(path);
    vornic::Settings changed = file.settings();
    changed.hearMyself = !changed.hearMyself;
    changed.board = "another";
    file.set(changed);
    vornic::require(!file.write(), "settings can be written");
    const vornic::SettingsFile back(path);
    vornic::require(back.settings() == changed, "settings read back as they were written");
    return 0;
}
