#include "server.h"

#include <tests/support/files.h>

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
class ServerProcessTest : public QObject {
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

        // One is gone, one is new and would come first, one is damaged.
        QFile::remove(dictd.path(u"ces-eng.index"_qs));
        dictd.add(u"deu-ita"_qs);
        dictd.add(u"ita-deu"_qs);
        QVERIFY(QFile::resize(dictd.path(u"ita-deu.dict.dz"_qs), 4000));
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

        m_server.stop();
        QVERIFY(QFile::resize(m_server.statePath(u"state.json"_qs), 20)); // no numbers are given twice
        QCOMPARE(failedStart({u"--state"_qs, m_server.statePath()}), 1);
    }

    void survivesBeingKilled() {
        const Dictd dictd({u"ces-eng"_qs, u"eng-spa"_qs});
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
        QTRY_COMPARE(QDir(m_server.statePath(u"converted"_qs)).entryList(QDir::Files).size(), 2);
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

QTEST_GUILESS_MAIN(ServerProcessTest)
#include "server_process_test.moc"
