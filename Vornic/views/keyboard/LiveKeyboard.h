#pragma once

#include "Vornic/app/AppModel.h"
#include "Vornic/views/keyboard/KeyboardScene.h"

#include <QtQml/qqmlregistration.h>

#include <QObject>
#include <QProperty>
#include <QVariantList>
#include <cstdint>
#include <optional>

namespace vornic {

/// The keyboard of a board as windows draw it, and the keys that go down and up on it. Costs
/// nothing while no window shows it. Thread: main.
class LiveKeyboard : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The program makes it.")

    /// In key units.
    Q_PROPERTY(double layoutWidth READ layoutWidth NOTIFY sceneChanged)
    Q_PROPERTY(double layoutHeight READ layoutHeight NOTIFY sceneChanged)
    /// Its keys for who cannot see them: entries { code, said, soundName, x, y, w, h }.
    Q_PROPERTY(QVariantList keys READ keys NOTIFY sceneChanged)
    /// Whether keys have a place in space.
    Q_PROPERTY(bool headphones READ headphones NOTIFY headphonesChanged)

  public:
    /// `model` outlives it.
    explicit LiveKeyboard(AppModel& model, QObject* parent = nullptr)
        : QObject(parent), model_(model) {}

    /// Follows the model: shows its current board.
    void refresh();
    /// Shows this board, or none.
    void show(const Board* board);
    /// Shows what stands on the user's keys, at once where it follows the model, else with the next
    /// board.
    void setLegends(const KeyLegends& legends);
    /// A key went down or up.
    void strike(int code, bool down, Strike strike);

    const KeyboardScene& scene() const { return scene_; }
    double layoutWidth() const { return scene_.width; }
    double layoutHeight() const { return scene_.height; }
    QVariantList keys() const;
    bool headphones() const { return headphones_; }

    /// Plays a key as if it were typed.
    Q_INVOKABLE void play(int code);
    /// The key at a place in key units, -1 where there is none that can be heard.
    Q_INVOKABLE int keyAt(double x, double y) const;

  Q_SIGNALS:
    void sceneChanged();
    void headphonesChanged();
    void struck(int code, bool down, double loudness, double pan);

  private:
    AppModel& model_;
    KeyLegends legends_;
    KeyboardScene scene_;
    std::optional<std::uint64_t> seen_;
    Q_OBJECT_BINDABLE_PROPERTY(LiveKeyboard, bool, headphones_, &LiveKeyboard::headphonesChanged)
};

} // namespace vornic
