#include "web_address.h"

#include <QUrl>

namespace tessaly::dictionary {

bool isWebAddress(const std::string& text) {
    const QUrl url(QString::fromStdString(text), QUrl::StrictMode);
    return url.isValid() && !url.host().isEmpty() &&
           (url.scheme() == QLatin1String("http") || url.scheme() == QLatin1String("https"));
}

} // namespace tessaly::dictionary
