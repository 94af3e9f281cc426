#pragma once

#include <QJsonObject>
#include <QMap>
#include <QNetworkAccessManager>
#include <QProcess>
#include <QTemporaryDir>

/// The real server on a free loopback port, and a client for it. The state folder outlives restarts.
class ServerProcess {
public:
    using Headers = QMap<QByteArray, QByteArray>;

    struct Reply {
        int status = 0; ///< 0: no whole answer came
        QByteArray body;
        Headers headers; ///< names in lower case

        QJsonObject object() const;
    };

    ServerProcess();
    ~ServerProcess();

    /// Starts with the state folder and these options; false if no address is announced within ten seconds.
    bool start(const QStringList& options = {});
    /// Ends it as a service manager would; the exit status.
    int stop();
    /// Runs to the end, for starts that have to fail.
    int runToEnd(const QStringList& arguments);

    QString stateFolder() const { return m_folder.path(); }
    QString address() const { return m_address; }
    QByteArray errors() { return m_process.readAllStandardError(); }
    qint64 processId() const { return m_process.processId(); }
    static QString program();

    Reply get(const QString& path, const Headers& headers = {}) { return send("GET", path, {}, headers); }
    Reply post(const QString& path, const QByteArray& body = {}) { return send("POST", path, body, {}); }
    QJsonObject control(const QJsonObject& switches);

    /// Asks for a package and waits until it is built or refused: the last answer. The number goes to
    /// `number`.
    Reply package(const QString& ids, int* number = nullptr);

private:
    Reply send(const QByteArray& method, const QString& path, const QByteArray& body, const Headers& headers);

    QTemporaryDir m_folder;
    QProcess m_process;
    QString m_address;
    QNetworkAccessManager m_client;
};
