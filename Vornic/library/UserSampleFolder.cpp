#include "Vornic/library/UserSampleFolder.h"

#include "Vornic/library/AppFolders.h"
#include "Vornic/library/FolderLock.h"
#include "VornicCore/audiofiles/WriteWav.h"
#include "VornicCore/base/JsonCodec.h"
#include "VornicCore/base/ReadFile.h"
#include "VornicCore/base/ReplaceFile.h"

#include <algorithm>
#include <optional>
#include <stdexcept>
#include <string_view>
#include <system_error>

namespace vornic {

template <>
struct JsonRecord<SampleInfo> {
    static constexpr auto members =
        std::tuple{JsonMember{"id", &SampleInfo::id}, JsonMember{"name", &SampleInfo::name},
                   JsonMember{"part", &SampleInfo::part}, JsonMember{"source", &SampleInfo::source},
                   JsonMember{"builtIn", &SampleInfo::builtIn}};
};

namespace {

namespace fs = std::filesystem;

constexpr std::string_view indexName = "index.json";
/// Some hundred thousand samples.
constexpr std::uintmax_t largestIndex = 16U << 20U;

enum class IndexState : std::uint8_t { missing, unreadable, damaged, good };

struct Index {
    IndexState state;
    std::vector<SampleInfo> infos;
};

Index readIndex(const fs::path& file) {
    std::string text;
    try {
        text = readTextFile(file, largestIndex);
    } catch (const ReadError& problem) {
        std::error_code ignored;
        const bool missing = problem.code() == std::errc::no_such_file_or_directory;
        const bool large = !problem.code() && fs::is_regular_file(file, ignored);
        return {missing ? IndexState::missing
                : large ? IndexState::damaged
                        : IndexState::unreadable,
                {}};
    }
    try {
        return {IndexState::good, decodeJson<std::vector<SampleInfo>>(text)};
    } catch (const DecodeError&) {
        return {IndexState::damaged, {}};
    }
}

/// Whether a file is called as those of this program's own samples are: "user_1A2B3C4D.wav". What
/// else the user keeps in the folder is none of ours.
bool isRecordingName(std::string_view name) {
    constexpr std::string_view begin = "user_";
    constexpr std::string_view end = ".wav";
    constexpr std::size_t digits = 8;
    return name.size() == begin.size() + digits + end.size() && name.starts_with(begin) &&
           name.ends_with(end) &&
           name.substr(begin.size(), digits).find_first_not_of("0123456789abcdefABCDEF") ==
               std::string_view::npos;
}

bool isIn(const std::vector<SampleInfo>& infos, const SampleInfo& wanted) {
    return std::ranges::find(infos, wanted.id, &SampleInfo::id) != infos.end();
}

} // namespace

fs::path UserSampleFolder::fileOf(const std::string& id) const {
    std::string name = id;
    std::ranges::replace(name, '/', '_');
    return folder_ / (name + ".wav");
}

std::vector<SampleInfo> UserSampleFolder::listed() const {
    return folder_.empty() ? std::vector<SampleInfo>() : readIndex(folder_ / indexName).infos;
}

bool UserSampleFolder::add(const std::vector<Kept>& added, const std::vector<SampleInfo>& known,
                           const std::set<std::string>& gone) const {
    if (folder_.empty() || AppFolders::make(folder_)) {
        return false;
    }
    const FolderLock lock(folder_);
    // Without any index nobody could tell recordings that were cut off from those of an index that
    // got lost.
    if (readIndex(folder_ / indexName).state == IndexState::missing &&
        !replaceIndex(known, {}, gone)) {
        return false;
    }
    std::vector<SampleInfo> infos;
    infos.reserve(added.size());
    for (const Kept& each : added) {
        infos.push_back(each.info);
    }
    if (std::ranges::all_of(added,
                            [&](const Kept& each) {
                                return writeWAV(each.samples, fileOf(each.info.id), Readers::owner);
                            }) &&
        replaceIndex(known, infos, gone)) {
        return true;
    }
    const std::vector<SampleInfo> listedNow = listed();
    for (const SampleInfo& info : infos) {
        if (!isIn(listedNow, info)) {
            remove(info.id);
        }
    }
    return false;
}

bool UserSampleFolder::update(const std::vector<SampleInfo>& known,
                              const std::vector<SampleInfo>& added,
                              const std::set<std::string>& gone) const {
    if (folder_.empty()) {
        return false;
    }
    const FolderLock lock(folder_);
    return replaceIndex(known, added, gone);
}

// Call under the lock.
bool UserSampleFolder::replaceIndex(const std::vector<SampleInfo>& known,
                                    const std::vector<SampleInfo>& added,
                                    const std::set<std::string>& gone) const {
    Index index = readIndex(folder_ / indexName);
    if (index.state == IndexState::unreadable ||
        (index.state == IndexState::damaged && !putDamagedIndexAside())) {
        return false;
    }
    if (index.state != IndexState::good) {
        std::ranges::copy_if(known, std::back_inserter(index.infos), [&](const SampleInfo& info) {
            std::error_code error;
            return fs::is_regular_file(fileOf(info.id), error);
        });
    }
    std::erase_if(index.infos, [&](const SampleInfo& info) {
        return gone.contains(info.id) || isIn(added, info);
    });
    index.infos.insert(index.infos.end(), added.begin(), added.end());
    try {
        const std::string text = encodeJson(index.infos);
        return !tryReplaceFile(folder_ / indexName, std::as_bytes(std::span(text)), OnDisk::now,
                               Readers::owner);
    } catch (const EncodeError&) {
        return false; // A name that is no text.
    }
}

void UserSampleFolder::remove(const std::string& id) const {
    std::error_code ignored;
    fs::remove(fileOf(id), ignored);
}

void UserSampleFolder::removeRubbish() const {
    if (folder_.empty()) {
        return;
    }
    removeLeftOvers(folder_);
    const FolderLock lock(folder_, FolderLock::Busy::giveUp);
    const Index index =
        lock.held() ? readIndex(folder_ / indexName) : Index{IndexState::unreadable, {}};
    std::set<fs::path> named;
    for (const SampleInfo& info : index.infos) {
        named.insert(fileOf(info.id).filename());
    }
    std::error_code error;
    for (fs::directory_iterator entry(folder_, error), end; !error && entry != end;
         entry.increment(error)) {
        const fs::path& file = entry->path();
        if (index.state == IndexState::good && isRecordingName(file.filename().string()) &&
            !named.contains(file.filename())) {
            std::error_code ignored;
            fs::remove(file, ignored);
        } else if (file.extension() == ".wav" || file.extension() == ".json") {
            AppFolders::keepToOwner(file);
        }
    }
}

bool UserSampleFolder::putDamagedIndexAside() const {
    constexpr int mostDamaged = 1000;
    for (int number = 1; number <= mostDamaged; ++number) {
        const fs::path aside = folder_ / ("index-damaged-" + std::to_string(number) + ".json");
        std::error_code error;
        // A link, unlike a new name, never takes the place of a file that is there.
        fs::create_hard_link(folder_ / indexName, aside, error);
        if (!error) {
            return true;
        }
        if (error != std::errc::file_exists) {
            fs::rename(folder_ / indexName, aside, error);
            return !error;
        }
    }
    return false;
}

} // namespace vornic
