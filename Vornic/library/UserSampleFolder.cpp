#include "Vornic/library/UserSampleFolder.h"

#include "Vornic/library/FolderLock.h"
#include "Vornic/library/TextFile.h"
#include "VornicCore/audiofiles/WriteWav.h"
#include "VornicCore/base/JsonCodec.h"
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
    std::error_code error;
    const fs::file_status status = fs::status(file, error);
    if (status.type() == fs::file_type::not_found) {
        return {IndexState::missing, {}};
    }
    // Opening a pipe would wait for a writer that never comes.
    if (error || !fs::is_regular_file(status)) {
        return {IndexState::unreadable, {}};
    }
    if (fs::file_size(file, error) > largestIndex && !error) {
        return {IndexState::damaged, {}};
    }
    std::string text;
    try {
        text = readTextFile(file, largestIndex);
    } catch (const std::runtime_error&) {
        return {IndexState::unreadable, {}};
    }
    try {
        return {IndexState::good, decodeJson<std::vector<SampleInfo>>(text)};
    } catch (const DecodeError&) {
        return {IndexState::damaged, {}};
    }
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

bool UserSampleFolder::write(const std::string& id, std::span<const float> samples) const {
    if (folder_.empty()) {
        return false;
    }
    std::error_code ignored;
    fs::create_directories(folder_, ignored);
    return writeWAV(samples, fileOf(id));
}

bool UserSampleFolder::update(const std::vector<SampleInfo>& known,
                              const std::vector<SampleInfo>& added,
                              const std::set<std::string>& gone) const {
    if (folder_.empty()) {
        return false;
    }
    const FolderLock lock(folder_);
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
        return replaceFile(folder_ / indexName, std::as_bytes(std::span(text)));
    } catch (const EncodeError&) {
        return false; // A name that is no text.
    }
}

void UserSampleFolder::remove(const std::string& id) const {
    std::error_code ignored;
    fs::remove(fileOf(id), ignored);
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
