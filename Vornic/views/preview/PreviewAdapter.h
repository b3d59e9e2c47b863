#pragma once

#include "Vornic/app/AppModel.h"

#include <QtQml/qqmlregistration.h>

#include <QColor>
#include <QObject>
#include <QProperty>
#include <QString>
#include <QVariantList>
#include <cstddef>

namespace vornic {

/// A board file that is looked at before it is taken in. Thread: main.
class PreviewAdapter : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The program makes it.")

    /// Whether there is one; without it the rest is empty.
    Q_PROPERTY(bool open READ open NOTIFY openChanged)
    Q_PROPERTY(QString name READ name NOTIFY nameChanged)
    Q_PROPERTY(QString detail READ detail NOTIFY detailChanged)
    Q_PROPERTY(QColor colour READ colour NOTIFY colourChanged)
    Q_PROPERTY(QString credits READ credits NOTIFY creditsChanged)
    /// "3 sounds, 12 recordings of its own".
    Q_PROPERTY(QString contents READ contents NOTIFY contentsChanged)
    /// The keys of its keyboard, as drawnKey makes them, and its size in key units.
    Q_PROPERTY(QVariantList keys READ keys NOTIFY keysChanged)
    Q_PROPERTY(double layoutWidth READ layoutWidth NOTIFY layoutWidthChanged)
    Q_PROPERTY(double layoutHeight READ layoutHeight NOTIFY layoutHeightChanged)

  public:
    /// `model` outlives it.
    explicit PreviewAdapter(AppModel& model, QObject* parent = nullptr);

    /// Tells the views when another board is looked at, or none any more.
    void refresh();

    bool open() const { return open_; }
    QString name() const { return name_; }
    QString detail() const { return detail_; }
    QColor colour() const { return colour_; }
    QString credits() const { return credits_; }
    QString contents() const { return contents_; }
    QVariantList keys() const { return keys_; }
    double layoutWidth() const { return layoutWidth_; }
    double layoutHeight() const { return layoutHeight_; }

    Q_INVOKABLE void play();
    /// Makes the board one of the user's; what fails is told by the model.
    Q_INVOKABLE void keep() { model_.keepPreview(); }
    Q_INVOKABLE void drop() { model_.dropPreview(); }

  Q_SIGNALS:
    void openChanged();
    void nameChanged();
    void detailChanged();
    void colourChanged();
    void creditsChanged();
    void contentsChanged();
    void keysChanged();
    void layoutWidthChanged();
    void layoutHeightChanged();

  private:
    QString contentsOf(const Board& board) const;

    AppModel& model_;
    std::size_t shown_ = 0;
    Q_OBJECT_BINDABLE_PROPERTY(PreviewAdapter, bool, open_, &PreviewAdapter::openChanged)
    Q_OBJECT_BINDABLE_PROPERTY(PreviewAdapter, QString, name_, &PreviewAdapter::nameChanged)
    Q_OBJECT_BINDABLE_PROPERTY(PreviewAdapter, QString, detail_, &PreviewAdapter::detailChanged)
    Q_OBJECT_BINDABLE_PROPERTY(PreviewAdapter, QColor, colour_, &PreviewAdapter::colourChanged)
    Q_OBJECT_BINDABLE_PROPERTY(PreviewAdapter, QString, credits_, &PreviewAdapter::creditsChanged)
    Q_OBJECT_BINDABLE_PROPERTY(PreviewAdapter, QString, contents_, &PreviewAdapter::contentsChanged)
    Q_OBJECT_BINDABLE_PROPERTY(PreviewAdapter, QVariantList, keys_, &PreviewAdapter::keysChanged)
    Q_OBJECT_BINDABLE_PROPERTY_WITH_ARGS(PreviewAdapter, double, layoutWidth_, 1.0,
                                         &PreviewAdapter::layoutWidthChanged)
    Q_OBJECT_BINDABLE_PROPERTY_WITH_ARGS(PreviewAdapter, double, layoutHeight_, 1.0,
                                         &PreviewAdapter::layoutHeightChanged)
};

} // namespace vornic
