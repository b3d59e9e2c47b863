#include "Vornic/app/SettingsFile.h"

#include "Vornic/library/AppFolders.h"
#include "Vornic/library/FolderLock.h"
#include "VornicCore/base/JsonCodec.h"
#include "VornicCore/base/ReadFile.h"
#include "VornicCore/base/UnknownMembers.h"
#include "VornicCore/board/BoardRecords.h"

#include <algorithm>
#include <stdexcept>
#include <tuple>
#include <utility>

namespace vornic {

namespace fs = std::filesystem;

namespace {

constexpr std::uintmax_t largestSettings = 16u << 20u;

bool isTaken(const fs::path& path) {
    std::error_code ignored;
    return fs::exists(fs::symlink_status(path, ignored));
}

/// A name beside `path` that nothing has yet.
fs::path freeName(const fs::path& path) {
    const std::string stem = (path.parent_path() / path.stem()).string() + ".damaged";
    const std::string ending = path.extension().string();
    fs::path name = stem + ending;
    for (int number = 2; isTaken(name); ++number) {
        name = std::string(stem).append("-").append(std::to_string(number)).append(ending);
    }
    return name;
}

/// As far as the model itself would go.
void limit(Settings& settings) {
    settings.volume = std::clamp(settings.volume, 0.0, 1.0);
    settings.stage.distance = std::clamp(settings.stage.distance, 0.0, 1.0);
    settings.stage.width = std::clamp(settings.stage.width, 0.0, 1.0);
    for (auto& [board, tweaks] : settings.tweaks) {
        tweaks.deeper = std::clamp(tweaks.deeper, -1.0, 1.0);
        tweaks.crisper = std::clamp(tweaks.crisper, -1.0, 1.0);
    }
}

} // namespace

SettingsFile::SettingsFile(fs::path path) : path_(std::move(path)) {
    // Where the user keeps the file elsewhere and only a link here, the link is to stay.
    std::error_code error;
    if (const fs::path real = fs::canonical(path_, error); !error) {
        path_ = real;
    }
    removeLeftOvers(path_.parent_path());
    if (isTaken(path_)) {
        fresh_ = false;
        AppFolders::keepToOwner(path_);
        read();
    }
}

void SettingsFile::read() {
    try {
        document_ = parseJson(readTextFile(path_, largestSettings));
        if (!document_.is_object()) {
            throw std::runtime_error("it holds no keys and values");
        }
    } catch (const ReadError& problem) {
        // What the system refuses now it may give at the next start.
        problem.code() ? leave(problem.what()) : putAside(problem.what());
        return;
    } catch (const std::runtime_error& problem) {
        document_ = nlohmann::json::object();
        putAside(problem.what());
        return;
    }
    const JsonReader reader(document_);
    forEachSetting([&]<typename Value>(const char* name, Value Settings::* field) {
        try {
            if (const auto member = reader.optionalMember(name)) {
                settings_.*field = JsonValue<Value>::read(*member);
            }
        } catch (const DecodeError& problem) {
            problems_.push_back("In " + path_.string() + ", " + problem.what() +
                                ". The default counts instead.");
        }
    });
    limit(settings_);
    limitUnknown();
}

/// Entries that are no settings of this version stay, as long as they are not too much.
void SettingsFile::limitUnknown() {
    nlohmann::json known = nlohmann::json::object();
    forEachSetting([&](const char* name, auto) {
        if (const auto found = document_.find(name); found != document_.end()) {
            known[name] = *found;
        }
    });
    const UnknownMembers unknown = UnknownMembers::in(document_, known);
    unknown.addTo(known);
    document_ = std::move(known);
}

void SettingsFile::putAside(const std::string& why) {
    const fs::path aside = freeName(path_);
    std::error_code error;
    fs::rename(path_, aside, error);
    if (error) {
        leave(why);
        return;
    }
    problems_.push_back("Your settings in " + path_.string() + " can't be read: " + why +
                        ". They were put aside as " + aside.string() + ", and the defaults count.");
}

void SettingsFile::leave(const std::string& why) {
    writable_ = false;
    problems_.push_back(
        "Your settings in " + path_.string() + " can't be read: " + why +
        ". They are left as they are, and no setting is kept until that file is away.");
}

void SettingsFile::set(const Settings& settings) {
    forEachSetting([&]<typename Value>(const char* name, Value Settings::* field) {
        if (!(settings.*field == settings_.*field)) {
            // What a newer version has put into it stays.
            nlohmann::json written = JsonValue<Value>::write(settings.*field);
            UnknownMembers::in(document_[name], JsonValue<Value>::write(settings_.*field))
                .addTo(written);
            document_[name] = std::move(written);
            unwritten_ = true;
        }
    });
    settings_ = settings;
}

std::optional<FileChange> SettingsFile::takeChange() {
    if (!std::exchange(unwritten_, false)) {
        return std::nullopt;
    }
    return FileChange{path_,
                      [document = document_, path = path_, writable = writable_] {
                          if (!writable && isTaken(path)) {
                              throw std::system_error(
                                  std::make_error_code(std::errc::operation_not_permitted));
                          }
                          return writeJson(document);
                      },
                      "Couldn't save the settings"};
}

std::error_code SettingsFile::write() {
    const std::optional<FileChange> change = takeChange();
    const std::error_code error = change ? apply(*change) : std::error_code();
    unwritten_ = static_cast<bool>(error);
    return error;
}

} // namespace vornic
