#pragma once

#include "Vornic/app/AppModel.h"
#include "Vornic/views/adapters/RowsModel.h"

#include <QtQml/qqmlregistration.h>

#include <QObject>
#include <QString>
#include <QVariantList>

namespace vornic {

/// The Studio's keyboard: its keys as they are drawn, which are selected, and which are down. Main
/// thread.
class KeyboardAdapter : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The program makes it.")

    /// The keys, as drawnKey makes them.
    Q_PROPERTY(QObject* rows READ rows CONSTANT)
    Q_PROPERTY(double layoutWidth READ layoutWidth NOTIFY changed)
    Q_PROPERTY(double layoutHeight READ layoutHeight NOTIFY changed)
    /// Lists of { value, text }.
    Q_PROPERTY(QVariantList layouts READ layouts CONSTANT)
    Q_PROPERTY(QVariantList groups READ groups CONSTANT)
    Q_PROPERTY(QString layout READ layout WRITE setLayout NOTIFY changed)
    /// The codes of the keys that are down.
    Q_PROPERTY(QVariantList pressed READ pressed NOTIFY pressedChanged)

    /// "all", "group", "keys", "sound" or "stabilisers", and in words.
    Q_PROPERTY(QString kind READ kind NOTIFY changed)
    Q_PROPERTY(QString selection READ selection NOTIFY changed)
    /// The selected group's name in files, or nothing.
    Q_PROPERTY(QString group READ group NOTIFY changed)

  public:
    /// `model` outlives it.
    explicit KeyboardAdapter(AppModel& model, QObject* parent = nullptr);

    void refresh();
    /// Brings what changes with every key up to date, and nothing else.
    void refreshPressed();

    QObject* rows() { return &rows_; }
    double layoutWidth() const;
    double layoutHeight() const;
    static QVariantList layouts();
    static QVariantList groups();
    QString layout() const;
    void setLayout(const QString& id);
    QVariantList pressed() const { return pressed_; }
    QString kind() const;
    QString selection() const;
    QString group() const;

    /// Selects one key, or adds it to the selected ones, or takes it from them.
    Q_INVOKABLE void selectKey(int code, bool extend);
    /// Selects all keys that touch a rectangle (key units), or adds them to the selected ones.
    Q_INVOKABLE void selectWithin(double x, double y, double w, double h, bool extend);
    Q_INVOKABLE void selectGroup(const QString& group);
    Q_INVOKABLE void selectSound(const QString& id);
    Q_INVOKABLE void selectAll();
    Q_INVOKABLE void selectStabilisers();

    /// The key at a place in key units, -1 where there is none.
    Q_INVOKABLE int keyAt(double x, double y) const;
    /// The key nearest to `code` in a direction; `code` itself at the edge, the first key where
    /// `code` is not drawn.
    Q_INVOKABLE int neighbour(int code, int dx, int dy) const;
    /// Plays a key as if it were typed.
    Q_INVOKABLE void play(int code);

  Q_SIGNALS:
    void changed();
    void pressedChanged();

  private:
    void select(KeySelection::Any selection);
    void selectCodes(KeySelection::Keys keys, bool extend);

    AppModel& model_;
    RowsModel rows_;
    QVariantList pressed_;
};

} // namespace vornic
