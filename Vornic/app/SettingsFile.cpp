#include "Vornic/app/SettingsFile.h"

#include "Vornic/library/TextFile.h"
#include "VornicCore/base/JsonCodec.h"
#include "VornicCore/base/ReplaceFile.h"
#include "VornicCore/board/BoardRecords.h"

#include <span>
#include <stdexcept>
#include <tuple>
#include <utility>

namespace vornic {

namespace fs = std::filesystem;

namespace {

constexpr std::uintmax_t largestSettings = 16u << 20u;

/// Calls `visit` with the name and the field of every setting.
template <typename Visit>
void forEachSetting(Visit&& visit) {
    visit("hearMyself", &Settings::hearMyself);
    visit("quietDuringCalls", &Settings::quietDuringCalls);
    visit("noticePasswordsEverywhere", &Settings::noticePasswordsEverywhere);
    visit("advanced", &Settings::advanced);
    visit("volume", &Settings::volume);
    visit("outputKind", &Settings::outputKind);
    visit("board", &Settings::board);
    visit("stage", &Settings::stage);
    visit("tweaks", &Settings::tweaks);
    visit("welcomed", &Settings::welcomed);
    visit("toldOfNoTray", &Settings::toldOfNoTray);
}

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

} // namespace

SettingsFile::SettingsFile(fs::path path) : path_(std::move(path)) {
    // Where the user keeps the file elsewhere and only a link here, the link is to stay.
    std::error_code error;
    if (const fs::path real = fs::canonical(path_, error); !error) {
        path_ = real;
    }
    if (isTaken(path_)) {
        fresh_ = false;
        read();
    }
}

void SettingsFile::read() {
    try {
        document_ = parseJson(readTextFile(path_, largestSettings));
        if (!document_.is_object()) {
            throw std::runtime_error("it holds no keys and values");
        }
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
}

void SettingsFile::putAside(const std::string& why) {
    const fs::path aside = freeName(path_);
    std::error_code error;
    fs::rename(path_, aside, error);
    writable_ = !error;
    problems_.push_back(
        "Your settings in " + path_.string() + " can't be read: " + why + ". " +
        (error ? "They are left as they are, and no setting is kept until that file is away."
               : "They were put aside as " + aside.string() + ", and the defaults count."));
}

void SettingsFile::set(const Settings& settings) {
    forEachSetting([&]<typename Value>(const char* name, Value Settings::* field) {
        if (!(settings.*field == settings_.*field)) {
            document_[name] = JsonValue<Value>::write(settings.*field);
            unwritten_ = true;
        }
    });
    settings_ = settings;
}

std::error_code SettingsFile::write() {
    if (!unwritten_) {
        return {};
    }
    const std::error_code error = tryToWrite();
    unwritten_ = static_cast<bool>(error);
    return error;
}

std::error_code SettingsFile::tryToWrite() const {
    if (!writable_ && isTaken(path_)) {
        return std::make_error_code(std::errc::operation_not_permitted);
    }
    std::string text;
    try {
        text = writeJson(document_);
    } catch (const EncodeError&) {
        return std::make_error_code(std::errc::invalid_argument);
    }
    std::error_code error;
    fs::create_directories(path_.parent_path(), error);
    return error ? error : tryReplaceFile(path_, std::as_bytes(std::span(text)));
}

} // namespace vornic
