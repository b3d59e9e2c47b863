#pragma once

#include "Vornic/app/AppModel.h"

#include <QtQml/qqmlregistration.h>

#include <QObject>
#include <QProperty>
#include <QString>
#include <cstdint>

namespace vornic {

/// The name of the symbol, a file in "icons", that stands for how the program is: whether it hears
/// keys, and why they are silent. Thread: main.
QString symbolOf(const AppModel& model);

/// How the program is, for every window: whether it hears keys, why they are silent, where they
/// sound, and what it has to say. Thread: main.
class StatusAdapter : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The program makes it.")

    Q_PROPERTY(bool typing READ typing NOTIFY typingChanged)
    /// Whether any key went down since the start.
    Q_PROPERTY(bool keyHeard READ keyHeard NOTIFY keyHeardChanged)
    Q_PROPERTY(QString subtitle READ subtitle NOTIFY subtitleChanged)
    /// What the status line shows: the reason to be silent, or that keys are heard.
    Q_PROPERTY(QString symbol READ symbol NOTIFY symbolChanged)
    Q_PROPERTY(QString line READ line NOTIFY lineChanged)
    /// Why that is so, in a sentence, or empty; and what one can do about it here.
    Q_PROPERTY(QString why READ why NOTIFY whyChanged)
    Q_PROPERTY(Remedy remedy READ remedy NOTIFY remedyChanged)
    /// Of these three one holds.
    Q_PROPERTY(bool listening READ listening NOTIFY listeningChanged)
    Q_PROPERTY(bool needsPermission READ needsPermission NOTIFY needsPermissionChanged)
    Q_PROPERTY(bool needsRelaunch READ needsRelaunch NOTIFY needsRelaunchChanged)
    Q_PROPERTY(QString lastError READ lastError NOTIFY lastErrorChanged)
    /// Something worth knowing that is no error; until it is dismissed.
    Q_PROPERTY(QString note READ note WRITE setNote NOTIFY noteChanged)
    Q_PROPERTY(QString outputName READ outputName NOTIFY outputNameChanged)
    Q_PROPERTY(bool headphones READ headphones NOTIFY headphonesChanged)
    Q_PROPERTY(bool onBluetooth READ onBluetooth NOTIFY onBluetoothChanged)

  public:
    enum class Remedy : std::uint8_t { Nothing, SwitchOn, Settings };
    Q_ENUM(Remedy)

    /// `model` outlives it; call `refresh` whenever it says that it has changed.
    explicit StatusAdapter(AppModel& model, QObject* parent = nullptr);

    void refresh();
    /// Looks whether somebody types, and at nothing else: it comes with every key.
    void refreshTyping();

    bool typing() const { return typing_; }
    bool keyHeard() const { return keyHeard_; }
    QString subtitle() const { return subtitle_; }
    QString symbol() const { return symbol_; }
    QString line() const { return line_; }
    QString why() const { return why_; }
    Remedy remedy() const { return remedy_; }
    bool listening() const { return listening_; }
    bool needsPermission() const { return needsPermission_; }
    bool needsRelaunch() const { return needsRelaunch_; }
    QString lastError() const { return lastError_; }
    QString note() const { return note_; }
    void setNote(const QString& note) { note_ = note; }
    QString outputName() const { return outputName_; }
    bool headphones() const { return headphones_; }
    bool onBluetooth() const { return onBluetooth_; }

    /// How loud it was since the last call, 0 to 1.
    Q_INVOKABLE double takeLevel() { return static_cast<double>(model_.sound().takePeak()); }

    Q_INVOKABLE void dismissNote() { setNote({}); }
    Q_INVOKABLE void dismissError() { model_.dismissError(); }

  Q_SIGNALS:
    void typingChanged();
    void keyHeardChanged();
    void subtitleChanged();
    void symbolChanged();
    void lineChanged();
    void whyChanged();
    void remedyChanged();
    void listeningChanged();
    void needsPermissionChanged();
    void needsRelaunchChanged();
    void lastErrorChanged();
    void noteChanged();
    void outputNameChanged();
    void headphonesChanged();
    void onBluetoothChanged();

  private:
    void explain(const QuietRule* rule);

    AppModel& model_;
    Q_OBJECT_BINDABLE_PROPERTY(StatusAdapter, bool, typing_, &StatusAdapter::typingChanged)
    Q_OBJECT_BINDABLE_PROPERTY(StatusAdapter, bool, keyHeard_, &StatusAdapter::keyHeardChanged)
    Q_OBJECT_BINDABLE_PROPERTY(StatusAdapter, QString, subtitle_, &StatusAdapter::subtitleChanged)
    Q_OBJECT_BINDABLE_PROPERTY(StatusAdapter, QString, symbol_, &StatusAdapter::symbolChanged)
    Q_OBJECT_BINDABLE_PROPERTY(StatusAdapter, QString, line_, &StatusAdapter::lineChanged)
    Q_OBJECT_BINDABLE_PROPERTY(StatusAdapter, QString, why_, &StatusAdapter::whyChanged)
    Q_OBJECT_BINDABLE_PROPERTY_WITH_ARGS(StatusAdapter, Remedy, remedy_, Remedy::Nothing,
                                         &StatusAdapter::remedyChanged)
    Q_OBJECT_BINDABLE_PROPERTY(StatusAdapter, bool, listening_, &StatusAdapter::listeningChanged)
    Q_OBJECT_BINDABLE_PROPERTY(StatusAdapter, bool, needsPermission_,
                               &StatusAdapter::needsPermissionChanged)
    Q_OBJECT_BINDABLE_PROPERTY(StatusAdapter, bool, needsRelaunch_,
                               &StatusAdapter::needsRelaunchChanged)
    Q_OBJECT_BINDABLE_PROPERTY(StatusAdapter, QString, lastError_, &StatusAdapter::lastErrorChanged)
    Q_OBJECT_BINDABLE_PROPERTY(StatusAdapter, QString, note_, &StatusAdapter::noteChanged)
    Q_OBJECT_BINDABLE_PROPERTY(StatusAdapter, QString, outputName_,
                               &StatusAdapter::outputNameChanged)
    Q_OBJECT_BINDABLE_PROPERTY(StatusAdapter, bool, headphones_, &StatusAdapter::headphonesChanged)
    Q_OBJECT_BINDABLE_PROPERTY(StatusAdapter, bool, onBluetooth_,
                               &StatusAdapter::onBluetoothChanged)
};

} // namespace vornic
