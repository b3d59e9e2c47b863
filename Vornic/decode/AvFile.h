#pragma once

#include <string>
#include <vector>

struct AVCodecContext;
struct AVFormatContext;
struct AVFrame;
struct AVPacket;

namespace vornic {

/// The first good audio stream of a file, as mono floats, decoded by libavformat and libavcodec.
class AvFile {
  public:
    AvFile();
    ~AvFile();
    AvFile(const AvFile&) = delete;
    AvFile& operator=(const AvFile&) = delete;

    /// False for a file that is none of the formats phones and recorders write.
    bool open(const std::string& file);

    /// Hz.
    double rate() const;

    /// The length that the file claims, in seconds; below 0 when it says nothing.
    double seconds() const;

    enum class Next { block, end, error };

    /// Replaces `mono` with what comes next; channels are averaged.
    Next read(std::vector<float>& mono);

  private:
    int feed();
    bool mix(std::vector<float>& mono) const;

    AVFormatContext* format_ = nullptr;
    AVCodecContext* codec_ = nullptr;
    AVFrame* frame_ = nullptr;
    AVPacket* packet_ = nullptr;
    int stream_ = -1;
    bool isDrained_ = false;
};

} // namespace vornic
