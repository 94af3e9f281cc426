#include "morphology_transfer.h"

#include "morphology_data.h"

#include <QCoreApplication>
#include <QHash>
#include <QRegularExpression>
#include <QThreadPool>
#include <QUrl>
#include <QtCore/qapplicationstatic.h>
#include <atomic>
#include <base/device_root.h>
#include <base/staging.h>
#include <chrono>
#include <common_utilities/defer_sleep.h>
#include <common_utilities/log_line.h>
#include <dictionaries/morph_explorer.h>
#include <filesystem>
#include <stdexcept>
#include <utilities/sync_downloader.h>
#include <utilities/url.h>
#include <vellum/clock.h>
#include <vellum/vellum.h>

namespace tessaly::services {

namespace {

using namespace std::chrono_literals;

constexpr int mostAtOnce = 4; // the others wait for their turn
constexpr long long largestArchive = 64LL << 20;
constexpr double fetchedProgress = 0.95;

/// All transfers of the process, as children.
class Transfers : public QObject {
public:
    Transfers() {
        pool.setMaxThreadCount(mostAtOnce);
        pool.start(clearLeftovers);
    }
    ~Transfers() override {
        for (MorphologyTransfer* const transfer : byUrl)
            transfer->abort();
        pool.waitForDone();
        for (MorphologyTransfer* const transfer : byUrl) // how the rest ended
            QCoreApplication::sendPostedEvents(transfer, QEvent::MetaCall);
    }

    QThreadPool pool;
    QHash<QString, MorphologyTransfer*> byUrl;
};

Q_APPLICATION_STATIC(Transfers, transfers)

/// The language whose data are at this address, fit to be a file name: "pt_BR" for "http://HOST/pt_BR.zip".
/// Empty if it is no such address.
std::string languageAt(const QString& url) {
    static const QRegularExpression form(
        QStringLiteral("\\A([a-z]{2,3}(?:_(?:[A-Z]{2}|[0-9]{3}))?)\\.zip\\z"));
    if (!utilities::isWebUrl(url.toStdString()))
        return {};
    return form.match(QUrl(url).fileName(QUrl::FullyEncoded)).captured(1).toStdString();
}

/// Host path; makes the directory if there is none.
std::string dataDirectory() {
    std::string path = base::hostPath(morphology::HunspellSearcher::defaultDir());
    std::filesystem::create_directory(path);
    return path;
}

} // namespace

/// What the worker has, from a start to its end.
struct MorphologyTransfer::Run {
    enum class Phase { Fetching, Placing, Over };

    Run(const std::string& ofLanguage, const QString& apiKey)
        : language(ofLanguage)
        , staging(dataDirectory(), stagingPrefix)
        , downloader(morphology::HunspellSearcher::defaultDir() + '/' +
                         std::filesystem::path(staging.path()).filename().string(),
                     {{{"X-Api-Key", apiKey.toStdString()}}, largestArchive}) {}

    bool enter(Phase next) {
        Phase before = Phase::Fetching;
        return phase.compare_exchange_strong(before, next);
    }

    const std::string language;
    const base::Staging staging;
    utilities::SyncDownloader downloader;
    std::atomic<Phase> phase{Phase::Fetching};
};

MorphologyTransfer& MorphologyTransfer::at(const QString& url) {
    MorphologyTransfer*& transfer = transfers->byUrl[url];
    if (!transfer)
        transfer = new MorphologyTransfer(url, transfers);
    return *transfer;
}

MorphologyTransfer::MorphologyTransfer(const QString& url, QObject* parent)
    : QObject(parent)
    , m_url(url) {
    connect(&m_look, &QTimer::timeout, this, &MorphologyTransfer::changed);
}

bool MorphologyTransfer::start(const QString& apiKey) {
    if (m_run)
        return true;
    const std::string language = languageAt(m_url);
    if (language.empty()) {
        LogLine(log::cb::warn) << "Not an address of morphology data: \"" << m_url << '"';
        return false;
    }
    try {
        m_run = std::make_shared<Run>(language, apiKey);
    } catch (const std::exception& error) {
        LogLine(log::cb::error) << "No morphology data from " << m_url << ": " << error.what();
        return false;
    }
    // The pool ends before this object does.
    transfers->pool.start([this, run = m_run] {
        const DeferSleep untilTheEnd("morphology");
        const auto leave = [this, run, success = bring(*run)] {
            if (run == m_run)
                end(success);
        };
        QMetaObject::invokeMethod(this, leave, Qt::QueuedConnection);
    });
    m_look.start(1s); // each look may take an update of the screen, which takes a quarter of that
    Q_EMIT runningChanged();
    Q_EMIT changed();
    return true;
}

/// On the worker.
bool MorphologyTransfer::bring(Run& run) {
    try {
        if (NetConnect2(nullptr, 1) != 0)
            throw std::runtime_error("the device is offline");
        const std::string name = run.language + ".zip";
        if (!run.downloader.Download(m_url.toStdString(), name, 0, "morphology data")) {
            std::string reason;
            run.downloader.GetProgress(nullptr, &reason, nullptr, nullptr);
            throw std::runtime_error(reason);
        }
        unpackLanguage(run.staging.path() + '/' + name, run.language, run.staging.path());
        if (!run.enter(Run::Phase::Placing))
            return false;
        QMetaObject::invokeMethod(this, &MorphologyTransfer::changed, Qt::QueuedConnection);
        placeLanguage(run.staging.path(), run.language);
        return true;
    } catch (const std::exception& error) {
        if (run.phase != Run::Phase::Over && !vellum::clock::isQuitting())
            LogLine(log::cb::error) << "No morphology data from " << m_url << ": " << error.what();
        return false;
    }
}

void MorphologyTransfer::abort() {
    if (!m_run || !m_run->enter(Run::Phase::Over))
        return;
    m_run->downloader.CancelCurrent();
    end(false);
}

void MorphologyTransfer::end(bool success) {
    m_look.stop();
    m_run.reset();
    Q_EMIT runningChanged();
    Q_EMIT changed();
    Q_EMIT ended(success);
}

bool MorphologyTransfer::isRunning() const {
    return m_run != nullptr;
}

bool MorphologyTransfer::canAbort() const {
    return m_run && m_run->phase == Run::Phase::Fetching;
}

double MorphologyTransfer::progress() const {
    if (!m_run)
        return 0;
    int total = 1;
    int done = 0;
    m_run->downloader.GetProgress(nullptr, nullptr, &total, &done);
    return fetchedProgress * done / total;
}

} // namespace tessaly::services
