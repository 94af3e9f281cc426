#include "morphology_address.h"

#include <QRegularExpression>
#include <QUrl>

namespace tessaly::services {

std::optional<std::string> languageAt(const QString& url) {
    static const QRegularExpression form(
        QStringLiteral("\\A([a-z]{2,3}(?:_(?:[A-Z]{2}|[0-9]{3}))?)\\.zip\\z"));
    const QUrl address(url, QUrl::StrictMode);
    const bool isWeb =
        address.scheme() == QLatin1String("http") || address.scheme() == QLatin1String("https");
    const auto match = form.match(address.fileName(QUrl::FullyEncoded));
    if (!address.isValid() || !isWeb || address.host().isEmpty() || !match.hasMatch())
        return std::nullopt;
    return match.captured(1).toStdString();
}

} // namespace tessaly::services
