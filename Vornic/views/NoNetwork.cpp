#include "Vornic/views/NoNetwork.h"

#include <QNetworkAccessManager>
#include <QNetworkRequest>
#include <QUrl>

namespace vornic {

namespace {

class RefusingManager : public QNetworkAccessManager {
  public:
    using QNetworkAccessManager::QNetworkAccessManager;

  protected:
    QNetworkReply* createRequest(Operation operation, const QNetworkRequest& /*request*/,
                                 QIODevice* /*data*/) override {
        // Nobody speaks this scheme: the toolkit itself makes the answer that failed.
        return QNetworkAccessManager::createRequest(
            operation, QNetworkRequest(QUrl(QStringLiteral("refused:"))), nullptr);
    }
};

} // namespace

QNetworkAccessManager* NoNetwork::create(QObject* parent) {
    return new RefusingManager(parent);
}

} // namespace vornic
