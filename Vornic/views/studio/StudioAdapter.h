#pragma once

#include "Vornic/views/studio/EqualizerAdapter.h"
#include "Vornic/views/studio/InspectorAdapter.h"
#include "Vornic/views/studio/KeyboardAdapter.h"
#include "Vornic/views/studio/LayersAdapter.h"
#include "Vornic/views/studio/PartsAdapter.h"
#include "Vornic/views/studio/ShapeAdapter.h"
#include "Vornic/views/studio/SoundListAdapter.h"
#include "Vornic/views/studio/StrokeAdapter.h"

#include <QtQml/qqmlregistration.h>

#include <QObject>
#include <QProperty>
#include <cstdint>
#include <optional>
#include <string>

namespace vornic {

/// Everything that the Studio shows, and who has to read what anew. Thread: main.
class StudioAdapter : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The program makes it.")

    Q_PROPERTY(Tab tab READ tab WRITE setTab NOTIFY tabChanged)
    Q_PROPERTY(vornic::KeyboardAdapter* keyboard READ keyboard CONSTANT)
    Q_PROPERTY(vornic::InspectorAdapter* inspector READ inspector CONSTANT)
    Q_PROPERTY(vornic::SoundListAdapter* sounds READ sounds CONSTANT)
    Q_PROPERTY(vornic::StrokeAdapter* stroke READ stroke CONSTANT)
    Q_PROPERTY(vornic::EqualizerAdapter* equalizer READ equalizer CONSTANT)
    Q_PROPERTY(vornic::ShapeAdapter* shape READ shape CONSTANT)
    Q_PROPERTY(vornic::LayersAdapter* layers READ layers CONSTANT)
    Q_PROPERTY(vornic::PartsAdapter* parts READ parts CONSTANT)

  public:
    /// The two sections of the window.
    enum class Tab : std::uint8_t { Keys, Sounds };
    Q_ENUM(Tab)

    /// `model` outlives it.
    explicit StudioAdapter(AppModel& model, QObject* parent = nullptr);

    Tab tab() const { return tab_; }
    void setTab(Tab tab);
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

  Q_SIGNALS:
    void tabChanged();

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
    /// What was drawn of the stroke: of which sound, and which render.
    struct Drawn {
        std::uint64_t render = 0;
        std::string board;
        std::optional<std::string> sound;
        bool release = false;
        bool operator==(const Drawn&) const = default;
    };
    std::optional<Drawn> drawn_;
    Q_OBJECT_BINDABLE_PROPERTY(StudioAdapter, Tab, tab_, &StudioAdapter::tabChanged)
};

} // namespace vornic
