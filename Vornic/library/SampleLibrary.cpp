#include "Vornic/library/SampleLibrary.h"

#include "VornicCore/audiofiles/LoadAudio.h"
#include "VornicCore/audiofiles/SoundFile.h"
#include "VornicCore/base/Uuid.h"
#include "VornicCore/render/PartSamples.h"

#include <algorithm>
#include <system_error>
#include <utility>

namespace vornic {

namespace {

const std::string derivedSource = "Built in";
const std::string userSource = "Yours";

} // namespace

SampleLibrary::SampleLibrary(std::span<const SoundPack> packs, std::filesystem::path userFolder,
                             Report report)
    : userFolder_(std::move(userFolder)), report_(std::move(report)) {
    for (const SoundPack& pack : packs) {
        for (const auto& [keyClass, files] : pack.files) {
            take(pack, files);
        }
        take(pack, pack.releaseFiles);
    }
    derive("clicky/regular-01", PartSamples::clickKey, "Click (from Clicky)", LayerPart::click,
           PartSamples::click);
    derive("spring/regular-01", PartSamples::springKey, "Spring ping (from Buckling Spring)",
           LayerPart::spring, PartSamples::spring);
    derive("metal/regular-01", PartSamples::rattleKey, "Wire rattle (from Metallic)",
           LayerPart::rattle, PartSamples::rattle);
    userFolder_.removeRubbish();
    loadUserSamples();
}

void SampleLibrary::take(const SoundPack& pack, const std::vector<std::filesystem::path>& files) {
    const std::lock_guard guard(lock_);
    for (const std::filesystem::path& file : files) {
        store_[pack.sampleID(file)] = {.file = file, .samples = {}};
    }
}

void SampleLibrary::derive(const std::string& from, std::string_view id, const std::string& name,
                           LayerPart part, std::vector<float> (*make)(std::span<const float>)) {
    const std::lock_guard guard(lock_);
    const auto found = store_.find(from);
    const auto recorded = found == store_.end() ? std::nullopt : loadAudio(found->second.file);
    if (!recorded) {
        return;
    }
    std::vector<float> samples = make(*recorded);
    if (samples.empty()) {
        return;
    }
    store_[std::string(id)] = {.file = {}, .samples = std::move(samples)};
    infos_.push_back({std::string(id), name, part, derivedSource, true});
}

void SampleLibrary::loadUserSamples() {
    for (const SampleInfo& info : userFolder_.listed()) {
        // An index is a file like any other: it may not replace what comes from elsewhere.
        const std::lock_guard guard(lock_);
        if (info.builtIn || store_.contains(info.id)) {
            continue;
        }
        const std::filesystem::path file = userFolder_.fileOf(info.id);
        if (openSoundFile(file)) {
            store_[info.id] = {.file = file, .samples = {}};
            infos_.push_back(info);
            unread_.erase(info.id);
        } else {
            unread_.insert(info.id);
        }
    }
}

std::optional<std::vector<float>> SampleLibrary::samples(const std::string& id) const {
    std::filesystem::path file;
    {
        const std::lock_guard guard(lock_);
        const auto found = store_.find(id);
        if (found == store_.end()) {
            return std::nullopt;
        }
        Recording& recording = found->second;
        recording.asked = true;
        if (recording.file.empty() || !recording.samples.empty()) {
            return recording.samples;
        }
        file = recording.file;
    }
    // Others may have what is in memory meanwhile.
    std::optional<std::vector<float>> samples = loadAudio(file);
    const std::lock_guard guard(lock_);
    if (const auto found = store_.find(id); samples && found != store_.end()) {
        found->second.samples = *samples;
    }
    return samples;
}

std::size_t SampleLibrary::frames(const std::string& id) const {
    {
        const std::lock_guard guard(lock_);
        const auto found = store_.find(id);
        if (found != store_.end() && !found->second.samples.empty()) {
            return found->second.samples.size();
        }
    }
    return SampleSource::frames(id);
}

void SampleLibrary::forgetUnused() const {
    const std::lock_guard guard(lock_);
    for (auto& [id, recording] : store_) {
        if (!std::exchange(recording.asked, false) && !recording.file.empty()) {
            recording.samples = std::vector<float>();
        }
    }
}

std::vector<SampleInfo> SampleLibrary::userSamples() const {
    const std::lock_guard guard(lock_);
    return infos_;
}

SampleInfo SampleLibrary::addUser(const std::string& name, LayerPart part,
                                  const std::optional<std::string>& id,
                                  std::vector<float> samples) {
    SampleInfo info = store(name, part, id, std::move(samples));
    if (!write({info})) {
        report("Couldn't save the sound \"" + name + "\" in " + userFolder_.path().string() +
               "; it is lost when Vornic ends.");
    }
    return info;
}

std::vector<SampleInfo> SampleLibrary::addUsers(std::vector<NewSample> added) {
    std::vector<SampleInfo> infos;
    infos.reserve(added.size());
    for (NewSample& each : added) {
        infos.push_back(store(each.name, each.part, std::nullopt, std::move(each.samples)));
    }
    if (!infos.empty() && !write(infos)) {
        for (const SampleInfo& info : infos) {
            forget(info.id);
        }
        report("Couldn't save the sounds in " + userFolder_.path().string() + ".");
        return {};
    }
    return infos;
}

SampleInfo SampleLibrary::addForThisRun(NewSample added) {
    SampleInfo info = store(added.name, added.part, std::nullopt, std::move(added.samples));
    const std::lock_guard guard(lock_);
    passing_.insert(info.id);
    return info;
}

bool SampleLibrary::keep(const std::vector<std::string>& ids) {
    std::vector<SampleInfo> infos;
    {
        const std::lock_guard guard(lock_);
        std::ranges::copy_if(infos_, std::back_inserter(infos), [&](const SampleInfo& info) {
            return passing_.contains(info.id) && std::ranges::find(ids, info.id) != ids.end();
        });
    }
    if (!infos.empty() && !write(infos)) {
        report("Couldn't save the sounds in " + userFolder_.path().string() + ".");
        return false;
    }
    const std::lock_guard guard(lock_);
    for (const std::string& id : ids) {
        passing_.erase(id);
    }
    return true;
}

bool SampleLibrary::removeUser(const std::string& id) {
    if (!isUsers(id)) {
        return false;
    }
    bool passing = false;
    {
        const std::lock_guard guard(lock_);
        passing = passing_.contains(id);
    }
    forget(id);
    if (!passing && !userFolder_.path().empty()) {
        Listed now = listed();
        now.gone.insert(id);
        if (userFolder_.update(now.known, {}, now.gone)) {
            userFolder_.remove(id);
        } else {
            report("Couldn't remove a sound from " + userFolder_.path().string() + ".");
        }
    }
    return true;
}

SampleInfo SampleLibrary::store(const std::string& name, LayerPart part,
                                const std::optional<std::string>& id, std::vector<float> samples) {
    const std::lock_guard guard(lock_);
    SampleInfo info{id ? *id : freshID(), name, part, userSource, false};
    store_[info.id] = {.file = {}, .samples = std::move(samples)};
    std::erase_if(infos_, [&](const SampleInfo& other) { return other.id == info.id; });
    infos_.push_back(info);
    return info;
}

void SampleLibrary::forget(const std::string& id) {
    const std::lock_guard guard(lock_);
    store_.erase(id);
    passing_.erase(id);
    std::erase_if(infos_, [&](const SampleInfo& info) { return info.id == id; });
}

bool SampleLibrary::write(const std::vector<SampleInfo>& added) {
    if (userFolder_.path().empty()) {
        return true;
    }
    std::vector<std::vector<float>> frames;
    std::vector<UserSampleFolder::Kept> kept;
    frames.reserve(added.size());
    for (const SampleInfo& info : added) {
        frames.push_back(samples(info.id).value_or(std::vector<float>()));
        kept.push_back({info, frames.back()});
    }
    const Listed now = listed();
    if (!userFolder_.add(kept, now.known, now.gone)) {
        return false;
    }
    haveFiles(added);
    return true;
}

void SampleLibrary::haveFiles(const std::vector<SampleInfo>& kept) {
    const std::lock_guard guard(lock_);
    for (const SampleInfo& info : kept) {
        if (const auto found = store_.find(info.id); found != store_.end()) {
            found->second.file = userFolder_.fileOf(info.id);
        }
    }
}

SampleLibrary::Listed SampleLibrary::listed() const {
    const std::lock_guard guard(lock_);
    Listed now;
    std::ranges::copy_if(infos_, std::back_inserter(now.known), [&](const SampleInfo& info) {
        return !info.builtIn && !passing_.contains(info.id);
    });
    now.gone = unread_;
    return now;
}

bool SampleLibrary::isUsers(const std::string& id) const {
    const std::lock_guard guard(lock_);
    const auto found = std::ranges::find(infos_, id, &SampleInfo::id);
    return found != infos_.end() && !found->builtIn;
}

// Call under the lock. Eight digits may come up twice, and another program may have taken them.
std::string SampleLibrary::freshID() const {
    for (;;) {
        const std::string id = "user/" + Uuid::random().text().substr(0, 8);
        std::error_code ignored;
        if (!store_.contains(id) && (userFolder_.path().empty() ||
                                     !std::filesystem::exists(userFolder_.fileOf(id), ignored))) {
            return id;
        }
    }
}

void SampleLibrary::report(const std::string& problem) const {
    if (report_) {
        report_(problem);
    }
}

std::size_t SampleLibrary::count() const {
    const std::lock_guard guard(lock_);
    return static_cast<std::size_t>(std::ranges::count_if(store_, [](const auto& each) {
        const Recording& recording = each.second;
        return recording.file.empty() || !recording.samples.empty() ||
               openSoundFile(recording.file) != nullptr;
    }));
}

} // namespace vornic
