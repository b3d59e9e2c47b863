#pragma once

#include "Vornic/app/AppModel.h"
#include "Vornic/views/keyboard/LiveKeyboard.h"

#include <QtQml/qqmlregistration.h>

#include <QColor>
#include <QObject>
#include <QProperty>
#include <QString>
#include <QVariantList>
#include <cstddef>

namespace vornic {

/// A board file or sound pack that is looked at before it is taken in. Thread: main.
class PreviewAdapter : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The program makes it.")

    /// Whether there is one, or a list to choose one from.
    Q_PROPERTY(bool open READ open NOTIFY openChanged)
    /// Whether there is one; without it the rest is empty.
    Q_PROPERTY(bool shown READ shown NOTIFY shownChanged)
    /// "Sound pack for Mechvibes"; empty for a board file, as the next three.
    Q_PROPERTY(QString origin READ origin NOTIFY originChanged)
    Q_PROPERTY(QString author READ author NOTIFY authorChanged)
    Q_PROPERTY(QString licence READ licence NOTIFY licenceChanged)
    /// What became of the pack: { head, text }.
    Q_PROPERTY(QVariantList report READ report NOTIFY reportChanged)
    Q_PROPERTY(QString name READ name NOTIFY nameChanged)
    Q_PROPERTY(QString detail READ detail NOTIFY detailChanged)
    Q_PROPERTY(QColor colour READ colour NOTIFY colourChanged)
    Q_PROPERTY(QString credits READ credits NOTIFY creditsChanged)
    /// "3 sounds, 12 recordings of its own".
    Q_PROPERTY(QString contents READ contents NOTIFY contentsChanged)
    Q_PROPERTY(vornic::LiveKeyboard* keyboard READ keyboard CONSTANT)

  public:
    /// `model` outlives it.
    explicit PreviewAdapter(AppModel& model, QObject* parent = nullptr);

    /// Tells the views when another board is looked at, or none any more.
    void refresh();

    bool open() const { return open_; }
    bool shown() const { return shown_; }
    QString origin() const { return origin_; }
    QString author() const { return author_; }
    QString licence() const { return licence_; }
    QVariantList report() const { return report_; }
    QString name() const { return name_; }
    QString detail() const { return detail_; }
    QColor colour() const { return colour_; }
    QString credits() const { return credits_; }
    QString contents() const { return contents_; }
    LiveKeyboard* keyboard() { return &keyboard_; }

    Q_INVOKABLE void play();
    /// Makes the board one of the user's; what fails is told by the model.
    Q_INVOKABLE void keep() { model_.files().keep(); }
    Q_INVOKABLE void drop() { model_.files().drop(); }

  Q_SIGNALS:
    void openChanged();
    void shownChanged();
    void originChanged();
    void authorChanged();
    void licenceChanged();
    void reportChanged();
    void nameChanged();
    void detailChanged();
    void colourChanged();
    void creditsChanged();
    void contentsChanged();

  private:
    static QString contentsOf(const BoardFiles::Preview& preview);
    void showReport(const PackReport* report);

    AppModel& model_;
    LiveKeyboard keyboard_;
    std::size_t seen_ = 0;
    Q_OBJECT_BINDABLE_PROPERTY(PreviewAdapter, bool, open_, &PreviewAdapter::openChanged)
    Q_OBJECT_BINDABLE_PROPERTY(PreviewAdapter, bool, shown_, &PreviewAdapter::shownChanged)
    Q_OBJECT_BINDABLE_PROPERTY(PreviewAdapter, QString, origin_, &PreviewAdapter::originChanged)
    Q_OBJECT_BINDABLE_PROPERTY(PreviewAdapter, QString, author_, &PreviewAdapter::authorChanged)
    Q_OBJECT_BINDABLE_PROPERTY(PreviewAdapter, QString, licence_, &PreviewAdapter::licenceChanged)
    Q_OBJECT_BINDABLE_PROPERTY(PreviewAdapter, QVariantList, report_,
                               &PreviewAdapter::reportChanged)
    Q_OBJECT_BINDABLE_PROPERTY(PreviewAdapter, QString, name_, &PreviewAdapter::nameChanged)
    Q_OBJECT_BINDABLE_PROPERTY(PreviewAdapter, QString, detail_, &PreviewAdapter::detailChanged)
    Q_OBJECT_BINDABLE_PROPERTY(PreviewAdapter, QColor, colour_, &PreviewAdapter::colourChanged)
    Q_OBJECT_BINDABLE_PROPERTY(PreviewAdapter, QString, credits_, &PreviewAdapter::creditsChanged)
    Q_OBJECT_BINDABLE_PROPERTY(PreviewAdapter, QString, contents_, &PreviewAdapter::contentsChanged)
};

} // namespace vornic
