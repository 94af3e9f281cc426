#include "server_process.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTest>

#include <csignal>

/// The server as a process: its starts, its ends, and what it keeps in between.
class TestServerProcess : public QObject {
    Q_OBJECT

private:
    static QJsonArray catalogue(ServerProcess& server) {
        return QJsonDocument::fromJson(server.get(u"/v1/dictionaries"_qs).body).array();
    }

    static QMap<QString, int> numbers(ServerProcess& server) {
        QMap<QString, int> result;
        for (const QJsonValueConstRef value : catalogue(server))
            result.insert(value[QLatin1String("file")].toString(), value[QLatin1String("id")].toInt());
        return result;
    }

    /// A folder with some of the installed dictionaries.
    static void install(const QString& folder, const QStringList& codes) {
        for (const QString& code : codes) {
            for (const QString& ending : {u"index"_qs, u"dict.dz"_qs}) {
                const QString name = u"freedict-%1.%2"_qs.arg(code, ending);
                QVERIFY(QFile::copy(u"/usr/share/dictd/"_qs + name, folder + u'/' + name));
            }
        }
    }

    static bool answers(const QString& address) {
        QTcpSocket socket;
        socket.connectToHost(u"127.0.0.1"_qs, static_cast<quint16>(QUrl(address).port()));
        return socket.waitForConnected(1000);
    }

private Q_SLOTS:
    void restartKeepsNumbersAndPort() {
        const QTemporaryDir dictd;
        install(dictd.path(), {u"ces-eng"_qs, u"srp-eng"_qs});
        const QStringList options{u"--dictd"_qs, dictd.path()};
        ServerProcess server;
        QVERIFY(server.start(options));
        const QString address = server.address();
        const QMap<QString, int> before = numbers(server);
        QCOMPARE(before.size(), 2);
        int package = 0;
        server.package(u"1"_qs, &package);
        QCOMPARE(server.stop(), 0);

        // One is gone, one is new and would come first.
        QFile::remove(dictd.filePath(u"freedict-ces-eng.index"_qs));
        install(dictd.path(), {u"deu-ita"_qs});
        QVERIFY(server.start(options));
        QCOMPARE(server.address(), address);
        const QMap<QString, int> after = numbers(server);
        QCOMPARE(after.keys().join(u' '), u"German-Italian.tsdict Serbian-English.tsdict"_qs);
        QCOMPARE(after.value(u"Serbian-English.tsdict"_qs), before.value(u"Serbian-English.tsdict"_qs));
        QVERIFY(!before.values().contains(after.value(u"German-Italian.tsdict"_qs)));
        // An old package is gone, and its number isn't given to another one.
        QCOMPARE(server.get(u"/v1/packages/%1"_qs.arg(package)).status, 404);
        int next = 0;
        server.package(QString::number(after.first()), &next);
        QVERIFY(next > package);
    }

    void changedDictionaryIsConvertedAnew() {
        const QTemporaryDir dictd;
        install(dictd.path(), {u"ces-eng"_qs});
        ServerProcess server;
        QVERIFY(server.start({u"--dictd"_qs, dictd.path()}));
        const QString first = server.package(u"1"_qs).object().value(u"sha256"_qs).toString();
        QCOMPARE(server.stop(), 0);
        QFile index(dictd.filePath(u"freedict-ces-eng.index"_qs));
        QVERIFY(index.open(QIODevice::Append) && index.write("zzz\tB\tb\n") > 0);
        index.close();
        QVERIFY(server.start({u"--dictd"_qs, dictd.path()}));
        const QString second = server.package(u"1"_qs).object().value(u"sha256"_qs).toString();
        QVERIFY(!first.isEmpty() && !second.isEmpty() && first != second);
        QCOMPARE(QDir(server.stateFolder() + u"/converted"_qs).entryList(QDir::Files).size(), 1);
    }

    void damagedDictionaryIsLeftOut() {
        const QTemporaryDir dictd;
        install(dictd.path(), {u"ces-eng"_qs, u"srp-eng"_qs});
        QVERIFY(QFile::resize(dictd.filePath(u"freedict-ces-eng.dict.dz"_qs), 4000));
        ServerProcess server;
        for (int i = 0; i < 2; ++i) { // read, and remembered
            QVERIFY(server.start({u"--dictd"_qs, dictd.path()}));
            QCOMPARE(numbers(server).keys().join(u' '), u"Serbian-English.tsdict"_qs);
            QCOMPARE(server.stop(), 0);
            QCOMPARE(server.errors().count("freedict-ces-eng"), 1);
        }
    }

    void otherLanguagesOnRequest() {
        ServerProcess server;
        QVERIFY(server.start({u"--all-languages"_qs}));
        QVERIFY(numbers(server).contains(u"Latin-English.tsdict"_qs));
    }

    void takenPort() {
        ServerProcess server;
        QVERIFY(server.start());
        const QString address = server.address();
        const int port = QUrl(address).port();
        QCOMPARE(server.stop(), 0);
        QTcpServer other;
        QVERIFY(other.listen(QHostAddress::LocalHost, static_cast<quint16>(port)));
        QCOMPARE(server.runToEnd({u"--state"_qs, server.stateFolder(), u"--port"_qs, QString::number(port)}),
                 1);
        QVERIFY(server.errors().contains(QByteArray::number(port)));
        QVERIFY(server.start());
        QVERIFY(server.address() != address);
        QVERIFY(!catalogue(server).isEmpty());
    }

    void wrongCommandLines_data() {
        QTest::addColumn<QStringList>("arguments");
        QTest::newRow("no state") << QStringList();
        QTest::newRow("unknown option") << QStringList{u"--state"_qs, u"/tmp/x"_qs, u"--nonsense"_qs};
        QTest::newRow("word too many") << QStringList{u"--state"_qs, u"/tmp/x"_qs, u"more"_qs};
        QTest::newRow("no port") << QStringList{u"--state"_qs, u"/tmp/x"_qs, u"--port"_qs, u"65536"_qs};
        QTest::newRow("no folder") << QStringList{u"--state"_qs, u"/tmp/x"_qs, u"--dictd"_qs, u"/nowhere"_qs};
    }

    void wrongCommandLines() {
        QFETCH(QStringList, arguments);
        ServerProcess server;
        QCOMPARE(server.runToEnd(arguments), 2);
        QVERIFY(!server.errors().isEmpty());
    }

    void oneServerPerFolder() {
        ServerProcess server;
        QVERIFY(server.start());
        ServerProcess second;
        QCOMPARE(second.runToEnd({u"--state"_qs, server.stateFolder()}), 1);
        // A killed one doesn't lock its successor out.
        const QString address = server.address();
        ::kill(static_cast<pid_t>(server.processId()), SIGKILL);
        server.stop();
        QVERIFY(server.start());
        QCOMPARE(server.address(), address);
    }

    void endsInTheMiddleOfABuild() {
        ServerProcess server;
        QVERIFY(server.start({u"--control"_qs}));
        const int id = numbers(server).value(u"English-Arabic.tsdict"_qs);
        QVERIFY(id > 0);
        QCOMPARE(server.post(u"/v1/packages?ids=%1"_qs.arg(id)).status, 202);
        server.control({{u"package_build_ms"_qs, 60000}});
        QCOMPARE(server.post(u"/v1/packages?ids=%1,1"_qs.arg(id)).status, 202);
        QElapsedTimer clock;
        clock.start();
        QCOMPARE(server.stop(), 0);
        QVERIFY(clock.elapsed() < 5000);
        for (const QString& folder : {u"/converted"_qs, u"/packages"_qs})
            QVERIFY(QDir(server.stateFolder() + folder).entryList({u"*.part"_qs}).isEmpty());
    }

    void endsWithItsParent() {
        const QTemporaryDir state;
        QProcess parent;
        parent.start(u"/bin/sh"_qs, {u"-c"_qs, u"\"$0\" --exit-with-parent --state \"$1\" & read end"_qs,
                                     ServerProcess::program(), state.path()});
        QVERIFY(parent.waitForReadyRead(10000));
        const QString address = QString::fromUtf8(parent.readLine()).trimmed().section(u' ', -1);
        QVERIFY(answers(address));
        parent.kill();
        QVERIFY(parent.waitForFinished());
        QTRY_VERIFY(!answers(address));
    }
};

QTEST_GUILESS_MAIN(TestServerProcess)
#include "test_server_process.moc"
