#pragma once

#include <memory>
#include <span>
#include <vector>

namespace vornic {

/// Converts a mono stream from one rate to another, block by block, so that a long file never has
/// to be held at both rates. Linear phase, about 20 bits of precision; the filter's delay is
/// removed. Equal rates copy the samples unchanged. Thread: any, one at a time.
class MonoResampler {
  public:
    /// Both rates in Hz, positive.
    MonoResampler(double fromRate, double toRate);
    ~MonoResampler();
    MonoResampler(const MonoResampler&) = delete;
    MonoResampler& operator=(const MonoResampler&) = delete;

    /// Converts `samples` and appends what is ready to `output`. False after an error of the
    /// converter; `output` is then unusable.
    bool process(std::span<const float> samples, std::vector<float>& output);

    /// Ends the stream and appends the rest to `output`. Nothing may be processed afterwards.
    bool finish(std::vector<float>& output);

  private:
    struct Converter;
    std::unique_ptr<Converter> converter_; // none where the rates are equal
    bool usable_ = true;
};

} // namespace vornic
