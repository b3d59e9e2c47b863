#include "Vornic/views/studio/LayersAdapter.h"

#include "Vornic/views/shared/QmlText.h"
#include "Vornic/views/studio/RecordingSets.h"
#include "VornicCore/board/EditBoard.h"
#include "VornicCore/render/JobLimits.h"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <string>
#include <vector>

namespace vornic {

namespace {

QStringList idsOf(const LayerSpec& layer) {
    QStringList ids;
    for (const std::string& id : layer.samples) {
        ids.append(QString::fromStdString(id));
    }
    return ids;
}

QString summaryOf(const LayerSpec& layer) {
    if (layer.samples.empty()) {
        return LayersAdapter::tr("No recording");
    }
    return layer.samples.size() == 1 ? qmlText(layer.samples.front())
                                     : LayersAdapter::tr("%1 recordings").arg(layer.samples.size());
}

} // namespace

LayersAdapter::LayersAdapter(AppModel& model, QObject* parent)
    : StudioPart(parent), model_(model), edit_(model) {}

void LayersAdapter::read() {
    QVariantList rows;
    if (const StrokeSpec* const stroke = edit_.stroke()) {
        for (const LayerSpec& layer : stroke->layers) {
            rows.append(QVariantMap{
                {"part", static_cast<int>(layer.part)},
                {"summary", summaryOf(layer)},
                {"samples", idsOf(layer)},
                {"offset", layer.offsetMs},
                {"gain", layer.gainDb},
                {"pitch", layer.pitch},
                {"invert", layer.invert},
                {"mute", layer.muted},
                {"solo", layer.solo},
                {"heard", isHeard(layer, stroke->layers)},
            });
        }
    }
    rows_.show(rows);
    list_ = rows;
    aligned_ = edit_.stroke() != nullptr && edit_.stroke()->alignAttacks;
    canAdd_ = edit_.stroke() != nullptr && edit_.stroke()->layers.size() < JobLimits::mostLayers;
}

QVariantList LayersAdapter::parts() {
    return qmlOptions<LayerPart>();
}

void LayersAdapter::setAligned(bool on) {
    edit_.changeStroke([on](StrokeSpec& stroke) { stroke.alignAttacks = on; });
}

void LayersAdapter::add() {
    edit_.changeStroke(
        [](StrokeSpec& stroke) { EditBoard::addLayer(stroke, JobLimits::mostLayers); });
}

void LayersAdapter::remove(int place) {
    edit_.changeStroke([place](StrokeSpec& stroke) { EditBoard::removeLayer(stroke, place); });
}

void LayersAdapter::move(int place, int to) {
    edit_.changeStroke([=](StrokeSpec& stroke) { EditBoard::moveLayer(stroke, place, to); });
}

void LayersAdapter::changeLayer(int place, const std::function<void(LayerSpec&)>& what) {
    edit_.changeStroke([&](StrokeSpec& stroke) {
        if (place >= 0 && place < std::ssize(stroke.layers)) {
            what(stroke.layers[static_cast<std::size_t>(place)]);
        }
    });
}

void LayersAdapter::setPart(int place, int part) {
    if (const auto wanted = qmlCase<LayerPart>(part)) {
        changeLayer(place, [&](LayerSpec& layer) { layer.part = *wanted; });
    }
}

void LayersAdapter::setNumber(int place, Number which, double value) {
    changeLayer(place, [&](LayerSpec& layer) {
        switch (which) {
        case Number::Offset:
            layer.offsetMs = value;
            break;
        case Number::Gain:
            layer.gainDb = value;
            break;
        case Number::Pitch:
            layer.pitch = value;
            break;
        }
    });
}

void LayersAdapter::setFlag(int place, Flag which, bool on) {
    changeLayer(place, [&](LayerSpec& layer) {
        switch (which) {
        case Flag::Invert:
            layer.invert = on;
            break;
        case Flag::Mute:
            layer.muted = on;
            break;
        case Flag::Solo:
            layer.solo = on;
            break;
        }
    });
}

QVariantList LayersAdapter::recordings() const {
    return recordingSets(model_.soundPacks(), model_.library().userSamples());
}

void LayersAdapter::choose(int place, const QStringList& ids, bool on) {
    std::vector<std::string> chosen;
    std::ranges::transform(ids, std::back_inserter(chosen), &QString::toStdString);
    changeLayer(place, [&](LayerSpec& layer) { EditBoard::chooseSamples(layer, chosen, on); });
}

void LayersAdapter::play(const QString& id) {
    if (const auto samples = model_.library().samples(id.toStdString())) {
        model_.sound().audition(*samples, 1.0F);
    }
}

} // namespace vornic
