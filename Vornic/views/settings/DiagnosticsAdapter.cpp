#include "Vornic/views/settings/DiagnosticsAdapter.h"

#include "Vornic/app/Diagnostics.h"
#include "Vornic/app/LatencyHistogram.h"
#include "Vornic/views/shared/QmlText.h"
#include "VornicCore/realtime/Latency.h"

#include <QVariantMap>
#include <algorithm>
#include <cmath>
#include <optional>

namespace vornic {

namespace {

QVariantMap row(const QString& name, const std::string& value) {
    return {{"name", name}, {"value", qmlText(value)}};
}

} // namespace

DiagnosticsAdapter::DiagnosticsAdapter(AppModel& model, QObject* parent)
    : QObject(parent), model_(model) {
    refresh();
}

void DiagnosticsAdapter::refresh() {
    const Diagnostics& now = model_.diagnostics();
    const auto millis = [heard = now.keys > 0](double value) {
        return DiagnosticsText::millis(heard ? std::optional(value) : std::nullopt);
    };
    QVariantList rows{
        row(tr("Key to app"), millis(now.keyToAppMillis)),
        row(tr("Key to app, slowest"), millis(now.keyToAppMaxMillis)),
        row(tr("Keys measured"), std::to_string(now.keys)),
        row(tr("Output device"), DiagnosticsText::millis(now.deviceMillis)),
        row(tr("Output buffer"), DiagnosticsText::frames(now.deviceBuffer)),
        row(tr("Sound engine"), DiagnosticsText::engine(now.engineRunning)),
        row(tr("Last full render"), DiagnosticsText::millis(now.lastRenderMillis)),
    };
    if (now.realTimeLost) {
        rows.append(row(tr("Sound in real time"), tr("given up: it did not rest").toStdString()));
    }
    rows_ = rows;
    keyToSound_ = inWords(now);

    const LatencyHistogram spread = LatencyHistogram::of(Latency::recentMillis());
    latencyBins_ = QList<int>(spread.bins.begin(), spread.bins.end());
    latencySummary_ = spread.keys == 0
                          ? tr("Type, and see here how fast your keys sound.")
                          : tr("Last %1 keys: half within %2, 95 of 100 within %3")
                                .arg(spread.keys)
                                .arg(qmlText(DiagnosticsText::millis(spread.medianMillis)),
                                     qmlText(DiagnosticsText::millis(spread.p95Millis)));
}

QString DiagnosticsAdapter::inWords(const Diagnostics& now) const {
    if (now.keys == 0 || model_.outputName().empty()) {
        return {};
    }
    const QString output = qmlText(model_.outputName());
    if (!now.deviceMillis) {
        return tr("%1 ms from key to mixer; what %2 adds is unknown")
            .arg(QString::number(now.keyToAppMillis, 'f', 1), output);
    }
    return tr("%1 ms from key to sound on %2")
        .arg(QString::number(std::max(1L, std::lround(now.keyToAppMillis + *now.deviceMillis))),
             output);
}

double DiagnosticsAdapter::latencyBinMillis() {
    return LatencyHistogram::binMillis;
}

void DiagnosticsAdapter::reset() {
    Latency::reset();
    model_.refreshState();
}

} // namespace vornic
