#pragma once

#include "Vornic/library/SampleInfo.h"
#include "Vornic/library/UserSampleFolder.h"
#include "VornicCore/packs/SampleSource.h"
#include "VornicCore/packs/SoundPack.h"

#include <filesystem>
#include <functional>
#include <mutex>
#include <optional>
#include <set>
#include <span>
#include <string>
#include <unordered_map>
#include <vector>

namespace vornic {

/// Every recording, 48 kHz mono, by its sample identifier: those of the packs
/// ("spring/regular-01"), the layers derived from them ("part/click") and the user's own
/// ("user/1A2B3C4D"). What has a file is read when it is first asked for, and kept until
/// `forgetUnused`: all packs together take 25 MB, a board needs one of them. Read by the threads
/// that fill banks. Thread: any.
class SampleLibrary final : public SampleSource {
  public:
    /// A sample that is to become the user's.
    struct NewSample {
        std::string name;
        LayerPart part = LayerPart::bottomOut;
        std::vector<float> samples;
    };
    /// Told, in a sentence, what could not be written; by the thread that wanted to.
    using Report = std::function<void(const std::string&)>;

    /// Takes in every press and release of `packs`, derives the click, the spring ping and the wire
    /// rattle from them, and takes in the user's samples in `userFolder` ("Samples" of AppFolders).
    /// Files that cannot be read are left out. Without a user folder, nothing is written.
    explicit SampleLibrary(std::span<const SoundPack> packs, std::filesystem::path userFolder = {},
                           Report report = {});

    /// A copy of the samples stored under `id`, or none. The first call for what has a file reads
    /// it, which takes well under a millisecond.
    [[nodiscard]] std::optional<std::vector<float>> samples(const std::string& id) const override;
    [[nodiscard]] std::size_t frames(const std::string& id) const override;
    void forgetUnused() const override;

    /// What there is besides the packs: the derived samples, which are `builtIn`, and the user's,
    /// each in the order in which they were added.
    [[nodiscard]] std::vector<SampleInfo> userSamples() const;

    /// Adds a sample of the user's, under a fresh identifier unless one is given, and writes it to
    /// the user folder: first its file, then the index. When that fails, the sample is there for
    /// this run only.
    SampleInfo addUser(const std::string& name, LayerPart part,
                       const std::optional<std::string>& id, std::vector<float> samples);

    /// Adds several at once, all under fresh identifiers, or, when not all of them can be written,
    /// none; then the result is empty.
    std::vector<SampleInfo> addUsers(std::vector<NewSample> added);

    /// Adds a sample under a fresh identifier for this run only; nothing is written.
    SampleInfo addForThisRun(NewSample added);

    /// Writes samples that were there for this run only to the user folder, all or, when not all of
    /// them can be written, none; then it is false and they are still there for this run.
    [[nodiscard]] bool keep(const std::vector<std::string>& ids);

    /// Forgets a sample of the user's and removes it from the user folder: first from the index,
    /// then its file. False if there is none under `id`.
    bool removeUser(const std::string& id);

    /// Takes in the samples that the index of the user folder lists and that are not there yet.
    void loadUserSamples();

    /// How many recordings there are that can be read. Looks into every file.
    [[nodiscard]] std::size_t count() const;

  private:
    struct Recording {
        std::filesystem::path file; // none: in memory only
        std::vector<float> samples; // none, where there is a file: on disk only
        bool asked = false;         // since `forgetUnused` was last called
    };

    void take(const SoundPack& pack, const std::vector<std::filesystem::path>& files);
    void derive(const std::string& from, std::string_view id, const std::string& name,
                LayerPart part, std::vector<float> (*make)(std::span<const float>));
    SampleInfo store(const std::string& name, LayerPart part, const std::optional<std::string>& id,
                     std::vector<float> samples);
    void forget(const std::string& id);
    bool write(const std::vector<SampleInfo>& added);
    void haveFiles(const std::vector<SampleInfo>& kept);
    /// What the index has to list besides what is new, and what it must not list any more.
    struct Listed {
        std::vector<SampleInfo> known;
        std::set<std::string> gone;
    };
    Listed listed() const;
    bool isUsers(const std::string& id) const;
    std::string freshID() const;
    void report(const std::string& problem) const;

    mutable std::unordered_map<std::string, Recording> store_; // guarded by lock_
    std::vector<SampleInfo> infos_;                            // guarded by lock_
    // Listed but not readable, and for this run only; both guarded by lock_.
    std::set<std::string> unread_;
    std::set<std::string> passing_;
    mutable std::mutex lock_;
    const UserSampleFolder userFolder_;
    const Report report_;
};

} // namespace vornic
