#include "Vornic/library/UserSampleFolder.h"
#include "VornicCore/realtime/Fatal.h"

#include "fuzz/FuzzFolder.h"
#include "fuzz/JsonMutator.h"

#include <algorithm>

extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t* data, std::size_t size,
                                               std::size_t largest, unsigned int seed) {
    return vornic::mutateJson(data, size, largest, seed);
}

/// Whatever the index holds, no id leads out of its folder, and what is added is listed from then
/// on beside all that was.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const vornic::FuzzFolder folder;
    folder.put("index.json", data, size);
    const vornic::UserSampleFolder samples(folder.path());
    const auto listed = samples.listed();
    for (const vornic::SampleInfo& info : listed) {
        vornic::require(samples.fileOf(info.id).parent_path() == folder.path(),
                        "a sample lies in its folder");
    }
    vornic::SampleInfo added;
    added.id = "user/added";
    added.name = "Added";
    vornic::require(samples.update({}, {added}, {}), "a sample can be added");
    const auto after = samples.listed();
    vornic::require(!after.empty() && after.back().id == added.id, "the added one is listed");
    const auto lost = std::ranges::count_if(listed, [&](const vornic::SampleInfo& info) {
        return info.id != added.id &&
               std::ranges::find(after, info.id, &vornic::SampleInfo::id) == after.end();
    });
    vornic::require(lost == 0, "no sample is lost");
    return 0;
}
