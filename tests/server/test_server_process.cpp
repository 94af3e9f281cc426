#include "server.h"

#include <tests/support/files.h>

#include <QElapsedTimer>
#include <QTcpServer>
#include <QTest>

namespace {

const QString program = QStringLiteral(SERVER_PROGRAM);

/// Record numbers by file name.
QMap<QString, int> numbers(Server& server) {
    QMap<QString, int> result;
    for (const QJsonValueConstRef record : server.catalogue())
        result[record[u"file"].toString()] = record[u"id"].toInt();
    return result;
}

/// The exit status of a start that has to fail, and says why.
int failedStart(const QStringList& arguments) {
    QProcess process;
    process.start(program, arguments);
    const bool hasEnded = process.waitForFinished(10000);
    return hasEnded && !process.readAllStandardError().isEmpty() ? process.exitCode() : -1;
}

QString announcedUrl(QProcess& process) {
    return process.waitForReadyRead(30000) ? QString::fromUtf8(process.readLine()).trimmed().section(u' ', -1)
                                           : QString();
}

/// Some of the installed dictionaries in a directory of their own.
struct Dictd {
    explicit Dictd(const QStringList& codes) {
        for (const QString& code : codes)
            add(code);
    }
    void add(const QString& code) const {
        for (const QString& suffix : {u".index"_qs, u".dict.dz"_qs})
            QFile::copy(u"/usr/share/dictd/freedict-"_qs + code + suffix, path(code + suffix));
    }
    QString path(const QString& name) const { return directory.filePath(u"freedict-"_qs + name); }

    QTemporaryDir directory;
    QStringList options{u"--dictd"_qs, directory.path()};
};

} // namespace

/// The server as a process: its starts, its ends, and what it keeps in between.
class TestServerProcess : public QObject {
    Q_OBJECT

    Server m_server;

private Q_SLOTS:
    void cleanup() {
        m_server.stop();
        QVERIFY(QDir(m_server.statePath()).removeRecursively() && QDir().mkpath(m_server.statePath()));
    }

    void restartKeepsNumbersAndPort() {
        const Dictd dictd({u"ces-eng"_qs, u"srp-eng"_qs});
        m_server.start(dictd.options);
        const QString url = m_server.url();
        const QMap<QString, int> before = numbers(m_server);
        QCOMPARE(before.size(), 2);
        int package = 0;
        m_server.package(u"1"_qs, &package);
        m_server.stop();

        // One is gone, one is new and would come first.
        QFile::remove(dictd.path(u"ces-eng.index"_qs));
        dictd.add(u"deu-ita"_qs);
        m_server.start(dictd.options);
        QCOMPARE(m_server.url(), url);
        const QMap<QString, int> after = numbers(m_server);
        QCOMPARE(after.keys().join(u' '), u"German-Italian.tsdict Serbian-English.tsdict"_qs);
        QCOMPARE(after.last(), before.last());
        QVERIFY(!before.values().contains(after.first()));
        // An old package is gone, and its number isn't given to another one.
        QCOMPARE(m_server.get(u"/v1/packages/%1"_qs.arg(package)).status, 404);
        int next = 0;
        m_server.package(QString::number(after.first()), &next);
        QVERIFY(next > package);
    }

    void heedsWhatBecomesOfADictionary() {
        const Dictd dictd({u"ces-eng"_qs, u"srp-eng"_qs});
        const QString index = dictd.path(u"ces-eng.index"_qs);
        QSet<QString> checksums;
        for (int i = 0; i < 2; ++i) {
            m_server.start(dictd.options);
            checksums << m_server.package(u"1"_qs)["sha256"].toString();
            m_server.stop();
            writeFile(index, readFile(index) + "zzz\tB\tb\n"); // changed: is converted anew
        }
        QVERIFY(checksums.size() == 2 && !checksums.contains(QString()));
        QCOMPARE(QDir(m_server.statePath(u"converted"_qs)).entryList(QDir::Files).size(), 1);
        QVERIFY(QFile::resize(dictd.path(u"ces-eng.dict.dz"_qs), 4000)); // damaged: is left out
        m_server.start(dictd.options);
        QCOMPARE(numbers(m_server).keys().join(u' '), u"Serbian-English.tsdict"_qs);
    }

    void takenPort() {
        m_server.start({u"--all-languages"_qs});
        QVERIFY(numbers(m_server).contains(u"Latin-English.tsdict"_qs));
        const QString url = m_server.url();
        const QString port = QString::number(m_server.port());
        m_server.stop();
        QTcpServer other;
        QVERIFY(other.listen(QHostAddress::LocalHost, port.toUShort()));
        QCOMPARE(failedStart({u"--state"_qs, m_server.statePath(), u"--port"_qs, port}), 1);
        m_server.start();
        QVERIFY(m_server.url() != url && !m_server.catalogue().isEmpty());
    }

    void wrongCommandLines() {
        const QString state = m_server.statePath(u"new"_qs);
        QCOMPARE(failedStart({}), 2);
        for (const char* const wrong : {"--nonsense", "more", "--port 65536", "--dictd /nowhere"})
            QVERIFY2(
                failedStart(QStringList{u"--state"_qs, state} + QString::fromLatin1(wrong).split(u' ')) == 2,
                wrong);
    }

    void survivesBeingKilled() {
        const Dictd dictd({u"ces-eng"_qs, u"eng-spa"_qs});
        const QString kept = m_server.statePath(u"converted"_qs);
        const QStringList ahead = dictd.options + QStringList{u"--convert-ahead"_qs};
        const QStringList arguments{u"--state"_qs, m_server.statePath(), u"--exit-with-parent"_qs};
        QProcess first;
        first.start(program, arguments + ahead);
        const QString url = announcedUrl(first);
        QCOMPARE(failedStart(arguments), 1); // one server per directory
        first.kill();                        // it is at the first dictionary
        first.waitForFinished();
        m_server.start(ahead); // it doesn't lock its successor out
        QCOMPARE(m_server.url(), url);
        QCOMPARE(m_server.package(u"1"_qs).status, 200);
        QTRY_COMPARE(QDir(kept).entryList(QDir::Files).size(), 2);
    }

    void endsInTheMiddleOfABuild() {
        m_server.start();
        const QString id = QString::number(numbers(m_server).value(u"English-Spanish.tsdict"_qs));
        QCOMPARE(m_server.post(u"/v1/packages?ids="_qs + id).status, 202);
        m_server.setSwitches({{u"package_build_ms"_qs, 60000}});
        QCOMPARE(m_server.post(u"/v1/packages?ids=1,"_qs + id).status, 202);
        QElapsedTimer clock;
        clock.start();
        m_server.stop();
        QVERIFY(clock.elapsed() < 5000);
        for (const QString& directory : {u"converted"_qs, u"packages"_qs})
            QVERIFY(QDir(m_server.statePath(directory)).entryList({u"*.part"_qs}).isEmpty());
    }

    void endsWithItsParent() {
        QProcess parent;
        parent.start(u"/bin/sh"_qs, {u"-c"_qs, u"\"$0\" --exit-with-parent --state \"$1\" & read end"_qs,
                                     program, m_server.statePath()});
        const QString control = announcedUrl(parent) + u"/control"_qs;
        QCOMPARE(m_server.get(control).status, 404); // not without the option
        parent.kill();
        QVERIFY(parent.waitForFinished());
        QTRY_COMPARE(m_server.get(control).status, 0);
    }
};

QTEST_GUILESS_MAIN(TestServerProcess)
#include "test_server_process.moc"
