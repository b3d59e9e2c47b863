#pragma once

#include "Vornic/app/AppModel.h"
#include "Vornic/ports/Autostart.h"
#include "Vornic/views/adapters/BoardListModel.h"

#include <QtQml/qqmlregistration.h>

#include <QColor>
#include <QObject>
#include <QString>
#include <QUrl>
#include <QVariantList>
#include <functional>

namespace vornic {

/// The model as the views see it: texts, lists and choices ready to show. Decides nothing. Main
/// thread.
class ModelAdapter : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The program makes it.")

    Q_PROPERTY(bool soundsOn READ soundsOn WRITE setSoundsOn NOTIFY changed)
    Q_PROPERTY(bool typing READ typing NOTIFY typingChanged)
    /// Whether any key went down since the start.
    Q_PROPERTY(bool keyHeard READ keyHeard NOTIFY typingChanged)
    Q_PROPERTY(QString subtitle READ subtitle NOTIFY changed)
    /// The reason to be silent by its name, or nothing.
    Q_PROPERTY(QString silence READ silence NOTIFY changed)
    Q_PROPERTY(QString silenceSymbol READ silenceSymbol NOTIFY changed)
    /// "listening", "needsPermission" or "needsRelaunch".
    Q_PROPERTY(QString tapState READ tapState NOTIFY changed)
    Q_PROPERTY(QString permissionHint READ permissionHint NOTIFY changed)
    Q_PROPERTY(bool canAskForPermission READ canAskForPermission NOTIFY changed)
    Q_PROPERTY(QString lastError READ lastError NOTIFY changed)
    /// Something worth knowing that is no error; until it is dismissed.
    Q_PROPERTY(QString note READ note NOTIFY changed)

    Q_PROPERTY(QObject* boards READ boards CONSTANT)
    Q_PROPERTY(QString boardName READ boardName NOTIFY changed)
    /// Whether the current board is the user's own.
    Q_PROPERTY(bool mine READ mine NOTIFY changed)
    Q_PROPERTY(bool canUndo READ canUndo NOTIFY changed)
    Q_PROPERTY(bool canRedo READ canRedo NOTIFY changed)
    Q_PROPERTY(bool comparing READ comparing WRITE setComparing NOTIFY changed)
    Q_PROPERTY(QString studioTab READ studioTab WRITE setStudioTab NOTIFY changed)
    Q_PROPERTY(QColor accent READ accent NOTIFY changed)
    Q_PROPERTY(bool close READ close WRITE setClose NOTIFY changed)
    Q_PROPERTY(QVariantList feels READ feels CONSTANT)
    /// The feel chosen, or nothing for the board's own.
    Q_PROPERTY(QString feel READ feel WRITE setFeel NOTIFY changed)
    Q_PROPERTY(double deeper READ deeper WRITE setDeeper NOTIFY changed)
    Q_PROPERTY(double crisper READ crisper WRITE setCrisper NOTIFY changed)

    Q_PROPERTY(double volume READ volume WRITE setVolume NOTIFY changed)
    Q_PROPERTY(QString outputKind READ outputKind WRITE setOutputKind NOTIFY changed)
    Q_PROPERTY(QString outputName READ outputName NOTIFY changed)
    Q_PROPERTY(bool headphones READ headphones NOTIFY changed)
    Q_PROPERTY(bool onBluetooth READ onBluetooth NOTIFY changed)
    Q_PROPERTY(bool advanced READ advanced WRITE setAdvanced NOTIFY changed)
    Q_PROPERTY(bool quietDuringCalls READ quietDuringCalls WRITE setQuietDuringCalls NOTIFY changed)
    Q_PROPERTY(QString credits READ credits NOTIFY changed)
    Q_PROPERTY(bool noticePasswordsEverywhere READ noticePasswordsEverywhere WRITE
                   setNoticePasswordsEverywhere NOTIFY changed)
    /// A list of { name, value }.
    Q_PROPERTY(QVariantList diagnostics READ diagnostics NOTIFY changed)
    /// How the latencies of the last hundred keys spread: keys in each bin, the bins' width in
    /// milliseconds, and the same in a line.
    Q_PROPERTY(QVariantList latencyBins READ latencyBins NOTIFY changed)
    Q_PROPERTY(double latencyBinMillis READ latencyBinMillis CONSTANT)
    Q_PROPERTY(QString latencySummary READ latencySummary NOTIFY changed)
    /// Keys measured, and how long the last one took: "4.1 ms".
    Q_PROPERTY(int latencyKeys READ latencyKeys NOTIFY changed)
    Q_PROPERTY(QString lastLatency READ lastLatency NOTIFY changed)
    Q_PROPERTY(bool canStartWithSession READ canStartWithSession CONSTANT)
    Q_PROPERTY(
        bool startsWithSession READ startsWithSession WRITE setStartsWithSession NOTIFY changed)

  public:
    /// `model` outlives it; call `refresh` whenever it says that it has changed.
    explicit ModelAdapter(AppModel& model, QObject* parent = nullptr);

    /// Tells the views to read everything anew.
    void refresh();
    /// Tells the views whether somebody types, and nothing else: it comes with every key.
    void refreshTyping();

    /// What to do about keys that cannot be heard, in a sentence.
    void setPermissionHint(const QString& hint);
    /// What "Turn on Input Monitoring…" and "Relaunch" do; without the first the button is absent.
    std::function<void()> onAskForPermission;
    std::function<void()> onRelaunch = [] {};

    /// What starts the program with the session; it outlives this. Without it the choice is absent.
    void setAutostart(Autostart* autostart) { autostart_ = autostart; }

    bool soundsOn() const { return model_.soundsOn(); }
    void setSoundsOn(bool on) { model_.setSoundsOn(on); }
    bool typing() const { return typing_; }
    bool keyHeard() const { return keyHeard_; }
    QString subtitle() const;
    QString silence() const;
    QString silenceSymbol() const;
    QString tapState() const;
    QString permissionHint() const { return permissionHint_; }
    bool canAskForPermission() const { return static_cast<bool>(onAskForPermission); }
    QString lastError() const;
    QString note() const { return note_; }
    void setNote(const QString& note);

    QObject* boards() { return &boards_; }
    QString boardName() const;
    bool mine() const { return model_.board() && !model_.board()->builtIn; }
    bool canUndo() const { return model_.canUndo(); }
    bool canRedo() const { return model_.canRedo(); }
    bool comparing() const { return model_.comparing(); }
    void setComparing(bool on) { model_.setComparing(on); }
    QString studioTab() const;
    void setStudioTab(const QString& tab);
    QColor accent() const;
    bool close() const;
    void setClose(bool close);
    static QVariantList feels();
    QString feel() const;
    void setFeel(const QString& feel);
    double deeper() const { return model_.tweaks().deeper; }
    void setDeeper(double value);
    double crisper() const { return model_.tweaks().crisper; }
    void setCrisper(double value);

    double volume() const { return model_.volume(); }
    void setVolume(double volume) { model_.setVolume(volume); }
    QString outputKind() const;
    void setOutputKind(const QString& kind);
    QString outputName() const;
    bool headphones() const { return model_.headphones(); }
    bool onBluetooth() const { return model_.onBluetooth(); }
    bool advanced() const { return model_.advanced(); }
    void setAdvanced(bool on) { model_.setAdvanced(on); }
    bool quietDuringCalls() const { return model_.quietDuringCalls(); }
    bool noticePasswordsEverywhere() const { return model_.noticePasswordsEverywhere(); }
    void setQuietDuringCalls(bool on) { model_.setQuietDuringCalls(on); }
    void setNoticePasswordsEverywhere(bool on) { model_.setNoticePasswordsEverywhere(on); }
    QString credits() const;
    QVariantList diagnostics() const;
    QVariantList latencyBins() const;
    static double latencyBinMillis();
    QString latencySummary() const;
    int latencyKeys() const { return static_cast<int>(model_.diagnostics().keys); }
    QString lastLatency() const;
    bool canStartWithSession() const { return autostart_ != nullptr; }
    bool startsWithSession() const { return autostart_ != nullptr && autostart_->enabled(); }
    void setStartsWithSession(bool on);

    Q_INVOKABLE void selectBoard(const QString& id) { model_.selectBoard(id.toStdString()); }
    Q_INVOKABLE void undo() { model_.undo(); }
    Q_INVOKABLE void redo() { model_.redo(); }
    Q_INVOKABLE void newBoard() { model_.newBoard(); }
    Q_INVOKABLE void deleteBoard() { model_.deleteBoard(); }
    Q_INVOKABLE void renameBoard(const QString& name);
    Q_INVOKABLE void exportBoard(const QUrl& file);
    Q_INVOKABLE void importBoard(const QUrl& file);
    Q_INVOKABLE void playPhrase();
    Q_INVOKABLE void dismissNote() { setNote({}); }
    Q_INVOKABLE void dismissError() { model_.dismissError(); }
    Q_INVOKABLE void resetLatency();
    Q_INVOKABLE void askForPermission();
    Q_INVOKABLE void relaunch() { onRelaunch(); }

  Q_SIGNALS:
    void changed();
    void typingChanged();

  private:
    AppModel& model_;
    bool typing_ = false;
    bool keyHeard_ = false;
    BoardListModel boards_;
    QString permissionHint_;
    QString note_;
    Autostart* autostart_ = nullptr;
};

} // namespace vornic
