#pragma once

#include "Vornic/app/AppModel.h"
#include "Vornic/ports/Autostart.h"

#include <QtQml/qqmlregistration.h>

#include <QObject>
#include <QProperty>
#include <QVariantList>

namespace vornic {

/// What the user has set, for every window. Thread: main.
class SettingsAdapter : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The program makes it.")

    Q_PROPERTY(bool soundsOn READ soundsOn WRITE setSoundsOn NOTIFY soundsOnChanged)
    Q_PROPERTY(double volume READ volume WRITE setVolume NOTIFY volumeChanged)
    /// Whether the keyboard sits close instead of on the desk.
    Q_PROPERTY(bool close READ close WRITE setClose NOTIFY closeChanged)
    /// Entries { value, text }; the one chosen by its value.
    Q_PROPERTY(QVariantList outputKinds READ outputKinds CONSTANT)
    Q_PROPERTY(int outputKind READ outputKind WRITE setOutputKind NOTIFY outputKindChanged)
    Q_PROPERTY(bool advanced READ advanced WRITE setAdvanced NOTIFY advancedChanged)
    Q_PROPERTY(bool quietDuringCalls READ quietDuringCalls WRITE setQuietDuringCalls NOTIFY
                   quietDuringCallsChanged)
    Q_PROPERTY(bool noticePasswordsEverywhere READ noticePasswordsEverywhere WRITE
                   setNoticePasswordsEverywhere NOTIFY noticePasswordsEverywhereChanged)
    /// Whether nothing in the windows moves by itself. The windows' own: the model knows nothing
    /// of it.
    Q_PROPERTY(bool reduceMotion READ reduceMotion WRITE setReduceMotion NOTIFY reduceMotionChanged)
    Q_PROPERTY(bool canStartWithSession READ canStartWithSession NOTIFY canStartWithSessionChanged)
    Q_PROPERTY(bool startsWithSession READ startsWithSession WRITE setStartsWithSession NOTIFY
                   startsWithSessionChanged)

  public:
    /// `model` outlives it; call `refresh` whenever it says that it has changed.
    explicit SettingsAdapter(AppModel& model, QObject* parent = nullptr);

    void refresh() {
        soundsOn_ = model_.soundsOn();
        volume_ = model_.volume();
        close_ = model_.stage().placement == Placement::close;
        outputKind_ = static_cast<int>(model_.outputKind());
        advanced_ = model_.advanced();
        quietDuringCalls_ = model_.quietDuringCalls();
        noticePasswordsEverywhere_ = model_.noticePasswordsEverywhere();
    }

    /// What starts the program with the session; it outlives this. Without it the choice is absent.
    void setAutostart(Autostart* autostart);
    /// Looks anew whether it does: that is asked of the disk, so only when a window shows it.
    void refreshAutostart();

    bool soundsOn() const { return soundsOn_; }
    void setSoundsOn(bool on) { model_.setSoundsOn(on); }
    double volume() const { return volume_; }
    void setVolume(double volume) { model_.setVolume(volume); }
    bool close() const { return close_; }
    void setClose(bool close);
    static QVariantList outputKinds();
    int outputKind() const { return outputKind_; }
    void setOutputKind(int kind);
    bool advanced() const { return advanced_; }
    void setAdvanced(bool on) { model_.setAdvanced(on); }
    bool quietDuringCalls() const { return quietDuringCalls_; }
    void setQuietDuringCalls(bool on) { model_.setQuietDuringCalls(on); }
    bool noticePasswordsEverywhere() const { return noticePasswordsEverywhere_; }
    void setNoticePasswordsEverywhere(bool on) { model_.setNoticePasswordsEverywhere(on); }
    bool reduceMotion() const { return reduceMotion_; }
    void setReduceMotion(bool on) { reduceMotion_ = on; }
    bool canStartWithSession() const { return canStartWithSession_; }
    bool startsWithSession() const { return startsWithSession_; }
    void setStartsWithSession(bool on);

  Q_SIGNALS:
    void soundsOnChanged();
    void volumeChanged();
    void closeChanged();
    void outputKindChanged();
    void advancedChanged();
    void quietDuringCallsChanged();
    void noticePasswordsEverywhereChanged();
    void reduceMotionChanged();
    void canStartWithSessionChanged();
    void startsWithSessionChanged();

  private:
    AppModel& model_;
    Autostart* autostart_ = nullptr;
    Q_OBJECT_BINDABLE_PROPERTY(SettingsAdapter, bool, soundsOn_, &SettingsAdapter::soundsOnChanged)
    Q_OBJECT_BINDABLE_PROPERTY(SettingsAdapter, double, volume_, &SettingsAdapter::volumeChanged)
    Q_OBJECT_BINDABLE_PROPERTY(SettingsAdapter, bool, close_, &SettingsAdapter::closeChanged)
    Q_OBJECT_BINDABLE_PROPERTY(SettingsAdapter, int, outputKind_,
                               &SettingsAdapter::outputKindChanged)
    Q_OBJECT_BINDABLE_PROPERTY(SettingsAdapter, bool, advanced_, &SettingsAdapter::advancedChanged)
    Q_OBJECT_BINDABLE_PROPERTY(SettingsAdapter, bool, quietDuringCalls_,
                               &SettingsAdapter::quietDuringCallsChanged)
    Q_OBJECT_BINDABLE_PROPERTY(SettingsAdapter, bool, noticePasswordsEverywhere_,
                               &SettingsAdapter::noticePasswordsEverywhereChanged)
    Q_OBJECT_BINDABLE_PROPERTY(SettingsAdapter, bool, reduceMotion_,
                               &SettingsAdapter::reduceMotionChanged)
    Q_OBJECT_BINDABLE_PROPERTY(SettingsAdapter, bool, canStartWithSession_,
                               &SettingsAdapter::canStartWithSessionChanged)
    Q_OBJECT_BINDABLE_PROPERTY(SettingsAdapter, bool, startsWithSession_,
                               &SettingsAdapter::startsWithSessionChanged)
};

} // namespace vornic
