#include <dictionaries/morph_url_map.h>

#include "morphology_list.h"

#include <QtConcurrent>
#include <algorithm>
#include <common_utilities/log_line.h>
#include <dictionaries/morph_secret_provider.h>
#include <dictionaries/routes.h>
#include <vellum/clock.h>
#include <vellum/vellum.h>

namespace tessaly::dictionary {

namespace {

constexpr int connected = 2;
constexpr int shortestPollMs = 2000;
constexpr int longestPollMs = 60'000;

std::optional<QHash<QString, QString>> fetch(const std::string& baseUrl, const std::string& apiKey,
                                             const std::stop_token& stop) {
    const auto urls = listMorphology(baseUrl, apiKey, stop);
    if (urls.isRight())
        return urls.getRight();
    if (stop.stop_requested() || vellum::clock::isQuitting()) // nobody wants it any more
        return std::nullopt;
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
    if (!m_urls && !m_poll.isActive() && !m_fetch.isRunning())
        fetchIfConnected();
}

void MorphUrlMap::fetchIfConnected() {
    if (GetNetState() != connected) {
        m_pollInterval = shortestPollMs;
        m_poll.start(vellum::clock::scaled(m_pollInterval));
        return;
    }
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
