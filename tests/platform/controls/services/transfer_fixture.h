#pragma once

#include "morphology_device.h"

#include <dictionaries/morph_secret_provider.h>
#include <services/tsi_installation_service.h>
#include <tests/support/log_watch.h>
#include <vellum/sleep_prevention.h>

#include <QSignalSpy>
#include <QTest>
#include <memory>
#include <optional>

namespace tessaly::tests {

using services::TsiInstallationService;
using services::TsiInstallationSummary;

/// What each test of transfers starts from: a device, a server with some megabytes of German, and a service.
class TransferFixture : public QObject {
    Q_OBJECT

protected:
    [[nodiscard]] std::unique_ptr<TsiInstallationService> newService() const {
        auto service = std::make_unique<TsiInstallationService>();
        service->setSummary(m_summary.get());
        service->setApiKeyProvider(&m_keys);
        return service;
    }

    CannedServer m_files{{{"/de.zip", CannedServer::ok(archiveOf("rules", noise(2'000'000)).toStdString())}}};
    const QString m_url = QString::fromStdString(m_files.url("/de.zip"));
    mutable dictionary::MorphSecretProvider m_keys;
    std::optional<MorphologyDevice> m_device;
    std::optional<LogWatch> m_log;
    std::unique_ptr<TsiInstallationSummary> m_summary;
    std::unique_ptr<TsiInstallationService> m_service;

private Q_SLOTS:
    void init() {
        m_files.setFault({});
        m_device.emplace();
        m_log.emplace();
        m_summary = std::make_unique<TsiInstallationSummary>();
        m_service = newService();
    }
    void cleanup() {
        QTRY_COMPARE(vellum::activeSleepPreventors(), 0); // no worker is left
        QVERIFY(m_summary->runningCount() == 0 && m_summary->canAbort());
        m_service.reset();
        QCOMPARE(m_log->unexpected(), QStringList());
        m_log.reset();
        m_device.reset();
    }
};

} // namespace tessaly::tests
