#include "Vornic/views/simple/TweaksAdapter.h"

#include "Vornic/views/shared/QmlText.h"

#include <optional>

namespace vornic {

namespace {

/// The feel of the board's first sound, which most of its keys play.
std::optional<Feel> ownFeelOf(const Board* board) {
    if (board == nullptr || board->sounds.empty()) {
        return std::nullopt;
    }
    switch (board->sounds.front().switchParts.type) {
    case SwitchType::linear:
        return Feel::linear;
    case SwitchType::tactile:
        return Feel::tactile;
    case SwitchType::clicky:
        return Feel::clicky;
    case SwitchType::topre:
    case SwitchType::silent:
        return std::nullopt;
    }
    return std::nullopt;
}

} // namespace

TweaksAdapter::TweaksAdapter(AppModel& model, QObject* parent) : QObject(parent), model_(model) {
    refresh();
}

void TweaksAdapter::refresh() {
    const SimpleTweaks& tweaks = model_.tweaks();
    feel_ = tweaks.feel ? static_cast<int>(*tweaks.feel) : -1;
    const std::optional<Feel> own = ownFeelOf(model_.board());
    ownFeel_ = own ? static_cast<int>(*own) : -1;
    deeper_ = tweaks.deeper;
    crisper_ = tweaks.crisper;
}

QVariantList TweaksAdapter::feels() {
    return qmlOptions<Feel>();
}

void TweaksAdapter::setFeel(int feel) {
    SimpleTweaks tweaks = model_.tweaks();
    tweaks.feel = qmlCase<Feel>(feel);
    model_.setTweaks(tweaks);
}

void TweaksAdapter::setDeeper(double value) {
    SimpleTweaks tweaks = model_.tweaks();
    tweaks.deeper = value;
    model_.setTweaks(tweaks);
}

void TweaksAdapter::setCrisper(double value) {
    SimpleTweaks tweaks = model_.tweaks();
    tweaks.crisper = value;
    model_.setTweaks(tweaks);
}

} // namespace vornic
