#include "Vornic/commands/WavFile.h"

#include "VornicCore/base/SampleRate.h"

#include <fcntl.h>
#include <sndfile.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <utility>

namespace vornic {

namespace {

constexpr std::size_t channels = 2;
constexpr std::size_t samplesPerWrite = 16384;
constexpr std::uint64_t bytesPerFrame = channels * sizeof(float);
// The sizes in the file are 32 bits wide and count the headers too.
constexpr std::uint64_t mostFrames = (0xffffffffULL - 4096) / bytesPerFrame;

} // namespace

WavFile::~WavFile() {
    discard();
}

bool WavFile::create(const std::filesystem::path& file) {
    discard();
    error_.clear();
    frames_ = 0;
    file_ = file;
    std::string name = file.string() + ".XXXXXX";
    descriptor_ = mkstemp(name.data());
    if (descriptor_ < 0) {
        return failWithSystemError();
    }
    temporary_ = name;
    // A private temporary file becomes an ordinary one: with the rights that the user's files get.
    const mode_t mask = umask(0);
    umask(mask);
    fchmod(descriptor_, 0666 & ~mask);

    SF_INFO format{};
    format.samplerate = static_cast<int>(DSP::sampleRate);
    format.channels = static_cast<int>(channels);
    format.format = SF_FORMAT_WAV | SF_FORMAT_FLOAT;
    sound_ = sf_open_fd(descriptor_, SFM_WRITE, &format, SF_FALSE);
    if (sound_ == nullptr) {
        return fail(sf_strerror(nullptr));
    }
    // This chunk holds the time of writing, so that no two files would be equal.
    sf_command(sound_, SFC_SET_ADD_PEAK_CHUNK, nullptr, SF_FALSE);
    waiting_.reserve(samplesPerWrite);
    return true;
}

bool WavFile::append(std::span<const float> left, std::span<const float> right) {
    if (!error_.empty()) {
        return false;
    }
    if (sound_ == nullptr) {
        return fail("the file is not open");
    }
    frames_ += left.size();
    if (frames_ > mostFrames) {
        return fail("the sound is too long for a WAV file");
    }
    for (std::size_t i = 0; i < left.size(); ++i) {
        waiting_.push_back(left[i]);
        waiting_.push_back(right[i]);
    }
    return waiting_.size() < samplesPerWrite || write();
}

bool WavFile::write() {
    const auto count = static_cast<sf_count_t>(waiting_.size());
    errno = 0;
    if (sf_write_float(sound_, waiting_.data(), count) != count || sf_error(sound_) != 0) {
        return errno != 0 ? failWithSystemError() : fail(sf_strerror(sound_));
    }
    waiting_.clear();
    return true;
}

bool WavFile::finish() {
    if (!error_.empty() || sound_ == nullptr) {
        return error_.empty() ? fail("the file is not open") : false;
    }
    if (!write()) {
        return false;
    }
    // Closing completes the header and says nothing of a failure; the length and the disk do.
    errno = 0;
    const int closed = sf_close(sound_);
    sound_ = nullptr;
    struct stat status{};
    if (closed != 0 || fsync(descriptor_) != 0 || fstat(descriptor_, &status) != 0) {
        return errno != 0 ? failWithSystemError() : fail(sf_error_number(closed));
    }
    if (static_cast<std::uint64_t>(status.st_size) < frames_ * bytesPerFrame) {
        return fail("the file is incomplete");
    }
    if (::close(std::exchange(descriptor_, -1)) != 0 ||
        std::rename(temporary_.c_str(), file_.c_str()) != 0) {
        return failWithSystemError();
    }
    temporary_.clear();
    return true;
}

void WavFile::discard() {
    if (sound_ != nullptr) {
        sf_close(sound_);
        sound_ = nullptr;
    }
    if (descriptor_ >= 0) {
        ::close(descriptor_);
        descriptor_ = -1;
    }
    if (!temporary_.empty()) {
        unlink(temporary_.c_str());
        temporary_.clear();
    }
    waiting_.clear();
}

bool WavFile::fail(const std::string& reason) {
    if (error_.empty()) {
        error_ = reason;
    }
    discard();
    return false;
}

bool WavFile::failWithSystemError() {
    return fail(std::strerror(errno));
}

} // namespace vornic
