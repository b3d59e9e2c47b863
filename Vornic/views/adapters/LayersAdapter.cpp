#include "Vornic/views/adapters/LayersAdapter.h"

#include "Vornic/views/adapters/QmlText.h"
#include "Vornic/views/adapters/RecordingSets.h"
#include "VornicCore/render/JobLimits.h"

#include <algorithm>
#include <cstddef>
#include <string>
#include <utility>

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
    return layer.samples.size() == 1 ? QString::fromStdString(layer.samples.front())
                                     : LayersAdapter::tr("%1 recordings").arg(layer.samples.size());
}

} // namespace

LayersAdapter::LayersAdapter(AppModel& model, QObject* parent)
    : QObject(parent), model_(model), edit_(model) {}

void LayersAdapter::refresh() {
    QVariantList rows;
    if (const StrokeSpec* const stroke = edit_.stroke()) {
        const bool anySolo = std::ranges::any_of(stroke->layers, &LayerSpec::solo);
        for (const LayerSpec& layer : stroke->layers) {
            rows.append(QVariantMap{
                {"part", qmlText(rawString(layer.part))},
                {"summary", summaryOf(layer)},
                {"samples", idsOf(layer)},
                {"offset", layer.offsetMs},
                {"gain", layer.gainDb},
                {"pitch", layer.pitch},
                {"invert", layer.invert},
                {"mute", layer.muted},
                {"solo", layer.solo},
                {"heard", !layer.muted && (layer.solo || !anySolo)},
            });
        }
    }
    rows_.show(rows);
    Q_EMIT changed();
}

QVariantList LayersAdapter::parts() {
    return qmlOptions<LayerPart>();
}

bool LayersAdapter::aligned() const {
    return edit_.stroke() != nullptr && edit_.stroke()->alignAttacks;
}

void LayersAdapter::setAligned(bool on) {
    edit_.changeStroke([on](StrokeSpec& stroke) { stroke.alignAttacks = on; });
}

bool LayersAdapter::canAdd() const {
    return edit_.stroke() != nullptr && edit_.stroke()->layers.size() < JobLimits::mostLayers;
}

void LayersAdapter::add() {
    if (!canAdd()) {
        return;
    }
    edit_.changeStroke([](StrokeSpec& stroke) {
        LayerSpec layer;
        if (!stroke.layers.empty()) {
            layer.samples = stroke.layers.back().samples;
        }
        stroke.layers.push_back(std::move(layer));
    });
}

void LayersAdapter::remove(int place) {
    edit_.changeStroke([place](StrokeSpec& stroke) {
        if (place >= 0 && place < std::ssize(stroke.layers)) {
            stroke.layers.erase(stroke.layers.begin() + place);
        }
    });
}

void LayersAdapter::move(int place, int to) {
    edit_.changeStroke([=](StrokeSpec& stroke) {
        const auto count = std::ssize(stroke.layers);
        if (place < 0 || to < 0 || place >= count || to >= count) {
            return;
        }
        const auto from = stroke.layers.begin() + place;
        if (place < to) {
            std::rotate(from, from + 1, stroke.layers.begin() + to + 1);
        } else {
            std::rotate(stroke.layers.begin() + to, from, from + 1);
        }
    });
}

void LayersAdapter::changeLayer(int place, const std::function<void(LayerSpec&)>& what) {
    edit_.changeStroke([&](StrokeSpec& stroke) {
        if (place >= 0 && place < std::ssize(stroke.layers)) {
            what(stroke.layers[static_cast<std::size_t>(place)]);
        }
    });
}

void LayersAdapter::setPart(int place, const QString& part) {
    if (const auto wanted = caseFromRawString<LayerPart>(part.toStdString())) {
        changeLayer(place, [&](LayerSpec& layer) { layer.part = *wanted; });
    }
}

void LayersAdapter::setNumber(int place, const QString& field, double value) {
    changeLayer(place, [&](LayerSpec& layer) {
        if (field == "offset") {
            layer.offsetMs = value;
        } else if (field == "gain") {
            layer.gainDb = value;
        } else if (field == "pitch") {
            layer.pitch = value;
        }
    });
}

void LayersAdapter::setFlag(int place, const QString& field, bool on) {
    changeLayer(place, [&](LayerSpec& layer) {
        if (field == "invert") {
            layer.invert = on;
        } else if (field == "mute") {
            layer.muted = on;
        } else if (field == "solo") {
            layer.solo = on;
        }
    });
}

QVariantList LayersAdapter::recordings() const {
    return recordingSets(model_.soundPacks(), model_.library().userSamples());
}

void LayersAdapter::choose(int place, const QStringList& ids, bool on) {
    changeLayer(place, [&](LayerSpec& layer) {
        for (const QString& each : ids) {
            const std::string id = each.toStdString();
            const auto found = std::ranges::find(layer.samples, id);
            if (on && found == layer.samples.end()) {
                layer.samples.push_back(id);
            } else if (!on && found != layer.samples.end()) {
                layer.samples.erase(found);
            }
        }
    });
}

void LayersAdapter::play(const QString& id) {
    if (const auto samples = model_.library().samples(id.toStdString())) {
        model_.sound().audition(*samples, 1.0F);
    }
}

} // namespace vornic
