#include "picture_access.h"

#include <QBuffer>
#include <QImageReader>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <algorithm>
#include <cstring>
#include <thread>
#include <utilities/http_client.h>

namespace tessaly::controls {

namespace {

constexpr utilities::HttpLimits limits{.totalSeconds = 10, .responseBytes = 2 << 20};
constexpr int longestSide = 4096;
constexpr int mostPixels = 8 << 20; // of which the screen has two copies for a moment
constexpr int mostBitsPerPixel = 32;

/// Looks at the head alone: a small file may announce a picture that no memory holds.
bool beginsAsPicture(QByteArray& bytes) {
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::ReadOnly);
    const QByteArray format = QImageReader::imageFormat(&buffer);
    if (format.startsWith("svg")) // takes as long to draw as its author likes
        return false;
    const QImageReader reader(&buffer, format);
    const QSize size = reader.size();
    return !size.isEmpty() && size.width() <= longestSide && size.height() <= longestSide &&
           size.width() * size.height() <= mostPixels &&
           QImage::toPixelFormat(reader.imageFormat()).bitsPerPixel() <= mostBitsPerPixel;
}

/// The response, all at once. Its request runs on a thread that ends before this object does.
class PictureReply : public QNetworkReply {
public:
    PictureReply(const QNetworkRequest& request, QObject* parent)
        : QNetworkReply(parent) {
        setRequest(request);
        setUrl(request.url());
        setOperation(QNetworkAccessManager::GetOperation);
        open(QIODevice::ReadOnly);
        m_fetcher =
            std::jthread([this, url = request.url().toEncoded().toStdString()](const std::stop_token& stop) {
                const auto response = utilities::HttpClient(limits).get(url, {}, stop);
                const bool isThere = response.curlCode == 0 && response.status == 200;
                const QByteArray body = isThere ? QByteArray::fromStdString(response.body) : QByteArray();
                QMetaObject::invokeMethod(
                    this, [this, body] { finish(body); }, Qt::QueuedConnection);
            });
    }

    void abort() override { m_fetcher.request_stop(); }
    void close() override {
        abort();
        QNetworkReply::close();
    }
    [[nodiscard]] qint64 bytesAvailable() const override {
        return m_body.size() - m_position + QNetworkReply::bytesAvailable();
    }

protected:
    qint64 readData(char* data, qint64 most) override {
        const qsizetype count = std::min(qsizetype(most), m_body.size() - m_position);
        std::memcpy(data, m_body.constData() + m_position, std::size_t(count));
        m_position += count;
        return count == 0 ? -1 : count;
    }

private:
    void finish(const QByteArray& body) {
        m_body = body;
        if (!beginsAsPicture(m_body)) {
            m_body.clear();
            setError(ContentNotFoundError, QStringLiteral("no picture of a bearable size"));
            Q_EMIT errorOccurred(error());
        }
        setFinished(true);
        Q_EMIT finished();
    }

    QByteArray m_body;
    qsizetype m_position = 0;
    std::jthread m_fetcher; // the last: it uses the rest
};

class PictureManager : public QNetworkAccessManager {
public:
    using QNetworkAccessManager::QNetworkAccessManager;

protected:
    QNetworkReply* createRequest(Operation, const QNetworkRequest& request, QIODevice*) override {
        return new PictureReply(request, this);
    }
};

} // namespace

QNetworkAccessManager* PictureAccess::create(QObject* parent) {
    return new PictureManager(parent);
}

} // namespace tessaly::controls
