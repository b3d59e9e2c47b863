#include "Vornic/decode/AvFile.h"

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavformat/avformat.h>
#include <libavformat/avio.h>
#include <libavutil/dict.h>
#include <libavutil/log.h>
#include <libavutil/mem.h>
#include <libavutil/samplefmt.h>
}

#include <unistd.h>

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <limits>
#include <optional>
#include <type_traits>
#include <utility>
#include <vector>

namespace vornic {

namespace {

/// What phones and recorders write and the sample loader does not know. The libraries read hundreds
/// of formats more, each a chance for a hostile file.
constexpr const char* formats = "mov,mp4,m4a,3gp,3g2,mj2,aac,amr,asf,matroska,webm,caf";
constexpr int mostChannels = 64;

/// Sample number `index` of `data`, -1 to 1.
template <typename Sample>
float sampleAt(const std::uint8_t* data, std::size_t index) {
    Sample value{};
    std::memcpy(&value, data + index * sizeof(Sample), sizeof(Sample));
    if constexpr (std::is_same_v<Sample, std::uint8_t>) {
        return (static_cast<float>(value) - 128.0F) / 128.0F;
    } else if constexpr (std::is_integral_v<Sample>) {
        return static_cast<float>(static_cast<double>(value) /
                                  -static_cast<double>(std::numeric_limits<Sample>::min()));
    } else {
        return static_cast<float>(value);
    }
}

float sampleAt(AVSampleFormat packed, const std::uint8_t* data, std::size_t index) {
    switch (packed) {
    case AV_SAMPLE_FMT_U8:
        return sampleAt<std::uint8_t>(data, index);
    case AV_SAMPLE_FMT_S16:
        return sampleAt<std::int16_t>(data, index);
    case AV_SAMPLE_FMT_S32:
        return sampleAt<std::int32_t>(data, index);
    case AV_SAMPLE_FMT_DBL:
        return sampleAt<double>(data, index);
    default:
        return sampleAt<float>(data, index);
    }
}

bool isKnown(AVSampleFormat packed) {
    return packed == AV_SAMPLE_FMT_U8 || packed == AV_SAMPLE_FMT_S16 ||
           packed == AV_SAMPLE_FMT_S32 || packed == AV_SAMPLE_FMT_FLT ||
           packed == AV_SAMPLE_FMT_DBL;
}

int descriptorOf(void* opaque) {
    return *static_cast<const int*>(opaque);
}

int readSome(void* opaque, std::uint8_t* into, int size) {
    const ssize_t got = ::read(descriptorOf(opaque), into, static_cast<std::size_t>(size));
    return got > 0 ? static_cast<int>(got) : AVERROR_EOF;
}

std::int64_t seek(void* opaque, std::int64_t offset, int whence) {
    const int descriptor = descriptorOf(opaque);
    if ((whence & AVSEEK_SIZE) == 0) {
        return ::lseek(descriptor, offset, whence & ~AVSEEK_FORCE);
    }
    const off_t here = ::lseek(descriptor, 0, SEEK_CUR);
    const off_t size = ::lseek(descriptor, 0, SEEK_END);
    ::lseek(descriptor, here, SEEK_SET);
    return size;
}

class AvFile final : public AudioStream {
  public:
    explicit AvFile(int descriptor);
    ~AvFile() override;
    AvFile(const AvFile&) = delete;
    AvFile& operator=(const AvFile&) = delete;

    /// False for what cannot be read.
    bool open();

    double rate() const override { return codec_->sample_rate; }
    std::optional<double> seconds() const override;
    Next read(std::vector<float>& mono) override;

  private:
    Next receive(std::vector<float>& mono);
    int feed();
    bool mix(std::vector<float>& mono) const;

    int descriptor_;
    AVIOContext* input_ = nullptr;
    AVFormatContext* format_ = nullptr;
    AVCodecContext* codec_ = nullptr;
    AVFrame* frame_ = nullptr;
    AVPacket* packet_ = nullptr;
    int stream_ = -1;
    bool isDrained_ = false;
    bool hasEnded_ = false;
};

AvFile::AvFile(int descriptor)
    : descriptor_(descriptor), frame_(av_frame_alloc()), packet_(av_packet_alloc()) {
    // What the libraries have to say about a file is for nobody; whether it can be read is told.
    av_log_set_level(AV_LOG_QUIET);
}

AvFile::~AvFile() {
    av_packet_free(&packet_);
    av_frame_free(&frame_);
    avcodec_free_context(&codec_);
    avformat_close_input(&format_);
    if (input_ != nullptr) {
        av_freep(static_cast<void*>(&input_->buffer));
        avio_context_free(&input_);
    }
}

bool AvFile::open() {
    constexpr int bufferSize = 32768;
    auto* const buffer = static_cast<unsigned char*>(av_malloc(bufferSize));
    input_ = buffer == nullptr
                 ? nullptr
                 : avio_alloc_context(buffer, bufferSize, 0, &descriptor_, readSome, nullptr, seek);
    format_ = avformat_alloc_context();
    if (input_ == nullptr || format_ == nullptr || ::lseek(descriptor_, 0, SEEK_SET) != 0) {
        return false;
    }
    format_->pb = input_;
    format_->flags |= AVFMT_FLAG_CUSTOM_IO;
    AVDictionary* options = nullptr;
    av_dict_set(&options, "format_whitelist", formats, 0);
    // A file may name others, which are not read.
    av_dict_set(&options, "protocol_whitelist", "none", 0);
    const int opened = avformat_open_input(&format_, nullptr, nullptr, &options);
    av_dict_free(&options);
    if (opened < 0 || frame_ == nullptr || packet_ == nullptr ||
        avformat_find_stream_info(format_, nullptr) < 0) {
        return false;
    }
    const AVCodec* decoder = nullptr;
    stream_ = av_find_best_stream(format_, AVMEDIA_TYPE_AUDIO, -1, -1, &decoder, 0);
    if (stream_ < 0 || decoder == nullptr) {
        return false;
    }
    for (unsigned i = 0; i < format_->nb_streams; ++i) {
        // Pictures and films need not be read.
        format_->streams[i]->discard =
            static_cast<int>(i) == stream_ ? AVDISCARD_DEFAULT : AVDISCARD_ALL;
    }
    codec_ = avcodec_alloc_context3(decoder);
    return codec_ != nullptr &&
           avcodec_parameters_to_context(codec_, format_->streams[stream_]->codecpar) >= 0 &&
           avcodec_open2(codec_, decoder, nullptr) >= 0 && codec_->sample_rate > 0;
}

std::optional<double> AvFile::seconds() const {
    return format_->duration > 0 ? std::optional(static_cast<double>(format_->duration) /
                                                 static_cast<double>(AV_TIME_BASE))
                                 : std::nullopt;
}

AudioStream::Next AvFile::read(std::vector<float>& mono) {
    Next next = Next::end;
    do {
        mono.clear();
        next = hasEnded_ ? Next::end : receive(mono);
    } while (next == Next::block && mono.empty());
    hasEnded_ = hasEnded_ || next == Next::end;
    return next;
}

AudioStream::Next AvFile::receive(std::vector<float>& mono) {
    for (;;) {
        const int received = avcodec_receive_frame(codec_, frame_);
        if (received >= 0) {
            return mix(mono) ? Next::block : Next::error;
        }
        if (received == AVERROR_EOF) {
            return Next::end;
        }
        if (received != AVERROR(EAGAIN) || isDrained_ || feed() < 0) {
            return Next::error;
        }
    }
}

/// Hands the decoder the next packet, or the news that there is none.
int AvFile::feed() {
    for (;;) {
        const int got = av_read_frame(format_, packet_);
        if (got == AVERROR_EOF) {
            isDrained_ = true;
            return avcodec_send_packet(codec_, nullptr);
        }
        if (got < 0) {
            return got;
        }
        const bool isOurs = packet_->stream_index == stream_;
        const int sent = isOurs ? avcodec_send_packet(codec_, packet_) : 0;
        av_packet_unref(packet_);
        // One damaged packet is a gap of a few milliseconds, no reason to give the file up.
        if (isOurs && sent != AVERROR_INVALIDDATA) {
            return sent;
        }
    }
}

bool AvFile::mix(std::vector<float>& mono) const {
    const auto format = static_cast<AVSampleFormat>(frame_->format);
    const AVSampleFormat packed = av_get_packed_sample_fmt(format);
    const int channels = frame_->ch_layout.nb_channels;
    if (!isKnown(packed) || channels < 1 || channels > mostChannels ||
        frame_->sample_rate != codec_->sample_rate || frame_->nb_samples < 0) {
        return false;
    }
    const bool isPlanar = av_sample_fmt_is_planar(format) != 0;
    const auto count = static_cast<std::size_t>(channels);
    mono.assign(static_cast<std::size_t>(frame_->nb_samples), 0.0F);
    for (std::size_t i = 0; i < mono.size(); ++i) {
        float sum = 0.0F;
        for (std::size_t c = 0; c < count; ++c) {
            sum += isPlanar ? sampleAt(packed, frame_->extended_data[c], i)
                            : sampleAt(packed, frame_->extended_data[0], i * count + c);
        }
        const float mean = sum / static_cast<float>(count);
        mono[i] = std::isfinite(mean) ? mean : 0.0F;
    }
    return true;
}

} // namespace

std::unique_ptr<AudioStream> openAvFile(int descriptor) {
    auto file = std::make_unique<AvFile>(descriptor);
    return file->open() ? std::move(file) : nullptr;
}

} // namespace vornic
