#include "server_process.h"

#include <QElapsedTimer>
#include <QEventLoop>
#include <QJsonDocument>
#include <QNetworkReply>
#include <QThread>

QJsonObject ServerProcess::Reply::object() const {
    return QJsonDocument::fromJson(body).object();
}

ServerProcess::ServerProcess() {
    m_client.setTransferTimeout(20000);
}

ServerProcess::~ServerProcess() {
    stop();
}

QString ServerProcess::program() {
    return QStringLiteral(SERVER_PROGRAM);
}

bool ServerProcess::start(const QStringList& options) {
    m_client.clearConnectionCache();
    m_process.start(program(), QStringList{QStringLiteral("--state"), stateFolder()} + options);
    QElapsedTimer clock;
    clock.start();
    while (!m_process.canReadLine() && m_process.state() != QProcess::NotRunning && clock.elapsed() < 10000)
        m_process.waitForReadyRead(100);
    const QByteArray line = m_process.readLine();
    m_address = QString::fromUtf8(line).trimmed().section(u' ', -1);
    return line == "listening on " + m_address.toUtf8() + "\n" && m_address.startsWith(u"http://127.0.0.1:");
}

int ServerProcess::stop() {
    if (m_process.state() == QProcess::NotRunning)
        return 0;
    m_process.terminate();
    const bool ended = m_process.waitForFinished(10000);
    return ended && m_process.exitStatus() == QProcess::NormalExit ? m_process.exitCode() : -1;
}

int ServerProcess::runToEnd(const QStringList& arguments) {
    m_process.start(program(), arguments);
    return m_process.waitForFinished(10000) ? m_process.exitCode() : -1;
}

QJsonObject ServerProcess::control(const QJsonObject& switches) {
    return post(QStringLiteral("/control"), QJsonDocument(switches).toJson()).object();
}

ServerProcess::Reply ServerProcess::package(const QString& ids, int* number) {
    Reply reply = post(QStringLiteral("/v1/packages?ids=") + ids);
    const int task = reply.object().value(QLatin1String("task_id")).toInt();
    if (number != nullptr)
        *number = task;
    for (int i = 0; i < 400 && reply.status == 202; ++i) {
        QThread::msleep(25);
        reply = get(QStringLiteral("/v1/packages/%1").arg(task));
    }
    return reply;
}

ServerProcess::Reply ServerProcess::send(const QByteArray& method, const QString& path,
                                         const QByteArray& body, const Headers& headers) {
    QNetworkRequest request(QUrl(path.startsWith(u'/') ? m_address + path : path));
    request.setHeader(QNetworkRequest::ContentTypeHeader, QStringLiteral("application/json"));
    for (auto header = headers.begin(); header != headers.end(); ++header)
        request.setRawHeader(header.key(), header.value());
    QNetworkReply* answer = m_client.sendCustomRequest(request, method, body);
    QEventLoop loop;
    QObject::connect(answer, &QNetworkReply::finished, &loop, &QEventLoop::quit);
    loop.exec();

    Reply reply;
    const QNetworkReply::NetworkError error = answer->error();
    const bool broken = error != QNetworkReply::NoError && error < QNetworkReply::ContentAccessDenied;
    if (!broken)
        reply.status = answer->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
    reply.body = answer->readAll();
    for (const auto& [name, value] : answer->rawHeaderPairs())
        reply.headers.insert(name.toLower(), value);
    delete answer;
    return reply;
}
