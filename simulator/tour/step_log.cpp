#include "step_log.h"

#include <QDir>
#include <QElapsedTimer>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSaveFile>
#include <QTest>
#include <cstdio>

namespace tessaly::tour {

void require(bool holds, const QString& why) {
    if (!holds)
        throw StepFailed(why);
}

void waitUntil(const std::function<bool()>& holds, const QString& what, int timeoutMs) {
    require(QTest::qWaitFor(holds, timeoutMs), QStringLiteral("waited in vain for ") + what);
}

bool StepLog::run(const QString& what, const std::function<QString()>& step) {
    QElapsedTimer timer;
    timer.start();
    bool isOk = true;
    QString remark;
    try {
        remark = step();
    } catch (const std::exception& failure) {
        isOk = false;
        remark = QString::fromUtf8(failure.what());
        ++m_failed;
    }
    const auto number = m_steps.size() + 1;
    const QString line = remark.isEmpty() ? what : what + QStringLiteral(": ") + remark;
    std::printf("%s %lld %s\n", isOk ? "ok" : "not ok", static_cast<long long>(number), qUtf8Printable(line));
    std::fflush(stdout);
    m_steps.append(QJsonObject{{QStringLiteral("number"), number},
                               {QStringLiteral("ok"), isOk},
                               {QStringLiteral("what"), what},
                               {QStringLiteral("remark"), remark},
                               {QStringLiteral("milliseconds"), timer.elapsed()}});
    return isOk;
}

bool StepLog::save(const QString& folder) const {
    if (!QDir().mkpath(folder))
        return false;
    QSaveFile file(folder + QStringLiteral("/tour.json"));
    const QJsonObject tour{{QStringLiteral("ok"), allOk()}, {QStringLiteral("steps"), m_steps}};
    return file.open(QIODevice::WriteOnly) && file.write(QJsonDocument(tour).toJson()) > 0 && file.commit();
}

} // namespace tessaly::tour
