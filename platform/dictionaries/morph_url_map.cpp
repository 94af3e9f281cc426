#include <dictionaries/morph_url_map.h>

#include "server_request.h"

#include <QJsonObject>
#include <QtConcurrent>
#include <algorithm>
#include <base/device_root.h>
#include <common_utilities/log_line.h>
#include <dictionaries/morph_explorer.h>
#include <dictionaries/routes.h>
#include <utilities/locale.h>
#include <utilities/url.h>
#include <vellum/clock.h>
#include <vellum/vellum.h>

namespace tessaly::dictionary {

namespace {

constexpr int connected = 2;
constexpr int shortestPollMs = 2000;
constexpr int longestPollMs = 60'000;

using Urls = QHash<QString, QString>;

/// Shorter than for other requests: nobody waits for the list, and it is asked for again.
utilities::HttpLimits listLimits() {
    utilities::HttpLimits limits = utilities::HttpClient::defaultLimits();
    limits.connectTimeoutMs = std::min(limits.connectTimeoutMs, 3000L);
    limits.stallSeconds = std::min(limits.stallSeconds, 3L);
    limits.totalSeconds = 10;
    limits.responseBytes = std::min(limits.responseBytes, 1LL << 20);
    return limits;
}

bool isEntry(const QString& code, const QString& url) {
    const auto locale = utilities::locale_parser::tagged_parse(code.toStdString(), '_');
    return locale.isRight() && !locale.getRight().language.empty() && utilities::isWebUrl(url.toStdString());
}

/// The server's list: URL by language code.
Either<ApiError, Urls> listMorphology(const std::string& baseUrl, const std::string& apiKey,
                                      const std::stop_token& stop) {
    const auto body = getBody(baseUrl, "/v1/morphology", 200, 0, listLimits(), {{"X-Api-Key", apiKey}}, stop);
    if (body.isLeft())
        return Left<ApiError>(body.getLeft());
    const auto json = parseJson(body.getRight(), "morphology list");
    if (json.isLeft())
        return Left<ApiError>(json.getLeft());
    if (!json.getRight().isObject())
        return Left<ApiError>(parseError("morphology list", 0, "not an object"));

    Urls urls;
    Complaints complaints("morphology list");
    const QJsonObject list = json.getRight().object();
    for (auto entry = list.begin(); entry != list.end(); ++entry) {
        if (isEntry(entry.key(), entry.value().toString()))
            urls.insert(entry.key(), entry.value().toString());
        else
            complaints.add('"' + entry.key().toStdString() + "\" is left out");
    }
    return Right<Urls>(urls);
}

std::optional<Urls> fetch(const std::string& baseUrl, const std::string& apiKey,
                          const std::stop_token& stop) {
    const auto urls = listMorphology(baseUrl, apiKey, stop);
    if (urls.isRight())
        return urls.getRight();
    if (!stop.stop_requested() && !vellum::clock::isQuitting()) // else nobody wants it any more
        LogLine(log::cb::warn) << "Failed to list morphology data: " << to_string(urls.getLeft());
    return std::nullopt;
}

} // namespace

MorphUrlMap::MorphUrlMap(const MorphSecretProvider* apiKeyProvider, QObject* parent)
    : MorphMap(parent)
    , m_apiKeyProvider(apiKeyProvider)
    , m_pollInterval(shortestPollMs) {
    m_poll.setSingleShot(true);
    connect(&m_poll, &QTimer::timeout, this, &MorphUrlMap::fetchIfConnected);
    connect(&m_stateDirectory, &QFileSystemWatcher::directoryChanged, this, &MorphUrlMap::fetchIfConnected);
    connect(&m_fetch, &QFutureWatcherBase::finished, this, &MorphUrlMap::takeFetched);
}

MorphUrlMap::~MorphUrlMap() {
    m_stop.request_stop();
}

QVariant MorphUrlMap::find(const QString& code) const {
    for (const QString& name : m_urls ? candidates(code) : QStringList()) {
        const auto found = m_urls->find(name);
        if (found != m_urls->end())
            return *found;
    }
    return {};
}

void MorphUrlMap::beginFollowing() {
    if (!m_poll.isActive() && m_stateDirectory.directories().isEmpty())
        fetchIfConnected();
}

void MorphUrlMap::fetchIfConnected() {
    if (m_urls || m_fetch.isRunning())
        return;
    // A change of the network's state replaces a file there. Watched before the state is asked for, so that
    // none is missed; a device that nobody uses needn't wake up for it.
    const QString directory = QString::fromStdString(base::hostPath("/var"));
    m_stateDirectory.addPath(directory);
    if (GetNetState() != connected) {
        m_pollInterval = shortestPollMs;
        return;
    }
    m_stateDirectory.removePath(directory);
    // The worker gets copies: it may outlast this object.
    m_fetch.setFuture(QtConcurrent::run(fetch, default_base_url(), m_apiKeyProvider->apiKey().toStdString(),
                                        m_stop.get_token()));
}

void MorphUrlMap::takeFetched() {
    m_urls = m_fetch.result();
    if (m_urls) {
        refresh();
        return;
    }
    m_poll.start(vellum::clock::scaled(m_pollInterval));
    m_pollInterval = std::min(2 * m_pollInterval, longestPollMs);
}

} // namespace tessaly::dictionary
