#pragma once

#include <QQmlNetworkAccessManagerFactory>

namespace vornic {

/// Gives the views managers that refuse every request: nothing that they show is to be fetched, and
/// names come from strangers. Thread: any.
class NoNetwork : public QQmlNetworkAccessManagerFactory {
  public:
    QNetworkAccessManager* create(QObject* parent) override;
};

} // namespace vornic
