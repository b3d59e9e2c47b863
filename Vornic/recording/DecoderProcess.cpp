#include "Vornic/recording/DecoderProcess.h"

#include "VornicCore/base/ReadFile.h"

#include <cmath>
#include <cstdint>
#include <limits>
#include <span>
#include <system_error>
#include <vector>

namespace vornic {

namespace {

namespace fs = std::filesystem;

constexpr std::uint32_t mostBlockSamples = 1U << 20U;
constexpr double lowestRate = 1000;
constexpr double highestRate = 768000;

class DecodedFile final : public AudioStream {
  public:
    DecodedFile(std::shared_ptr<HelperProcess> helper, const DecodedHeader& header,
                std::stop_token stop)
        : helper_(std::move(helper)), header_(header), stop_(std::move(stop)) {}

    double rate() const override { return header_.rate; }

    std::optional<double> seconds() const override {
        return header_.seconds > 0.0 ? std::optional(header_.seconds) : std::nullopt;
    }

    Next read(std::vector<float>& mono) override {
        mono.clear();
        if (helper_ == nullptr) {
            return last_;
        }
        DecodedBlock block;
        if (!helper_->readValue(block, stop_)) {
            return end(Next::error);
        }
        if (block.kind != DecodedBlock::Kind::samples) {
            helper_->setFree();
            return end(block.kind == DecodedBlock::Kind::end ? Next::end : Next::error);
        }
        if (block.count > mostBlockSamples) {
            return end(Next::error);
        }
        mono.resize(block.count);
        const auto bytes = std::as_writable_bytes(std::span(mono));
        if (helper_->read(bytes, stop_) != bytes.size()) {
            mono.clear();
            return end(Next::error);
        }
        for (float& x : mono) {
            x = std::isfinite(x) ? x : 0.0F;
        }
        return Next::block;
    }

  private:
    Next end(Next how) {
        helper_.reset();
        last_ = stop_.stop_requested() ? Next::error : how;
        return last_;
    }

    std::shared_ptr<HelperProcess> helper_; // none after the end
    DecodedHeader header_;
    std::stop_token stop_;
    Next last_ = Next::end;
};

} // namespace

fs::path findDecoder(const fs::path& program) {
    constexpr const char* name = "vornic-decode";
    const fs::path folder = program.parent_path();
    std::error_code ignored;
    for (const fs::path& file : {folder / name, folder / "../lib/vornic" / name}) {
        if (fs::is_regular_file(file, ignored)) {
            return file;
        }
    }
    return {};
}

std::unique_ptr<AudioStream> Decoder::open(const fs::path& file, std::stop_token stop) {
    if (program_.empty()) {
        return nullptr;
    }
    // One that was left in the middle of a file, or ended by it, is of no use any more.
    if (helper_ == nullptr || !helper_->isFree()) {
        helper_ = std::make_shared<HelperProcess>(program_);
    }
    DecodedHeader header;
    try {
        const FileToRead opened(file, std::numeric_limits<std::uintmax_t>::max());
        if (!helper_->give(HelperDuty::sound, opened.descriptor()) ||
            !helper_->readValue(header, stop) || header.mark != DecodedHeader::expectedMark) {
            return nullptr;
        }
    } catch (const ReadError&) {
        return nullptr;
    }
    if (header.rate == 0.0) {
        helper_->setFree();
        return nullptr;
    }
    if (!(header.rate >= lowestRate && header.rate <= highestRate)) {
        return nullptr;
    }
    return std::make_unique<DecodedFile>(helper_, header, std::move(stop));
}

std::unique_ptr<AudioStream> openWithDecoder(const fs::path& decoder, const fs::path& file,
                                             std::stop_token stop) {
    return Decoder(decoder).open(file, std::move(stop));
}

} // namespace vornic
