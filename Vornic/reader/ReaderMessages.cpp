#include "Vornic/reader/ReaderMessages.h"

#include <algorithm>
#include <concepts>
#include <iterator>

namespace vornic {

namespace {

class Writer {
  public:
    template <std::unsigned_integral Number>
    void operator()(Number number) {
        for (std::size_t place = 0; place < sizeof number; ++place) {
            bytes.push_back(static_cast<std::uint8_t>(std::uint64_t{number} >> 8 * place));
        }
    }
    void operator()(bool flag) { bytes.push_back(flag ? 1 : 0); }
    void operator()(ReaderStanding standing) {
        bytes.push_back(static_cast<std::uint8_t>(standing));
    }
    void operator()(const std::string& text) {
        const std::size_t length = std::min(text.size(), ReaderKeyboard::longestText);
        bytes.push_back(static_cast<std::uint8_t>(length));
        std::copy_n(text.begin(), length, std::back_inserter(bytes));
    }
    void operator()(const std::array<std::uint8_t, 96>& bits) {
        bytes.insert(bytes.end(), bits.begin(), bits.end());
    }

    std::vector<std::uint8_t> bytes;
};

/// Reads nothing behind the end: `good` says whether all was there.
class Reader {
  public:
    explicit Reader(std::span<const std::uint8_t> packet) : left(packet) {}

    template <std::unsigned_integral Number>
    void operator()(Number& number) {
        std::uint64_t read = 0;
        const auto part = take(sizeof number);
        for (std::size_t place = 0; place < part.size(); ++place) {
            read |= std::uint64_t{part[place]} << 8 * place;
        }
        number = static_cast<Number>(read);
    }
    void operator()(bool& flag) { flag = small(1) == 1; }
    void operator()(ReaderStanding& standing) {
        standing = static_cast<ReaderStanding>(
            small(static_cast<std::uint8_t>(ReaderStanding::notAllowed)));
    }
    void operator()(std::string& text) {
        const auto part = take(small(ReaderKeyboard::longestText));
        text.assign(part.begin(), part.end());
    }
    void operator()(std::array<std::uint8_t, 96>& bits) {
        std::ranges::copy(take(bits.size()), bits.begin());
    }

    std::span<const std::uint8_t> left;
    bool good = true;

  private:
    std::span<const std::uint8_t> take(std::size_t count) {
        if (count > left.size()) {
            good = false;
            return {};
        }
        const auto part = left.first(count);
        left = left.subspan(count);
        return part;
    }
    std::uint8_t small(std::uint8_t largest) {
        const auto part = take(1);
        good = good && part[0] <= largest;
        return good ? part[0] : std::uint8_t{0};
    }
};

/// The fields of each message in their order, for both ways.
template <typename Visitor>
void fields(auto& message, Visitor& visit) {
    using Message = std::remove_cvref_t<decltype(message)>;
    if constexpr (std::is_same_v<Message, ReaderChallenge> ||
                  std::is_same_v<Message, ReaderKeyboardGone>) {
        visit(message.number);
    } else if constexpr (std::is_same_v<Message, ReaderStanding>) {
        visit(message);
    } else if constexpr (std::is_same_v<Message, ReaderKeyboard>) {
        visit(message.number);
        visit(message.bus);
        visit(message.vendor);
        visit(message.product);
        visit(message.name);
        visit(message.port);
        visit(message.keys);
    } else {
        visit(message.keyboard);
        visit(message.code);
        visit(message.down);
        visit(message.nanos);
    }
}

template <std::size_t kind = 0>
std::optional<ReaderMessage> readKind(std::uint8_t wanted, Reader& reader) {
    if constexpr (kind < std::variant_size_v<ReaderMessage>) {
        if (wanted != kind) {
            return readKind<kind + 1>(wanted, reader);
        }
        std::variant_alternative_t<kind, ReaderMessage> message{};
        fields(message, reader);
        return message;
    }
    return std::nullopt;
}

} // namespace

std::vector<std::uint8_t> packetOf(const ReaderMessage& message) {
    Writer writer;
    writer(static_cast<std::uint8_t>(message.index()));
    std::visit([&writer](const auto& kind) { fields(kind, writer); }, message);
    return writer.bytes;
}

std::optional<ReaderMessage> messageOf(std::span<const std::uint8_t> packet) {
    Reader reader(packet);
    std::uint8_t kind = 0;
    reader(kind);
    const auto message = reader.good ? readKind(kind, reader) : std::nullopt;
    return reader.good && reader.left.empty() ? message : std::nullopt;
}

} // namespace vornic
