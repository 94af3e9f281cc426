#pragma once

#include <QQmlNetworkAccessManagerFactory>

namespace tessaly::controls {

/// What a QML engine fetches over the network: pictures, and nothing else. A request ends with an error when
/// no network is in reach, when the response is larger than 2 MB or takes longer than 10 s, and when it
/// doesn't begin as a picture made of pixels, at most 4,096 a side, 8 million in all and 32 bits each;
/// nothing of such a response is decoded. Does GET over http and https only, and stores nothing. Any thread.
class PictureAccess : public QQmlNetworkAccessManagerFactory {
public:
    QNetworkAccessManager* create(QObject* parent) override;
};

} // namespace tessaly::controls
