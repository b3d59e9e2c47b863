#include "Vornic/views/adapters/ModelAdapter.h"

#include "Vornic/app/Diagnostics.h"
#include "Vornic/app/LatencyHistogram.h"
#include "Vornic/typing/PreviewPhrase.h"
#include "Vornic/views/adapters/QmlText.h"
#include "VornicCore/realtime/Latency.h"

#include <QVariantMap>

namespace vornic {

namespace {

QVariantMap diagnostic(const QString& name, const std::string& value) {
    return {{"name", name}, {"value", QString::fromStdString(value)}};
}

} // namespace

ModelAdapter::ModelAdapter(AppModel& model, QObject* parent) : QObject(parent), model_(model) {}

void ModelAdapter::refresh() {
    boards_.show(model_.boards(), model_.board() ? model_.board()->id : std::string());
    Q_EMIT changed();
    refreshTyping();
}

void ModelAdapter::refreshTyping() {
    const bool typing = model_.activity().typing();
    const bool heard = model_.activity().lastKey().has_value();
    if (typing != typing_ || heard != keyHeard_) {
        typing_ = typing;
        keyHeard_ = heard;
        Q_EMIT typingChanged();
    }
}

void ModelAdapter::setPermissionHint(const QString& hint) {
    permissionHint_ = hint;
    Q_EMIT changed();
}

void ModelAdapter::setNote(const QString& note) {
    note_ = note;
    Q_EMIT changed();
}

QString ModelAdapter::subtitle() const {
    if (model_.board() == nullptr && !model_.silence()) {
        return tr("No keyboard yet");
    }
    return QString::fromStdString(model_.statusLine());
}

QString ModelAdapter::silence() const {
    const QuietRule* const rule = model_.quietRule();
    return rule != nullptr ? qmlText(rule->word) : QString();
}

QString ModelAdapter::silenceSymbol() const {
    const QuietRule* const rule = model_.quietRule();
    return rule != nullptr ? qmlText(rule->symbol) : QString();
}

QString ModelAdapter::tapState() const {
    switch (model_.tapState()) {
    case TapState::listening:
        return "listening";
    case TapState::needsRelaunch:
        return "needsRelaunch";
    case TapState::needsPermission:
        break;
    }
    return "needsPermission";
}

QString ModelAdapter::lastError() const {
    return QString::fromStdString(model_.lastError().value_or(std::string()));
}

QString ModelAdapter::boardName() const {
    return model_.board() ? QString::fromStdString(model_.board()->name) : QString();
}

QString ModelAdapter::studioTab() const {
    return model_.studio().studioTab == StudioTab::keys ? "keys" : "sounds";
}

void ModelAdapter::setStudioTab(const QString& tab) {
    StudioState state = model_.studio();
    state.studioTab = tab == "sounds" ? StudioTab::sounds : StudioTab::keys;
    model_.setStudio(state);
}

void ModelAdapter::renameBoard(const QString& name) {
    if (model_.board() && name.toStdString() != model_.board()->name) {
        model_.renameBoard(name.toStdString());
    }
}

QColor ModelAdapter::accent() const {
    const QColor wanted(model_.board() ? QString::fromStdString(model_.board()->colorHex)
                                       : QString());
    return wanted.isValid() ? wanted : QColor("#5E5CE6");
}

bool ModelAdapter::close() const {
    return model_.stage().placement == Placement::close;
}

void ModelAdapter::setClose(bool close) {
    StageSpec stage = model_.stage();
    stage.placement = close ? Placement::close : Placement::desk;
    model_.setStage(stage);
}

QVariantList ModelAdapter::feels() {
    return qmlOptions<Feel>();
}

QString ModelAdapter::feel() const {
    const auto feel = model_.tweaks().feel;
    return feel ? qmlText(rawString(*feel)) : QString();
}

void ModelAdapter::setFeel(const QString& feel) {
    SimpleTweaks tweaks = model_.tweaks();
    tweaks.feel = caseFromRawString<Feel>(feel.toStdString());
    model_.setTweaks(tweaks);
}

void ModelAdapter::setDeeper(double value) {
    SimpleTweaks tweaks = model_.tweaks();
    tweaks.deeper = value;
    model_.setTweaks(tweaks);
}

void ModelAdapter::setCrisper(double value) {
    SimpleTweaks tweaks = model_.tweaks();
    tweaks.crisper = value;
    model_.setTweaks(tweaks);
}

QString ModelAdapter::outputKind() const {
    return qmlText(rawString(model_.outputKind()));
}

void ModelAdapter::setOutputKind(const QString& kind) {
    if (const auto wanted = caseFromRawString<OutputKind>(kind.toStdString())) {
        model_.setOutputKind(*wanted);
    }
}

QString ModelAdapter::outputName() const {
    const std::string& name = model_.outputName();
    return name.empty() ? tr("No sound output") : QString::fromStdString(name);
}

QString ModelAdapter::credits() const {
    QStringList lines;
    for (const Board& board : model_.boards()) {
        for (const std::string& credit : board.credits) {
            lines.append(QString::fromStdString(board.name + ": " + credit));
        }
    }
    lines.removeDuplicates();
    return lines.join("\n");
}

QVariantList ModelAdapter::diagnostics() const {
    const Diagnostics& now = model_.diagnostics();
    const bool heard = now.keys > 0;
    const auto millis = [&](double value) {
        return DiagnosticsText::millis(heard ? std::optional(value) : std::nullopt);
    };
    return {
        diagnostic(tr("Key to app"), millis(now.keyToAppMillis)),
        diagnostic(tr("Key to app, slowest"), millis(now.keyToAppMaxMillis)),
        diagnostic(tr("Keys measured"), std::to_string(now.keys)),
        diagnostic(tr("Output device"), DiagnosticsText::millis(now.deviceMillis)),
        diagnostic(tr("Output buffer"), DiagnosticsText::frames(now.deviceBuffer)),
        diagnostic(tr("Sound engine"), DiagnosticsText::engine(now.engineRunning)),
        diagnostic(tr("Last full render"), DiagnosticsText::millis(now.lastRenderMillis)),
    };
}

QVariantList ModelAdapter::latencyBins() const {
    QVariantList bins;
    for (const std::size_t keys : LatencyHistogram::of(Latency::recentMillis()).bins) {
        bins.append(static_cast<int>(keys));
    }
    return bins;
}

double ModelAdapter::latencyBinMillis() {
    return LatencyHistogram::binMillis;
}

QString ModelAdapter::latencySummary() const {
    const LatencyHistogram spread = LatencyHistogram::of(Latency::recentMillis());
    if (spread.keys == 0) {
        return tr("Type, and see here how fast your keys sound.");
    }
    return tr("Last %1 keys: half within %2, 95 of 100 within %3")
        .arg(spread.keys)
        .arg(qmlText(DiagnosticsText::millis(spread.medianMillis)),
             qmlText(DiagnosticsText::millis(spread.p95Millis)));
}

QString ModelAdapter::lastLatency() const {
    return qmlText(DiagnosticsText::millis(model_.diagnostics().keyToAppMillis));
}

void ModelAdapter::setStartsWithSession(bool on) {
    if (autostart_ == nullptr) {
        return;
    }
    if (const std::error_code error = autostart_->setEnabled(on)) {
        model_.tell("Couldn't change how Vornic starts: " + error.message());
    }
    Q_EMIT changed();
}

void ModelAdapter::exportBoard(const QUrl& file) {
    model_.exportBoard(file.toLocalFile().toStdString());
}

void ModelAdapter::importBoard(const QUrl& file) {
    model_.importBoard(file.toLocalFile().toStdString());
}

void ModelAdapter::playPhrase() {
    model_.keys().type(previewPhrase());
}

void ModelAdapter::resetLatency() {
    Latency::reset();
    model_.refreshState();
}

void ModelAdapter::askForPermission() {
    if (onAskForPermission) {
        onAskForPermission();
    }
}

} // namespace vornic
