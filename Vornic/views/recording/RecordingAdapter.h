#pragma once

#include "Vornic/app/AppModel.h"
#include "Vornic/views/recording/StrokeListModel.h"

#include <QtQml/qqmlregistration.h>

#include <QObject>
#include <QProperty>
#include <QString>
#include <QUrl>
#include <cstdint>
#include <string>

namespace vornic {

/// Recording the keyboard, importing a recording, and choosing from its strokes, as the views see
/// it. Thread: main.
class RecordingAdapter : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The program makes it.")

    Q_PROPERTY(Phase phase READ phase NOTIFY phaseChanged)
    /// What went wrong last, and what to do about a microphone that did not start; may be empty.
    Q_PROPERTY(QString failure READ failure NOTIFY failureChanged)
    Q_PROPERTY(QString advice READ advice NOTIFY adviceChanged)

    /// The loudness of the microphone, 0 (-60 dB) to 1 (full scale).
    Q_PROPERTY(double level READ level NOTIFY levelChanged)
    Q_PROPERTY(bool clipping READ clipping NOTIFY clippingChanged)
    Q_PROPERTY(int secondsLeft READ secondsLeft NOTIFY secondsLeftChanged)
    /// How many good strokes the recording has.
    Q_PROPERTY(int good READ good NOTIFY goodChanged)
    /// How the last stroke turned out; empty before the first.
    Q_PROPERTY(QString verdict READ verdict NOTIFY verdictChanged)
    Q_PROPERTY(bool lastIsGood READ lastIsGood NOTIFY lastIsGoodChanged)

    /// The file that is read, and how far, 0 to 1.
    Q_PROPERTY(QString fileName READ fileName NOTIFY fileNameChanged)
    Q_PROPERTY(double progress READ progress NOTIFY progressChanged)

    Q_PROPERTY(vornic::StrokeListModel* strokes READ strokes CONSTANT)
    /// Of the sound to be made.
    Q_PROPERTY(QString name READ name WRITE setName NOTIFY nameChanged)
    /// How many strokes the recording has, how many of them are offered, and ticked.
    Q_PROPERTY(int found READ found NOTIFY foundChanged)
    Q_PROPERTY(int offered READ offered NOTIFY offeredChanged)
    Q_PROPERTY(int ticked READ ticked NOTIFY tickedChanged)
    /// How many of the offered strokes have a release, and whether these are kept too.
    Q_PROPERTY(int releases READ releases NOTIFY releasesChanged)
    Q_PROPERTY(
        bool keepsReleases READ keepsReleases WRITE setKeepsReleases NOTIFY keepsReleasesChanged)
    /// What is worth knowing about the recording: how it ended, or that only a part of the file
    /// was read. Mostly empty.
    Q_PROPERTY(QString notice READ notice NOTIFY noticeChanged)

    /// The name of the sound that was just made, while it is offered for all keys; else empty.
    Q_PROPERTY(QString justMade READ justMade NOTIFY justMadeChanged)

  public:
    /// Reading is of a file, choosing among its strokes or those of a recording.
    enum class Phase : std::uint8_t { Idle, Starting, Recording, Reading, Choosing };
    Q_ENUM(Phase)

    /// `model`, which has been started, outlives it; call `refresh` whenever it says that it has
    /// changed.
    explicit RecordingAdapter(AppModel& model, QObject* parent = nullptr);

    /// Reads what has changed since the last time.
    void refresh();

    Phase phase() const { return phase_; }
    QString failure() const { return failure_; }
    QString advice() const { return advice_; }
    double level() const { return level_; }
    bool clipping() const { return clipping_; }
    int secondsLeft() const { return secondsLeft_; }
    int good() const { return good_; }
    QString verdict() const { return verdict_; }
    bool lastIsGood() const { return lastIsGood_; }
    QString fileName() const { return fileName_; }
    double progress() const { return progress_; }
    StrokeListModel* strokes() { return &strokes_; }
    QString name() const { return name_; }
    void setName(const QString& name);
    int found() const { return found_; }
    int offered() const { return offered_; }
    int ticked() const { return ticked_; }
    int releases() const { return releases_; }
    bool keepsReleases() const { return keepsReleases_; }
    void setKeepsReleases(bool on) { model_.recorder().setKeepsReleases(on); }
    QString notice() const { return notice_; }
    QString justMade() const { return justMade_; }

    Q_INVOKABLE void startRecording();
    /// With `keep`, goes on to the choice of strokes.
    Q_INVOKABLE void stopRecording(bool keep);
    Q_INVOKABLE void dismissFailure() { model_.dismissError(); }
    /// Nothing while another recording is worked on.
    Q_INVOKABLE void importRecording(const QUrl& file);
    Q_INVOKABLE void cancelReading() { model_.recorder().cancelReading(); }

    Q_INVOKABLE void tick(int row, bool on);
    /// Moves a cut to a share of the window that is drawn.
    Q_INVOKABLE void moveBegin(int row, double share);
    Q_INVOKABLE void moveEnd(int row, double share);
    /// The same by so many milliseconds.
    Q_INVOKABLE void nudgeBegin(int row, double millis);
    Q_INVOKABLE void nudgeEnd(int row, double millis);
    Q_INVOKABLE void resetCut(int row);
    /// Plays a stroke as it would be kept, with its release where that is kept.
    Q_INVOKABLE void play(int row);
    Q_INVOKABLE void keep();
    Q_INVOKABLE void cancel();

    Q_INVOKABLE void useForAllKeys();
    Q_INVOKABLE void dismissOffer();

  Q_SIGNALS:
    void phaseChanged();
    void failureChanged();
    void adviceChanged();
    void levelChanged();
    void clippingChanged();
    void secondsLeftChanged();
    void goodChanged();
    void verdictChanged();
    void lastIsGoodChanged();
    void fileNameChanged();
    void progressChanged();
    void nameChanged();
    void foundChanged();
    void offeredChanged();
    void tickedChanged();
    void releasesChanged();
    void keepsReleasesChanged();
    void noticeChanged();
    void justMadeChanged();

  private:
    Phase currentPhase() const;
    int foundReleases() const;
    bool isRow(int row) const;
    std::int64_t placeOf(int row, double share) const;

    AppModel& model_;
    StrokeListModel strokes_;
    std::string made_; // id of the sound that is offered for all keys
    Q_OBJECT_BINDABLE_PROPERTY(RecordingAdapter, QString, failure_,
                               &RecordingAdapter::failureChanged)
    Q_OBJECT_BINDABLE_PROPERTY(RecordingAdapter, QString, advice_, &RecordingAdapter::adviceChanged)
    Q_OBJECT_BINDABLE_PROPERTY(RecordingAdapter, double, level_, &RecordingAdapter::levelChanged)
    Q_OBJECT_BINDABLE_PROPERTY(RecordingAdapter, bool, clipping_,
                               &RecordingAdapter::clippingChanged)
    Q_OBJECT_BINDABLE_PROPERTY(RecordingAdapter, int, secondsLeft_,
                               &RecordingAdapter::secondsLeftChanged)
    Q_OBJECT_BINDABLE_PROPERTY(RecordingAdapter, int, good_, &RecordingAdapter::goodChanged)
    Q_OBJECT_BINDABLE_PROPERTY(RecordingAdapter, QString, verdict_,
                               &RecordingAdapter::verdictChanged)
    Q_OBJECT_BINDABLE_PROPERTY(RecordingAdapter, bool, lastIsGood_,
                               &RecordingAdapter::lastIsGoodChanged)
    Q_OBJECT_BINDABLE_PROPERTY(RecordingAdapter, QString, fileName_,
                               &RecordingAdapter::fileNameChanged)
    Q_OBJECT_BINDABLE_PROPERTY(RecordingAdapter, double, progress_,
                               &RecordingAdapter::progressChanged)
    Q_OBJECT_BINDABLE_PROPERTY(RecordingAdapter, QString, name_, &RecordingAdapter::nameChanged)
    Q_OBJECT_BINDABLE_PROPERTY(RecordingAdapter, int, found_, &RecordingAdapter::foundChanged)
    Q_OBJECT_BINDABLE_PROPERTY(RecordingAdapter, int, offered_, &RecordingAdapter::offeredChanged)
    Q_OBJECT_BINDABLE_PROPERTY(RecordingAdapter, int, ticked_, &RecordingAdapter::tickedChanged)
    Q_OBJECT_BINDABLE_PROPERTY(RecordingAdapter, int, releases_, &RecordingAdapter::releasesChanged)
    Q_OBJECT_BINDABLE_PROPERTY(RecordingAdapter, bool, keepsReleases_,
                               &RecordingAdapter::keepsReleasesChanged)
    Q_OBJECT_BINDABLE_PROPERTY(RecordingAdapter, QString, notice_, &RecordingAdapter::noticeChanged)
    Q_OBJECT_BINDABLE_PROPERTY(RecordingAdapter, QString, justMade_,
                               &RecordingAdapter::justMadeChanged)
    Q_OBJECT_BINDABLE_PROPERTY_WITH_ARGS(RecordingAdapter, Phase, phase_, Phase::Idle,
                                         &RecordingAdapter::phaseChanged)
};

} // namespace vornic
