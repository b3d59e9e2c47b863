#pragma once

#include "Vornic/app/AppModel.h"

#include <QtQml/qqmlregistration.h>

#include <QObject>
#include <QProperty>
#include <QVariantList>

namespace vornic {

/// The light adjustments of the current board. Thread: main.
class TweaksAdapter : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The program makes it.")

    /// Entries { value, text }.
    Q_PROPERTY(QVariantList feels READ feels CONSTANT)
    /// The feel chosen by its value, or -1 for the board's own.
    Q_PROPERTY(int feel READ feel WRITE setFeel NOTIFY feelChanged)
    /// The feel of the board itself by its value, or -1 where it is none of them.
    Q_PROPERTY(int ownFeel READ ownFeel NOTIFY ownFeelChanged)
    /// From -1 to 1.
    Q_PROPERTY(double deeper READ deeper WRITE setDeeper NOTIFY deeperChanged)
    Q_PROPERTY(double crisper READ crisper WRITE setCrisper NOTIFY crisperChanged)

  public:
    /// `model` outlives it; call `refresh` whenever it says that it has changed.
    explicit TweaksAdapter(AppModel& model, QObject* parent = nullptr);

    void refresh();

    static QVariantList feels();
    int feel() const { return feel_; }
    void setFeel(int feel);
    int ownFeel() const { return ownFeel_; }
    double deeper() const { return deeper_; }
    void setDeeper(double value);
    double crisper() const { return crisper_; }
    void setCrisper(double value);

  Q_SIGNALS:
    void feelChanged();
    void ownFeelChanged();
    void deeperChanged();
    void crisperChanged();

  private:
    AppModel& model_;
    Q_OBJECT_BINDABLE_PROPERTY_WITH_ARGS(TweaksAdapter, int, feel_, -1, &TweaksAdapter::feelChanged)
    Q_OBJECT_BINDABLE_PROPERTY_WITH_ARGS(TweaksAdapter, int, ownFeel_, -1,
                                         &TweaksAdapter::ownFeelChanged)
    Q_OBJECT_BINDABLE_PROPERTY(TweaksAdapter, double, deeper_, &TweaksAdapter::deeperChanged)
    Q_OBJECT_BINDABLE_PROPERTY(TweaksAdapter, double, crisper_, &TweaksAdapter::crisperChanged)
};

} // namespace vornic
