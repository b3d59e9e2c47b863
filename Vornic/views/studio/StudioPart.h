#pragma once

#include <QObject>

namespace vornic {

/// One part of what the Studio shows. What is not seen is not computed: a part whose card is hidden
/// reads the model when it is shown again. Thread: main.
class StudioPart : public QObject {
    Q_OBJECT

    /// Whether its card is shown; bound to that by the card.
    Q_PROPERTY(bool seen READ seen WRITE setSeen NOTIFY seenChanged)

  public:
    explicit StudioPart(QObject* parent = nullptr) : QObject(parent) {}

    /// The model has changed.
    void refresh() {
        stale_ = !seen_;
        if (seen_) {
            read();
        }
    }

    bool seen() const { return seen_; }
    void setSeen(bool seen) {
        if (seen != seen_) {
            seen_ = seen;
            if (seen_ && stale_) {
                refresh();
            }
            Q_EMIT seenChanged();
        }
    }

  Q_SIGNALS:
    void seenChanged();

  protected:
    /// Reads the model, and tells what has become different.
    virtual void read() = 0;

  private:
    bool seen_ = true;
    bool stale_ = true;
};

} // namespace vornic
