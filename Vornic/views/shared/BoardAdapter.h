#pragma once

#include "Vornic/app/AppModel.h"
#include "Vornic/views/panel/BoardListModel.h"

#include <QtQml/qqmlregistration.h>

#include <QColor>
#include <QObject>
#include <QProperty>
#include <QString>
#include <QUrl>
#include <cstdint>

namespace vornic {

/// The boards and the current one as every window sees them. Decides nothing. Thread: main.
class BoardAdapter : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The program makes it.")

    Q_PROPERTY(vornic::BoardListModel* boards READ boards CONSTANT)
    Q_PROPERTY(QString name READ name NOTIFY nameChanged)
    /// Whether the current board is the user's own.
    Q_PROPERTY(bool mine READ mine NOTIFY mineChanged)
    Q_PROPERTY(bool canUndo READ canUndo NOTIFY canUndoChanged)
    Q_PROPERTY(bool canRedo READ canRedo NOTIFY canRedoChanged)
    Q_PROPERTY(bool comparing READ comparing WRITE setComparing NOTIFY comparingChanged)
    Q_PROPERTY(QColor accent READ accent NOTIFY accentChanged)
    /// Whose recordings all boards play, in lines.
    Q_PROPERTY(QString credits READ credits NOTIFY creditsChanged)

  public:
    /// `model` outlives it; call `refresh` whenever it says that it has changed.
    explicit BoardAdapter(AppModel& model, QObject* parent = nullptr);

    /// Reads what has changed since the last time.
    void refresh();

    BoardListModel* boards() { return &boards_; }
    QString name() const { return name_; }
    bool mine() const { return mine_; }
    bool canUndo() const { return canUndo_; }
    bool canRedo() const { return canRedo_; }
    bool comparing() const { return comparing_; }
    void setComparing(bool on) { model_.setComparing(on); }
    QColor accent() const { return accent_; }
    QString credits() const { return credits_; }

    Q_INVOKABLE void select(const QString& id) { model_.selectBoard(id.toStdString()); }
    Q_INVOKABLE void undo() { model_.undo(); }
    Q_INVOKABLE void redo() { model_.redo(); }
    Q_INVOKABLE void create() { model_.newBoard(); }
    Q_INVOKABLE void remove() { model_.deleteBoard(); }
    Q_INVOKABLE void rename(const QString& name);
    /// Where the board is written if nothing else is said: by its name, among the user's documents.
    Q_INVOKABLE QUrl exportSuggestion() const;
    Q_INVOKABLE void exportTo(const QUrl& file);
    Q_INVOKABLE void playPhrase();

  Q_SIGNALS:
    void nameChanged();
    void mineChanged();
    void canUndoChanged();
    void canRedoChanged();
    void comparingChanged();
    void accentChanged();
    void creditsChanged();

  private:
    QString allCredits() const;

    AppModel& model_;
    BoardListModel boards_;
    std::uint64_t seen_ = 0;
    Q_OBJECT_BINDABLE_PROPERTY(BoardAdapter, QString, name_, &BoardAdapter::nameChanged)
    Q_OBJECT_BINDABLE_PROPERTY(BoardAdapter, bool, mine_, &BoardAdapter::mineChanged)
    Q_OBJECT_BINDABLE_PROPERTY(BoardAdapter, bool, canUndo_, &BoardAdapter::canUndoChanged)
    Q_OBJECT_BINDABLE_PROPERTY(BoardAdapter, bool, canRedo_, &BoardAdapter::canRedoChanged)
    Q_OBJECT_BINDABLE_PROPERTY(BoardAdapter, bool, comparing_, &BoardAdapter::comparingChanged)
    Q_OBJECT_BINDABLE_PROPERTY(BoardAdapter, QColor, accent_, &BoardAdapter::accentChanged)
    Q_OBJECT_BINDABLE_PROPERTY(BoardAdapter, QString, credits_, &BoardAdapter::creditsChanged)
};

} // namespace vornic
