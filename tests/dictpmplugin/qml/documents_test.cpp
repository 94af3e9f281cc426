#include "simulator/fixture/test_device.h"
#include "tests/dictpmplugin/dictionary_files.h"
#include "tests/platform/support/quick_device.h"

#include <QAccessible>
#include <QDir>
#include <QHttpServer>
#include <QHttpServerResponder>
#include <QMetaEnum>
#include <QPainter>
#include <QTcpSocket>
#include <QtQuickTest/quicktest.h>
#include <optional>

namespace tessaly::tests {

namespace {

constexpr int reduction = 4;       ///< of stored pictures, each way
constexpr int cell = 8;            ///< what is compared, in pixels of a stored picture
constexpr int mostDifference = 40; ///< of a cell's grey values, on average

/// Each as "role|name|description", or "role|name|rising" if it has a value that isn't at its maximum.
/// Without what is hidden.
void collectAccessible(QAccessibleInterface& parent, QStringList& found) {
    for (int i = 0; i < parent.childCount(); ++i) {
        QAccessibleInterface* const child = parent.child(i);
        if (child == nullptr || child->state().invisible)
            continue;
        const auto role = QMetaEnum::fromType<QAccessible::Role>().valueToKey(child->role());
        QAccessibleValueInterface* const range = child->valueInterface();
        const bool rises =
            range != nullptr && range->currentValue().toDouble() < range->maximumValue().toDouble();
        found += QStringList{QLatin1String(role), child->text(QAccessible::Name),
                             rises ? u"rising"_qs : child->text(QAccessible::Description)}
                     .join(u'|');
        collectAccessible(*child, found);
    }
}

} // namespace

/// A device with a server whose every answer the test documents give.
class DictionariesDevice : public QuickDevice {
    Q_OBJECT

public:
    DictionariesDevice() {
        m_server.setMissingHandler([this](const QHttpServerRequest& request,
                                          QHttpServerResponder&& responder) {
            const auto [status, body] = m_answers.value(request.url().path(), {404, {}});
            ++m_requests[request.url().path()];
            if (status != 0)
                responder.write(body, "application/octet-stream", QHttpServerResponder::StatusCode(status));
        });
        m_url = QStringLiteral("http://127.0.0.1:%1").arg(m_server.listen(QHostAddress::LocalHost));
        m_device.setServerUrl(m_url);
    }

    Q_INVOKABLE void setOnline(bool online) { m_device.setOnline(online); }
    Q_INVOKABLE [[nodiscard]] QString serverUrl() const { return m_url; }
    /// From now on; a request that gets status 0 waits until `hangUp`.
    Q_INVOKABLE void answer(const QString& path, int status, const QString& body) {
        m_answers[path] = {status, body.toUtf8()};
    }
    Q_INVOKABLE [[nodiscard]] int requests(const QString& path) const { return m_requests.value(path); }
    Q_INVOKABLE void hangUp() const {
        for (QTcpSocket* const socket : m_server.findChildren<QTcpSocket*>())
            socket->abort();
    }

    /// Dictionaries with these names are on the device, no others, and none is chosen.
    Q_INVOKABLE void install(const QStringList& names) const {
        QDir folder(m_device.path(dictionaryFolder));
        folder.removeRecursively();
        folder.mkpath(QStringLiteral("."));
        QFile::remove(m_device.path("/mnt/ext1/system/config/global.cfg"));
        const auto file = [&](const QString& name) { return folder.filePath(name + u".tsdict"_qs); };
        for (const QString& name : names) {
            if (!QFile::copy(file(names.first()), file(name)))
                writeDictionary(file(name), {});
        }
    }
    Q_INVOKABLE [[nodiscard]] int installedCount() const {
        return int(QDir(m_device.path(dictionaryFolder)).entryList(QDir::Files).size());
    }
    Q_INVOKABLE void setMorphology(const QString& code, bool isThere) const {
        for (const auto* const ending : {".aff", ".dic"}) {
            QFile file(m_device.path("/mnt/ext1/system/hunspell/") + code + QLatin1String(ending));
            isThere ? file.open(QIODevice::WriteOnly) : file.remove();
        }
    }

    /// What an assistive tool that attaches now finds in the item's window.
    Q_INVOKABLE [[nodiscard]] static QStringList accessibleItems(QQuickItem* item) {
        QAccessible::setActive(true);
        QStringList found;
        collectAccessible(*QAccessible::queryAccessibleInterface(item->window()), found);
        return found;
    }

    /// How the item's window differs from a stored picture; empty if, hinting of fonts aside, it doesn't.
    /// With TESSALY_RENEW_PICTURES in the environment the window becomes the stored picture.
    Q_INVOKABLE [[nodiscard]] static QString difference(QQuickItem* item, const QString& picture) {
        const QString stored = QStringLiteral(TESSALY_PICTURE_FOLDER "/%1.png").arg(picture);
        const QImage full = item->window()->grabWindow();
        QImage shown = full.scaled(full.size() / reduction, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
        if (qEnvironmentVariableIsSet("TESSALY_RENEW_PICTURES"))
            return shown.convertToFormat(QImage::Format_Grayscale8).save(stored)
                       ? QString()
                       : u"can not save "_qs + stored;
        const QImage expected(stored);
        if (expected.size() != shown.size())
            return u"not of the size of "_qs + stored;
        QPainter painter(&shown);
        painter.setCompositionMode(QPainter::CompositionMode_Difference);
        painter.drawImage(0, 0, expected);
        const QImage cells =
            shown.scaled(shown.size() / cell, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
        for (int i = 0; i < cells.width() * cells.height(); ++i) {
            const QPoint at(i % cells.width(), i / cells.width());
            if (qGray(cells.pixel(at)) <= mostDifference)
                continue;
            const QString seen = QDir::temp().filePath(picture + u".png"_qs);
            full.save(seen);
            return QStringLiteral("at cell %1, %2: %3").arg(at.x()).arg(at.y()).arg(seen);
        }
        return {};
    }

private:
    fixture::TestDevice m_device;
    QHttpServer m_server;
    QString m_url;
    QHash<QString, std::pair<int, QByteArray>> m_answers;
    QHash<QString, int> m_requests;
};

} // namespace tessaly::tests

class Setup : public QObject {
    Q_OBJECT

    std::optional<tessaly::tests::DictionariesDevice> m_device;

public Q_SLOTS:
    void applicationAvailable() { m_device.emplace(); }
    void qmlEngineAvailable(QQmlEngine* engine) { m_device->setUp(engine); }
    void cleanupTestCase() { m_device.reset(); }
};

QUICK_TEST_MAIN_WITH_SETUP(documents, Setup)
#include "documents_test.moc"
