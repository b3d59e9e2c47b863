#pragma once

#include "Vornic/app/AppModel.h"
#include "Vornic/views/shared/RowsModel.h"
#include "Vornic/views/studio/StudioPart.h"
#include "VornicCore/keys/KeyLegends.h"

#include <QtQml/qqmlregistration.h>

#include <QList>
#include <QProperty>
#include <QString>
#include <QVariantList>

namespace vornic {

/// The Studio's keyboard: its keys as they are drawn, and which are selected. Thread: main.
class KeyboardAdapter : public StudioPart {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The program makes it.")

    /// The keys, as drawnKey makes them.
    Q_PROPERTY(vornic::RowsModel* rows READ rows CONSTANT)
    Q_PROPERTY(double layoutWidth READ layoutWidth NOTIFY layoutWidthChanged)
    Q_PROPERTY(double layoutHeight READ layoutHeight NOTIFY layoutHeightChanged)
    /// Entries { value, text }; the ones chosen by their values.
    Q_PROPERTY(QVariantList layouts READ layouts CONSTANT)
    Q_PROPERTY(QVariantList groups READ groups CONSTANT)
    Q_PROPERTY(int layout READ layout WRITE setLayout NOTIFY layoutChanged)
    /// The selected group, or -1 where something else is selected.
    Q_PROPERTY(int group READ group NOTIFY groupChanged)
    /// The codes of the selected keys; none where all are.
    Q_PROPERTY(QList<int> selected READ selected NOTIFY selectedChanged)

    /// What is selected in words, and whether it is these.
    Q_PROPERTY(QString selection READ selection NOTIFY selectionChanged)
    Q_PROPERTY(bool allSelected READ allSelected NOTIFY allSelectedChanged)
    Q_PROPERTY(bool stabilisersSelected READ stabilisersSelected NOTIFY stabilisersSelectedChanged)

  public:
    /// `model` outlives it.
    explicit KeyboardAdapter(AppModel& model, QObject* parent = nullptr);

    /// What stands on the user's keys.
    void setLegends(const KeyLegends& legends);

    RowsModel* rows() { return &rows_; }
    double layoutWidth() const { return layoutWidth_; }
    double layoutHeight() const { return layoutHeight_; }
    static QVariantList layouts();
    static QVariantList groups();
    int layout() const { return layout_; }
    void setLayout(int layout);
    int group() const { return group_; }
    QList<int> selected() const { return selected_; }
    QString selection() const { return selection_; }
    bool allSelected() const { return allSelected_; }
    bool stabilisersSelected() const { return stabilisersSelected_; }

    /// Selects one key, or adds it to the selected ones, or takes it from them.
    Q_INVOKABLE void selectKey(int code, bool extend);
    /// Selects all keys that touch a rectangle (key units), or adds them to the selected ones.
    Q_INVOKABLE void selectWithin(double x, double y, double w, double h, bool extend);
    Q_INVOKABLE void selectGroup(int group);
    Q_INVOKABLE void selectSound(const QString& id);
    Q_INVOKABLE void selectAll();
    Q_INVOKABLE void selectStabilisers();

    /// The key nearest to `code` in a direction; `code` itself at the edge, the first key where
    /// `code` is not drawn.
    Q_INVOKABLE int neighbour(int code, int dx, int dy) const;

  Q_SIGNALS:
    void layoutWidthChanged();
    void layoutHeightChanged();
    void layoutChanged();
    void allSelectedChanged();
    void stabilisersSelectedChanged();
    void selectionChanged();
    void groupChanged();
    void selectedChanged();

  protected:
    void read() override;

  private:
    QString selectionInWords() const;
    void select(KeySelection::Any selection);
    void selectCodes(KeySelection::Keys keys, bool extend);

    AppModel& model_;
    KeyLegends legends_;
    RowsModel rows_;
    Q_OBJECT_BINDABLE_PROPERTY(KeyboardAdapter, double, layoutWidth_,
                               &KeyboardAdapter::layoutWidthChanged)
    Q_OBJECT_BINDABLE_PROPERTY(KeyboardAdapter, double, layoutHeight_,
                               &KeyboardAdapter::layoutHeightChanged)
    Q_OBJECT_BINDABLE_PROPERTY(KeyboardAdapter, int, layout_, &KeyboardAdapter::layoutChanged)
    Q_OBJECT_BINDABLE_PROPERTY(KeyboardAdapter, bool, allSelected_,
                               &KeyboardAdapter::allSelectedChanged)
    Q_OBJECT_BINDABLE_PROPERTY(KeyboardAdapter, bool, stabilisersSelected_,
                               &KeyboardAdapter::stabilisersSelectedChanged)
    Q_OBJECT_BINDABLE_PROPERTY(KeyboardAdapter, QString, selection_,
                               &KeyboardAdapter::selectionChanged)
    Q_OBJECT_BINDABLE_PROPERTY(KeyboardAdapter, QList<int>, selected_,
                               &KeyboardAdapter::selectedChanged)
    Q_OBJECT_BINDABLE_PROPERTY_WITH_ARGS(KeyboardAdapter, int, group_, -1,
                                         &KeyboardAdapter::groupChanged)
};

} // namespace vornic
