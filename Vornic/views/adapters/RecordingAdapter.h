#pragma once

#include "Vornic/app/AppModel.h"
#include "Vornic/views/adapters/StrokeListModel.h"

#include <QtQml/qqmlregistration.h>

#include <QObject>
#include <QString>
#include <QUrl>
#include <string>

namespace vornic {

/// Recording the keyboard, importing a recording, and choosing from its strokes, as the views see
/// it. Main thread.
class RecordingAdapter : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The program makes it.")

    /// "idle", "starting", "recording", "reading" (a file) or "choosing".
    Q_PROPERTY(QString phase READ phase NOTIFY changed)
    /// What went wrong last, and what to do about a microphone that did not start; may be empty.
    Q_PROPERTY(QString failure READ failure NOTIFY changed)
    Q_PROPERTY(QString advice READ advice NOTIFY changed)

    /// The loudness of the microphone, 0 (-60 dB) to 1 (full scale).
    Q_PROPERTY(double level READ level NOTIFY changed)
    Q_PROPERTY(bool clipping READ clipping NOTIFY changed)
    Q_PROPERTY(int secondsLeft READ secondsLeft NOTIFY changed)
    /// How many good strokes the recording has.
    Q_PROPERTY(int good READ good NOTIFY changed)
    /// How the last stroke turned out; empty before the first.
    Q_PROPERTY(QString verdict READ verdict NOTIFY changed)
    Q_PROPERTY(bool lastIsGood READ lastIsGood NOTIFY changed)

    /// The file that is read, and how far, 0 to 1.
    Q_PROPERTY(QString fileName READ fileName NOTIFY changed)
    Q_PROPERTY(double progress READ progress NOTIFY changed)

    Q_PROPERTY(QObject* strokes READ strokes CONSTANT)
    /// Of the sound to be made.
    Q_PROPERTY(QString name READ name WRITE setName NOTIFY changed)
    /// How many strokes the recording has, how many of them are offered, and ticked.
    Q_PROPERTY(int found READ found NOTIFY changed)
    Q_PROPERTY(int offered READ offered NOTIFY changed)
    Q_PROPERTY(int ticked READ ticked NOTIFY changed)
    /// How many of the offered strokes have a release, and whether these are kept too.
    Q_PROPERTY(int releases READ releases NOTIFY changed)
    Q_PROPERTY(bool keepsReleases READ keepsReleases WRITE setKeepsReleases NOTIFY changed)
    /// What is worth knowing about the recording: how it ended, or that only a part of the file
    /// was read. Mostly empty.
    Q_PROPERTY(QString notice READ notice NOTIFY changed)

    /// The name of the sound that was just made, while it is offered for all keys; else empty.
    Q_PROPERTY(QString justMade READ justMade NOTIFY changed)

  public:
    /// `model`, which has been started, outlives it; call `refresh` whenever it says that it has
    /// changed.
    explicit RecordingAdapter(AppModel& model, QObject* parent = nullptr);

    /// Tells the views to read everything anew.
    void refresh();

    QString phase() const;
    QString failure() const;
    QString advice() const;
    double level() const;
    bool clipping() const;
    int secondsLeft() const;
    int good() const;
    QString verdict() const;
    bool lastIsGood() const;
    QString fileName() const { return fileName_; }
    double progress() const;
    QObject* strokes() { return &strokes_; }
    QString name() const;
    void setName(const QString& name);
    int found() const;
    int offered() const { return strokes_.count(); }
    int ticked() const;
    int releases() const;
    bool keepsReleases() const { return model_.recorder().keepsReleases(); }
    void setKeepsReleases(bool on) { model_.recorder().setKeepsReleases(on); }
    QString notice() const;
    QString justMade() const;

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
    void changed();

  private:
    bool isRow(int row) const;
    std::int64_t placeOf(int row, double share) const;

    AppModel& model_;
    StrokeListModel strokes_;
    QString fileName_;
    std::string made_; // id of the sound that is offered for all keys
};

} // namespace vornic
