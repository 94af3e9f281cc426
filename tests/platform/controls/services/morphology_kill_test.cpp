#include "morphology_device.h"

#include <QElapsedTimer>
#include <QProcess>
#include <QRandomGenerator>
#include <QTest>
#include <optional>
#include <unistd.h>

using namespace tessaly;
using tests::CannedServer;
using Content = QMap<QString, QByteArray>;

namespace {

Content pair(const QByteArray& rules, const QByteArray& words) {
    return {{QStringLiteral("de.aff"), rules}, {QStringLiteral("de.dic"), words}};
}

} // namespace

/// Processes that end in the middle of a transfer.
class MorphologyKillTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { m_device.emplace(); }
    void cleanup() { m_device.reset(); }

    void killedAtAnyMoment_data() {
        QTest::addColumn<Content>("older");
        QTest::newRow("first data") << Content();
        QTest::newRow("instead of older data") << pair("old rules", "old words");
    }
    void killedAtAnyMoment() {
        QFETCH(const Content, older);
        const Content newer = pair(tests::noise(400'000), tests::noise(1'500'000));
        const QByteArray archive =
            tests::archiveOf(newer[QStringLiteral("de.aff")], newer[QStringLiteral("de.dic")]);
        CannedServer server({{"/de.zip", CannedServer::ok(archive.toStdString())}});
        const QString url = QString::fromStdString(server.url("/de.zip"));
        QElapsedTimer timer;
        timer.start();
        QCOMPARE(run(QStringLiteral("install"), url), 0);
        QCOMPARE(m_device->content(), newer);
        const int duration = int(timer.nsecsElapsed() / 1000) + 1;

        int killed = 0;
        for (int i = 0; i < 200 && killed < 30; ++i) {
            QVERIFY(QDir(m_device->folder()).removeRecursively() && QDir().mkpath(m_device->folder()));
            for (auto file = older.begin(); file != older.end(); ++file)
                m_device->write(file.key(), file.value());
            QProcess process;
            process.start(QStringLiteral(TESSALY_MORPHOLOGY_PROGRAM), {QStringLiteral("install"), url});
            process.waitForStarted();
            // The second half of the time has the more interesting moments.
            ::usleep(unsigned(QRandomGenerator::global()->bounded(i % 2 == 0 ? 0 : duration / 2, duration)));
            process.kill();
            process.waitForFinished(-1);
            killed += process.exitStatus() == QProcess::CrashExit ? 1 : 0;
            verifyWhole(older, newer);
        }
        QCOMPARE(killed, 30);
        QCOMPARE(run(QStringLiteral("install"), url), 0);
        QCOMPARE(m_device->content(), newer);
    }

    void aStartFinishesWhatWasReady_data() {
        QTest::addColumn<Content>("left");
        QTest::addColumn<Content>("expected");
        const QString ready = QStringLiteral(".ready de/");
        const QString aside = QStringLiteral(".ready de/older ");
        const QString rules = QStringLiteral("de.aff");
        const QString words = QStringLiteral("de.dic");
        const Content old = pair("old rules", "old words");
        const Content fresh = pair("rules", "words");
        // As they follow each other.
        QTest::newRow("ready") << Content{{rules, "old rules"},
                                          {words, "old words"},
                                          {ready + rules, "rules"},
                                          {ready + words, "words"}}
                               << fresh;
        QTest::newRow("rules aside") << Content{{words, "old words"},
                                                {aside + rules, "old rules"},
                                                {ready + rules, "rules"},
                                                {ready + words, "words"}}
                                     << fresh;
        QTest::newRow("both aside") << Content{{aside + words, "old words"},
                                               {aside + rules, "old rules"},
                                               {ready + rules, "rules"},
                                               {ready + words, "words"}}
                                    << fresh;
        QTest::newRow("words in place") << Content{{words, "words"},
                                                   {aside + words, "old words"},
                                                   {aside + rules, "old rules"},
                                                   {ready + rules, "rules"}}
                                        << fresh;
        QTest::newRow("both in place")
            << Content{{rules, "rules"}, {words, "words"}, {aside + words, "old words"}} << fresh;
        QTest::newRow("taken back, half discarded")
            << Content{{rules, "old rules"}, {words, "old words"}, {ready + words, "words"}} << old;
        QTest::newRow("never ready") << Content{{rules, "old rules"},
                                                {words, "old words"},
                                                {QStringLiteral(".new de-1-1/de.aff"), "ru"}}
                                     << old;
    }
    void aStartFinishesWhatWasReady() {
        QFETCH(const Content, left);
        for (auto file = left.begin(); file != left.end(); ++file)
            m_device->write(file.key(), file.value());
        QCOMPARE(run(QStringLiteral("tidy")), 0);
        QTEST(m_device->content(), "expected");
    }

    void quittingWaitsForNothing() {
        CannedServer server({{"/de.zip", CannedServer::ok(std::string(1'000'000, '.'))}});
        server.setFault({fixture::Fault::Kind::Stall, 500'000});
        QElapsedTimer timer;
        timer.start();
        QCOMPARE(run(QStringLiteral("quit"), QString::fromStdString(server.url("/de.zip"))), 2);
        QVERIFY(timer.elapsed() < 3000); // of a stall that lasts 10 seconds
        QCOMPARE(m_device->content(), Content());
    }

private:
    static int run(const QString& mode, const QString& url = {}) {
        QProcess process;
        process.setProcessChannelMode(QProcess::ForwardedChannels);
        process.start(QStringLiteral(TESSALY_MORPHOLOGY_PROGRAM), {mode, url});
        process.waitForFinished(-1);
        return process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
    }

    /// Both files of one kind or none; and after the next start no leftovers and nothing lost.
    void verifyWhole(const Content& older, const Content& newer) const {
        Content visible = m_device->content();
        visible.removeIf([](const Content::iterator& file) { return file.key().startsWith(u'.'); });
        QVERIFY(visible.size() < 2 || visible == older || visible == newer);
        QCOMPARE(run(QStringLiteral("tidy")), 0);
        QVERIFY(m_device->content() == older || m_device->content() == newer);
    }

    std::optional<tests::MorphologyDevice> m_device;
};

QTEST_GUILESS_MAIN(MorphologyKillTest)
#include "morphology_kill_test.moc"
