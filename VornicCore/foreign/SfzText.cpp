#include "VornicCore/foreign/SfzText.h"

#include "VornicCore/base/ReadableText.h"
#include "VornicCore/foreign/PackText.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>

namespace vornic {

namespace {

constexpr std::size_t deepestInclude = 8;
constexpr std::size_t mostRegions = 20'000;
constexpr std::size_t mostIncludes = 100;

bool isWordLetter(char letter) {
    return (letter >= 'a' && letter <= 'z') || (letter >= 'A' && letter <= 'Z') ||
           (letter >= '0' && letter <= '9') || letter == '_';
}

bool isBlank(char letter) {
    return letter == ' ' || letter == '\t' || letter == '\r';
}

class Reader {
  public:
    Reader(const PackFolder& folder, PackNotes& notes) : folder_(folder), notes_(notes) {}

    SfzText take() {
        closeRegion();
        return std::move(result_);
    }

    void read(const std::string& name, std::size_t depth) {
        std::string text = withoutMark(folder_.files().text(name), notes_);
        bytes_ += text.size();
        if (bytes_ > PackLimits::largestText || ++files_ > mostIncludes) {
            throw ForeignPackError("Its files include each other without end.");
        }
        removeBlockComments(text);
        std::string_view rest = text;
        while (!rest.empty()) {
            const std::size_t end = std::min(rest.find('\n'), rest.size());
            std::string_view line = rest.substr(0, end);
            rest.remove_prefix(std::min(end + 1, rest.size()));
            line = trimmed(line.substr(0, line.find("//")));
            if (line.starts_with("#include")) {
                include(line, depth);
            } else if (line.starts_with("#define")) {
                define(trimmed(line.substr(7)));
            } else {
                readLine(replaced(line));
            }
        }
    }

  private:
    static void removeBlockComments(std::string& text) {
        for (std::size_t begin = text.find("/*"); begin != std::string::npos;
             begin = text.find("/*", begin)) {
            const std::size_t end = text.find("*/", begin + 2);
            const std::size_t stop = end == std::string::npos ? text.size() : end + 2;
            std::replace_if(
                text.begin() + static_cast<std::ptrdiff_t>(begin),
                text.begin() + static_cast<std::ptrdiff_t>(stop),
                [](char letter) { return letter != '\n'; }, ' ');
        }
    }

    void include(std::string_view line, std::size_t depth) {
        const std::size_t open = line.find('"');
        const std::size_t close = line.rfind('"');
        if (open == std::string_view::npos || close <= open + 1) {
            addNote(notes_.ignored, "An #include without a name.");
            return;
        }
        if (depth == deepestInclude) {
            throw ForeignPackError("Its files include each other without end.");
        }
        const std::string wanted(line.substr(open + 1, close - open - 1));
        if (const std::optional<std::string> name = folder_.find(wanted, notes_)) {
            read(*name, depth + 1);
        }
    }

    void define(std::string_view line) {
        const std::size_t end = std::min(line.find_first_of(" \t"), line.size());
        const std::string_view value = trimmed(line.substr(end));
        constexpr std::size_t longest = 200;
        if (line.starts_with('$') && end > 1 && value.size() < longest) {
            defines_[std::string(line.substr(0, end))] = std::string(value);
        }
    }

    /// With every "$NAME" replaced, the longest name that fits first; once, so that it ends.
    std::string replaced(std::string_view line) const {
        std::string result;
        for (std::size_t at = 0; at < line.size();) {
            const std::string* value = nullptr;
            std::size_t length = 0;
            if (line[at] == '$') {
                for (const auto& [name, text] : defines_) {
                    if (name.size() > length && line.substr(at).starts_with(name)) {
                        value = &text;
                        length = name.size();
                    }
                }
            }
            if (value != nullptr) {
                result += *value;
                at += length;
            } else {
                result += line[at++];
            }
        }
        return result;
    }

    /// Where the next opcode or header begins behind `at`; the end of the line where there is none.
    static std::size_t nextItem(std::string_view line, std::size_t at) {
        for (std::size_t place = at; place < line.size(); ++place) {
            if (line[place] == '<') {
                return place;
            }
            if (!isBlank(line[place]) || place + 1 == line.size() ||
                !isWordLetter(line[place + 1])) {
                continue;
            }
            std::size_t end = place + 1;
            while (end < line.size() && isWordLetter(line[end])) {
                ++end;
            }
            if (end < line.size() && line[end] == '=') {
                return place;
            }
        }
        return line.size();
    }

    void readLine(std::string_view line) {
        while (!(line = trimmed(line)).empty()) {
            if (line[0] == '<') {
                const std::size_t close = std::min(line.find('>'), line.size());
                openHeader(lowerCase(line.substr(1, std::max<std::size_t>(close, 1) - 1)));
                line.remove_prefix(std::min(close + 1, line.size()));
                continue;
            }
            const std::size_t equals = line.find('=');
            if (equals == std::string_view::npos) {
                return; // A word that means nothing.
            }
            const std::size_t end = nextItem(line, equals + 1);
            std::string_view name = trimmed(line.substr(0, equals));
            name = name.substr(name.find_last_of(" \t") + 1);
            set(lowerCase(name), std::string(trimmed(line.substr(equals + 1, end - equals - 1))));
            line.remove_prefix(end);
        }
    }

    void openHeader(const std::string& header) {
        closeRegion();
        static constexpr std::array levels{"global", "master", "group", "region"};
        const auto* const found = std::ranges::find(levels, header);
        level_ = static_cast<std::size_t>(found - levels.begin());
        inControl_ = header == "control";
        if (level_ < levels_.size()) {
            // A header ends those that it would have handed down to.
            for (std::size_t below = level_; below < levels_.size(); ++below) {
                levels_[below].clear();
            }
        } else if (!inControl_) {
            addNote(notes_.ignored, "<" + readable(header) + "> means nothing for a keyboard.");
        }
        inRegion_ = header == "region";
    }

    void set(const std::string& name, std::string value) {
        if (inControl_) {
            result_.control[name] = std::move(value);
        } else if (level_ < levels_.size()) {
            levels_[level_][name] = std::move(value);
        }
    }

    void closeRegion() {
        if (!inRegion_) {
            return;
        }
        if (result_.regions.size() == mostRegions) {
            throw ForeignPackError("It has more than " + std::to_string(mostRegions) + " regions.");
        }
        SfzOpcodes opcodes = levels_.back();
        for (std::size_t above = levels_.size() - 1; above-- > 0;) {
            opcodes.insert(levels_.at(above).begin(), levels_.at(above).end());
        }
        const auto sample = opcodes.find("sample");
        const auto path = result_.control.find("default_path");
        if (sample != opcodes.end() && path != result_.control.end() &&
            !sample->second.starts_with('*')) {
            sample->second = path->second + sample->second;
        }
        opcodeBytes_ += opcodes.size();
        constexpr std::size_t mostOpcodes = 1'000'000;
        if (opcodeBytes_ > mostOpcodes) {
            throw ForeignPackError("It has too many opcodes.");
        }
        result_.regions.push_back(std::move(opcodes));
        inRegion_ = false;
    }

    const PackFolder& folder_;
    PackNotes& notes_;
    SfzText result_;
    /// Global, master, group and region.
    std::array<SfzOpcodes, 4> levels_;
    std::size_t level_ = 4;
    bool inControl_ = false;
    bool inRegion_ = false;
    std::map<std::string, std::string, std::less<>> defines_;
    std::size_t bytes_ = 0;
    std::size_t files_ = 0;
    std::size_t opcodeBytes_ = 0;
};

} // namespace

SfzText readSfzText(const PackFolder& folder, const std::string& name, PackNotes& notes) {
    Reader reader(folder, notes);
    reader.read(name, 0);
    return reader.take();
}

} // namespace vornic
