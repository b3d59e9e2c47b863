#pragma once

#include "Vornic/views/keyboard/LiveKeyboard.h"
#include "Vornic/views/permission/PermissionAdapter.h"
#include "Vornic/views/preview/FilesAdapter.h"
#include "Vornic/views/preview/PreviewAdapter.h"
#include "Vornic/views/recording/RecordingAdapter.h"
#include "Vornic/views/settings/DiagnosticsAdapter.h"
#include "Vornic/views/shared/BoardAdapter.h"
#include "Vornic/views/shared/SettingsAdapter.h"
#include "Vornic/views/shared/StatusAdapter.h"
#include "Vornic/views/shared/WindowRequests.h"
#include "Vornic/views/simple/TweaksAdapter.h"
#include "Vornic/views/studio/StudioAdapter.h"

#include <QtQml/qqmlregistration.h>

#include <QObject>

namespace vornic {

/// The program as every window gets it: one adapter for each subject. Thread: main.
class Adapters : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The program makes it.")

    Q_PROPERTY(vornic::BoardAdapter* board READ board CONSTANT)
    /// Of the current board.
    Q_PROPERTY(vornic::LiveKeyboard* keyboard READ keyboard CONSTANT)
    Q_PROPERTY(vornic::TweaksAdapter* tweaks READ tweaks CONSTANT)
    Q_PROPERTY(vornic::SettingsAdapter* settings READ settings CONSTANT)
    Q_PROPERTY(vornic::StatusAdapter* status READ status CONSTANT)
    Q_PROPERTY(vornic::PermissionAdapter* permission READ permission CONSTANT)
    Q_PROPERTY(vornic::DiagnosticsAdapter* diagnostics READ diagnostics CONSTANT)
    Q_PROPERTY(vornic::StudioAdapter* studio READ studio CONSTANT)
    Q_PROPERTY(vornic::PreviewAdapter* preview READ preview CONSTANT)
    Q_PROPERTY(vornic::FilesAdapter* files READ files CONSTANT)
    Q_PROPERTY(vornic::RecordingAdapter* recorder READ recorder CONSTANT)
    Q_PROPERTY(vornic::WindowRequests* windows READ windows CONSTANT)

  public:
    /// `model` outlives it; call `refresh` whenever it says that it has changed.
    explicit Adapters(AppModel& model, QObject* parent = nullptr)
        : QObject(parent), board_(model), keyboard_(model), tweaks_(model), settings_(model),
          status_(model), diagnostics_(model), studio_(model), preview_(model), files_(model),
          recorder_(model) {}

    /// Reads what has changed since the last time.
    void refresh() {
        board_.refresh();
        keyboard_.refresh();
        tweaks_.refresh();
        settings_.refresh();
        status_.refresh();
        permission_.refresh();
        diagnostics_.refresh();
        studio_.refresh();
        preview_.refresh();
        files_.refresh();
        recorder_.refresh();
    }
    /// The same for what changes with every key, and nothing else.
    void refreshActivity() { status_.refreshTyping(); }
    /// What stands on the user's keys, wherever they are drawn.
    void setLegends(const KeyLegends& legends) {
        keyboard_.setLegends(legends);
        preview_.keyboard()->setLegends(legends);
        studio_.keyboard()->setLegends(legends);
    }
    /// A key was played: it moves wherever a window shows its keyboard.
    void strike(int code, bool down, Strike strike) {
        keyboard_.strike(code, down, strike);
        preview_.keyboard()->strike(code, down, strike);
    }

    BoardAdapter* board() { return &board_; }
    LiveKeyboard* keyboard() { return &keyboard_; }
    TweaksAdapter* tweaks() { return &tweaks_; }
    SettingsAdapter* settings() { return &settings_; }
    StatusAdapter* status() { return &status_; }
    PermissionAdapter* permission() { return &permission_; }
    DiagnosticsAdapter* diagnostics() { return &diagnostics_; }
    StudioAdapter* studio() { return &studio_; }
    PreviewAdapter* preview() { return &preview_; }
    FilesAdapter* files() { return &files_; }
    RecordingAdapter* recorder() { return &recorder_; }
    WindowRequests* windows() { return &windows_; }

  private:
    BoardAdapter board_;
    LiveKeyboard keyboard_;
    TweaksAdapter tweaks_;
    SettingsAdapter settings_;
    StatusAdapter status_;
    PermissionAdapter permission_;
    DiagnosticsAdapter diagnostics_;
    StudioAdapter studio_;
    PreviewAdapter preview_;
    FilesAdapter files_;
    RecordingAdapter recorder_;
    WindowRequests windows_;
};

} // namespace vornic
