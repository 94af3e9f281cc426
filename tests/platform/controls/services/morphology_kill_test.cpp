#include "morphology_device.h"

#include <QElapsedTimer>
#include <QProcess>
#include <QTest>
#include <optional>
#include <unistd.h>

using namespace tessaly;
using tests::CannedServer;
using Content = QMap<QString, QByteArray>;

namespace {

/// From "NAME=CONTENT,NAME=CONTENT".
Content files(const char* list) {
    Content result;
    for (const QString& file : QString::fromLatin1(list).split(u','))
        result[file.section(u'=', 0, 0)] = file.section(u'=', 1).toLatin1();
    return result;
}

const Content old = files("de.aff=old rules,de.dic=old words");

} // namespace

/// Processes that end in the middle of a transfer.
class MorphologyKillTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { m_device.emplace(); }
    void cleanup() { m_device.reset(); }

    void killedAtAnyMoment() {
        const Content newer{{u"de.aff"_qs, tests::noise(400'000)}, {u"de.dic"_qs, tests::noise(1'500'000)}};
        const QByteArray archive = tests::archiveOf(newer.first(), newer.last());
        CannedServer server({{"/de.zip", CannedServer::ok(archive.toStdString())}});
        const QString url = QString::fromStdString(server.url("/de.zip"));
        QElapsedTimer timer;
        timer.start();
        QCOMPARE(run(u"install"_qs, url), 0);
        QCOMPARE(m_device->content(), newer);
        double duration = double(timer.nsecsElapsed()) / 1000; // microseconds

        int killed = 0;
        for (int i = 0; i < 400 && killed < 60; ++i) {
            const Content older = i % 4 < 2 ? Content() : old;
            put(older);
            QProcess process;
            process.start(QStringLiteral(TESSALY_MORPHOLOGY_PROGRAM), {u"install"_qs, url});
            process.waitForStarted();
            // The second half of the time has the more interesting moments.
            const double least = i % 2 == 0 ? 0 : duration / 2;
            ::usleep(unsigned(least + QRandomGenerator::global()->bounded(duration - least)));
            process.kill();
            process.waitForFinished(-1);
            const bool wasKilled = process.exitStatus() == QProcess::CrashExit;
            killed += wasKilled ? 1 : 0;
            duration *= wasKilled ? 1.05 : 0.8; // the machine's load changes meanwhile
            Content visible = m_device->content();
            visible.removeIf([](const Content::iterator& file) { return file.key().startsWith(u'.'); });
            QVERIFY(visible.size() < 2 || visible == older || visible == newer);
            QCOMPARE(run(u"tidy"_qs), 0);
            QVERIFY(m_device->content() == older || m_device->content() == newer);
        }
        QCOMPARE(killed, 60);
    }

    void aStartFinishesWhatWasReady() {
        const Content fresh = files("de.aff=rules,de.dic=words");
        // As they follow each other.
        const std::pair<const char*, Content> states[] = {
            {"de.aff=old rules,de.dic=old words,.new-1-1/de.aff=ru", old},
            {"de.aff=old rules,de.dic=old words,.ready de/de.aff=rules,.ready de/de.dic=words", fresh},
            {"de.dic=old words,.ready de/de.aff=rules,.ready de/de.dic=words", fresh},
            {"de.dic=words,.ready de/de.aff=rules,.ready de/de.zip=archive", fresh},
            {"de.aff=rules,de.dic=words,.ready de/de.zip=archive", fresh}};
        for (const auto& [left, expected] : states) {
            put(files(left));
            QCOMPARE(run(u"tidy"_qs), 0);
            QVERIFY2(m_device->content() == expected, left);
        }
    }

    void rulesGoFirstAndComeLast() {
        put(files("de.aff=old rules,de.dic/in the way=x,.ready de/de.aff=rules,.ready de/de.dic=words"));
        QCOMPARE(run(u"tidy"_qs), 0);
        QVERIFY(!m_device->content().contains(u"de.aff"_qs));
    }

    void quittingWaitsForNothing() {
        CannedServer server({{"/de.zip", CannedServer::ok(std::string(1'000'000, '.'))}});
        server.setFault({fixture::Fault::Kind::Stall, 500'000});
        QElapsedTimer timer;
        timer.start();
        QCOMPARE(run(u"quit"_qs, QString::fromStdString(server.url("/de.zip"))), 2);
        QVERIFY(timer.elapsed() < 3000); // of a stall that lasts 10 seconds
        QCOMPARE(m_device->content(), Content());
    }

private:
    /// Nothing else is there then.
    void put(const Content& content) const {
        QDir(m_device->directory()).removeRecursively();
        QDir().mkpath(m_device->directory());
        for (auto file = content.begin(); file != content.end(); ++file)
            m_device->write(file.key(), file.value());
    }

    static int run(const QString& mode, const QString& url = {}) {
        QProcess process;
        process.setProcessChannelMode(QProcess::ForwardedChannels);
        process.start(QStringLiteral(TESSALY_MORPHOLOGY_PROGRAM), {mode, url});
        process.waitForFinished(-1);
        return process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
    }

    std::optional<tests::MorphologyDevice> m_device;
};

QTEST_GUILESS_MAIN(MorphologyKillTest)
#include "morphology_kill_test.moc"
