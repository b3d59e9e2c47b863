#pragma once

#include "Vornic/app/AppModel.h"

#include <functional>

namespace vornic {

/// What the Studio's adapters for sounds share: the sound and stroke that are edited, and a way to
/// change them. Thread: main.
class SoundEdit {
  public:
    /// `model` outlives it.
    explicit SoundEdit(AppModel& model) : model_(model) {}

    /// Null on a board without sounds, and without a board.
    const SoundSpec* sound() const;
    /// The sound's press, or its release where that is edited and there is one; null as above.
    const StrokeSpec* stroke() const;
    bool isRelease() const;

    void changeSound(const std::function<void(SoundSpec&)>& what) const;
    void changeStroke(const std::function<void(StrokeSpec&)>& what) const;

  private:
    AppModel& model_;
};

} // namespace vornic
