#pragma once

#include "Vornic/views/adapters/EqualizerAdapter.h"
#include "Vornic/views/adapters/InspectorAdapter.h"
#include "Vornic/views/adapters/KeyboardAdapter.h"
#include "Vornic/views/adapters/LayersAdapter.h"
#include "Vornic/views/adapters/PartsAdapter.h"
#include "Vornic/views/adapters/ShapeAdapter.h"
#include "Vornic/views/adapters/SoundListAdapter.h"
#include "Vornic/views/adapters/StrokeAdapter.h"

#include <QtQml/qqmlregistration.h>

#include <QObject>
#include <cstdint>
#include <optional>

namespace vornic {

/// Everything that the Studio shows, and who has to read what anew. Main thread.
class StudioAdapter : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The program makes it.")

    Q_PROPERTY(vornic::KeyboardAdapter* keyboard READ keyboard CONSTANT)
    Q_PROPERTY(vornic::InspectorAdapter* inspector READ inspector CONSTANT)
    Q_PROPERTY(vornic::SoundListAdapter* sounds READ sounds CONSTANT)
    Q_PROPERTY(vornic::StrokeAdapter* stroke READ stroke CONSTANT)
    Q_PROPERTY(vornic::EqualizerAdapter* equalizer READ equalizer CONSTANT)
    Q_PROPERTY(vornic::ShapeAdapter* shape READ shape CONSTANT)
    Q_PROPERTY(vornic::LayersAdapter* layers READ layers CONSTANT)
    Q_PROPERTY(vornic::PartsAdapter* parts READ parts CONSTANT)

  public:
    /// `model` outlives it.
    explicit StudioAdapter(AppModel& model, QObject* parent = nullptr);

    KeyboardAdapter* keyboard() { return &keyboard_; }
    InspectorAdapter* inspector() { return &inspector_; }
    SoundListAdapter* sounds() { return &sounds_; }
    StrokeAdapter* stroke() { return &stroke_; }
    EqualizerAdapter* equalizer() { return &equalizer_; }
    ShapeAdapter* shape() { return &shape_; }
    LayersAdapter* layers() { return &layers_; }
    PartsAdapter* parts() { return &parts_; }

    /// Reads anew what has changed since the last time: the board and where the user is in it, and
    /// what was rendered. Most of what happens to the model is neither.
    void refresh();
    /// A key went down or up.
    void refreshActivity() { keyboard_.refreshPressed(); }

  private:
    struct Seen {
        std::uint64_t board = 0;
        StudioState studio;
        bool operator==(const Seen&) const = default;
    };

    AppModel& model_;
    KeyboardAdapter keyboard_;
    InspectorAdapter inspector_;
    SoundListAdapter sounds_;
    StrokeAdapter stroke_;
    EqualizerAdapter equalizer_;
    ShapeAdapter shape_;
    LayersAdapter layers_;
    PartsAdapter parts_;
    std::optional<Seen> seen_;
    std::optional<std::uint64_t> seenRender_;
};

} // namespace vornic
