#include "VornicCore/board/BoardFile.h"

#include "VornicCore/base/Base64.h"
#include "VornicCore/base/JsonCodec.h"
#include "VornicCore/board/BoardRecords.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <utility>

namespace vornic {

template <>
struct JsonRecord<BoardFile> {
    static constexpr auto members = std::tuple{
        JsonMember{"format", &BoardFile::format}, JsonMember{"version", &BoardFile::version},
        JsonMember{"board", &BoardFile::board}, JsonMember{"samples", &BoardFile::samples}};
};

namespace {

constexpr float full = 32767.0F;
constexpr std::size_t bytesPerSample = 2;

std::string tooLarge() {
    return "larger than " + std::to_string(BoardFile::largest) + " bytes";
}

std::int16_t integerOf(float sample) {
    if (std::isnan(sample)) {
        return 0;
    }
    return static_cast<std::int16_t>(std::clamp(sample, -1.0F, 1.0F) * full);
}

} // namespace

std::string BoardFile::encode(const Board& board, std::span<const std::string> embedding,
                              const SampleSource& source, const UnknownMembers& unknown) {
    BoardFile file;
    file.board = board;
    std::size_t size = 0;
    for (const std::string& id : embedding) {
        const std::optional<std::vector<float>> samples = source.samples(id);
        if (!samples) {
            continue;
        }
        std::string text = base64Encoded(pcm16(*samples));
        size += text.size();
        // Before there is more in memory than will ever be written.
        if (size > largest) {
            throw EncodeError("samples", tooLarge());
        }
        file.samples[id] = std::move(text);
    }
    nlohmann::json document = JsonValue<BoardFile>::write(file);
    unknown.addTo(document["board"]);
    std::string text = writeJson(document);
    if (text.size() > largest) {
        throw EncodeError("", tooLarge());
    }
    return text;
}

BoardFile::Contents BoardFile::decode(std::string_view data, const std::stop_token& stop) {
    if (data.size() > largest) {
        throw DecodeError("", tooLarge());
    }
    nlohmann::json document = parseJson(data, {.stop = stop});
    auto file = JsonValue<BoardFile>::read(JsonReader(document));
    if (file.format != formatName) {
        throw DecodeError("format",
                          "expected " + inQuotes(formatName) + ", found " + inQuotes(file.format));
    }
    Contents contents;
    contents.unknown = UnknownMembers::in(document["board"], JsonValue<Board>::write(file.board));
    contents.board = std::move(file.board);
    document.clear(); // The recordings are in `file` too.
    while (!file.samples.empty()) {
        if (stop.stop_requested()) {
            throw DecodeError("samples", "the reading was cancelled");
        }
        // Each text goes as soon as it is read, so that both forms are never there in full.
        const auto entry = file.samples.extract(file.samples.begin());
        if (const auto bytes = base64Decoded(entry.mapped())) {
            contents.samples.emplace_hint(contents.samples.end(), std::move(entry.key()),
                                          floats(*bytes));
        }
    }
    return contents;
}

std::vector<std::byte> BoardFile::pcm16(std::span<const float> samples) {
    std::vector<std::byte> bytes;
    bytes.reserve(samples.size() * bytesPerSample);
    for (const float sample : samples) {
        const auto bits = static_cast<std::uint16_t>(integerOf(sample));
        bytes.push_back(static_cast<std::byte>(bits & 0xffU));
        bytes.push_back(static_cast<std::byte>(bits >> 8U));
    }
    return bytes;
}

std::vector<float> BoardFile::floats(std::span<const std::byte> pcm16) {
    std::vector<float> samples;
    samples.reserve(pcm16.size() / bytesPerSample);
    for (std::size_t at = 0; at + 1 < pcm16.size(); at += bytesPerSample) {
        const unsigned bits =
            std::to_integer<unsigned>(pcm16[at]) | std::to_integer<unsigned>(pcm16[at + 1]) << 8U;
        const auto integer = static_cast<std::int16_t>(static_cast<std::uint16_t>(bits));
        samples.push_back(static_cast<float>(integer) / full);
    }
    return samples;
}

} // namespace vornic
